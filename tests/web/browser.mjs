// A browser, a static host, and a page in them, for the tests of one browser.
//   BROWSER=firefox node --test tests/web/pageTest.mjs
// Chromium headless unless BROWSER says firefox, which wants a display: its headless mode has no
// WebGL 2 without a graphics card.
import { mkdtempSync, rmSync } from 'node:fs';
import { tmpdir } from 'node:os';
import { join } from 'node:path';
import puppeteer from 'puppeteer-core';
import { serve } from '../../web/server.mjs';

export const FIREFOX = process.env.BROWSER === 'firefox';

const CHROMIUM_FLAGS = [
  '--no-sandbox', '--disable-gpu', '--disable-quic', '--no-first-run',
  '--disable-background-networking', '--disable-component-update', '--disable-sync',
  '--use-angle=swiftshader', '--enable-unsafe-swiftshader',
];
const FIREFOX_PREFERENCES = {
  'app.update.auto': false,
  'browser.safebrowsing.downloads.remote.enabled': false,
  'datareporting.policy.dataSubmissionEnabled': false,
  'full-screen-api.allow-trusted-requests-only': false, // a key from afar is not the user's
  'full-screen-api.warning.timeout': 0,
  'media.autoplay.default': 0,
  'network.captive-portal-service.enabled': false,
  'network.connectivity-service.enabled': false,
  'webgl.force-enabled': true,
};

export const launchChromium = (profile) => puppeteer.launch({
  executablePath: '/usr/bin/chromium', headless: true, userDataDir: profile, args: CHROMIUM_FLAGS,
});
const launchFirefox = (profile) => puppeteer.launch({
  browser: 'firefox', executablePath: '/usr/bin/firefox-esr', headless: false, userDataDir: profile,
  extraPrefsFirefox: FIREFOX_PREFERENCES,
});

// The page lies in a folder of its host, as it may anywhere.
const FOLDER = '/invitations/2003/';

export async function startBench(folder) {
  const profile = mkdtempSync(join(tmpdir(), 'page-test-'));
  const bench = { alter: null };
  const server = await serve(folder, 0, (request, response, path) => bench.alter?.(request, response, path), FOLDER);
  const browser = await (FIREFOX ? launchFirefox(profile) : launchChromium(profile));
  bench.browser = browser;
  bench.address = `http://127.0.0.1:${server.address().port}${FOLDER}`;
  bench.stop = async () => {
    await browser.close();
    server.closeAllConnections();
    server.close();
    rmSync(profile, { recursive: true, force: true });
  };
  return bench;
}

// Opens the page, runs the test on it, and holds it against what no page may do: errors in the
// console and requests to elsewhere.
//   query: '?frame=300'; before: a function that runs in the page ahead of its scripts;
//   alter: answers requests instead of the host; errors: what the console may say in this test.
export async function withPage(bench, { query = '', width = 800, height = 600, scale = 1, touch = false, before = null, alter = null, errors = null }, test) {
  const page = await bench.browser.newPage();
  const wrong = [];
  page.on('console', (message) => {
    if (message.type() === 'error' && !errors?.test(message.text() + (message.location()?.url ?? '')))
      wrong.push(message.text());
  });
  page.on('pageerror', (error) => { if (!errors?.test(String(error))) wrong.push(String(error)); });
  page.on('request', (request) => {
    const url = request.url();
    if (!url.startsWith(bench.address) && !/^(data|blob|about):/.test(url)) wrong.push(`asked for ${url}`);
  });
  bench.alter = alter;
  try {
    await page.setViewport(FIREFOX ? { width, height } : { width, height, deviceScaleFactor: scale, hasTouch: touch, isMobile: touch });
    if (before) await page.evaluateOnNewDocument(before);
    await page.goto(bench.address + query, { waitUntil: 'domcontentloaded' });
    await test(page);
  } finally {
    bench.alter = null;
    await page.close();
  }
  if (wrong.length > 0) throw new Error(wrong.join('\n'));
}

// To alter: files that the host has not got.
export const missing = (pattern) => (request, response, path) => {
  if (!pattern.test(path)) return false;
  response.writeHead(404).end();
  return true;
};

export const ready = (page) => page.evaluate(() => window.show.ready.then(() => true));

// Waits until the page says so, half a minute at most.
export async function until(page, condition, ...values) {
  await page.waitForFunction(condition, { timeout: 30000, polling: 50 }, ...values);
}
