// The picture: turned, moved, zoomed, cut, banded, light and dark.

import assert from 'node:assert/strict';
import { test } from './harness.js';
import { drawn } from './page.js';
import { colours, columns, count, isMelt, pictureOf } from './pixels.js';
import { samples } from './sample.js';

const camera = (page) => page.evaluate(() => window.weldlineReport.camera());

function angleBetween(a, b) {
  const cosine = a.reduce((sum, v, k) => sum + v * b[k], 0);
  return (Math.acos(Math.min(cosine, 1)) * 180) / Math.PI;
}

async function corner(page) {
  await drawn(page);
  const { data } = await pictureOf(page);
  return [...data.slice(0, 3)];
}

export function pictureTests(browser) {
  test('picture: the keyboard turns, moves, zooms and fits', async () => {
    const { page } = await browser.open(samples.plate());
    await page.locator('#canvas').focus();
    const start = await camera(page);
    await page.keyboard.press('ArrowRight');
    const turned = await camera(page);
    assert.ok(Math.abs(angleBetween(start.from, turned.from) - 10) < 1e-6);
    await page.keyboard.press('ArrowLeft');
    assert.ok(angleBetween(start.from, (await camera(page)).from) < 1e-4);
    await page.keyboard.press('ArrowUp');
    assert.ok(Math.abs(angleBetween(start.from, (await camera(page)).from) - 10) < 1e-6);
    await page.keyboard.press('+');
    assert.ok(Math.abs((await camera(page)).half - start.half / 1.2) < 1e-12);
    await page.keyboard.press('-');
    await page.keyboard.press('-');
    assert.ok(Math.abs((await camera(page)).half - start.half * 1.2) < 1e-12);
    await page.keyboard.press('Shift+ArrowRight');
    assert.notDeepEqual((await camera(page)).focus, start.focus);
    await page.keyboard.press('0');
    const fitted = await camera(page);
    assert.ok(Math.hypot(...fitted.focus) < 0.01);
    await page.context().close();
  });

  test('picture: the mouse turns, moves and zooms', async () => {
    const { page } = await browser.open(samples.plate());
    const start = await camera(page);
    const box = await page.locator('#canvas').boundingBox();
    const [x, y] = [box.x + box.width / 2, box.y + box.height / 2];
    await page.mouse.move(x, y);
    await page.mouse.down();
    await page.mouse.move(x + 100, y, { steps: 4 });
    await page.mouse.up();
    const turned = await camera(page);
    assert.ok(Math.abs(angleBetween(start.from, turned.from) - 40) < 0.5);
    await page.keyboard.down('Shift');
    await page.mouse.down();
    await page.mouse.move(x + 200, y, { steps: 4 });
    await page.mouse.up();
    await page.keyboard.up('Shift');
    const moved = await camera(page);
    assert.deepEqual(moved.from, turned.from);
    const way = Math.hypot(...moved.focus.map((f, k) => f - turned.focus[k]));
    assert.ok(Math.abs((way * box.height) / (2 * moved.half) - 100) < 0.5, `${way}`);
    await page.mouse.wheel(0, -300);
    await drawn(page);
    assert.ok(Math.abs((await camera(page)).half - moved.half * Math.exp(-0.45)) < 1e-9);
    await page.context().close();
  });

  test('picture: the view buttons look from where they say', async () => {
    const { page } = await browser.open(samples.plate());
    const sides = {
      '+x': [1, 0, 0],
      '−x': [-1, 0, 0],
      '+y': [0, 1, 0],
      '−y': [0, -1, 0],
      '+z': [0, 0, 1],
      '−z': [0, 0, -1],
    };
    for (const [name, from] of Object.entries(sides)) {
      await page.locator('.views button', { hasText: name }).click();
      assert.deepEqual((await camera(page)).from, from, name);
      await drawn(page);
      const image = await pictureOf(page);
      const [low, high] = columns(image, isMelt);
      assert.ok(low > 0 && high < image.width - 1, `${name}: whole part`);
    }
    await page.context().close();
  });

  test('picture: the cut takes away what lies beyond it', async () => {
    const { page } = await browser.open(samples.plate());
    await page.locator('.views button', { hasText: '+z' }).click();
    await drawn(page);
    const [low, high] = columns(await pictureOf(page), isMelt);
    const width = high - low;
    await page.getByRole('combobox', { name: 'Cut' }).selectOption('cut in x');
    const slider = page.getByLabel('Place of the cut');
    const cutAt = async (value) => {
      await slider.evaluate((input, v) => {
        input.value = v;
        input.dispatchEvent(new Event('input'));
      }, value);
      await drawn(page);
      return columns(await pictureOf(page), isMelt);
    };
    let [left, right] = await cutAt(150);
    assert.ok(
      Math.abs(left - low) <= 1 && Math.abs(right - (low + 0.75 * width)) <= 2,
      `${left} ${right}`,
    );
    assert.equal(await page.textContent('.cut-row output'), 'x = 90 mm');
    await page.getByLabel('Keep the other side').check();
    [left, right] = await cutAt(150);
    assert.ok(
      Math.abs(right - high) <= 1 && Math.abs(left - (low + 0.75 * width)) <= 2,
      `${left} ${right}`,
    );
    await page.getByRole('combobox', { name: 'Cut' }).selectOption('no cut');
    await drawn(page);
    assert.deepEqual(columns(await pictureOf(page), isMelt), [low, high]);
    await page.context().close();
  });

  test('picture: bands have fewer colours', async () => {
    const { page } = await browser.open(samples.none());
    await page.locator('.views button', { hasText: '+y' }).click();
    await page.evaluate(() => window.weldlineReport.scene.camera.zoom(6));
    await drawn(page);
    const smooth = colours(await pictureOf(page));
    await page.getByRole('combobox', { name: 'Colours' }).selectOption('10 bands');
    await drawn(page);
    const banded = colours(await pictureOf(page));
    assert.ok(banded < smooth / 3, `${banded} colours of ${smooth}`);
    await page.context().close();
  });

  test('picture: light and dark, by the system and by the button', async () => {
    const LIGHT = [0xe9, 0xed, 0xf2];
    const DARK = [0x12, 0x17, 0x1d];
    for (const [colorScheme, first, second] of [
      ['light', LIGHT, DARK],
      ['dark', DARK, LIGHT],
    ]) {
      const { page } = await browser.open(samples.plate(), { colorScheme });
      assert.deepEqual(await corner(page), first);
      const ink = () => page.evaluate(() => getComputedStyle(document.body).color);
      const before = await ink();
      await page.getByRole('button', { name: 'Dark' }).click();
      assert.deepEqual(await corner(page), second);
      assert.notEqual(await ink(), before);
      const dark = second === DARK;
      assert.equal(await page.getAttribute('#theme', 'aria-pressed'), String(dark));
      await page.context().close();
    }
  });

  test('picture: drawn only when something changes', async () => {
    const { page } = await browser.open(samples.plate());
    await drawn(page);
    const before = await page.evaluate(() => window.weldlineReport.counts().drawings);
    await drawn(page);
    await drawn(page);
    assert.equal(await page.evaluate(() => window.weldlineReport.counts().drawings), before);
    await page.locator('#canvas').press('ArrowLeft');
    await drawn(page);
    assert.equal(await page.evaluate(() => window.weldlineReport.counts().drawings), before + 1);
    await page.context().close();
  });

  test('picture: what is not filled yet is grey', async () => {
    const { page } = await browser.open(samples.none());
    await page.locator('.views button', { hasText: '+z' }).click();
    await page.locator('.track input').press('Home');
    await drawn(page);
    const image = await pictureOf(page);
    const grey = count(image, (r, g, b) => Math.max(r, g, b) - Math.min(r, g, b) < 24 && r < 215);
    assert.ok(grey > 0.1 * image.width * image.height, `${grey} grey pixels`);
    await page.context().close();
  });
}
