// Strings of records.
#include "reader/records.h"

#include <cstring>

char *copyString(const char *string) {
    const char *source = string == nullptr ? "" : string;
    std::size_t size = std::strlen(source) + 1;
    char *copy = static_cast<char *>(std::malloc(size));
    if (copy != nullptr)
        std::memcpy(copy, source, size);
    return copy;
}

int compareStrings(const char *a, const char *b) {
    return std::strcmp(a == nullptr ? "" : a, b == nullptr ? "" : b);
}
