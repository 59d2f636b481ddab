// The clock of the show: the music as it is heard, the browser's own clock where there is none.
// Pure reckoning; times are seconds.
//
//   const clock = makeClock();
//   clock.start(seconds, now);
//   ... clock.read(now, { state: 'sounds', time: audio.currentTime }) ...
//   clock.stop();
//
// A browser tells the music's time in steps that are coarser than a frame, so the clock runs by
// itself and is led by the music: slowly where they differ little, at once where they differ much.
const FAR = 0.12; // seconds between the two that are set right at once
const LEAD = 0.05; // of a small difference, at each reading
const LOST = 3; // seconds between the two beyond which the music leads nobody

export function makeClock() {
  let shown = 0; // at the time `since`
  let since = null; // null while it stands

  return {
    // Whether music at that time is to be wound to where the show is.
    isLost: (music) => music.state === 'sounds' && Math.abs(music.time - shown) >= LOST,
    start(seconds, now) {
      shown = seconds;
      since = now;
    },
    stop() {
      since = null;
    },
    // music.state: 'sounds' at music.time, 'waits' for its bytes; any other leads nobody.
    read(now, music) {
      if (since === null) return shown;
      if (music.state !== 'waits') shown += now - since;
      since = now;
      if (music.state === 'sounds') {
        const ahead = music.time - shown;
        if (Math.abs(ahead) < LOST) shown += Math.abs(ahead) > FAR ? ahead : ahead * LEAD;
      }
      return shown;
    },
  };
}
