// The image files that a model's clips name, looked at the way the renderer loads them.
//
//   const st_modelImages images = loadImages(*object, "lwo");
//   const st_imageFacts &image = images.ofClips.at(clipOf(images, 1));
//
// All of it refers to the object and holds as long as that does.
#pragma once

#include "reader/lwo2.h"

#include <cstddef>
#include <cstdint>
#include <map>
#include <string>
#include <vector>

struct st_imageFacts {
    std::string path;    // "" when the clip names no file
    std::string problem; // why it cannot be loaded; "" when it can
    bool isMissing;      // there is nothing of that name
    std::string format;  // what it is instead of a Targa file, such as "PNG"; "": nothing known
    int type;            // imageType, and so on as in st_image, when it can be loaded
    int depth;
    int orientation;
    int width;
    int height;
    bool isTrueColor; // becomes an OpenGL texture
};

struct st_modelImages {
    std::map<int, std::vector<const st_lwClip *>> clips; // those that the renderer loads, by index
    std::map<const st_lwClip *, st_imageFacts> ofClips;
    std::map<std::string, std::string> files; // beside the model, by their lower-case names; only
                                              // read when an image is missing
};

// Looks at the image of every clip; directory is the model's, "." for the working directory.
st_modelImages loadImages(const st_lwObject &object, const std::string &directory);

// The last clip of the index, which is the one that the renderer takes; null: none.
const st_lwClip *clipOf(const st_modelImages &images, int index);

std::string lowerCase(std::string text);

// The names of what is in a directory, by the same in lower case; not more than so many.
std::map<std::string, std::string> filesIn(const std::string &directory,
                                           std::size_t most = SIZE_MAX);

// The name in a path without its directories.
std::string baseName(const std::string &path);

// A file beside the model whose name differs from the path's in its ending only, and that of an
// image; "": none.
std::string otherEnding(const st_modelImages &images, const std::string &path);

// A file beside the model whose name differs from the path's in upper and lower case only; "":
// none.
std::string otherSpelling(const st_modelImages &images, const std::string &path);
