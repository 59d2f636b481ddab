// Files that a model's file names: what lies beside it or below its folder, and nothing else.
//
//   std::vector<unsigned char> bytes;
//   const std::string problem = readBeside("models/tree.gltf", "bark%20old.png", &bytes);
#pragma once

#include <cstddef>
#include <string>
#include <vector>

constexpr std::size_t SCENE_FILE_LIMIT = 1UL << 30; // bytes of one file

// All of a file. "" or why it cannot be had, such as "there is no such file".
std::string readBytes(const std::string &path, std::vector<unsigned char> *bytes);

// The same of a file that the file at modelPath names, by a path relative to its own folder that
// does not leave it. Slashes may lean either way.
std::string readBeside(const std::string &modelPath, const std::string &name,
                       std::vector<unsigned char> *bytes);

// A name as it is written in addresses, "bark%20old.png", as the file's: "bark old.png".
std::string withoutPercents(const std::string &address);

// Of a path, either way of slashes, the last name without its ending.
std::string bareName(const std::string &path);
