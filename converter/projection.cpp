// Angles run the way that a viewer on the -z side, with +x on the right, reads the picture.
#include "converter/projection.h"

#include <cmath>

constexpr float SMALLEST_SIZE = 1e-12F;
constexpr float WIDEST_SLICE = 0.49F; // of a turn: at half a turn a side runs through the axis

static st_vec vectorOf(const float *values) {
    return {values[0], values[1], values[2]};
}

static float part(st_vec v, int axis) {
    return axis == 0 ? v.x : axis == 1 ? v.y : v.z;
}

static float usableSize(float size) {
    return std::isfinite(size) && std::fabs(size) > SMALLEST_SIZE ? size : 1;
}

static float tilesOf(const st_lwEnvValue &wrap) {
    return std::isfinite(wrap.value) && wrap.value > 0 ? wrap.value : 1;
}

static st_vec finiteOrZero(st_vec v) {
    return isFinite(v) ? v : st_vec{0, 0, 0};
}

st_projection projectionOf(const st_lwTexture &texture, const st_bounds &box) {
    const st_lwImageMap &map = texture.param.imageMap;
    st_projection projection = {};
    projection.kind = map.projection;
    projection.axis = map.axis >= 0 && map.axis <= 2 ? map.axis : 0;
    projection.center = finiteOrZero(vectorOf(texture.tmap.center.value));
    projection.size = vectorOf(texture.tmap.size.value);
    projection.turn = finiteOrZero(vectorOf(texture.tmap.rotate.value));
    projection.tilesU = tilesOf(map.wrapWidth);
    projection.tilesV = tilesOf(map.wrapHeight);
    if (map.projection == LW_PROJECTION_FRONT) {
        projection.axis = 2;
        projection.center = (box.low + box.high) * 0.5F;
        projection.size = box.high - box.low;
        projection.turn = {0, 0, 0};
    }
    projection.size = {usableSize(projection.size.x), usableSize(projection.size.y),
                       usableSize(projection.size.z)};
    return projection;
}

// ------------------------------------------------------------------- one point at a time

// From the model's space into the picture's: it is turned by bank, pitch and heading in this order.
static st_vec placeIn(const st_projection &projection, st_vec position) {
    const st_vec p = position - projection.center;
    const st_vec turn = projection.turn;
    const float ch = std::cos(turn.x), sh = std::sin(turn.x);
    const st_vec q = {p.x * ch - p.z * sh, p.y, p.x * sh + p.z * ch};
    const float cp = std::cos(turn.y), sp = std::sin(turn.y);
    const st_vec r = {q.x, q.y * cp + q.z * sp, q.z * cp - q.y * sp};
    const float cb = std::cos(turn.z), sb = std::sin(turn.z);
    return {r.x * cb + r.y * sb, r.y * cb - r.x * sb, r.z};
}

static st_uv flat(const st_projection &projection, int axis, st_vec p) {
    const int across = axis == 0 ? 2 : 0;
    const int up = axis == 1 ? 2 : 1;
    return {part(p, across) / part(projection.size, across) + 0.5F,
            part(p, up) / part(projection.size, up) + 0.5F};
}

// A point about the axis of a cylinder or sphere.
struct st_around {
    float turns;  // around it, 0 to 1 of a turn
    float radius; // from the axis; 0: turns says nothing
    float height; // along it
};

static st_around around(int axis, st_vec p) {
    // Right and ahead as seen by who reads the picture, and up.
    const float right = axis == 0 ? -p.z : p.x;
    const float ahead = axis == 1 ? p.z : -p.y;
    const float turns = -std::atan2(right, ahead) / (2 * PI);
    return {turns - std::floor(turns), std::hypot(right, ahead), part(p, axis)};
}

static float heightOn(const st_projection &projection, const st_around &place) {
    if (projection.kind == LW_PROJECTION_CYLINDRICAL)
        return place.height / part(projection.size, projection.axis) + 0.5F;
    const float latitude = std::atan2(place.height, place.radius);
    return (latitude / PI + 0.5F) * projection.tilesV;
}

// ---------------------------------------------------------------------- whole polygons

static void projectFlat(const st_projection &projection, int axis,
                        const std::vector<st_vec> &positions, std::vector<st_uv> *uvs) {
    for (const st_vec &position : positions)
        uvs->push_back(flat(projection, axis, placeIn(projection, position)));
}

static float nearest(float turns, float to) {
    return turns + std::round(to - turns);
}

