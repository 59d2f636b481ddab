// Small object files that use the whole format between them, for tests that damage files.
#pragma once

#include "tests/support/modelParts.h"

#include <string>
#include <vector>

inline std::string sampleBlock(const std::string &type, const std::string &header,
                               const std::string &subChunks) {
    return sub("BLOK", sub(type, header) + subChunks);
}

// Two layers, several chunks of a kind, tags, maps of both kinds.
inline std::string geometryModel() {
    const std::string polygons = chunk("POLS", "FACE" + u2(3) + vx(0) + vx(3) + vx(1) + u2(0x400) +
                                                   u2(0x8003) + vx(2) + vx(1) + vx(3));
    const std::string piece = pnts({0, 0, 0, 0, 1, 0, 1, 1, 0.5F, 1, 0, 0}) + polygons +
                              chunk("PTAG", "SURF" + vx(0) + vx(1) + vx(2) + vx(0));
    return form("LWO2", chunk("TAGS", s0("red") + s0("none")) + layr(0) + piece + piece +
                            vmap("uv", 2, {0, 1}) + vmad("uv", 1, 0, {0.5F}) + layr(1) + piece +
                            chunk("BBOX", f4(0, 0, 0) + f4(1, 1, 1)) +
                            surf("red", sub("SMAN", f4(1.6F))));
}

// Every kind of texture, a shader, an envelope.
inline std::string surfaceModel() {
    const std::string header = s0("b") + sub("CHAN", "COLR") + sub("ENAB", u2(1));
    const std::string surface =
        s0("red") + s0("old") + sub("LINE", u2(1)) +
        sampleBlock("IMAP", header,
                    sub("TMAP", sub("SIZE", f4(1, 1, 1) + vx(0))) + sub("VMAP", s0("uv")) +
                        sub("IMAG", vx(1))) +
        sampleBlock("PROC", header, sub("VALU", f4(1)) + sub("FUNC", s0("wood") + "data")) +
        sampleBlock("GRAD", s0("a") + sub("CHAN", "BUMP"),
                    sub("FKEY", std::string(40, '\1')) + sub("IKEY", u2(0) + u2(1))) +
        sampleBlock("SHDR", s0("s") + sub("ENAB", u2(1)), sub("FUNC", s0("toon") + "data"));
    const std::string envelope = vx(1) + sub("NAME", s0("X")) + sub("KEY ", f4(1) + f4(2)) +
                                 sub("SPAN", "TCB " + f4(1, 2, 3)) + sub("KEY ", f4(0) + f4(2)) +
                                 sub("CHAN", s0("n") + u2(1) + "data");
    return form("LWO2", chunk("ENVL", envelope) + chunk("SURF", surface));
}

// Clips, a reference object.
inline std::string clipModel() {
    const std::string sequence = u4(2) + sub("ISEQ", u4(0) + u4(0) + u2(1) + s0("a") + s0("b"));
    const std::string still = u4(1) + sub("STIL", s0("a.tga")) + sub("GAMM", f4(1) + vx(1)) +
                              sub("IFLT", s0("blur") + u2(1) + "data");
    const std::string anim = u4(3) + sub("ANIM", s0("a") + s0("b") + "data");
    const std::string texture =
        sampleBlock("IMAP", s0("a") + sub("CHAN", "COLR"),
                    sub("TMAP", sub("OREF", s0("o")) + sub("OREF", s0("p"))));
    return form("LWO2", chunk("CLIP", still) + chunk("CLIP", sequence) + chunk("CLIP", anim) +
                            chunk("SURF", s0("a") + s0("") + texture));
}

// The older layout: detail polygons, textures, envelopes, shaders.
inline std::string olderModel() {
    const std::string polygons =
        u2(3) + u2(0) + u2(3) + u2(1) + u2(0xFFFE) + u2(1) + u2(2) + u2(1) + u2(2) + u2(1);
    const std::string surface = s0("red") + sub("FLAG", u2(0x104)) + sub("COLR", u4(0)) +
                                sub("TREF", "lost") + sub("CTEX", s0("Planar Image Map")) +
                                sub("TFLG", u2(0x7F)) + sub("TVEL", f4(1, 2, 3)) +
                                sub("BTEX", s0("Wood")) + sub("TCLR", u4(0)) + sub("SDAT", "lost") +
                                sub("SHDR", "toon") + sub("SDAT", "data");
    return form("LWOB", chunk("PNTS", f4(0, 0, 0) + f4(0, 1, 0) + f4(1, 1, 0.5F) + f4(1, 0, 0)) +
                            chunk("SRFS", s0("red") + s0("none")) + chunk("POLS", polygons) +
                            chunk("SURF", surface));
}

// The older layout: image names, a reference object.
inline std::string olderClipModel() {
    return form("LWOB", chunk("SURF", s0("red") + sub("CTEX", s0("Cubic Image Map")) +
                                          sub("TIMG", s0("a.tga")) + sub("TREF", "null") +
                                          sub("RIMG", s0("b (sequence)"))));
}

// What the renderer looks for: UV maps of points and corners, a name that it changes, clips.
inline std::string texturedModel() {
    return form("LWO2", pnts({0, 0, 0, 1, 0, 0, 1, 1, 0, 0, 1, 0}) +
                            pols({{0, 1, 2, 3}, {0, 1, 2}}) +
                            polygonTags({"mur3-a_front", "b"}, {1, 1}) + vmap("b", 2, {0, 1}) +
                            vmad("mur3-a", 2, 0, {0, 1, 1, 1}) + stillClip(1, "top.tga") +
                            surf("mur3-a_front", colorTexture(1)) + surf("b", colorTexture(1)));
}

struct SampleModel {
    const char *name;
    std::string bytes;
};

inline const std::vector<SampleModel> &sampleModels() {
    static const std::vector<SampleModel> models = {
        {"geometry", geometryModel()},   {"surface", surfaceModel()},
        {"clip", clipModel()},           {"older", olderModel()},
        {"olderClip", olderClipModel()}, {"textured", texturedModel()}};
    return models;
}
