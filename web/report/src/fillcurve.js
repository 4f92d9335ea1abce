// Fill times on a scale of 0 (first) to 1 (last), and how much of the skin is filled when.

export const STEPS = 1000;

// The melt reached what has a time that is a number and not negative.
export function reached(time) {
  return time >= 0;
}

// First and last time of skin and lines together: { first, last }, or null where nothing
// is reached.
export function timeRange(skin, lines) {
  let first = Infinity;
  let last = -Infinity;
  const look = (times) => {
    for (const time of times) {
      if (!reached(time)) continue;
      if (time < first) first = time;
      if (time > last) last = time;
    }
  };
  look(skin.time);
  for (const line of lines) line.polylines.forEach((polyline) => look(polyline.time));
  return first <= last ? { first, last } : null;
}

// Share of the range at a time; a part that fills in one moment is at 0.
export function shareOf(time, range) {
  return range.last > range.first ? (time - range.first) / (range.last - range.first) : 0;
}

// Per step of the slider, the triangles and the area filled by then. A triangle is filled when its
// last point is; one with a point that is never reached never is.
export function fillCurve(skin, range) {
  const count = new Uint32Array(STEPS + 1);
  const area = new Float64Array(STEPS + 1);
  let whole = 0;
  for (let t = 0; t < skin.triangles.length; t += 3) {
    const corners = skin.triangles.subarray(t, t + 3);
    const size = areaOf(skin.points, corners);
    whole += size;
    const step = range ? lastStep(skin.time, corners, range) : Infinity;
    if (step > STEPS) continue;
    count[step] += 1;
    area[step] += size;
  }
  for (let i = 1; i <= STEPS; i += 1) {
    count[i] += count[i - 1];
    area[i] += area[i - 1];
  }
  return { count, share: area.map((a) => (whole > 0 ? a / whole : 0)) };
}

function lastStep(time, corners, range) {
  let step = 0;
  for (const point of corners) {
    if (!reached(time[point])) return Infinity;
    step = Math.max(step, Math.ceil(shareOf(time[point], range) * STEPS - 1e-6));
  }
  return step;
}

function areaOf(points, [a, b, c]) {
  const ux = points[3 * b] - points[3 * a];
  const uy = points[3 * b + 1] - points[3 * a + 1];
  const uz = points[3 * b + 2] - points[3 * a + 2];
  const vx = points[3 * c] - points[3 * a];
  const vy = points[3 * c + 1] - points[3 * a + 1];
  const vz = points[3 * c + 2] - points[3 * a + 2];
  return Math.hypot(uy * vz - uz * vy, uz * vx - ux * vz, ux * vy - uy * vx) / 2;
}
