// Image clips: where the pictures of image maps come from (CLIP).
#include "reader/lwo2.h"
#include "reader/records.h"
#include "reader/subChunks.h"

// Deliberate: the strings and the data of the source stay allocated, also after a failed read.
void lwFreeClip(st_lwClip *clip) {
    if (clip == nullptr)
        return;
    _lwListFree(clip->imageFilters, lwFreePlugin);
    _lwListFree(clip->pixelFilters, lwFreePlugin);
    std::free(clip);
}

st_lwClip *newClip() {
    st_lwClip *clip = newRecord<st_lwClip>();
    if (clip == nullptr)
        return nullptr;
    clip->contrast.value = 1.0F;
    clip->brightness.value = 1.0F;
    clip->saturation.value = 1.0F;
    clip->gamma.value = 1.0F;
    return clip;
}

// -------------------------------------------------------------------- the source

static void readSequence(std::FILE *file, st_lwClipSequence *sequence) {
    sequence->digits = static_cast<int>(getU1(file));
    sequence->flags = static_cast<int>(getU1(file));
    sequence->offset = getI2(file);
    getU2(file); // reserved
    sequence->start = getI2(file);
    sequence->end = getI2(file);
    sequence->prefix = getS0(file);
    sequence->suffix = getS0(file);
}

static void readAnim(std::FILE *file, int length, st_lwClipAnim *anim) {
    anim->name = getS0(file);
    anim->server = getS0(file);
    anim->data = getRest(file, length);
}

static void readXRef(std::FILE *file, st_lwClipXRef *xref) {
    xref->index = getI4(file);
    xref->string = getS0(file);
}

static void readCycle(std::FILE *file, st_lwClipCycle *cycle) {
    cycle->alpha = getI2(file);
    cycle->value = getI2(file);
    cycle->name = getS0(file);
}

static void readSource(std::FILE *file, int length, st_lwClip *clip) {
    switch (clip->type) {
    case lwID("STIL"): clip->source.still.name = getS0(file); break;
    case lwID("ISEQ"): readSequence(file, &clip->source.sequence); break;
    case lwID("ANIM"): readAnim(file, length, &clip->source.anim); break;
    case lwID("XREF"): readXRef(file, &clip->source.xref); break;
    case lwID("STCC"): readCycle(file, &clip->source.cycle); break;
    default: break;
    }
}

// ---------------------------------------------------------------------- the clip

static void readTimes(std::FILE *file, st_lwClip *clip) {
    clip->startTime = getF4(file);
    clip->duration = getF4(file);
    clip->frameRate = getF4(file);
}

static void readSubChunk(std::FILE *file, unsigned int id, int length, st_lwClip *clip) {
    switch (id) {
    case lwID("TIME"): readTimes(file, clip); break;
    case lwID("CONT"): getEnvValue(file, &clip->contrast); break;
    case lwID("BRIT"): getEnvValue(file, &clip->brightness); break;
    case lwID("SATR"): getEnvValue(file, &clip->saturation); break;
    case lwID("HUE "): getEnvValue(file, &clip->hue); break;
    case lwID("GAMM"): getEnvValue(file, &clip->gamma); break;
    case lwID("NEGA"): clip->negative = getCode(file); break;
    case lwID("IFLT"):
        readFilter(file, length, &clip->imageFilters, &clip->imageFilterCount);
        break;
    case lwID("PFLT"):
        readFilter(file, length, &clip->pixelFilters, &clip->pixelFilterCount);
        break;
    default: break;
    }
}

st_lwClip *lwGetClip(std::FILE *file, int cksize) {
    st_lwClip *clip = newClip();
    if (clip == nullptr)
        return nullptr;
    st_subChunks subs = beginSubChunks(file, cksize, OVERRUN_FAILS);
    set_flen(0);
    clip->index = getI4(file);
    // The first sub-chunk is the source, and its ID the type, whatever it is.
    if (nextSubChunk(&subs)) {
        clip->type = subs.id;
        readSource(file, subs.length, clip);
    }
    while (nextSubChunk(&subs))
        readSubChunk(file, subs.id, subs.length, clip);
    reverseRecords(&clip->imageFilters);
    reverseRecords(&clip->pixelFilters);
    return keepIf(!subs.failed, clip, lwFreeClip);
}

st_lwClip *lwFindClip(st_lwClip *list, int index) {
    return findRecord(list, index);
}
