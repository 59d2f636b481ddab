// What there is to say about an object: the facts that the text report and the JSON document
// share, so that both say the same.
#pragma once

#include "reader/lwo2.h"

#include <map>
#include <string>
#include <utility>
#include <vector>

// ------------------------------------------------------------------------- geometry

constexpr int LAYER_HIDDEN = 1; // in st_lwLayer::flags

struct st_box {
    bool empty; // no point, or none with a position
    float low[3];
    float high[3];
};

// Around the points themselves, whatever box the file states.
st_box layerBox(const st_lwLayer *layer);
st_box objectBox(const st_lwObject *object);

// How many polygons there are of a type (ID) and a number of corners.
using PolygonCounts = std::map<std::pair<unsigned int, int>, int>;
PolygonCounts countPolygons(const st_lwObject *object);

// How many polygons refer to a surface; none for one that is not in the map.
std::map<const st_lwSurface *, int> countBySurface(const st_lwObject *object);

// ------------------------------------------------------------------------- surfaces

// Something about a surface, a texture or a clip that is not what it is by default.
struct st_attribute {
    std::string name; // lower camel case
    std::string word; // the value where it is no number; UTF-8, not made printable
    std::vector<double> numbers;
    int envelope;        // that drives it; 0: none
    bool isName = false; // the word is a name that the file gives
    const char *unit = "";
};

// In a fixed order; angles in degrees.
std::vector<st_attribute> surfaceAttributes(const st_lwSurface *surface);
std::vector<st_attribute> textureAttributes(const st_lwTexture *texture);
std::vector<st_attribute> clipAttributes(const st_lwClip *clip);

// The textures of a surface's channel; null: none.
struct st_channelTextures {
    const char *channel; // lower camel case
    const st_lwTexture *textures;
};

// All ten, colour first.
std::vector<st_channelTextures> channelTextures(const st_lwSurface *surface);

// How many textures channels other than colour have.
int countOtherTextures(const st_lwSurface *surface);

// ---------------------------------------------------------------- what codes stand for
//
// Codes that mean nothing give "code N".

std::string textureTypeName(unsigned int type);
std::string textureKind(const st_lwTexture *texture); // with the projection of an image map
std::string projectionName(int projection);
std::string axisName(int axis);
std::string clipTypeName(unsigned int type);
std::string behaviorName(int behavior);

// ---------------------------------------------------------------------------- lists

// Calls visit(record) for every record of a list.
template <typename Record, typename Visit> void forEach(const Record *list, Visit visit) {
    for (; list != nullptr; list = list->next)
        visit(*list);
}

template <typename Record> int lengthOf(const Record *list) {
    int length = 0;
    forEach(list, [&](const Record &) { length++; });
    return length;
}
