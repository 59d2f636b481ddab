// See checkWords.h.
#include "workshop/checkWords.h"

#include "sound/decoding.h"
#include "workshop/lettering.h"
#include "workshop/letters.h"
#include "workshop/screenPicture.h"
#include "workshop/text.h"

#include <algorithm>
#include <set>

static void complain(st_wordsFile *file, const st_phrase &phrase, const std::string &text) {
    file->problems.push_back({phrase.line, phrase.column, text});
}

// Lines are set one letter after another from left to right, whatever the font could do.
static bool checkDirection(st_wordsFile *file, const st_phrase &phrase) {
    const std::u32string letters = lettersOf(phrase.text);
    const auto found = std::find_if(letters.begin(), letters.end(), runsLeft);
    if (found == letters.end())
        return true;
    file->problems.push_back(
        letterProblem(*file, phrase, *found,
                      "words that run from right to left cannot be set: " + sayLetter(*found)));
    return false;
}

// Whether the font has them all, and they can be set.
static bool checkLetters(st_wordsFile *file, const st_phrase &phrase) {
    if (!checkDirection(file, phrase))
        return false;
    std::set<char32_t> lacking;
    for (const char32_t letter : lettersOf(phrase.text))
        if (!fontHas(letter))
            lacking.insert(letter);
    for (const char32_t letter : lacking)
        file->problems.push_back(letterProblem(*file, phrase, letter,
                                               "the font has no letter " + sayLetter(letter) +
                                                   "; [letters] font takes another font"));
    return lacking.empty();
}

static std::string byLetters(std::size_t count) {
    return "by " + std::to_string(count) + (count == 1 ? " letter" : " letters");
}

static void checkLine(st_wordsFile *file, const st_phrase &phrase, const st_lineRoom &room,
                      const char *place) {
    if (!checkLetters(file, phrase))
        return;
    if (const std::size_t count = lettersTooMany(phrase.text, room); count > 0)
        complain(file, phrase,
                 "\"" + phrase.text + "\" is too long for " + place + " " + byLetters(count));
}

static void checkScroll(st_wordsFile *file) {
    const st_phrase &text = file->words.scrollText;
    if (!checkLetters(file, text))
        return;
    if (const std::size_t count = scrollTooMany(text.text); count > 0)
        complain(file, text,
                 "the scroll text is too long for the show " + byLetters(count) + ", of " +
                     std::to_string(lettersOf(text.text).size()) + "; its end would not be seen");
}

static void checkAllLines(st_wordsFile *file) {
    const st_words &words = file->words;
    checkLine(file, words.name, ARROW_ROOM, "the sign's arrow");
    checkLine(file, words.secondLine, BOARD_ROOM, "the sign's second board");
    checkLine(file, words.logo, LOGO_ROOM, "the block");
    for (const std::vector<st_phrase> &wheel : words.wheels)
        for (const st_phrase &name : wheel)
            checkLine(file, name, spokeRoom(SPOKE_LETTERS, 1), "its spoke");
    checkScroll(file);
}

static bool hasProblemAt(const st_wordsFile &file, const st_phrase &phrase) {
    for (const st_problem &problem : file.problems)
        if (problem.line == phrase.line && problem.column == phrase.column)
            return true;
    return false;
}

// Files that are not there have been complained about.
static bool isToBeRead(const st_wordsFile &file, const st_phrase &path) {
    return !path.text.empty() && !hasProblemAt(file, path);
}

// Whether there is a sound in it.
static bool plays(const std::string &path) {
    constexpr int RATE = 44100;
    std::vector<std::int16_t> samples;
    st_decoding *music = startDecoding(path.c_str(), RATE);
    if (music != nullptr)
        takeSamples(music, 1, &samples);
    return !samples.empty();
}

static void checkFiles(st_wordsFile *file) {
    const st_words &words = file->words;
    if (isToBeRead(*file, words.screen)) {
        st_picture ignored;
        const std::string problem = readScreenPicture(words.screen.text, &ignored);
        if (!problem.empty())
            complain(file, words.screen,
                     words.screen.text + " cannot be shown: " + problem +
                         "; PNG, JPEG, GIF, BMP, PSD and TGA can");
    }
    if (isToBeRead(*file, words.music) && !plays(words.music.text))
        complain(file, words.music,
                 words.music.text + " is no music that could be played; MP3, Ogg, FLAC, WAV and "
                                    "modules can");
}

void checkWords(st_wordsFile *file, const std::string &font) {
    const st_phrase &own = file->words.font;
    if (isToBeRead(*file, own) && !openFont(own.text))
        complain(file, own, own.text + " is no font that could be read; TrueType and OpenType can");
    else if (own.text.empty() && !openFont(font))
        file->problems.push_back({0, 0, "cannot read the set's font, " + font});
    else if (isToBeRead(*file, own) || own.text.empty())
        checkAllLines(file);
    checkFiles(file);
}
