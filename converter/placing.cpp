// Mirroring turns polygons round as well, which would show their backs otherwise.
#include "converter/placing.h"

#include "converter/sceneCorners.h"

#include <algorithm>

static void widen(st_sceneBox *box, st_vec point) {
    if (box->isEmpty)
        box->low = box->high = point;
    box->isEmpty = false;
    box->low = lowest(box->low, point);
    box->high = highest(box->high, point);
}

st_sceneBox boxOf(const st_scene &scene) {
    st_sceneBox box;
    for (const st_layer &layer : scene.layers)
        for (const st_scenePolygon &polygon : layer.polygons)
            for (int i = 0; !layer.isHidden && i < polygon.cornerCount; i++)
                widen(&box, placeOf(layer, polygon, i));
    return box;
}

static void mirrorLayer(st_vec sides, st_layer *layer) {
    const auto mirrored = [&](st_vec v) {
        return st_vec{v.x * sides.x, v.y * sides.y, v.z * sides.z};
    };
    for (st_vec &point : layer->points)
        point = mirrored(point);
    for (st_sceneCorner &corner : layer->corners)
        corner.normal = mirrored(corner.normal);
    layer->pivot = mirrored(layer->pivot);
    for (const st_scenePolygon &polygon : layer->polygons) {
        const auto first = static_cast<std::ptrdiff_t>(polygon.firstCorner);
        const auto end = first + polygon.cornerCount;
        std::reverse(layer->corners.begin() + first, layer->corners.begin() + end);
        if (!layer->colors.empty())
            std::reverse(layer->colors.begin() + first, layer->colors.begin() + end);
    }
}

static void mirrorScene(int axis, st_scene *scene) {
    const auto side = [&](int other) { return other == axis ? -1.0F : 1.0F; };
    for (st_layer &layer : scene->layers)
        mirrorLayer({side(0), side(1), side(2)}, &layer);
}

// Right for what turns and scales evenly.
static void applyPlace(const st_place &place, st_scene *scene) {
    st_place direction = place;
    direction.origin = {0, 0, 0};
    for (st_layer &layer : scene->layers) {
        for (st_vec &point : layer.points)
            point = placePoint(place, point);
        for (st_sceneCorner &corner : layer.corners)
            corner.normal = unit(placePoint(direction, corner.normal));
        layer.pivot = placePoint(place, layer.pivot);
    }
}

// A flat box has no say in the direction in which it is flat.
static float fittingScale(st_vec from, st_vec to) {
    float scale = 0;
    const float pairs[3][2] = {{from.x, to.x}, {from.y, to.y}, {from.z, to.z}};
    for (const auto &[own, room] : pairs)
        if (own > 0 && room > 0)
            scale = scale > 0 ? std::min(scale, room / own) : room / own;
    return scale > 0 ? scale : 1;
}

static st_vec footOf(const st_sceneBox &box) {
    return {mix(box.low.x, box.high.x, 0.5F), box.low.y, mix(box.low.z, box.high.z, 0.5F)};
}

static st_place fittingPlace(const st_sceneBox &from, const st_sceneBox &to) {
    const float scale = fittingScale(from.high - from.low, to.high - to.low);
    return moved(footOf(to)) * scaled({scale, scale, scale}) * moved(footOf(from) * -1.0F);
}

void placeScene(const st_placing &placing, st_scene *scene) {
    constexpr st_vec NOTHING = {0, 0, 0};
    if (placing.mirror >= 0)
        mirrorScene(placing.mirror, scene);
    // One by one, so that what is not asked for does not round anything.
    if (placing.turn != NOTHING)
        applyPlace(turned({0, 0, 1}, placing.turn.z) * turned({0, 1, 0}, placing.turn.y) *
                       turned({1, 0, 0}, placing.turn.x),
                   scene);
    if (placing.scale != 1)
        applyPlace(scaled({placing.scale, placing.scale, placing.scale}), scene);
    const st_sceneBox box = boxOf(*scene);
    if (!placing.fit.isEmpty && !box.isEmpty)
        applyPlace(fittingPlace(box, placing.fit), scene);
    if (placing.move != NOTHING)
        applyPlace(moved(placing.move), scene);
}
