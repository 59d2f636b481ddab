// Corner normals with an end. Inside the reader only.
#pragma once

#include "reader/objectRecords.h"

// How many pairs of polygons are compared around crowded points, those that more than 64 polygons
// share, in all layers of an object: a few megabytes must not take minutes. One point that
// 14,100 smooth polygons share is as much, and takes half a second.
constexpr long long MAX_COMPARISONS = 200000000;

// lwGetVertNormals. False, the normals half done, when that takes more comparisons than are left.
bool smoothNormals(const st_lwPointList *pointList, st_lwPolygonList *polygonList,
                   long long *comparisonsLeft);
