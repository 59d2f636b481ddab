// Mouse, touch and wheel on the stage, as lwoview has them: left turns, right zooms, middle or with
// Shift moves; one finger turns, two move and zoom.
//
//   watchPointers(stage, viewer);

const ZOOM_PER_PIXEL = 1.005;
const ZOOM_PER_NOTCH = 1.15;
const NOTCH = 100; // pixels that a wheel scrolls by

export function watchPointers(stage, viewer) {
  const pointers = new Map(); // those that are down, and where
  let drags = 'turn';

  const onModel = (event) => event.target === viewer.canvas;
  const move = (x, y) => viewer.move(x * pixels(), y * pixels());
  const pixels = () => Math.min(devicePixelRatio || 1, 2);
  const middle = () => {
    const [a, b] = [...pointers.values()];
    return { x: (a.x + b.x) / 2, y: (a.y + b.y) / 2, apart: Math.hypot(a.x - b.x, a.y - b.y) };
  };

  stage.addEventListener('pointerdown', (event) => {
    if (!onModel(event)) return;
    event.preventDefault();
    if (event.isPrimary) pointers.clear(); // of a canvas that is gone nothing was heard
    viewer.canvas.focus({ preventScroll: true });
    viewer.canvas.setPointerCapture(event.pointerId);
    pointers.set(event.pointerId, { x: event.clientX, y: event.clientY });
    if (event.button === 1 || event.shiftKey) drags = 'move';
    else drags = event.button === 2 ? 'zoom' : 'turn';
  });
  const leave = (event) => pointers.delete(event.pointerId);
  stage.addEventListener('pointerup', leave);
  stage.addEventListener('pointercancel', leave);

  stage.addEventListener('pointermove', (event) => {
    const last = pointers.get(event.pointerId);
    if (!last) return;
    const before = pointers.size === 2 ? middle() : null;
    const [x, y] = [event.clientX - last.x, event.clientY - last.y];
    pointers.set(event.pointerId, { x: event.clientX, y: event.clientY });
    if (before) {
      const now = middle();
      move(now.x - before.x, now.y - before.y);
      if (before.apart > 0 && now.apart > 0) viewer.zoom(now.apart / before.apart);
    } else if (pointers.size === 1) {
      if (drags === 'turn') viewer.turn(x, y);
      else if (drags === 'move') move(x, y);
      else viewer.zoom(ZOOM_PER_PIXEL ** -y);
    }
  });

  stage.addEventListener('wheel', (event) => {
    if (!onModel(event)) return;
    event.preventDefault();
    const lines = event.deltaMode === WheelEvent.DOM_DELTA_LINE ? 100 / 3 : 1;
    const notches = Math.max(-3, Math.min(3, (event.deltaY * lines) / NOTCH));
    viewer.zoom(ZOOM_PER_NOTCH ** -(event.ctrlKey ? 5 * notches : notches)); // with Ctrl: a touchpad's pinch
  }, { passive: false });
  stage.addEventListener('contextmenu', (event) => { if (onModel(event)) event.preventDefault(); });
}
