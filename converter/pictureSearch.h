// Where the picture is that a model of somebody else's machine calls "D:/images/Wood.TGA".
//
//   st_pictureFolders folders = foldersAround("models/tree.lwo");
//   const std::string path = findPicture(&folders, "D:/images/Wood.TGA");
#pragma once

#include <map>
#include <string>
#include <vector>

// Folders where pictures are looked for, the nearest first. They are listed when they are asked.
struct st_pictureFolders {
    struct st_folder {
        std::string path;
        bool isListed = false;
        std::map<std::string, std::string> files = {}; // by their names in lower case
    };
    std::vector<st_folder> folders;
};

// That of the model, those in it and those beside it.
st_pictureFolders foldersAround(const std::string &modelPath);

// Path of the file that has the name that follows the last '/', '\' or ':' of this one, in any case
// of letters; failing that, of one with another picture's ending. "" when there is none.
std::string findPicture(st_pictureFolders *folders, const std::string &name);

// Path of the first picture of a sequence: its name is prefix, digits and suffix. "" when there is
// none.
std::string findSequence(st_pictureFolders *folders, const std::string &prefix,
                         const std::string &suffix);

// The name in a path as any system writes it, without its folders.
std::string nameInPath(const std::string &path);
