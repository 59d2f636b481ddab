// Fills the pages' templates with the words of the show and the sizes of its files.
//   printWords | node web/makePage.mjs FOLDER TEMPLATE...
// writes the pages and FOLDER/files.js; packs and models to try lie in FOLDER already.
import { existsSync, readFileSync, statSync, writeFileSync } from 'node:fs';
import { basename, join } from 'node:path';

const [folder, ...templates] = process.argv.slice(2);
const words = JSON.parse(readFileSync(0, 'utf8'));

const escaped = (text) => text.replace(/[&<>"]/g, (c) => ({ '&': '&amp;', '<': '&lt;', '>': '&gt;', '"': '&quot;' })[c]);

// Pointed rays around a face of radius 58, long ones and short ones in turn.
function rays() {
  const COUNT = 24;
  const at = (turn, radius) => `${(radius * Math.sin(2 * Math.PI * turn)).toFixed(1)} ${(-radius * Math.cos(2 * Math.PI * turn)).toFixed(1)}`;
  return Array.from({ length: COUNT }, (_, k) =>
    `<path d="M${at((k - 0.55) / COUNT, 54)} ${at(k / COUNT, k % 2 ? 82 : 98)} ${at((k + 0.55) / COUNT, 54)}Z"/>`).join('');
}

// What the page itself says is English.
const language = words.language ? ` lang="${words.language}"` : '';

const WHEELS = ['First wheel', 'Second wheel', 'Third wheel'];
const wheels = words.wheels.map((names, k) =>
  `<section><h3>${WHEELS[k]}</h3><ul${language}>${names.map((name) => `<li>${escaped(name)}</li>`).join('')}</ul></section>`).join('\n');

// The first sentences, as a link preview shows them.
function description() {
  const MOST = 160;
  if (words.scrollText.length <= MOST) return words.scrollText;
  const cut = words.scrollText.slice(0, MOST);
  return `${cut.slice(0, cut.lastIndexOf(' '))} …`;
}

// Models to try, as far as the set has them.
const SAMPLES = { tree3d: 'A tree', gubbenimolnet: 'An old man in a cloud', sol: 'The sun', solensam: 'Its lonely cousin' };
const samples = Object.entries(SAMPLES).filter(([name]) => existsSync(join(folder, `view/models/${name}.png`)))
  .map(([name, words]) => `<li><a href="view.html?model=view/models/${name}.lwo">` +
    `<img src="view/models/${name}.png" width="160" height="160" alt=""><span>${words}</span></a></li>`).join('\n');

// Longer names are set smaller; style.css knows how small.
function length() {
  const count = Math.max([...words.name].length, 0.55 * [...words.line].length);
  return count <= 10 ? '' : count <= 14 ? 'long' : count <= 19 ? 'longer' : 'longest';
}

const CREDIT = ' Letters: Cherry Bomb by satsuyako and Marc Foley (<a href="letters-licence.txt">SIL Open Font License</a>).';
const LOOK = '<p><a href="view.html">Look into its models, or into your own</a></p>';

const values = {
  name: escaped(words.name),
  line: escaped(words.line),
  title: escaped(`${words.name} ${words.line}`.trim()),
  length: length(),
  language,
  address: escaped(words.address && words.address.replace(/\/*$/, '/')),
  ink: words.palette.ink,
  credit: words.font ? '' : CREDIT,
  look: existsSync(join(folder, 'view')) ? LOOK : '',
  description: escaped(description()),
  scrollText: escaped(words.scrollText),
  wheels,
  rays: rays(),
  samples,
};
for (const template of templates) {
  const page = readFileSync(template, 'utf8').replace(/\{\{(\w+)\}\}/g, (_, key) => {
    if (!(key in values)) throw new Error(`${template} asks for ${key}`);
    return values[key];
  });
  writeFileSync(join(folder, basename(template)), page);
}

// The page's colours are the show's, under the same names.
const style = join(folder, 'style.css');
writeFileSync(style, readFileSync(style, 'utf8').replace(/^ {2}--(\w+): #\w+;$/gm, (whole, name) =>
  (name in words.palette ? `  --${name}: ${words.palette[name]};` : whole)));

const file = (name) => ({ name, bytes: statSync(join(folder, name)).size });
const pack = { packed: file('show.tar.gz'), plain: file('show.tar') };
writeFileSync(join(folder, 'files.js'), `// Sizes, for progress and to notice a cut file.\nexport const PACK = ${JSON.stringify(pack)};\n`);
