#include "tools/arguments.h"

#include <cstdlib>

int readNumber(const char **text, int limit) {
    if (**text < '0' || **text > '9')
        return -1;
    char *end = nullptr;
    const long number = std::strtol(*text, &end, 10);
    if (number > limit)
        return -1;
    *text = end;
    return static_cast<int>(number);
}

bool readPictureSize(const char *text, st_pictureSize *size) {
    const int width = readNumber(&text, MAX_SIDE);
    if (width < 1 || *text != 'x')
        return false;
    text++;
    const int height = readNumber(&text, MAX_SIDE);
    if (height < 1 || *text != '\0')
        return false;
    *size = {width, height};
    return true;
}
