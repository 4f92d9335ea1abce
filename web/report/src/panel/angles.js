// Legend of the lines: the colours of the meeting angle, and how weld and meld lines look.

import { ANGLE_MAP, FULL_ANGLE, gradient } from '../colours.js';
import { element, svgElement } from '../dom.js';

export const SYMBOLS = { weld: '●', meld: '◇' };

export function makeAngleLegend(host, limit) {
  const bar = element('div', { class: 'angle-bar' });
  bar.style.background = gradient(ANGLE_MAP);
  const mark = element('i', { class: 'limit' });
  mark.style.left = `${(100 * limit) / FULL_ANGLE}%`;
  bar.append(mark);
  const scale = element('div', { class: 'ticks', 'aria-hidden': 'true' });
  for (const value of [0, 45, 90, 135, 180]) {
    const tick = element('span', {}, `${value}°`);
    tick.style.left = `${(100 * value) / FULL_ANGLE}%`;
    scale.append(tick);
  }
  host.replaceChildren(
    element(
      'div',
      { class: 'legend-head' },
      element('strong', {}, 'Meeting angle'),
      element(
        'span',
        { class: 'samples quiet' },
        sample('weld', `below ${limit}°`),
        sample('meld', `from ${limit}°`),
      ),
    ),
    bar,
    scale,
  );
}

function sample(name, meaning) {
  const stroke = svgElement(
    'svg',
    { class: 'sample', viewBox: '0 0 26 8', 'aria-hidden': 'true' },
    svgElement('line', { x1: 1, y1: 4, x2: 25, y2: 4, class: `stroke-${name}` }),
  );
  return element(
    'span',
    { title: `${name} line: ${meaning}` },
    stroke,
    ` ${SYMBOLS[name]} ${name}`,
  );
}
