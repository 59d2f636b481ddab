// Small LWO2 files, as bytes.

const text = (string) => {
  const bytes = Buffer.from(`${string}\0`, 'latin1');
  return bytes.length % 2 ? Buffer.concat([bytes, Buffer.from([0])]) : bytes;
};
const numbers = (write, size) => (...given) => {
  const values = given.flat();
  const bytes = Buffer.alloc(values.length * size);
  values.forEach((value, k) => bytes[write](value, k * size));
  return bytes;
};
const u16 = numbers('writeUInt16BE', 2);
const u32 = numbers('writeUInt32BE', 4);
const f32 = numbers('writeFloatBE', 4);
const chunkWith = (length) => (id, ...parts) => {
  const body = Buffer.concat(parts.flat());
  return Buffer.concat([Buffer.from(id), length(body.length), body]);
};
const chunk = chunkWith(u32);
const subchunk = chunkWith(u16);
const index = (value) => (value < 0xff00 ? [value] : [0xff00 + (value >> 16), value & 0xffff]);

// layers: { name, points: [[x, y, z]], polygons: [[corner, ...]], surface: index }
// surfaces: { name, color: [r, g, b] }
export function lwo2(layers, surfaces) {
  const chunks = [chunk('TAGS', ...surfaces.map(({ name }) => text(name)))];
  layers.forEach(({ name, points, polygons, surface }, k) => chunks.push(
    chunk('LAYR', u16(k, 0), f32(0, 0, 0), text(name)),
    chunk('PNTS', f32(points.flat())),
    chunk('POLS', Buffer.from('FACE'), u16(polygons.flatMap((corners) => [corners.length, ...corners.flatMap(index)]))),
    chunk('PTAG', Buffer.from('SURF'), u16(polygons.flatMap((_, polygon) => [...index(polygon), surface]))),
  ));
  for (const { name, color } of surfaces)
    chunks.push(chunk('SURF', text(name), text(''), subchunk('COLR', f32(...color), u16(0)), subchunk('SIDE', u16(3))));
  return chunk('FORM', Buffer.from('LWO2'), ...chunks);
}

// A box between two corners, of quads.
export function box([x0, y0, z0], [x1, y1, z1]) {
  const points = [0, 1, 2, 3, 4, 5, 6, 7].map((k) => [k & 1 ? x1 : x0, k & 2 ? y1 : y0, k & 4 ? z1 : z0]);
  return { points, polygons: [[0, 2, 3, 1], [4, 5, 7, 6], [0, 1, 5, 4], [2, 6, 7, 3], [0, 4, 6, 2], [1, 3, 7, 5]] };
}

// A sheet of side times side quads.
export function sheet(side) {
  const points = [];
  const polygons = [];
  for (let y = 0; y <= side; y++) for (let x = 0; x <= side; x++) points.push([x / side, y / side, Math.sin((6 * x) / side) / 5]);
  for (let y = 0; y < side; y++)
    for (let x = 0; x < side; x++) {
      const first = y * (side + 1) + x;
      polygons.push([first, first + side + 1, first + side + 2, first + 1]);
    }
  return { points, polygons };
}
