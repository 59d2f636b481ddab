// The twelve colours of the world. Everything is one of these or a mixture, lighter or darker as
// the lamps ask.
#pragma once

#include "modeling/mesh.h"

constexpr st_vec colorOf(unsigned rgb) {
    return {static_cast<float>(rgb >> 16U & 0xFFU) / 255.0F,
            static_cast<float>(rgb >> 8U & 0xFFU) / 255.0F,
            static_cast<float>(rgb & 0xFFU) / 255.0F};
}

constexpr st_vec INK = colorOf(0x1D2444);
constexpr st_vec DUSK = colorOf(0x3D5C9C);
constexpr st_vec SKY = colorOf(0x7DB5E3);
constexpr st_vec HAZE = colorOf(0xFFE2BE);
constexpr st_vec ROSE = colorOf(0xEE7B6C);
constexpr st_vec CHERRY = colorOf(0xD0302A);
constexpr st_vec SUN = colorOf(0xFFD23F);
constexpr st_vec AMBER = colorOf(0xF0912B);
constexpr st_vec LEAF = colorOf(0x86BF4A);
constexpr st_vec MOSS = colorOf(0x39763F);
constexpr st_vec BARK = colorOf(0x68412B);
constexpr st_vec MILK = colorOf(0xFFF8EA);
constexpr st_vec WOOD = mix(mix(AMBER, BARK, 0.5F), HAZE, 0.2F);

constexpr st_vec WHITE = {1, 1, 1}; // for textured surfaces: the texture as it is
