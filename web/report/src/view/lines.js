// The lines of the result in the scene: tubes with a rim, one batch a class, and the chosen line.

import { FULL_ANGLE } from '../colours.js';
import { reached, shareOf } from '../fillcurve.js';
import { drawable, polyData } from './drawable.js';
import { toScene } from './frame.js';
import fragment from './tube.frag.glsl?raw';
import vertex from './tube.vert.glsl?raw';
import { tubes } from './tubes.js';

// Radii in pixels of the screen.
const RADIUS = { weld: 3, meld: 2.2, chosen: 4.5 };
const RIM = 1.4;
const DASH = 16;

// How far lines are lifted off the skin towards the eye: in radii, but never through a thin wall,
// in diagonals of the part. Their rims lie a little lower.
const LIFT = 1.5;
const LARGEST_LIFT = 0.008;
const RIM_LIFT = 0.8;

// Depth in the picture runs from -1 (near) to 1. In front: all of the depth pressed into the
// nearest hundredth, so that lines still hide each other.
const ON_SKIN = [1, 0];
const IN_FRONT = [0.01, -0.98];
const FOREMOST = [0.005, -0.994];

// The cutting plane that keeps everything.
export const UNCUT = [0, 0, 0, 1];

// Share of the angle and of the fill time per point. What was never reached shows at the end.
function traceOf({ angle, time }, range) {
  const trace = new Float32Array(2 * angle.length);
  for (let i = 0; i < angle.length; i += 1) {
    trace[2 * i] = angle[i] / FULL_ANGLE;
    trace[2 * i + 1] = range && reached(time[i]) ? shareOf(time[i], range) : 1;
  }
  return trace;
}

// Polylines of a line in scene units.
export function scenePolylines(line, range, frame) {
  return line.polylines.map((polyline) => ({
    points: toScene(polyline.points, frame),
    trace: traceOf(polyline, range),
  }));
}

function tubeData(polylines) {
  const { points, outward, along, trace, triangles } = tubes(polylines);
  return polyData({
    points,
    triangles,
    attributes: {
      outward: { values: outward, components: 3 },
      along: { values: along, components: 3 },
      trace: { values: trace, components: 3 },
    },
  });
}

// A tube and, round it, its rim: a thicker tube below. `look` says how, at every drawing.
function tubeActors(polylines, state, look) {
  const data = tubeData(polylines);
  const values = (radius, plain) => () => {
    const { depth, now, cut, rim } = look.now();
    const height = Math.min(LIFT * look.radius * state.pixel, LARGEST_LIFT);
    return {
      mapColours: state.angleColours,
      now,
      cut,
      depth,
      rim,
      plain,
      lift: state.toEye.map((t) => t * height * (plain ? RIM_LIFT : 1)),
      dash: look.dashed ? DASH * state.pixel : 0,
      radius: radius * state.pixel,
    };
  };
  const inner = drawable(data, { vertex, fragment }, values(look.radius, 0));
  const outer = drawable(data, { vertex, fragment }, values(look.radius + RIM, 1));
  return [inner, outer];
}

// All lines of one class.
export function classActors(name, polylines, state) {
  return tubeActors(polylines, state, {
    radius: RADIUS[name],
    dashed: name === 'meld',
    now: () => ({
      depth: state.showThrough ? IN_FRONT : ON_SKIN,
      now: state.now,
      cut: state.cut,
      rim: state.theme.rim,
    }),
  });
}

// The chosen line: thicker, rimmed in the accent colour, whole and in front of everything.
export function chosenActors(name, polylines, state) {
  return tubeActors(polylines, state, {
    radius: RADIUS.chosen,
    dashed: name === 'meld',
    now: () => ({ depth: FOREMOST, now: 2, cut: UNCUT, rim: state.theme.accent }),
  });
}
