// Keys on the picture.

const DEGREES = 10;
const PIXELS = 40;
const ZOOM = 1.2;

const ARROWS = {
  ArrowLeft: [-1, 0],
  ArrowRight: [1, 0],
  ArrowUp: [0, -1],
  ArrowDown: [0, 1],
};

export function attachKeys(host, camera, onPlay) {
  host.addEventListener('keydown', (event) => {
    if (event.ctrlKey || event.metaKey || event.altKey) return;
    const arrow = ARROWS[event.key];
    if (arrow && event.shiftKey) camera.move(arrow[0] * PIXELS, arrow[1] * PIXELS);
    else if (arrow) camera.turn(arrow[0] * DEGREES, arrow[1] * DEGREES);
    else if (event.key === '+' || event.key === '=') camera.zoom(ZOOM);
    else if (event.key === '-' || event.key === '_') camera.zoom(1 / ZOOM);
    else if (event.key === '0') camera.fit();
    else if (event.key === ' ') onPlay();
    else return;
    event.preventDefault();
  });
}
