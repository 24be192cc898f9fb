// The ordered list: a calloc'ed array of item pointers that grows by half its
// capacity whenever it fills. A list made here at a size gets its first array
// in the same allocation as the list itself (one calloc and one free instead
// of two each); a growth moves the items to an array of their own. A list
// may also be placed in room that its owner frees (list.hpp). All operations
// accept a null list and check positions, because the shared code relies on
// both.
#include "util/list.h"
#include "util/list.hpp"

#include <cstdlib>
#include <cstring>

namespace {

// The first array of a list made by NewWithCapacity, right after the list.
void **InlineItems(SutList *list) {
    return reinterpret_cast<void **>(list + 1);
}
// The list's array is an allocation of its own (not the one it was made with).
bool OwnsSeparateArray(SutList *list) {
    return list->capacity != 0 && list->items != InlineItems(list);
}

// The one growth rule: capacity * 3 / 2, a fresh zeroed array, items copied.
void Grow(SutList *list) {
    int capacity = list->capacity * 3 / 2;
    if (capacity < 4) capacity = 4; // never reached by lists made here; keeps growth non-zero
    void **items = static_cast<void **>(std::calloc(static_cast<size_t>(capacity), sizeof(void *)));
    if (list->count > 0) std::memcpy(items, list->items, sizeof(void *) * list->count);
    if (OwnsSeparateArray(list)) std::free(list->items);
    list->items = items;
    list->capacity = capacity;
}

// The bytes of a list with its first array of capacity slots.
size_t RoomFor(int capacity) {
    static_assert(sizeof(SutList) % alignof(void *) == 0, "the items follow the list aligned");
    return sizeof(SutList) + static_cast<size_t>(capacity) * sizeof(void *);
}

SutList *NewWithCapacity(int capacity) {
    SutList *list = static_cast<SutList *>(std::calloc(1, RoomFor(capacity)));
    list->items = InlineItems(list);
    list->capacity = capacity;
    return list;
}

// The capacity of a list made for n items: one slot to spare, four at least.
int CapacityFor(int n) {
    return n < 3 ? 4 : n + 1;
}

bool ValidPos(const SutList *list, int n) {
    return list && n >= 0 && n < list->count;
}

} // namespace

extern "C" {

SutList *SutNewList(void) {
    return NewWithCapacity(20);
}

SutList *SutNewListSize(int n) {
    return NewWithCapacity(CapacityFor(n));
}

SutList *SutNewListFromValues(void **array, int n) {
    if (n < 0) return nullptr;
    if (n >= 4 && array) {
        // The caller's heap array becomes the list's own, full to the brim.
        SutList *list = static_cast<SutList *>(std::calloc(1, sizeof(SutList)));
        list->items = array;
        list->count = n;
        list->capacity = n;
        return list;
    }
    // Fewer than four values, or no array to take (then nothing is stored).
    SutList *list = NewWithCapacity(4);
    if (n > 0 && n < 4 && array) {
        std::memcpy(list->items, array, sizeof(void *) * n);
        list->count = n;
        std::free(array);
    }
    return list;
}

int SutSizList(const SutList *list) {
    return list ? list->count : -1;
}

void *SutGetNList(const SutList *list, int n) {
    return ValidPos(list, n) ? list->items[n] : nullptr;
}

void *SutAddList(SutList *list, void *item) {
    if (!list) return nullptr;
    if (list->count >= list->capacity) Grow(list);
    list->items[list->count++] = item;
    if (list->count >= list->capacity) Grow(list);
    return item;
}

void *SutAddNList(SutList *list, int n, void *item) {
    if (!list || n < 0 || n > list->count) return nullptr;
    if (list->count >= list->capacity) Grow(list);
    if (n == list->count) {
        // Deliberately no growth afterwards: such a list may be left full.
        list->items[list->count++] = item;
        return item;
    }
    std::memmove(list->items + n + 1, list->items + n, sizeof(void *) * (list->count - n));
    list->items[n] = item;
    if (++list->count >= list->capacity) Grow(list);
    return item;
}

void *SutReplaceNList(SutList *list, int n, void *item) {
    if (!ValidPos(list, n)) return nullptr;
    void *old = list->items[n];
    list->items[n] = item;
    return old;
}

void *SutRemoveNList(SutList *list, int n) {
    if (!ValidPos(list, n)) return nullptr;
    void *old = list->items[n];
    std::memmove(list->items + n, list->items + n + 1, sizeof(void *) * (list->count - n - 1));
    list->count--;
    return old;
}

void *SutRemoveList(SutList *list) {
    if (!list || list->count <= 0) return nullptr;
    return list->items[--list->count];
}

int SutGetPosFromItem(const SutList *list, const void *item) {
    if (!list) return -1;
    for (int i = 0; i < list->count; i++)
        if (list->items[i] == item) return i;
    return -1;
}

SutList *SutCopyList(const SutList *list) {
    if (!list) return nullptr;
    SutList *copy = NewWithCapacity(list->capacity > 0 ? list->capacity : 4);
    if (list->count > 0) std::memcpy(copy->items, list->items, sizeof(void *) * list->count);
    copy->count = list->count;
    return copy;
}

int SutListCat(SutList *dest, const SutList *src) {
    if (!dest) return 0;
    // Read the size once: concatenating a list to itself must terminate.
    int n = SutSizList(src);
    for (int i = 0; i < n; i++)
        SutAddList(dest, src->items[i]);
    return 1;
}

int SutDeleteList(SutList *list) {
    if (!list) return -1;
    if (OwnsSeparateArray(list)) std::free(list->items);
    std::free(list);
    return 0;
}

int SutDestroyList(SutList *list) {
    if (!list) return -1;
    for (int i = 0; i < list->count; i++)
        std::free(list->items[i]);
    return SutDeleteList(list);
}

} // extern "C"

namespace sutlist {

size_t PlacedSize(int count) {
    return RoomFor(CapacityFor(count));
}

SutList *Place(void *room, void *const *items, int count) {
    const int capacity = CapacityFor(count);
    auto *list = static_cast<SutList *>(room);
    list->items = InlineItems(list);
    list->count = count;
    list->capacity = capacity;
    if (count > 0) std::memcpy(list->items, items, sizeof(void *) * count);
    std::memset(list->items + count, 0, sizeof(void *) * (capacity - count));
    return list;
}

void Vacate(SutList *list) {
    if (list && OwnsSeparateArray(list)) std::free(list->items);
}

} // namespace sutlist
