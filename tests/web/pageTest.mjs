// The page as a visitor's browser shows it. tests/web/run runs this in Chromium and in Firefox.
import assert from 'node:assert/strict';
import { readFileSync, readdirSync, statSync } from 'node:fs';
import { join } from 'node:path';
import { after, before, test } from 'node:test';
import { FIREFOX, missing, ready, startBench, until, withPage } from './browser.mjs';
import { differenceFrom, withoutAntialiasing } from './pictures.mjs';

const WEB = process.env.WEB_FOLDER;
const STILLS = process.env.STILLS_FOLDER;
const FRAMES = [300, 1250, 4000, 10500, 17870, 18500]; // as tests/web/run draws them natively

let bench;
before(async () => { bench = await startBench(WEB); });
after(() => bench.stop());

const withShow = (options, act) => withPage(bench, options, async (page) => {
  await ready(page);
  await act(page);
});
const frameOf = (page) => page.evaluate(() => window.show.frame);
const stateOf = (page) => page.evaluate(() => document.getElementById('player').dataset.state);
const barOf = (page) => page.evaluate(() => document.getElementById('player').dataset.bar);
const press = (page, key) => page.keyboard.press(key);
const centre = (page, selector) => page.$eval(selector, (element) => {
  const box = element.getBoundingClientRect();
  return [box.x + box.width / 2, box.y + box.height / 2];
});

// Answers with a file's bytes, as many as `upTo` says, in pieces with pauses between them.
function trickle(name, { upTo = Infinity, pieces = 1, pause = 0, length = null, headers = {} }) {
  return (request, response, path) => {
    if (path !== name) return false;
    const bytes = readFileSync(join(WEB, name)).subarray(0, upTo);
    response.writeHead(200, { 'content-length': length ?? bytes.length, ...headers });
    const size = Math.ceil(bytes.length / pieces);
    let at = 0;
    const next = () => {
      response.write(bytes.subarray(at, (at += size)));
      if (at < bytes.length) setTimeout(next, pause);
      else if (length !== null && length > bytes.length) setTimeout(() => response.destroy(), 50);
      else response.end();
    };
    next();
    return true;
  };
}

// ------------------------------------------------------------------- pictures

// The host has the native stills beside the page: the page's policy lets no others in.
function still(request, response, path) {
  if (!/^frame\d+\.png$/.test(path)) return false;
  response.writeHead(200, { 'content-type': 'image/png' }).end(readFileSync(join(STILLS, path)));
  return true;
}

test('draws the frames that are drawn natively', () =>
  withShow({ query: '?frame=300', before: withoutAntialiasing, alter: still }, async (page) => {
    for (const frame of FRAMES) {
      await page.evaluate((to) => window.show.seek(to), frame);
      assert.equal(await frameOf(page), frame);
      const name = `frame${String(frame).padStart(5, '0')}.png`;
      const { mean, far, size } = await page.evaluate(differenceFrom, name, '#stage');
      assert.deepEqual(size, [800, 600]);
      assert.ok(mean <= 1, `frame ${frame}: mean difference ${mean}`);
      assert.ok(far <= 0.005, `frame ${frame}: ${far} of the pixels are far off`);
    }
  }));

test('shows the asked frame paused, and the same wherever it comes from', () =>
  withShow({ query: '?frame=4000' }, async (page) => {
    const picture = () => page.evaluate(() => document.getElementById('stage').toDataURL());
    assert.equal(await frameOf(page), 4000);
    assert.equal(await stateOf(page), 'paused');
    const first = await picture();
    for (const [to, shown] of [[10500, 10500], [18750, 18750], [99999, 18750], [-5, 0], [4000, 4000]]) {
      await page.evaluate((frame) => window.show.seek(frame), to);
      assert.equal(await frameOf(page), shown);
    }
    assert.equal(await picture(), first);
    assert.equal(await page.evaluate(() => window.show.lastFrame), 18750);
  }));

