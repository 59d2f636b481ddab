// The object reader: LightWave object files (IFF, big-endian; layouts LWO2 and LWOB) as records in
// memory.
//
// lwGetObject makes an st_lwObject that the caller owns, with everything in it, and
// releases with lwFreeObject. Nothing is printed; a file that cannot be read gives null
// and says where it failed.
//   unsigned int failID = 0; int failpos = 0;
//   st_lwObject *object = lwGetObject("tree.lwo", &failID, &failpos);
//   ...                                       // layers, points, polygons, surfaces
//   lwFreeObject(object);
//
// Needs C++17, the C and the maths library, of these beyond standard C++ stat and, where there is
// one, madvise; 4-byte IEEE floats; pointers of 64 or 32 bits. Made for g++, clang++ and em++. For
// the same normals to the last bit, as far as the maths library gives them, compile with
// -ffp-contract=off and, for 32-bit x86, -msse2 -mfpmath=sse.
// One file is read at a time, from one thread: the count of consumed bytes (get_flen) is shared by
// all readers.
#pragma once

#include "reader/chunkReaders.h"
#include "reader/lwio.h"
#include "reader/objectRecords.h"
