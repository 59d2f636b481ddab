// Targa files: reads one, plain or run-length encoded, as an image record.
//
// Who owns what is said in image.h.
//   st_image *image = targa_image_read("lwo/wood.tga");
//   ... image->pixels ...
//   image_free(image);
#pragma once

#include "image/image.h"

// Loads the image at path. Pixels, rows and bytes stay in file order; a colour map is not
// interpreted. The pixels go into buffer when it is non-null and holds at least the image's
// size in its capacity bytes, else into memory of their own. Returns the new record, or null
// when it is no regular file, cannot be read whole or would take more than 2 GB of pixels.
// A run-length stream that ends early is no failure: the pixels that it leaves open are zero; only
// an image of more than 64 MB has to have a file that could fill it. A packet that runs past the
// image is cut at its end.
// The file stays open until the process ends, on any path: a program that loads more than its few
// textures calls targa_image_read.
st_image *targa_image_load(const char *path, int capacity, unsigned char *buffer);

// The same into memory of the image's own, and the file is closed.
st_image *targa_image_read(const char *path);
