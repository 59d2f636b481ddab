// How large all pictures of a scene may be together: a small file may name a large picture many
// times, each time to be changed in another way.
#pragma once

#include "converter/scene.h"

constexpr long long SCENE_PIXEL_LIMIT = 128LL << 20;

inline bool hasRoomFor(const st_scene &scene, long long width, long long height) {
    long long sum = width * height;
    for (const st_scenePicture &picture : scene.pictures)
        sum += static_cast<long long>(picture.width) * picture.height;
    return sum <= SCENE_PIXEL_LIMIT;
}
