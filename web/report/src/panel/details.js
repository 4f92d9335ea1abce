// Summary, settings, mesh quality and remarks.

import { byId, element } from '../dom.js';
import { degrees, number, whole, withUnit } from '../format.js';
import { SYMBOLS } from './angles.js';

export function makeSummary(host, { lines, units }, range) {
  const count = (name) => lines.filter((line) => line.class === name).length;
  const smallest = Math.min(...lines.map((line) => line.smallestAngle ?? Infinity));
  const length = lines.reduce((sum, line) => sum + (line.length ?? 0), 0);
  host.replaceChildren(
    fact('Weld lines', `${SYMBOLS.weld} ${whole(count('weld'))}`),
    fact('Meld lines', `${SYMBOLS.meld} ${whole(count('meld'))}`),
    fact('Smallest angle', degrees(smallest)),
    fact('Length of all lines', withUnit(length, units.length)),
    fact('Fill time', range ? withUnit(range.last, units.time) : '–'),
  );
}

function fact(name, value) {
  return element(
    'div',
    { class: 'fact' },
    element('span', { class: 'quiet' }, name),
    element('strong', {}, value),
  );
}

// What stands above the table: what is missing in it, and what was left out.
export function linesNote({ lines, dropped, weldLimit }) {
  const left =
    dropped?.lines > 0
      ? `${whole(dropped.lines)} ${dropped.lines === 1 ? 'line' : 'lines'} with ` +
        `${whole(dropped.nodes)} nodes left out: ${dropped.reason}.`
      : '';
  const none =
    lines.length === 0
      ? 'No weld lines: nowhere do melt streams meet at an angle that counts.'
      : `Weld lines meet below ${weldLimit}°, meld lines from there on.`;
  return [none, left].filter(Boolean).join(' ');
}

// Rows of [name, value] as a table.
export function makePairs(host, pairs) {
  host.replaceChildren(
    pairs.length === 0
      ? element('p', { class: 'quiet' }, 'Nothing is recorded.')
      : element(
          'table',
          { class: 'pairs' },
          element(
            'tbody',
            {},
            ...pairs.map(([name, value]) =>
              element(
                'tr',
                {},
                element('th', { scope: 'row' }, name),
                element('td', {}, textOf(value)),
              ),
            ),
          ),
        ),
  );
}

function textOf(value) {
  return typeof value === 'number' ? number(value, 6) : String(value ?? '–');
}

export function makeRemarks(remarks) {
  byId('remarks-panel').hidden = remarks.length === 0;
  byId('remarks').replaceChildren(...remarks.map((remark) => element('li', {}, remark)));
}

// Title and program; the unit's absence is told once.
export function makeHead({ title, program, units }) {
  document.title = `${title} – weld lines`;
  byId('title').textContent = title;
  byId('title').title = title;
  const open = [
    ['length', 'lengths'],
    ['time', 'times'],
  ].filter(([key]) => !units[key]);
  const note =
    open.length > 0
      ? `${open.map(([, name]) => name).join(' and ')} in the data set's own unit`
      : '';
  byId('program').textContent = [program, note].filter(Boolean).join(' · ');
}
