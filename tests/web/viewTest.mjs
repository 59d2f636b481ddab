// The page to look into models, as a visitor's browser shows it, against lwoview and lwoinfo.
// tests/web/run runs this in Chromium and in Firefox.
import assert from 'node:assert/strict';
import { execFileSync, spawnSync } from 'node:child_process';
import { copyFileSync, mkdtempSync, readFileSync, readdirSync, rmSync, statSync, writeFileSync } from 'node:fs';
import { createRequire } from 'node:module';
import { tmpdir } from 'node:os';
import { join, resolve } from 'node:path';
import { after, before, test } from 'node:test';
import { unzipSync } from '../../web/node_modules/fflate/esm/index.mjs';
import { FIREFOX, missing, startBench, until, withPage } from './browser.mjs';
import { box, lwo2, sheet } from './models.mjs';
import { differenceFrom, withoutAntialiasing } from './pictures.mjs';

const WEB = process.env.WEB_FOLDER;
const LWOINFO = resolve('build/lwoinfo');
const LWOVIEW = resolve('build/lwoview');
const LWOCONVERT = resolve('build/lwoconvert');
const LWO = process.env.LWO_FOLDER; // the show's models
const AXE = readFileSync(createRequire(import.meta.url).resolve('axe-core/axe.min.js'), 'utf8');

let bench;
let files; // a folder of models
const at = (...names) => names.map((name) => join(files, name));
before(async () => {
  bench = await startBench(WEB);
  files = mkdtempSync(join(tmpdir(), 'view-test-'));
  for (const name of ['tree3d.lwo', 'bark.tga', 'leaves.tga', 'sol.lwo', 'sunface.tga']) copyFileSync(join(LWO, name), join(files, name));
  const rooms = [
    { name: 'ground', surface: 0, ...box([-2, -0.2, -2], [2, 0, 2]) },
    { name: 'house', surface: 1, ...box([-1, 0, -1], [1, 1.5, 1]) },
  ];
  writeFileSync(join(files, 'rooms.lwo'), lwo2(rooms, [{ name: 'grass', color: [0.3, 0.7, 0.2] }, { name: 'wall', color: [0.9, 0.6, 0.3] }]));
  writeFileSync(join(files, 'levels.lwo'), lwo2([{ name: 'fine', surface: 0, ...sheet(12) }], [{ name: 'cloth', color: [0.2, 0.5, 0.9] }]));
  writeFileSync(join(files, 'levels.lwo1'), lwo2([{ name: 'coarse', surface: 0, ...sheet(3) }], [{ name: 'cloth', color: [0.9, 0.5, 0.2] }]));
  writeFileSync(join(files, 'cut.lwo'), readFileSync(join(files, 'sol.lwo')).subarray(0, 3000));
  writeFileSync(join(files, 'words.lwo'), 'this is no model at all');
});
after(async () => {
  await bench.stop();
  rmSync(files, { recursive: true });
});

