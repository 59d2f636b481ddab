// A file of words, such as invitation.toml, as a record.
//
//   const st_wordsFile file = readWords("my.toml");
//   if (!file.problems.empty()) std::fputs(sayProblems(file).c_str(), stderr);
//   else useWords(file.words);
#pragma once

#include "workshop/words.h"

struct st_problem {
    int line; // from 1; 0: of the file as a whole
    int column;
    std::string text;
};

struct st_wordsFile {
    std::string path;
    std::string source; // all that is in it
    st_words words;     // as far as they could be read
    std::vector<st_problem> problems;
};

// Everything that can be said without a font: what is no TOML, unknown keys with the known one that
// is nearest, wrong types, empty lists, too many names, files that are not there.
st_wordsFile readWords(const std::string &path);

// The program's own.
const st_words &defaultWords();
// The file that they come from, to begin one's own with.
const char *defaultWordsSource();

// One line each, in the order of the file: "my.toml:7:9: ...".
std::string sayProblems(const st_wordsFile &file);

// A problem with a letter of the phrase, where the file first has it there.
st_problem letterProblem(const st_wordsFile &file, const st_phrase &phrase, char32_t letter,
                         const std::string &text);
