// Numbers and times as pixels, for pictures that are to be read without a font.
#pragma once

constexpr int DIGIT_HEIGHT = 7; // pixels at scale 1

struct st_canvas {
    unsigned char *rgb; // top row first
    int width;
    int height;
};

// How many pixels wide text is.
int digitsWidth(const char *text, int scale);

// Draws digits, ':' and '.' with their upper left corner at (x, y), each pixel scale x scale; what
// falls outside the canvas is cut off, other characters leave a space.
void drawDigits(const st_canvas &canvas, int x, int y, int scale, const unsigned char (&ink)[3],
                const char *text);
