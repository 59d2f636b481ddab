// The programs that workers run, each fetched and compiled once.
import { fetchBytes, isGzip, unpacked } from '../fetch.js';
import { Trouble } from '../trouble.js';

export const noWorker = () => new Trouble('Models are drawn with WebGL 2 beside the page, which this browser ' +
  'does not offer or has switched off. A newer Firefox, Chrome, Edge or Safari shows them.');

async function compiled(name) {
  const blob = await fetchBytes(`view/${name}`);
  const bytes = await ((await isGzip(blob)) ? unpacked(blob) : blob).arrayBuffer();
  return WebAssembly.compile(bytes).catch((cause) => { throw Object.assign(noWorker(), { cause }); });
}

const programs = new Map();

// Of a file that is packed, as WebAssembly.Module. Throws a Trouble; the next call tries again.
export function fetchProgram(name) {
  if (!programs.has(name))
    programs.set(name, compiled(name).catch((cause) => {
      programs.delete(name);
      throw cause;
    }));
  return programs.get(name);
}
