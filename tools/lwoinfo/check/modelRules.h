// What the rules of checkModel look at, and how they report. Inside the check only.
#pragma once

#include "tools/lwoinfo/check/modelCheck.h"

#include <map>
#include <set>
#include <string>
#include <vector>

// A texture's file, looked at the way the renderer loads it.
struct st_imageFacts {
    std::string path;    // "" when the clip names no file
    std::string problem; // why it cannot be loaded; "" when it can
    bool isMissing;      // there is nothing of that name
    int type;            // imageType, and so on as in st_image, when it can be loaded
    int depth;
    int orientation;
    int width;
    int height;
    bool isTrueColor; // becomes an OpenGL texture
};

// A surface and what is drawn with it.
struct st_surfaceUse {
    const st_lwSurface *surface;
    std::string fileName; // its name in the file, before the renderer's name rules
    std::string name;     // what the renderer calls it; "" when it has none
    bool isUv;            // drawn with texture coordinates
    bool hasMap;          // a vertex map bears its name
    int clipIndex;        // of the colour texture; 0: none

    int drawn;                                // triangles and quads, those of namesakes included
    std::map<int, int> undrawn;               // polygons by other numbers of corners
    std::map<unsigned int, int> foreignTypes; // drawn polygons by types other than FACE
    int withoutNormal;                        // drawn polygons

    // Corners of drawn polygons, when isUv.
    long long corners;
    long long unmapped; // in no map of the name
    long long shadowed; // of those, in one by their point, but with corner values of others
    long long torn;     // in one that has not two values an entry
    long long wild;     // in one, at values that are no numbers
    int wrongDimension; // of one of the torn; meaningful when torn > 0
};

struct st_checkedModel {
    const st_lwObject *object;
    std::string format;
    std::string directory;
    bool fits; // within what the renderer builds
    std::vector<st_surfaceUse> surfaces;
    std::map<std::string, std::vector<std::size_t>> byName; // surfaces under a drawn name
    int withoutSurface;                                     // polygons
    std::map<int, std::vector<const st_lwClip *>> clips;    // those the renderer loads, by index
    std::map<const st_lwClip *, st_imageFacts> images;      // of these
    std::set<std::string> mapNames;                         // of vertex maps, of all layers
    std::map<std::string, std::string> files; // beside the model, by their lower-case names; only
                                              // read when an image is missing
};

struct st_rule;

// Where a rule puts what it finds.
struct st_ruleReport {
    const st_rule *rule;
    std::vector<st_finding> *findings;
};

// A rule looks at the model as a whole or, once for each, at its surfaces.
struct st_rule {
    const char *name;
    bool isNote;
    void (*onModel)(const st_checkedModel &, st_ruleReport *);
    void (*onSurface)(const st_checkedModel &, const st_surfaceUse &, st_ruleReport *);
};

void report(st_ruleReport *to, const std::string &what, const std::string &consequence,
            const std::string &remedy);

// "surface "bark"".
std::string surfaceLabel(const st_surfaceUse &use);

// The last clip of the index, which is the one that the renderer takes; null: none.
const st_lwClip *clipOf(const st_checkedModel &model, int index);

// Looks at the image of every clip.
void loadImages(st_checkedModel *model);

// Counts what is drawn with each surface.
void countUses(st_checkedModel *model);

// Tables of rules.
extern const std::vector<st_rule> GEOMETRY_RULES;
extern const std::vector<st_rule> TEXTURE_RULES;
