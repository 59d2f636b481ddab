// Which files in a folder are makeSet's own, so that it writes over nobody else's.
//
//   st_madeFiles made = readMadeFiles("build/show");
//   if (isForeign(made, "lwo/bark.tga")) ...
//   noteMadeFile(&made, "lwo/bark.tga", recipe);
//
// The folder keeps the record, in makeSet.sums: for each file a digest, as it was when it was made,
// and one of its recipe, all that it was made from.
#pragma once

#include <map>
#include <string>

struct st_madeFile {
    std::string digest;
    std::string recipe; // a digest, too
};

struct st_madeFiles {
    std::string directory;
    std::map<std::string, st_madeFile> files; // by path in the directory
};

// Of bytes, and of those of a file; one that is not there is like an empty one.
std::string digestOf(const std::string &bytes);
std::string fileDigest(const std::string &path);

st_madeFiles readMadeFiles(const std::string &directory);

// Whether there is a file at the path that makeSet did not make, or that was changed since.
bool isForeign(const st_madeFiles &made, const std::string &path);

// Whether the file at the path is as makeSet made it, by that recipe.
bool isCurrent(const st_madeFiles &made, const std::string &path, const std::string &recipe);

// Takes the file at the path, as it is now, for makeSet's own. Stops the program when the record
// cannot be written.
void noteMadeFile(st_madeFiles *made, const std::string &path, const std::string &recipe);
