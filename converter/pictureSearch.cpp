// Names differ in their folders and their case of letters from what they were where they were
// written.
#include "converter/pictureSearch.h"

#include "checker/images.h"
#include "files/regularFile.h"

#include <algorithm>
#include <cctype>
#include <filesystem>

namespace fs = std::filesystem;

constexpr std::size_t FOLDER_LIMIT = 256;
constexpr std::size_t FILE_LIMIT = 20000; // of a folder that are looked at

std::string nameInPath(const std::string &path) {
    const std::size_t separator = path.find_last_of("/\\:");
    return separator == std::string::npos ? path : path.substr(separator + 1);
}

// ------------------------------------------------------------------------------ folders

static void addFoldersIn(const fs::path &folder, st_pictureFolders *to) {
    std::vector<std::string> found;
    std::error_code failed;
    fs::directory_iterator entry(folder, failed);
    for (std::size_t count = 0; !failed && entry != fs::directory_iterator() && count < FILE_LIMIT;
         entry.increment(failed), count++) {
        std::error_code ignored;
        if (entry->is_directory(ignored))
            found.push_back(entry->path().string());
    }
    std::sort(found.begin(), found.end());
    for (const std::string &path : found)
        if (to->folders.size() < FOLDER_LIMIT)
            to->folders.push_back({path});
}

st_pictureFolders foldersAround(const std::string &modelPath) {
    std::error_code ignored;
    const fs::path folder = fs::absolute(modelPath, ignored).lexically_normal().parent_path();
    st_pictureFolders found;
    // As it was given, so that what is said of its pictures is no longer than need be.
    const std::string given = fs::path(modelPath).parent_path().string();
    found.folders.push_back({given.empty() ? "." : given});
    addFoldersIn(found.folders[0].path, &found);
    found.folders.push_back({folder.parent_path().string()});
    addFoldersIn(folder.parent_path(), &found);
    return found;
}

static const std::map<std::string, std::string> &filesOf(st_pictureFolders::st_folder *folder) {
    if (!folder->isListed)
        folder->files = filesIn(folder->path, FILE_LIMIT);
    folder->isListed = true;
    return folder->files;
}

static std::string pathOf(const st_pictureFolders::st_folder &folder, const std::string &name) {
    return folder.path == "." ? name : (fs::path(folder.path) / name).string();
}

// ------------------------------------------------------------------------------- search

static std::string findIn(st_pictureFolders::st_folder *folder, const std::string &name) {
    std::string exact = pathOf(*folder, name);
    if (isRegularFile(exact.c_str()))
        return exact;
    const auto &files = filesOf(folder);
    const auto found = files.find(lowerCase(name));
    if (found == files.end())
        return "";
    std::string path = pathOf(*folder, found->second);
    return isRegularFile(path.c_str()) ? path : "";
}

static std::string findExactly(st_pictureFolders *folders, const std::string &name) {
    for (st_pictureFolders::st_folder &folder : folders->folders)
        if (std::string path = findIn(&folder, name); !path.empty())
            return path;
    return "";
}

std::string findPicture(st_pictureFolders *folders, const std::string &name) {
    const std::string wanted = nameInPath(name);
    if (wanted.empty() || wanted == "." || wanted == "..")
        return "";
    if (std::string path = findExactly(folders, wanted); !path.empty())
        return path;
    for (const char *ending : {".tga", ".png", ".jpg", ".jpeg", ".bmp", ".psd", ".gif"}) {
        const std::string other = fs::path(wanted).stem().string() + ending;
        if (std::string path = findExactly(folders, other); !path.empty())
            return path;
    }
    return "";
}

static bool isOfSequence(const std::string &file, const std::string &prefix,
                         const std::string &suffix) {
    if (file.size() < prefix.size() || file.compare(0, prefix.size(), prefix) != 0)
        return false;
    std::size_t digits = prefix.size();
    while (digits < file.size() && std::isdigit(static_cast<unsigned char>(file[digits])) != 0)
        digits++;
    const std::string rest = file.substr(digits);
    // A suffix that is not known is an ending at most.
    return digits > prefix.size() &&
           (suffix.empty() ? rest.empty() || rest[0] == '.' : rest == suffix);
}

std::string findSequence(st_pictureFolders *folders, const std::string &prefix,
                         const std::string &suffix) {
    const std::string begin = lowerCase(nameInPath(prefix));
    const std::string end = lowerCase(suffix);
    for (st_pictureFolders::st_folder &folder : folders->folders) {
        for (const auto &[lower, name] : filesOf(&folder))
            if (isOfSequence(lower, begin, end) && isRegularFile(pathOf(folder, name).c_str()))
                return pathOf(folder, name);
    }
    return "";
}
