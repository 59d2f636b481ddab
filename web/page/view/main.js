// The page to look into models: files in, a picture and what there is to say about it out.
import { makeLookPane } from './lookPane.js';
import { ALL, inWords, isKey } from './controls.js';
import { convert, stopConverting } from './converter.js';
import { byId, make } from '../dom.js';
import { MOST, chosenFiles, droppedFiles, haveSameStem, isForeign, isLevelOf, modelsAmong, nameAt, stem } from './files.js';
import { watchPointers } from './pointers.js';
import { showContents, showFindings } from './reportPanes.js';
import { makeSaving } from './saving.js';
import { makeTabs } from './tabs.js';
import { makeViewer } from './viewer.js';
import { fetchBytes } from '../fetch.js';
import { hasFullScreen, toggleFullScreen } from '../fullScreen.js';
import { makeNote } from '../note.js';
import { Trouble } from '../trouble.js';

const ARROW = 30; // pixels, as in lwoview
const OFTEN = 5000; // milliseconds between two losses of the graphics
const ARROWS = { ArrowLeft: [-1, 0], ArrowRight: [1, 0], ArrowUp: [0, -1], ArrowDown: [0, 1] };

// ------------------------------------------------------------------ messages

const say = makeNote(byId('note'), 5000);

function showTrouble(trouble) {
  byId('trouble-text').textContent = trouble.message;
  byId('trouble').hidden = false;
  if (trouble.cause) console.info(trouble.message, trouble.cause);
}
byId('trouble-close').addEventListener('click', () => { byId('trouble').hidden = true; });

function showBusy(step, share) {
  byId('busy').hidden = step === null;
  if (step === null) return;
  byId('busy-step').textContent = step;
  byId('busy-share').value = share;
}

// Whatever was to be opened: the list names what is shown.
function endBusy() {
  showBusy(null);
  byId('other').selectedIndex = listed.indexOf(opened?.model);
}

// -------------------------------------------------------------------- models

const viewer = makeViewer(byId('look'), {
  onProgress: ({ step, share }) => showBusy(step, share),
  onState: showState,
  onTrouble: showTrouble,
  async onLost() {
    if (performance.now() - lostAt < OFTEN) {
      showTrouble(new Trouble('The graphics go away again and again. Load the page anew, or look at a smaller model.'));
      return;
    }
    lostAt = performance.now();
    await openModel(opened.model, opened.source);
    say('The graphics went away for a moment: the model was opened again.');
  },
});
const lookPane = makeLookPane(byId('pane-look'), viewer);
makeTabs(byId('tabs'));
let opened = null; // { model, source, textures, missing } that is shown: its file, those beside it, names
let listed = []; // the models that came along
let lostAt = -Infinity;
let asked = 0; // how often something was to be opened

function showState(state) {
  lookPane.show(state);
  if (state.notice) say(state.notice);
}

function showMissing(names) {
  byId('missing').hidden = names.length === 0;
  byId('missing-list').replaceChildren(...names.map((name) => {
    const button = make('button', { type: 'button', className: 'pill small' }, `Choose ${name}`);
    button.addEventListener('click', () => {
      byId('texture').dataset.name = name;
      byId('texture').click();
    });
    return make('li', {}, button);
  }));
}

function showModel({ report, findings, missing, state }) {
  byId('name').textContent = opened.model.name;
  byId('headline').textContent = isForeign(opened.model) ? `shown as ${report.headline}` : report.headline;
  document.title = `${opened.model.name} – Look into a LightWave model`;
  showMissing(missing);
  lookPane.open(report);
  showState(state);
  showContents(byId('pane-contents'), report);
  const toMend = showFindings(byId('pane-check'), findings);
  byId('count').textContent = toMend > 0 ? String(toMend) : '✓';
  byId('count').classList.toggle('fine-count', toMend === 0);
  byId('count').setAttribute('aria-label', toMend > 0 ? `${toMend} to mend` : 'nothing to mend');
  byId('count').setAttribute('role', 'img');
  byId('saved').replaceChildren();
  if (state.isEmpty) say('Nothing of this model is drawn: it has no polygons of three or four corners.');
}

