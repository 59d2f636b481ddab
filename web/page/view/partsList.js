// The list of layers and surfaces, each with its colour, its size and whether it is seen.
//
//   const parts = makePartsList(viewer);
//   pane.append(parts.element); parts.open(report); parts.show(state);
import { make } from '../dom.js';

const hex = (color) => `#${color.map((c) => Math.round(255 * Math.min(Math.max(c, 0), 1)).toString(16).padStart(2, '0')).join('')}`;
const channels = (text) => [1, 3, 5].map((at) => parseInt(text.slice(at, at + 2), 16) / 255);
const count = (n, thing) => `${n.toLocaleString('en')} ${thing}${n === 1 ? '' : 's'}`;

const EYE = '<svg viewBox="0 0 24 24" aria-hidden="true"><path class="seen" d="M2 12s4-7 10-7 10 7 10 7-4 7-10 7S2 12 2 12z"/><circle class="seen" cx="12" cy="12" r="3.2"/><path class="unseen" d="M3 12c5 5.500 13 5.500 18 0M6 15l-1.500 2.500M12 16.200v3M18 15l1.500 2.500"/></svg>';

// surface -1: the layer.
function makeRow(viewer, name, layer, surface) {
  const select = make('button', { type: 'button', className: 'part-name' }, name);
  const eye = make('button', { type: 'button', className: 'eye', innerHTML: EYE, 'aria-label': `Show ${name}` });
  const size = make('small');
  const row = make('li', { className: surface < 0 ? 'part-layer' : 'part-surface' }, select, size, eye);
  select.addEventListener('click', () => viewer.select(layer, surface));
  eye.addEventListener('click', () => viewer.toggle(layer, surface));
  if (surface < 0) return { layer, surface, row, select, eye, size };
  const swatch = make('input', { type: 'color', 'aria-label': `Colour of ${name}` });
  swatch.addEventListener('input', () => viewer.recolor(layer, surface, ...channels(swatch.value)));
  row.prepend(swatch);
  return { layer, surface, row, select, eye, size, swatch };
}

function showRow(state, { layer, surface, row, select, eye, size, swatch }) {
  const shown = state.layers[layer];
  const part = surface < 0 ? shown : shown.surfaces.find(({ index }) => index === surface);
  const [ofLayer, ofSurface] = state.selection;
  const selected = ofLayer === layer && (ofSurface < 0 || ofSurface === surface);
  select.setAttribute('aria-pressed', String(selected));
  row.classList.toggle('selected', selected);
  row.classList.toggle('hidden-part', !part.visible || !shown.visible);
  eye.setAttribute('aria-pressed', String(part.visible));
  if (!swatch) {
    size.textContent = count(shown.surfaces.length, 'surface');
    return;
  }
  if (document.activeElement !== swatch) swatch.value = hex(part.color);
  const kind = part.painted ? 'painted' : part.hasTexture ? (part.textured ? 'texture' : 'texture off') : '';
  size.textContent = [count(part.triangles + part.quads, 'polygon'), kind].filter(Boolean).join(' · ');
}

export function makePartsList(viewer) {
  const element = make('ul', { className: 'parts', 'aria-label': 'Layers and surfaces' });
  let rows = [];
  let built = ''; // what they stand for: levels of detail may differ
  let layerNames = [];

  const build = ({ layers }) => {
    const shape = JSON.stringify(layers.map((layer) => layer.surfaces.map(({ index, name }) => [index, name])));
    if (shape === built) return;
    built = shape;
    rows = layers.flatMap((layer, k) => [
      makeRow(viewer, layerNames[k] || (layers.length > 1 ? `Layer ${k}` : 'Layer'), k, -1),
      ...layer.surfaces.map(({ index, name }) => makeRow(viewer, name || '(no name)', k, index)),
    ]);
    element.replaceChildren(...rows.map(({ row }) => row));
  };

  return {
    element,
    open(report) {
      built = '';
      layerNames = report.layerNames;
    },
    show(state) {
      build(state);
      for (const row of rows) showRow(state, row);
    },
  };
}
