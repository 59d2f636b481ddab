// The form follows the show at 60 frames a second. A bar lasts 15/7 s (112 beats a minute), so
// that 28 bars are the minute between two greetings; the first bar starts where that puts bar
// 45, the first greeting's turn, at 97.7 s.
#include "workshop/synth/score.h"

#include <algorithm>
#include <cstdlib>
#include <string>

constexpr double BAR = 15.0 / 7.0;
constexpr int STEPS = 16; // to a bar
constexpr double STEP = BAR / STEPS;
constexpr double FIRST_BAR = 97.7 - 45 * BAR;
constexpr double WHOLE_LENGTH = 320.0;
constexpr int CHORD_NOTES = 4;

struct st_chord {
    int bass;
    int notes[CHORD_NOTES];
};

static constexpr st_chord G = {43, {55, 59, 62, 66}};
static constexpr st_chord EM = {40, {55, 59, 62, 64}};
static constexpr st_chord C = {36, {55, 59, 60, 64}};
static constexpr st_chord D = {38, {54, 57, 62, 64}};
static constexpr st_chord BM = {35, {54, 57, 59, 62}};
static constexpr st_chord AM = {33, {55, 57, 60, 64}};
static constexpr st_chord DSUS = {38, {55, 57, 60, 62}};
static constexpr st_chord F = {41, {53, 57, 60, 64}};
static constexpr st_chord GB = {35, {55, 59, 62, 67}};

using progression = std::vector<st_chord>;
static const progression SUNNY = {G, EM, C, D, BM, EM, AM, DSUS};
static const progression DUSKY = {EM, C, G, D, EM, C, AM, BM};
static const progression FLOATING = {C, GB, AM, G, F, C, D, DSUS};
static const progression HOMEWARD = {C, D, G, EM, C, DSUS, G, G};

// Tunes: a note and its length in sixteenths; '-' is a rest. Eight bars each.
static const char *const STROLL =
    "D5/3 B4/3 G4/2 A4/2 B4/2 D5/4 E5/3 D5/3 B4/2 G4/6 -/2 C5/3 B4/3 A4/2 G4/2 A4/2 C5/4 "
    "A4/6 F#4/2 A4/6 -/2 F#5/3 D5/3 B4/2 D5/4 F#5/4 G5/3 F#5/3 E5/2 B4/6 -/2 "
    "C5/2 D5/2 E5/4 D5/2 C5/2 A4/4 D5/8 -/4 A4/2 B4/2";
static const char *const STROLL_ON =
    "D5/3 G5/3 B4/2 D5/2 G5/2 A5/4 B5/3 G5/3 E5/2 G5/6 -/2 E5/3 G5/3 C5/2 B4/2 C5/2 E5/4 "
    "F#5/6 E5/2 D5/6 -/2 D5/2 F#5/2 A5/4 F#5/2 D5/2 B4/4 E5/3 G5/3 B5/2 G5/6 -/2 "
    "E5/2 D5/2 C5/4 E5/2 G5/2 A5/4 G5/6 A5/2 D5/8";
static const char *const ANSWER = "-/8 G5/2 B5/2 D6/4 -/16 -/8 G5/2 E5/2 C5/4 -/8 A5/4 F#5/4 "
                                  "-/8 B5/2 A5/2 F#5/4 -/16 -/8 E5/2 G5/2 A5/4 -/4 G5/4 A5/4 D5/4";
static const char *const WONDER =
    "B4/4 E5/4 F#5/2 G5/6 G5/3 E5/3 C5/2 E5/8 D5/4 B4/4 D5/2 E5/2 D5/4 A4/12 -/4 "
    "B4/4 E5/4 F#5/2 G5/6 A5/3 G5/3 E5/2 G5/8 E5/4 C5/4 D5/2 E5/2 C5/4 D5/4 F#5/4 D5/4 B4/4";
