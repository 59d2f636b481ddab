// Writes object files byte by byte, so that a test shows every byte it means.
//
// Each function returns the bytes as a string; put them together with +:
//   writeFile(path, form("LWO2", chunk("PNTS", f4(0) + f4(1) + f4(2))));
// Numbers are big-endian, as everywhere in these files.
#pragma once

#include <cstdint>
#include <cstring>
#include <fstream>
#include <string>

inline std::string u1(unsigned value) {
    return std::string(1, static_cast<char>(value));
}

inline std::string u2(unsigned value) {
    return u1(value >> 8 & 0xFF) + u1(value & 0xFF);
}

inline std::string u4(std::uint32_t value) {
    return u2(value >> 16) + u2(value & 0xFFFF);
}

inline std::string f4(float value) {
    std::uint32_t bits = 0;
    std::memcpy(&bits, &value, sizeof bits);
    return u4(bits);
}

inline std::string f4(float a, float b, float c) {
    return f4(a) + f4(b) + f4(c);
}

// Variable-length index: two bytes below 0xFF00, else 0xFF and three bytes.
inline std::string vx(unsigned index) {
    return index < 0xFF00 ? u2(index) : u4(0xFF000000U | index);
}

// Zero-terminated, padded to even length.
inline std::string s0(const std::string &text) {
    return text + std::string(text.size() % 2 == 0 ? 2 : 1, '\0');
}

inline std::string padded(std::string bytes) {
    if (bytes.size() % 2 != 0)
        bytes += '\0';
    return bytes;
}

// Top-level chunk: ID and 4-byte size.
inline std::string chunk(const std::string &id, const std::string &body) {
    return id + u4(static_cast<std::uint32_t>(body.size())) + padded(body);
}

// Sub-chunk: ID and 2-byte size.
inline std::string sub(const std::string &id, const std::string &body) {
    return id + u2(static_cast<unsigned>(body.size())) + padded(body);
}

inline std::string form(const std::string &type, const std::string &chunks) {
    return "FORM" + u4(static_cast<std::uint32_t>(4 + chunks.size())) + type + chunks;
}

inline void writeFile(const std::string &path, const std::string &bytes) {
    std::ofstream(path, std::ios::binary) << bytes;
}
