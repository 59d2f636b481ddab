#include "tools/samples.h"

#include "tools/arguments.h"

std::string readSamples(const std::string &text, int *samples) {
    const char *at = text.c_str();
    const int number = readNumber(&at, MAX_SAMPLES);
    if (number < 0 || *at != '\0')
        return "--samples takes a whole number from 0 to " + std::to_string(MAX_SAMPLES) +
               ", not \"" + text + "\"";
    *samples = number;
    return "";
}