// A model of another format is shown as what it becomes.
async function openForeign(model, source) {
  showBusy(`Converting ${model.name} …`, 0.1);
  const made = await convert(model, source.files, `${stem(model.name)}.lwo`);
  const object = made.files.find(({ name }) => name.endsWith('.lwo'));
  const result = await viewer.open(object, { files: made.files, base: null });
  return { ...result, findings: [...made.findings, ...result.findings], files: source.files };
}

// Opens the model, whatever else is on its way. The page stays as it is when it cannot be; true
// when it could.
async function openModel(model, source) {
  const mine = ++asked;
  stopConverting();
  byId('trouble').hidden = true;
  say(''); // of the last one
  showBusy(`Opening ${model.name} …`, 0);
  try {
    const result = isForeign(model) ? await openForeign(model, source) : await viewer.open(model, source);
    opened = { model, source: { ...source, files: result.files }, textures: result.report.textures, missing: result.missing };
    if (byId('welcome').contains(document.activeElement)) viewer.canvas.focus(); // what has it goes
    document.body.dataset.state = 'open';
    showModel(result);
    return true;
  } catch (trouble) {
    if (mine === asked) showTrouble(trouble);
    return false;
  } finally {
    if (mine === asked) endBusy();
  }
}

// Those that came along, of which another one may be looked at.
function listOthers(models) {
  listed = models;
  byId('others').hidden = models.length < 2;
  byId('other').replaceChildren(...models.map(({ name }) => make('option', {}, name)));
  byId('other').selectedIndex = models.indexOf(opened.model);
}
byId('other').addEventListener('change', () => openModel(listed[byId('other').selectedIndex], opened.source));

// Whether the model that is shown asks for a file of this name, or it is a coarser level of it.
function isAskedFor({ name }) {
  const asks = [...opened.textures, ...opened.missing].some((texture) => haveSameStem(texture, name));
  return asks || isForeign(opened.model) || isLevelOf(name, opened.model.name);
}

async function openFiles(files) {
  if (files.length === 0) {
    showTrouble(new Trouble('There is no file in it that can be read.'));
    return;
  }
  const models = await modelsAmong(files);
  if (models.length === 0) {
    if (opened && files.some(isAskedFor)) addTextures(files);
    else if (opened) say('There is no model in it, and no texture that this one asks for.');
    else showTrouble(new Trouble('There is no model among these files. LightWave objects end in .lwo, others that can be read in .glb, .gltf and .obj.'));
    return;
  }
  history.replaceState(null, '', location.pathname);
  if (await openModel(models[0], { files, base: null })) listOthers(models);
  if (files.length >= MOST) say(`There are many files: the first ${MOST.toLocaleString('en')} were looked at.`);
}

// Later ones count, under the name that was asked for when it was.
function addTextures(files) {
  const names = new Set(files.map(({ name }) => name));
  const source = { ...opened.source, files: [...opened.source.files.filter(({ name }) => !names.has(name)), ...files] };
  return openModel(opened.model, source);
}

function addressOf(text) {
  try {
    return new URL(text, location.href);
  } catch (cause) {
    throw new Trouble(`${text} is no address.`, false, { cause });
  }
}

async function openAddress(text) {
  const mine = ++asked;
  try {
    const address = addressOf(text);
    if (address.origin !== location.origin)
      throw new Trouble('The address names a model of another site. Only models of this one are opened so; save it and drop it here.');
    showBusy(`Fetching ${nameAt(address)} …`, 0);
    const blob = await fetchBytes(address.href).catch((cause) => {
      throw new Trouble(`There is no model at ${address.pathname}.`, false, { cause });
    });
    if (mine !== asked) return;
    const model = { name: nameAt(address), path: nameAt(address), blob };
    if (await openModel(model, { files: [], base: new URL('.', address).href })) listOthers([model]);
  } catch (trouble) {
    if (mine !== asked) return;
    endBusy();
    showTrouble(trouble);
  }
}

// -------------------------------------------------------------- choosing, dropping

