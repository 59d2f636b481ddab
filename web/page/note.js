// A line of words over the picture, which goes by itself.
//
//   const say = makeNote(byId('note'), 5000);
//   say('Copied.'); say('Waiting …', Infinity); say('');
export function makeNote(element, usually) {
  let ends = 0;
  return function say(text, stays = usually) {
    clearTimeout(ends);
    element.textContent = text;
    element.classList.toggle('shown', text !== '');
    if (text !== '' && stays !== Infinity) ends = setTimeout(say, stays, '');
  };
}
