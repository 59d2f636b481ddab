// Models from one format to another, each in a worker that ends with it.
//
//   const { files, findings } = await convert(model, files, 'tree.lwo');
//
// Throws a Trouble. Once it is stopped, or another one is asked for, the promise never ends.
import { fetchProgram } from './program.js';
import { Trouble } from '../trouble.js';

let worker = null;
let asked = 0; // conversions, counting what stops them

export function stopConverting() {
  asked++;
  worker?.terminate();
  worker = null;
}

export async function convert(model, files, out) {
  stopConverting();
  const order = asked;
  const program = await fetchProgram('convert.wasm.gz');
  if (order !== asked) await new Promise(() => {});
  const mine = new Worker(new URL('convertWorker.js', import.meta.url), { type: 'module' });
  worker = mine;
  try {
    const answer = await new Promise((resolve, reject) => {
      mine.onmessage = ({ data }) => resolve(data);
      mine.onerror = (event) => {
        event.preventDefault();
        reject(new Trouble(`The converter could not go on${event.message ? ` (${event.message})` : ''}. Load the page again.`));
      };
      mine.postMessage({ program, model, files, out });
    });
    if (answer.problem) throw new Trouble(`${model.name}: ${answer.problem}`);
    return answer;
  } finally {
    mine.terminate();
  }
}