test('is small', () => {
  const size = (...names) => names.reduce((sum, name) => sum + statSync(join(WEB, name)).size, 0);
  const all = readdirSync(WEB);
  const page = all.filter((name) => /\.(html|css|js|svg|jpg|woff2)$/.test(name) && name !== 'engine.js');
  assert.ok(page.length > 10 && size(...page) < 250_000, `${size(...page)} bytes before the show`);
  const rest = all.filter((name) => !/^music\.|^show\.tar$/.test(name));
  assert.ok(size(...rest) < 4_500_000, `${size(...rest)} bytes without the music`);
});

// -------------------------------------------------------------------- playing

test('opens with a picture and a button, and plays in step with the music', () =>
  withShow({}, async (page) => {
    assert.equal(await stateOf(page), 'closed');
    assert.ok(await page.evaluate(() => document.getElementById('poster').naturalWidth > 0));
    await page.click('#begin');
    await until(page, () => window.show.frame > 30);
    const drift = await page.evaluate(() => new Promise((resolve) => {
      const music = document.getElementById('music');
      const drifts = [];
      const look = () => {
        if (window.show.frame < 256 && Math.abs(music.volume - window.show.frame / 255) > 0.01)
          resolve('the music swells otherwise');
        drifts.push(Math.abs(window.show.frame - music.currentTime * 60));
        if (drifts.length < 60) requestAnimationFrame(look);
        else resolve(drifts.sort((a, b) => a - b)[30]);
      };
      look();
    }));
    if (FIREFOX && (await page.evaluate(() => document.getElementById('music').paused))) return; // it wants a sound card
    assert.ok(drift < 8, `frames out of step: ${drift}`);
    await until(page, () => document.getElementById('player').dataset.bar === 'hidden');
    await page.mouse.move(300, 300);
    await until(page, () => document.getElementById('player').dataset.bar === 'shown');
  }));

test('shows sixty frames a second without music, and says that it is silent', () =>
  withShow({ alter: missing(/^music\.(ogg|m4a)/), errors: /music/ }, async (page) => {
    await page.click('#begin');
    await until(page, () => /silence/.test(document.getElementById('note').textContent));
    await until(page, () => window.show.frame > 30);
    const rate = await page.evaluate(async () => {
      const drawn = () => new Promise((resolve) => {
        requestAnimationFrame(() => resolve([window.show.frame, performance.now()]));
      });
      const [frame, time] = await drawn();
      await new Promise((resolve) => setTimeout(resolve, 3000));
      const [laterFrame, later] = await drawn();
      return (1000 * (laterFrame - frame)) / (later - time);
    });
    assert.ok(rate > 56 && rate < 64, `${rate} frames a second`);
  }));

test('pauses, goes on and ends', () =>
  withShow({ query: '?frame=18600' }, async (page) => {
    await page.evaluate(() => window.show.play());
    await until(page, () => window.show.frame > 18620);
    await page.evaluate(() => window.show.pause());
    const stood = await frameOf(page);
    await new Promise((resolve) => setTimeout(resolve, 400));
    assert.equal(await frameOf(page), stood);
    assert.ok(await page.evaluate(() => document.getElementById('music').paused));
    await page.evaluate(() => window.show.play());
    await until(page, () => document.getElementById('player').dataset.state === 'closed');
  }));

test('obeys the keys', () =>
  withShow({ query: '?frame=5000' }, async (page) => {
    await press(page, 'ArrowRight');
    assert.equal(await frameOf(page), 5300);
    await press(page, 'ArrowLeft');
    await press(page, 'ArrowLeft');
    assert.equal(await frameOf(page), 4700);
    await press(page, 'm');
    assert.ok(await page.evaluate(() => document.getElementById('music').muted));
    await press(page, 'Home');
    assert.equal(await frameOf(page), 0);
    await press(page, ' ');
    await until(page, () => window.show.frame > 5);
    await press(page, ' ');
    assert.equal(await stateOf(page), 'paused');
    await press(page, 'q');
    assert.equal(await stateOf(page), 'closed');
  }));

