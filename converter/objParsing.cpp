// tinyobjloader takes the text apart and calls back for every line that it knows. Of two kinds it
// does not tell in that way, smoothing groups and the colours of points; these are read here, by
// the number of the face before which and of the point at which they stand.
#include "converter/objParsing.h"

#include "converter/wide.h"

#define TINYOBJLOADER_IMPLEMENTATION
#include <tiny_obj_loader.h>

#include <algorithm>
#include <climits>
#include <cmath>
#include <cstdlib>
#include <istream>
#include <map>
#include <streambuf>
#include <utility>

// --------------------------------------------------------------------------- the text

static bool isBlank(char c) {
    return c == ' ' || c == '\t' || c == '\r';
}

static bool isDigit(char c) {
    return c >= '0' && c <= '9';
}

// The library reckons exponents in an int.
static void cutExponents(std::string *line) {
    constexpr std::size_t MOST_DIGITS = 4;
    for (std::size_t i = 1; i + 1 < line->size(); i++) {
        if (((*line)[i] | 0x20) != 'e' || !(isDigit((*line)[i - 1]) || (*line)[i - 1] == '.'))
            continue;
        const std::size_t first = i + ((*line)[i + 1] == '-' || (*line)[i + 1] == '+' ? 2 : 1);
        std::size_t end = first;
        while (end < line->size() && isDigit((*line)[end]))
            end++;
        if (end - first > MOST_DIGITS)
            line->erase(first + MOST_DIGITS, end - first - MOST_DIGITS);
    }
}

// The line from *at on, without blanks around it; *at moves to the next.
static std::string takeLine(const std::string &text, std::size_t *at) {
    std::string line;
    bool goesOn = true;
    while (goesOn && *at < text.size()) {
        const std::size_t end = std::min(text.find_first_of("\n\r", *at), text.size());
        line.append(text, *at, end - *at);
        *at = end + (text.compare(end, 2, "\r\n") == 0 ? 2 : 1);
        goesOn = !line.empty() && line.back() == '\\';
        if (goesOn)
            line.back() = ' ';
    }
    while (!line.empty() && isBlank(line.back()))
        line.pop_back();
    line.erase(0, std::min(line.find_first_not_of(" \t"), line.size()));
    std::replace(line.begin(), line.end(), '\0', ' ');
    cutExponents(&line);
    return line;
}

std::string plainLines(const std::string &text) {
    std::string plain;
    plain.reserve(text.size() + 1);
    for (std::size_t at = 0; at < text.size();)
        plain += takeLine(text, &at) + '\n';
    return plain;
}

// ------------------------------------------------------------- what is read by itself

struct st_smoothingChange {
    int face; // from which it holds, counting all lines of faces
    int group;
};

struct st_objSides {
    std::vector<st_smoothingChange> smoothing;
    int faceLines = 0;
};

static bool isKeyword(const std::string &line, const char *word) {
    const std::size_t length = std::char_traits<char>::length(word);
    return line.compare(0, length, word) == 0 &&
           (line.size() == length || line[length] == ' ' || line[length] == '\t');
}

static void takeSmoothing(const std::string &line, st_objSides *sides) {
    const int group = static_cast<int>(std::strtol(line.c_str() + 1, nullptr, 10));
    sides->smoothing.push_back({sides->faceLines, std::max(group, 0)}); // "off" is 0
}

// Behind the three coordinates, if all are there.
static bool colorOf(const std::string &line, st_vec *color) {
    float numbers[6];
    const char *at = line.c_str() + 1;
    for (float &number : numbers) {
        char *end = nullptr;
        number = std::strtof(at, &end);
        if (end == at)
            return false;
        at = end;
    }
    const auto part = [&](int i) {
        return std::isfinite(numbers[i]) ? std::clamp(numbers[i], 0.0F, 1.0F) : 0.0F;
    };
    *color = {part(3), part(4), part(5)};
    return true;
}