static const char *const DRIFT =
    "E5/8 G5/4 E5/4 D5/12 -/4 C5/6 D5/2 E5/8 D5/4 B4/4 G4/8 A4/6 C5/2 F5/8 E5/4 D5/4 C5/8 "
    "D5/4 E5/4 F#5/4 A5/4 G5/4 F#5/4 D5/8";
static const char *const LULLABY =
    "G5/8 E5/8 F#5/8 D5/8 B4/12 D5/4 E5/12 -/4 G5/8 E5/8 A5/8 F#5/8 G5/16 -/16";

enum layer : unsigned {
    PADS = 1,
    ARP = 2,
    LOW = 4,  // bass
    BEAT = 8, // kick and snare
    HATS = 16,
    HALF = 32,    // half-time beat
    RISE = 64,    // noise swelling over the section
    HIT = 128,    // crash on the first beat
    SPARSE = 256, // every other note of the arpeggio
    FILL = 512    // snares at the end
};

struct st_section {
    int bars;
    int transpose;
    const progression *chords;
    unsigned layers;
    const char *tune; // null for none
    int tuneVoice;
    float level; // of everything in it
};

static const std::vector<st_section> &form() {
    static const std::vector<st_section> sections = {
        // swell, lift
        {7, 0, &HOMEWARD, PADS | ARP | SPARSE, nullptr, LEAD, 0.75F},
        {5, 0, &SUNNY, PADS | ARP | HATS | LOW | RISE | FILL, nullptr, LEAD, 0.85F},
        // full
        {8, 0, &SUNNY, PADS | ARP | LOW | BEAT | HATS | HIT, STROLL, LEAD, 1},
        {8, 0, &SUNNY, PADS | ARP | LOW | BEAT | HATS, STROLL_ON, LEAD, 1},
        {8, 0, &DUSKY, PADS | ARP | LOW | BEAT | HATS | HIT, nullptr, LEAD, 1},
        {8, 0, &SUNNY, PADS | ARP | LOW | BEAT | HATS | FILL, STROLL, WHISTLE, 1},
        {1, 0, &HOMEWARD, PADS | RISE | FILL, nullptr, LEAD, 1},
        // first greeting: dusk
        {8, 0, &DUSKY, PADS | LOW | BEAT | HATS | HIT, WONDER, BELL, 1},
        {8, 0, &DUSKY, PADS | ARP | LOW | BEAT | HATS, WONDER, LEAD, 1},
        {8, 0, &SUNNY, PADS | ARP | LOW | BEAT | HATS | HIT, ANSWER, BELL, 1},
        {4, 0, &DUSKY, PADS | ARP | SPARSE | LOW | RISE | FILL, nullptr, LEAD, 0.9F},
        // second greeting: floating
        {8, 0, &FLOATING, PADS | ARP | SPARSE | LOW | HALF | HIT, DRIFT, WHISTLE, 1},
        {8, 0, &FLOATING, PADS | ARP | LOW | HALF | HATS, DRIFT, LEAD, 1},
        {8, 0, &SUNNY, PADS | ARP | LOW | BEAT | HATS | HIT, ANSWER, BELL, 1},
        {4, 0, &DUSKY, PADS | ARP | LOW | HATS | RISE | FILL, nullptr, LEAD, 0.95F},
        // third greeting: a tone higher
        {8, 2, &SUNNY, PADS | ARP | LOW | BEAT | HATS | HIT, STROLL, LEAD, 1},
        {8, 2, &SUNNY, PADS | ARP | LOW | BEAT | HATS, STROLL_ON, LEAD, 1},
        {8, 2, &DUSKY, PADS | ARP | LOW | BEAT | HATS | HIT, WONDER, WHISTLE, 1},
        {4, 2, &HOMEWARD, PADS | ARP | LOW | BEAT | HATS | FILL, nullptr, LEAD, 1},
        // calm, last gesture, close
        {9, 2, &HOMEWARD, PADS | ARP | SPARSE | RISE, LULLABY, BELL, 0.9F},
        {3, 2, &SUNNY, PADS | ARP | LOW | BEAT | HATS | HIT, STROLL_ON, LEAD, 1},
        {4, 2, &HOMEWARD, PADS | ARP | SPARSE | LOW | HIT, LULLABY, WHISTLE, 0.9F}};
    return sections;
}

