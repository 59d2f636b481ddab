// Chunks that small models are put together from.
//   form("LWO2", surf("a") + pnts({0, 0, 0, 1, 0, 0, 0, 1, 0}) + pols({{0, 1, 2}}) +
//                    polygonTags({"a"}, {0}))
#pragma once

#include "tests/support/chunkWriter.h"

#include <vector>

// A point list of x y z triples.
inline std::string pnts(const std::vector<float> &coordinates) {
    std::string body;
    for (const float coordinate : coordinates)
        body += f4(coordinate);
    return chunk("PNTS", body);
}

// A list of polygons.
inline std::string pols(const std::vector<std::vector<unsigned>> &polygons) {
    std::string body = "FACE";
    for (const std::vector<unsigned> &polygon : polygons) {
        body += u2(static_cast<unsigned>(polygon.size()));
        for (const unsigned point : polygon)
            body += vx(point);
    }
    return chunk("POLS", body);
}

// A tag list of the names, and the tag of that number for each polygon in turn.
inline std::string polygonTags(const std::vector<std::string> &names,
                               const std::vector<unsigned> &tags) {
    std::string nameBytes;
    for (const std::string &name : names)
        nameBytes += s0(name);
    std::string body = "SURF";
    for (std::size_t i = 0; i < tags.size(); i++)
        body += vx(static_cast<unsigned>(i)) + vx(tags[i]);
    return chunk("TAGS", nameBytes) + chunk("PTAG", body);
}

// A surface of colour (0.5 0.25 1) and what else follows in it.
inline std::string surf(const std::string &name, const std::string &more = "") {
    return chunk("SURF", s0(name) + s0("") + sub("COLR", f4(0.5F, 0.25F, 1) + vx(0)) + more);
}

// For a surface: a colour texture of an image clip; projection 5 is UV.
inline std::string colorTexture(unsigned clip, unsigned projection = 5) {
    return sub("BLOK", sub("IMAP", s0("o") + sub("CHAN", "COLR")) + sub("PROJ", u2(projection)) +
                           sub("IMAG", vx(clip)));
}

inline std::string stillClip(unsigned index, const std::string &file) {
    return chunk("CLIP", u4(index) + sub("STIL", s0(file)));
}

// A layer of its own.
inline std::string layr(unsigned index) {
    return chunk("LAYR", u2(index) + u2(0) + f4(0, 0, 0) + s0(""));
}

inline std::string mapBody(const std::string &name, unsigned dimension,
                           const std::vector<float> &values, const std::string &polygon) {
    std::string body = "TXUV" + u2(dimension) + s0(name);
    for (std::size_t i = 0; i < values.size(); i++) {
        if (i % dimension == 0)
            body += vx(static_cast<unsigned>(i / dimension)) + polygon;
        body += f4(values[i]);
    }
    return body;
}

// Values for points of the latest layer, starting at point 0, dimension floats each.
inline std::string vmap(const std::string &name, unsigned dimension,
                        const std::vector<float> &values) {
    return chunk("VMAP", mapBody(name, dimension, values, ""));
}

// The same for the corners of one polygon at those points.
inline std::string vmad(const std::string &name, unsigned dimension, unsigned polygon,
                        const std::vector<float> &values) {
    return chunk("VMAD", mapBody(name, dimension, values, vx(polygon)));
}
