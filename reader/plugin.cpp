// Plugins: a name, some flags and data that only their maker understands.
#include "reader/lwo2.h"
#include "reader/records.h"
#include "reader/subChunks.h"

static void readServer(std::FILE *file, int length, st_lwPlugin *shader) {
    replaceOwned(&shader->name, getS0(file));
    replaceOwned(&shader->data, getRest(file, length));
}

// Looks for ENAB in the header of a shader block. The size counts the payloads of its
// sub-chunks only. Deliberate: what follows ENAB in the header is not skipped, and a header
// without ENAB is left one sub-chunk late.
static void scanHeader(std::FILE *file, int size, st_lwPlugin *shader) {
    unsigned int id = getU4(file);
    int length = getCode(file);
    // Sub-chunks of no length make no progress in size: the end of the file ends these.
    while (size > 0 && get_flen() >= 0) {
        length += length % 2;
        size -= length;
        if (id == lwID("ENAB")) {
            shader->flags = getCode(file);
            return;
        }
        skipbytes(file, length);
        id = getU4(file);
        length = getCode(file);
    }
}

st_lwPlugin *lwGetShader(std::FILE *file, int bloksz) {
    st_lwPlugin *shader = newRecord<st_lwPlugin>();
    if (shader == nullptr)
        return nullptr;
    st_subChunks subs = beginSubChunks(file, bloksz, OVERRUN_ALLOWED);
    set_flen(0);
    int headerSize = getCode(file);
    shader->ordinal = getS0(file);
    scanHeader(file, headerSize, shader);
    while (nextSubChunk(&subs))
        if (subs.id == lwID("FUNC"))
            readServer(file, subs.length, shader);
    return keepIf(!subs.failed, shader, lwFreePlugin);
}

int compare_shaders(st_lwPlugin *a, st_lwPlugin *b) {
    return compareStrings(a->ordinal, b->ordinal);
}

void lwFreePlugin(st_lwPlugin *plugin) {
    if (plugin == nullptr)
        return;
    std::free(plugin->ordinal);
    std::free(plugin->name);
    std::free(plugin->data);
    std::free(plugin);
}
