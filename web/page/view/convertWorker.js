// One conversion: the page posts { program, model, files, out } and is answered { files, findings }
// or { problem }.
import makeEngine from './convertEngine.js';

const MADE = '/made';

async function convert({ program, model, files, out }) {
  const said = [];
  try {
    const engine = await makeEngine({
      instantiateWasm(imports, receive) {
        WebAssembly.instantiate(program, imports).then((instance) => receive(instance, program));
        return {};
      },
      print() {},
      printErr: (line) => said.push(line),
    });
    const { FS } = engine;
    const write = async ({ name, path = name, blob }) => {
      FS.mkdirTree(`/given/${path}`.replace(/\/[^/]*$/, ''));
      FS.writeFile(`/given/${path}`, new Uint8Array(await blob.arrayBuffer()), { canOwn: true });
    };
    for (const file of [...files, model]) await write(file);
    FS.mkdir(MADE);
    const answer = JSON.parse(engine.ccall('convertModel', 'string', ['string', 'string'], [`/given/${model.path ?? model.name}`, `${MADE}/${out}`]));
    if (answer.problem) return answer;
    const names = FS.readdir(MADE).filter((name) => !name.startsWith('.'));
    return { ...answer, files: names.map((name) => ({ name, blob: new Blob([FS.readFile(`${MADE}/${name}`)]) })) };
  } catch (cause) {
    if (cause instanceof DOMException && /^Not(Found|Readable)/.test(cause.name)) return { problem: 'a file cannot be read any more: choose it again' };
    const memory = /memory|OOM|alloc/i.test(`${said.at(-1)} ${cause.message}`);
    return { problem: memory ? 'there is not enough memory for it in a browser' : `the converter cannot go on (${said.at(-1) ?? cause.message})` };
  }
}

self.onmessage = async ({ data }) => self.postMessage(await convert(data));