test('is within the reach of keys alone while it plays', () =>
  withShow({}, async (page) => {
    await press(page, 'Tab');
    await press(page, 'Enter');
    await until(page, () => document.getElementById('player').dataset.bar === 'hidden');
    const reached = [];
    for (let k = 0; k < 5; k++) {
      await press(page, 'Tab');
      reached.push(await page.evaluate(() => document.activeElement.id));
    }
    assert.deepEqual(reached, ['time-line', 'play', 'mute', 'volume', 'link']);
    assert.equal(await barOf(page), 'shown');
    await press(page, 'q');
    assert.equal(await page.evaluate(() => document.activeElement.id), 'begin');
  }));

test('obeys fingers', { skip: FIREFOX }, () =>
  withShow({ width: 390, height: 844, scale: 2, touch: true }, async (page) => {
    const tap = async (selector) => page.touchscreen.tap(...(await centre(page, selector)));
    const seen = (bar, state) => until(page, (...wanted) => {
      const { bar: shown, state: played } = document.getElementById('player').dataset;
      return shown === wanted[0] && played === wanted[1];
    }, bar, state);
    await tap('#begin');
    await seen('hidden', 'playing');
    await tap('#play'); // which nobody sees: it brings the bar
    await seen('shown', 'playing');
    await tap('#play');
    await seen('shown', 'paused');
    await tap('#play');
    await seen('hidden', 'playing'); // though the finger was there last
    await tap('#stage');
    await seen('shown', 'playing');
    await tap('#stage');
    await seen('shown', 'paused');
    await tap('#stage');
    await seen('shown', 'playing');
    const [x, y] = await centre(page, '#time-line');
    await page.touchscreen.touchStart(x - 130, y);
    for (let moved = -120; moved <= 60; moved += 20) await page.touchscreen.touchMove(x + moved, y);
    await page.touchscreen.touchEnd();
    await until(page, () => window.show.frame > 12000 && window.show.frame < 14500);
    assert.equal(await stateOf(page), 'playing');
    await until(page, () => Math.abs(document.getElementById('music').currentTime - window.show.frame / 60) < 0.3);
  }));

test('fills the screen and leaves it', () =>
  withShow({ query: '?frame=5000' }, async (page) => {
    await page.click('#full');
    await until(page, () => document.fullscreenElement?.id === 'player');
    await page.click('#full');
    await until(page, () => document.fullscreenElement === null);
  }));

test('goes to chapters and along the time line, and gives a link', () =>
  withShow({ query: '?frame=0' }, async (page) => {
    await page.click('#chapters li:nth-child(5) button');
    assert.equal(await frameOf(page), 9460);
    assert.equal(await page.$eval('#chapter', (chapter) => chapter.textContent), 'Second wheel');
    assert.equal(await page.$eval('#time', (time) => time.textContent), '2:37 / 5:12');
    await page.evaluate(() => window.scrollTo({ top: 0, behavior: 'instant' }));
    await page.click('#link');
    await until(page, () => /Link|link/.test(document.getElementById('note').textContent));
    const box = await (await page.$('#time-line')).boundingBox();
    await page.mouse.click(box.x + box.width / 4, box.y + box.height / 2);
    const quarter = await frameOf(page);
    assert.ok(quarter > 4400 && quarter < 4800, `frame ${quarter} is not a quarter along`);
  }));

test('fits wide windows, narrow ones and a telephone held upright', async () => {
  for (const [width, height, scale] of [[1600, 600, 1], [390, 844, 2], [720, 340, 2]])
    await withShow({ query: '?frame=4000', width, height, scale }, async (page) => {
      const seen = await page.evaluate(() => {
        const canvas = document.getElementById('stage');
        const box = (id) => document.getElementById(id).getBoundingClientRect();
        return {
          pixels: [canvas.width, canvas.height],
          points: [canvas.clientWidth, canvas.clientHeight].map((side) => Math.round(side * devicePixelRatio)),
          wide: document.documentElement.scrollWidth - innerWidth,
          outside: ['bar', 'play', 'time-line', 'mute', 'link', 'full'].filter((id) =>
            box(id).left < 0 || box(id).right > innerWidth || box(id).bottom > innerHeight || box(id).width < 20),
        };
      });
      assert.deepEqual(seen.pixels, seen.points);
      assert.ok(seen.wide <= 0, 'nothing scrolls sideways');
      assert.deepEqual(seen.outside, []);
      await page.setViewport({ width: 640, height: 480 });
      await until(page, () => document.getElementById('stage').width <= 640 * devicePixelRatio);
      assert.equal(await frameOf(page), 4000);
    });
});

