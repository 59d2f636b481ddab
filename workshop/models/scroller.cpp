// The scroll text: one long line of letters in depth, leaning back to face the viewer.
#include "workshop/models/models.h"
#include "workshop/models/surfaces.h"
#include "workshop/text.h"

constexpr float LENGTH = 329.0F; // the show pulls this much past the picture
constexpr float LEAN = 26.0F;    // degrees

static const char *const WORDS =
    "Psst! Hello down there! Yes, you, with the chair. The cloud asked me to read this slowly, so sit back. "
    "You are invited to VALMORINE 2003, three days on the only island that forgot to stay down. "
    "Bring your machine, your slippers, a jumper for the night side and one song nobody asked for. "
    "We bring soup, bad puns, good light and a tree to sleep under. "
    "How to get here: follow the arrow, then up. If you meet an old man in a cloud, say good morning, "
    "he has been composing a greeting since spring and is nearly done with the first word. "
    "The sun has promised to walk in late, like everybody. Entries may be handed in until the soup is gone. "
    "No ticket? Bring a stick, it is a long story. See you at VALMORINE! "
    "And now, once more, from the top...";

st_mesh makeScroller() {
    st_textStyle style = {1.0F,
                          0.10F,
                          0,
                          0.012F,
                          0,
                          false,
                          painted("letters", "letters.tga", 0),
                          plain("letters-side", mix(INK, DUSK, 0.25F), 0)};
    const float natural = textWidth(WORDS, style);
    style.size = LENGTH / natural;
    st_mesh mesh;
    append(mesh, textShape(WORDS, style),
           moved({0, -1.36F, -1.95F}) * turned({1, 0, 0}, LEAN) * facingMainView());
    return mesh;
}
