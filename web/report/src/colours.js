// Two colour maps that nobody confuses: cool for fill time, warm for meeting angle. Both are even
// in perceived lightness from one end to the other, so that they can be read in grey and by the
// colour-blind. Control points are equidistant; between them colours are linear.

export const CONTROL_POINTS = 17;

// Fill time, early to late: indigo, blue, teal, pale green.
export const TIME_MAP = [
  '#2e1d65',
  '#312a74',
  '#343883',
  '#354592',
  '#3454a1',
  '#2565ac',
  '#0176b4',
  '#0f87b3',
  '#0e97b6',
  '#01a7b6',
  '#0eb7b4',
  '#19c8ae',
  '#4cd6a3',
  '#73e19e',
  '#97ec9a',
  '#b8f696',
  '#daff97',
];

// Meeting angle, head-on to none: crimson, red, orange, cream. The worst is the most striking.
export const ANGLE_MAP = [
  '#a30344',
  '#b50643',
  '#c7093f',
  '#da0e38',
  '#ea1f2f',
  '#f03e23',
  '#f45616',
  '#f76a0e',
  '#f97d14',
  '#fb8f27',
  '#fb9f3b',
  '#fcaf4e',
  '#fcbe62',
  '#fbcc7e',
  '#fbd999',
  '#fce6b3',
  '#fef2cc',
];

export const FULL_ANGLE = 180;

// A colour "#rrggbb" as three numbers from 0 to 1.
export function rgb(hex) {
  return [1, 3, 5].map((at) => parseInt(hex.slice(at, at + 2), 16) / 255);
}

// All control points in one row, as shaders take them.
export function flat(map) {
  return new Float32Array(map.flatMap(rgb));
}

// The colour at share 0 to 1 of the map, as CSS.
export function at(map, share) {
  const place = Math.min(Math.max(share, 0), 1) * (map.length - 1);
  const left = Math.min(Math.floor(place), map.length - 2);
  const [a, b] = [rgb(map[left]), rgb(map[left + 1])];
  const mixed = a.map((low, i) => Math.round(255 * (low + (b[i] - low) * (place - left))));
  return `rgb(${mixed.join(' ')})`;
}

// A CSS gradient of the map, even or in steps.
export function gradient(map, steps = 0) {
  if (!steps) return `linear-gradient(to right, ${map.join(', ')})`;
  const stops = [];
  for (let i = 0; i < steps; i += 1) {
    const colour = at(map, (i + 0.5) / steps);
    stops.push(`${colour} ${(100 * i) / steps}%`, `${colour} ${(100 * (i + 1)) / steps}%`);
  }
  return `linear-gradient(to right, ${stops.join(', ')})`;
}