test('says its words as text', () =>
  withPage(bench, {}, async (page) => {
    await page.waitForSelector('.words');
    const text = await page.$eval('.words', (words) => words.textContent);
    for (const words of ['Psst! Hello down there!', 'Moss Club', 'Biscuit 9', 'Goat Unit']) assert.ok(text.includes(words), words);
    assert.ok(await page.$eval('h1', (heading) => document.fonts.check('20px Letters', heading.textContent)));
  }));

// -------------------------------------------------------------------- trouble

const troubleOf = async (page) => {
  await until(page, () => !document.getElementById('trouble').hidden);
  return page.$eval('#trouble-text', (text) => text.textContent);
};

test('says that there is no WebGL 2', () => {
  const hide = () => {
    const real = HTMLCanvasElement.prototype.getContext;
    HTMLCanvasElement.prototype.getContext = function (kind, ...rest) {
      return kind === 'webgl2' ? null : real.call(this, kind, ...rest);
    };
  };
  return withPage(bench, { before: hide }, async (page) => assert.match(await troubleOf(page), /WebGL 2/));
});

const PACK_BYTES = 1_000_000;
const CUTS = [
  ['a missing file', missing(/^show\.tar/), /could not be fetched/],
  ['a file cut on its way', trickle('show.tar.gz', { upTo: PACK_BYTES, length: 2 * PACK_BYTES }), /incomplete/],
  ['a file cut where it lies', trickle('show.tar.gz', { upTo: PACK_BYTES }), /incomplete/],
  ['a missing program', missing(/^engine\.js/), /could not be fetched/],
];
for (const [name, alter, says] of CUTS)
  test(`says so of ${name}, and tries again`, () =>
    withPage(bench, { alter, errors: /./ }, async (page) => {
      assert.match(await troubleOf(page), says);
      bench.alter = null;
      await page.click('#trouble-again');
      await ready(page);
      assert.equal(await page.$eval('#trouble', (trouble) => trouble.hidden), true);
    }));

const BROKEN = [
  ['missing', missing(/^player\.js/)],
  ['cut', trickle('player.js', { upTo: 2000, headers: { 'content-type': 'text/javascript' } })],
];
for (const [name, alter] of BROKEN)
  test(`says so when a part of the page is ${name}`, () =>
    withPage(bench, { alter, errors: /./ }, async (page) => assert.match(await troubleOf(page), /could not start/)));

test('says that scripts are not allowed', { skip: FIREFOX }, async () => {
  const page = await bench.browser.newPage();
  await page.setJavaScriptEnabled(false);
  await page.goto(bench.address);
  const box = await (await page.$('noscript .trouble')).boundingBox();
  await page.close();
  assert.ok(box.y > 0 && box.y < 500 && box.height > 20);
});

test('gets along with hosts and browsers that unpack otherwise', async () => {
  const unpacking = trickle('show.tar.gz', { headers: { 'content-encoding': 'gzip' } });
  await withShow({ alter: unpacking }, async (page) => assert.equal(await frameOf(page), 0));
  const forget = () => { delete globalThis.DecompressionStream; };
  await withShow({ before: forget }, async (page) => assert.equal(await frameOf(page), 0));
});

test('tells its progress on a slow line, and plays when it was asked to meanwhile', () =>
  withPage(bench, { alter: trickle('show.tar.gz', { pieces: 12, pause: 150 }) }, async (page) => {
    await page.waitForSelector('#begin');
    await until(page, () => /Loading: [0-9.]+ of 2\.[0-9] MB/.test(document.getElementById('progress').textContent));
    const megabytes = () => page.$eval('#progress', (progress) => Number(/: ([0-9.]+) of/.exec(progress.textContent)?.[1] ?? 99));
    const earlier = await megabytes();
    await page.click('#begin');
    await until(page, (than) => Number(/: ([0-9.]+) of/.exec(document.getElementById('progress').textContent)?.[1] ?? 99) > than, earlier);
    await ready(page);
    await until(page, () => window.show.frame > 5);
  }));

