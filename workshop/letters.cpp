// utf8proc knows Unicode; see letters.h.
#include "workshop/letters.h"

#include <utf8proc.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <numeric>
#include <vector>

constexpr char32_t UNKNOWN = 0xFFFD;

std::u32string lettersOf(const std::string &text) {
    std::u32string letters;
    const auto *bytes = reinterpret_cast<const utf8proc_uint8_t *>(text.data());
    const auto size = static_cast<utf8proc_ssize_t>(text.size());
    for (utf8proc_ssize_t at = 0; at < size;) {
        utf8proc_int32_t letter = -1;
        const utf8proc_ssize_t length = utf8proc_iterate(bytes + at, size - at, &letter);
        letters += length > 0 ? static_cast<char32_t>(letter) : UNKNOWN;
        at += std::max<utf8proc_ssize_t>(length, 1);
    }
    return letters;
}

std::string textOf(const std::u32string &letters) {
    std::string text;
    for (const char32_t letter : letters) {
        std::array<utf8proc_uint8_t, 4> bytes = {};
        const utf8proc_ssize_t length =
            utf8proc_encode_char(static_cast<utf8proc_int32_t>(letter), bytes.data());
        text.append(bytes.begin(), bytes.begin() + length);
    }
    return text;
}

std::string composed(const std::string &text) {
    utf8proc_uint8_t *joined = nullptr;
    const utf8proc_ssize_t length =
        utf8proc_map(reinterpret_cast<const utf8proc_uint8_t *>(text.data()),
                     static_cast<utf8proc_ssize_t>(text.size()), &joined,
                     static_cast<utf8proc_option_t>(UTF8PROC_STABLE | UTF8PROC_COMPOSE));
    std::string result = length < 0 ? text : std::string(joined, joined + length);
    std::free(joined);
    return result;
}

bool isBlank(char32_t letter) {
    switch (utf8proc_category(static_cast<utf8proc_int32_t>(letter))) {
    case UTF8PROC_CATEGORY_ZS:
    case UTF8PROC_CATEGORY_ZL:
    case UTF8PROC_CATEGORY_ZP:
    case UTF8PROC_CATEGORY_CC:
    case UTF8PROC_CATEGORY_CF: return true;
    default: return false;
    }
}

bool runsLeft(char32_t letter) {
    const auto bidi = static_cast<utf8proc_bidi_class_t>(
        utf8proc_get_property(static_cast<utf8proc_int32_t>(letter))->bidi_class);
    return bidi == UTF8PROC_BIDI_CLASS_R || bidi == UTF8PROC_BIDI_CLASS_AL;
}

std::string sayLetter(char32_t letter) {
    char number[16];
    std::snprintf(number, sizeof number, "U+%04X", static_cast<unsigned>(letter));
    const auto code = static_cast<utf8proc_int32_t>(letter);
    const utf8proc_category_t kind = utf8proc_category(code);
    const bool seen = kind != UTF8PROC_CATEGORY_CN && kind < UTF8PROC_CATEGORY_ZS &&
                      kind != UTF8PROC_CATEGORY_MN && utf8proc_charwidth(code) > 0;
    return seen ? "'" + textOf({letter}) + "' (" + number + ")" : number;
}

std::size_t editDistance(const std::string &one, const std::string &other) {
    std::vector<std::size_t> row(other.size() + 1);
    std::iota(row.begin(), row.end(), std::size_t{0});
    for (std::size_t i = 0; i < one.size(); i++) {
        std::size_t corner = row[0]++;
        for (std::size_t k = 0; k < other.size(); k++) {
            const std::size_t changed = corner + (one[i] == other[k] ? 0 : 1);
            corner = row[k + 1];
            row[k + 1] = std::min({changed, row[k] + 1, row[k + 1] + 1});
        }
    }
    return row.back();
}
