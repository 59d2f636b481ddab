// Lists what is in an object file: its layers, and its surfaces with their colours and images.
//
//   listModel MODEL.lwo
#include "reader/lwo2.h"

#include <cstdio>

// Names may be null: a file need not give any.
static const char *nameOf(const char *name) {
    return name != nullptr ? name : "(no name)";
}

static void listLayer(const st_lwLayer *layer) {
    const float *box = layer->bbox; // the lowest x, y and z, then the highest
    std::printf("layer %d: %d points, %d polygons, %g by %g by %g\n", layer->index,
                layer->pointList.count, layer->polygonList.count,
                static_cast<double>(box[3] - box[0]), static_cast<double>(box[4] - box[1]),
                static_cast<double>(box[5] - box[2]));
}

// A surface may have several layers of colour texture; an image map names its image by the number
// of a clip, and a clip of a still image has the file's name.
static void listImages(const st_lwObject *object, const st_lwSurface *surface) {
    for (const st_lwTexture *texture = surface->color.textures; texture != nullptr;
         texture = texture->next) {
        if (texture->type != lwID("IMAP"))
            continue;
        const st_lwClip *clip = lwFindClip(object->clips, texture->param.imageMap.clipIndex);
        if (clip != nullptr && clip->type == lwID("STIL"))
            std::printf("    image %s\n", nameOf(clip->source.still.name));
    }
}

static void listSurface(const st_lwObject *object, const st_lwSurface *surface) {
    const float *color = surface->color.rgb; // 1 is full
    std::printf("surface %s: red %g, green %g, blue %g\n", nameOf(surface->name),
                static_cast<double>(color[0]), static_cast<double>(color[1]),
                static_cast<double>(color[2]));
    listImages(object, surface);
}

int main(int argc, char **argv) {
    if (argc != 2) {
        std::fprintf(stderr, "usage: listModel MODEL.lwo\n");
        return 2;
    }
    // Where reading fails: in which chunk, and how far into the file.
    unsigned int failID = 0;
    int failpos = 0;
    st_lwObject *object = lwGetObject(argv[1], &failID, &failpos);
    if (object == nullptr) {
        if (failID == 0)
            std::fprintf(stderr, "%s cannot be opened, or is no object file\n", argv[1]);
        else
            std::fprintf(stderr, "%s is damaged (chunk %08x, byte %d)\n", argv[1], failID, failpos);
        return 1;
    }
    for (const st_lwLayer *layer = object->layers; layer != nullptr; layer = layer->next)
        listLayer(layer);
    for (const st_lwSurface *surface = object->surfaces; surface != nullptr;
         surface = surface->next)
        listSurface(object, surface);
    lwFreeObject(object);
}
