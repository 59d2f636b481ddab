// Names in old files are Latin-1 as a rule, in newer ones UTF-8.
#include "checker/plainText.h"

#include <algorithm>
#include <cctype>
#include <cstdio>

// ---------------------------------------------------------------------------- encoding

static bool isContinuation(int byte) {
    return (byte & 0xC0) == 0x80;
}

// The length of the UTF-8 character at `at`; 0 when there is none: a stray or missing byte, a
// longer form than needed, a surrogate, a number past the last one.
static std::size_t characterLength(const std::string &text, std::size_t at) {
    const auto byte = [&](std::size_t i) {
        return at + i < text.size() ? static_cast<int>(static_cast<unsigned char>(text[at + i]))
                                    : 0;
    };
    const int first = byte(0);
    if (first < 0x80)
        return 1;
    if (first >= 0xC2 && first <= 0xDF)
        return isContinuation(byte(1)) ? 2 : 0;
    if (first >= 0xE0 && first <= 0xEF) {
        const bool isTooLong = first == 0xE0 && byte(1) < 0xA0;
        const bool isSurrogate = first == 0xED && byte(1) > 0x9F;
        return isContinuation(byte(1)) && isContinuation(byte(2)) && !isTooLong && !isSurrogate ? 3
                                                                                                : 0;
    }
    if (first >= 0xF0 && first <= 0xF4) {
        const bool isOutside =
            (first == 0xF0 && byte(1) < 0x90) || (first == 0xF4 && byte(1) > 0x8F);
        return isContinuation(byte(1)) && isContinuation(byte(2)) && isContinuation(byte(3)) &&
                       !isOutside
                   ? 4
                   : 0;
    }
    return 0;
}

static bool isUtf8(const std::string &text) {
    std::size_t length = 0;
    for (std::size_t at = 0; at < text.size(); at += length) {
        length = characterLength(text, at);
        if (length == 0)
            return false;
    }
    return true;
}

static std::string fromLatin1(const std::string &bytes) {
    std::string text;
    for (const char c : bytes) {
        const unsigned char byte = static_cast<unsigned char>(c);
        if (byte < 0x80) {
            text += c;
        } else {
            text += static_cast<char>(0xC0 | byte >> 6);
            text += static_cast<char>(0x80 | (byte & 0x3F));
        }
    }
    return text;
}

static std::string toUtf8(const std::string &bytes) {
    return isUtf8(bytes) ? bytes : fromLatin1(bytes);
}

std::string utf8(const char *bytes) {
    return bytes == nullptr ? "" : toUtf8(bytes);
}

// The two-byte control characters, U+0080 to U+009F, act in a terminal like those below 0x20.
static bool isControl(const std::string &text, std::size_t at) {
    const unsigned char byte = static_cast<unsigned char>(text[at]);
    return byte < 0x20 || byte == 0x7F ||
           (byte == 0xC2 && static_cast<unsigned char>(text[at + 1]) < 0xA0);
}

static std::string escaped(const std::string &text, const char *alsoEscaped) {
    std::string line;
    std::size_t length = 0;
    for (std::size_t at = 0; at < text.size(); at += length) {
        length = characterLength(text, at);
        if (isControl(text, at)) {
            char code[8];
            std::snprintf(code, sizeof code, "\\x%02X",
                          static_cast<unsigned char>(text[at + length - 1]));
            line += code;
            continue;
        }
        if (std::string(alsoEscaped).find(text[at]) != std::string::npos)
            line += '\\';
        line += text.substr(at, length);
    }
    return line;
}

std::string quoted(const char *bytes) {
    return '"' + escaped(utf8(bytes), "\"\\") + '"';
}

std::string printable(const std::string &bytes) {
    return escaped(toUtf8(bytes), "");
}

// ------------------------------------------------------------------------ words, numbers

std::string shortNumber(double number) {
    char text[32];
    std::snprintf(text, sizeof text, "%.4g", number == 0.0 ? 0.0 : number);
    return text;
}

std::string idText(unsigned int id) {
    std::string text;
    for (int shift = 24; shift >= 0; shift -= 8)
        text += static_cast<char>(id >> shift & 0xFF);
    return printable(text);
}

std::string counted(long long count, const std::string &thing) {
    return std::to_string(count) + " " + thing + (count == 1 ? "" : "s");
}

std::string joined(const std::vector<std::string> &words) {
    std::string text;
    for (std::size_t i = 0; i < words.size(); i++) {
        if (i > 0)
            text += i + 1 == words.size() ? " and " : ", ";
        text += words[i];
    }
    return text;
}

std::string joinedCounts(const std::vector<st_countOf> &counts) {
    std::vector<std::string> words;
    for (const st_countOf &of : counts)
        if (of.count > 0)
            words.push_back(of.before + counted(of.count, of.thing));
    return joined(words);
}

std::string spacedWords(const std::string &camelCase) {
    std::string words;
    for (const char c : camelCase) {
        if (std::isupper(static_cast<unsigned char>(c)) != 0)
            words += ' ';
        words += static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    }
    return words;
}

// ----------------------------------------------------------------------------- columns

// Characters, not bytes.
static std::size_t widthOf(const std::string &text) {
    return static_cast<std::size_t>(std::count_if(text.begin(), text.end(), [](char c) {
        return !isContinuation(static_cast<unsigned char>(c));
    }));
}

// A longer cell runs over instead of moving all others.
constexpr std::size_t WIDEST_COLUMN = 64;

struct st_column {
    std::size_t width;
    bool isRight;
    bool isEmpty;
};

static std::vector<st_column> measure(std::vector<std::vector<std::string>> *rows) {
    std::vector<st_column> layout;
    for (std::string &title : rows->front()) {
        const bool isRight = !title.empty() && title[0] == '>';
        title.erase(0, isRight ? 1 : 0);
        layout.push_back({widthOf(title), isRight, true});
    }
    for (std::size_t r = 1; r < rows->size(); r++)
        for (std::size_t c = 0; c < (*rows)[r].size(); c++) {
            const std::size_t width = std::min(widthOf((*rows)[r][c]), WIDEST_COLUMN);
            layout[c].width = std::max(layout[c].width, width);
            layout[c].isEmpty = layout[c].isEmpty && (*rows)[r][c].empty();
        }
    return layout;
}

static std::string lineOf(const std::vector<std::string> &row,
                          const std::vector<st_column> &layout) {
    std::string line;
    for (std::size_t c = 0; c < row.size(); c++) {
        if (layout[c].isEmpty)
            continue;
        const std::size_t width = std::min(widthOf(row[c]), layout[c].width);
        const std::string gap(layout[c].width - width, ' ');
        line += "  " + (layout[c].isRight ? gap + row[c] : row[c] + gap);
    }
    return line.erase(line.find_last_not_of(' ') + 1);
}

std::string columns(const std::vector<std::vector<std::string>> &titleAndRows) {
    std::vector<std::vector<std::string>> rows = titleAndRows;
    const std::vector<st_column> layout = measure(&rows);
    std::string text;
    for (const std::vector<std::string> &row : rows) {
        const std::string line = lineOf(row, layout);
        if (!line.empty())
            text += line + '\n';
    }
    return text;
}
