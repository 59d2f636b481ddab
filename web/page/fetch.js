// Files of this host, whole, with progress.
import { cutFile, missingFile } from './trouble.js';

// Fetches a file whole, reporting bytes as they come in. Throws a Trouble.
export async function fetchBytes(name, onBytes = () => {}) {
  let response;
  try {
    response = await fetch(name);
  } catch (cause) {
    throw missingFile(name, cause);
  }
  if (!response.ok) throw missingFile(name, response.status);
  const parts = [];
  let done = 0;
  try {
    const reader = response.body.getReader();
    for (let step = await reader.read(); !step.done; step = await reader.read()) {
      parts.push(step.value);
      onBytes((done += step.value.length));
    }
  } catch (cause) {
    throw cutFile(name, cause);
  }
  return new Blob(parts);
}

export async function isGzip(blob) {
  const head = new Uint8Array(await blob.slice(0, 2).arrayBuffer());
  return head[0] === 0x1f && head[1] === 0x8b;
}

// The unpacked bytes as a response.
export function unpacked(blob) {
  const unpack = new DecompressionStream('gzip');
  blob.stream().pipeTo(unpack.writable).catch(() => {}); // whoever reads hears of it
  return new Response(unpack.readable);
}
