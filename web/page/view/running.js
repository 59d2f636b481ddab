// For workers: a program that the page has compiled, started, and words for what ended it.
//
//   const engine = await startProgram(makeEngine, program, { printErr: (line) => said.push(line) });
//   ... catch (cause) { whyEnded('viewer', cause, said) }

// The settings are those of Emscripten's module. Rejects when the program does not come to stand.
export function startProgram(makeEngine, program, settings) {
  return new Promise((resolve, reject) => {
    makeEngine({
      ...settings,
      instantiateWasm(imports, receive) {
        WebAssembly.instantiate(program, imports).then((instance) => receive(instance, program)).catch(reject);
        return {};
      },
    }).then(resolve, reject);
  });
}

// said: the program's lines on standard error.
export function whyEnded(who, cause, said) {
  if (cause instanceof DOMException && /^Not(Found|Readable)/.test(cause.name)) return 'a file cannot be read any more: choose it again';
  if (/memory|OOM|alloc/i.test(`${said.at(-1)} ${cause.message}`)) return 'there is not enough memory for it in a browser';
  return `the ${who} cannot go on (${said.at(-1) ?? cause.message})`;
}
