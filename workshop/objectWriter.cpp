// LWO2 chunks: TAGS, LAYR, PNTS, VMAP, POLS, PTAG, VMAD, CLIP, SURF. Numbers are big-endian,
// bodies are padded to even length.
#include "workshop/objectWriter.h"

#include "workshop/fileWriter.h"
#include "workshop/stop.h"

#include <cstdint>
#include <cstring>
#include <map>

constexpr std::size_t NAME_LIMIT = 31;       // the renderer keeps names in 32 bytes
constexpr std::uint32_t LONG_INDEX = 0xFF00; // indices from here on take four bytes
constexpr unsigned PROJECTION_UV = 5;

static std::string u2(unsigned value) {
    return {static_cast<char>(value >> 8U & 0xFFU), static_cast<char>(value & 0xFFU)};
}

static std::string u4(std::uint32_t value) {
    return u2(value >> 16U) + u2(value & 0xFFFFU);
}

static std::string f4(float value) {
    std::uint32_t bits = 0;
    std::memcpy(&bits, &value, sizeof bits);
    return u4(bits);
}

static std::string vector(st_vec v) {
    return f4(v.x) + f4(v.y) + f4(v.z);
}

static std::string index(int value) {
    const auto bits = static_cast<std::uint32_t>(value);
    return bits < LONG_INDEX ? u2(bits) : u4(0xFF000000U | bits);
}

static std::string even(std::string bytes) {
    if (bytes.size() % 2 != 0)
        bytes += '\0';
    return bytes;
}

static std::string text(const std::string &value) {
    return even(value + '\0');
}

static std::string chunk(const char *id, const std::string &body) {
    return id + u4(static_cast<std::uint32_t>(body.size())) + even(body);
}

static std::string subChunk(const char *id, const std::string &body) {
    return id + u2(static_cast<unsigned>(body.size())) + even(body);
}

static std::string pointChunk(const st_mesh &mesh) {
    std::string body;
    for (const st_vec &point : mesh.points)
        body += vector(point);
    return chunk("PNTS", body);
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

static std::string tagChunks(const st_mesh &mesh) {
    std::string names;
    for (const st_surface &surface : mesh.surfaces)
        names += text(surface.name);
    return chunk("TAGS", names);
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
                                subChunk("PROJ", u2(PROJECTION_UV)) + subChunk("AXIS", u2(0)) +
                                subChunk("IMAG", index(clip)) + subChunk("WRAP", u2(1) + u2(1)) +
                                subChunk("VMAP", text(surface.name)));
}

static std::string surfaceChunk(const st_surface &surface, int clip) {
    std::string body = text(surface.name) + text("") +
                       subChunk("COLR", vector(surface.color) + index(0)) +
                       subChunk("DIFF", f4(1) + index(0));
    if (surface.smoothing > 0)
        body += subChunk("SMAN", f4(surface.smoothing));
    if (clip > 0)
        body += imageLayer(surface, clip);
    return chunk("SURF", body);
}

static void checkNames(const st_mesh &mesh) {
    for (const st_surface &surface : mesh.surfaces)
        if (surface.name.empty() || surface.name.size() > NAME_LIMIT)
            stop("surface name \"" + surface.name + "\" does not fit in 31 characters");
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

static void addSurfaceParts(st_parts &parts, const st_mesh &mesh, std::size_t i) {
    const st_surface &surface = mesh.surfaces[i];
    if (surface.image.empty()) {
        parts.surfaces += surfaceChunk(surface, 0);
        return;
    }
    const st_uvMap map = uvMapOf(mesh, static_cast<int>(i));
    const std::string head = "TXUV" + u2(2) + text(surface.name);
    parts.pointMaps += chunk("VMAP", head + map.points);
    if (!map.corners.empty())
        parts.cornerMaps += chunk("VMAD", head + map.corners);
    parts.surfaces += surfaceChunk(surface, clipOf(parts, surface.image));
}

std::string objectBytes(const st_mesh &mesh) {
    checkNames(mesh);
    st_parts parts;
    // Textured surfaces first: the renderer leaves texturing on between models and turns it off
    // after a textured surface, so a plain one at the start would wear another model's picture.
    for (const bool textured : {true, false})
        for (std::size_t i = 0; i < mesh.surfaces.size(); i++)
            if (mesh.surfaces[i].image.empty() != textured)
                addSurfaceParts(parts, mesh, i);
    const std::string layer = u2(0) + u2(0) + vector({0, 0, 0}) + text("");
    const std::string chunks = tagChunks(mesh) + chunk("LAYR", layer) + pointChunk(mesh) +
                               parts.pointMaps + polygonChunk(mesh) + polygonTagChunk(mesh) +
                               parts.cornerMaps + parts.clipChunks + parts.surfaces;
    return "FORM" + u4(static_cast<std::uint32_t>(4 + chunks.size())) + "LWO2" + chunks;
}

void writeObject(const std::string &path, const st_mesh &mesh) {
    writeBytes(path, objectBytes(mesh));
}
