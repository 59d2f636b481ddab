// What may go wrong, in words for who watches. `again`: whether trying again may help.
export class Trouble extends Error {
  constructor(text, again = false, options = undefined) {
    super(text, options);
    this.again = again;
  }
}

const NEWER = 'A newer Firefox, Chrome, Edge or Safari shows it. What it says stands below.';

export const noWebGl = () =>
  new Trouble(`The show draws with WebGL 2, which this browser does not offer or has switched off. ${NEWER}`);
export const noWasm = () => new Trouble(`This browser cannot run the show's program (WebAssembly). ${NEWER}`);
export const missingFile = (name, cause) =>
  new Trouble(`A file of this page (${name}) could not be fetched. Check the connection and try again; ` +
    'if that does not help, the file is missing where this page was put.', true, { cause });
export const cutFile = (name, cause) =>
  new Trouble(`A file of this page (${name}) came incomplete. Try again; if that does not help, ` +
    'it was cut when this page was put here.', true, { cause });
export const failedShow = (said, cause) =>
  new Trouble(`The show cannot go on${said ? ` (${said})` : ''}. Load the page again.`, false, { cause });
