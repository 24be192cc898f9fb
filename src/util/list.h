/* The ordered list that every record of the engine uses: a growable array of
 * untyped item pointers with positions from 0. Every operation accepts a null
 * list and answers a fixed "nothing" value instead of failing. */
#ifndef VELMORA_UTIL_LIST_H
#define VELMORA_UTIL_LIST_H

#ifdef __cplusplus
extern "C" {
#endif

typedef struct SutList {
    void **items; /* zeroed array of capacity slots, at first in the list's own
                   * allocation: freed and replaced by these functions only */
    int count;    /* items in use, positions 0 .. count - 1 */
    int capacity; /* slots in items */
} SutList;

SutList *SutNewList(void);
SutList *SutNewListSize(int n);
SutList *SutNewListFromValues(void **array, int n);
int SutSizList(const SutList *list);
void *SutGetNList(const SutList *list, int n);
void *SutAddList(SutList *list, void *item);
void *SutAddNList(SutList *list, int n, void *item);
void *SutReplaceNList(SutList *list, int n, void *item);
void *SutRemoveNList(SutList *list, int n);
void *SutRemoveList(SutList *list);
int SutGetPosFromItem(const SutList *list, const void *item);
SutList *SutCopyList(const SutList *list);
int SutListCat(SutList *dest, const SutList *src);
int SutDeleteList(SutList *list);
int SutDestroyList(SutList *list);

#ifdef __cplusplus
}
#endif

#endif
