// The scroll text: one long line of letters in depth, leaning back to face the viewer.
#include "workshop/mainView.h"
#include "workshop/models/models.h"
#include "workshop/models/surfaces.h"
#include "workshop/text.h"

#include <cstring>

constexpr float LENGTH = 329.0F; // the show pulls this much past the picture
constexpr float LEAN = 26.0F;    // degrees

static const char *const WORDS =
    "Psst! Hello down there! Yes, you with the chair. The cloud asked me to read this slowly, so "
    "sit back. You are invited to VALMORINE 2003, three days and two nights on the only island "
    "that forgot to stay down. Bring your machine, your slippers and one song that nobody asked "
    "for. We bring soup, bad puns, good light and a tree to sleep under. How to get here: follow "
    "the arrow, then up. If you meet an old man in a cloud, say good morning: he has been working "
    "on his reply since spring. The sun has promised to walk in late, like everybody else. Entries "
    "are taken until the soup is gone. No ticket? Bring a stick, it is a long story. See you at "
    "VALMORINE! And now, once more, from the top...";

st_mesh makeScroller() {
    st_textStyle style = plainStyle(0.90F, 0.09F, painted("letters", LETTERS_TEXTURE, 0),
                                    plain("letters-side", mix(INK, DUSK, 0.25F), 0));
    // All letters are drawn in every frame, so they are coarse; and they are only ever seen from
    // above, so nobody misses their undersides.
    style.tolerance = 0.0205F;
    style.undersides = false;
    const auto letters = static_cast<float>(std::strlen(WORDS));
    style.tracking = (LENGTH - textWidth(WORDS, style)) / (letters * style.size);
    st_mesh mesh;
    append(mesh, textShape(WORDS, style),
           moved({0, -0.99F, -1.95F}) * turned({1, 0, 0}, LEAN) * facingMainView());
    return mesh;
}