static void takePointColor(const std::string &line, std::size_t pointLines, st_objParts *parts) {
    st_vec color = {1, 1, 1};
    if (std::count_if(line.begin(), line.end(), isBlank) < 6 || !colorOf(line, &color)) {
        if (!parts->colors.empty())
            parts->colors.push_back({1, 1, 1});
        return;
    }
    parts->colors.resize(pointLines, {1, 1, 1});
    parts->colors.push_back(color);
}

static void takeLibraries(const std::string &line, st_objParts *parts) {
    std::size_t start = std::min(line.find_first_not_of(" \t", 6), line.size());
    if (start < line.size())
        parts->libraries.push_back(line.substr(start));
}

// What the library is to see of the text.
static std::string sift(const std::string &text, st_objParts *parts, st_objSides *sides) {
    std::string sifted;
    sifted.reserve(text.size() + 1);
    std::size_t pointLines = 0;
    for (std::size_t at = 0; at < text.size();) {
        const std::string line = takeLine(text, &at);
        if (isKeyword(line, "s")) {
            takeSmoothing(line, sides);
        } else if (isKeyword(line, "mtllib")) {
            takeLibraries(line, parts);
        } else if (isKeyword(line, "l") || isKeyword(line, "p")) {
            parts->linesLeftOut++;
        } else if (isKeyword(line, "curv") || isKeyword(line, "surf") || isKeyword(line, "curv2")) {
            parts->hasCurves = true;
        } else if (line.size() > 2) {
            if (isKeyword(line, "v"))
                takePointColor(line, pointLines++, parts);
            sides->faceLines += isKeyword(line, "f") ? 1 : 0;
            sifted += line + '\n';
        }
    }
    return sifted;
}

// ---------------------------------------------------------------------- what is told

// What callbacks share.
struct st_objTold {
    st_objParts *parts;
    const st_objSides *sides;
    std::map<std::string, int> materials = {};
    std::map<std::string, int> objects = {}, groups = {};
    std::vector<std::pair<int, int>> homes = {}; // object and group of each face; -1: none
    int material = -1, object = -1, group = -1;
    int faceLines = 0;
    std::size_t change = 0; // of smoothing that comes next
    int smoothing = 0;
};

static st_objTold &told(void *data) {
    return *static_cast<st_objTold *>(data);
}

static void takePoint(void *data, float x, float y, float z, float /*w*/) {
    told(data).parts->points.push_back({sound(x), sound(y), sound(z)});
}

static void takeNormal(void *data, float x, float y, float z) {
    told(data).parts->normals.push_back({sound(x), sound(y), sound(z)});
}

static void takeUv(void *data, float u, float v, float /*w*/) {
    told(data).parts->uvs.push_back({sound(u), sound(v)});
}

static int numberOf(std::map<std::string, int> *names, const std::string &name) {
    return names->insert({name, static_cast<int>(names->size())}).first->second;
}

static void takeMaterial(void *data, const char *name, int /*known*/) {
    told(data).material = numberOf(&told(data).materials, name);
}

static void takeObject(void *data, const char *name) {
    told(data).object = numberOf(&told(data).objects, name);
    told(data).group = -1;
}

static void takeGroup(void *data, const char **names, int count) {
    std::string name;
    for (int i = 0; i < count; i++)
        name += std::string(i == 0 ? "" : " ") + names[i];
    told(data).group = numberOf(&told(data).groups, name);
}

// Counted from 1, or from the last one back; -1 for none and for what cannot be one.
static int indexOf(int given, std::size_t countSoFar) {
    if (given > 0)
        return given - 1;
    const long long index = static_cast<long long>(countSoFar) + given;
    return given < 0 && index >= 0 ? static_cast<int>(index) : -1;
}

