// Plays the show in step with its clock. Knows the program and the music, not the page.
//
//   const player = makePlayer(engine, music, { onFrame, onState, onWait, onTrouble });
//   player.play(); player.pause(); player.seek(5000);
//
// onFrame(frame) at every one that was drawn; onState(state): 'paused', 'playing', 'over';
// onWait(isWaiting) when the music's bytes are late, and when they are there; onTrouble(trouble).
import { FRAMES_A_SECOND } from './chapters.js';
import { makeClock } from './clock.js';

const OVER = 2; // of canvasPlay
const LATE = 1; // second that the music may be late before the viewer is told

export function makePlayer(engine, music, { onFrame, onState, onWait, onTrouble }) {
  const clock = makeClock();
  const lastFrame = engine.canvasLastFrame();
  let state = 'paused';
  let lost = false;
  let request = 0;
  let waitsSince = null; // null: it does not wait, or nobody would notice yet
  let saysSo = false;

  const now = () => performance.now() / 1000;
  const frame = () => Math.max(engine.canvasFrame(), 0);
  const enter = (next) => {
    if (state === next) return;
    state = next;
    onState(state);
  };
  const guarded = (act) => (...values) => {
    try {
      act(...values);
    } catch (trouble) {
      stop();
      onTrouble(trouble);
    }
  };

  const tellWaiting = (waits) => {
    waitsSince = waits ? waitsSince ?? now() : null;
    const late = waits && now() - waitsSince > LATE;
    if (late !== saysSo) onWait((saysSo = late));
  };
  const run = guarded(() => {
    if (state !== 'playing') return;
    request = requestAnimationFrame(run);
    const heard = music.status();
    const seconds = clock.read(now(), heard);
    if (heard.state === 'joins' || clock.isLost(heard)) music.play(seconds);
    tellWaiting(heard.state === 'waits');
    if (lost) return;
    if (engine.canvasPlay(seconds) === OVER) end();
    else onFrame(frame());
  });
  const start = () => {
    const seconds = frame() / FRAMES_A_SECOND;
    clock.start(seconds, now());
    music.play(seconds);
    cancelAnimationFrame(request);
    request = requestAnimationFrame(run);
  };
  const stop = () => {
    cancelAnimationFrame(request);
    clock.stop();
    music.pause();
    tellWaiting(false);
    enter('paused');
  };
  const end = () => {
    stop();
    enter('over');
  };

  const seek = guarded((to) => {
    engine.canvasSeek(Math.min(Math.max(Math.round(to), 0), lastFrame));
    onFrame(frame());
    if (state === 'playing') start();
    else enter('paused');
  });

  return {
    get frame() { return frame(); },
    get lastFrame() { return lastFrame; },
    get state() { return state; },
    seek,
    play() {
      if (state === 'playing') return;
      if (frame() >= lastFrame) seek(0);
      enter('playing');
      start();
    },
    pause: stop,
    end,
    resize: guarded((width, height) => { if (!lost) engine.canvasResize(width, height); }),
    // The drawing context went, and came back.
    lose() { lost = true; },
    restore: guarded((width, height) => {
      lost = false;
      engine.canvasRestore();
      engine.canvasResize(width, height);
    }),
  };
}
