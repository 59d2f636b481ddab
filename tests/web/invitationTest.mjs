// Somebody's own invitation, as ./invite made it, in a visitor's browser. tests/web/invitation runs
// this.
import assert from 'node:assert/strict';
import { after, before, test } from 'node:test';
import { ready, startBench, until, withPage } from './browser.mjs';

let bench;
before(async () => { bench = await startBench(process.env.WEB_FOLDER); });
after(() => bench.stop());

test('is theirs in its head, its words and its colours', () =>
  withPage(bench, {}, async (page) => {
    const seen = await page.evaluate(() => {
      const said = (selector) => document.querySelector(selector).content;
      return {
        title: document.title,
        heading: document.querySelector('h1').innerText.split('\n'),
        fits: document.querySelector('h1').scrollWidth <= innerWidth,
        card: said('meta[property="og:title"]'),
        description: said('meta[property="og:description"]'),
        picture: said('meta[property="og:image"]'),
        language: ['html', 'h1', '.scroll', '.wheels ul'].map((part) => document.querySelector(part).lang),
        words: document.querySelector('.scroll').textContent,
        names: [...document.querySelectorAll('.wheels li')].map((name) => name.textContent),
        leaf: getComputedStyle(document.documentElement).getPropertyValue('--leaf').toLowerCase(),
      };
    });
    assert.equal(seen.title, 'Höstmarknad Björkskolan');
    assert.deepEqual(seen.heading, ['Höstmarknad', 'Björkskolan']);
    assert.ok(seen.fits);
    assert.equal(seen.card, seen.title);
    assert.match(seen.description, /^Välkommen till Björkskolans höstmarknad, .* …$/);
    assert.equal(seen.picture, 'poster.jpg');
    assert.deepEqual(seen.language, ['en', 'sv', 'sv', 'sv']);
    assert.match(seen.words, /våfflorna.*skolgården!$/);
    assert.equal(seen.names.length, 18);
    assert.ok(seen.names.includes('Vaktis Håkan'));
    assert.equal(seen.leaf, '#d9a441');
  }));

test('plays', () =>
  withPage(bench, {}, async (page) => {
    await ready(page);
    await page.click('#begin');
    await until(page, () => window.show.frame > 60);
    await page.evaluate(() => window.show.seek(6500));
    assert.ok(await page.evaluate(() => window.show.frame) >= 6500);
  }));

test('has its own music', () =>
  withPage(bench, {}, async (page) => {
    await page.waitForFunction(() => document.getElementById('music').duration > 0);
    assert.ok(Math.abs(await page.evaluate(() => document.getElementById('music').duration) - 40) < 1);
  }));
