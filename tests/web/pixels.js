// What is to be seen in a picture.

import { PNG } from 'pngjs';

// The drawing of the part alone, without what lies over it.
export async function pictureOf(page) {
  const address = await page.evaluate(() => window.weldlineReport.scene.picture());
  return PNG.sync.read(Buffer.from(address.split(',')[1], 'base64'));
}

function each(image, look) {
  for (let i = 0; i < image.data.length; i += 4) {
    look(image.data[i], image.data[i + 1], image.data[i + 2], i / 4);
  }
}

export function count(image, test) {
  let found = 0;
  each(image, (r, g, b) => {
    if (test(r, g, b)) found += 1;
  });
  return found;
}

// Lines are warm: much red, less blue. Fill times and everything grey are not.
export function isLine(r, g, b) {
  return r > 90 && r > b + 45 && r > g + 18;
}

// The melt is cool: blue and green more than red. Backgrounds and greys are nearly even.
export function isMelt(r, g, b) {
  return Math.max(g, b) > r + 34;
}

export function colours(image) {
  const found = new Set();
  each(image, (r, g, b) => found.add((r << 16) | (g << 8) | b));
  return found.size;
}

// First and last column with a pixel that passes the test.
export function columns(image, test) {
  let [low, high] = [Infinity, -Infinity];
  each(image, (r, g, b, place) => {
    if (!test(r, g, b)) return;
    low = Math.min(low, place % image.width);
    high = Math.max(high, place % image.width);
  });
  return [low, high];
}

// Share of pixels that differ by more than `tolerance` in a channel.
export function difference(a, b, tolerance) {
  if (a.width !== b.width || a.height !== b.height) return 1;
  let different = 0;
  for (let i = 0; i < a.data.length; i += 4) {
    const apart = [0, 1, 2].some((k) => Math.abs(a.data[i + k] - b.data[i + k]) > tolerance);
    if (apart) different += 1;
  }
  return different / (a.width * a.height);
}
