// See words.h.
#include "workshop/words.h"

#include "workshop/readWords.h"

static st_words &usedWords() {
    static st_words words = defaultWords();
    return words;
}

const st_words &theWords() {
    return usedWords();
}

void useWords(const st_words &words) {
    usedWords() = words;
    usePalette(words.palette);
}
