// Numbers as an engineer writes them: four digits that count, no trailing zeros.

export const NOTHING = '–';

export function number(value, digits = 4) {
  if (!Number.isFinite(value)) return NOTHING;
  if (value === 0) return '0';
  const size = Math.abs(value);
  const text = size >= 1e6 || size < 1e-4 ? exponential(value, digits) : plain(value, digits);
  return text.replace('-', '−');
}

function plain(value, digits) {
  const decimals = Math.max(0, digits - 1 - Math.floor(Math.log10(Math.abs(value))));
  const text = value.toFixed(Math.min(decimals, 12));
  return text.includes('.') ? text.replace(/\.?0+$/, '') : text;
}

function exponential(value, digits) {
  const [mantissa, exponent] = value.toExponential(digits - 1).split('e');
  return `${mantissa.replace(/\.?0+$/, '')}e${Number(exponent)}`;
}

export function whole(value) {
  return Number.isFinite(value) ? value.toLocaleString('en').replaceAll(',', ' ') : NOTHING;
}

// Degrees with one decimal, so that columns line up.
export function degrees(value) {
  return Number.isFinite(value) ? `${value.toFixed(1)}°` : NOTHING;
}

// "3.2 mm", or the number alone where the data set did not say its unit.
export function withUnit(value, unit, digits) {
  const text = number(value, digits);
  return unit && text !== NOTHING ? `${text} ${unit}` : text;
}

// "Length [mm]" or "Length".
export function headed(name, unit) {
  return unit ? `${name} [${unit}]` : name;
}

// Values between low and high at multiples of 1, 2 or 5 times a power of ten.
export function ticks(low, high, wanted) {
  const span = high - low;
  if (!(span > 0)) return [low];
  const rough = span / wanted;
  const power = 10 ** Math.floor(Math.log10(rough));
  const step = power * ([1, 2, 5].find((s) => s * power >= rough) ?? 10);
  const found = [];
  for (let k = Math.ceil(low / step - 1e-9) + 0; k * step <= high + step * 1e-9; k += 1) {
    found.push(k * step);
  }
  return found;
}
