// What a frame of the show costs a browser before it is rasterised: the program and its calls into
// WebGL, in the main view. tests/web/run has installed what this needs.
//   node bench/web/frames.mjs            once build/web/ stands
// Two rows: every call made, as the page does it; and WebGL's functions doing nothing, which leaves
// our own work.
import { mkdtempSync, rmSync } from 'node:fs';
import { tmpdir } from 'node:os';
import { join } from 'node:path';
import { launchChromium } from '../../tests/web/browser.mjs';
import { serve } from '../../web/server.mjs';

const FIRST = 5000; // the main view: wheel, sun, clouds and scroll text
const COUNT = 400;

// In the page: milliseconds of each frame, as the player calls for it.
async function measure(first, count) {
  const canvas = document.getElementById('stage');
  [canvas.width, canvas.height] = [1280, 720];
  const { loadShow } = await import('./load.js');
  const engine = await loadShow(canvas, { onBytes() {}, musicVolume() {} });
  engine.canvasResize(1280, 720);
  engine.canvasSeek(first);
  window.silence?.();
  const times = [];
  for (let k = 1; k <= count; k++) {
    const start = performance.now();
    engine.canvasPlay((first + k) / 60);
    times.push(performance.now() - start);
    if (k % 4 === 0) await new Promise((resolve) => requestAnimationFrame(resolve)); // the rasteriser keeps up
  }
  times.sort((a, b) => a - b);
  return { median: times[count >> 1], late: times[Math.floor(count * 0.99)] };
}

// In the page: WebGL's drawing and state do nothing. What answers a question stays.
function silenceWebGl() {
  const idle = /^(bind|blend|buffer|clear|cull|depth|disable|draw|enable|flush|uniform|useProgram|vertexAttrib|viewport)/;
  const calls = WebGL2RenderingContext.prototype;
  window.silence = () => {
    for (const [name, { value }] of Object.entries(Object.getOwnPropertyDescriptors(calls)))
      if (typeof value === 'function' && idle.test(name)) calls[name] = () => {};
  };
}

// The page without its own script: the bench plays instead.
const server = await serve('build/web', 0, (request, response, path) => {
  if (path !== 'main.js') return false;
  response.writeHead(200, { 'content-type': 'text/javascript' }).end();
  return true;
});
const profile = mkdtempSync(join(tmpdir(), 'page-bench-'));
const browser = await launchChromium(profile);
try {
  console.log('| frame in the main view, Chromium | median ms | 99 of 100 below ms |\n|---|--:|--:|');
  for (const [name, silent] of [['with the browser\'s WebGL', false], ['our own work alone', true]]) {
    const page = await browser.newPage();
    await page.goto(`http://127.0.0.1:${server.address().port}/`);
    if (silent) await page.evaluate(silenceWebGl);
    const { median, late } = await page.evaluate(measure, FIRST, COUNT);
    console.log(`| ${name} | ${median.toFixed(2)} | ${late.toFixed(2)} |`);
    await page.close();
  }
} finally {
  await browser.close();
  server.close();
  rmSync(profile, { recursive: true, force: true });
}
