// A contact sheet: pictures side by side, each with its frame's number and time below it.
//
//   st_contactSheet sheet = makeContactSheet(16, 800, 600);
//   addToSheet(&sheet, 500, 60, rgb);
//   writePng("sheet.png", sheet.width, sheet.height, sheet.rgb.data());
#pragma once

#include <vector>

constexpr int MAX_SHEET_PICTURES = 400;

struct st_contactSheet {
    int sourceWidth; // of the pictures that are added
    int sourceHeight;
    int cellWidth; // of the same pictures on the sheet
    int cellHeight;
    int columns;
    int added; // pictures so far
    int width;
    int height;
    std::vector<unsigned char> rgb; // top row first
};

// A sheet for up to count pictures (1 to MAX_SHEET_PICTURES) of this size.
st_contactSheet makeContactSheet(int count, int sourceWidth, int sourceHeight);

// Puts the next picture, 3 bytes a pixel and top row first, onto the sheet. Its time is frame /
// fps.
void addToSheet(st_contactSheet *sheet, int frame, int fps, const unsigned char *rgb);
