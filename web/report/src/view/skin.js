// The skin of the part and its edges.

import { reached, shareOf } from '../fillcurve.js';
import { drawable, polyData } from './drawable.js';
import edgeFragment from './edge.frag.glsl?raw';
import edgeVertex from './edge.vert.glsl?raw';
import { toScene } from './frame.js';
import fragment from './skin.frag.glsl?raw';
import vertex from './skin.vert.glsl?raw';

// Share of the fill time per point, and 1 or 0 for reached or never.
function fillAttribute(time, range) {
  const values = new Float32Array(2 * time.length);
  for (let i = 0; i < time.length; i += 1) {
    const comes = range !== null && reached(time[i]);
    values[2 * i] = comes ? shareOf(time[i], range) : 0;
    values[2 * i + 1] = comes ? 1 : 0;
  }
  return values;
}

// Actors of skin and edges; `state` is read at every drawing.
export function skinActors(skin, range, frame, state) {
  const points = toScene(skin.points, frame);
  const surface = polyData({
    points,
    triangles: skin.triangles,
    attributes: { fill: { values: fillAttribute(skin.time, range), components: 2 } },
  });
  const actors = [
    drawable(surface, { vertex, fragment }, () => ({
      mapColours: state.timeColours,
      now: state.now,
      bands: state.bands,
      cut: state.cut,
      cutting: state.cutting ? 1 : 0,
      waiting: state.theme.waiting,
      never: state.theme.never,
    })),
  ];
  if (skin.edges.length > 0) {
    const outline = polyData({ points, segments: skin.edges });
    const actor = drawable(outline, { vertex: edgeVertex, fragment: edgeFragment }, () => ({
      cut: state.cut,
      ink: state.theme.edge,
    }));
    actors.push(actor);
  }
  return actors;
}
