// Columns of the table of lines: head, value to sort by, and text.

import { degrees, headed, number, whole } from '../format.js';
import { SYMBOLS } from './angles.js';

export function columnsOf(lines, units) {
  return [
    column('#', (line) => line.id, whole),
    { head: 'Kind', value: (line) => line.class, text: (kind) => `${SYMBOLS[kind] ?? ''} ${kind}` },
    column('Smallest angle', (line) => line.smallestAngle, degrees),
    column('Mean angle', (line) => line.meanAngle, degrees),
    column(headed('Length', units.length), (line) => line.length, number),
    column('Nodes', (line) => line.nodes, whole),
    column(headed('Forms from', units.time), (line) => line.firstTime, number),
    column(headed('to', units.time), (line) => line.lastTime, number),
    { head: 'Near patch', value: (line) => line.patch || null, text: (patch) => patch ?? '–' },
    ...carriedColumns(lines),
    ...['x', 'y', 'z'].map((axis, k) =>
      column(headed(`Centre ${axis}`, units.length), (line) => line.centroid[k], number),
    ),
  ];
}

// Fields carried along the lines, in the order in which lines name them.
function carriedColumns(lines) {
  const names = new Set(lines.flatMap((line) => (line.carried ?? []).map((field) => field.name)));
  const kinds = [
    ['smallest', 'smallest'],
    ['mean', 'mean'],
    ['largest', 'largest'],
  ];
  return [...names].flatMap((name) =>
    kinds.map(([key, word]) =>
      column(
        `${name}, ${word}`,
        (line) => (line.carried ?? []).find((field) => field.name === name)?.[key],
        number,
      ),
    ),
  );
}

function column(head, value, text) {
  return { head, value: (line) => value(line) ?? null, text, numeric: true };
}

// Lines in the order of a column; what has no value comes last, up or down.
export function sorted(lines, { value }, upwards) {
  const sign = upwards ? 1 : -1;
  return [...lines].sort((a, b) => {
    const [x, y] = [value(a), value(b)];
    if (x === null || y === null) return (x === null) - (y === null);
    return sign * (typeof x === 'string' ? x.localeCompare(y) : x - y) || a.place - b.place;
  });
}
