// What the page shows at the moment, in numbers: for tests, and for the curious at the console.

import { reached, shareOf, STEPS } from './fillcurve.js';

export function makeWatch(scene, data, curve, range) {
  // Share of the fill time at which a line begins to show.
  const begins = data.lines.map((line) =>
    Math.min(
      ...line.polylines.map((polyline) =>
        polyline.time.reduce(
          (least, time) => Math.min(least, range && reached(time) ? shareOf(time, range) : 1),
          1,
        ),
      ),
    ),
  );
  return {
    scene,
    step: STEPS,
    selection: null,
    lineShown(place) {
      const visible = !scene || scene.classes[data.lines[place].class][0].getVisibility();
      return visible && (this.step >= STEPS || begins[place] <= this.step / STEPS);
    },
    camera() {
      const { focus, from, up, half } = scene.camera;
      return { focus: [...focus], from: [...from], up: [...up], half };
    },
    counts() {
      return {
        triangles: data.skin.triangles.length / 3,
        filled: curve.count[this.step],
        lines: data.lines.length,
        linesShown: data.lines.filter((_, place) => this.lineShown(place)).length,
        chosen: this.selection.place === null ? null : data.lines[this.selection.place].id,
        drawings: scene ? scene.drawings : 0,
      };
    },
  };
}
