// Where the nodes of a glTF file put what hangs on them.
//
//   const st_gltfPlace place = outer * placeOf(node);
//   const st_vec point = placedPoint(place, position);
#pragma once

#include "converter/gltfFile.h"
#include "modeling/mesh.h"

// p becomes the sum of the columns times p's coordinates, and the last.
struct st_gltfPlace {
    double columns[4][3] = {{1, 0, 0}, {0, 1, 0}, {0, 0, 1}, {0, 0, 0}};
};

// What turns normals, and whether the place mirrors.
struct st_normalPlace {
    double rows[3][3];
    bool isMirror;
};

// What of a place is no number is 0 in what comes out.
st_gltfPlace operator*(const st_gltfPlace &outer, const st_gltfPlace &inner);
st_gltfPlace placeOf(const tinygltf::Node &node);
// As accessors and nodes give it: column by column.
st_gltfPlace placeOfMatrix(const double (&matrix)[16]);

st_vec placedPoint(const st_gltfPlace &place, const float (&point)[3]);
st_normalPlace normalPlace(const st_gltfPlace &place);

// Of length 1; `otherwise` where there is no direction.
st_vec placedNormal(const st_normalPlace &place, const float (&n)[3], st_vec otherwise);
