// What the renderer would make of a file is found out by the loader that it uses.
#include "checker/images.h"

#include "checker/facts.h"
#include "checker/modelFile.h"
#include "image/image.h"
#include "image/targa_image.h"
#include "renderer/textureFiles.h"

#include <cctype>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <set>

namespace fs = std::filesystem;

// By its first bytes; "" for a file that begins like none of these.
static std::string formatOf(const std::string &path) {
    static const struct {
        const char *begin;
        const char *format;
    } FORMATS[] = {{"\x89PNG", "PNG"},
                   {"\xFF\xD8\xFF", "JPEG"},
                   {"GIF8", "GIF"},
                   {"8BPS", "PSD"},
                   {"BM", "BMP"}};
    char bytes[4] = {};
    std::ifstream(path, std::ios::binary).read(bytes, sizeof bytes);
    for (const auto &known : FORMATS)
        if (std::strncmp(bytes, known.begin, std::strlen(known.begin)) == 0)
            return known.format;
    return "";
}

static st_imageFacts lookAt(const std::string &path) {
    st_imageFacts facts = {};
    facts.path = path;
    std::error_code ignored;
    facts.isMissing = !fs::exists(path, ignored);
    facts.problem = fileProblem(path);
    if (!facts.problem.empty())
        return facts;
    st_image *image = targa_image_read(path.c_str());
    if (image == nullptr) {
        facts.problem = "no Targa file, or cut short";
        facts.format = formatOf(path);
        return facts;
    }
    facts.type = image->type;
    facts.depth = image->depth;
    facts.orientation = image->orientation;
    facts.width = image->width;
    facts.height = image->height;
    facts.isTrueColor = image_is_true_color(image) != 0;
    image_free(image);
    return facts;
}

std::string lowerCase(std::string text) {
    for (char &c : text)
        c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    return text;
}

std::map<std::string, std::string> filesIn(const std::string &directory, std::size_t most) {
    std::map<std::string, std::string> files;
    std::error_code failed;
    fs::directory_iterator entry(directory, failed);
    for (; !failed && entry != fs::directory_iterator() && most > 0;
         entry.increment(failed), most--) {
        const std::string name = entry->path().filename().string();
        files[lowerCase(name)] = name;
    }
    return files;
}

st_modelImages loadImages(const st_lwObject &object, const std::string &directory) {
    st_modelImages images;
    // Clips of the older layout are never counted, and so never loaded.
    if (object.clipCount > 0)
        forEach(object.clips,
                [&](const st_lwClip &clip) { images.clips[clip.index].push_back(&clip); });
    std::map<std::string, st_imageFacts> seen;
    bool isComplete = true;
    for (const auto &[index, clips] : images.clips)
        for (const st_lwClip *clip : clips) {
            const std::string path = texturePath(clip, directory.c_str());
            if (!path.empty() && seen.count(path) == 0)
                seen[path] = lookAt(path);
            images.ofClips[clip] = seen[path];
            isComplete = isComplete && !seen[path].isMissing;
        }
    if (!isComplete)
        images.files = filesIn(directory);
    return images;
}

const st_lwClip *clipOf(const st_modelImages &images, int index) {
    const auto found = images.clips.find(index);
    return found == images.clips.end() ? nullptr : found->second.back();
}

std::string baseName(const std::string &path) {
    return path.substr(path.rfind('/') + 1);
}

std::string otherEnding(const st_modelImages &images, const std::string &path) {
    static const std::set<std::string> ENDINGS = {".png", ".jpg",  ".jpeg", ".tga", ".bmp", ".gif",
                                                  ".tif", ".tiff", ".psd",  ".iff", ".webp"};
    const std::string stem = lowerCase(fs::path(baseName(path)).stem().string());
    for (const auto &[lower, name] : images.files)
        if (!stem.empty() && fs::path(lower).stem() == stem &&
            ENDINGS.count(fs::path(lower).extension().string()) != 0)
            return name;
    return "";
}

std::string otherSpelling(const st_modelImages &images, const std::string &path) {
    const auto found = images.files.find(lowerCase(baseName(path)));
    return found == images.files.end() ? "" : found->second;
}
