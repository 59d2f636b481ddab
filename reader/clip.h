// Inside the reader only.
#pragma once

#include "reader/objectRecords.h"

// Zeroed but for contrast, brightness, saturation and gamma, which are 1. Null without memory.
st_lwClip *newClip();
