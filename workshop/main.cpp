// makeSet OUTDIR: makes the default set of the show, OUTDIR/lwo with the models and their
// textures and OUTDIR/msx with the music. The same program makes the same bytes every time.
#include "workshop/fileWriter.h"
#include "workshop/set.h"
#include "workshop/stop.h"
#include "workshop/synth/music.h"
#include "workshop/synth/score.h"
#include "workshop/text.h"

#include <string>

int main(int argc, char **argv) {
    if (argc != 2)
        stop("usage: makeSet OUTDIR");
    const std::string out = argv[1];
    makeDirectory(out + "/lwo");
    makeDirectory(out + "/msx");
    openFont(WORKSHOP_FONT);
    writeModels(out + "/lwo");
    writeMusic(out + "/msx/ferrol_-_tamo_lani_rete.ogg", scoreLength());
}
