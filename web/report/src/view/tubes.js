// Tubes round polylines. A vertex holds its point of the line, a unit vector outwards and one along
// the line; the shader moves it outwards by the radius. Rings are carried along the line without
// twist.

import { cross, dot, minus, mix, unit } from './vector.js';

export const SIDES = 6;

const CORNERS = Array.from({ length: SIDES }, (_, side) => {
  const turn = (2 * Math.PI * side) / SIDES;
  return [Math.cos(turn), Math.sin(turn)];
});

// polylines: [{ points, trace }], trace with two numbers a point. Returns points, outward, along,
// trace (two numbers and the length along the line) and triangles of all in one.
export function tubes(polylines) {
  const kept = polylines.map((polyline) => apart(polyline.points));
  const mesh = room(kept);
  polylines.forEach((polyline, i) => {
    if (kept[i].length === 1) addDot(mesh, polyline, kept[i][0]);
    else if (kept[i].length > 1) addTube(mesh, polyline, kept[i]);
  });
  return mesh;
}

// Arrays of the right size, and how many vertices and corners of triangles they hold already.
function room(kept) {
  let vertices = 0;
  let corners = 0;
  for (const { length } of kept) {
    vertices += length === 1 ? 6 : length * SIDES;
    corners += length === 1 ? 24 : Math.max(length - 1, 0) * SIDES * 6;
  }
  return {
    points: new Float32Array(3 * vertices),
    outward: new Float32Array(3 * vertices),
    along: new Float32Array(3 * vertices),
    trace: new Float32Array(3 * vertices),
    triangles: new Uint32Array(corners),
    vertices: 0,
    corners: 0,
  };
}

function addVertex(mesh, place, outward, along, trace) {
  mesh.points.set(place, 3 * mesh.vertices);
  mesh.outward.set(outward, 3 * mesh.vertices);
  mesh.along.set(along, 3 * mesh.vertices);
  mesh.trace.set(trace, 3 * mesh.vertices);
  mesh.vertices += 1;
}

function addTriangles(mesh, numbers) {
  mesh.triangles.set(numbers, mesh.corners);
  mesh.corners += numbers.length;
}

function point(points, i) {
  return [points[3 * i], points[3 * i + 1], points[3 * i + 2]];
}

// Numbers of the points that differ from the one before.
function apart(points) {
  const kept = [];
  for (let i = 0; i < points.length / 3; i += 1) {
    const last = kept[kept.length - 1];
    const same =
      kept.length > 0 && [0, 1, 2].every((k) => points[3 * i + k] === points[3 * last + k]);
    if (!same) kept.push(i);
  }
  return kept;
}

function addTube(mesh, { points, trace }, kept) {
  const first = mesh.vertices;
  let across = null;
  let length = 0;
  kept.forEach((number, i) => {
    const here = point(points, number);
    const back = point(points, kept[Math.max(i - 1, 0)]);
    const ahead = point(points, kept[Math.min(i + 1, kept.length - 1)]);
    if (i > 0) length += Math.hypot(...minus(here, back));
    // A line that turns right back has no direction from neighbour to neighbour.
    const along = unit(minus(ahead, back)) ?? unit(minus(ahead, here));
    across = carried(across, along);
    const values = [trace[2 * number], trace[2 * number + 1], length];
    addRing(mesh, here, across, along, values);
  });
  for (let ring = 0; ring + 1 < kept.length; ring += 1) addBand(mesh, first + ring * SIDES);
}

function addRing(mesh, centre, across, along, trace) {
  const up = cross(along, across);
  for (const [c, s] of CORNERS) {
    addVertex(
      mesh,
      centre,
      across.map((a, k) => a * c + up[k] * s),
      along,
      trace,
    );
  }
}

function addBand(mesh, ring) {
  for (let side = 0; side < SIDES; side += 1) {
    const a = ring + side;
    const b = ring + ((side + 1) % SIDES);
    addTriangles(mesh, [a, b, a + SIDES, b, b + SIDES, a + SIDES]);
  }
}

// A line of one point is an octahedron, a little thicker than a tube.
function addDot(mesh, { points, trace }, number) {
  const first = mesh.vertices;
  const values = [trace[2 * number], trace[2 * number + 1], 0];
  for (const axis of [0, 1, 2]) {
    for (const size of [1.8, -1.8]) {
      addVertex(
        mesh,
        point(points, number),
        [0, 1, 2].map((k) => (k === axis ? size : 0)),
        [0, 0, 0],
        values,
      );
    }
  }
  for (const [a, b] of [
    [0, 2],
    [2, 1],
    [1, 3],
    [3, 0],
  ]) {
    addTriangles(mesh, [first + a, first + b, first + 4, first + b, first + a, first + 5]);
  }
}

// The direction across the line, turned with it as little as possible.
function carried(across, along) {
  const start = across ?? (Math.abs(along[2]) < 0.9 ? [0, 0, 1] : [1, 0, 0]);
  return unit(mix(start, 1, along, -dot(start, along))) ?? carried(null, along);
}
