// Lines in the picture: chosen, through the part, kinds, clicks.

import assert from 'node:assert/strict';
import { test } from './harness.js';
import { drawn } from './page.js';
import { count, isLine, pictureOf } from './pixels.js';
import { samples } from './sample.js';

async function lookFrom(page, name) {
  await page.locator('.views button', { hasText: name }).click();
  await drawn(page);
}

async function lines(page) {
  await drawn(page);
  return count(await pictureOf(page), isLine);
}

// The plate with lines on its upper side only.
function oneSided() {
  const document = samples.plate();
  for (const line of document.lines) line.polylines = line.polylines.slice(1);
  return document;
}

export function lineTests(browser) {
  test('lines: hidden behind the part unless they are to show through', async () => {
    const { page } = await browser.open(oneSided());
    await lookFrom(page, '+z');
    assert.ok((await lines(page)) > 200, 'seen from above');
    await lookFrom(page, '−z');
    assert.equal(await lines(page), 0);
    await page.getByLabel('Show lines through the part').check();
    assert.ok((await lines(page)) > 200, 'shown through');
    await page.context().close();
  });

  test('lines: the chosen line shows through, whatever is set', async () => {
    const { page } = await browser.open(oneSided());
    await lookFrom(page, '−z');
    assert.equal(await lines(page), 0);
    await page.locator('tr[data-id="1"]').click();
    await lookFrom(page, '−z');
    assert.ok((await lines(page)) > 50);
    await page.keyboard.press('Escape');
    assert.equal(await lines(page), 0);
    await page.context().close();
  });

  test('lines: each kind can be taken out', async () => {
    const { page } = await browser.open(samples.plate());
    await lookFrom(page, '+z');
    const both = await lines(page);
    await page.getByLabel('meld lines (1)').uncheck();
    const weld = await lines(page);
    await page.getByLabel('weld lines (2)').uncheck();
    assert.equal(await lines(page), 0);
    assert.ok(weld > 0 && weld < both, `${weld} of ${both}`);
    assert.equal(await page.evaluate(() => window.weldlineReport.counts().linesShown), 0);
    await page.context().close();
  });

  test('lines: a click in the picture chooses the line under it', async () => {
    const { page } = await browser.open(samples.plate());
    await lookFrom(page, '+z');
    // From above, x runs to the right. Line 1 from 54 to 68.5, line 2 on to 112; the middle is 60.
    const at = await page.evaluate(() => {
      const { scene, camera } = window.weldlineReport;
      const box = document.getElementById('canvas').getBoundingClientRect();
      const pixel = (2 * camera().half) / box.height;
      const diagonal = scene.frame.size;
      const column = (x) => box.left + box.width / 2 + (x - 60) / diagonal / pixel;
      return { one: column(60), two: column(90), none: column(20), y: box.top + box.height / 2 };
    });
    const chosen = () => page.evaluate(() => window.weldlineReport.counts().chosen);
    await page.mouse.click(at.one, at.y);
    assert.equal(await chosen(), 1);
    await page.mouse.click(at.two, at.y + 4);
    assert.equal(await chosen(), 2);
    await page.mouse.click(at.none, at.y);
    assert.equal(await chosen(), null);
    await page.context().close();
  });

  test('lines: as thick at every zoom', async () => {
    const { page } = await browser.open(samples.plate());
    await lookFrom(page, '+z');
    const thickness = async () => {
      await drawn(page);
      const image = await pictureOf(page);
      const column = Math.round(image.width / 2);
      let rows = 0;
      for (let y = 0; y < image.height; y += 1) {
        const i = 4 * (y * image.width + column);
        if (isLine(image.data[i], image.data[i + 1], image.data[i + 2])) rows += 1;
      }
      return rows;
    };
    const before = await thickness();
    await page.evaluate(() => window.weldlineReport.scene.camera.zoom(3));
    const after = await thickness();
    assert.ok(before >= 4 && before <= 8, `${before} pixels`);
    assert.ok(Math.abs(before - after) <= 1, `${before} pixels, then ${after}`);
    await page.context().close();
  });

  test('lines: keep their colour where they run away from the eye', async () => {
    const { page } = await browser.open(oneSided());
    await lookFrom(page, '+z');
    const before = await lines(page);
    // Lines along x look half as long.
    await page.evaluate(() => window.weldlineReport.scene.camera.turn(-60, 0));
    const after = await lines(page);
    assert.ok(after > 0.4 * before, `${before} pixels, then ${after}`);
    await page.context().close();
  });
}
