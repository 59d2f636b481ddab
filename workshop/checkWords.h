// Whether the set can be made of words: what only fonts, pictures and music can tell.
//
//   st_wordsFile file = readWords("my.toml");
//   checkWords(&file, WORKSHOP_FONT);
//   if (file.problems.empty()) useWords(file.words);    // the font is open, too
#pragma once

#include "workshop/readWords.h"

// Opens the words' own font, else the one given, and adds to the problems of the file: letters that
// the font lacks, lines that are too long even when set as small and close as can be, pictures that
// are none, music that would not play.
void checkWords(st_wordsFile *file, const std::string &font);
