// Elements in a line: make('p', { className: 'note' }, 'text', element, ...). Properties whose names
// have a dash are attributes.
export function make(tag, properties = {}, ...children) {
  const element = document.createElement(tag);
  for (const [name, value] of Object.entries(properties)) {
    if (name.includes('-') || name === 'role') element.setAttribute(name, value);
    else element[name] = value;
  }
  element.append(...children);
  return element;
}

export const byId = (id) => document.getElementById(id);