// Where a section is played: its first bar, counted from the first of the piece.
struct st_span {
    const st_section &section;
    int firstBar;
    std::vector<st_note> &notes;
};

static double timeOf(int bar, double step) {
    return FIRST_BAR + bar * BAR + step * STEP;
}

static void addNote(const st_span &span, int bar, double step, double steps, int voice, int pitch,
                    float level, float pan) {
    const int moved = voice >= BASS ? pitch + span.section.transpose : pitch;
    span.notes.push_back({timeOf(span.firstBar + bar, step), steps * STEP, voice,
                          static_cast<float>(moved), level * span.section.level, pan});
}

static const st_chord &chordOf(const st_span &span, int bar) {
    const progression &chords = *span.section.chords;
    return chords[static_cast<std::size_t>(bar) % chords.size()];
}

// A pattern has one character to a step: '.' is silence, a digit the loudness.
static void addPattern(const st_span &span, int bar, const char *pattern, int voice, float pan) {
    for (int step = 0; step < STEPS; step++)
        if (pattern[step] != '.')
            addNote(span, bar, step, 1, voice, 60, static_cast<float>(pattern[step] - '0') / 9.0F,
                    pan);
}

static void addBeat(const st_span &span, int bar) {
    const unsigned layers = span.section.layers;
    if ((layers & BEAT) != 0) {
        addPattern(span, bar, bar % 2 == 0 ? "9...9...9...9..." : "9...9...9...9.5.", KICK, 0);
        addPattern(span, bar, bar % 4 == 3 ? "....8.....2.8..3" : "....8.......8...", SNARE, 0.05F);
    }
    if ((layers & HALF) != 0) {
        addPattern(span, bar, "9.....6...8.....", KICK, 0);
        addPattern(span, bar, "........8......2", SNARE, 0.05F);
    }
    if ((layers & HATS) != 0) {
        addPattern(span, bar, "5.2.6.2.5.2.6.23", HAT, 0.3F);
        addPattern(span, bar, "..5...5...5...5.", OPEN_HAT, -0.25F);
    }
    if ((layers & FILL) != 0 && bar == span.section.bars - 1)
        addPattern(span, bar, "........4.4.5678", SNARE, 0.05F);
    if ((layers & HIT) != 0 && bar == 0)
        addNote(span, bar, 0, 16, CRASH, 60, 0.9F, -0.1F);
}

static void addBass(const st_span &span, int bar) {
    const int root = chordOf(span, bar).bass;
    const bool slow = (span.section.layers & (BEAT | HATS)) == 0;
    if (slow) {
        addNote(span, bar, 0, 14, BASS, root, 0.8F, 0);
        return;
    }
    // Between the kicks, with a hop to the octave.
    static constexpr int STEPS_PLAYED[] = {0, 3, 6, 8, 10, 11, 14};
    static constexpr int HOPS[] = {0, 0, 12, 0, 7, 12, 0};
    for (int i = 0; i < 7; i++)
        addNote(span, bar, STEPS_PLAYED[i], i == 0 ? 2.5 : 1.6, BASS, root + HOPS[i],
                i % 2 == 0 ? 0.9F : 0.7F, 0);
}

static void addPads(const st_span &span, int bar) {
    const st_chord &chord = chordOf(span, bar);
    for (int i = 0; i < CHORD_NOTES; i++)
        addNote(span, bar, 0, 15.5, PAD, chord.notes[i], 0.7F, static_cast<float>(i) * 0.4F - 0.6F);
}

