// One conversion: the page posts { program, model, files, out } and is answered { files, findings }
// or { problem }. The files may be many and large: they are read where they lie, as far as the
// converter asks for them.
import makeEngine from './convertEngine.js';
import { startProgram, whyEnded } from './running.js';

const GIVEN = '/given';
const MADE = '/made';

async function convert({ program, model, files, out }) {
  const said = [];
  try {
    const engine = await startProgram(makeEngine, program, { print() {}, printErr: (line) => said.push(line) });
    const { FS } = engine;
    const blobs = [...files, model].map(({ path, blob }) => ({ name: path, data: blob }));
    FS.mkdir(GIVEN);
    FS.mount(FS.filesystems.WORKERFS, { blobs }, GIVEN);
    FS.mkdir(MADE);
    const answer = JSON.parse(engine.ccall('convertModel', 'string', ['string', 'string'], [`${GIVEN}/${model.path}`, `${MADE}/${out}`]));
    if (answer.problem) return answer;
    const names = FS.readdir(MADE).filter((name) => !name.startsWith('.'));
    return { ...answer, files: names.map((name) => ({ name, blob: new Blob([FS.readFile(`${MADE}/${name}`)]) })) };
  } catch (cause) {
    return { problem: whyEnded('converter', cause, said) };
  }
}

self.onmessage = async ({ data }) => self.postMessage(await convert(data));
