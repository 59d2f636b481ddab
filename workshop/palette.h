// The twelve colours of the world. Everything is one of these or a mixture, lighter or darker as
// the lamps ask. An invitation may have others of its own, so they are variables of the program:
// whoever paints or builds reads them when he does, and keeps none.
//
//   usePalette(DEFAULT_PALETTE);
//   const st_vec shade = mix(MOSS, INK, 0.35F);
#pragma once

#include "modeling/mesh.h"

#include <array>

constexpr st_vec colorOf(unsigned rgb) {
    return {static_cast<float>(rgb >> 16U & 0xFFU) / 255.0F,
            static_cast<float>(rgb >> 8U & 0xFFU) / 255.0F,
            static_cast<float>(rgb & 0xFFU) / 255.0F};
}

constexpr std::size_t PALETTE_COLORS = 12;
using st_palette = std::array<unsigned, PALETTE_COLORS>; // 0xRRGGBB, in the order of the names

constexpr std::array<const char *, PALETTE_COLORS> PALETTE_NAMES = {
    "ink", "dusk", "sky", "haze", "rose", "cherry", "sun", "amber", "leaf", "moss", "bark", "milk"};
constexpr st_palette DEFAULT_PALETTE = {0x1D2444, 0x3D5C9C, 0x7DB5E3, 0xFFE2BE, 0xEE7B6C, 0xD0302A,
                                        0xFFD23F, 0xF0912B, 0x86BF4A, 0x39763F, 0x68412B, 0xFFF8EA};

// From now on these are the colours; until then the default ones are.
void usePalette(const st_palette &palette);

extern const st_vec &INK;
extern const st_vec &DUSK;
extern const st_vec &SKY;
extern const st_vec &HAZE;
extern const st_vec &ROSE;
extern const st_vec &CHERRY;
extern const st_vec &SUN;
extern const st_vec &AMBER;
extern const st_vec &LEAF;
extern const st_vec &MOSS;
extern const st_vec &BARK;
extern const st_vec &MILK;
extern const st_vec &WOOD; // of AMBER, BARK and HAZE

constexpr st_vec WHITE = {1, 1, 1}; // for textured surfaces: the texture as it is
