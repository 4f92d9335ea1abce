// The slider of the fill time and its button.

import assert from 'node:assert/strict';
import { test } from './harness.js';
import { drawn } from './page.js';
import { count, isLine, isMelt, pictureOf } from './pixels.js';
import { samples } from './sample.js';

async function slideTo(page, step) {
  await page.locator('.track input').evaluate((slider, value) => {
    slider.value = value;
    slider.dispatchEvent(new Event('input'));
  }, step);
  await drawn(page);
}

function numbers(text, Kind) {
  return new Kind(new Uint8Array(Buffer.from(text, 'base64')).buffer);
}

// Filled triangles and lines begun at a share of the fill time, counted without any cleverness.
function expected(document, share) {
  const time = numbers(document.skin.time, Float32Array);
  const triangles = numbers(document.skin.triangles, Uint32Array);
  const known = [...time].filter((t) => t >= 0);
  const [first, last] = known.reduce(
    ([a, b], t) => [Math.min(a, t), Math.max(b, t)],
    [Infinity, -Infinity],
  );
  const now = first + (last - first) * share + 1e-6;
  let filled = 0;
  for (let i = 0; i < triangles.length; i += 3) {
    if ([0, 1, 2].every((k) => time[triangles[i + k]] >= 0 && time[triangles[i + k]] <= now))
      filled += 1;
  }
  const begun = document.lines.filter((line) =>
    line.polylines.some((p) => numbers(p.time, Float32Array).some((t) => t <= now)),
  ).length;
  return { filled, begun };
}

export function fillingTests(browser) {
  test('filling: triangles and lines come with time, as many as counted by hand', async () => {
    const document = samples.plate();
    const { page } = await browser.open(document);
    for (const step of [0, 130, 485, 487, 700, 999, 1000]) {
      await slideTo(page, step);
      const counts = await page.evaluate(() => window.weldlineReport.counts());
      const wanted = expected(document, step / 1000);
      assert.equal(counts.filled, wanted.filled, `triangles at step ${step}`);
      assert.equal(counts.linesShown, wanted.begun, `lines at step ${step}`);
    }
    await page.context().close();
  });

  test('filling: triangles with points never reached are never filled', async () => {
    const document = samples.shortShot();
    const { page } = await browser.open(document);
    await slideTo(page, 1000);
    const { filled, triangles } = await page.evaluate(() => window.weldlineReport.counts());
    assert.equal(filled, expected(document, 1).filled);
    assert.ok(filled < triangles);
    assert.match(await page.textContent('.legend-head'), /never reached/);
    await page.context().close();
  });

  test('filling: the picture fills and lines appear where the melt is', async () => {
    const { page } = await browser.open(samples.plate());
    await page.locator('.views button', { hasText: '+z' }).click();
    const seen = [];
    for (const step of [0, 250, 450, 600, 1000]) {
      await slideTo(page, step);
      const image = await pictureOf(page);
      seen.push({ melt: count(image, isMelt), lines: count(image, isLine) });
    }
    assert.ok(seen[0].melt < 50, `${seen[0].melt} pixels at the start`);
    seen
      .slice(1)
      .forEach((now, i) => assert.ok(now.melt > 1.2 * seen[i].melt, JSON.stringify(seen)));
    assert.deepEqual(
      seen.slice(0, 3).map((now) => now.lines),
      [0, 0, 0],
    );
    assert.ok(seen[3].lines > 50 && seen[4].lines > 2 * seen[3].lines, JSON.stringify(seen));
    await page.context().close();
  });

  test('filling: the text tells time and share', async () => {
    const { page } = await browser.open(samples.plate());
    await slideTo(page, 500);
    const text = await page.textContent('.fill output');
    // Last point: a corner of the plate, at the distance hypot(120, 30) = 123.69.
    assert.match(text, /^61\.85 s · 4\d % of the skin filled$/);
    assert.equal(
      await page.getAttribute('.track input', 'aria-valuetext'),
      text.replace(' · ', ', '),
    );
    await page.context().close();
  });

  test('filling: play fills the part from the start, pause stops', async () => {
    const { page } = await browser.open(samples.plate());
    const step = () => page.locator('.track input').evaluate((slider) => Number(slider.value));
    await page.getByRole('button', { name: 'Play filling' }).click();
    await page.waitForFunction(() => {
      const value = Number(document.querySelector('.track input').value);
      return value > 20 && value < 900;
    });
    await page.getByRole('button', { name: 'Pause filling' }).click();
    const stopped = await step();
    await drawn(page);
    await drawn(page);
    assert.equal(await step(), stopped);
    await slideTo(page, 990);
    await page.locator('#canvas').focus();
    await page.keyboard.press(' ');
    await page.getByRole('button', { name: 'Play filling' }).waitFor();
    assert.equal(await step(), 1000);
    await page.context().close();
  });

  test('filling: the arrow keys move the slider', async () => {
    const { page } = await browser.open(samples.plate());
    await page.locator('.track input').focus();
    await page.keyboard.press('ArrowLeft');
    assert.equal(await page.locator('.track input').evaluate((slider) => slider.value), '999');
    await page.keyboard.press('Home');
    assert.equal(await page.evaluate(() => window.weldlineReport.counts().linesShown), 0);
    await page.context().close();
  });
}
