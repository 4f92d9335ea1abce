// Drawings against stored ones. A pixel differs when a channel is more than 24 of 255 away; two
// thousandths of the pixels may, for drawing programs that round edges in another way.

import assert from 'node:assert/strict';
import { existsSync, readFileSync, writeFileSync } from 'node:fs';
import { PNG } from 'pngjs';
import { test } from './harness.js';
import { drawn } from './page.js';
import { difference, pictureOf } from './pixels.js';
import { samples } from './sample.js';

const PICTURES = new URL('pictures/', import.meta.url);
const TOLERANCE = 24;
const SHARE = 0.002;
const SIZE = [420, 560];

const DRAWINGS = {
  plate: async () => {},
  cut: async (page) => {
    await page.getByRole('combobox', { name: 'Cut' }).selectOption('cut in y');
    await page.getByRole('combobox', { name: 'Colours' }).selectOption('10 bands');
  },
  filling: async (page) => {
    await page.locator('.track input').evaluate((slider) => {
      slider.value = 600;
      slider.dispatchEvent(new Event('input'));
    });
  },
  chosen: async (page) => {
    await page.getByRole('button', { name: 'Dark' }).click();
    await page.locator('tr[data-id="1"]').click();
  },
};

export function referenceTests(browser) {
  for (const [name, prepare] of Object.entries(DRAWINGS)) {
    test(`pictures: ${name} looks as it did`, async () => {
      const sample = name === 'filling' ? samples.shortShot() : samples.plate();
      const { page } = await browser.open(sample, { size: SIZE });
      await prepare(page);
      await drawn(page);
      const image = await pictureOf(page);
      const file = new URL(`${name}.png`, PICTURES);
      if (process.env.UPDATE) writeFileSync(file, PNG.sync.write(image, { colorType: 2 }));
      assert.ok(existsSync(file), `no reference ${name}.png`);
      const share = difference(PNG.sync.read(readFileSync(file)), image, TOLERANCE);
      assert.ok(share <= SHARE, `${(100 * share).toFixed(2)} % of the pixels differ`);
      await page.context().close();
    });
  }
}
