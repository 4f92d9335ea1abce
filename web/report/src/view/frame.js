// The part in scene units: its middle in the origin, its diagonal 1. All thicknesses, distances and
// depths of the picture are then the same for a gear and for a bumper.

// { middle, size, low, high }: low and high corner relative to the skin's origin.
export function frameOf(skin, lines) {
  const low = [Infinity, Infinity, Infinity];
  const high = [-Infinity, -Infinity, -Infinity];
  const look = (points) => {
    for (let i = 0; i < points.length; i += 3) {
      for (let k = 0; k < 3; k += 1) {
        const value = points[i + k];
        if (value < low[k]) low[k] = value;
        if (value > high[k]) high[k] = value;
      }
    }
  };
  look(skin.points);
  for (const line of lines) line.polylines.forEach((polyline) => look(polyline.points));
  if (low[0] > high[0]) return { middle: [0, 0, 0], size: 1, low: [0, 0, 0], high: [0, 0, 0] };
  const middle = low.map((l, k) => (l + high[k]) / 2);
  const size = Math.hypot(...low.map((l, k) => high[k] - l)) || 1;
  return { middle, size, low, high };
}

export function toScene(points, frame) {
  const moved = new Float32Array(points.length);
  for (let i = 0; i < points.length; i += 1) {
    moved[i] = (points[i] - frame.middle[i % 3]) / frame.size;
  }
  return moved;
}

// Corners of the part in the scene, eight points.
export function corners(frame) {
  const found = [];
  for (let i = 0; i < 8; i += 1) {
    found.push(
      [0, 1, 2].map((k) => {
        const value = (i >> k) & 1 ? frame.high[k] : frame.low[k];
        return (value - frame.middle[k]) / frame.size;
      }),
    );
  }
  return found;
}
