#include "tools/recordShow/contactSheet.h"

#include "tools/recordShow/digits.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdio>

constexpr int MAX_CELL = 320; // pixels, a picture's longer side
constexpr int GAP = 12;       // pixels around each picture
constexpr int LABEL = 26;     // pixels below it, from the picture's edge
constexpr int DIGIT_SCALE = 2;
constexpr unsigned char PAPER[3] = {22, 23, 28};
constexpr unsigned char NUMBER_INK[3] = {240, 236, 224};
constexpr unsigned char TIME_INK[3] = {130, 136, 150};

st_contactSheet makeContactSheet(int count, int sourceWidth, int sourceHeight) {
    const double scale =
        std::min(1.0, static_cast<double>(MAX_CELL) / std::max(sourceWidth, sourceHeight));
    st_contactSheet sheet = {};
    sheet.sourceWidth = sourceWidth;
    sheet.sourceHeight = sourceHeight;
    sheet.cellWidth = std::max(1, static_cast<int>(std::lround(sourceWidth * scale)));
    sheet.cellHeight = std::max(1, static_cast<int>(std::lround(sourceHeight * scale)));
    sheet.columns = static_cast<int>(std::ceil(std::sqrt(count)));
    const int rows = (count + sheet.columns - 1) / sheet.columns;
    sheet.width = sheet.columns * (sheet.cellWidth + GAP) + GAP;
    sheet.height = rows * (sheet.cellHeight + LABEL + GAP) + GAP;
    const auto pixels =
        static_cast<std::size_t>(sheet.width) * static_cast<std::size_t>(sheet.height);
    sheet.rgb.resize(pixels * 3);
    for (std::size_t k = 0; k < sheet.rgb.size(); k++)
        sheet.rgb[k] = PAPER[k % 3];
    return sheet;
}

// The mean of the source's pixels that a cell's pixel covers: whole ones, which is near enough
// for a cell not larger than the source.
static void averagePixel(const st_contactSheet &sheet, const unsigned char *rgb, int x, int y,
                         unsigned char *pixel) {
    const int left = x * sheet.sourceWidth / sheet.cellWidth;
    const int right = (x + 1) * sheet.sourceWidth / sheet.cellWidth;
    const int top = y * sheet.sourceHeight / sheet.cellHeight;
    const int bottom = (y + 1) * sheet.sourceHeight / sheet.cellHeight;
    int sums[3] = {0, 0, 0};
    for (int row = top; row < bottom; row++)
        for (int column = left; column < right; column++)
            for (int k = 0; k < 3; k++)
                sums[k] += rgb[(static_cast<std::size_t>(row) *
                                    static_cast<std::size_t>(sheet.sourceWidth) +
                                static_cast<std::size_t>(column)) *
                                   3 +
                               static_cast<std::size_t>(k)];
    const int count = (right - left) * (bottom - top);
    for (int k = 0; k < 3; k++)
        pixel[k] = static_cast<unsigned char>((sums[k] + count / 2) / count);
}

void addToSheet(st_contactSheet *sheet, int frame, int fps, const unsigned char *rgb) {
    const int left = GAP + sheet->added % sheet->columns * (sheet->cellWidth + GAP);
    const int top = GAP + sheet->added / sheet->columns * (sheet->cellHeight + LABEL + GAP);
    sheet->added++;
    const auto width = static_cast<std::size_t>(sheet->width);
    for (int y = 0; y < sheet->cellHeight; y++)
        for (int x = 0; x < sheet->cellWidth; x++)
            averagePixel(*sheet, rgb, x, y,
                         &sheet->rgb[(static_cast<std::size_t>(top + y) * width +
                                      static_cast<std::size_t>(left + x)) *
                                     3]);
    const st_canvas canvas = {sheet->rgb.data(), sheet->width, sheet->height};
    const int tenths = static_cast<int>(std::lround(10.0 * frame / fps));
    char number[16];
    char time[16];
    std::snprintf(number, sizeof number, "%d", frame);
    std::snprintf(time, sizeof time, "%d:%02d.%d", tenths / 600, tenths / 10 % 60, tenths % 10);
    const int line = top + sheet->cellHeight + (LABEL - DIGIT_HEIGHT * DIGIT_SCALE) / 2 + 2;
    drawDigits(canvas, left, line, DIGIT_SCALE, NUMBER_INK, number);
    drawDigits(canvas, left + sheet->cellWidth - digitsWidth(time, DIGIT_SCALE), line, DIGIT_SCALE,
               TIME_INK, time);
}