// The radius below which a corner lies on the axis.
static float nearAxis(const std::vector<st_around> &places) {
    float radius = 0;
    for (const st_around &place : places)
        radius = std::fmax(radius, std::fmax(place.radius, std::fabs(place.height)));
    return radius * 1e-5F;
}

// Turns of all corners, each less than half a turn from the one before it. Those on the axis have
// none and get the mean of the others.
static void unwind(std::vector<st_around> *places) {
    const float onAxis = nearAxis(*places);
    float last = 0, sum = 0;
    int count = 0;
    for (st_around &place : *places) {
        if (place.radius <= onAxis)
            continue;
        place.turns = count == 0 ? place.turns : nearest(place.turns, last);
        last = place.turns;
        sum += place.turns;
        count++;
    }
    for (st_around &place : *places)
        if (place.radius <= onAxis)
            place.turns = count == 0 ? 0 : sum / static_cast<float>(count);
}

static void projectAround(const st_projection &projection, const std::vector<st_vec> &positions,
                          std::vector<st_uv> *uvs) {
    std::vector<st_around> places;
    places.reserve(positions.size());
    for (const st_vec &position : positions)
        places.push_back(around(projection.axis, placeIn(projection, position)));
    unwind(&places);
    for (const st_around &place : places)
        uvs->push_back({place.turns * projection.tilesU, heightOn(projection, place)});
}

static int mainAxis(st_vec normal) {
    const float x = std::fabs(normal.x), y = std::fabs(normal.y), z = std::fabs(normal.z);
    return x >= y && x >= z ? 0 : y >= z ? 1 : 2;
}

void projectPolygon(const st_projection &projection, st_vec normal,
                    const std::vector<st_vec> &positions, std::vector<st_uv> *uvs) {
    uvs->clear();
    switch (projection.kind) {
    case LW_PROJECTION_CYLINDRICAL:
    case LW_PROJECTION_SPHERICAL: projectAround(projection, positions, uvs); break;
    case LW_PROJECTION_CUBIC: {
        st_projection turnOnly = projection;
        turnOnly.center = {0, 0, 0};
        projectFlat(projection, mainAxis(placeIn(turnOnly, normal)), positions, uvs);
        break;
    }
    default: projectFlat(projection, projection.axis, positions, uvs);
    }
}

// --------------------------------------------------------------------- about the axis

static bool findAxis(const st_projection &projection, st_vec normal, st_vec onPolygon,
                     st_vec *center) {
    constexpr float STEEP = 0.1F;
    st_projection turnOnly = projection;
    turnOnly.center = {0, 0, 0};
    const st_vec axis = {part(placeIn(turnOnly, {1, 0, 0}), projection.axis),
                         part(placeIn(turnOnly, {0, 1, 0}), projection.axis),
                         part(placeIn(turnOnly, {0, 0, 1}), projection.axis)};
    const float slope = dotProduct(normal, axis);
    if (!(std::fabs(slope) > STEEP))
        return false;
    *center =
        projection.center + axis * (dotProduct(normal, onPolygon - projection.center) / slope);
    return isFinite(*center);
}

bool projectCap(const st_projection &projection, st_vec normal,
                const std::vector<st_vec> &positions, st_cap *cap) {
    const bool isAround =
        projection.kind == LW_PROJECTION_CYLINDRICAL || projection.kind == LW_PROJECTION_SPHERICAL;
    if (!isAround || positions.size() < 3 ||
        !findAxis(projection, normal, positions[0], &cap->center))
        return false;
    std::vector<st_around> places;
    places.reserve(positions.size() + 1);
    for (const st_vec &position : positions)
        places.push_back(around(projection.axis, placeIn(projection, position)));
    places.push_back(places.front());
    const float onAxis = nearAxis(places);
    bool isForward = true, isBackward = true;
    for (std::size_t i = 1; i < places.size(); i++) {
        places[i].turns = nearest(places[i].turns, places[i - 1].turns);
        const float step = places[i].turns - places[i - 1].turns;
        const bool isSlice = places[i].radius > onAxis && std::fabs(step) < WIDEST_SLICE;
        isForward = isForward && isSlice && step > 0;
        isBackward = isBackward && isSlice && step < 0;
    }
    if (!isForward && !isBackward)
        return false;
    cap->uvs.clear();
    for (const st_around &place : places)
        cap->uvs.push_back({place.turns * projection.tilesU, heightOn(projection, place)});
    cap->centerV = heightOn(projection, around(projection.axis, placeIn(projection, cap->center)));
    return true;
}
