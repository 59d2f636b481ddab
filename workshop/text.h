// Letters in depth, cut out of a font's outlines.
#pragma once

#include "modeling/mesh.h"

#include <string>

struct st_textStyle {
    float size;      // height of the font's em square
    float depth;     // front to back, around z = 0
    float bevel;     // width of the slanted rim, 0 for none
    float tolerance; // how far a flattened curve may stray, in ems
    float tracking;  // added between letters, in ems
    bool back;       // whether the back is closed
    bool undersides; // whether there are side walls that face down
    st_surface face; // its texture runs from descender to ascender, once per em across
    st_surface side;
};

// A plain cut letter: closed at the sides, open at the back.
st_textStyle plainStyle(float size, float depth, const st_surface &face, const st_surface &side);

// Opens the set's font, in place of one that is open. False when it is not there or is none.
bool openFont(const std::string &path);

// Whether the open font has the letter.
bool fontHas(char32_t letter);

// One line of text, UTF-8, that reads from the +z side, its baseline on the x axis from x = 0 on.
// Letters that the font lacks stop the program.
st_mesh textShape(const std::string &line, const st_textStyle &style);

// How many polygons textShape would make.
std::size_t polygonCount(const std::string &line, const st_textStyle &style);

// What a line takes, in ems, whatever its fineness: where its ink begins and ends, and where the
// pen stands after it. A line without ink has no width and no height.
struct st_extent {
    float left, bottom, right, top;
    float advance;
};

st_extent textExtent(const std::string &line, float tracking);
