// The storage of a read page (not part of the C interface): the records the
// scanner finds, their lists and the strings they hold are taken from a few
// large blocks that belong to the page and go with it, instead of one
// malloc'ed block each (a 200 KB page holds about ten thousand strings and
// records, and malloc and free were most of the time spent reading it). A
// list in the store works as any other until the page is deleted, which
// vacates it (util/list.hpp): nothing else may delete it.
//
// A string in the store is never freed on its own and never changes, so two
// fields may share it. The setters put a record's strings where the record
// lives: a record of a store holds strings of its store only (so a page is
// deleted without looking at them), a record made on its own (VlHtml...New)
// has no store and malloc'ed strings. The release rule (a string the store
// holds stays, any other is freed) serves both.
#ifndef VELMORA_HTML_STORE_HPP
#define VELMORA_HTML_STORE_HPP

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <string_view>

#include "html/document.h"
#include "util/heap.hpp"
#include "util/shortcopy.hpp"

struct VlHtmlStore {
    // Blocks double in size, so a few dozen hold more than any address space.
    static constexpr int kMaxBlocks = 48;
    struct Block {
        char *begin;
        char *end;
    };
    Block blocks[kMaxBlocks];
    int count;
    char *next; // the free room of the newest block
    char *limit;
    // The last copies handed out by CopyField, handed out again for an equal
    // value: every named form and anchor of a page takes the project URL.
    static constexpr int kRecent = 4;
    char *recent[kRecent];
    int nextRecent;
};

namespace vlstore {

// A store whose first block holds at least expected bytes: the block kept
// from an earlier page when it is that large (fresh large blocks cost page
// faults on every page), otherwise a new one.
VlHtmlStore *StoreNew(size_t expected);
// Frees the store's blocks (keeping the largest for the next page).
void StoreDelete(VlHtmlStore *store);
// Grows the store by a block that holds at least size bytes.
void StoreGrow(VlHtmlStore *store, size_t size);

// size uninitialised bytes at a multiple of align (a power of two).
inline void *Take(VlHtmlStore *store, size_t size, size_t align) {
    const auto alignedNext = [&] {
        const auto next = reinterpret_cast<uintptr_t>(store->next);
        return (next + align - 1) & ~static_cast<uintptr_t>(align - 1);
    };
    uintptr_t at = alignedNext();
    if (at + size > reinterpret_cast<uintptr_t>(store->limit)) {
        StoreGrow(store, size + align); // room for size bytes at this alignment
        at = alignedNext();
    }
    store->next = reinterpret_cast<char *>(at + size);
    return reinterpret_cast<void *>(at);
}

inline bool Holds(const VlHtmlStore *store, const void *p) {
    if (!store || !p) return false;
    const char *c = static_cast<const char *>(p);
    for (int i = store->count - 1; i >= 0; i--)
        if (c >= store->blocks[i].begin && c < store->blocks[i].end) return true;
    return false;
}

// A NUL-terminated copy of text: in the store, or malloc'ed without one. A
// copy in the store is preceded by its length, which Text reads instead of
// counting the bytes (the markup writes every name it reads).
inline char *Copy(VlHtmlStore *store, std::string_view text) {
    if (!store) return VlHeapCopy(text);
    const size_t length = text.size();
    auto *copy = static_cast<char *>(Take(store, sizeof length + length + 1, 1));
    std::memcpy(copy, &length, sizeof length);
    copy += sizeof length;
    VlCopyShort(copy, text.data(), length);
    copy[length] = '\0';
    return copy;
}

// The NUL-terminated s (null: empty) with its length.
inline std::string_view Text(const VlHtmlStore *store, const char *s) {
    if (!s) return {};
    if (!Holds(store, s)) return s;
    size_t length;
    std::memcpy(&length, s - sizeof length, sizeof length);
    return {s, length};
}

// Frees p unless the store holds it.
inline void Release(const VlHtmlStore *store, void *p) {
    if (p && !Holds(store, p)) std::free(p);
}

// Puts value in *field, releasing what was there.
inline void SetField(const VlHtmlStore *store, char **field, char *value) {
    Release(store, *field);
    *field = value;
}

// A copy of value for a field: in the store one of its recent copies when
// one is equal (strings of a store never change, so fields share them), or
// malloc'ed without a store.
char *FieldCopy(VlHtmlStore *store, const char *value);

// Puts a copy of value (null: none) in *field, releasing what was there.
inline void CopyField(VlHtmlStore *store, char **field, const char *value) {
    SetField(store, field, value ? FieldCopy(store, value) : nullptr);
}

// The same for the value of another field of a record of the store: a value
// the store holds is shared, not copied, since it never changes.
inline void ShareField(VlHtmlStore *store, char **field, const char *fieldValue) {
    if (fieldValue && Holds(store, fieldValue))
        SetField(store, field, const_cast<char *>(fieldValue));
    else
        CopyField(store, field, fieldValue);
}

// A zeroed record of the store, or a calloc'ed one without a store.
template <class Record> Record *NewRecord(VlHtmlStore *store) {
    if (!store) return static_cast<Record *>(std::calloc(1, sizeof(Record)));
    auto *record = static_cast<Record *>(Take(store, sizeof(Record), alignof(Record)));
    std::memset(record, 0, sizeof(Record));
    record->store = store;
    return record;
}

// Releases a record made by NewRecord (its fields are released by the caller).
template <class Record> void ReleaseRecord(Record *record) {
    if (!record->store) std::free(record);
}

} // namespace vlstore

#endif
