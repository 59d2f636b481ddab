// Tabs as screen readers and keys expect them: one of them in the page's order, arrows between them.
export function makeTabs(list) {
  const tabs = [...list.querySelectorAll('[role=tab]')];
  const choose = (chosen) => {
    for (const tab of tabs) {
      const isChosen = tab === chosen;
      tab.setAttribute('aria-selected', String(isChosen));
      tab.tabIndex = isChosen ? 0 : -1;
      document.getElementById(tab.getAttribute('aria-controls')).hidden = !isChosen;
    }
  };
  for (const tab of tabs) tab.addEventListener('click', () => choose(tab));
  list.addEventListener('keydown', (event) => {
    const step = { ArrowLeft: -1, ArrowRight: 1 }[event.key];
    const at = tabs.indexOf(event.target);
    if (!step || at < 0) return;
    event.preventDefault();
    event.stopPropagation();
    const next = tabs[(at + step + tabs.length) % tabs.length];
    choose(next);
    next.focus();
  });
}
