"""The show's font as a page wants it: the letters of European languages alone, compressed.

    python3 web/subsetLetters.py FONT.otf letters.woff2
"""
import logging
import sys

from fontTools import subset

LETTERS = [*range(0x20, 0x7F), *range(0xA0, 0x180), *range(0x2013, 0x2027)]

source, target = sys.argv[1:]
logging.disable(logging.WARNING)  # an editor's own table is dropped, and rightly
options = subset.Options(flavor="woff2", layout_features=["kern"])
font = subset.load_font(source, options)
subsetter = subset.Subsetter(options)
subsetter.populate(unicodes=LETTERS)
subsetter.subset(font)
# Browsers refuse a font whose PostScript name has a space in it.
font["CFF "].cff.fontNames = ["CherryBomb-Regular"]
subset.save_font(font, target, options)
