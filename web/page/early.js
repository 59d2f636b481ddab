// Before a page's modules: says so when they do not run, in the words that stand in the page. In a
// language that any browser understands, as it may be an old one that keeps them from it.
(function () {
  function say() {
    if (document.documentElement.hasAttribute('data-runs')) return; // they speak for themselves
    var useless = document.querySelectorAll('.opening, .welcome, .trouble button');
    for (var k = 0; k < useless.length; k++) useless[k].hidden = true;
    document.getElementById('trouble').hidden = false;
  }
  if (!('noModule' in document.createElement('script'))) say();
  window.addEventListener('error', function (event) {
    if (event.target === window || event.target.nodeName === 'SCRIPT') say();
  }, true);
}());
