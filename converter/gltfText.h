// The text of a glTF file, made such that tinygltf can be trusted with it.
//
// tinygltf recurses as deep as a text nests, keeps all that it does not know, in records of some
// hundred bytes a number, and reaches into buffers for pictures without looking at their size. So
// it is not shown what is not needed here.
#pragma once

#include "converter/gltfFile.h"

// Where a primitive's indices are found among its attributes: tinygltf refuses those that are no
// more than the values that a sparse accessor replaces.
constexpr const char *INDICES = " indices";

// Where a buffer's bytes come from.
struct st_gltfBuffer {
    std::string address = {};             // as written; "" for the rest of a .glb
    std::vector<unsigned char> data = {}; // of a data URI, which is no longer in address
    std::size_t size = 0;                 // bytes that the text promises
};

// Replaces *text: what is left names buffers by their number. Fills the file's images and what it
// has besides, and the sources of the buffers. "" or the problem in one line. Throws what the JSON
// library throws.
std::string tameGltfText(std::string *text, st_gltfFile *file, std::vector<st_gltfBuffer> *buffers);
