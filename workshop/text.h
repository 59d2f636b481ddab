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

// Opens the set's font. Stops the program when it is not there.
void openFont(const std::string &path);

// One line of text that reads from the +z side, its baseline on the x axis from x = 0 on.
// Characters that the font lacks stop the program.
st_mesh textShape(const std::string &line, const st_textStyle &style);

// Where the pen stands after the line.
float textWidth(const std::string &line, const st_textStyle &style);
