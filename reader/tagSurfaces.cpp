// From tags to surfaces: each polygon's tag index becomes the surface of that name. Names are
// compared once for the whole object, by sorting them, however many layers and polygons it has.
#include "reader/tagSurfaces.h"

#include "reader/largeArrays.h"
#include "reader/lwo2.h"
#include "reader/records.h"

#include <algorithm>
#include <numeric>

// A tag, or the nameless one behind the last.
struct st_tagSlot {
    int leader;          // the first tag of the same name
    st_lwSurface *known; // of a leader: the first surface of the name; null: none yet
    int knownLayer;      // that made it; 0: it was there before
    st_lwSurface *made;  // the latest default surface for this tag; null: none yet
    int madeLayer;       // that made it
};

struct st_tagSurfaces {
    const st_lwTagList *tagList;
    st_lwSurface **list; // of the object
    int *count;          // of the list
    st_tagSlot *slots;   // owned; one more than tags
    int layer;           // at hand, from 1
    st_lwSurface *last;  // where the list is appended to: some record of it; null: none known
};

// Null for the nameless tag behind the last.
static const char *nameOf(const st_lwTagList *tagList, int tag) {
    return tag < tagList->count ? tagList->tags[tag] : nullptr;
}

// Gives every tag its leader, and the leaders the surfaces that are there; order has room for all.
static void matchNames(st_tagSurfaces *tagSurfaces, int *order) {
    const st_lwTagList *tags = tagSurfaces->tagList;
    int *end = order + tags->count + 1;
    std::iota(order, end, 0);
    std::sort(order, end, [tags](int a, int b) {
        int difference = compareStrings(nameOf(tags, a), nameOf(tags, b));
        return difference != 0 ? difference < 0 : a < b;
    });
    for (int *tag = order; tag < end; tag++) {
        bool again = tag > order && compareStrings(nameOf(tags, tag[-1]), nameOf(tags, *tag)) == 0;
        tagSurfaces->slots[*tag].leader = again ? tagSurfaces->slots[tag[-1]].leader : *tag;
    }
    for (st_lwSurface *surface = *tagSurfaces->list; surface != nullptr; surface = surface->next) {
        const int *tag =
            std::lower_bound(order, end, surface->name, [tags](int a, const char *name) {
                return compareStrings(nameOf(tags, a), name) < 0;
            });
        if (tag < end && compareStrings(nameOf(tags, *tag), surface->name) == 0 &&
            tagSurfaces->slots[*tag].known == nullptr)
            tagSurfaces->slots[*tag].known = surface;
    }
}

st_tagSurfaces *beginTagSurfaces(st_lwTagList *tagList, st_lwSurface **surfaces,
                                 int *surfaceCount) {
    st_tagSurfaces *made = newRecord<st_tagSurfaces>();
    if (made == nullptr)
        return nullptr;
    std::size_t slots = static_cast<std::size_t>(tagList->count) + 1;
    int *order = static_cast<int *>(allocArray(slots, sizeof(int)));
    made->tagList = tagList;
    made->list = surfaces;
    made->count = surfaceCount;
    made->slots = static_cast<st_tagSlot *>(std::calloc(slots, sizeof(st_tagSlot)));
    bool done = order != nullptr && made->slots != nullptr;
    if (done)
        matchNames(made, order);
    std::free(order);
    return keepIf(done, made, endTagSurfaces);
}

void endTagSurfaces(st_tagSurfaces *tagSurfaces) {
    std::free(tagSurfaces->slots);
    std::free(tagSurfaces);
}

static st_lwSurface *addDefaultSurface(st_tagSurfaces *tagSurfaces, const char *name) {
    st_lwSurface *surface = lwDefaultSurface();
    if (surface == nullptr)
        return nullptr;
    surface->name = copyString(name);
    if (surface->name == nullptr) {
        lwFreeSurface(surface);
        return nullptr;
    }
    appendRecord(tagSurfaces->list, &tagSurfaces->last, surface);
    ++*tagSurfaces->count;
    return surface;
}

// The surface of a tag index; null when the index is out of range, or without memory. Only
// surfaces that were there before the layer are found by name: each of two equal tags without
// one gets a surface of its own.
static st_lwSurface *surfaceOfTag(st_tagSurfaces *tagSurfaces, std::intptr_t tag) {
    int tagCount = tagSurfaces->tagList->count;
    int layer = tagSurfaces->layer;
    // Deliberate: an index equal to the number of tags passes, as a nameless tag.
    if (tag < 0 || tag > tagCount)
        return nullptr;
    st_tagSlot *slot = &tagSurfaces->slots[tag];
    st_tagSlot *leader = &tagSurfaces->slots[slot->leader];
    if (leader->known != nullptr && leader->knownLayer < layer && tag < tagCount)
        return leader->known;
    if (slot->madeLayer == layer)
        return slot->made;
    slot->made =
        addDefaultSurface(tagSurfaces, nameOf(tagSurfaces->tagList, static_cast<int>(tag)));
    slot->madeLayer = layer;
    if (leader->known == nullptr) {
        leader->known = slot->made;
        leader->knownLayer = layer;
    }
    return slot->made;
}

bool resolveTagSurfaces(st_tagSurfaces *tagSurfaces, st_lwPolygonList *polygonList) {
    bool named = tagSurfaces->tagList->count > 0;
    tagSurfaces->layer++;
    for (int i = 0; i < polygonList->count; i++) {
        st_lwPolygon *polygon = &polygonList->polygons[i];
        st_lwSurface *surface = named ? surfaceOfTag(tagSurfaces, polygon->surfaceTag) : nullptr;
        if (named && surface == nullptr)
            return false;
        polygon->surface = surface;
    }
    return true;
}

int lwResolvePolySurfaces(st_lwPolygonList *polygonList, st_lwTagList *tagList,
                          st_lwSurface **surfaces, int *surfaceCount) {
    st_tagSurfaces *tagSurfaces = beginTagSurfaces(tagList, surfaces, surfaceCount);
    if (tagSurfaces == nullptr)
        return 0;
    bool done = resolveTagSurfaces(tagSurfaces, polygonList);
    endTagSurfaces(tagSurfaces);
    return done ? 1 : 0;
}