for (const id of ['choose-sun', 'choose-files', 'another']) byId(id).addEventListener('click', () => byId('files').click());
byId('choose-folder').addEventListener('click', () => byId('folder').click());
for (const id of ['files', 'folder'])
  byId(id).addEventListener('change', () => {
    const files = chosenFiles(byId(id).files);
    byId(id).value = ''; // the same ones may be chosen again
    openFiles(files);
  });
byId('texture').addEventListener('change', () => {
  const [file] = byId('texture').files;
  byId('texture').value = '';
  if (file && opened) addTextures([{ name: byId('texture').dataset.name, path: byId('texture').dataset.name, blob: file }]);
});
byId('busy-stop').addEventListener('click', () => {
  asked++;
  viewer.stop();
  stopConverting();
  endBusy();
});

let inside = 0; // elements of the page that a drag is over
const isFiles = (event) => event.dataTransfer?.types.includes('Files');
document.addEventListener('dragenter', (event) => {
  if (isFiles(event)) byId('drop').hidden = ++inside === 0;
});
document.addEventListener('dragleave', (event) => {
  if (isFiles(event)) byId('drop').hidden = --inside <= 0;
});
document.addEventListener('dragover', (event) => {
  if (isFiles(event)) event.preventDefault();
});
document.addEventListener('drop', async (event) => {
  if (!isFiles(event)) return;
  event.preventDefault();
  inside = 0;
  byId('drop').hidden = true;
  openFiles(await droppedFiles(event.dataTransfer));
});

for (const sample of document.querySelectorAll('#samples a'))
  sample.addEventListener('click', (event) => {
    if (event.ctrlKey || event.metaKey || event.shiftKey) return;
    event.preventDefault();
    history.replaceState(null, '', sample.href);
    openAddress(new URLSearchParams(sample.search).get('model'));
  });

// ------------------------------------------------------------------ the view

watchPointers(byId('look'), viewer);
for (const button of document.querySelectorAll('.tools [data-key]'))
  button.addEventListener('click', () => lookPane.press(button.dataset.key));

byId('full').hidden = !hasFullScreen();
byId('full').addEventListener('click', () => toggleFullScreen(byId('look'), say));

function showPanel(shown) {
  document.body.classList.toggle('alone', !shown);
  byId('panel-toggle').setAttribute('aria-expanded', String(shown));
}
byId('panel-toggle').addEventListener('click', () => showPanel(document.body.classList.contains('alone')));
if (window.top !== window) showPanel(false); // in a frame the picture comes first

makeSaving({ viewer, getOpened: () => opened, isBusy: () => !byId('busy').hidden, showBusy, showTrouble, say });

// ---------------------------------------------------------------------- keys

byId('help-keys').append(...ALL.filter(({ key }) => isKey(key)).map((control) =>
  make('div', {}, make('dt', {}, make('kbd', {}, control.key)), make('dd', {}, inWords(control)))));
const openHelp = () => byId('help').showModal();
byId('help-open').addEventListener('click', openHelp);

function arrow(event) {
  const [x, y] = ARROWS[event.key];
  if (event.shiftKey) viewer.turn(x * ARROW, y * ARROW);
  else viewer.move(x * ARROW, y * ARROW);
}

document.addEventListener('keydown', (event) => {
  if (event.ctrlKey || event.metaKey || event.altKey || byId('help').open) return;
  const on = event.target;
  if (on.matches('input, select, textarea')) return;
  const key = event.key === 'F1' ? '?' : event.key === 'Home' ? '0' : event.key;
  if (key === 'Escape') byId('trouble').hidden = true;
  else if (key === '?') openHelp();
  else if (document.body.dataset.state !== 'open') return;
  else if (key in ARROWS && (on === viewer.canvas || on === document.body)) arrow(event);
  else if (key.length === 1 && isKey(key)) lookPane.press(key);
  else return;
  event.preventDefault();
});

document.documentElement.dataset.runs = ''; // early.js need not speak
const address = new URLSearchParams(location.search).get('model');
if (address) openAddress(address);
