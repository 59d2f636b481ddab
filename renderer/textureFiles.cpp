// The file names of textures. Both '/' and ':' end a directory in them.
#include "renderer/textureFiles.h"

const char *clipSourceName(const st_lwClip *clip) {
    switch (clip->type) {
    case lwID("STIL"): return clip->source.still.name;
    case lwID("ISEQ"): return clip->source.sequence.prefix;
    case lwID("ANIM"): return clip->source.anim.name;
    case lwID("XREF"): return clip->source.xref.string;
    case lwID("STCC"): return clip->source.cycle.name;
    default: return nullptr;
    }
}

std::string texturePath(const st_lwClip *clip, const char *dir) {
    const char *name = clipSourceName(clip);
    if (name == nullptr)
        return "";
    for (const char *at = name; *at != '\0'; at++)
        if (*at == '/' || *at == ':')
            name = at + 1;
    return std::string(dir) + "/" + name;
}
