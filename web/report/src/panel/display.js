// What the picture shows: bands, lines through the part, kinds of lines, and the cut.

import { element } from '../dom.js';
import { withUnit } from '../format.js';
import { SYMBOLS } from './angles.js';

const BANDS = [
  ['smooth', 0],
  ['10 bands', 10],
  ['20 bands', 20],
];
const CUTS = [
  ['no cut', ''],
  ['cut in x', '0'],
  ['cut in y', '1'],
  ['cut in z', '2'],
];
const CUT_STEPS = 200;

// frame and origin: where the part is; counts: { weld, meld }; through: whether lines show through
// the part at first; on: what happens at a change.
export function makeDisplay(host, { frame, origin, unit, counts, through: isThrough, on }) {
  const bands = choice('Colours', BANDS, (value) => on.bands(Number(value)));
  const through = tick('Show lines through the part', isThrough, on.showThrough);
  const kinds = ['weld', 'meld'].map((name) =>
    tick(`${SYMBOLS[name]} ${name} lines (${counts[name]})`, true, (shown) => on.kind(name, shown)),
  );
  host.replaceChildren(bands, through, ...kinds, ...cutParts(frame, origin, unit, on.cut));
}

function cutParts(frame, origin, unit, onCut) {
  const place = element('output', { class: 'quiet' });
  const slider = element('input', {
    type: 'range',
    min: 0,
    max: CUT_STEPS,
    value: CUT_STEPS / 2,
    'aria-label': 'Place of the cut',
  });
  const row = element('div', { class: 'cut-row' }, slider, place);
  const other = tick('Keep the other side', false, () => show());
  let axis = null;
  const axes = choice('Cut', CUTS, (value) => {
    axis = value === '' ? null : Number(value);
    show();
  });
  function show() {
    const share = Number(slider.value) / CUT_STEPS;
    const low = axis === null ? 0 : frame.low[axis];
    const high = axis === null ? 0 : frame.high[axis];
    const text =
      axis === null
        ? ''
        : `${'xyz'[axis]} = ${withUnit(origin[axis] + low + (high - low) * share, unit)}`;
    place.textContent = text;
    slider.setAttribute('aria-valuetext', text);
    for (const part of [row, other]) part.hidden = axis === null;
    onCut(axis, share, other.querySelector('input').checked);
  }
  slider.addEventListener('input', show);
  show();
  return [axes, row, other];
}

function choice(name, options, onChange) {
  const change = (event) => onChange(event.target.value);
  const list = element(
    'select',
    { 'aria-label': name, onchange: change },
    ...options.map(([text, value]) => element('option', { value }, text)),
  );
  return element('label', { class: 'choice' }, element('span', {}, name), list);
}

function tick(name, checked, onChange) {
  const box = element('input', {
    type: 'checkbox',
    checked,
    onchange: (event) => onChange(event.target.checked),
  });
  return element('label', { class: 'tick' }, box, element('span', {}, name));
}
