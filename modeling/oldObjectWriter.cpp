// LWOB chunks: PNTS, SRFS, POLS, SURF. A polygon names its surface by number, from 1; a
// surface is a flat row of sub-chunks, where texture parameters follow their texture.
#include "modeling/oldObjectWriter.h"

#include "modeling/objectChunks.h"

#include <cmath>

using namespace objectChunks;

constexpr std::size_t POINT_LIMIT = 0x10000;
constexpr unsigned FLAG_SMOOTH = 0x4;
constexpr float FULL = 256;     // what stands for 1 in the two-byte amounts
constexpr unsigned GLOSSY = 64; // of 16, 64, 256, 1024: a small highlight with a soft edge

static std::string polygonBytes(const st_polygon &polygon) {
    std::string bytes = u2(static_cast<unsigned>(polygon.cornerCount));
    for (int i = 0; i < polygon.cornerCount; i++)
        bytes += u2(static_cast<unsigned>(polygon.points[i]));
    const int number = polygon.surface + 1;
    if (polygon.details == 0)
        return bytes + u2(static_cast<unsigned>(number));
    return bytes + u2(static_cast<unsigned>(-number)) + u2(static_cast<unsigned>(polygon.details));
}

static std::string polygonChunk(const st_mesh &mesh) {
    std::string body;
    for (const st_polygon &polygon : mesh.polygons)
        body += polygonBytes(polygon);
    return chunk("POLS", body);
}

static std::string colorBytes(st_vec color) {
    std::string bytes;
    for (const float amount : {color.x, color.y, color.z})
        bytes += static_cast<char>(std::lround(amount * 255));
    return bytes;
}

static std::string amount(float value) {
    return u2(static_cast<unsigned>(std::lround(value * FULL)));
}

static std::string imageMap(const std::string &image, const st_planarMap &map) {
    std::string parts = subChunk("CTEX", text("Planar Image Map")) + subChunk("TIMG", text(image)) +
                        subChunk("TFLG", u2(1U << static_cast<unsigned>(map.axis))) +
                        subChunk("TSIZ", vector(map.size)) + subChunk("TCTR", vector(map.center));
    // After the centre, from which the motion starts.
    if (lengthOf(map.velocity) > 0)
        parts += subChunk("TVEL", vector(map.velocity));
    return parts;
}

static std::string surfaceChunk(const st_surface &surface) {
    const bool smooth = surface.smoothing > 0;
    std::string body = text(surface.name) + subChunk("COLR", colorBytes(surface.color)) +
                       subChunk("FLAG", u2(smooth ? FLAG_SMOOTH : 0)) + subChunk("DIFF", amount(1));
    if (surface.shine > 0)
        body += subChunk("SPEC", amount(surface.shine)) + subChunk("GLOS", u2(GLOSSY));
    if (smooth) // after FLAG, which brings an angle of its own
        body += subChunk("SMAN", f4(surface.smoothing));
    if (!surface.image.empty())
        body += imageMap(surface.image, surface.planar);
    return chunk("SURF", body);
}

std::string oldObjectBytes(const st_mesh &mesh, std::string *problem) {
    *problem = namesProblem(mesh.surfaces);
    if (mesh.points.size() > POINT_LIMIT)
        *problem = "in the older layout a model has at most 65536 points";
    if (!problem->empty())
        return "";
    std::string chunks =
        pointChunk(mesh.points) + chunk("SRFS", surfaceNames(mesh.surfaces)) + polygonChunk(mesh);
    for (const st_surface &surface : mesh.surfaces)
        chunks += surfaceChunk(surface);
    return form("LWOB", chunks);
}
