// The words of the set: what the sign, the logo, the scroll text and the wheels say. Models are cut
// from them, and pages about the show repeat them.
#pragma once

constexpr const char *SIGN_NAME = "VALMORINE";
constexpr const char *SIGN_YEAR = "2003";
constexpr const char *LOGO = "k7";

constexpr const char *SCROLL_TEXT =
    "Psst! Hello down there! Yes, you with the chair. The cloud asked me to read this slowly, so "
    "sit back. You are invited to VALMORINE 2003, three days and two nights on the only island "
    "that forgot to stay down. Bring your machine, your slippers and one song that nobody asked "
    "for. We bring soup, bad puns, good light and a tree to sleep under. How to get here: follow "
    "the arrow, then up. If you meet an old man in a cloud, say good morning: he has been working "
    "on his reply since spring. The sun has promised to walk in late, like everybody else. Entries "
    "are taken until the soup is gone. No ticket? Bring a stick, it is a long story. See you at "
    "VALMORINE! And now, once more, from the top...";

constexpr const char *WHEEL_ONE[] = {"Moss Club",   "Teapots",  "Late Owls", "Wobble",
                                     "Sock Drawer", "Porridge", "Mittens",   "Lanterns"};
constexpr const char *WHEEL_TWO[] = {"Gravel",  "Duck Dept.", "Humdrum",   "Zebra Tea", "Spaghetti",
                                     "Whalers", "Cactus",     "Biscuit 9", "Thunder"};
constexpr const char *WHEEL_THREE[] = {"Jam Pact",  "Old Abbey", "Kettle",  "Salt Lab",
                                       "Plum Inc.", "Foghorn",   "Monsoon", "Goat Unit",
                                       "Buttons",   "Pennies"};
