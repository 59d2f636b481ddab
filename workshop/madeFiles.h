// Which files in a folder are makeSet's own, so that it writes over nobody else's.
//
//   st_madeFiles made = readMadeFiles("build/show");
//   if (isForeign(made, "lwo/bark.tga")) ...
//   noteMadeFile(&made, "lwo/bark.tga");
//
// The folder keeps the record, in makeSet.sums: a digest for each file, as it was when it was made.
#pragma once

#include <map>
#include <string>

struct st_madeFiles {
    std::string directory;
    std::map<std::string, std::string> digests; // by path in the directory
};

st_madeFiles readMadeFiles(const std::string &directory);

// Whether there is a file at the path that makeSet did not make, or that was changed since.
bool isForeign(const st_madeFiles &made, const std::string &path);

// Takes the file at the path, as it is now, for makeSet's own. Stops the program when the record
// cannot be written.
void noteMadeFile(st_madeFiles *made, const std::string &path);
