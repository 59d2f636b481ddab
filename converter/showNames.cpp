// A name that is taken gets a number, and loses as many letters at its end as the number needs.
#include "converter/showNames.h"

#include "checker/images.h"

#include <cctype>

constexpr std::size_t LONGEST_NAME = 31;
constexpr std::size_t LONGEST_STEM = 100; // bytes; a file system takes about 255

// Not through the middle of a letter.
static std::string cut(const std::string &text, std::size_t length) {
    if (text.size() <= length)
        return text;
    while (length > 0 && (static_cast<unsigned char>(text[length]) & 0xC0U) == 0x80U)
        length--;
    return text.substr(0, length);
}

// Whatever keyOf makes of a name is taken once.
template <typename KeyOf>
static std::string numbered(const std::string &name, std::size_t longest, KeyOf keyOf,
                            st_takenNames *taken) {
    std::string made = cut(name, longest);
    int &number = taken->numbers.emplace(keyOf(made), 2).first->second;
    for (; !taken->names.insert(keyOf(made)).second; number++) {
        const std::string ending = "-" + std::to_string(number);
        made = cut(name, longest - ending.size()) + ending;
    }
    return made;
}

// As the renderer does to these names.
static std::string asDrawn(const std::string &name) {
    if (name == "ovre-plan")
        return "ovre_plan";
    if (name.size() == 12 && name.compare(0, 5, "mur3-") == 0 && name.compare(6, 6, "_front") == 0)
        return name.substr(0, 6);
    return name;
}

static std::string withoutControls(std::string name) {
    for (char &c : name)
        if (static_cast<unsigned char>(c) < ' ' || c == 0x7F)
            c = ' ';
    return name;
}

std::string surfaceName(const std::string &name, st_takenNames *taken) {
    const std::string wanted = asDrawn(cut(withoutControls(name), LONGEST_NAME));
    return numbered(
        wanted.empty() ? "surface" : wanted, LONGEST_NAME,
        [](const std::string &other) { return other; }, taken);
}

static std::string harmless(std::string name) {
    for (char &c : name) {
        const auto byte = static_cast<unsigned char>(c);
        if (byte < 0x80 && std::isalnum(byte) == 0 && c != '-' && c != '_' && c != '.')
            c = '_';
    }
    return name;
}

std::string pictureFileName(const std::string &stem, const std::string &name,
                            st_takenNames *taken) {
    const std::string begin = harmless(cut(stem, LONGEST_STEM)) + "-";
    const std::string own = harmless(name.empty() ? "picture" : name);
    // What was made for a model of this name keeps its name.
    const std::string wanted = own.compare(0, begin.size(), begin) == 0 ? own : begin + own;
    return numbered(wanted, 2 * LONGEST_STEM, lowerCase, taken) + ".tga";
}