static void addArp(const st_span &span, int bar) {
    static constexpr int ORDER[STEPS] = {0, 2, 1, 3, 2, 4, 3, 5, 4, 2, 3, 1, 2, 0, 1, 3};
    const st_chord &chord = chordOf(span, bar);
    const int stride = (span.section.layers & SPARSE) != 0 ? 2 : 1;
    for (int step = 0; step < STEPS; step += stride) {
        const int rung = ORDER[step];
        const int pitch = chord.notes[rung % CHORD_NOTES] + 12 * (1 + rung / CHORD_NOTES);
        addNote(span, bar, step, 1, PLUCK, pitch, step % 4 == 0 ? 0.8F : 0.55F,
                rung % 2 == 0 ? -0.45F : 0.45F);
    }
}

// "F#5" is 78.
static int pitchOf(const std::string &name) {
    static constexpr int SEMITONES[] = {9, 11, 0, 2, 4, 5, 7}; // A to G
    const int octave = name.back() - '0';
    const int sharp = name.find('#') != std::string::npos ? 1 : 0;
    return 12 * (octave + 1) + SEMITONES[name[0] - 'A'] + sharp;
}

static void addTune(const st_span &span) {
    const std::string tune = span.section.tune;
    int step = 0;
    std::size_t at = 0;
    while (at < tune.size() && step < span.section.bars * STEPS) {
        const std::size_t slash = tune.find('/', at);
        const std::size_t end = std::min(tune.find(' ', slash), tune.size());
        const int steps = std::atoi(tune.c_str() + slash + 1);
        const std::string name = tune.substr(at, slash - at);
        if (name != "-")
            addNote(span, step / STEPS, step % STEPS, steps * 0.92, span.section.tuneVoice,
                    pitchOf(name), 0.85F, 0.08F);
        step += steps;
        at = end + 1;
    }
}

static void playSection(const st_span &span) {
    const unsigned layers = span.section.layers;
    for (int bar = 0; bar < span.section.bars; bar++) {
        addBeat(span, bar);
        if ((layers & LOW) != 0)
            addBass(span, bar);
        if ((layers & PADS) != 0)
            addPads(span, bar);
        if ((layers & ARP) != 0)
            addArp(span, bar);
    }
    if ((layers & RISE) != 0) {
        const int bars = std::min(span.section.bars, 4);
        addNote(span, span.section.bars - bars, 0, bars * STEPS, RISER, 60, 0.8F, 0);
    }
    if (span.section.tune != nullptr)
        addTune(span);
}

// A chord that was there before the first bar, and the one that is left after the last.
static void addEdges(std::vector<st_note> &notes, int bars) {
    for (int i = 0; i < CHORD_NOTES; i++) {
        const float pan = static_cast<float>(i) * 0.4F - 0.6F;
        notes.push_back({0, FIRST_BAR, PAD, static_cast<float>(C.notes[i]), 0.55F, pan});
        notes.push_back(
            {timeOf(bars, 0), 5.0, PAD, static_cast<float>(G.notes[i] + 2), 0.75F, pan});
        notes.push_back(
            {timeOf(bars, i), 3.0, BELL, static_cast<float>(G.notes[i] + 14), 0.6F, -pan});
    }
    notes.push_back({timeOf(bars, 0), 4.5, BASS, static_cast<float>(G.bass + 2), 0.7F, 0});
    notes.push_back({timeOf(bars, 0), 2.0, CRASH, 60, 0.5F, 0});
}

std::vector<st_note> playScore() {
    std::vector<st_note> notes;
    int bar = 0;
    for (const st_section &section : form()) {
        playSection({section, bar, notes});
        bar += section.bars;
    }
    addEdges(notes, bar);
    std::stable_sort(notes.begin(), notes.end(),
                     [](const st_note &a, const st_note &b) { return a.start < b.start; });
    return notes;
}

double scoreLength() {
    return WHOLE_LENGTH;
}
