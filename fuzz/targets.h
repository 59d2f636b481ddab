// One input after another to everything that reads files of strangers. A target ends the process
// with a line on standard error when something is wrong; a memory checker sees to the rest.
#pragma once

#include <cstddef>
#include <cstdint>

using fuzzFunction = void (*)(const std::uint8_t *data, std::size_t size);

// The whole input is an object file, read by lwGetObject.
void fuzzLwo2(const std::uint8_t *data, std::size_t size);

// The same with the type LWOB, whatever the input says, and by lwGetObject5.
void fuzzLwob(const std::uint8_t *data, std::size_t size);

// The whole input is an object file beside a few textures, made into a model, drawn in two
// contexts and put through every operation of the renderer.
void fuzzModel(const std::uint8_t *data, std::size_t size);

// The whole input is a Targa file.
void fuzzTarga(const std::uint8_t *data, std::size_t size);

// A float (big-endian), and an envelope chunk's body, evaluated at that time among others.
void fuzzEnvelope(const std::uint8_t *data, std::size_t size);

struct st_fuzzTarget {
    const char *name;
    fuzzFunction run;
};

constexpr st_fuzzTarget FUZZ_TARGETS[] = {{"lwo2", fuzzLwo2},
                                          {"lwob", fuzzLwob},
                                          {"model", fuzzModel},
                                          {"targa", fuzzTarga},
                                          {"envelope", fuzzEnvelope}};

// Ends the process, saying what does not hold. problem may be empty: then nothing happens.
void demand(bool holds, const char *claim);

// How much memory an input of that size may take.
std::size_t memoryAllowance(std::size_t inputSize);

// An envelope at every kind of time: at, before, between and after its keys, infinite, none.
struct st_lwEnvelope;
void evaluate(st_lwEnvelope *envelope);
