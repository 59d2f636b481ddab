// printWords: the words of an invitation as JSON on standard output, for pages about the show.
// Without a file of words, those of the default set.
//   printWords [WORDS.toml]
#include "workshop/readWords.h"

#include <nlohmann/json.hpp>

#include <cstdio>
#include <exception>

static nlohmann::ordered_json asJson(const st_words &words) {
    nlohmann::ordered_json wheels = nlohmann::ordered_json::array();
    for (const std::vector<st_phrase> &wheel : words.wheels) {
        nlohmann::ordered_json names = nlohmann::ordered_json::array();
        for (const st_phrase &name : wheel)
            names.push_back(name.text);
        wheels.push_back(names);
    }
    nlohmann::ordered_json palette;
    for (std::size_t k = 0; k < PALETTE_COLORS; k++) {
        char color[8];
        std::snprintf(color, sizeof color, "#%06x", words.palette[k] & 0xFFFFFFU);
        palette[PALETTE_NAMES[k]] = color;
    }
    return {{"name", words.name.text},
            {"line", words.secondLine.text},
            {"logo", words.logo.text},
            {"scrollText", words.scrollText.text},
            {"wheels", wheels},
            {"font", words.font.text},
            {"address", words.address.text},
            {"language", words.language.text},
            {"palette", palette}};
}

int main(int argc, char **argv) {
    try {
        const st_wordsFile file =
            argc > 1 ? readWords(argv[1]) : st_wordsFile{"", "", defaultWords(), {}};
        std::fputs(sayProblems(file).c_str(), stderr);
        if (!file.problems.empty())
            return 1;
        return std::puts(asJson(file.words).dump(2).c_str()) < 0 ? 1 : 0;
    } catch (const std::exception &failure) {
        std::fprintf(stderr, "printWords: %s\n", failure.what());
        return 1;
    }
}
