// The eye: parallel projection, so that lengths can be read off and lines stay equally thick. The
// state is where it looks, from which side, what is up and how much it sees; vtk.js gets a copy.

import { cross, dot, minus, mix, unit } from './vector.js';

const EYE_DISTANCE = 3;
const FLIGHT_MS = 450;
const SMALLEST_AFTER_FLIGHT = 0.12;
const LARGEST = 20;
const SMALLEST = 1e-4;

// Directions from the part to the eye, and what is up then.
export const VIEWS = {
  '+x': { from: [1, 0, 0], up: [0, 0, 1] },
  '−x': { from: [-1, 0, 0], up: [0, 0, 1] },
  '+y': { from: [0, 1, 0], up: [0, 0, 1] },
  '−y': { from: [0, -1, 0], up: [0, 0, 1] },
  '+z': { from: [0, 0, 1], up: [0, 1, 0] },
  '−z': { from: [0, 0, -1], up: [0, 1, 0] },
  iso: { from: [0.5, -0.65, 0.57], up: [0, 0, 1] },
};

export class Camera {
  // size(): width and height of the picture in pixels; changed(): the picture must be drawn anew.
  constructor(points, size, changed) {
    this.points = points;
    this.size = size;
    this.changed = changed;
    this.flight = 0;
    this.half = 1;
    this.focus = [0, 0, 0];
    this.look('iso');
  }

  look(name) {
    const { from, up } = VIEWS[name];
    this.land();
    this.from = unit(from);
    this.right = unit(cross(up, this.from));
    this.up = cross(this.from, this.right);
    this.fit();
  }

  // Sees all of the points from this side.
  fit() {
    this.land();
    Object.assign(this, this.around(this.points, 1.12));
    this.changed();
  }

  // Focus and half height that show the points with some room round them.
  around(points, room) {
    const [x, y] = [this.right, this.up].map((axis) => range(points.map((p) => dot(p, axis))));
    const z = range(points.map((p) => dot(p, this.from)));
    const middle = [x, y, z].map(([low, high]) => (low + high) / 2);
    const focus = [0, 1, 2].map(
      (k) => this.right[k] * middle[0] + this.up[k] * middle[1] + this.from[k] * middle[2],
    );
    const [width, height] = this.size();
    const half = Math.max((y[1] - y[0]) / 2, ((x[1] - x[0]) / 2) * (height / width));
    return { focus, half: clamp(room * half || 0.5, SMALLEST, LARGEST) };
  }

  // Turns by angles in degrees, about what is up and what is right on the screen.
  turn(aside, upwards) {
    this.land();
    const [a, b] = [(-aside * Math.PI) / 180, (upwards * Math.PI) / 180];
    this.from = unit(mix(this.from, Math.cos(a), this.right, Math.sin(a)));
    this.right = unit(cross(this.up, this.from));
    this.from = unit(mix(this.from, Math.cos(b), this.up, Math.sin(b)));
    this.up = unit(cross(this.from, this.right));
    this.changed();
  }

  // Moves by pixels.
  move(right, down) {
    this.land();
    const step = this.pixel();
    this.focus = this.focus.map((f, k) => f - (this.right[k] * right - this.up[k] * down) * step);
    this.changed();
  }

  // Zooms in by a factor; what is under the pixel (from the middle, y downwards) stays there.
  zoom(factor, x = 0, y = 0) {
    this.land();
    const before = this.pixel();
    this.half = clamp(this.half / factor, SMALLEST, LARGEST);
    const gone = before - this.pixel();
    this.focus = this.focus.map((f, k) => f + (this.right[k] * x - this.up[k] * y) * gone);
    this.changed();
  }

  // Flies to points, or jumps where motion is not wanted.
  fly(points) {
    this.land();
    const goal = this.around(points, 1.6);
    goal.half = Math.max(goal.half, SMALLEST_AFTER_FLIGHT);
    const start = { focus: this.focus, half: this.half };
    const still = window.matchMedia('(prefers-reduced-motion: reduce)').matches;
    const begin = performance.now();
    const step = (time) => {
      const share = still ? 1 : Math.min(Math.max((time - begin) / FLIGHT_MS, 0), 1);
      const eased = share * share * (3 - 2 * share);
      this.focus = start.focus.map((f, k) => f + (goal.focus[k] - f) * eased);
      this.half = start.half * (goal.half / start.half) ** eased;
      this.flight = share < 1 ? requestAnimationFrame(step) : 0;
      this.changed();
    };
    if (still) step(begin);
    else this.flight = requestAnimationFrame(step);
  }

  land() {
    cancelAnimationFrame(this.flight);
    this.flight = 0;
  }

  // Size of a pixel in the scene.
  pixel() {
    return (2 * this.half) / Math.max(this.size()[1], 1);
  }

  // Place of a point in pixels from the middle of the picture, y downwards, and its nearness.
  project(point) {
    const arm = minus(point, this.focus);
    const step = this.pixel();
    return [dot(arm, this.right) / step, -dot(arm, this.up) / step, dot(arm, this.from)];
  }

  apply(camera) {
    camera.setParallelProjection(true);
    camera.setParallelScale(this.half);
    camera.setFocalPoint(...this.focus);
    camera.setPosition(...this.focus.map((f, k) => f + this.from[k] * EYE_DISTANCE));
    camera.setViewUp(...this.up);
  }
}

function range(values) {
  return values.reduce(
    ([low, high], v) => [Math.min(low, v), Math.max(high, v)],
    [Infinity, -Infinity],
  );
}

function clamp(value, low, high) {
  return Math.min(Math.max(value, low), high);
}