// A worker under the policy that a host may send, with something of ours in it.
const POLICY = /Content-Security-Policy" content="([^"]*)"/.exec(readFileSync(join(WEB, 'view.html'), 'utf8'))[1];
const worker = (prefix, script = 'view/worker.js') => (request, response, path) => {
  if (path !== script) return false;
  response.writeHead(200, { 'content-type': 'text/javascript', 'content-security-policy': POLICY })
    .end(`${readFileSync(join(WEB, script), 'utf8')}\n;(${prefix})();`);
  return true;
};
const first = (...answers) => (...request) => answers.some((answer) => answer(...request));
const file = (request, response, path) => {
  if (!/^file-/.test(path)) return false;
  response.writeHead(200, { 'content-type': 'image/png' }).end(readFileSync(join(files, path)));
  return true;
};

const withView = (options, act) => withPage(bench, { before: keepSaved, ...options, query: `view.html${options.query ?? ''}` }, act);
const isOpen = (page, name) => until(page, (wanted) => document.getElementById('name').textContent === wanted &&
  document.getElementById('busy').hidden && document.body.dataset.state === 'open', name);
async function choose(page, input, ...paths) {
  const element = await page.$(input);
  await element.uploadFile(...paths);
  if (FIREFOX) return;
  await element.evaluate(() => {}); // has heard of it
}
async function open(page, ...names) {
  await page.evaluate(() => { document.getElementById('name').textContent = ''; });
  await choose(page, '#files', ...at(...names));
  await isOpen(page, names[0]);
}
const textOf = (page, selector) => page.$eval(selector, (element) => element.innerText.trim());
const trouble = async (page) => {
  await until(page, () => !document.getElementById('trouble').hidden);
  return textOf(page, '#trouble-text');
};
const click = (page, selector) => page.$eval(selector, (element) => element.click());

// What the page saves, and under which name; its own pictures among it, drawn once all that was
// asked before has been done.
function keepSaved() {
  window.saved = new Promise((resolve) => { window.keep = resolve; });
  URL.createObjectURL = (blob) => {
    window.blob = blob;
    return 'blob:kept';
  };
  HTMLAnchorElement.prototype.click = function () {
    window.keep({ name: this.download, blob: window.blob });
    window.saved = new Promise((resolve) => { window.keep = resolve; });
  };
}
async function saved(page, button) {
  await page.evaluate(() => { window.coming = window.saved; });
  await click(page, button);
  const text = await page.evaluate(async () => {
    const { name, blob } = await window.coming;
    window.picture = await createImageBitmap(blob).catch(() => null);
    const bytes = new Uint8Array(await blob.arrayBuffer());
    let string = '';
    for (let k = 0; k < bytes.length; k += 8192) string += String.fromCharCode(...bytes.subarray(k, k + 8192));
    return [name, btoa(string)];
  });
  return { name: text[0], bytes: Buffer.from(text[1], 'base64') };
}
const picture = async (page) => (await saved(page, '#save-picture')).bytes.toString('base64');

// ------------------------------------------------------------------- pictures

let stills = 0;
async function assertLikeStill(page, model, keys) {
  const size = await page.$eval('#look canvas', (canvas) => `${canvas.clientWidth}x${canvas.clientHeight}`);
  const name = `file-${stills++}.png`;
  execFileSync(LWOVIEW, [join(files, model), '--still', join(files, name), '--size', size, '--samples', '0', '--keys', keys]);
  await saved(page, '#save-picture');
  const { mean, far } = await page.evaluate(differenceFrom, name, 'picture');
  assert.ok(mean <= 0.7 && far <= 0.004, `${model} after ${JSON.stringify(keys)}: mean ${mean}, far ${far}`);
}

const press = (page, key) => click(page, `[data-key="${key === '\t' ? '\\9 ' : key}"]`);

// Keys by model: each sequence is pressed from the start.
const PRESSED = {
  'tree3d.lwo': ['', 'l', 'n', 'i', 'f', 'fs', 'm', 't', ']\th', '+++', '--', '\tt', '\t\th', ']\tr', '\trr', '\tbu', 'rl'],
  'rooms.lwo': ['', 'c', ']h', ']]h', '[b', ']r', 'b', 'mf', '\tra', 'nmi'],
  'levels.lwo': ['', 'd', 'ddd', 'dddD', 'dddr'],
};
const WITH = { 'tree3d.lwo': ['bark.tga', 'leaves.tga'], 'levels.lwo': ['levels.lwo1'] };

test('draws what lwoview draws, whatever is pressed', () =>
  withView({ alter: first(worker(withoutAntialiasing), file) }, async (page) => {
    for (const [model, sequences] of Object.entries(PRESSED)) {
      await open(page, model, ...(WITH[model] ?? []));
      for (const keys of sequences) {
        for (const key of keys) await press(page, key);
        await assertLikeStill(page, model, keys);
        await press(page, '0');
      }
    }
  }));

test('is turned, moved and zoomed by mouse and keys, and draws only then', () =>
  withView({ alter: worker(function count() {
    const drawn = new BroadcastChannel('drawn');
    const real = WebGL2RenderingContext.prototype.clear;
    WebGL2RenderingContext.prototype.clear = function (...values) {
      drawn.postMessage(1);
      return real.apply(this, values);
    };
  }) }, async (page) => {
    await open(page, 'rooms.lwo');
    await page.evaluate(() => {
      window.draws = 0;
      window.drawn = new BroadcastChannel('drawn');
      window.drawn.onmessage = () => window.draws++;
    });
    const { x, y, width, height } = await (await page.$('#look canvas')).boundingBox();
    const middle = [x + width / 2, y + height / 2];
    const drag = (button) => async () => {
      await page.mouse.move(...middle);
      await page.mouse.down({ button });
      await page.mouse.move(middle[0] + 60, middle[1] + 40, { steps: 3 });
      await page.mouse.up({ button });
    };
    const key = (...keys) => async () => {
      await page.focus('#look canvas');
      for (const down of keys.slice(0, -1)) await page.keyboard.down(down);
      await page.keyboard.press(keys.at(-1));
      for (const down of keys.slice(0, -1)) await page.keyboard.up(down);
    };
    const seen = new Set([await picture(page)]);
    for (const act of [drag('left'), drag('right'), drag('middle'), () => page.mouse.wheel({ deltaY: -200 }),
      key('ArrowLeft'), key('Shift', 'ArrowUp'), key('n'), key('-')]) {
      const before = await page.evaluate(() => window.draws);
      await act();
      await until(page, (than) => window.draws > than, before);
      seen.add(await picture(page));
    }
    assert.equal(seen.size, 9, 'each changes the picture');
    const before = await page.evaluate(() => window.draws);
    await new Promise((resolve) => setTimeout(resolve, 500));
    assert.equal(await page.evaluate(() => window.draws), before);
    const COLORS = 100;
    await page.$eval('.parts input', (swatch, count) => {
      for (let k = 0; k < count; k++) {
        swatch.value = `#${(k * 1000).toString(16).padStart(6, '0')}`;
        swatch.dispatchEvent(new Event('input'));
      }
    }, COLORS);
    await picture(page);
    assert.ok(await page.evaluate(() => window.draws) < before + COLORS / 2, 'once a frame');
    await key('Home')();
    assert.ok(seen.has(await picture(page)), 'as at the start');
  }));

test('is turned by one finger, moved and zoomed by two', () =>
  withView({}, async (page) => {
    await open(page, 'rooms.lwo');
    const changed = async (finger, ...to) => {
      const before = await picture(page);
      await finger.move(...to);
      for (let k = 0; k < 100; k++) if ((await picture(page)) !== before) return true;
      return false;
    };
    const one = await page.touchscreen.touchStart(300, 300);
    assert.ok(await changed(one, 360, 320));
    const two = await page.touchscreen.touchStart(200, 300);
    assert.ok(await changed(two, 120, 280));
    await one.end();
    await two.end();
  }));

// ---------------------------------------------------------------------- files

test('opens what is dropped, the first model of several, another one by its name, and keeps what came later', () =>
  withView({}, async (page) => {
    const bytes = (name) => readFileSync(join(files, name)).toString('base64');
    await page.evaluate((dropped) => {
      const transfer = new DataTransfer();
      for (const [name, text] of dropped)
        transfer.items.add(new File([Uint8Array.from(atob(text), (c) => c.charCodeAt(0))], name));
      for (const kind of ['dragenter', 'dragover', 'drop'])
        document.body.dispatchEvent(new DragEvent(kind, { dataTransfer: transfer, bubbles: true, cancelable: true }));
    }, ['sol.lwo', 'rooms.lwo'].map((name) => [name, bytes(name)]));
    await isOpen(page, 'rooms.lwo');
    const asks = () => page.$eval('#missing', (missing) => !missing.hidden);
    const select = async (name) => {
      await page.select('#other', name);
      await isOpen(page, name);
    };
    await select('sol.lwo');
    assert.equal(await asks(), true);
    await choose(page, '#files', join(files, 'sunface.tga'));
    await until(page, () => document.getElementById('missing').hidden);
    await select('rooms.lwo');
    await select('sol.lwo');
    assert.equal(await asks(), false);
    const stopped = await page.evaluate(() => {
      const list = document.getElementById('other');
      list.value = 'rooms.lwo';
      list.dispatchEvent(new Event('change'));
      document.getElementById('busy-stop').click();
      return { listed: list.value, isBusy: !document.getElementById('busy').hidden };
    });
    assert.deepEqual(stopped, { listed: 'sol.lwo', isBusy: false });
    assert.equal(await textOf(page, '#name'), 'sol.lwo');
    await select('rooms.lwo');
  }));

test('says what lwoinfo says', () =>
  withView({}, async (page) => {
    await open(page, 'tree3d.lwo', 'bark.tga', 'leaves.tga');
    const said = execFileSync(LWOINFO, [join(files, 'tree3d.lwo')], { encoding: 'utf8' });
    assert.ok(said.startsWith(`${join(files, 'tree3d.lwo')}: ${await textOf(page, '#headline')}\n`));
    await click(page, '#tab-contents');
    const rows = await page.$$eval('#pane-contents tr', (list) => list.map((row) => [...row.cells].map((cell) => cell.textContent)));
    const lines = said.split('\n').filter((line) => line.startsWith('  ')).map((line) => line.trim().replace(/\s+/g, ' '));
    assert.deepEqual(rows.map((cells) => cells.join(' ').trim().replace(/\s+/g, ' ')), lines);
  }));

test('asks for missing textures by name and takes them under any', () =>
  withView({ alter: first(worker(withoutAntialiasing), file) }, async (page) => {
    await open(page, 'tree3d.lwo', 'leaves.tga');
    assert.match(await textOf(page, '#missing'), /bark\.tga/);
    await click(page, '#tab-check');
    const folder = mkdtempSync(join(files, 'bare-'));
    for (const name of ['tree3d.lwo', 'leaves.tga']) copyFileSync(join(files, name), join(folder, name));
    const said = spawnSync(LWOINFO, ['--check', '--json', 'tree3d.lwo'], { cwd: folder, encoding: 'utf8' });
    const [wanted] = JSON.parse(said.stdout).models[0].findings;
    const finding = (await textOf(page, '#pane-check .finding')).toLowerCase();
    for (const part of ['what', 'consequence', 'remedy']) assert.ok(finding.includes(wanted[part].toLowerCase()), `${part} in: ${finding}`);
    copyFileSync(join(files, 'bark.tga'), join(files, 'SCAN0001.TGA'));
    await click(page, '#missing-list button');
    await choose(page, '#texture', join(files, 'SCAN0001.TGA'));
    await until(page, () => document.getElementById('missing').hidden && document.getElementById('busy').hidden);
    await assertLikeStill(page, 'tree3d.lwo', '');
  }));

test('says of a damaged file what lwoinfo says, and goes on', () =>
  withView({}, async (page) => {
    await open(page, 'sol.lwo', 'sunface.tga');
    const before = await picture(page);
    for (const name of ['cut.lwo', 'words.lwo']) {
      await choose(page, '#files', join(files, name));
      const said = spawnSync(LWOINFO, [name], { cwd: files, encoding: 'utf8' }).stderr.trim();
      assert.equal(await trouble(page), said);
      await click(page, '#trouble-close');
      assert.equal(await picture(page), before);
    }
    await choose(page, '#files', join(files, 'sunface.tga')); // no model: a texture for the one that is shown
    await until(page, () => document.getElementById('busy').hidden);
    await open(page, 'rooms.lwo');
  }));

test('says so when a part of the page is missing', () =>
  withView({ errors: /./, alter: missing(/tabs\.js$/) }, async (page) => assert.match(await trouble(page), /could not start/)));

test('opens a model again whose graphics went away', () =>
  withView({ alter: worker(function canLose() {
    const real = OffscreenCanvas.prototype.getContext;
    OffscreenCanvas.prototype.getContext = function (...values) {
      const context = real.apply(this, values);
      new BroadcastChannel('lose').onmessage = () => context.getExtension('WEBGL_lose_context').loseContext();
      return context;
    };
  }) }, async (page) => {
    await open(page, 'rooms.lwo');
    const before = await picture(page);
    await page.evaluate(() => { new BroadcastChannel('lose').postMessage(1); });
    await until(page, () => /opened again/.test(document.getElementById('note').textContent));
    assert.equal(await picture(page), before);
  }));

test('opens a model of the same site with its textures, and none of another', async () => {
  await withView({ query: '?model=view/models/tree3d.lwo', alter: first(worker(withoutAntialiasing), file) }, async (page) => {
    await isOpen(page, 'tree3d.lwo');
    await assertLikeStill(page, 'tree3d.lwo', '');
  });
  await withView({ query: '?model=https://example.org/a.lwo' }, async (page) => {
    assert.match(await trouble(page), /another site/);
  });
  await withView({ query: '?model=nothing/here.lwo', errors: /here\.lwo/ }, async (page) => {
    assert.match(await trouble(page), /no model at .*nothing\/here\.lwo/);
  });
});

test('goes on while a large model is read, and says how far it is', () =>
  withView({}, async (page) => {
    writeFileSync(join(files, 'large.lwo'), lwo2([{ name: 'cloth', surface: 0, ...sheet(500) }], [{ name: 'cloth', color: [1, 1, 1] }]));
    await page.evaluate(() => {
      window.steps = [];
      window.gap = 0;
      new MutationObserver(() => window.steps.push(document.getElementById('busy-step').textContent))
        .observe(document.getElementById('busy-step'), { childList: true });
      document.getElementById('files').addEventListener('change', () => {
        const began = performance.now();
        let last = began;
        const tick = () => {
          const now = performance.now();
          window.gap = Math.max(window.gap, now - last);
          last = now;
          window.whole = now - began;
          if (!document.getElementById('busy').hidden) setTimeout(tick, 5);
        };
        setTimeout(tick, 5);
      });
    });
    await open(page, 'large.lwo');
    const { steps, gap, whole } = await page.evaluate(() => ({ steps: window.steps, gap: window.gap, whole: window.whole }));
    for (const step of [/Reading/, /Checking/, /Building/, /Drawing/]) assert.ok(steps.some((said) => step.test(said)), `${step} of ${steps}`);
    assert.ok(gap < whole / 2, `the page stood still for ${gap} of ${whole} milliseconds`);
    assert.match(await textOf(page, '#headline'), /250000 polygons/);
  }));

// Memory of a process and its children, in MB, pages that several share counted once.
function memoryOf(root) {
  const children = new Map();
  for (const id of readdirSync('/proc').filter((name) => /^\d+$/.test(name))) {
    try {
      const stat = readFileSync(`/proc/${id}/stat`, 'utf8');
      const parent = stat.slice(stat.lastIndexOf(')') + 2).split(' ')[1];
      children.set(parent, [...(children.get(parent) ?? []), id]);
    } catch { /* it has ended */ }
  }
  const sum = (id) => {
    let own = 0;
    try {
      own = Number(/^Pss:\s+(\d+)/m.exec(readFileSync(`/proc/${id}/smaps_rollup`, 'utf8'))[1]) / 1024;
    } catch { /* it has ended */ }
    return (children.get(id) ?? []).reduce((all, child) => all + sum(child), own);
  };
  return sum(String(root));
}

test('shows the last of two that were opened at once, though the first is converted', () =>
  withView({}, async (page) => {
    execFileSync(LWOCONVERT, ['--quiet', join(files, 'tree3d.lwo'), join(files, 'first.glb')]);
    await choose(page, '#files', join(files, 'first.glb'));
    await open(page, 'sol.lwo', 'sunface.tga');
    await new Promise((wait) => setTimeout(wait, 1500));
    assert.equal(await textOf(page, '#name'), 'sol.lwo');
  }));

test('reads of a folder what a model is made of, and saves nothing while it is converted', () =>
  withView({ alter: worker(function count() {
    const read = new BroadcastChannel('read');
    const real = FileReaderSync.prototype.readAsArrayBuffer;
    FileReaderSync.prototype.readAsArrayBuffer = function (blob) {
      read.postMessage(blob.size);
      return real.call(this, blob);
    };
  }, 'view/convertWorker.js') }, async (page) => {
    await open(page, 'sol.lwo', 'sunface.tga');
    writeFileSync(join(files, 'one.obj'), 'mtllib one.mtl\nv 0 0 0\nv 1 0 0\nv 1 1 0\nf 1 2 3\n');
    writeFileSync(join(files, 'one.mtl'), 'newmtl one\n');
    writeFileSync(join(files, 'holiday.png'), Buffer.alloc(10_000_000));
    await page.evaluate(() => {
      window.read = 0;
      window.counter = new BroadcastChannel('read');
      window.counter.onmessage = ({ data }) => { window.read += data; };
      new MutationObserver((changes, observer) => {
        observer.disconnect();
        document.getElementById('save-gltf').click();
      }).observe(document.getElementById('busy'), { attributeFilter: ['hidden'] });
    });
    await choose(page, '#files', ...at('one.obj', 'one.mtl', 'holiday.png'));
    await until(page, () => /One thing at a time/.test(document.getElementById('note').textContent));
    await isOpen(page, 'one.obj');
    const read = await page.evaluate(() => window.read);
    assert.ok(read > 50 && read < 10_000, `${read} bytes`);
  }));

test('gives the memory of a hundred models back', () =>
  withView({}, async (page) => {
    const LEAK = 800; // MB: eighty programs of 10 MB, where browsers may collect late
    writeFileSync(join(files, 'wide.lwo'), lwo2([{ name: 'cloth', surface: 0, ...sheet(150) }], [{ name: 'cloth', color: [1, 1, 1] }]));
    let early = 0;
    for (let k = 1; k <= 100; k++) {
      await open(page, 'wide.lwo');
      if (k === 20) early = memoryOf(bench.browser.process().pid);
    }
    const late = memoryOf(bench.browser.process().pid);
    assert.ok(late - early < LEAK, `${early} MB after 20 models, ${late} after 100`);
    assert.equal(await page.$$eval('canvas', (all) => all.length), 1);
  }));

// --------------------------------------------------------------------- people

test('is used by keys alone', () =>
  withView({}, async (page) => {
    const focused = () => page.evaluate(() => document.activeElement.id || document.activeElement.getAttribute('href') || document.activeElement.tagName);
    const tabTo = async (wanted) => {
      for (let k = 0; k < 40; k++) {
        await page.keyboard.press('Tab');
        if (wanted.test(await focused())) return;
      }
      assert.fail(`never came to ${wanted}`);
    };
    await tabTo(/sol\.lwo/);
    await page.keyboard.press('Enter');
    await isOpen(page, 'sol.lwo');
    assert.equal(await focused(), 'CANVAS');
    const before = await picture(page);
    for (const key of ['n', 'ArrowLeft']) await page.keyboard.press(key);
    assert.notEqual(await picture(page), before);
    assert.equal(await page.$eval('[data-key="n"]', (button) => button.getAttribute('aria-pressed')), 'true');
    await tabTo(/tab-look/);
    await page.keyboard.press('ArrowRight');
    await page.keyboard.press('ArrowRight');
    assert.equal(await focused(), 'tab-check');
    assert.match(await textOf(page, '#pane-check'), /Nothing to mend/);
    await page.keyboard.press('?');
    assert.equal(await page.$eval('#help', (help) => help.open), true);
    await page.keyboard.press('Escape');
    assert.equal(await page.$eval('#help', (help) => help.open), false);
  }));

test('fits a telephone, and every thing to press is large enough for a finger', () =>
  withView({ width: 360, height: 700 }, async (page) => {
    const narrow = async () => assert.equal(await page.evaluate(() => document.documentElement.scrollWidth), await page.evaluate(() => innerWidth));
    await narrow();
    await open(page, 'tree3d.lwo', 'leaves.tga', 'bark.tga');
    for (const tab of ['look', 'contents', 'check', 'save']) {
      await click(page, `#tab-${tab}`);
      await narrow();
      const small = await page.$$eval('button', (all) => all.filter((button) => button.offsetParent && button.offsetHeight < 24).map((button) => button.outerHTML));
      assert.deepEqual(small, []);
    }
    const [canvas, panel] = await page.evaluate(() => ['#look', '#panel'].map((id) => document.querySelector(id).getBoundingClientRect().toJSON()));
    assert.ok(canvas.height > 300 && panel.top >= canvas.bottom - 1);
    for (const [width, height] of [[360, 700], [740, 360], [568, 320]]) { // sideways, too
      await page.setViewport({ width, height });
      await narrow();
      const [picture, tools] = await page.evaluate(() => ['#look', '.tools'].map((id) => document.querySelector(id).getBoundingClientRect().toJSON()));
      const middle = (from, size) => [from + size / 6, from + (5 * size) / 6];
      const [left, right] = middle(picture.left, picture.width);
      const [top, bottom] = middle(picture.top, picture.height);
      assert.ok(tools.left >= right || tools.right <= left || tools.top >= bottom || tools.bottom <= top, `tools cover the model at ${width} x ${height}`);
      assert.ok(tools.top >= picture.top && tools.bottom <= picture.bottom);
    }
  }));

async function violations(page) {
  await page.evaluate(AXE);
  return page.evaluate(async () => (await window.axe.run()).violations.map(({ id, nodes }) => `${id}: ${nodes.map(({ html }) => html).join(' ')}`));
}

test('has nothing that axe-core would mend, nor has the show', async () => {
  await withPage(bench, {}, async (page) => {
    await page.evaluate(() => window.show.ready.then(() => true));
    assert.deepEqual(await violations(page), []);
    await page.evaluate(() => window.show.seek(5000));
    assert.deepEqual(await violations(page), []);
  });
  await withView({}, async (page) => {
    assert.deepEqual(await violations(page), []);
    await open(page, 'rooms.lwo', 'sol.lwo');
    assert.deepEqual(await violations(page), []);
    await open(page, 'tree3d.lwo', 'leaves.tga');
    for (const tab of ['look', 'contents', 'check', 'save']) {
      await click(page, `#tab-${tab}`);
      assert.deepEqual(await violations(page), []);
    }
    await click(page, '#help-open');
    assert.deepEqual(await violations(page), []);
  });
});

test('saves what is seen', () =>
  withView({}, async (page) => {
    await open(page, 'rooms.lwo');
    const { name } = await saved(page, '#save-picture');
    assert.equal(name, 'rooms.png');
    // What the canvas shows is what was saved, as soon as the browser has put it there.
    await until(page, () => {
      const canvas = document.querySelector('#look canvas');
      const [seen, kept] = [canvas, window.picture].map((source) => {
        const copy = new OffscreenCanvas(window.picture.width, window.picture.height).getContext('2d');
        copy.drawImage(source, 0, 0);
        return copy.getImageData(0, 0, window.picture.width, window.picture.height).data;
      });
      return canvas.clientWidth === window.picture.width && seen.every((value, k) => Math.abs(value - kept[k]) <= 1);
    });
  }));

test('saves what lwoconvert makes', () =>
  withView({}, async (page) => {
    const native = (name, out) => {
      const folder = mkdtempSync(join(files, 'native-'));
      execFileSync(LWOCONVERT, [join(files, name), join(folder, out)]);
      return Object.fromEntries(readdirSync(folder).map((file) => [file, readFileSync(join(folder, file))]));
    };
    const corners = [[0, 0, 0], [3, 0, 0], [3, 1, 0], [2, 0.5, 0], [1, 1, 0], [1, 3, 0], [0, 3, 0]]; // not convex
    writeFileSync(join(files, 'corner.lwo'), lwo2([{ name: 'corner', surface: 0, points: corners, polygons: [[0, 1, 2, 3, 4, 5, 6]] }], [{ name: 'red', color: [1, 0, 0] }]));
    for (const [model, ...beside] of [['tree3d.lwo', 'bark.tga', 'leaves.tga'], ['corner.lwo']]) {
      const stem = model.replace('.lwo', '');
      await open(page, model, ...beside);
      const glb = await saved(page, '#save-gltf');
      assert.equal(glb.name, `${stem}.glb`);
      assert.ok(native(model, glb.name)[glb.name].equals(glb.bytes), glb.name);
      const mended = await saved(page, '#save-object');
      const made = mended.name.endsWith('.zip') ? unzipSync(mended.bytes) : { [mended.name]: mended.bytes };
      const wanted = native(model, model);
      assert.deepEqual(Object.keys(made).sort(), Object.keys(wanted).sort());
      for (const [name, bytes] of Object.entries(made)) assert.ok(wanted[name].equals(bytes), name);
      writeFileSync(join(files, glb.name), glb.bytes);
      await open(page, glb.name);
      assert.match(await textOf(page, '#headline'), /shown as LWO2/);
    }
  }));

test('says of a damaged model of another format what lwoconvert says', () =>
  withView({}, async (page) => {
    writeFileSync(join(files, 'cut.glb'), 'glTF\u0002\0\0\0\u00ff\u00ff\0\0');
    await choose(page, '#files', join(files, 'cut.glb'));
    const said = spawnSync(LWOCONVERT, ['cut.glb', 'never.lwo'], { cwd: files, encoding: 'utf8' }).stderr.trim();
    assert.equal(`lwoconvert: ${await trouble(page)}`, said);
  }));

test('is small', () => {
  const sizes = readdirSync(join(WEB, 'view')).filter((name) => /\./.test(name)).map((name) => statSync(join(WEB, 'view', name)).size);
  assert.ok(sizes.reduce((a, b) => a + b) < 1_100_000, `${sizes} bytes`);
});
