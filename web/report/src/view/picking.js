// Which line a click means: the one drawn nearest to it, within reach; of two at the same place,
// the nearer one.

const REACH = 9;

// at: pixels from the middle; shown(place): whether the line at this place of the list is drawn.
export function lineAt(at, polylinesOfLines, camera, shown) {
  let best = { place: null, score: REACH };
  polylinesOfLines.forEach((polylines, place) => {
    if (!shown(place)) return;
    for (const { points } of polylines) {
      const score = distance(at, points, camera);
      if (score < best.score) best = { place, score };
    }
  });
  return best.place;
}

// Distance on the screen to the polyline, less up to half a pixel for what is nearer to the eye.
function distance(at, points, camera) {
  let least = Infinity;
  let last = null;
  for (let i = 0; i < points.length; i += 3) {
    const here = camera.project([points[i], points[i + 1], points[i + 2]]);
    least = Math.min(least, toSegment(at, last ?? here, here) - 0.5 * here[2]);
    last = here;
  }
  return least;
}

function toSegment(at, a, b) {
  const along = [b[0] - a[0], b[1] - a[1]];
  const square = along[0] ** 2 + along[1] ** 2;
  const share =
    square > 0
      ? Math.min(Math.max(((at[0] - a[0]) * along[0] + (at[1] - a[1]) * along[1]) / square, 0), 1)
      : 0;
  return Math.hypot(at[0] - a[0] - share * along[0], at[1] - a[1] - share * along[1]);
}
