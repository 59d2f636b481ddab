// Which files the show loads. Names only, so that tools can share it without the rest
// of the driver.
#pragma once

constexpr char MUSIC_PATH[] = "msx/ferrol_-_tamo_lani_rete.ogg";

struct st_modelPath {
    const char *path; // relative to the working directory
    bool needed;      // without it the show ends when it would first draw the model
};

// In loading order, which is the order of the loader's messages.
constexpr st_modelPath MODEL_PATHS[] = {
    {"lwo/tree3d.lwo", false},       // tree; without it the show goes on
    {"lwo/moln1.lwo", true},         // cloud
    {"lwo/moln2.lwo", true},         // cloud
    {"lwo/gubbenimolnet.lwo", true}, // old man in a cloud
    {"lwo/box4.lwo", true},          // backdrop and ground
    {"lwo/grass.lwo", true},         // grass
    {"lwo/greets1.lwo", true},       // wheel of greetings
    {"lwo/greets2.lwo", true},       // wheel of greetings
    {"lwo/sol.lwo", true},           // sun
    {"lwo/greets3.lwo", true},       // wheel of greetings
    {"lwo/scrollernew.lwo", true},   // scroll text
    {"lwo/solensam.lwo", false},     // lonely sun; loaded, never drawn
    {"lwo/pinne.lwo", false},        // stick; loaded, never drawn
    {"lwo/k7.lwo", true},            // opening logo
    {"lwo/skylt.lwo", true},         // sign
};
