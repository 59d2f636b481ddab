// Pictures of kinds that other programs' models have.
#pragma once

#include "tests/support/targaWriter.h"

#include <cstdlib>
#include <string>

// BMP of 24 bits; each row of a multiple of 4 bytes, the lowest first.
inline std::string bitmap(unsigned width, unsigned height, const std::string &rows) {
    return "BM" + little4(0) + little4(0) + little4(54) + little4(40) + little4(width) +
           little4(height) + little2(1) + little2(24) + std::string(24, '\0') + rows;
}

// JPEG of 2 x 2 pixels, dark grey.
inline std::string jpegPicture() {
    const std::string digits =
        "ffd8ffdb004300083e3e493e49555555555555645d64686868646464646868687070708383837070"
        "70686870707c7c83838f938f8787838793939b9b9bbabab2b2d9d9e0ffffffffc4004d0001010000"
        "00000000000000000000000000060101010100000000000000000000000000000607100100000000"
        "000000000000000000000000110100000000000000000000000000000000ffc00011080002000203"
        "011200021200031200ffda000c03010002110311003f008b12837f1fffd9";
    std::string bytes;
    for (std::size_t i = 0; i + 1 < digits.size(); i += 2)
        bytes += static_cast<char>(std::strtol(digits.substr(i, 2).c_str(), nullptr, 16));
    return bytes;
}