static void takeFace(void *data, tinyobj::index_t *indices, int count) {
    st_objTold &to = told(data);
    st_objParts &parts = *to.parts;
    const auto &changes = to.sides->smoothing;
    while (to.change < changes.size() && changes[to.change].face <= to.faceLines)
        to.smoothing = changes[to.change++].group;
    to.faceLines++;
    if (count < 3 || parts.corners.size() > INT_MAX - static_cast<std::size_t>(count)) {
        parts.linesLeftOut++;
        return;
    }
    parts.faces.push_back(
        {static_cast<int>(parts.corners.size()), count, to.material, 0, to.smoothing});
    to.homes.emplace_back(to.object, to.group);
    for (int i = 0; i < count; i++)
        parts.corners.push_back({indexOf(indices[i].vertex_index, parts.points.size()),
                                 indexOf(indices[i].texcoord_index, parts.uvs.size()),
                                 indexOf(indices[i].normal_index, parts.normals.size())});
}

// ---------------------------------------------------------------------------- the lists

static std::vector<std::string> namesOf(const std::map<std::string, int> &numbers) {
    std::vector<std::string> names(numbers.size());
    for (const auto &[name, number] : numbers)
        names[static_cast<std::size_t>(number)] = name;
    return names;
}

// Groups are layers only where no object is named: else they are parts of these.
static void nameLayers(const st_objTold &to) {
    st_objParts &parts = *to.parts;
    const bool hasObjects = !to.objects.empty();
    parts.layers = namesOf(hasObjects ? to.objects : to.groups);
    const int rest = static_cast<int>(parts.layers.size());
    bool isRestUsed = false;
    for (std::size_t i = 0; i < parts.faces.size(); i++) {
        const int home = hasObjects ? to.homes[i].first : to.homes[i].second;
        isRestUsed = isRestUsed || home < 0;
        parts.faces[i].layer = home < 0 ? rest : home;
    }
    if (isRestUsed)
        parts.layers.emplace_back();
}

static void dropBrokenFaces(st_objParts *parts) {
    const auto inRange = [](int index, std::size_t count) {
        return index >= 0 && static_cast<std::size_t>(index) < count;
    };
    const auto isBroken = [&](const st_objFace &face) {
        for (int i = 0; i < face.cornerCount; i++) {
            st_objCorner &corner = cornerOf(*parts, face, i);
            if (!inRange(corner.point, parts->points.size()))
                return true;
            if (!inRange(corner.uv, parts->uvs.size()))
                corner.uv = -1;
            if (!inRange(corner.normal, parts->normals.size()))
                corner.normal = -1;
        }
        return false;
    };
    const auto sound = std::remove_if(parts->faces.begin(), parts->faces.end(), isBroken);
    parts->facesLeftOut = static_cast<int>(parts->faces.end() - sound);
    parts->faces.erase(sound, parts->faces.end());
}

// Reads from memory without a copy.
struct st_memoryBuffer : std::streambuf {
    explicit st_memoryBuffer(std::string *text) {
        setg(text->data(), text->data(), text->data() + text->size());
    }
};

st_objParts parseObj(std::string *text) {
    st_objParts parts;
    st_objSides sides;
    std::string sifted = sift(*text, &parts, &sides);
    std::string().swap(*text);
    st_memoryBuffer buffer(&sifted);
    std::istream stream(&buffer);
    tinyobj::callback_t callbacks;
    callbacks.vertex_cb = takePoint;
    callbacks.normal_cb = takeNormal;
    callbacks.texcoord_cb = takeUv;
    callbacks.index_cb = takeFace;
    callbacks.usemtl_cb = takeMaterial;
    callbacks.group_cb = takeGroup;
    callbacks.object_cb = takeObject;
    st_objTold to = {&parts, &sides};
    tinyobj::LoadObjWithCallback(stream, callbacks, &to);
    parts.materials = namesOf(to.materials);
    nameLayers(to);
    dropBrokenFaces(&parts);
    if (!parts.colors.empty())
        parts.colors.resize(parts.points.size(), {1, 1, 1});
    return parts;
}
