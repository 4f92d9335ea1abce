// What lies over the picture: the axes and a scale for lengths.

import { svgElement } from '../dom.js';
import { ticks, withUnit } from '../format.js';

const AXES = ['x', 'y', 'z'];
const ARM = 26;
const SCALE_PIXELS = 200;

// Axes as the eye sees them, the far ones first.
export function drawTriad(svg, camera) {
  const arms = AXES.map((name, axis) => ({
    name,
    x: camera.right[axis] * ARM,
    y: -camera.up[axis] * ARM,
    depth: camera.from[axis],
  })).sort((a, b) => a.depth - b.depth);
  svg.replaceChildren(
    ...arms.map((arm) =>
      svgElement(
        'g',
        { class: `axis-${arm.name}` },
        svgElement('line', { x1: 0, y1: 0, x2: arm.x, y2: arm.y }),
        svgElement('text', { x: arm.x * 1.34, y: arm.y * 1.34, dy: '0.35em' }, arm.name),
      ),
    ),
  );
}

// A length of 1, 2 or 5 times a power of ten that fits the picture.
export function drawScale(host, camera, size, unit) {
  const pixel = camera.pixel() * size;
  const length = ticks(0, SCALE_PIXELS * pixel, 3)[1];
  host.querySelector('span').textContent = withUnit(length, unit);
  host.querySelector('i').style.width = `${(length / pixel).toFixed(1)}px`;
}
