// Names that the renderer and file systems can keep.
//
//   st_takenNames taken = {{"(no image)"}};
//   surface.name = surfaceName(material.name, &taken);
#pragma once

#include <map>
#include <set>
#include <string>

struct st_takenNames {
    std::set<std::string> names;
    std::map<std::string, int> numbers = {}; // that the next one like it gets
};

// A name like this one (UTF-8) of 1 to 31 bytes that the renderer leaves as it is and that is not
// taken yet; it is then.
std::string surfaceName(const std::string &name, st_takenNames *taken);

// A file name "STEM-NAME.tga" likewise, of letters, digits and what is harmless in a shell; taken
// holds them in lower case.
std::string pictureFileName(const std::string &stem, const std::string &name, st_takenNames *taken);
