// Lists placed in memory that belongs to someone else (not part of the C
// interface): a read page keeps its records, and their lists with them, in
// its store. A placed list works with every list function; its owner ends it
// with Vacate instead of SutDeleteList, which would free the room.
#ifndef VELMORA_UTIL_LIST_HPP
#define VELMORA_UTIL_LIST_HPP

#include <cstddef>

#include "util/list.h"

namespace sutlist {

// The room that Place takes for count items.
size_t PlacedSize(int count);
// A list of the count items in room (PlacedSize(count) bytes aligned for a
// pointer), with the capacity SutNewListSize(count) gives.
SutList *Place(void *room, void *const *items, int count);
// Frees what the list functions allocated for a placed list (the array it
// grew into, if it grew); the room stays its owner's.
void Vacate(SutList *list);

} // namespace sutlist

#endif
