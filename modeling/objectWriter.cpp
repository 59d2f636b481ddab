// LWO2 chunks: TAGS, LAYR, PNTS, VMAP, POLS, PTAG, VMAD, CLIP, SURF.
//
// Surfaces come in an order that the renderer needs: it leaves texturing on after a model and
// turns it off after a textured surface. Textured ones first, so that a plain one does not wear
// another model's picture. Then one with a texture but no image and no polygons: drawing it binds
// texture 0, so that a model with nothing but plain surfaces has nothing to wear either when it is
// drawn next. Then the plain ones.
#include "modeling/objectWriter.h"

#include "modeling/objectChunks.h"
#include "reader/lwo2.h"

#include <algorithm>
#include <map>

using namespace objectChunks;

constexpr std::uint32_t LONG_INDEX = 0xFF00;   // indices from here on take four bytes
constexpr std::size_t INDEX_LIMIT = 0x1000000; // of which three hold the index
constexpr std::size_t FORM_LIMIT = 0x7FFFFF00;
constexpr unsigned NO_PARENT = 0xFFFF;
constexpr unsigned BOTH_SIDES = 3;

static std::string index(int value) {
    const auto bits = static_cast<std::uint32_t>(value);
    return bits < LONG_INDEX ? u2(bits) : u4(0xFF000000U | bits);
}

static std::string polygonChunk(const std::vector<st_polygon> &polygons) {
    std::string body = "FACE";
    for (const st_polygon &polygon : polygons) {
        body += u2(static_cast<unsigned>(polygon.cornerCount));
        for (int i = 0; i < polygon.cornerCount; i++)
            body += index(polygon.points[i]);
    }
    return chunk("POLS", body);
}

static std::string polygonTagChunk(const std::vector<st_polygon> &polygons) {
    std::string body = "SURF";
    for (std::size_t i = 0; i < polygons.size(); i++)
        body += index(static_cast<int>(i)) + index(polygons[i].surface);
    return chunk("PTAG", body);
}

static bool same(st_uv a, st_uv b) {
    return a.u == b.u && a.v == b.v;
}

static std::string uvBytes(st_uv uv) {
    return f4(uv.u) + f4(uv.v);
}

// Chunks that go to different places in the file.
struct st_parts {
    std::map<std::string, int> clips; // image name to clip index, from 1
    std::string clipChunks;
    std::string surfaces;
};

// ------------------------------------------------------------------------ texture maps

// The texture map of one surface in its two forms; corners stays empty where no seam needs it.
struct st_uvMap {
    std::string points;  // body of VMAP
    std::string corners; // entries of VMAD
};

// What a map has at a point, as far as it is the map of this surface.
struct st_pointUv {
    int surface;
    st_uv uv;
};

static void addPolygon(const st_polygon &polygon, int number, std::vector<st_pointUv> *first,
                       st_uvMap *map) {
    for (int i = 0; i < polygon.cornerCount; i++) {
        const int point = polygon.points[i];
        st_pointUv &known = (*first)[static_cast<std::size_t>(point)];
        if (known.surface != polygon.surface) {
            known = {polygon.surface, polygon.uvs[i]};
            map->points += index(point) + uvBytes(polygon.uvs[i]);
        } else if (!same(known.uv, polygon.uvs[i])) {
            map->corners += index(point) + index(number) + uvBytes(polygon.uvs[i]);
        }
    }
}

// By surface, for those with an image and with polygons in this layer.
static std::map<int, st_uvMap> uvMapsOf(const st_mesh &mesh,
                                        const std::vector<st_surface> &surfaces) {
    std::vector<int> order;
    for (std::size_t p = 0; p < mesh.polygons.size(); p++)
        if (!surfaces[static_cast<std::size_t>(mesh.polygons[p].surface)].image.empty())
            order.push_back(static_cast<int>(p));
    const auto polygonOf = [&](int p) -> const st_polygon & {
        return mesh.polygons[static_cast<std::size_t>(p)];
    };
    std::stable_sort(order.begin(), order.end(),
                     [&](int a, int b) { return polygonOf(a).surface < polygonOf(b).surface; });
    std::map<int, st_uvMap> maps;
    std::vector<st_pointUv> first(mesh.points.size(), {-1, {0, 0}});
    for (const int p : order)
        addPolygon(polygonOf(p), p, &first, &maps[polygonOf(p).surface]);
    return maps;
}

static std::string imageLayer(const st_surface &surface, int clip) {
    const std::string header = text("\x80") + subChunk("CHAN", "COLR") +
                               subChunk("OPAC", u2(0) + f4(1) + index(0)) + subChunk("ENAB", u2(1));
    return subChunk("BLOK", "IMAP" + u2(static_cast<unsigned>(header.size())) + header +
                                subChunk("PROJ", u2(LW_PROJECTION_UV)) + subChunk("AXIS", u2(0)) +
                                subChunk("IMAG", index(clip)) + subChunk("WRAP", u2(1) + u2(1)) +
                                subChunk("VMAP", text(surface.name)));
}

