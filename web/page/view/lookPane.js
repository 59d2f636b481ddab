// The first pane: buttons for what lwoview's keys do, and the list of layers and surfaces.
//
//   const pane = makeLookPane(byId('pane-look'), viewer);
//   pane.open(report); pane.show(state);
import { GROUPS, SELECTED, SELECTING } from './controls.js';
import { makePartsList } from './partsList.js';
import { make } from '../dom.js';

function makeButton({ key, name }, press) {
  const button = make('button', { type: 'button', className: 'switch', 'data-key': key }, name);
  if (key !== '\t') {
    button.append(make('kbd', { 'aria-hidden': 'true' }, key));
    button.setAttribute('aria-keyshortcuts', key);
  }
  button.addEventListener('click', () => press(key));
  return button;
}

export function makeLookPane(pane, viewer) {
  const controls = []; // { control, button }
  const sections = []; // { group, section, note }
  const parts = makePartsList(viewer);
  const said = make('pre', { className: 'said', hidden: true, tabIndex: 0, 'aria-label': 'Description' });

  const press = async (key) => {
    const state = await viewer.key(key);
    if (!state) return;
    said.hidden = !(key === 'p' || key === 'k') || state.lines.length === 0;
    said.textContent = state.lines.join('\n').trim();
  };
  const makeButtons = (title, list) => {
    const row = make('div', { className: 'switches', role: 'group', 'aria-label': title });
    for (const control of list) {
      const button = makeButton(control, press);
      controls.push({ control, button });
      row.append(button);
    }
    return row;
  };
  const addSection = (title, ...content) => {
    const section = make('section', {}, make('h3', {}, title), ...content);
    pane.append(section);
    return section;
  };
  for (const group of GROUPS) {
    const note = make('p', { className: 'level', hidden: !group.note });
    sections.push({ group, note, section: addSection(group.title, makeButtons(group.title, group.controls), note) });
  }
  addSection('Layers and surfaces', parts.element, makeButtons('Selecting', SELECTING));
  addSection('What is selected', makeButtons('What is selected', SELECTED), said);

  return {
    open(report) {
      said.hidden = true;
      parts.open(report);
    },
    show(state) {
      for (const { group, section, note } of sections) {
        section.hidden = group.when ? !group.when(state) : false;
        note.textContent = group.note?.(state) ?? '';
      }
      for (const { control, button } of controls) {
        if (control.on) button.setAttribute('aria-pressed', String(control.on(state)));
        button.hidden = control.when ? !control.when(state) : false;
      }
      parts.show(state);
    },
    press,
  };
}
