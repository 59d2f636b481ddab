// What the reader deliberately leaves allocated when an object is freed, for tests to free: so
// that a leak checker has nothing else to report.
#pragma once

#include "reader/lwo2.h"

#include <cstdio>
#include <cstdlib>
#include <memory>
#include <string>
#include <vector>

inline void freeClipSource(const st_lwClip &clip) {
    switch (clip.type) {
    case lwID("STIL"): std::free(clip.source.still.name); break;
    case lwID("ISEQ"):
        std::free(clip.source.sequence.prefix);
        std::free(clip.source.sequence.suffix);
        break;
    case lwID("ANIM"):
        std::free(clip.source.anim.name);
        std::free(clip.source.anim.server);
        std::free(clip.source.anim.data);
        break;
    case lwID("XREF"): std::free(clip.source.xref.string); break;
    case lwID("STCC"): std::free(clip.source.cycle.name); break;
    default: break;
    }
}

inline void freeTextureNames(const st_lwTexture &texture) {
    std::free(texture.tmap.refObject);
    if (texture.type == lwID("GRAD")) {
        std::free(texture.param.gradient.paramName);
        std::free(texture.param.gradient.itemName);
    }
}

inline void freeSurfaceNames(const st_lwSurface &surface) {
    for (const st_lwTexture *textures :
         {surface.color.textures, surface.luminosity.textures, surface.diffuse.textures,
          surface.specularity.textures, surface.glossiness.textures, surface.reflection.textures,
          surface.transparency.textures, surface.eta.textures, surface.translucency.textures,
          surface.bump.textures})
        for (; textures != nullptr; textures = textures->next)
            freeTextureNames(*textures);
}

// The most blocks that reading an input may leave for good: strings of clips and reference objects
// when the load fails, those of textures on no known channel also when it does not.
inline std::size_t mostKept(const std::string &input, bool loaded) {
    std::vector<std::string> ids = {"OREF", "PNAM", "INAM"};
    if (!loaded)
        ids.insert(ids.end(), {"STIL", "ISEQ", "ISEQ", "ANIM", "ANIM", "ANIM", "XREF", "STCC",
                               "TREF", "TIMG", "RIMG"});
    std::size_t blocks = 0;
    for (const std::string &id : ids)
        for (std::size_t at = input.find(id); at != std::string::npos; at = input.find(id, at + 1))
            blocks++;
    return blocks;
}

// Frees an object with everything that lwFreeObject leaves behind. Null does nothing.
inline void freeObjectWhole(st_lwObject *object) {
    if (object == nullptr)
        return;
    for (const st_lwClip *clip = object->clips; clip != nullptr; clip = clip->next)
        freeClipSource(*clip);
    for (const st_lwSurface *surface = object->surfaces; surface != nullptr;
         surface = surface->next)
        freeSurfaceNames(*surface);
    lwFreeObject(object);
}

// Frees whatever the reader gives out, and what it leaves behind with it.
struct Release {
    void operator()(std::FILE *file) const { std::fclose(file); }
    void operator()(st_lwObject *object) const { freeObjectWhole(object); }
    void operator()(st_lwEnvelope *envelope) const { lwFreeEnvelope(envelope); }
    void operator()(st_lwVMap *vmap) const { lwFreeVMap(vmap); }
    void operator()(st_lwClip *clip) const {
        freeClipSource(*clip);
        lwFreeClip(clip);
    }
    void operator()(st_lwTexture *texture) const {
        freeTextureNames(*texture);
        lwFreeTexture(texture);
    }
    void operator()(st_lwSurface *surface) const {
        freeSurfaceNames(*surface);
        lwFreeSurface(surface);
    }
};
template <typename Record> using Owned = std::unique_ptr<Record, Release>;
