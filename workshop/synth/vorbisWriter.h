// Ogg Vorbis files, written while the sound is made.
#pragma once

#include "workshop/synth/voices.h"

#include <string>
#include <vector>

struct st_vorbisWriter; // the encoder and its file

// Starts a stereo stream. Stops the program when the file cannot be written.
st_vorbisWriter *openVorbis(const std::string &path);
void writeVorbis(st_vorbisWriter *writer, const std::vector<st_stereo> &samples);
// Writes what is left and frees the writer.
void closeVorbis(st_vorbisWriter *writer);
