// The list functions, for every record kind that begins with next and prev.
#include "reader/lwo2.h"

template <typename Record> void _lwListFree(Record *list, void (*freeRecord)(Record *)) {
    while (list != nullptr) {
        Record *next = list->next;
        freeRecord(list);
        list = next;
    }
}

template <typename Record> void _lwListAdd(Record **list, Record *item) {
    if (*list == nullptr) {
        *list = item;
        return;
    }
    Record *last = *list;
    while (last->next != nullptr)
        last = last->next;
    last->next = item;
    item->prev = last;
}

template <typename Record>
void _lwListInsert(Record **list, Record *item, int (*compare)(Record *, Record *)) {
    Record *before = nullptr;
    Record *after = *list;
    while (after != nullptr && compare(after, item) <= 0) {
        before = after;
        after = after->next;
    }
    item->prev = before;
    item->next = after;
    if (before != nullptr)
        before->next = item;
    else
        *list = item;
    if (after != nullptr)
        after->prev = item;
}

// Every record kind that lives in a list.

template void _lwListFree(st_lwLayer *, void (*)(st_lwLayer *));
template void _lwListAdd(st_lwLayer **, st_lwLayer *);
template void _lwListInsert(st_lwLayer **, st_lwLayer *, int (*)(st_lwLayer *, st_lwLayer *));

template void _lwListFree(st_lwEnvelope *, void (*)(st_lwEnvelope *));
template void _lwListAdd(st_lwEnvelope **, st_lwEnvelope *);
template void _lwListInsert(st_lwEnvelope **, st_lwEnvelope *,
                            int (*)(st_lwEnvelope *, st_lwEnvelope *));

template void _lwListFree(st_lwClip *, void (*)(st_lwClip *));
template void _lwListAdd(st_lwClip **, st_lwClip *);
template void _lwListInsert(st_lwClip **, st_lwClip *, int (*)(st_lwClip *, st_lwClip *));

template void _lwListFree(st_lwSurface *, void (*)(st_lwSurface *));
template void _lwListAdd(st_lwSurface **, st_lwSurface *);
template void _lwListInsert(st_lwSurface **, st_lwSurface *,
                            int (*)(st_lwSurface *, st_lwSurface *));

template void _lwListFree(st_lwTexture *, void (*)(st_lwTexture *));
template void _lwListAdd(st_lwTexture **, st_lwTexture *);
template void _lwListInsert(st_lwTexture **, st_lwTexture *,
                            int (*)(st_lwTexture *, st_lwTexture *));

template void _lwListFree(st_lwPlugin *, void (*)(st_lwPlugin *));
template void _lwListAdd(st_lwPlugin **, st_lwPlugin *);
template void _lwListInsert(st_lwPlugin **, st_lwPlugin *, int (*)(st_lwPlugin *, st_lwPlugin *));

template void _lwListFree(st_lwVMap *, void (*)(st_lwVMap *));
template void _lwListAdd(st_lwVMap **, st_lwVMap *);
template void _lwListInsert(st_lwVMap **, st_lwVMap *, int (*)(st_lwVMap *, st_lwVMap *));

template void _lwListFree(st_lwKey *, void (*)(st_lwKey *));
template void _lwListAdd(st_lwKey **, st_lwKey *);
template void _lwListInsert(st_lwKey **, st_lwKey *, int (*)(st_lwKey *, st_lwKey *));
