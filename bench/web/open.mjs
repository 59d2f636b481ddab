// How long a browser takes to open a large model in view.html, and for how long the page stands
// still meanwhile. tests/web/run has installed what this needs.
//   node bench/web/open.mjs [SIDE]       once build/web/ stands; SIDE x SIDE polygons, 1000
import { mkdtempSync, rmSync, writeFileSync } from 'node:fs';
import { tmpdir } from 'node:os';
import { join } from 'node:path';
import { startBench, withPage } from '../../tests/web/browser.mjs';
import { lwo2, sheet } from '../../tests/web/models.mjs';

const side = Number(process.argv[2] ?? 1000);
const folder = mkdtempSync(join(tmpdir(), 'open-bench-'));
const model = join(folder, 'sheet.lwo');
writeFileSync(model, lwo2([{ name: 'sheet', surface: 0, ...sheet(side) }], [{ name: 'sheet', color: [1, 1, 1] }]));

// In the page: notes how long each turn of its loop takes from the choice on.
function watch() {
  document.getElementById('files').addEventListener('change', () => {
    const times = [performance.now()];
    const steps = [];
    const look = () => {
      times.push(performance.now());
      const step = document.getElementById('busy-step').textContent;
      if (steps.at(-1)?.step !== step) steps.push({ step, at: times.at(-1) });
      if (document.body.dataset.state !== 'open') setTimeout(look, 1);
      else window.watched = {
        whole: times.at(-1) - times[0],
        gap: Math.max(...times.slice(1).map((time, k) => time - times[k])),
        steps: steps.map(({ step: name, at }, k) => [name, (steps[k + 1]?.at ?? times.at(-1)) - at]),
      };
    };
    look();
  });
}

const bench = await startBench('build/web');
try {
  await withPage(bench, { query: 'view.html', width: 1280, height: 800 }, async (page) => {
    await page.evaluate(watch);
    await (await page.$('#files')).uploadFile(model);
    const handle = await page.waitForFunction(() => window.watched, { timeout: 300_000 });
    const { whole, gap, steps } = await handle.jsonValue();
    for (const [step, time] of steps) console.log(`${time.toFixed(0).padStart(7)} ms  ${step}`);
    console.log(`${whole.toFixed(0).padStart(7)} ms  ${side * side} polygons; the page stood still for ${gap.toFixed(0)} ms at most`);
  });
} finally {
  await bench.stop();
  rmSync(folder, { recursive: true });
}
