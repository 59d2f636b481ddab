// One model in a worker: read, checked and drawn here, so that the page never waits.
//
// The page posts { id, call, values } and is answered { id, result } or { id, trouble }; open also
// posts { progress: { step, share } }. Calls that change what is shown answer with the state.
import { haveSameStem } from './files.js';
import { startProgram, whyEnded } from './running.js';
import makeEngine from './viewEngine.js';

const FOLDER = '/model';
let engine = null;
let canvas = null;
let size = [1, 1];
let drawsSoon = false;
let level = 0; // of detail
let lines = []; // what the program said since the last call
const said = []; // on standard error

const text = (name, types = [], values = []) => engine.ccall(name, 'string', types, values);
const json = (name, types, values) => JSON.parse(text(name, types, values));
const post = (message) => self.postMessage(message);
const progress = (step, share) => post({ progress: { step, share } });

// What is wrong with a model, in words for its owner.
class Problem extends Error {}

// -------------------------------------------------------------------- opening

async function start(program) {
  engine = await startProgram(makeEngine, program, {
    canvas,
    print: (line) => lines.push(line),
    printErr: (line) => said.push(line),
  });
  engine.FS.mkdir(FOLDER);
  engine.FS.chdir(FOLDER);
}

async function write(name, blob) {
  engine.FS.writeFile(`${FOLDER}/${name}`, new Uint8Array(await blob.arrayBuffer()), { canOwn: true });
}

// A texture that lies beside the model at its address; null: none.
async function fetchTexture(name, source) {
  const response = await fetch(new URL(encodeURIComponent(name), source.base)).catch(() => null);
  const blob = response?.ok ? await response.blob() : null;
  if (blob) source.files.push({ name, path: name, blob });
  return blob;
}

// Puts textures beside the model: under the name that it asks for, whatever the spelling, for
// systems that take "BARK.TGA" for "bark.tga" saved many a model; others of the same stem under
// their own name, for the check to speak of. Returns the names that nothing was found for.
async function writeTextures(names, source) {
  const missing = [];
  const { files, base } = source;
  for (const name of new Set(names)) {
    const given = files.find((file) => file.name === name)
      ?? files.find((file) => file.name.toLowerCase() === name.toLowerCase());
    const blob = given?.blob ?? (base ? await fetchTexture(name, source) : null);
    if (blob) {
      await write(name, blob);
      continue;
    }
    missing.push(name);
    for (const other of files.filter((file) => haveSameStem(file.name, name))) await write(other.name, other.blob);
  }
  return missing;
}

const sentence = ({ what, consequence, remedy }) => `${what}: ${consequence}${remedy ? `; ${remedy}` : ''}`;

// Reads and checks one file: { report, findings, missing } or { problem }.
async function readLevel(name, source, from, to) {
  progress(`Reading ${name} …`, from);
  const report = json('viewRead', ['string'], [name]);
  if (report.problem) return { problem: report.problem };
  const missing = await writeTextures(report.textures, source);
  progress(`Checking ${name} …`, from + (to - from) * 0.7);
  const { findings, endless } = json('viewCheck');
  return endless ? { problem: sentence(findings[0]) } : { report, findings, missing };
}

// The model and its coarser levels. source is { files, base }: what was given beside the model, and
// the address of its folder, or null. The files come back with those that were fetched.
async function open({ canvas: given, program, model, source, width, height }) {
  canvas = given;
  size = [width, height];
  canvas.addEventListener('webglcontextlost', () => post({ lost: true }));
  progress(`Fetching ${model.name} …`, 0);
  await start(program);
  await write(model.name, model.blob);
  const first = await readLevel(model.name, source, 0.05, 0.4);
  if (first.problem) throw new Problem(first.problem);
  const { report, findings, missing } = first;
  for (let k = 1; k < 20; k++) {
    const file = source.files.find(({ name }) => name === model.name + k);
    if (!file) break;
    await write(file.name, file.blob);
    const coarser = await readLevel(file.name, source, 0.4, 0.45);
    if (coarser.problem) {
      findings.push({ rule: 'level', note: true, what: `${file.name}: ${coarser.problem}`, consequence: 'shown without that level', remedy: '' });
      break;
    }
    findings.push(...coarser.findings.map((finding) => ({ ...finding, what: `${file.name}: ${finding.what}` })));
    missing.push(...coarser.missing.filter((name) => !missing.includes(name)));
  }
  progress('Building what is drawn …', 0.5);
  const problem = text('viewOpen', ['string'], [model.name]);
  if (problem) throw new Problem(problem);
  progress('Drawing …', 0.9);
  draw();
  return { report, findings, missing, state: json('viewState'), files: source.files };
}

// -------------------------------------------------------------------- looking

function draw() {
  drawsSoon = false;
  if (canvas.width !== size[0] || canvas.height !== size[1]) [canvas.width, canvas.height] = size;
  engine._viewDraw(...size);
  if (engine._viewLevel() === level) return;
  level = engine._viewLevel(); // which goes with the distance
  post({ state: json('viewState') });
}
function drawSoon() {
  if (drawsSoon) return;
  drawsSoon = true;
  self.requestAnimationFrame(() => { if (drawsSoon) draw(); });
}

const changing = (name) => (...values) => {
  lines = [];
  engine[name](...values);
  drawSoon(); // a slider of colours moves faster than large models are drawn
  return { ...json('viewState'), lines };
};
const moving = (name) => (...values) => {
  engine[name](...values);
  drawSoon();
};

const CALLS = {
  open,
  resize(width, height) {
    size = [width, height];
    drawSoon();
  },
  turn: moving('_viewTurn'),
  move: moving('_viewMove'),
  zoom: moving('_viewZoom'),
  key: changing('_viewKey'),
  select: changing('_viewSelect'),
  toggle: changing('_viewToggle'),
  recolor: changing('_viewRecolor'),
  async picture() {
    draw();
    return canvas.convertToBlob({ type: 'image/png' });
  },
};

let name = ''; // of the model
self.onmessage = async ({ data: { id, call, values } }) => {
  if (call === 'open') name = values[0].model.name;
  try {
    post({ id, result: await CALLS[call](...values) });
  } catch (cause) {
    const why = cause instanceof Problem ? cause.message : whyEnded('viewer', cause, said);
    post({ id, trouble: `${name}: ${why}`, said: lines.at(-1) });
  }
};
