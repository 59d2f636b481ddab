// The piece as data: sections, harmony and patterns, played out into single notes.
#pragma once

#include <vector>

enum instrument {
    KICK,
    SNARE,
    HAT,
    OPEN_HAT,
    CRASH,
    RISER,
    BASS,
    PAD,
    PLUCK,
    LEAD,
    BELL,
    WHISTLE,
    INSTRUMENTS
};

struct st_note {
    double start;  // seconds
    double length; // seconds until it is let go
    int voice;     // instrument
    float pitch;   // MIDI number; 69 is 440 Hz
    float level;   // 0 to 1
    float pan;     // -1 left to 1 right
};

// All notes in order of their start.
std::vector<st_note> playScore();

// Length of the whole piece with its last echoes, in seconds.
double scoreLength();
