// Documents for the report page.
//
//   node sample.js NAME    writes a document of `samples` as JSON

import { arrival, meetingAngle, PLATE, plateSkin, rolled } from './plate.js';

const LIMIT = 135;

// Flat points of a line in the middle behind the hole.
function behindHole(from, to, n = 40) {
  return Array.from({ length: n + 1 }, (_, i) => [from + ((to - from) * i) / n, PLATE.holeY]);
}

// A line of the document along flat points, on both sides of the plate.
function lineAlong(id, name, flat, angles, extra = {}) {
  const time = flat.map(([x, y]) => arrival(x, y));
  const places = [0, PLATE.thickness].map((z) => flat.map(([x, y]) => rolled(x, y, z)));
  const all = places.flat();
  const corner = (pick) => [0, 1, 2].map((k) => pick(...all.map((p) => p[k])));
  const mean = (values) => values.reduce((sum, v) => sum + v, 0) / values.length;
  return {
    id,
    class: name,
    length: flat
      .slice(1)
      .reduce((sum, [x, y], i) => sum + Math.hypot(x - flat[i][0], y - flat[i][1]), 0),
    nodes: all.length,
    smallestAngle: Math.min(...angles),
    meanAngle: mean(angles),
    firstTime: Math.min(...time),
    lastTime: Math.max(...time),
    low: corner(Math.min),
    high: corner(Math.max),
    centroid: [0, 1, 2].map((k) => mean(all.map((p) => p[k]))),
    patch: 'walls',
    carried: [],
    polylines: places.map((points) => ({
      points: floats(points.flat()),
      angle: floats(angles),
      time: floats(time),
    })),
    ...extra,
  };
}

function floats(values) {
  return Buffer.from(Float32Array.from(values).buffer).toString('base64');
}

function integers(values) {
  return Buffer.from(Uint32Array.from(values).buffer).toString('base64');
}

function histogramOf(angles) {
  const edges = Array.from({ length: 37 }, (_, i) => 5 * i);
  const counts = new Array(36).fill(0);
  for (const angle of angles) counts[Math.min(Math.floor(angle / 5), 35)] += 1;
  return { edges, counts };
}

// x from which the streams behind the hole meet in a meld line: 180 - 2 b = 135.
const MELD_FROM = PLATE.holeX + PLATE.hole / Math.sin(Math.PI / 8);

function threeLines() {
  const part = (id, name, from, to, extra) => {
    const flat = behindHole(from, to);
    return lineAlong(
      id,
      name,
      flat,
      flat.map(([x]) => meetingAngle(x)),
      extra,
    );
  };
  const corner = Array.from({ length: 21 }, (_, i) => [112 + 0.2 * i, 8 - 0.3 * i]);
  return [
    part(1, 'weld', 54, MELD_FROM, { carried: carried(181, 196, 204) }),
    part(2, 'meld', MELD_FROM, 112, { carried: carried(204, 212, 219) }),
    lineAlong(
      3,
      'weld',
      corner,
      corner.map((_, i) => 70 + 2 * i),
      { patch: 'vent', carried: carried(190, 191, 192), firstTime: null, lastTime: null },
    ),
  ];
}

function carried(smallest, mean, largest) {
  return [{ name: 'Temperature', smallest, mean, largest }];
}

function plate({ fineness = 24, lines = threeLines(), skin = plateSkin(fineness), ...rest } = {}) {
  const all = lines.flatMap((line) => line.polylines.flatMap((p) => [...numbers(p.angle)]));
  return {
    version: 1,
    title: 'plate_hole.vtu',
    program: 'weldline 0.1.0',
    units: { length: 'mm', time: 's' },
    weldLimit: LIMIT,
    skin: {
      origin: [0, 0, 0],
      points: floats(skin.points),
      triangles: integers(skin.triangles),
      time: floats(skin.time),
      edges: integers(skin.edges),
    },
    lines,
    dropped: { lines: 3, nodes: 9, reason: 'shorter than 2' },
    histogram: histogramOf(all),
    settings: [
      ['Method', '4'],
      ['Gradient', '3, least squares'],
      ['Smoothing before', '2'],
      ['Smoothing after', '2'],
      ['Truncation angle', '179'],
      ['Noise filter', 'length 2'],
    ],
    mesh: [
      ['Cells', '36300'],
      ['Nodes', '45000'],
      ['Hexahedra', '36300'],
      ['Largest non-orthogonality', '42.6°'],
      ['Largest skewness', '0.50'],
      ['Cells reached', '36158 (99.61 %)'],
    ],
    remarks: ['142 cells were never reached: trapped air.'],
    ...rest,
  };
}

function numbers(base64) {
  return new Float32Array(new Uint8Array(Buffer.from(base64, 'base64')).buffer);
}

// A plate whose far end is never reached: no value, or a negative one.
function shortShot() {
  const skin = plateSkin(24);
  skin.time = skin.time.map((time, i) => (time < 100 ? time : i % 2 ? NaN : -1));
  return plate({ skin, lines: threeLines().slice(0, 1) });
}

const HOSTILE = '<script>window.hacked = true</script><img src=x onerror="window.hacked = true">';

function hostile() {
  const [first, ...others] = threeLines();
  const long = `${HOSTILE}${' very-long-name'.repeat(20)}`;
  return plate({
    title: long,
    program: HOSTILE,
    lines: [
      { ...first, patch: long, carried: [{ name: HOSTILE, smallest: 1, mean: 2, largest: 3 }] },
      ...others,
    ],
    settings: [
      [HOSTILE, HOSTILE],
      ['x'.repeat(300), 'y'.repeat(300)],
    ],
    mesh: [[HOSTILE, HOSTILE]],
    remarks: [HOSTILE],
    dropped: { lines: 1, nodes: 2, reason: HOSTILE },
  });
}

function manyLines(count) {
  const lines = Array.from({ length: count }, (_, i) => {
    const [x, y] = [60 + 58 * ((i * 0.618034) % 1), 2 + 56 * (i / count)];
    const flat = Array.from({ length: 30 }, (_unused, k) => [
      x + 0.05 * k,
      y + 0.2 * Math.sin(k / 3),
    ]);
    const angles = flat.map((_unused, k) => (i * 7 + k) % 170);
    return lineAlong(i + 1, i % 3 ? 'weld' : 'meld', flat, angles);
  });
  return plate({ lines });
}

export const samples = {
  plate: () => plate(),
  unitless: () => plate({ units: { length: '', time: '' } }),
  none: () => plate({ lines: [], dropped: { lines: 0, nodes: 0, reason: '' }, remarks: [] }),
  nothing: () =>
    plate({
      lines: [],
      remarks: [],
      settings: [],
      mesh: [],
      histogram: { edges: [], counts: [] },
      skin: { points: [], triangles: [], time: [], edges: [] },
    }),
  shortShot,
  hostile,
  many: () => manyLines(2000),
  big: () => plate({ fineness: 224 }),
};

if (process.argv[1] === new URL(import.meta.url).pathname) {
  process.stdout.write(JSON.stringify(samples[process.argv[2] ?? 'plate']()));
}
