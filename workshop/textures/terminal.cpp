// What is on the computer's screen.
#include "workshop/textures/textures.h"

#include "workshop/canvas.h"
#include "workshop/palette.h"
#include "workshop/screenPicture.h"
#include "workshop/stop.h"
#include "workshop/words.h"

#include <cmath>

// The invitation's own picture, else a small one of a wave and a sun: somebody is still at work on
// an entry.
static st_picture paintScreen() {
    if (const std::string &path = theWords().screen.text; !path.empty()) {
        st_picture screen;
        if (const std::string problem = readScreenPicture(path, &screen); !problem.empty())
            stop(path + " cannot be shown: " + problem);
        return screen;
    }
    return paintCanvas(64, 64, [](float u, float v) {
        const float wave = 0.36F + 0.10F * std::sin(u * 2 * PI * 1.5F);
        const float x = u - 0.66F;
        const float y = v - 0.68F;
        st_vec color = mix(INK, DUSK, v);
        if (x * x + y * y < 0.022F)
            color = SUN;
        if (v < wave)
            color = mix(ROSE, AMBER, v / wave);
        return std::fmod(v * 16, 1.0F) < 0.25F ? mix(color, INK, 0.25F) : color;
    });
}

const st_texture SCREEN_TEXTURE = {"screen.tga", TARGA_PACKED_FROM_TOP, paintScreen};