test('waits for music that is late, and says so', () => {
  const held = [];
  const late = (request, response, path) => path === 'music.ogg' && held.push(response) > 0;
  return withShow({ alter: late, errors: /music/ }, async (page) => {
    await page.click('#begin');
    await until(page, () => /Waiting/.test(document.getElementById('note').textContent));
    assert.ok((await frameOf(page)) < 5);
    bench.alter = missing(/^music\.ogg/);
    for (const response of held) response.writeHead(404).end();
    await until(page, () => window.show.frame > 20); // the other file, or silence
  });
});

// The second host's is not what the element asks for by itself.
const WHOLE = trickle('music.ogg', { headers: { 'content-type': 'audio/ogg' } });
const FETCHED_ONLY = (request, response, path) => {
  if (!/^music\./.test(path) || request.headers['sec-fetch-dest'] !== 'audio') return WHOLE(request, response, path);
  response.writeHead(404).end();
  return true;
};
for (const [name, alter] of [['sends whole only', WHOLE], ['does not send to players', FETCHED_ONLY]])
  test(`winds music that its host ${name}`, { skip: FIREFOX }, () =>
    withShow({ alter, errors: /music/ }, async (page) => {
      const joins = (from, to) => until(page, (a, b) => {
        const { currentTime, paused } = document.getElementById('music');
        return !paused && currentTime > a && currentTime < b && Math.abs(currentTime - window.show.frame / 60) < 0.3;
      }, from, to);
      await page.click('#begin');
      await joins(0.5, 30);
      await page.evaluate(() => window.show.seek(6000));
      await joins(100, 130);
      await page.evaluate(() => window.show.seek(15000));
      await joins(250, 280);
    }));

test('goes on when the music ends too early', { skip: FIREFOX }, () =>
  withShow({ alter: trickle('music.ogg', { upTo: 100_000, headers: { 'content-type': 'audio/ogg' } }) }, async (page) => {
    await page.click('#begin');
    await until(page, () => /ends here/.test(document.getElementById('note').textContent));
    const ended = await frameOf(page);
    await until(page, (from) => window.show.frame > from + 60, ended);
  }));

test('stands when something else stops the music, and goes on with it', { skip: FIREFOX }, () =>
  withShow({}, async (page) => {
    await page.click('#begin');
    await until(page, () => window.show.frame > 30);
    await page.evaluate(() => document.getElementById('music').pause()); // as a telephone call does
    await until(page, () => document.getElementById('player').dataset.state === 'paused');
    await page.evaluate(() => document.getElementById('music').play());
    await until(page, () => document.getElementById('player').dataset.state === 'playing');
  }));

test('plays in a frame of another page', () => {
  const embedding = (request, response, path) => {
    if (path !== 'embed.html') return false;
    response.writeHead(200, { 'content-type': 'text/html' })
      .end('<!doctype html><link rel="icon" href="icon.svg"><iframe src="index.html?frame=300" width="400" height="300"></iframe>');
    return true;
  };
  return withPage(bench, { query: 'embed.html', alter: embedding }, async (page) => {
    await until(page, () => frames[0]?.show?.ready !== undefined);
    await page.evaluate(() => frames[0].show.ready.then(() => true));
    assert.equal(await page.evaluate(() => frames[0].show.frame), 300);
    await page.evaluate(() => frames[0].show.seek(4000));
    assert.equal(await page.evaluate(() => frames[0].show.frame), 4000);
  });
});

test('draws on when a lost context comes back', () =>
  withShow({ query: '?frame=4000' }, async (page) => {
    const picture = () => page.evaluate(() => document.getElementById('stage').toDataURL());
    const first = await picture();
    await page.evaluate(() => {
      window.lose = document.getElementById('stage').getContext('webgl2').getExtension('WEBGL_lose_context');
      window.lose.loseContext();
    });
    await until(page, () => /graphics/.test(document.getElementById('note').textContent));
    await page.evaluate(() => window.lose.restoreContext());
    await until(page, () => document.getElementById('note').textContent === '');
    assert.equal(await frameOf(page), 4000);
    assert.equal(await picture(), first);
  }));
