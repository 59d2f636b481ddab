// Where a scene stands: mirrored, turned, scaled, moved, or fitted into another one's place.
//
//   st_placing placing;
//   placing.turn = {0, 180, 0};
//   placeScene(placing, &scene);
#pragma once

#include "converter/scene.h"

struct st_sceneBox {
    bool isEmpty = true; // there are no polygons to be seen
    st_vec low = {}, high = {};
};

// Around the corners of all polygons but those of hidden layers.
st_sceneBox boxOf(const st_scene &scene);

// What is done to a scene, in this order.
struct st_placing {
    int mirror = -1;      // axis that is turned round, 0 to 2 for x to z; -1: none
    st_vec turn = {};     // degrees about the x axis, then about y, then about z
    float scale = 1;      // above 0
    st_sceneBox fit = {}; // to be filled: the same middle and foot, as large as fits; empty: none
    st_vec move = {};
};

// Points may come to lie beyond all numbers when that is far away.
void placeScene(const st_placing &placing, st_scene *scene);
