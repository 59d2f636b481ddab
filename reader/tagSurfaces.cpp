// From tags to surfaces: each polygon's tag index becomes the surface of that name. Names are
// compared once for the whole object, by sorting them, however many layers and polygons it has.
#include "reader/tagSurfaces.h"

#include "reader/lwo2.h"
#include "reader/records.h"

#include <algorithm>

// A tag, or the nameless one behind the last.
struct st_tagSlot {
    int leader;          // the first tag of the same name
    st_lwSurface *known; // of a leader: the first surface of the name; null: none yet
    st_lwSurface *made;  // default surface made for this tag in the layer at hand
};

struct st_tagSurfaces {
    const st_lwTagList *tagList;
    st_lwSurface **list; // of the object
    int *count;          // of the list
    st_tagSlot *slots;   // owned; one more than tags
    int *madeTags;       // owned; the tags with a made surface, in that order
    int madeCount;
    st_lwSurface *last; // where the list is appended to: some record of it; null: none known
};

// A name of a surface or, when that is null, of a tag.
struct st_tagName {
    const char *name;
    st_lwSurface *surface;
    int order; // place in the list of surfaces, or tag index
};

// By name, the surfaces before the tags, each in their order.
static bool isBefore(const st_tagName &a, const st_tagName &b) {
    int difference = compareStrings(a.name, b.name);
    if (difference != 0)
        return difference < 0;
    if ((a.surface == nullptr) != (b.surface == nullptr))
        return a.surface != nullptr;
    return a.order < b.order;
}

static void listNames(const st_tagSurfaces *tagSurfaces, st_tagName *names) {
    int order = 0;
    for (st_lwSurface *surface = *tagSurfaces->list; surface != nullptr; surface = surface->next)
        *names++ = {surface->name, surface, order++};
    int tagCount = tagSurfaces->tagList->count;
    for (int i = 0; i < tagCount; i++)
        *names++ = {tagSurfaces->tagList->tags[i], nullptr, i};
    *names = {nullptr, nullptr, tagCount};
}

// Gives every tag its leader, and the leaders the surfaces that are there.
static void matchNames(st_tagSurfaces *tagSurfaces, const st_tagName *names, std::size_t count) {
    st_lwSurface *known = nullptr;
    int leader = -1;
    for (std::size_t i = 0; i < count; i++) {
        if (i == 0 || compareStrings(names[i].name, names[i - 1].name) != 0) {
            known = names[i].surface;
            leader = -1;
        }
        if (names[i].surface != nullptr)
            continue;
        if (leader < 0)
            leader = names[i].order;
        tagSurfaces->slots[names[i].order] = {leader, known, nullptr};
    }
}

static bool indexNames(st_tagSurfaces *tagSurfaces) {
    std::size_t count = static_cast<std::size_t>(tagSurfaces->tagList->count) + 1;
    for (st_lwSurface *surface = *tagSurfaces->list; surface != nullptr; surface = surface->next)
        count++;
    st_tagName *names = static_cast<st_tagName *>(std::malloc(count * sizeof(st_tagName)));
    if (names == nullptr)
        return false;
    listNames(tagSurfaces, names);
    std::sort(names, names + count, isBefore);
    matchNames(tagSurfaces, names, count);
    std::free(names);
    return true;
}

st_tagSurfaces *beginTagSurfaces(st_lwTagList *tagList, st_lwSurface **surfaces,
                                 int *surfaceCount) {
    st_tagSurfaces *made = newRecord<st_tagSurfaces>();
    if (made == nullptr)
        return nullptr;
    std::size_t slots = static_cast<std::size_t>(tagList->count) + 1;
    made->tagList = tagList;
    made->list = surfaces;
    made->count = surfaceCount;
    made->slots = static_cast<st_tagSlot *>(std::malloc(slots * sizeof(st_tagSlot)));
    made->madeTags = static_cast<int *>(std::malloc(slots * sizeof(int)));
    if (made->slots == nullptr || made->madeTags == nullptr || !indexNames(made)) {
        endTagSurfaces(made);
        return nullptr;
    }
    return made;
}

void endTagSurfaces(st_tagSurfaces *tagSurfaces) {
    std::free(tagSurfaces->slots);
    std::free(tagSurfaces->madeTags);
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
    // Deliberate: an index equal to the number of tags passes, as a nameless tag.
    if (tag < 0 || tag > tagCount)
        return nullptr;
    st_tagSlot *slot = &tagSurfaces->slots[tag];
    st_lwSurface *known = tagSurfaces->slots[slot->leader].known;
    if (known != nullptr && tag < tagCount)
        return known;
    if (slot->made == nullptr) {
        slot->made = addDefaultSurface(tagSurfaces,
                                       tag < tagCount ? tagSurfaces->tagList->tags[tag] : nullptr);
        tagSurfaces->madeTags[tagSurfaces->madeCount++] = static_cast<int>(tag);
    }
    return slot->made;
}

// Lets the next layer find by name what was made for this one.
static void publishMade(st_tagSurfaces *tagSurfaces) {
    for (int i = 0; i < tagSurfaces->madeCount; i++) {
        st_tagSlot *slot = &tagSurfaces->slots[tagSurfaces->madeTags[i]];
        st_lwSurface **known = &tagSurfaces->slots[slot->leader].known;
        if (*known == nullptr)
            *known = slot->made;
        slot->made = nullptr;
    }
    tagSurfaces->madeCount = 0;
}

bool resolveTagSurfaces(st_tagSurfaces *tagSurfaces, st_lwPolygonList *polygonList) {
    bool named = tagSurfaces->tagList->count > 0;
    for (int i = 0; i < polygonList->count; i++) {
        st_lwPolygon *polygon = &polygonList->polygons[i];
        st_lwSurface *surface = named ? surfaceOfTag(tagSurfaces, polygon->surfaceTag) : nullptr;
        if (named && surface == nullptr)
            return false;
        polygon->surface = surface;
    }
    publishMade(tagSurfaces);
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
