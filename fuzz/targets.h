// Everything that reads files of strangers, each with one input to judge it by: for libFuzzer,
// for the damage test and for the inputs that once failed. A memory checker sees to the rest.
#pragma once

#include <cstddef>
#include <string>

struct st_verdict {
    bool accepted;       // the input loaded
    std::string problem; // the first thing that does not hold; empty when all is well
};

using fuzzFunction = st_verdict (*)(const std::string &input);

// The input is an object file, read by lwGetObject.
st_verdict fuzzLwo2(const std::string &input);

// The same with the type LWOB, whatever the input says, and by lwGetObject5.
st_verdict fuzzLwob(const std::string &input);

// The input is an object file beside a few textures, made into a model, drawn in two contexts
// and put through every operation of the renderer. Surfaces of two colour textures, over which
// the renderer deliberately hangs, are passed over.
st_verdict fuzzModel(const std::string &input);

// The input is an object file beside a few textures, reported and checked as by lwoinfo.
st_verdict fuzzInfo(const std::string &input);

// The input is a Targa file.
st_verdict fuzzTarga(const std::string &input);

// The input is a float (big-endian), and the body of an envelope chunk, evaluated at that time
// among others.
st_verdict fuzzEnvelope(const std::string &input);

// The input is a glTF file, of either kind, beside a few pictures.
st_verdict fuzzGltf(const std::string &input);

// The input is an OBJ file and, behind a zero, its material file a.mtl, beside a few pictures.
st_verdict fuzzObj(const std::string &input);

// The input is a picture of any kind that models of other formats have.
st_verdict fuzzPicture(const std::string &input);

struct st_fuzzTarget {
    const char *name;
    fuzzFunction judge;
};

constexpr st_fuzzTarget FUZZ_TARGETS[] = {
    {"lwo2", fuzzLwo2}, {"lwob", fuzzLwob},   {"model", fuzzModel},
    {"info", fuzzInfo}, {"targa", fuzzTarga}, {"envelope", fuzzEnvelope},
    {"gltf", fuzzGltf}, {"obj", fuzzObj},     {"picture", fuzzPicture}};

// How much memory an input of that size may take. The smallest sub-chunks, of 6 bytes, make
// records of some hundred.
constexpr std::size_t memoryAllowance(std::size_t inputSize) {
    return 65536 + 128 * inputSize;
}
