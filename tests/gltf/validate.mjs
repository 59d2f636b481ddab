// What Khronos' validator says of glTF files: node validate.mjs FILE...
// Neither errors nor warnings are let pass.
import { readFile } from 'node:fs/promises';
import { basename } from 'node:path';
import validator from 'gltf-validator';

const SEVERITIES = ['error', 'warning'];
let wrong = 0;
const files = process.argv.slice(2);
for (const file of files) {
  const report = await validator.validateBytes(new Uint8Array(await readFile(file)), {
    uri: basename(file),
    maxIssues: 20,
  });
  for (const message of report.issues.messages) {
    if (message.severity >= SEVERITIES.length) continue;
    wrong += 1;
    const { severity, pointer, code } = message;
    console.log(`${file}: ${SEVERITIES[severity]} ${code} at ${pointer}: ${message.message}`);
  }
}
console.log(`${files.length} glTF files, ${wrong} errors and warnings`);
process.exit(files.length > 0 && wrong === 0 ? 0 : 1);
