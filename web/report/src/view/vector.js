// Vectors of three numbers.

export function dot(a, b) {
  return a[0] * b[0] + a[1] * b[1] + a[2] * b[2];
}

export function cross(a, b) {
  return [a[1] * b[2] - a[2] * b[1], a[2] * b[0] - a[0] * b[2], a[0] * b[1] - a[1] * b[0]];
}

export function minus(a, b) {
  return [a[0] - b[0], a[1] - b[1], a[2] - b[2]];
}

// The same direction with length 1, or null for a vector without direction.
export function unit(v) {
  const length = Math.hypot(...v);
  return length > 1e-12 ? v.map((c) => c / length) : null;
}

// s times a plus t times b.
export function mix(a, s, b, t) {
  return a.map((v, k) => v * s + b[k] * t);
}
