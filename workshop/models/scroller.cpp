// The scroll text: one long line of letters in depth, leaning back to face the viewer.
#include "workshop/mainView.h"
#include "workshop/models/models.h"
#include "workshop/models/surfaces.h"
#include "workshop/text.h"
#include "workshop/words.h"

#include <cstring>

constexpr float LENGTH = 329.0F; // the show pulls this much past the picture
constexpr float LEAN = 26.0F;    // degrees

st_mesh makeScroller() {
    st_textStyle style = plainStyle(0.90F, 0.09F, painted("letters", LETTERS_TEXTURE, 0),
                                    plain("letters-side", mix(INK, DUSK, 0.25F), 0));
    // All letters are drawn in every frame, so they are coarse; and they are only ever seen from
    // above, so nobody misses their undersides.
    style.tolerance = 0.0205F;
    style.undersides = false;
    const auto letters = static_cast<float>(std::strlen(SCROLL_TEXT));
    style.tracking = (LENGTH - textWidth(SCROLL_TEXT, style)) / (letters * style.size);
    st_mesh mesh;
    append(mesh, textShape(SCROLL_TEXT, style),
           moved({0, -0.99F, -1.95F}) * turned({1, 0, 0}, LEAN) * facingMainView());
    return mesh;
}
