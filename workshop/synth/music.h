// The music of the show.
#pragma once

#include <string>

// Plays the first seconds of the score and writes them to path as Ogg Vorbis. Stops the program
// on failure.
void writeMusic(const std::string &path, double seconds);
