// Pictures of the pages for README.md, once web/build and tests/web/run have run:
//   node tests/web/redraw.mjs docs/page.jpg docs/view.jpg
import { ready, startBench, until, withPage } from './browser.mjs';

const [show, view] = process.argv.slice(2);
const bench = await startBench('build/web');
const shoot = async (page, path) => {
  await page.evaluate(() => document.fonts.ready.then(() => new Promise((resolve) => { setTimeout(resolve, 500, true); })));
  await page.screenshot({ path, type: 'jpeg', quality: 82 });
};
try {
  await withPage(bench, { width: 1280, height: 800 }, async (page) => {
    await ready(page);
    await shoot(page, show);
  });
  await withPage(bench, { query: 'view.html?model=view/models/gubbenimolnet.lwo', width: 1280, height: 800 }, async (page) => {
    await until(page, () => document.body.dataset.state === 'open');
    await shoot(page, view);
  });
} finally {
  await bench.stop();
}
