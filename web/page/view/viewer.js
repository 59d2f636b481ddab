// The model that is shown: a canvas, and a worker that draws on it. Each model has its own, so that
// whatever one has taken comes back when the next one is shown.
//
//   const viewer = makeViewer(stage, { onProgress, onState, onTrouble, onLost });
//   const { report, findings, missing, state } = await viewer.open(model, source);
//   viewer.turn(10, 0); await viewer.key('n');
//
// A model that cannot be opened throws a Trouble and leaves the last one as it is; one that is
// opened while another is on its way takes its place, and the other one's promise never ends.
import { fetchProgram, noWorker } from './program.js';
import { pixelSize } from '../stage.js';
import { Trouble } from '../trouble.js';

function hasWebGl() {
  const context = new OffscreenCanvas(1, 1).getContext('webgl2');
  context?.getExtension('WEBGL_lose_context')?.loseContext(); // browsers count them
  return context !== null;
}
const CAN_DRAW = 'OffscreenCanvas' in globalThis && 'WebAssembly' in globalThis && 'DecompressionStream' in globalThis && hasWebGl();

// A canvas with its worker. call(name, values, transferred) gives a promise.
function makeDrawer(canvas, hear) {
  const worker = new Worker(new URL('worker.js', import.meta.url), { type: 'module' });
  const waiting = new Map();
  let count = 0;
  const failAll = (trouble) => {
    for (const { reject } of waiting.values()) reject(trouble);
    waiting.clear();
  };
  worker.onerror = (event) => {
    event.preventDefault();
    failAll(new Trouble(`The viewer could not go on${event.message ? ` (${event.message})` : ''}. Load the page again.`));
  };
  worker.onmessage = ({ data }) => {
    if (!('id' in data)) {
      hear(data);
      return;
    }
    const { resolve, reject } = waiting.get(data.id) ?? {};
    waiting.delete(data.id);
    if ('trouble' in data) reject?.(new Trouble(data.trouble, false, { cause: data.said }));
    else resolve?.(data.result);
  };
  return {
    canvas,
    call: (name, values, transferred = []) => new Promise((resolve, reject) => {
      waiting.set(++count, { resolve, reject });
      worker.postMessage({ id: count, call: name, values }, transferred);
    }),
    end() {
      worker.terminate();
      canvas.remove();
    },
  };
}

export function makeViewer(stage, { onProgress, onState, onTrouble, onLost }) {
  let shown = null;
  let coming = null;

  const newCanvas = () => {
    const canvas = document.createElement('canvas');
    canvas.tabIndex = 0;
    canvas.setAttribute('role', 'application');
    canvas.setAttribute('aria-label', 'The model. Arrow keys move it, with Shift they turn it; plus and minus zoom.');
    stage.prepend(canvas);
    return canvas;
  };
  async function open(model, source) {
    if (!CAN_DRAW) throw noWorker();
    coming?.end();
    const drawer = makeDrawer(newCanvas(), (event) => {
      if (event.progress && drawer === coming) onProgress(event.progress);
      if (event.state && drawer === shown) onState(event.state);
      if (event.lost && drawer === shown) onLost();
    });
    coming = drawer;
    drawer.canvas.classList.add('coming');
    try {
      const [width, height] = pixelSize(drawer.canvas);
      const canvas = drawer.canvas.transferControlToOffscreen();
      const opened = await drawer.call('open', [{ canvas, program: await fetchProgram('view.wasm.gz'), model, source, width, height }], [canvas]);
      const focused = document.activeElement === shown?.canvas;
      shown?.end();
      shown = drawer;
      drawer.canvas.classList.remove('coming');
      if (focused) drawer.canvas.focus();
      return opened;
    } catch (trouble) {
      drawer.end();
      throw trouble;
    } finally {
      if (coming === drawer) coming = null;
    }
  }

  // What moves tells nothing; what changes tells the state.
  const tell = (name) => (...values) => { shown?.call(name, values).catch(() => {}); };
  const ask = (name) => async (...values) => {
    if (!shown) return null;
    try {
      const state = await shown.call(name, values);
      onState(state);
      return state;
    } catch (trouble) {
      onTrouble(trouble);
      return null;
    }
  };
  new ResizeObserver(() => { if (shown) tell('resize')(...pixelSize(shown.canvas)); }).observe(stage);

  return {
    open,
    get canvas() { return shown?.canvas ?? null; },
    // Whatever is on its way is not wanted any more.
    stop() {
      coming?.end();
      coming = null;
    },
    turn: tell('turn'),
    move: tell('move'),
    zoom: tell('zoom'),
    key: (key) => ask('key')(key.charCodeAt(0)),
    select: ask('select'),
    toggle: ask('toggle'),
    recolor: ask('recolor'),
    picture: () => shown.call('picture', []),
  };
}
