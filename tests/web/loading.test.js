// The page comes up: silent, alone, drawn, and complete without a picture.

import assert from 'node:assert/strict';
import { readFileSync } from 'node:fs';
import { test } from './harness.js';
import { drawn, template } from './page.js';
import { colours, count, isLine, isMelt, pictureOf } from './pixels.js';
import { samples } from './sample.js';

export function loadingTests(browser) {
  test('loading: no message on the console and no request but the page', async () => {
    const { page, said, asked, file } = await browser.open(samples.plate());
    await drawn(page);
    assert.deepEqual(said, []);
    assert.deepEqual(asked, [`file://${file}`]);
    await page.context().close();
  });

  test('loading: the part is drawn with melt and lines', async () => {
    const { page } = await browser.open(samples.plate());
    await drawn(page);
    const image = await pictureOf(page);
    const all = image.width * image.height;
    assert.ok(colours(image) > 500, `${colours(image)} colours`);
    const melt = count(image, isMelt) / all;
    assert.ok(melt > 0.1 && melt < 0.6, `${melt} of the picture is melt`);
    assert.ok(count(image, isLine) > 200, 'lines');
    await page.context().close();
  });

  test('loading: title, facts, tables and remarks are those of the document', async () => {
    const { page } = await browser.open(samples.plate());
    assert.equal(await page.title(), 'plate_hole.vtu – weld lines');
    assert.equal(await page.textContent('h1'), 'plate_hole.vtu');
    assert.equal(await page.textContent('#program'), 'weldline 0.1.0');
    const facts = await page.locator('.fact strong').allTextContents();
    // Length: 9 / sin(22.5 degrees) - 9, from there to 112, and 20 pieces of (0.2, -0.3).
    assert.deepEqual(facts, ['● 2', '◇ 1', '0.0°', '65.21 mm', '123.7 s']);
    assert.equal(await page.locator('#settings tr').count(), 6);
    assert.equal(await page.locator('#mesh tr').count(), 6);
    assert.equal(await page.textContent('#remarks'), '142 cells were never reached: trapped air.');
    assert.match(
      await page.textContent('#lines-note'),
      /3 lines with 9 nodes left out: shorter than 2\./,
    );
    assert.equal(await page.locator('.histogram .bar').count(), 36);
    await page.context().close();
  });

  test('loading: without units the page says so and shows bare numbers', async () => {
    const { page } = await browser.open(samples.unitless());
    assert.match(
      await page.textContent('#program'),
      /lengths and times in the data set's own unit/,
    );
    assert.match(await page.textContent('.fill strong'), /^Fill time$/);
    assert.ok((await page.locator('th').allTextContents()).includes('Length'));
    await page.context().close();
  });

  test('loading: without WebGL one sentence stands for the picture, the tables stay', async () => {
    const { page, said } = await browser.open(samples.plate(), {
      before: () => {
        const real = HTMLCanvasElement.prototype.getContext;
        HTMLCanvasElement.prototype.getContext = function context(kind, ...more) {
          return kind.startsWith('webgl') ? null : real.call(this, kind, ...more);
        };
      },
    });
    assert.deepEqual(said, []);
    assert.match(await page.textContent('#no-picture'), /WebGL 2 is missing or switched off/);
    assert.equal(await page.locator('tbody tr[data-id]').count(), 3);
    assert.equal(await page.locator('#canvas').isVisible(), false);
    await page.locator('tr[data-id="2"]').click();
    assert.equal(await page.getAttribute('tr[data-id="2"]', 'aria-selected'), 'true');
    await page.context().close();
  });

  test('loading: the template itself, and damaged data, are told in one sentence', async () => {
    const wrongCount = samples.plate();
    wrongCount.skin.time = wrongCount.skin.time.slice(0, 16);
    const wrongPoint = samples.none();
    wrongPoint.skin.triangles = Buffer.from(new Uint32Array([0, 1, 999999]).buffer).toString(
      'base64',
    );
    const cases = [
      ['@REPORT_DATA@', /empty template/],
      ['{"version": 1,', /not valid JSON/],
      [{ ...samples.plate(), version: 7 }, /version 1, but holds version 7/],
      [wrongCount, /skin\.time: 3933 values are wanted.*found 3/],
      [wrongPoint, /point 999999 of \d+ does not exist/],
      [
        { ...samples.plate(), skin: { ...samples.plate().skin, points: '!!' } },
        /skin\.points: not base64/,
      ],
      [{ version: 1 }, /title: missing/],
    ];
    for (const [document, sentence] of cases) {
      const { page, said } = await browser.open(document);
      assert.match(await page.textContent('#trouble'), sentence);
      assert.deepEqual(said, []);
      await page.context().close();
    }
  });

  test('loading: data cannot break out of their place', async () => {
    const { file, page } = await browser.open(samples.hostile());
    const written = readFileSync(file, 'utf8');
    assert.equal(written.split('</script').length, template().split('</script').length);
    await page.context().close();
  });
}
