// The last pane: what the model that is shown can be saved as.
//
//   makeSaving({ viewer, getOpened, isBusy, showBusy, showTrouble, say });
//
// getOpened() is { model, source }: its file, and those beside it.
import { convert } from './converter.js';
import { byId, make } from '../dom.js';
import { isLevelOf, save, stem } from './files.js';
import { findingCards } from './reportPanes.js';

function levelsLeftOut({ model, source }, ending) {
  const names = source.files.map(({ name }) => name).filter((name) => isLevelOf(name, model.name));
  if (names.length === 0) return [];
  const remedy = ending === '.lwo' ? 'put them beside it as they are, with their textures' : '';
  return [{ note: true, what: `coarser levels of detail (${names.sort().join(', ')})`, consequence: 'left out', remedy }];
}

async function pack(files) {
  const { zipSync } = await import('./fflate.js');
  const entries = {};
  for (const { name, blob } of files) entries[name] = [new Uint8Array(await blob.arrayBuffer()), { level: 0 }];
  return new Blob([zipSync(entries)], { type: 'application/zip' });
}

function showSaved(name, findings) {
  const notes = findings.length > 0 ? [make('h3', {}, 'What is not in it as it was'), findingCards(findings)] : [];
  byId('saved').replaceChildren(make('p', { className: 'fine' }, `${name} is saved.`), ...notes);
}

export function makeSaving({ viewer, getOpened, isBusy, showBusy, showTrouble, say }) {
  const nameWith = (ending) => `${stem(getOpened().model.name)}${ending}`;

  // makeIt() gives { name, blob, findings }, or null for nothing.
  const saveWhat = (makeIt) => async () => {
    try {
      const made = await makeIt();
      if (!made) return;
      save(made.blob, made.name);
      showSaved(made.name, made.findings);
    } catch (trouble) {
      showTrouble(trouble);
    }
  };
  const converted = (ending) => async () => {
    if (isBusy()) {
      say('One thing at a time: wait for what is on its way, or stop it.');
      return null;
    }
    const out = nameWith(ending);
    const left = levelsLeftOut(getOpened(), ending);
    showBusy(`Making ${out} …`, 0.3);
    try {
      const { files, findings } = await convert(getOpened().model, getOpened().source.files, out);
      findings.push(...left);
      if (files.length === 1) return { name: out, blob: files[0].blob, findings };
      return { name: nameWith('.zip'), blob: await pack(files), findings };
    } finally {
      showBusy(null);
    }
  };

  byId('save-object').addEventListener('click', saveWhat(converted('.lwo')));
  byId('save-gltf').addEventListener('click', saveWhat(converted('.glb')));
  byId('save-picture').addEventListener('click', saveWhat(async () =>
    ({ name: nameWith('.png'), blob: await viewer.picture(), findings: [] })));
}
