// The blocks of a page's store, and the one block kept from page to page.
#include "html/store.hpp"

#include <new>

namespace {

constexpr size_t kSmallestBlock = size_t{16} * 1024;
// The largest block kept for the next page; a larger one goes back to the system.
constexpr size_t kLargestKept = size_t{64} * 1024 * 1024;

// A block freed by an earlier store, ready for the next one.
struct SpareBlock {
    char *begin = nullptr;
    size_t size = 0;
    ~SpareBlock() { std::free(begin); }
};
thread_local SpareBlock spare;

char *NewBlock(size_t size) {
    auto *block = static_cast<char *>(std::malloc(size));
    if (!block) throw std::bad_alloc();
    return block;
}

void AddBlock(VlHtmlStore *store, char *begin, size_t size) {
    if (store->count == VlHtmlStore::kMaxBlocks) throw std::bad_alloc();
    store->blocks[store->count++] = {begin, begin + size};
    store->next = begin;
    store->limit = begin + size;
}

} // namespace

namespace vlstore {

VlHtmlStore *StoreNew(size_t expected) {
    auto *store = static_cast<VlHtmlStore *>(std::calloc(1, sizeof(VlHtmlStore)));
    if (!store) throw std::bad_alloc();
    const size_t size = expected > kSmallestBlock ? expected : kSmallestBlock;
    if (spare.begin && spare.size >= size) {
        AddBlock(store, spare.begin, spare.size);
        spare.begin = nullptr;
        spare.size = 0;
    } else {
        AddBlock(store, NewBlock(size), size);
    }
    return store;
}

void StoreGrow(VlHtmlStore *store, size_t size) {
    const VlHtmlStore::Block &last = store->blocks[store->count - 1];
    size_t grown = 2 * static_cast<size_t>(last.end - last.begin);
    if (grown < size) grown = size;
    AddBlock(store, NewBlock(grown), grown);
}

char *FieldCopy(VlHtmlStore *store, const char *value) {
    const std::string_view text(value);
    if (!store) return VlHeapCopy(text);
    for (char *copy : store->recent)
        if (copy && Text(store, copy) == text) return copy;
    char *copy = Copy(store, text);
    store->recent[store->nextRecent] = copy;
    store->nextRecent = (store->nextRecent + 1) % VlHtmlStore::kRecent;
    return copy;
}

void StoreDelete(VlHtmlStore *store) {
    if (!store) return;
    for (int i = 0; i < store->count; i++) {
        char *begin = store->blocks[i].begin;
        const size_t size = static_cast<size_t>(store->blocks[i].end - begin);
        if (size > spare.size && size <= kLargestKept) {
            std::free(spare.begin);
            spare.begin = begin;
            spare.size = size;
        } else {
            std::free(begin);
        }
    }
    std::free(store);
}

} // namespace vlstore
