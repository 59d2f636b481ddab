// The canvas: as many pixels as the screen has for it, and what happens when its context goes.
const MOST_PIXELS_A_POINT = 2;

export function pixelSize(canvas) {
  const scale = Math.min(devicePixelRatio || 1, MOST_PIXELS_A_POINT);
  return [Math.max(Math.round(canvas.clientWidth * scale), 1), Math.max(Math.round(canvas.clientHeight * scale), 1)];
}

// Sets the canvas to its size; true if that was a change.
export function fitCanvas(canvas) {
  const [width, height] = pixelSize(canvas);
  if (canvas.width === width && canvas.height === height) return false;
  canvas.width = width;
  canvas.height = height;
  return true;
}

export function watchStage(canvas, player, say) {
  new ResizeObserver(() => {
    if (fitCanvas(canvas)) player.resize(canvas.width, canvas.height);
  }).observe(canvas);
  canvas.addEventListener('webglcontextlost', (event) => {
    event.preventDefault(); // so that it comes back
    player.lose();
    say('The graphics went away for a moment: the picture comes back by itself. If it does not, load the page again.', Infinity);
  });
  canvas.addEventListener('webglcontextrestored', () => {
    player.restore(canvas.width, canvas.height);
    say('');
  });
}
