// Documents that are empty, hostile or large.

import assert from 'node:assert/strict';
import { test } from './harness.js';
import { drawn } from './page.js';
import { count, difference, isLine, isMelt, pictureOf } from './pixels.js';
import { samples } from './sample.js';

export function hardTests(browser) {
  test('hard: no lines: one sentence, the part is drawn', async () => {
    const { page, said } = await browser.open(samples.none());
    await drawn(page);
    assert.deepEqual(said, []);
    assert.match(await page.textContent('#lines-note'), /^No weld lines: /);
    assert.equal(await page.locator('.lines table').count(), 0);
    assert.equal(await page.textContent('#histogram'), 'No weld nodes.');
    assert.equal(await page.isVisible('#remarks-panel'), false);
    const image = await pictureOf(page);
    assert.ok(count(image, isMelt) > 10000);
    assert.equal(count(image, isLine), 0);
    await page.context().close();
  });

  test('hard: nothing at all: sentences, no message', async () => {
    const { page, said } = await browser.open(samples.nothing());
    assert.deepEqual(said, []);
    assert.equal(await page.textContent('#no-picture'), 'The result holds no skin to draw.');
    assert.equal(await page.textContent('#settings'), 'Nothing is recorded.');
    await page.context().close();
  });

  test('hard: names are text, whatever they look like', async () => {
    const { page, said, asked } = await browser.open(samples.hostile());
    await drawn(page);
    assert.equal(await page.evaluate(() => window.hacked), undefined);
    assert.deepEqual(said, []);
    assert.equal(asked.length, 1);
    assert.match(
      await page.textContent('h1'),
      /^<script>window\.hacked = true<\/script><img src=x/,
    );
    assert.equal(await page.locator('img').count(), 1);
    assert.match(await page.textContent('#settings'), /<script>/);
    await page.context().close();
  });

  test('hard: lines without times and lines of one point', async () => {
    const document = samples.plate();
    const [line] = document.lines;
    const bytes = (values) => Buffer.from(new Float32Array(values).buffer).toString('base64');
    document.lines = [
      {
        ...line,
        firstTime: null,
        lastTime: null,
        polylines: [
          { points: bytes([100, 30, 3.1]), angle: bytes([5]), time: bytes([NaN]) },
          {
            points: bytes([90, 30, 3.1, 90, 30, 3.1]),
            angle: bytes([5, 5]),
            time: bytes([-1, -1]),
          },
          { points: '', angle: '', time: '' },
        ],
      },
    ];
    const { page, said } = await browser.open(document);
    await page.locator('.views button', { hasText: '+z' }).click();
    await drawn(page);
    assert.deepEqual(said, []);
    assert.ok(count(await pictureOf(page), isLine) > 20, 'dots');
    const shown = () => page.evaluate(() => window.weldlineReport.counts().linesShown);
    assert.equal(await shown(), 1);
    await page.locator('.track input').press('ArrowLeft');
    await drawn(page);
    assert.equal(await shown(), 0);
    assert.equal(count(await pictureOf(page), isLine), 0);
    await page.context().close();
  });

  test('hard: 2,000 lines', async () => {
    const { page, said } = await browser.open(samples.many());
    await drawn(page);
    assert.equal(await page.locator('tbody tr[data-id]').count(), 2000);
    await page.locator('thead button', { hasText: 'Mean angle' }).click();
    await page.locator('tr[data-id="1999"]').click();
    await drawn(page);
    assert.equal(await page.evaluate(() => window.weldlineReport.counts().chosen), 1999);
    assert.ok(count(await pictureOf(page), isLine) > 1000);
    assert.deepEqual(said, []);
    await page.context().close();
  });

  test('hard: half a million triangles load, turn and fill', async () => {
    const document = samples.big();
    const begin = Date.now();
    const { page, said } = await browser.open(document);
    await drawn(page);
    const counts = await page.evaluate(() => window.weldlineReport.counts());
    assert.ok(
      counts.triangles >= 500000 && counts.filled === counts.triangles,
      JSON.stringify(counts),
    );
    const before = await pictureOf(page);
    assert.ok(count(before, isMelt) > 10000);
    console.log(`        loaded and drawn after ${((Date.now() - begin) / 1000).toFixed(1)} s`);
    for (let i = 0; i < 3; i += 1) await page.locator('#canvas').press('ArrowRight');
    const turned = difference(before, await pictureOf(page), 24);
    assert.ok(turned > 0.05, `${turned} of the picture changed`);
    await page.locator('.track input').press('Home');
    await drawn(page);
    assert.ok(count(await pictureOf(page), isMelt) < 500);
    assert.deepEqual(said, []);
    await page.context().close();
  });
}
