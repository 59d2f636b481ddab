// Before the page's modules: says so when they do not run. In words that any browser understands,
// as it may be an old one that keeps them from it.
(function () {
  function say() {
    if (window.show) return; // they run, and speak for themselves
    document.getElementById('opening').hidden = true;
    document.getElementById('trouble-again').hidden = true;
    document.getElementById('trouble-text').textContent =
      'The page could not start: one of its files is missing or came incomplete, or this browser is too old. ' +
      'Load it again, or open it in a newer Firefox, Chrome, Edge or Safari. What it says stands below.';
    document.getElementById('trouble').hidden = false;
  }
  if (!('noModule' in document.createElement('script'))) say();
  window.addEventListener('error', function (event) {
    if (event.target === window || event.target.nodeName === 'SCRIPT') say();
  }, true);
}());
