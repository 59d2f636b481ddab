// The words of an invitation: what the sign, the logo, the scroll text and the wheels say, and what
// else is its own. Models are cut from them, and pages about the show repeat them.
//
//   useWords(words);   // all that is made from now on says this
//   theWords().name.text
#pragma once

#include "workshop/palette.h"

#include <string>
#include <vector>

constexpr std::size_t WHEELS = 3;
constexpr std::size_t MOST_NAMES = 12;  // on a wheel
constexpr std::size_t MOST_IN_LOGO = 3; // letters

// Text and where it stands in the file of words, from 1; 0 where it stands in none.
struct st_phrase {
    std::string text; // UTF-8, composed, without line breaks
    int line = 0;
    int column = 0;
    int lastLine = 0;
};

struct st_words {
    st_phrase name;       // on the sign
    st_phrase secondLine; // below it; may be empty
    st_phrase logo;
    st_phrase scrollText;
    std::vector<st_phrase> wheels[WHEELS];
    // Files, as the program finds them; empty: the set's own.
    st_phrase music;
    st_phrase screen; // the picture on the computer's screen
    st_phrase font;
    st_phrase address;  // where its page will be; may be empty
    st_phrase language; // of the words, as "pt-BR"; may be empty
    st_palette palette = DEFAULT_PALETTE;
};

// Of what is being made. They are the program's until others are used.
const st_words &theWords();
void useWords(const st_words &words);
