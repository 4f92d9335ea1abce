// Weld nodes by meeting angle, as bars in the colours of the lines.

import { ANGLE_MAP, at, FULL_ANGLE } from '../colours.js';
import { element, svgElement } from '../dom.js';
import { ticks, whole } from '../format.js';

const WIDTH = 320;
const HEIGHT = 170;
const LEFT = 40;
const RIGHT = 8;
const TOP = 18;
const BOTTOM = 34;

export function makeHistogram(host, { edges, counts }, limit) {
  const nodes = counts.reduce((sum, count) => sum + count, 0);
  if (nodes === 0) {
    host.replaceChildren(element('p', { class: 'quiet' }, 'No weld nodes.'));
    return;
  }
  const most = Math.max(...counts);
  const rows = ticks(0, most, 3).filter((value) => Number.isInteger(value));
  const x = (angle) => LEFT + ((WIDTH - LEFT - RIGHT) * angle) / FULL_ANGLE;
  const y = (count) => HEIGHT - BOTTOM - ((HEIGHT - TOP - BOTTOM) * count) / most;
  const welds = counts.reduce((sum, count, i) => sum + (edges[i + 1] <= limit ? count : 0), 0);
  const name = `${whole(nodes)} weld nodes by meeting angle; ${whole(welds)} below ${limit}°`;
  host.replaceChildren(
    svgElement(
      'svg',
      {
        class: 'histogram',
        viewBox: `0 0 ${WIDTH} ${HEIGHT}`,
        role: 'img',
        'aria-label': name,
      },
      ...grid(rows, x, y),
      ...bars(edges, counts, x, y),
      ...limitMark(limit, x, y(most)),
      ...axis(x),
    ),
  );
}

function bars(edges, counts, x, y) {
  return counts.map((count, i) =>
    svgElement(
      'rect',
      {
        class: 'bar',
        x: x(edges[i]) + 0.4,
        y: y(count),
        width: Math.max(x(edges[i + 1]) - x(edges[i]) - 0.8, 0.4),
        height: y(0) - y(count),
        fill: at(ANGLE_MAP, (edges[i] + edges[i + 1]) / 2 / FULL_ANGLE),
      },
      svgElement('title', {}, `${edges[i]}° to ${edges[i + 1]}°: ${whole(count)} nodes`),
    ),
  );
}

// Rows are counts of nodes.
function grid(rows, x, y) {
  return rows.flatMap((value) => [
    svgElement('line', { class: 'grid', x1: x(0), x2: x(FULL_ANGLE), y1: y(value), y2: y(value) }),
    svgElement(
      'text',
      { x: LEFT - 5, y: y(value), dy: '0.35em', 'text-anchor': 'end' },
      whole(value),
    ),
  ]);
}

function limitMark(limit, x, top) {
  return [
    svgElement('line', {
      class: 'limit',
      x1: x(limit),
      x2: x(limit),
      y1: top - 4,
      y2: HEIGHT - BOTTOM,
    }),
    svgElement('text', { x: x(limit) - 4, y: top - 7, 'text-anchor': 'end' }, 'weld'),
    svgElement('text', { x: x(limit) + 4, y: top - 7 }, 'meld'),
  ];
}

function axis(x) {
  const base = HEIGHT - BOTTOM;
  return [
    ...[0, 45, 90, 135, 180].map((angle) =>
      svgElement(
        'text',
        {
          x: x(angle),
          y: base + 14,
          'text-anchor': angle === FULL_ANGLE ? 'end' : 'middle',
        },
        `${angle}°`,
      ),
    ),
    svgElement(
      'text',
      { x: x(FULL_ANGLE / 2), y: base + 29, 'text-anchor': 'middle' },
      'meeting angle of weld nodes',
    ),
  ];
}
