// An object file that the renderer never finishes loading: the surface "bark" has two colour
// textures.
#pragma once

#include "tests/support/chunkWriter.h"

inline std::string endlessModel() {
    const std::string texture =
        sub("BLOK", sub("IMAP", s0("o") + sub("CHAN", "COLR")) + sub("PROJ", u2(0)));
    return form("LWO2", chunk("TAGS", s0("bark")) + chunk("PNTS", f4(0, 0, 0)) +
                            chunk("SURF", s0("bark") + s0("") + texture + texture));
}
