// What is heard of the music, and moving about in it: for hosts that keep pictures in step with it.
// The show itself only starts and fades it.
//
//   listenToMusic();              // before FSOUND_Init: the music is silent until it is let go
//   playMusicFrom(stream, 0.0);   // now it is heard
//   if (musicHeard(&seconds)) ... // of the music, evenly growing
//
// One thread calls all of this; the mixer has its own. Nothing is owned.
#pragma once

struct FSOUND_STREAM;

// From now on what the mixer plays is counted.
void listenToMusic();

// Goes on with the music from there, once the mixer gets to it. False, and silence, when there is
// no such place or no stream; also for music of a kind in which nobody can go anywhere, but for the
// place where it was held, and its beginning.
bool playMusicFrom(FSOUND_STREAM *stream, double seconds);

// From now on music that lasts shorter than that many seconds ends with a fade. Returns how long it
// lasts, or 0, with no fade, for music that is long enough, that does not say, and for none.
double fadeShortMusic(FSOUND_STREAM *stream, double seconds);

// Holds the music; nothing sounds.
void holdMusic();

// Whether the music is silenced, which does not hold it.
void muteMusic(bool muted);

// How much of the music has been heard: what the mixer has played, but for what still waits before
// the loudspeaker. False, with seconds untouched, when the music is held or no device takes any.
bool musicHeard(double *seconds);
