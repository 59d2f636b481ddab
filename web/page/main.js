// The page: opening, show, trouble; and window.show, for who embeds it.
//
//   await show.ready;        // loaded, its first picture drawn; rejects when it cannot be
//   show.seek(5000); show.play(); show.pause();
//   show.frame; show.lastFrame;
import { makeControls } from './controls.js';
import { byId } from './dom.js';
import { loadShow } from './load.js';
import { makeMusic } from './music.js';
import { makeNote } from './note.js';
import { makePlayer } from './player.js';
import { fitCanvas, watchStage } from './stage.js';

const stage = byId('player');
const canvas = byId('stage');
const LAST_FRAME = Number(byId('time-line').max);

// The frame that the address asks for; null if none.
function askedFrame() {
  const text = new URLSearchParams(location.search).get('frame');
  return text !== null && /^\d+$/.test(text) ? Math.min(Number(text), LAST_FRAME) : null;
}

// ------------------------------------------------------------------ messages

const say = makeNote(byId('note'), 3500);

function showTrouble(trouble) {
  byId('trouble-text').textContent = trouble.message;
  byId('trouble-again').hidden = !trouble.again;
  byId('trouble').hidden = false;
  byId('progress').textContent = '\u00a0';
  byId('opening').hidden = true;
  if (trouble.cause) console.warn(trouble.message, trouble.cause);
}

const megabytes = (bytes) => (bytes / 1e6).toFixed(1);
function showBytes(done, whole) {
  byId('begin').style.setProperty('--loaded', (100 * done) / whole);
  byId('progress').textContent = done < whole
    ? `Loading: ${megabytes(done)} of ${megabytes(whole)} MB`
    : 'Setting up the island …';
}

// ---------------------------------------------------------------------- show

let player = null;
let wanted = askedFrame() === null ? 'nothing' : 'frame'; // until it is loaded: nothing, frame, playing

const WAITING = 'Waiting for the music …';
const music = makeMusic(byId('music'), {
  onSay: (text) => say(text, 6000),
  onStopped: () => player?.pause(),
  onStarted: () => play(),
});

function play() {
  if (player) player.play();
  else want('playing');
}
// Music may begin only while a click or a key is being heard; the show may still be on its way.
function begin() {
  if (!player) music.unlock();
  play();
}
function want(what) {
  wanted = what;
  stage.toggleAttribute('data-wanted', what === 'playing');
}
function pause() {
  if (player) player.pause();
  else want('frame');
}
function seek(frame) {
  if (!player || !Number.isFinite(frame)) return;
  player.seek(frame);
  if (stage.dataset.state === 'closed') controls.showState('paused');
}
function end() {
  controls.leaveFull();
  if (!player) return;
  player.end();
  player.seek(0);
  close();
}
// Back to the poster.
function close() {
  controls.showState('closed');
  byId('progress').textContent = '5 minutes, with music';
  window.scrollTo({ top: 0 });
}

const controls = makeControls(music, {
  begin,
  toggle() { if (player?.state === 'playing' || wanted === 'playing') pause(); else begin(); },
  seek,
  end,
}, say);

async function open() {
  byId('trouble').hidden = true;
  byId('opening').hidden = false;
  fitCanvas(canvas);
  const engine = await loadShow(canvas, { onBytes: showBytes, musicVolume: music.setShare });
  engine.canvasResize(canvas.width, canvas.height);
  const asked = askedFrame();
  engine.canvasSeek(asked ?? 0);
  player = makePlayer(engine, music, {
    onFrame: controls.showFrame,
    onState(state) {
      if (state === 'over') close();
      else controls.showState(state);
    },
    onWait(waits) {
      if (waits) say(WAITING, Infinity);
      else if (byId('note').textContent === WAITING) say('');
    },
    onTrouble: showTrouble,
  });
  watchStage(canvas, player, say);
  controls.showFrame(player.frame);
  stage.removeAttribute('data-wanted');
  byId('progress').textContent = '5 minutes, with music';
  if (asked !== null) controls.showState('paused');
  if (wanted === 'playing') player.play();
  wanted = 'nothing';
}

// ready is one promise, however often the viewer has to try.
let resolveReady;
let rejectReady;
const ready = new Promise((resolve, reject) => { resolveReady = resolve; rejectReady = reject; });
ready.catch(() => {}); // the page says it; who embeds may listen too
function tryToOpen() {
  open().then(resolveReady, (trouble) => {
    showTrouble(trouble);
    if (!trouble.again) rejectReady(trouble);
  });
}
byId('trouble-again').addEventListener('click', tryToOpen);

document.documentElement.dataset.runs = ''; // early.js need not speak
window.show = {
  ready,
  lastFrame: LAST_FRAME,
  get frame() { return player ? player.frame : -1; },
  play,
  pause,
  seek,
};
tryToOpen();
