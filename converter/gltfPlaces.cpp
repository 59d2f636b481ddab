// Normals are turned by cofactors, which no place without a volume makes infinite.
#include "converter/gltfPlaces.h"

#include "converter/wide.h"

#include <algorithm>
#include <cmath>

st_gltfPlace operator*(const st_gltfPlace &outer, const st_gltfPlace &inner) {
    st_gltfPlace result;
    for (int column = 0; column < 4; column++)
        for (int row = 0; row < 3; row++) {
            double sum = column == 3 ? outer.columns[3][row] : 0;
            for (int i = 0; i < 3; i++)
                sum += outer.columns[i][row] * inner.columns[column][i];
            result.columns[column][row] = sum;
        }
    return result;
}

static void turnBy(const std::vector<double> &rotation, st_gltfPlace *place) {
    double x = rotation[0], y = rotation[1], z = rotation[2], w = rotation[3];
    const double length = std::sqrt(x * x + y * y + z * z + w * w);
    if (!(length > 0))
        return;
    x /= length, y /= length, z /= length, w /= length;
    const double columns[3][3] = {
        {1 - 2 * (y * y + z * z), 2 * (x * y + z * w), 2 * (x * z - y * w)},
        {2 * (x * y - z * w), 1 - 2 * (x * x + z * z), 2 * (y * z + x * w)},
        {2 * (x * z + y * w), 2 * (y * z - x * w), 1 - 2 * (x * x + y * y)}};
    std::copy_n(&columns[0][0], 9, &place->columns[0][0]);
}

st_gltfPlace placeOfMatrix(const double (&matrix)[16]) {
    st_gltfPlace place;
    for (int column = 0; column < 4; column++)
        for (int row = 0; row < 3; row++)
            place.columns[column][row] = matrix[column * 4 + row];
    return place;
}

st_gltfPlace placeOf(const tinygltf::Node &node) {
    st_gltfPlace place;
    if (node.matrix.size() == 16) {
        double matrix[16];
        std::copy_n(node.matrix.begin(), 16, matrix);
        return placeOfMatrix(matrix);
    }
    if (node.rotation.size() == 4)
        turnBy(node.rotation, &place);
    if (node.scale.size() == 3)
        for (std::size_t column = 0; column < 3; column++)
            for (double &part : place.columns[column])
                part *= node.scale[column];
    if (node.translation.size() == 3)
        std::copy_n(node.translation.begin(), 3, place.columns[3]);
    return place;
}

st_vec placedPoint(const st_gltfPlace &place, const float (&point)[3]) {
    double sum[3];
    for (int row = 0; row < 3; row++) {
        sum[row] = place.columns[3][row];
        for (int column = 0; column < 3; column++)
            sum[row] += place.columns[column][row] * static_cast<double>(point[column]);
    }
    return {sound(sum[0]), sound(sum[1]), sound(sum[2])};
}

st_normalPlace normalPlace(const st_gltfPlace &place) {
    st_normalPlace result = {};
    const auto &m = place.columns;
    for (int column = 0; column < 3; column++)
        for (int row = 0; row < 3; row++) {
            const int c1 = (column + 1) % 3, c2 = (column + 2) % 3;
            const int r1 = (row + 1) % 3, r2 = (row + 2) % 3;
            result.rows[row][column] = m[c1][r1] * m[c2][r2] - m[c1][r2] * m[c2][r1];
        }
    double determinant = 0;
    for (int row = 0; row < 3; row++)
        determinant += m[0][row] * result.rows[row][0];
    result.isMirror = determinant < 0;
    if (result.isMirror)
        for (auto &row : result.rows)
            for (double &factor : row)
                factor = -factor;
    return result;
}

st_vec placedNormal(const st_normalPlace &place, const float (&n)[3], st_vec otherwise) {
    double sum[3] = {};
    for (int row = 0; row < 3; row++)
        for (int column = 0; column < 3; column++)
            sum[row] += place.rows[row][column] * static_cast<double>(n[column]);
    return directionOf({sum[0], sum[1], sum[2]}, otherwise);
}
