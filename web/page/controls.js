// The bar, the keys, touch and the chapters: what a viewer can do while the show stands or plays.
import { CHAPTERS, FRAMES_A_SECOND, chapterAt, timeText } from './chapters.js';
import { byId, make } from './dom.js';
import { fullScreenElement, hasFullScreen, leaveFullScreen, toggleFullScreen } from './fullScreen.js';

const BAR_STAYS = 2600; // milliseconds after the last movement
const LEAP = 5 * FRAMES_A_SECOND;

// Calls act with what the viewer asks for; nothing here knows the show.
//   act: { begin(), toggle(), seek(frame), end() }
export function makeControls(music, act, say) {
  const stage = byId('player');
  const line = byId('time-line');
  const lastFrame = Number(line.max);
  let frame = 0;
  let hide = 0;

  // ------------------------------------------------------------------ bar

  const isPlaying = () => stage.dataset.state === 'playing';
  let touched = false; // not by a mouse, which hovers and is seen coming
  const showBar = () => {
    stage.dataset.bar = 'shown';
    clearTimeout(hide);
    hide = setTimeout(() => {
      const hovered = !touched && byId('bar').matches(':hover');
      const used = hovered || byId('bar').contains(document.querySelector(':focus-visible'));
      if (isPlaying() && !used) stage.dataset.bar = 'hidden';
      else if (isPlaying()) showBar();
    }, BAR_STAYS);
  };
  const showUntouched = () => { if (!touched) showBar(); };
  for (const sign of ['pointermove', 'pointerdown'])
    stage.addEventListener(sign, (event) => {
      touched = event.pointerType === 'touch';
      showUntouched();
    });
  document.addEventListener('keydown', () => { touched = false; }, { capture: true });
  stage.addEventListener('focusin', showUntouched);
  for (const sign of ['keydown', 'input']) stage.addEventListener(sign, showBar);

  // The first touch brings the bar, the next one is for the show. It comes when the touch is over,
  // so that none of its buttons comes under the finger.
  const onPicture = (event) => event.target === byId('stage') || event.target === byId('poster');
  stage.addEventListener('click', (event) => {
    const bringsBar = touched && stage.dataset.bar === 'hidden';
    showBar();
    if (!onPicture(event) || bringsBar) return;
    if (stage.dataset.state === 'closed') act.begin();
    else act.toggle();
  });
  stage.addEventListener('dblclick', (event) => { if (onPicture(event)) toggleFull(); });

  // ------------------------------------------------------- sound and screen

  const showMute = () => {
    const silent = music.element.muted;
    byId('mute').setAttribute('aria-pressed', String(silent));
  };
  const toggleMute = () => {
    music.mute(!music.element.muted);
    showMute();
  };
  music.element.addEventListener('volumechange', showMute);
  const setLoudness = () => {
    byId('volume').style.setProperty('--done', `${byId('volume').value * 100}%`);
    music.setLoudness(Number(byId('volume').value));
  };
  byId('volume').addEventListener('input', setLoudness);

  const toggleFull = async () => {
    await toggleFullScreen(stage, say);
    if (fullScreenElement()) screen.orientation?.lock?.('landscape').catch(() => {}); // telephones
  };
  byId('full').hidden = !hasFullScreen();

  const copyLink = async () => {
    const link = new URL(location.href);
    link.search = `?frame=${frame}`;
    link.hash = '';
    try {
      await navigator.clipboard.writeText(link.href);
      say(`Link to ${timeText(frame)} copied.`);
    } catch { // no leave to copy
      if (window.top !== window) {
        say(`This moment: ${link.href}`, 15000);
        return;
      }
      history.replaceState(null, '', link);
      say('The link to this moment stands in the address line now.');
    }
  };

  // ------------------------------------------------------------- time line

  line.addEventListener('input', () => act.seek(Number(line.value)));
  byId('begin').addEventListener('click', act.begin);
  byId('play').addEventListener('click', act.toggle);
  byId('mute').addEventListener('click', toggleMute);
  byId('link').addEventListener('click', copyLink);
  byId('full').addEventListener('click', toggleFull);

  const chapterButtons = CHAPTERS.map((chapter) => {
    if (chapter.frame > 0) {
      const mark = make('i');
      mark.style.left = `${(100 * chapter.frame) / lastFrame}%`;
      byId('marks').append(mark);
    }
    const time = make('small', {}, timeText(chapter.frame));
    const button = make('button', { type: 'button', className: 'pill' }, chapter.name, time);
    button.addEventListener('click', () => act.seek(chapter.frame));
    byId('chapters').append(make('li', {}, button));
    return button;
  });

  // ------------------------------------------------------------------- keys

  const KEYS = {
    ' ': act.toggle,
    ArrowLeft: () => act.seek(frame - LEAP),
    ArrowRight: () => act.seek(frame + LEAP),
    Home: () => act.seek(0),
    f: toggleFull,
    m: toggleMute,
    q: act.end,
    Escape: act.end, // a browser leaves full screen by itself first
  };
  // Who reads the words far below moves through the page by keys.
  const isSeen = () => stage.getBoundingClientRect().bottom > innerHeight / 4;
  document.addEventListener('keydown', (event) => {
    if (event.ctrlKey || event.metaKey || event.altKey || !isSeen()) return;
    const on = event.target;
    const ownKeys = on.matches?.('button, a, summary') ? [' '] : on === byId('volume') ? ['ArrowLeft', 'ArrowRight', 'Home'] : [];
    const key = event.key.length === 1 ? event.key.toLowerCase() : event.key;
    if (!(key in KEYS) || ownKeys.includes(key)) return;
    if (key === 'Home' && scrollY > 0 && !fullScreenElement()) return; // to the start of the page first
    if (event.repeat && !key.startsWith('Arrow')) return;
    event.preventDefault();
    KEYS[key]();
    showBar();
  });

  setLoudness();
  showMute();
  return {
    leaveFull() { if (fullScreenElement()) leaveFullScreen(); },
    showFrame(at) {
      frame = at;
      const chapter = chapterAt(at);
      const time = timeText(at);
      line.value = at;
      line.parentElement.style.setProperty('--done', `${(100 * at) / lastFrame}%`);
      if (byId('time').dataset.shown === time + chapter.name) return; // once a second is enough
      byId('time').dataset.shown = time + chapter.name;
      byId('time').textContent = `${time} / ${timeText(lastFrame)}`;
      byId('chapter').textContent = chapter.name;
      line.setAttribute('aria-valuetext', `${time}, ${chapter.name}`);
      chapterButtons.forEach((button, k) => button.setAttribute('aria-current', String(CHAPTERS[k] === chapter)));
    },
    showState(state) {
      const held = stage.contains(document.activeElement);
      stage.dataset.state = state;
      // The button that was pressed goes; the next key goes on from here.
      if (held && state === 'closed') byId('begin').focus({ preventScroll: true });
      else if (held && document.activeElement === byId('begin')) byId('stage').focus({ preventScroll: true });
      byId('play').setAttribute('aria-label', state === 'playing' ? 'Pause' : 'Play');
      showBar();
    },
  };
}
