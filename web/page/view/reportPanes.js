// What lwoinfo says, as tables, and what its check finds, as advice.
//
//   showContents(byId('pane-contents'), report); showFindings(byId('pane-check'), findings);
import { make } from '../dom.js';

const MOST_ROWS = 300;

// Columns that are empty but for their titles are left out; a title that begins with '>' is that of
// numbers.
function makeTable({ title, rows: [titles, ...rows] }) {
  const columns = titles.map((name, k) => ({ k, name: name.replace(/^>/, ''), isNumber: name.startsWith('>') }))
    .filter(({ k }) => rows.some((row) => row[k]));
  const cells = (tag, row) => columns.map(({ k, isNumber }) =>
    make(tag, { className: isNumber ? 'number' : '' }, row[k] ?? ''));
  const table = make('table', {}, make('thead', {}, make('tr', {}, ...columns.map(({ name, isNumber }) =>
    make('th', { scope: 'col', className: isNumber ? 'number' : '' }, name)))));
  table.append(make('tbody', {}, ...rows.slice(0, MOST_ROWS).map((row) => make('tr', {}, ...cells('td', row)))));
  const frame = make('div', { className: 'table', tabIndex: 0, role: 'region', 'aria-label': title }, table);
  const section = make('section', {}, make('h3', {}, title), frame);
  if (rows.length > MOST_ROWS) section.append(make('p', {}, `and ${(rows.length - MOST_ROWS).toLocaleString('en')} more`));
  return section;
}

export function showContents(pane, report) {
  pane.replaceChildren(...report.tables.map(makeTable));
}

const sentence = (text) => `${text.charAt(0).toUpperCase()}${text.slice(1)}.`;

function makeFinding({ note, what, consequence, remedy }) {
  const card = make('li', { className: note ? 'finding note-finding' : 'finding' },
    make('h4', {}, sentence(what)), make('p', {}, sentence(consequence)));
  if (remedy) card.append(make('p', { className: 'remedy' }, make('b', {}, 'What to do: '), `${remedy}.`));
  return card;
}

export const findingCards = (findings) => make('ul', { className: 'findings' }, ...findings.map(makeFinding));

export function showFindings(pane, findings) {
  const [toMend, notes] = [findings.filter(({ note }) => !note), findings.filter(({ note }) => note)];
  pane.replaceChildren();
  if (toMend.length === 0)
    pane.append(make('p', { className: 'fine' }, 'Nothing to mend.'));
  else
    pane.append(make('section', {}, make('h3', {}, 'To mend'), findingCards(toMend)));
  if (notes.length > 0)
    pane.append(make('section', {}, make('h3', {}, 'Good to know'), findingCards(notes)));
  return toMend.length;
}
