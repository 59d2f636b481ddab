"""A font as the page wants it: the letters of European languages and of the page's words alone,
compressed.

    python3 web/subsetLetters.py FONT.otf letters.woff2 [WORDS.json]
"""
import json
import logging
import sys

from fontTools import subset

LETTERS = [*range(0x20, 0x7F), *range(0xA0, 0x180), *range(0x2013, 0x2027)]


def letters_in(words):
    """All that is said in a structure of texts and lists."""
    if isinstance(words, dict):
        words = list(words.values())
    return set(map(ord, words)) if isinstance(words, str) else set().union(*map(letters_in, words))


source, target, *words = sys.argv[1:]
logging.disable(logging.WARNING)  # an editor's own table is dropped, and rightly
letters = set(LETTERS)
for path in words:
    with open(path, encoding="utf-8") as file:
        letters |= letters_in(json.load(file))
options = subset.Options(flavor="woff2", layout_features=["kern"])
font = subset.load_font(source, options)
subsetter = subset.Subsetter(options)
subsetter.populate(unicodes=letters)
subsetter.subset(font)
if "CFF " in font:  # browsers refuse a font whose PostScript name has a space in it
    font["CFF "].cff.fontNames = ["Letters"]
subset.save_font(font, target, options)
