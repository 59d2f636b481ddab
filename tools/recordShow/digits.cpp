#include "tools/recordShow/digits.h"

#include <cstddef>
#include <cstring>

struct st_glyph {
    char character;
    int width;
    const char *rows[DIGIT_HEIGHT]; // '#' is ink
};

// clang-format off
static const st_glyph glyphs[] = {
    {'0', 5, {" ### ", "#   #", "#   #", "#   #", "#   #", "#   #", " ### "}},
    {'1', 5, {"  #  ", " ##  ", "  #  ", "  #  ", "  #  ", "  #  ", " ### "}},
    {'2', 5, {" ### ", "#   #", "    #", "   # ", "  #  ", " #   ", "#####"}},
    {'3', 5, {" ### ", "#   #", "    #", "  ## ", "    #", "#   #", " ### "}},
    {'4', 5, {"   # ", "  ## ", " # # ", "#  # ", "#####", "   # ", "   # "}},
    {'5', 5, {"#####", "#    ", "#### ", "    #", "    #", "#   #", " ### "}},
    {'6', 5, {" ### ", "#    ", "#    ", "#### ", "#   #", "#   #", " ### "}},
    {'7', 5, {"#####", "    #", "   # ", "   # ", "  #  ", "  #  ", "  #  "}},
    {'8', 5, {" ### ", "#   #", "#   #", " ### ", "#   #", "#   #", " ### "}},
    {'9', 5, {" ### ", "#   #", "#   #", " ####", "    #", "    #", " ### "}},
    {':', 1, {" ", " ", "#", " ", "#", " ", " "}},
    {'.', 1, {" ", " ", " ", " ", " ", " ", "#"}},
    {' ', 3, {"   ", "   ", "   ", "   ", "   ", "   ", "   "}},
};
// clang-format on

static const st_glyph &glyphOf(char character) {
    for (const st_glyph &glyph : glyphs)
        if (glyph.character == character)
            return glyph;
    return glyphs[sizeof glyphs / sizeof glyphs[0] - 1];
}

int digitsWidth(const char *text, int scale) {
    int width = 0;
    for (; *text != '\0'; text++)
        width += (glyphOf(*text).width + 1) * scale;
    return width > 0 ? width - scale : 0;
}

static void drawBlock(const st_canvas &canvas, int left, int top, int size,
                      const unsigned char (&ink)[3]) {
    for (int y = top; y < top + size; y++)
        for (int x = left; x < left + size; x++)
            if (x >= 0 && y >= 0 && x < canvas.width && y < canvas.height)
                std::memcpy(canvas.rgb + (static_cast<std::size_t>(y) *
                                              static_cast<std::size_t>(canvas.width) +
                                          static_cast<std::size_t>(x)) *
                                             3,
                            ink, 3);
}

void drawDigits(const st_canvas &canvas, int x, int y, int scale, const unsigned char (&ink)[3],
                const char *text) {
    for (; *text != '\0'; text++) {
        const st_glyph &glyph = glyphOf(*text);
        for (int row = 0; row < DIGIT_HEIGHT; row++)
            for (int column = 0; column < glyph.width; column++)
                if (glyph.rows[row][column] == '#')
                    drawBlock(canvas, x + column * scale, y + row * scale, scale, ink);
        x += (glyph.width + 1) * scale;
    }
}
