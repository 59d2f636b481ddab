// The music of the page's audio element: what of it the show's clock can go by.
//
//   const music = makeMusic(element, { onSay(text) {}, onStopped() {}, onStarted() {} });
//   music.play(12.5); music.pause();
//   music.status(); // { state: 'sounds' | 'waits' | 'joins' | 'silent', time }
//
// onStopped and onStarted: by a telephone call, a key of the machine, whatever else may.
const STUCK = 1500; // milliseconds that music which claims to play may stand still
const PATIENCE = 10000; // milliseconds that the show waits for it
const FAR = 2; // seconds from where it was wound to
const UNPLAYED = 'The music could not be played: the show goes on in silence.';

export function makeMusic(element, { onSay, onStopped, onStarted }) {
  let refused = false; // by the element
  let failed = false; // no file, no format: the show goes on without
  let stuck = false; // until it is paused: it may have been the machine's sound
  let beyond = false; // asked for a time that it has not
  let whole = 'no'; // of a host that sends no parts of it: no, coming, joins, here
  let wanted = false;
  let unlocking = false;
  let moved = { time: 0, at: 0 }; // what the music showed when it last moved, and when
  let woundTo = 0;
  let waitsSince = 0; // 0: it does not
  let toldLate = false;
  let share = 1; // the show's
  let loudness = 1; // the viewer's

  const fail = (text) => {
    if (failed) return;
    failed = true;
    element.pause();
    onSay(text);
  };
  // By the element itself; some browsers take music only from hosts that send parts of it.
  const refuse = () => {
    refused = true;
    if (wanted && whole === 'no') fetchWhole();
  };
  element.lastElementChild.addEventListener('error', refuse);
  element.addEventListener('error', () => {
    if (element.src) fail(UNPLAYED);
    else refuse();
  });
  const sayItEnds = () => onSay('The file of the music ends here, before the show: it goes on in silence.');
  element.addEventListener('ended', () => { if (wanted) sayItEnds(); });
  element.addEventListener('pause', () => {
    if (wanted && element.paused && !element.ended && !failed && !stuck && !beyond && /no|here/.test(whole)) onStopped();
  });
  element.addEventListener('play', () => { if (!wanted && !unlocking && !element.paused) onStarted(); });

  // A host that sends files whole only leaves the music where it was, however it is wound.
  const fetchWhole = async () => {
    whole = 'coming';
    element.pause();
    const known = [...element.children].find((source) => element.canPlayType(source.type));
    onSay('The music joins in when it has come whole.');
    try {
      const response = await fetch(known.src);
      if (!response.ok) throw new Error(String(response.status));
      element.src = URL.createObjectURL(await response.blob());
      element.addEventListener('loadedmetadata', () => { whole = 'joins'; }, { once: true });
    } catch {
      fail(UNPLAYED);
    }
  };
  const canWind = (seconds) => {
    const { seekable, readyState } = element;
    if (readyState < HTMLMediaElement.HAVE_METADATA) return true; // for all that is known
    return Array.from(seekable, (_, k) => k).some((k) => seconds >= seekable.start(k) && seconds <= seekable.end(k));
  };
  const wind = (seconds) => {
    woundTo = seconds;
    if (Math.abs(element.currentTime - seconds) >= 0.02) element.currentTime = seconds;
  };
  element.addEventListener('seeked', () => {
    if (Math.abs(element.currentTime - woundTo) > FAR && !element.seeking && whole === 'no') fetchWhole();
  });

  const begin = () => element.play().catch((cause) => {
    if (cause.name !== 'NotAllowedError' || element.muted) return;
    element.muted = true; // browsers let it begin unheard
    element.dispatchEvent(new Event('volumechange'));
    onSay('The browser keeps the music silent until you switch it on.');
    begin();
  });

  const setVolume = () => { element.volume = share * loudness; };

  // How it is while it is wanted, its length not yet over.
  const flow = () => {
    const now = performance.now();
    const time = element.currentTime;
    if (!element.paused && !element.seeking && element.readyState >= HTMLMediaElement.HAVE_FUTURE_DATA) {
      waitsSince = 0;
      toldLate = false;
      if (time !== moved.time) moved = { time, at: now };
      stuck = now - moved.at > STUCK; // a machine without sound, for one
      if (!stuck) return 'sounds';
      element.pause();
      onSay('The music stands still: the show goes on in silence.');
      return 'silent';
    }
    moved = { time, at: now };
    if (waitsSince === 0) waitsSince = now;
    if (now - waitsSince <= PATIENCE) return 'waits';
    if (!toldLate) onSay('The music is late: the show goes on, and the music joins in when it can.');
    toldLate = true;
    return 'silent';
  };

  return {
    element,
    // Called while a click is being heard: lets the element play later, without another one.
    unlock() {
      unlocking = true;
      element.play().then(() => { if (!wanted) element.pause(); }, () => {}).finally(() => { unlocking = false; });
    },
    play(seconds) {
      wanted = true;
      // Its errors may have come and gone before anybody listened.
      if (whole === 'no' && element.networkState === HTMLMediaElement.NETWORK_NO_SOURCE) refused = true;
      if (refused && whole === 'no') {
        begin(); // while the click is being heard
        fetchWhole();
      }
      if (failed || stuck || whole === 'coming') return;
      if (whole === 'joins') {
        whole = 'here';
        onSay('');
      }
      moved = { time: seconds, at: performance.now() };
      beyond = seconds >= element.duration;
      if (beyond) {
        element.pause();
        sayItEnds();
        return;
      }
      if (whole === 'no' && Math.abs(element.currentTime - seconds) > FAR && !canWind(seconds)) {
        fetchWhole();
        return;
      }
      wind(seconds);
      begin();
    },
    pause() {
      wanted = false;
      stuck = false;
      waitsSince = 0;
      element.pause();
    },
    status() {
      const time = element.currentTime;
      const over = Number.isFinite(element.duration) && time >= element.duration - 0.05;
      if (failed || stuck || beyond || !wanted || element.ended || whole === 'coming') return { state: 'silent', time };
      if (whole === 'joins') return { state: 'joins', time };
      return { state: over ? 'silent' : flow(), time };
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
