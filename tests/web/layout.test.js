// The page as a whole: sizes, keyboard focus, paper.

import assert from 'node:assert/strict';
import { PNG } from 'pngjs';
import { test } from './harness.js';
import { drawn } from './page.js';
import { colours } from './pixels.js';
import { samples } from './sample.js';

const SIZES = [
  [1600, 1000],
  [1024, 768],
  [420, 800],
];

export function layoutTests(browser) {
  for (const size of SIZES) {
    test(`layout: at ${size.join(' x ')} nothing sticks out or overlaps`, async () => {
      for (const name of ['plate', 'hostile']) {
        const { page } = await browser.open(samples[name](), { size });
        const found = await page.evaluate(() => {
          const box = (selector) => document.querySelector(selector).getBoundingClientRect();
          const parts = [
            '.head',
            '.summary',
            '.picture',
            '.legends',
            '.display',
            '.lines',
            '.angles-panel',
            '.settings',
            '.foot',
          ].map((selector) => [selector, box(selector)]);
          const overlaps = parts.flatMap(([a, p], i) =>
            parts
              .slice(i + 1)
              .filter(
                ([, q]) =>
                  p.left < q.right - 1 &&
                  q.left < p.right - 1 &&
                  p.top < q.bottom - 1 &&
                  q.top < p.bottom - 1,
              )
              .map(([b]) => `${a} ${b}`),
          );
          const inner =
            document.querySelector('.side').scrollWidth >
            document.querySelector('.side').clientWidth + 1;
          return {
            wide: document.documentElement.scrollWidth,
            inner,
            overlaps,
            picture: [box('.picture').width, box('.picture').height],
          };
        });
        assert.ok(found.wide <= size[0], `${name}: ${found.wide} wide`);
        if (size[0] >= 900) assert.ok(!found.inner, `${name}: the side column scrolls sideways`);
        // The side column scrolls below the foot where the window is low.
        const real = found.overlaps.filter((pair) => !pair.endsWith('.foot'));
        assert.deepEqual(real, [], name);
        assert.ok(
          found.picture[0] * found.picture[1] > 0.25 * size[0] * size[1],
          `${found.picture}`,
        );
        await page.context().close();
      }
    });
  }

  test('layout: a changed window size is drawn anew', async () => {
    const { page } = await browser.open(samples.plate());
    await page.setViewportSize({ width: 1100, height: 700 });
    await drawn(page);
    const sizes = await page.evaluate(() => {
      const canvas = document.querySelector('#canvas canvas');
      const host = document.getElementById('canvas');
      return [canvas.width, canvas.height, host.clientWidth, host.clientHeight];
    });
    assert.deepEqual(sizes.slice(0, 2), sizes.slice(2));
    await page.context().close();
  });

  test('layout: Tab reaches everything, and one sees where it is', async () => {
    const { page } = await browser.open(samples.plate());
    const reached = new Set();
    for (let i = 0; i < 60; i += 1) {
      await page.keyboard.press('Tab');
      const at = await page.evaluate(() => {
        const node = document.activeElement;
        const style = getComputedStyle(node);
        return {
          name:
            node.id ||
            node.className ||
            node.dataset.id ||
            node.parentElement.className ||
            node.tagName,
          body: node === document.body,
          seen: style.outlineStyle !== 'none' && parseFloat(style.outlineWidth) >= 2,
        };
      });
      if (at.body) break;
      assert.ok(at.seen, `no outline on ${at.name}`);
      reached.add(at.name);
    }
    for (const name of [
      'print',
      'theme',
      'canvas',
      'tool',
      'play',
      'track',
      'choice',
      'tick',
      '1',
    ]) {
      assert.ok(reached.has(name), `${name} of ${[...reached]}`);
    }
    await page.context().close();
  });

  test('layout: on paper of 190 mm the table with all columns fits', async () => {
    const { page } = await browser.open(samples.plate(), { size: [718, 1000] });
    await page.emulateMedia({ media: 'print' });
    assert.ok((await page.evaluate(() => document.documentElement.scrollWidth)) <= 718);
    const order = await page.evaluate(() =>
      ['.summary', '.picture', '.legends', '.lines', '.settings'].map(
        (selector) => document.querySelector(selector).getBoundingClientRect().top,
      ),
    );
    assert.deepEqual(
      order,
      [...order].sort((a, b) => a - b),
    );
    await page.context().close();
  });

  test('layout: paper shows a light picture and every table, also from the dark page', async () => {
    const { page } = await browser.open(samples.many(), { colorScheme: 'dark' });
    const pages = (await page.pdf()).toString('latin1').match(/\/Type \/Page\b/g).length;
    assert.ok(pages > 20, `2,000 lines on ${pages} pages`);
    const address = await page.getAttribute('#print-picture', 'src');
    const image = PNG.sync.read(Buffer.from(address.split(',')[1], 'base64'));
    assert.deepEqual([...image.data.slice(0, 3)], [0xe9, 0xed, 0xf2]);
    assert.ok(colours(image) > 500);
    await page.emulateMedia({ media: 'print' });
    const shown = await page.evaluate(() => {
      const visible = (selector) => document.querySelector(selector).getClientRects().length > 0;
      const scroll = document.getElementById('lines-scroll');
      return {
        shown: [
          '#print-picture',
          '.lines-table',
          '.histogram',
          '#settings table',
          '#mesh table',
        ].map(visible),
        gone: ['.canvas', '.views', '.display', '.head-tools', '.scale'].map(visible),
        whole: scroll.scrollHeight <= scroll.clientHeight + 1,
        paper: getComputedStyle(document.documentElement).backgroundColor,
      };
    });
    assert.deepEqual(shown, {
      shown: [true, true, true, true, true],
      gone: [false, false, false, false, false],
      whole: true,
      paper: 'rgb(255, 255, 255)',
    });
    await page.emulateMedia({ media: 'screen' });
    await drawn(page);
    const rim = await page.evaluate(() => window.weldlineReport.scene.renderer.getBackground());
    assert.ok(rim[0] < 0.2, 'dark again on the screen');
    await page.context().close();
  });
}
