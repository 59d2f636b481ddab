// From the files beside the page to a show that stands ready: fetch, unpack, start.
//
//   const engine = await loadShow(canvas, { onBytes(done, whole) {}, musicVolume(share) {} });
//   engine.canvasSeek(0);
//
// Throws a Trouble.
import { fetchBytes, isGzip, unpacked } from './fetch.js';
import { PACK } from './files.js';
import { Trouble, cutFile, failedShow, missingFile, noWasm, noWebGl } from './trouble.js';

// The pack as a tar archive. Some hosts unpack what ends in .gz on its way; some browsers cannot
// unpack, and fetch it plain.
async function fetchPack(onBytes) {
  const canUnpack = 'DecompressionStream' in globalThis;
  const { name, bytes } = canUnpack ? PACK.packed : PACK.plain;
  const blob = await fetchBytes(name, (done) => onBytes(Math.min(done, bytes), bytes));
  try {
    const plain = canUnpack && (await isGzip(blob)) ? unpacked(blob) : blob;
    const archive = new Uint8Array(await plain.arrayBuffer());
    if (archive.length !== PACK.plain.bytes) throw new Error(`${archive.length} bytes`);
    return archive;
  } catch (cause) {
    throw cutFile(name, cause);
  }
}

// The files in a tar archive, by name: views into it.
function untar(archive) {
  const BLOCK = 512;
  const text = (at, room) => new TextDecoder().decode(archive.subarray(at, at + room)).split('\0')[0];
  const files = new Map();
  for (let at = 0; at + BLOCK <= archive.length && archive[at] !== 0;) {
    const size = parseInt(text(at + 124, 12), 8);
    const isFile = text(at + 156, 1) === '0';
    if (isFile) files.set(text(at, 100), archive.subarray(at + BLOCK, at + BLOCK + size));
    at += BLOCK + Math.ceil(size / BLOCK) * BLOCK;
  }
  return files;
}

// Browsers that compile programs may still refuse to on a page with a strict policy.
function hasWasm() {
  const EMPTY = [0, 0x61, 0x73, 0x6d, 1, 0, 0, 0];
  try {
    return new WebAssembly.Module(new Uint8Array(EMPTY)) instanceof WebAssembly.Module;
  } catch {
    return false;
  }
}

function hasWebGl() {
  return document.createElement('canvas').getContext('webgl2') !== null;
}

function writeFiles(engine, files) {
  for (const [name, bytes] of files) {
    if (!name.startsWith('lwo/')) continue;
    engine.FS.mkdirTree('/lwo');
    engine.FS.writeFile(`/${name}`, bytes, { canOwn: true });
  }
}

// Calls into the program, which ends it when it cannot go on; what it said last says why.
function callable(engine, said) {
  const guarded = (call) => (...numbers) => {
    try {
      return call(...numbers);
    } catch (cause) {
      throw failedShow(said.at(-1), cause);
    }
  };
  return Object.fromEntries(Object.entries(engine)
    .filter(([name]) => name.startsWith('_canvas'))
    .map(([name, call]) => [name.slice(1), guarded(call)]));
}

let tries = 0;
export async function loadShow(canvas, { onBytes, musicVolume }) {
  if (!hasWasm()) throw noWasm();
  if (!hasWebGl()) throw noWebGl();
  // A browser remembers that a module could not be fetched, by its address.
  const again = tries++ > 0 ? `?try=${tries}` : '';
  const makeEngine = import(`./engine.js${again}`).catch((cause) => { throw missingFile('engine.js', cause); });
  makeEngine.catch(() => {}); // heard below, once the pack is there
  const files = untar(await fetchPack(onBytes));
  const said = [];
  try {
    const engine = await (await makeEngine).default({
      canvas,
      musicVolume,
      wasmBinary: files.get('engine.wasm'),
      print: () => {},
      printErr: (line) => said.push(line),
    });
    writeFiles(engine, files);
    const status = engine.callMain([]);
    if (status) throw failedShow(said.at(-1));
    return callable(engine, said);
  } catch (cause) {
    throw cause instanceof Trouble ? cause : failedShow(said.at(-1), cause);
  }
}
