// What both layouts of a LightWave object file are made of: big-endian numbers, texts and chunks
// padded to even length, and the chunks that are the same in both.
#pragma once

#include "modeling/mesh.h"

#include <cstdint>
#include <string>
#include <vector>

// In a namespace, as others have functions of these short names for bytes of their own.
namespace objectChunks {

std::string u2(unsigned value);
std::string u4(std::uint32_t value);
std::string f4(float value);
std::string vector(st_vec v);
// With its zero byte.
std::string text(const std::string &value);

std::string chunk(const char *id, const std::string &body);
// With a size of two bytes, as in surfaces and clips.
std::string subChunk(const char *id, const std::string &body);
// The whole file.
std::string form(const char *type, const std::string &chunks);

std::string pointChunk(const std::vector<st_vec> &points);
// Names of all surfaces, in their order.
std::string surfaceNames(const std::vector<st_surface> &surfaces);
// Why the names cannot be written, as the renderer could not keep one of them; "" when they can.
std::string namesProblem(const std::vector<st_surface> &surfaces);

} // namespace objectChunks
