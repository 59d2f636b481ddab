// Reading the command lines of the tools.
#pragma once

constexpr int MAX_SIDE = 8192; // pixels

struct st_pictureSize {
    int width;
    int height;
};

// Reads a whole number at *text and moves past it; -1 when there is none up to limit.
int readNumber(const char **text, int limit);

// Reads "800x600", each side from 1 to MAX_SIDE. False, with size untouched, for anything else.
bool readPictureSize(const char *text, st_pictureSize *size);