static std::string amount(const char *id, float value) {
    return value > 0 ? subChunk(id, f4(value) + index(0)) : "";
}

static std::string surfaceBody(const st_surface &surface) {
    std::string body = text(surface.name) + text("") +
                       subChunk("COLR", vector(surface.color) + index(0)) +
                       subChunk("DIFF", f4(1) + index(0));
    body += amount("LUMI", surface.luminosity) + amount("SPEC", surface.gloss) +
            amount("GLOS", surface.gloss) + amount("TRAN", surface.transparency);
    if (surface.smoothing > 0)
        body += subChunk("SMAN", f4(surface.smoothing));
    if (surface.isDoubleSided)
        body += subChunk("SIDE", u2(BOTH_SIDES));
    return body;
}

// Clip 0 stands for no image.
static std::string texturedChunk(const st_surface &surface, int clip) {
    return chunk("SURF", surfaceBody(surface) + imageLayer(surface, clip));
}

static int clipOf(st_parts &parts, const std::string &image) {
    const auto [entry, isNew] =
        parts.clips.emplace(image, static_cast<int>(parts.clips.size()) + 1);
    if (isNew)
        parts.clipChunks += chunk("CLIP", u4(static_cast<std::uint32_t>(entry->second)) +
                                              subChunk("STIL", text(image)));
    return entry->second;
}

static st_parts partsOf(const std::vector<st_surface> &surfaces) {
    st_parts parts;
    for (const st_surface &surface : surfaces)
        if (!surface.image.empty())
            parts.surfaces += texturedChunk(surface, clipOf(parts, surface.image));
    if (!parts.clips.empty())
        parts.surfaces += texturedChunk({"(no image)", {1, 1, 1}, 0, ""}, 0);
    for (const st_surface &surface : surfaces)
        if (surface.image.empty())
            parts.surfaces += chunk("SURF", surfaceBody(surface));
    return parts;
}

// ------------------------------------------------------------------------------ layers

static bool hasParents(const st_object &object) {
    return std::any_of(object.layers.begin(), object.layers.end(),
                       [](const st_objectLayer &layer) { return layer.parent >= 0; });
}

static std::string layerHead(const st_objectLayer &layer, std::size_t number, bool namesParent) {
    const unsigned parent = layer.parent >= 0 ? static_cast<unsigned>(layer.parent) : NO_PARENT;
    return chunk("LAYR", u2(static_cast<unsigned>(number)) + u2(0) + vector(layer.pivot) +
                             text(layer.name) + (namesParent ? u2(parent) : ""));
}

static std::string layerBody(const st_mesh &mesh, const std::vector<st_surface> &surfaces) {
    std::string pointMaps, cornerMaps;
    for (const auto &[surface, map] : uvMapsOf(mesh, surfaces)) {
        const std::string head =
            "TXUV" + u2(2) + text(surfaces[static_cast<std::size_t>(surface)].name);
        pointMaps += chunk("VMAP", head + map.points);
        if (!map.corners.empty())
            cornerMaps += chunk("VMAD", head + map.corners);
    }
    return pointChunk(mesh.points) + pointMaps + polygonChunk(mesh.polygons) +
           polygonTagChunk(mesh.polygons) + cornerMaps;
}

// Of an empty one its head is enough, but for the first.
static std::string layerChunks(const st_object &object) {
    const bool namesParents = hasParents(object);
    std::string chunks;
    for (std::size_t i = 0; i < object.layers.size(); i++) {
        const st_mesh &mesh = object.layers[i].mesh;
        chunks += layerHead(object.layers[i], i, namesParents);
        if (i == 0 || !mesh.points.empty())
            chunks += layerBody(mesh, object.surfaces);
    }
    return chunks;
}

static std::string problemOf(const st_object &object) {
    if (object.layers.size() >= NO_PARENT)
        return "it has more than 65534 layers";
    for (const st_objectLayer &layer : object.layers)
        if (layer.mesh.points.size() > INDEX_LIMIT || layer.mesh.polygons.size() > INDEX_LIMIT)
            return "it has more than 16777216 points or polygons";
    return namesProblem(object.surfaces);
}

std::string objectBytes(const st_object &object, std::string *problem) {
    *problem = problemOf(object);
    if (!problem->empty())
        return "";
    const st_parts parts = partsOf(object.surfaces);
    const std::string chunks = chunk("TAGS", surfaceNames(object.surfaces)) + layerChunks(object) +
                               parts.clipChunks + parts.surfaces;
    if (chunks.size() > FORM_LIMIT)
        *problem = "it would have more than 2 GB";
    return problem->empty() ? form("LWO2", chunks) : "";
}

std::string objectBytes(const st_mesh &mesh, std::string *problem) {
    st_object object;
    object.surfaces = mesh.surfaces;
    object.layers.resize(1);
    object.layers[0].mesh.points = mesh.points;
    object.layers[0].mesh.polygons = mesh.polygons;
    return objectBytes(object, problem);
}
