// The first pane: buttons for what lwoview's keys do, and the list of layers and surfaces.
//
//   const pane = makeLookPane(byId('pane-look'), viewer);
//   pane.open(report); pane.show(state);
import { GROUPS, SELECTED, SELECTING } from './controls.js';
import { make } from '../dom.js';

const KEY_NAMES = { '\t': '' };

function makeButton({ key, name }, press) {
  const button = make('button', { type: 'button', className: 'switch', 'data-key': key }, name);
  const shown = KEY_NAMES[key] ?? key;
  if (shown) {
    button.append(make('kbd', { 'aria-hidden': 'true' }, shown));
    button.setAttribute('aria-keyshortcuts', shown);
  }
  button.addEventListener('click', () => press(key));
  return button;
}

const hex = (color) => `#${color.map((c) => Math.round(255 * Math.min(Math.max(c, 0), 1)).toString(16).padStart(2, '0')).join('')}`;
const parts = (text) => [1, 3, 5].map((at) => parseInt(text.slice(at, at + 2), 16) / 255);
const count = (n, thing) => `${n.toLocaleString('en')} ${thing}${n === 1 ? '' : 's'}`;

const EYE = '<svg viewBox="0 0 24 24" aria-hidden="true"><path class="seen" d="M2 12s4-7 10-7 10 7 10 7-4 7-10 7S2 12 2 12z"/><circle class="seen" cx="12" cy="12" r="3.2"/><path class="unseen" d="M3 12c5 5.500 13 5.500 18 0M6 15l-1.500 2.500M12 16.200v3M18 15l1.500 2.500"/></svg>';

export function makeLookPane(pane, viewer) {
  const controls = []; // { control, button }
  const sections = []; // { group, section }
  let rows = []; // { layer, surface, row, select, eye, swatch, size }
  let built = ''; // what the list of parts stands for
  let layerNames = [];
  const said = make('pre', { className: 'said', hidden: true, tabIndex: 0 });
  said.setAttribute('aria-label', 'Description');
  const list = make('ul', { className: 'parts', 'aria-label': 'Layers and surfaces' });

  const press = async (key) => {
    const state = await viewer.key(key);
    if (!state) return;
    said.hidden = !(key === 'p' || key === 'k') || state.lines.length === 0;
    said.textContent = state.lines.join('\n').trim();
  };
  const addButtons = (title, list) => {
    const row = make('div', { className: 'switches', role: 'group', 'aria-label': title });
    for (const control of list) {
      const button = makeButton(control, press);
      controls.push({ control, button });
      row.append(button);
    }
    return row;
  };
  for (const group of GROUPS) {
    const section = make('section', {}, make('h3', {}, group.title), addButtons(group.title, group.controls));
    sections.push({ group, section });
    pane.append(section);
  }
  const note = make('p', { className: 'level' });
  sections[1].section.append(note);
  pane.append(make('section', {}, make('h3', {}, 'Layers and surfaces'), list,
    addButtons('Selecting', SELECTING)),
  make('section', {}, make('h3', {}, 'What is selected'), addButtons('What is selected', SELECTED), said));

  // ---------------------------------------------------------------- layers and surfaces

  const addRow = (className, name, layer, surface) => {
    const select = make('button', { type: 'button', className: 'part-name' }, name);
    const eye = make('button', { type: 'button', className: 'eye' });
    eye.innerHTML = EYE;
    eye.setAttribute('aria-label', `Show ${name}`);
    const size = make('small');
    const row = make('li', { className });
    select.addEventListener('click', () => viewer.select(layer, surface));
    eye.addEventListener('click', () => viewer.toggle(layer, surface));
    let swatch = null;
    if (surface >= 0) {
      swatch = make('input', { type: 'color', 'aria-label': `Colour of ${name}` });
      swatch.addEventListener('input', () => viewer.recolor(layer, surface, ...parts(swatch.value)));
      row.append(swatch);
    }
    row.append(select, size, eye);
    list.append(row);
    rows.push({ layer, surface, row, select, eye, swatch, size });
  };
  const buildRows = (state) => {
    const shape = JSON.stringify(state.layers.map((layer) => layer.surfaces.map(({ index, name }) => [index, name])));
    if (shape === built) return;
    built = shape;
    rows = [];
    list.replaceChildren();
    state.layers.forEach((layer, k) => {
      addRow('part-layer', layerNames[k] || (state.layers.length > 1 ? `Layer ${k}` : 'Layer'), k, -1);
      for (const surface of layer.surfaces) addRow('part-surface', surface.name || '(no name)', k, surface.index);
    });
  };
  const showRow = (state, { layer, surface, row, select, eye, swatch, size }) => {
    const shown = state.layers[layer];
    const part = surface < 0 ? shown : shown.surfaces.find(({ index }) => index === surface);
    const [ofLayer, ofSurface] = state.selection;
    const selected = (ofLayer < 0 || ofLayer === layer) && (ofSurface < 0 || ofSurface === surface);
    select.setAttribute('aria-pressed', String(selected && (ofLayer >= 0)));
    row.classList.toggle('selected', selected && ofLayer >= 0);
    row.classList.toggle('hidden-part', !part.visible || !shown.visible);
    eye.setAttribute('aria-pressed', String(part.visible));
    if (!swatch) {
      size.textContent = count(shown.surfaces.length, 'surface');
      return;
    }
    if (document.activeElement !== swatch) swatch.value = hex(part.color);
    const kind = part.painted ? 'painted' : part.hasTexture ? (part.textured ? 'texture' : 'texture off') : '';
    size.textContent = [count(part.triangles + part.quads, 'polygon'), kind].filter(Boolean).join(' · ');
  };

  return {
    open(report) {
      built = '';
      layerNames = report.layerNames;
      said.hidden = true;
    },
    show(state) {
      for (const { group, section } of sections) section.hidden = group.when ? !group.when(state) : false;
      for (const { control, button } of controls) {
        if (control.on) button.setAttribute('aria-pressed', String(control.on(state)));
        button.hidden = control.when ? !control.when(state) : false;
      }
      note.textContent = `Shown now: level ${state.level} of ${state.levels}, 0 being the finest.`;
      buildRows(state);
      for (const row of rows) showRow(state, row);
    },
    press,
  };
}
