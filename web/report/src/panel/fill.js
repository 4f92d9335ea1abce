// Fill time: a slider whose track is the colour map and its legend, and a button that plays.

import { gradient, TIME_MAP } from '../colours.js';
import { element } from '../dom.js';
import { headed, number, ticks, withUnit } from '../format.js';
import { STEPS } from '../fillcurve.js';

const PLAY_SECONDS = 6;

// onTime(step) is called with the step of the slider; short: the melt does not come everywhere.
// Returns { toggle, setBands }.
export function makeFill(host, { range, curve, unit, short, onTime }) {
  if (!range) {
    host.replaceChildren(element('p', { class: 'quiet' }, 'No point of the skin has a fill time.'));
    return { toggle() {}, setBands() {} };
  }
  const parts = buildFill(unit, range, short);
  host.replaceChildren(parts.head, parts.row, parts.scale);
  let playing = 0;

  const show = () => {
    const step = Number(parts.slider.value);
    const time = range.first + ((range.last - range.first) * step) / STEPS;
    const share = `${(100 * curve.share[step]).toFixed(0)} % of the skin filled`;
    parts.now.textContent = `${withUnit(time, unit)} · ${share}`;
    parts.slider.setAttribute('aria-valuetext', `${withUnit(time, unit)}, ${share}`);
    parts.track.style.setProperty('--done', `${(100 * step) / STEPS}%`);
    onTime(step);
  };
  const stop = () => {
    cancelAnimationFrame(playing);
    playing = 0;
    parts.play.textContent = '▶';
    parts.play.setAttribute('aria-label', 'Play filling');
  };
  const start = () => {
    const from = Number(parts.slider.value) >= STEPS ? 0 : Number(parts.slider.value);
    const begin = performance.now();
    parts.play.textContent = '❚❚';
    parts.play.setAttribute('aria-label', 'Pause filling');
    const advance = (time) => {
      const gone = Math.max(time - begin, 0) / 1000 / PLAY_SECONDS;
      parts.slider.value = String(Math.min(from + Math.round(STEPS * gone), STEPS));
      show();
      if (Number(parts.slider.value) >= STEPS) stop();
      else playing = requestAnimationFrame(advance);
    };
    playing = requestAnimationFrame(advance);
  };
  const toggle = () => (playing ? stop() : start());
  parts.play.addEventListener('click', toggle);
  parts.slider.addEventListener('input', () => {
    stop();
    show();
  });
  const setBands = (bands) => {
    parts.track.style.setProperty('--map', gradient(TIME_MAP, bands));
  };
  setBands(0);
  stop();
  show();
  return { toggle, setBands };
}

function buildFill(unit, range, short) {
  const slider = element('input', {
    type: 'range',
    min: 0,
    max: STEPS,
    step: 1,
    value: STEPS,
    'aria-label': headed('Fill time', unit),
  });
  const play = element('button', { type: 'button', class: 'play' });
  const now = element('output', { class: 'quiet' });
  const track = element('div', { class: 'track' }, slider);
  return {
    slider,
    play,
    now,
    track,
    head: element(
      'div',
      { class: 'legend-head' },
      element('strong', {}, headed('Fill time', unit)),
      swatch('waiting', 'not filled yet'),
      ...(short ? [swatch('never', 'never reached')] : []),
      now,
    ),
    row: element('div', { class: 'fill-row' }, play, track),
    scale: tickRow(range),
  };
}

function swatch(name, text) {
  return element('span', { class: 'quiet' }, element('i', { class: `swatch ${name}` }), ` ${text}`);
}

function tickRow({ first, last }) {
  const row = element('div', { class: 'ticks fill-ticks', 'aria-hidden': 'true' });
  for (const value of ticks(first, last, 5)) {
    const share = last > first ? (value - first) / (last - first) : 0;
    const mark = element('span', {}, number(value));
    mark.style.left = `${100 * share}%`;
    row.append(mark);
  }
  return row;
}
