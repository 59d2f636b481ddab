// The music of the page's audio element: what of it the show's clock can go by.
//
//   const music = makeMusic(element, () => {});
//   music.play(12.5); music.pause();
//   music.status(); // { state: 'sounds' | 'waits' | 'silent', time }
const STUCK = 1500; // milliseconds that music which claims to play may stand still

export function makeMusic(element, onSilence) {
  let failed = false; // no file, no format, no winding: the show goes on without
  let wanted = false;
  let unsaid = ''; // of a failure that nobody has missed the music for yet
  let moved = { time: 0, at: 0 }; // what the music showed when it last moved, and when
  let share = 1; // the show's
  let loudness = 1; // the viewer's

  const silence = (text) => {
    if (failed) return;
    failed = true;
    element.pause();
    if (wanted) onSilence(text);
    else unsaid = text;
  };
  const noMusic = () => silence('The music could not be played: the show goes on in silence.');
  element.lastElementChild.addEventListener('error', noMusic);
  element.addEventListener('error', noMusic);
  const lookForMusic = () => { if (element.networkState === HTMLMediaElement.NETWORK_NO_SOURCE) noMusic(); };
  lookForMusic(); // its errors may have come and gone

  // Winds to a place. Hosts that send files whole only may leave the music where it is.
  const wind = (seconds) => {
    if (Math.abs(element.currentTime - seconds) < 0.02) return;
    element.currentTime = seconds;
    element.addEventListener('seeked', () => {
      if (Math.abs(element.currentTime - seconds) > 2 && !element.ended)
        silence('The music cannot be wound here: the show goes on in silence.');
    }, { once: true });
  };

  const begin = () => element.play().catch((cause) => {
    if (cause.name !== 'NotAllowedError' || element.muted) return;
    element.muted = true; // browsers let it begin unheard
    element.dispatchEvent(new Event('volumechange'));
    onSilence('The browser keeps the music silent until you switch it on.');
    begin();
  });

  const setVolume = () => { element.volume = share * loudness; };

  return {
    element,
    // Called while a click is being heard: lets the element play later, without another one.
    unlock() {
      element.play().then(() => { if (!wanted) element.pause(); }, () => {});
    },
    play(seconds) {
      wanted = true;
      lookForMusic();
      if (unsaid) onSilence(unsaid);
      unsaid = '';
      if (failed) return;
      moved = { time: seconds, at: performance.now() };
      if (Number.isFinite(element.duration) && seconds >= element.duration) return;
      wind(seconds);
      begin();
    },
    pause() {
      wanted = false;
      element.pause();
    },
    status() {
      const time = element.currentTime;
      if (failed || !wanted || element.ended) return { state: 'silent', time };
      const flows = !element.paused && !element.seeking && element.readyState >= HTMLMediaElement.HAVE_FUTURE_DATA;
      const over = Number.isFinite(element.duration) && time >= element.duration - 0.05;
      if (over) return { state: 'silent', time };
      if (!flows || time !== moved.time) moved = { time, at: performance.now() };
      else if (performance.now() - moved.at > STUCK) noMusic(); // a machine without sound, for one
      return { state: flows ? 'sounds' : 'waits', time };
    },
    setShare(value) {
      share = value;
      setVolume();
    },
    setLoudness(value) {
      loudness = value;
      setVolume();
    },
    mute(on) {
      element.muted = on;
    },
  };
}
