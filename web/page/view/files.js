// What somebody drops, chooses or names by its address, as files: { name, path, blob }. The path is
// that below what was dropped or chosen.

const MODEL = /\.(lwo|lw|lwob|glb|gltf|obj)$/i;
const OTHER = /\.(tga|png|jpe?g|gif|bmp|psd|tiff?|iff|txt|md|html?|zip|lws|lwo\d+|mtl|bin)$/i;
export const MOST = 5000; // of a folder

const named = (file, path) => ({ name: file.name, path: path.replace(/^\//, ''), blob: file });

// All files below a dropped entry that can be read, as many as may be.
async function addEntry(entry, files) {
  if (files.length >= MOST) return;
  if (entry.isFile) {
    const file = await new Promise((resolve) => entry.file(resolve, () => resolve(null)));
    if (file) files.push(named(file, entry.fullPath));
    return;
  }
  const reader = entry.createReader();
  const next = () => new Promise((resolve) => reader.readEntries(resolve, () => resolve([])));
  for (let some = await next(); some.length > 0; some = await next())
    for (const inside of some) await addEntry(inside, files);
}

// The transfer's items are gone as soon as the drop's event is over: call this at once.
export async function droppedFiles(transfer) {
  const entries = [...transfer.items].map((item) => item.webkitGetAsEntry?.()).filter(Boolean);
  if (entries.length === 0) return chosenFiles(transfer.files);
  const files = [];
  for (const entry of entries) await addEntry(entry, files);
  return files;
}

export const chosenFiles = (list) => [...list].slice(0, MOST).map((file) => named(file, file.webkitRelativePath || file.name));

// Old systems had no endings: the first bytes tell.
async function looksLikeModel({ name, blob }) {
  if (MODEL.test(name)) return true;
  if (OTHER.test(name)) return false;
  const head = await blob.slice(0, 12).text().catch(() => '');
  return /^FORM[^]{4}LWO[2B]/.test(head);
}

// Those of the files that are models, by name; a file that came alone is taken for one.
export async function modelsAmong(files) {
  const models = [];
  for (const file of files) if (await looksLikeModel(file)) models.push(file);
  if (models.length === 0 && files.length === 1 && !OTHER.test(files[0].name)) return files;
  return models.sort((a, b) => a.name.localeCompare(b.name));
}

// Without its ending.
export const stem = (name) => name.replace(/\.[^.]*$/, '');

// Textures come in other cases of letters and with other endings than models have them.
export const haveSameStem = (a, b) => stem(a).toLowerCase() === stem(b).toLowerCase();

// Coarser levels of detail are files of their own, found by the name of the finest.
export const isLevelOf = (name, finest) => name.startsWith(finest) && /^\d+$/.test(name.slice(finest.length));

// Models that are converted before they are shown.
export const isForeign = ({ name }) => /\.(glb|gltf|obj)$/i.test(name);

// The name of the file at an address, as it is in its folder.
export function nameAt(address) {
  const last = address.pathname.split('/').at(-1);
  try {
    return decodeURIComponent(last);
  } catch {
    return last;
  }
}

export function save(blob, name) {
  const link = document.createElement('a');
  link.href = URL.createObjectURL(blob);
  link.download = name;
  link.click();
  setTimeout(() => URL.revokeObjectURL(link.href), 60_000);
}
