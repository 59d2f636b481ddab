// Images in memory: the record that the Targa loader fills, its label tables, and the
// conversion of BGR pixels to RGB.
//
// The record, its pixels and its ID string come from malloc and belong to the caller; a
// pixel buffer that the caller lent to the loader stays the caller's.
//   st_image *image = targa_image_read("lwo/wood.tga"); // targa_image.h
//   if (image != nullptr)
//       image_make_rgb(image);
//   image_free(image);
#pragma once

// Values of st_image::type.
enum imageType {
    IMAGE_NONE = 0,
    IMAGE_GREY = 1,
    IMAGE_RGB = 3,
    IMAGE_RGBA = 4,
    IMAGE_COLOR_MAPPED = 15,
    IMAGE_BGR = 35,
    IMAGE_BGRA = 36
};

// Values of st_image::orientation: where the first pixel of the file belongs.
enum imageOrientation {
    IMAGE_BOTTOM_LEFT = 0x00,
    IMAGE_BOTTOM_RIGHT = 0x10,
    IMAGE_TOP_LEFT = 0x20,
    IMAGE_TOP_RIGHT = 0x30
};

struct st_image {
    int type;              // imageType
    int depth;             // bits per pixel
    int count;             // always 1
    int orientation;       // imageOrientation
    int width;             // pixels per row
    int height;            // rows
    unsigned char *pixels; // width * height * bytes per pixel; rows and bytes in file order
    char format[24];       // "TARGA"
    char *id;              // the file's image ID, null when it has none
};

// Indexed by a Targa file's image type & 3.
extern const char *const image_type_label[4];
// Indexed by orientation / 0x10.
extern const char *const pixel_orig_label[4];

// Returns 1 for RGB(A) and BGR(A) images whose pixels have as many bytes as the type needs.
// Depths of 8 or 16 bits do not, nor do 24 bits with alpha bits.
int image_is_true_color(const st_image *image);

// Turns BGR(A) pixels into RGB(A) in place and changes the type accordingly. Returns 1 when
// they were RGB(A) already, else 0, also after a conversion; images of other types are left alone.
// The type says how many bytes a pixel has, 3 or 4, whatever the depth: where the depth makes the
// buffer smaller than that, pixels are swapped as far as it reaches.
int image_make_rgb(st_image *image);

// Frees the record, its ID and its pixels; null does nothing. Whoever lent the pixels sets the
// record's pointer to them to null before.
void image_free(st_image *image);
