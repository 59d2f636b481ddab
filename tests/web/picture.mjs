// A picture of the page for README.md: node tests/web/picture.mjs docs/page.jpg
// once web/build and tests/web/run have run.
import { ready, startBench, withPage } from './browser.mjs';

const bench = await startBench('build/web');
try {
  await withPage(bench, { width: 1280, height: 800 }, async (page) => {
    await ready(page);
    await page.evaluate(() => document.fonts.ready.then(() => true));
    await page.screenshot({ path: process.argv[2], type: 'jpeg', quality: 82 });
  });
} finally {
  await bench.stop();
}
