// Mouse, pen and fingers on the picture: one turns, with Shift or the other buttons it moves; two
// fingers move and zoom; the wheel zooms at the pointer; a click without a move chooses.

const DEGREES_A_PIXEL = 0.4;
const CLICK_PIXELS = 4;

export function attachPointer(host, camera, onClick) {
  const held = new Map();
  let travelled = 0;

  host.addEventListener('contextmenu', (event) => event.preventDefault());
  host.addEventListener('pointerdown', (event) => {
    if (held.size === 0) travelled = 0;
    held.set(event.pointerId, place(host, event));
    host.setPointerCapture(event.pointerId);
    host.focus({ preventScroll: true });
  });
  host.addEventListener('pointermove', (event) => {
    const before = held.get(event.pointerId);
    if (!before) return;
    const now = place(host, event);
    const other = [...held].find(([id]) => id !== event.pointerId)?.[1];
    travelled += Math.hypot(now[0] - before[0], now[1] - before[1]);
    if (other) pinch(camera, before, now, other);
    else drag(camera, before, now, event.shiftKey || (event.buttons & 6) !== 0);
    held.set(event.pointerId, now);
  });
  const release = (event) => {
    const click = event.type === 'pointerup' && held.size === 1 && travelled < CLICK_PIXELS;
    held.delete(event.pointerId);
    if (click && event.button === 0) onClick(place(host, event));
  };
  host.addEventListener('pointerup', release);
  host.addEventListener('pointercancel', release);
  host.addEventListener(
    'wheel',
    (event) => {
      event.preventDefault();
      const lines = event.deltaMode === WheelEvent.DOM_DELTA_LINE ? 30 : 1;
      camera.zoom(Math.exp(-event.deltaY * lines * 0.0015), ...place(host, event));
    },
    { passive: false },
  );
}

// From the middle of the picture, in pixels, y downwards.
function place(host, event) {
  const box = host.getBoundingClientRect();
  return [event.clientX - box.left - box.width / 2, event.clientY - box.top - box.height / 2];
}

function drag(camera, before, now, moves) {
  const [x, y] = [now[0] - before[0], now[1] - before[1]];
  if (moves) camera.move(x, y);
  else camera.turn(x * DEGREES_A_PIXEL, y * DEGREES_A_PIXEL);
}

function pinch(camera, before, now, other) {
  const width = (a) => Math.hypot(a[0] - other[0], a[1] - other[1]) || 1;
  const middle = [(now[0] + other[0]) / 2, (now[1] + other[1]) / 2];
  camera.zoom(width(now) / width(before), ...middle);
  camera.move((now[0] - before[0]) / 2, (now[1] - before[1]) / 2);
}
