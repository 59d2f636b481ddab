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

#include <map>

using namespace objectChunks;

constexpr std::uint32_t LONG_INDEX = 0xFF00;   // indices from here on take four bytes
constexpr std::size_t INDEX_LIMIT = 0x1000000; // of which three hold the index

static std::string index(int value) {
    const auto bits = static_cast<std::uint32_t>(value);
    return bits < LONG_INDEX ? u2(bits) : u4(0xFF000000U | bits);
}

static std::string polygonChunk(const st_mesh &mesh) {
    std::string body = "FACE";
    for (const st_polygon &polygon : mesh.polygons) {
        body += u2(static_cast<unsigned>(polygon.cornerCount));
        for (int i = 0; i < polygon.cornerCount; i++)
            body += index(polygon.points[i]);
    }
    return chunk("POLS", body);
}

static std::string polygonTagChunk(const st_mesh &mesh) {
    std::string body = "SURF";
    for (std::size_t i = 0; i < mesh.polygons.size(); i++)
        body += index(static_cast<int>(i)) + index(mesh.polygons[i].surface);
    return chunk("PTAG", body);
}

static bool same(st_uv a, st_uv b) {
    return a.u == b.u && a.v == b.v;
}

static std::string uvBytes(st_uv uv) {
    return f4(uv.u) + f4(uv.v);
}

// The texture map of one surface in its two forms; corners stays empty where no seam needs it.
struct st_uvMap {
    std::string points;  // body of VMAP
    std::string corners; // entries of VMAD
};

static st_uvMap uvMapOf(const st_mesh &mesh, int surface) {
    st_uvMap result;
    std::map<int, st_uv> first;
    for (std::size_t p = 0; p < mesh.polygons.size(); p++) {
        const st_polygon &polygon = mesh.polygons[p];
        for (int i = 0; polygon.surface == surface && i < polygon.cornerCount; i++) {
            const int point = polygon.points[i];
            const auto [entry, isNew] = first.emplace(point, polygon.uvs[i]);
            if (isNew)
                result.points += index(point) + uvBytes(polygon.uvs[i]);
            else if (!same(entry->second, polygon.uvs[i]))
                result.corners +=
                    index(point) + index(static_cast<int>(p)) + uvBytes(polygon.uvs[i]);
        }
    }
    return result;
}

static std::string imageLayer(const st_surface &surface, int clip) {
    const std::string header = text("\x80") + subChunk("CHAN", "COLR") +
                               subChunk("OPAC", u2(0) + f4(1) + index(0)) + subChunk("ENAB", u2(1));
    return subChunk("BLOK", "IMAP" + u2(static_cast<unsigned>(header.size())) + header +
                                subChunk("PROJ", u2(LW_PROJECTION_UV)) + subChunk("AXIS", u2(0)) +
                                subChunk("IMAG", index(clip)) + subChunk("WRAP", u2(1) + u2(1)) +
                                subChunk("VMAP", text(surface.name)));
}

static std::string surfaceBody(const st_surface &surface) {
    std::string body = text(surface.name) + text("") +
                       subChunk("COLR", vector(surface.color) + index(0)) +
                       subChunk("DIFF", f4(1) + index(0));
    if (surface.smoothing > 0)
        body += subChunk("SMAN", f4(surface.smoothing));
    return body;
}

// Clip 0 stands for no image.
static std::string texturedChunk(const st_surface &surface, int clip) {
    return chunk("SURF", surfaceBody(surface) + imageLayer(surface, clip));
}

// Chunks that go to different places in the file.
struct st_parts {
    std::map<std::string, int> clips; // image name to clip index, from 1
    std::string pointMaps;
    std::string cornerMaps;
    std::string clipChunks;
    std::string surfaces;
};

static int clipOf(st_parts &parts, const std::string &image) {
    const auto [entry, isNew] =
        parts.clips.emplace(image, static_cast<int>(parts.clips.size()) + 1);
    if (isNew)
        parts.clipChunks += chunk("CLIP", u4(static_cast<std::uint32_t>(entry->second)) +
                                              subChunk("STIL", text(image)));
    return entry->second;
}

static void addTextured(st_parts &parts, const st_mesh &mesh, std::size_t i) {
    const st_surface &surface = mesh.surfaces[i];
    const st_uvMap map = uvMapOf(mesh, static_cast<int>(i));
    const std::string head = "TXUV" + u2(2) + text(surface.name);
    parts.pointMaps += chunk("VMAP", head + map.points);
    if (!map.corners.empty())
        parts.cornerMaps += chunk("VMAD", head + map.corners);
    parts.surfaces += texturedChunk(surface, clipOf(parts, surface.image));
}

static st_parts partsOf(const st_mesh &mesh) {
    st_parts parts;
    for (std::size_t i = 0; i < mesh.surfaces.size(); i++)
        if (!mesh.surfaces[i].image.empty())
            addTextured(parts, mesh, i);
    if (!parts.clips.empty())
        parts.surfaces += texturedChunk({"(no image)", {1, 1, 1}, 0, ""}, 0);
    for (const st_surface &surface : mesh.surfaces)
        if (surface.image.empty())
            parts.surfaces += chunk("SURF", surfaceBody(surface));
    return parts;
}

std::string objectBytes(const st_mesh &mesh, std::string *problem) {
    *problem = namesProblem(mesh);
    if (mesh.points.size() > INDEX_LIMIT || mesh.polygons.size() > INDEX_LIMIT)
        *problem = "it has more than 16777216 points or polygons";
    if (!problem->empty())
        return "";
    const st_parts parts = partsOf(mesh);
    const std::string layer = u2(0) + u2(0) + vector({0, 0, 0}) + text("");
    return form("LWO2", chunk("TAGS", surfaceNames(mesh)) + chunk("LAYR", layer) +
                            pointChunk(mesh) + parts.pointMaps + polygonChunk(mesh) +
                            polygonTagChunk(mesh) + parts.cornerMaps + parts.clipChunks +
                            parts.surfaces);
}
