// The data document of the page: JSON with arrays as base64 of little-endian numbers.

export const VERSION = 1;

const PARTS = [
  'title',
  'units',
  'weldLimit',
  'skin',
  'lines',
  'histogram',
  'settings',
  'mesh',
  'remarks',
];

export class DataError extends Error {}

// Reads the document and turns its arrays into typed arrays; throws a DataError in plain words.
export function readDocument(text) {
  if (text.trim().startsWith('@')) {
    throw new DataError('This is the empty template of the report: it holds no result.');
  }
  let document;
  try {
    document = JSON.parse(text);
  } catch {
    throw new DataError('The data in this report are damaged: they are not valid JSON.');
  }
  if (document?.version !== VERSION) {
    throw new DataError(
      `This page reads data of version ${VERSION}, but holds version ${document?.version}.`,
    );
  }
  for (const part of PARTS) {
    if (!(part in document)) throw damaged(part, 'missing');
  }
  return { ...document, skin: skinOf(document.skin), lines: document.lines.map(lineOf) };
}

function skinOf(skin) {
  const points = floats(skin.points, 'skin.points', 3);
  const count = points.length / 3;
  const time = floats(skin.time, 'skin.time', 1);
  if (time.length !== count) {
    throw damaged('skin.time', `${count} values are wanted, one a point; found ${time.length}`);
  }
  return {
    origin: skin.origin,
    points,
    time,
    triangles: indices(skin.triangles, 'skin.triangles', 3, count),
    edges: indices(skin.edges, 'skin.edges', 2, count),
  };
}

function lineOf(line, place) {
  return { ...line, place, polylines: line.polylines.map((p) => polylineOf(p, line.id)) };
}

function polylineOf(polyline, id) {
  const name = `line ${id}`;
  const points = floats(polyline.points, `${name}, points`, 3);
  const angle = floats(polyline.angle, `${name}, angle`, 1);
  const time = floats(polyline.time, `${name}, time`, 1);
  const count = points.length / 3;
  if (angle.length !== count || time.length !== count) {
    throw damaged(name, `${count} points, ${angle.length} angles and ${time.length} times`);
  }
  return { points, angle, time };
}

function floats(text, name, group) {
  return new Float32Array(bytes(text, name, 4 * group));
}

function indices(text, name, group, limit) {
  const values = new Uint32Array(bytes(text, name, 4 * group));
  for (const value of values) {
    if (value >= limit) throw damaged(name, `point ${value} of ${limit} does not exist`);
  }
  return values;
}

function bytes(text, name, group) {
  let binary;
  try {
    binary = atob(text);
  } catch {
    throw damaged(name, 'not base64');
  }
  if (binary.length % group !== 0) {
    throw damaged(name, `${binary.length} bytes are no multiple of ${group}`);
  }
  const found = new Uint8Array(binary.length);
  for (let i = 0; i < binary.length; i += 1) found[i] = binary.charCodeAt(i);
  return found.buffer;
}

function damaged(name, why) {
  return new DataError(`The data in this report are damaged: ${name}: ${why}.`);
}
