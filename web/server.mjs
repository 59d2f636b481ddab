// A static host for the page: files of one folder, whole or in the part that was asked for.
//   const server = await serve('build/web', 8000);   // port 0: any that is free
//   ... server.address().port ...
//   server.close();
// `alter(request, response, path)` may answer instead, by returning true, and the folder may lie
// below the host's root at `base`: for tests.
import { createReadStream } from 'node:fs';
import { stat } from 'node:fs/promises';
import { createServer } from 'node:http';
import { extname, join, normalize } from 'node:path';

const TYPES = {
  '.css': 'text/css; charset=utf-8',
  '.gz': 'application/gzip',
  '.html': 'text/html; charset=utf-8',
  '.jpg': 'image/jpeg',
  '.js': 'text/javascript; charset=utf-8',
  '.m4a': 'audio/mp4',
  '.ogg': 'audio/ogg',
  '.png': 'image/png',
  '.svg': 'image/svg+xml',
  '.tar': 'application/x-tar',
  '.txt': 'text/plain; charset=utf-8',
  '.woff2': 'font/woff2',
};

// First and last byte of "bytes=0-99" and its like; null when all are asked for.
function askedRange(header, size) {
  const [, from, to] = /^bytes=(\d*)-(\d*)$/.exec(header ?? '') ?? [];
  if (!from && !to) return null;
  if (!from) return [Math.max(size - Number(to), 0), size - 1];
  return [Number(from), to ? Math.min(Number(to), size - 1) : size - 1];
}

async function answer(folder, request, response, alter, base) {
  const asked = normalize(decodeURIComponent(new URL(request.url, 'http://here').pathname));
  if (!asked.startsWith(base)) throw new Error('outside');
  const inside = asked.slice(base.length);
  const path = inside === '' || inside.endsWith('/') ? `${inside}index.html` : inside;
  if (alter?.(request, response, path)) return;
  const file = join(folder, path);
  const { size } = await stat(file);
  const range = askedRange(request.headers.range, size);
  const headers = {
    'content-type': TYPES[extname(file)] ?? 'application/octet-stream',
    'accept-ranges': 'bytes',
    'cache-control': 'no-cache',
  };
  if (range && range[0] > range[1]) {
    response.writeHead(416, { 'content-range': `bytes */${size}` }).end();
    return;
  }
  const [start, end] = range ?? [0, size - 1];
  headers['content-length'] = end - start + 1;
  if (range) headers['content-range'] = `bytes ${start}-${end}/${size}`;
  response.writeHead(range ? 206 : 200, headers);
  if (request.method === 'HEAD') response.end();
  else createReadStream(file, { start, end }).on('error', () => response.destroy()).pipe(response);
}

export function serve(folder, port, alter = null, base = '/') {
  const server = createServer((request, response) => {
    answer(folder, request, response, alter, base).catch(() => {
      if (!response.headersSent) response.writeHead(404, { 'content-type': 'text/plain' });
      response.end('There is no such file.\n');
    });
  });
  return new Promise((resolve, reject) => {
    server.once('error', reject);
    server.listen(port, '127.0.0.1', () => resolve(server));
  });
}
