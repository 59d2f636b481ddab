// printWords: the words of the set as JSON on standard output, for pages about the show.
#include "workshop/words.h"

#include <nlohmann/json.hpp>

#include <cstdio>
#include <exception>

int main() {
    try {
        const nlohmann::ordered_json words = {{"name", SIGN_NAME},
                                              {"year", SIGN_YEAR},
                                              {"logo", LOGO},
                                              {"scrollText", SCROLL_TEXT},
                                              {"wheels", {WHEEL_ONE, WHEEL_TWO, WHEEL_THREE}}};
        return std::puts(words.dump(2).c_str()) < 0 ? 1 : 0;
    } catch (const std::exception &failure) {
        std::fprintf(stderr, "printWords: %s\n", failure.what());
        return 1;
    }
}
