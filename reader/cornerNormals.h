// Corner normals within bounds. Inside the reader only.
#pragma once

#include "reader/objectRecords.h"

// How many pairs of polygons may be compared around the crowded points of an object, those that
// more than 64 polygons share: a few megabytes must not take minutes. One point that 10,000 smooth
// polygons share is as much; that is half a second.
constexpr double MAX_COMPARISONS = 1e8;

// The pairs that lwGetVertNormals would compare around the crowded points of a layer. The polygons
// around each point are known.
double countComparisons(const st_lwPointList *pointList, const st_lwPolygonList *polygonList);
