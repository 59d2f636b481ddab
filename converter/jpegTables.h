// Whether a JPEG file is in order as far as stb_image takes it for granted.
#pragma once

#include <cstddef>

// False for code tables of more than 256 codes, behind which it writes beyond its memory, for scans
// by tables that are not there, which it follows wherever they lead, and for segments that do not
// follow one another. True for files that are no JPEG.
bool isJpegInOrder(const unsigned char *bytes, std::size_t size);
