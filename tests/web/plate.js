// A part that can be checked by hand: a plate of 120 by 60 by 3 with a round hole of radius 9 at
// (45, 30), filled from the point (0, 30) at speed 1, rolled up lightly about its long axis. Behind
// the hole the streams meet on the middle line; at x the angle of either path to that line is
// b = asin(9 / (x - 45)), the meeting angle 180 - 2 b.

export const PLATE = { length: 120, width: 60, thickness: 3, hole: 9, holeX: 45, holeY: 30 };
const ROLL = 55;

// Time at which the melt is at (x, y): the shortest way from the gate round the hole.
export function arrival(x, y) {
  const [px, py] = [x - PLATE.holeX, y - PLATE.holeY];
  const straight = Math.hypot(x, y - PLATE.holeY);
  const along = (-PLATE.holeX * (px + PLATE.holeX)) / straight ** 2;
  const share = Math.min(Math.max(-along, 0), 1);
  const nearest = Math.hypot(-PLATE.holeX + share * (px + PLATE.holeX), share * py);
  if (straight === 0 || nearest >= PLATE.hole - 1e-9) return straight;
  const [gate, far] = [PLATE.holeX, Math.max(Math.hypot(px, py), PLATE.hole)];
  const between = Math.PI - Math.abs(Math.atan2(py, px));
  const arc = between - Math.acos(PLATE.hole / gate) - Math.acos(PLATE.hole / far);
  return (
    Math.sqrt(gate ** 2 - PLATE.hole ** 2) +
    Math.sqrt(far ** 2 - PLATE.hole ** 2) +
    PLATE.hole * Math.max(arc, 0)
  );
}

export function meetingAngle(x) {
  return 180 - (2 * Math.asin(PLATE.hole / Math.max(x - PLATE.holeX, PLATE.hole)) * 180) / Math.PI;
}

// The place of (x, y) at height z of the rolled plate.
export function rolled(x, y, z) {
  const turn = (y - PLATE.holeY) / ROLL;
  return [x, PLATE.holeY + (ROLL + z) * Math.sin(turn), (ROLL + z) * Math.cos(turn) - ROLL];
}

// Blocks of the plate as maps from the unit square, and how much of the fineness each side gets.
const RIM = 2 * Math.PI;
const BLOCKS = [
  { at: (u, v) => [15 * u, 60 * v], share: [0.25, 1] },
  { at: (u, v) => [75 + 45 * u, 60 * v], share: [0.75, 1] },
  { at: aroundHole, share: [3, 0.5] },
];

// u runs round the hole, v from its edge to the square of side 60 about it.
function aroundHole(u, v) {
  const [c, s] = [Math.cos(RIM * u), Math.sin(RIM * u)];
  const reach = 30 / Math.max(Math.abs(c), Math.abs(s));
  const radius = PLATE.hole + (reach - PLATE.hole) * v;
  return [PLATE.holeX + radius * c, PLATE.holeY + radius * s];
}

class Skin {
  points = [];
  time = [];
  triangles = [];
  edges = [];

  add(x, y, z) {
    this.points.push(...rolled(x, y, z));
    this.time.push(arrival(x, y));
    return this.time.length - 1;
  }

  // A grid of nu by nv cells; point(u, v) gives flat coordinates; other: the other side is out.
  grid(nu, nv, point, other) {
    const first = this.time.length;
    for (let j = 0; j <= nv; j += 1) {
      for (let i = 0; i <= nu; i += 1) this.add(...point(i / nu, j / nv));
    }
    for (let j = 0; j < nv; j += 1) {
      for (let i = 0; i < nu; i += 1) {
        const a = first + j * (nu + 1) + i;
        const [b, c, d] = [a + 1, a + nu + 2, a + nu + 1];
        this.triangles.push(...(other ? [a, c, b, a, d, c] : [a, b, c, a, c, d]));
      }
    }
    return first;
  }

  // A wall of the plate along a curve, with its two sharp edges.
  wall(n, curve) {
    const first = this.grid(n, 2, (u, v) => [...curve(u), PLATE.thickness * v]);
    for (const row of [0, 2]) {
      for (let i = 0; i < n; i += 1) {
        const a = first + row * (n + 1) + i;
        this.edges.push(a, a + 1);
      }
    }
  }
}

export function plateSkin(fineness) {
  const skin = new Skin();
  for (const { at, share } of BLOCKS) {
    const [nu, nv] = share.map((s) => Math.max(2, Math.round(s * fineness)));
    for (const z of [0, PLATE.thickness]) {
      const outwards = z > 0 === (at === aroundHole);
      skin.grid(nu, nv, (u, v) => [...at(u, v), z], outwards);
    }
  }
  const n = 2 * fineness;
  skin.wall(n, (u) => [120 * u, 0]);
  skin.wall(n, (u) => [120, 60 * u]);
  skin.wall(n, (u) => [120 * (1 - u), 60]);
  skin.wall(n, (u) => [0, 60 * (1 - u)]);
  skin.wall(n, (u) => aroundHole(1 - u, 0));
  return skin;
}
