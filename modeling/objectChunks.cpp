// See objectChunks.h.
#include "modeling/objectChunks.h"

#include <cstring>

constexpr std::size_t NAME_LIMIT = 31; // the renderer keeps names in 32 bytes

namespace objectChunks {

std::string u2(unsigned value) {
    return {static_cast<char>(value >> 8U & 0xFFU), static_cast<char>(value & 0xFFU)};
}

std::string u4(std::uint32_t value) {
    return u2(value >> 16U) + u2(value & 0xFFFFU);
}

std::string f4(float value) {
    std::uint32_t bits = 0;
    std::memcpy(&bits, &value, sizeof bits);
    return u4(bits);
}

std::string vector(st_vec v) {
    return f4(v.x) + f4(v.y) + f4(v.z);
}

static std::string even(std::string bytes) {
    if (bytes.size() % 2 != 0)
        bytes += '\0';
    return bytes;
}

std::string text(const std::string &value) {
    return even(value + '\0');
}

std::string chunk(const char *id, const std::string &body) {
    return id + u4(static_cast<std::uint32_t>(body.size())) + even(body);
}

std::string subChunk(const char *id, const std::string &body) {
    return id + u2(static_cast<unsigned>(body.size())) + even(body);
}

std::string form(const char *type, const std::string &chunks) {
    return chunk("FORM", type + chunks);
}

std::string pointChunk(const std::vector<st_vec> &points) {
    std::string body;
    body.reserve(points.size() * 12);
    for (const st_vec &point : points)
        body += vector(point);
    return chunk("PNTS", body);
}

std::string surfaceNames(const std::vector<st_surface> &surfaces) {
    std::string names;
    for (const st_surface &surface : surfaces)
        names += text(surface.name);
    return names;
}

std::string namesProblem(const std::vector<st_surface> &surfaces) {
    for (const st_surface &surface : surfaces) {
        if (surface.name.empty())
            return "a surface has no name";
        if (surface.name.size() > NAME_LIMIT)
            return "surface name \"" + surface.name + "\" does not fit in 31 characters";
    }
    return "";
}

} // namespace objectChunks
