// The table of lines: order, keyboard, choice.

import assert from 'node:assert/strict';
import { test } from './harness.js';
import { drawn } from './page.js';
import { samples } from './sample.js';

// Values by which a column must sort, by its head, straight from the document.
const VALUES = {
  '#': (line) => line.id,
  Kind: (line) => line.class,
  'Smallest angle': (line) => line.smallestAngle,
  'Mean angle': (line) => line.meanAngle,
  'Length [mm]': (line) => line.length,
  Nodes: (line) => line.nodes,
  'Forms from [s]': (line) => line.firstTime,
  'to [s]': (line) => line.lastTime,
  'Near patch': (line) => line.patch || null,
  'Temperature, smallest': (line) => line.carried[0].smallest,
  'Temperature, mean': (line) => line.carried[0].mean,
  'Temperature, largest': (line) => line.carried[0].largest,
  'Centre x [mm]': (line) => line.centroid[0],
  'Centre y [mm]': (line) => line.centroid[1],
  'Centre z [mm]': (line) => line.centroid[2],
};

// Lines in such an order that no column is sorted from the start.
function shuffled() {
  const document = samples.plate();
  const [a, b, c] = document.lines;
  document.lines = [
    { ...b, nodes: 50, centroid: [7, -2, 3] },
    { ...a, nodes: 120, centroid: [-8, 5, 4] },
    { ...c, nodes: 70, patch: '', centroid: [1, 1, 1] },
    {
      ...a,
      id: 4,
      length: 3,
      nodes: 9,
      patch: 'end',
      smallestAngle: 33,
      meanAngle: 12,
      centroid: [2, 0, 9],
    },
  ];
  return document;
}

function ids(page) {
  return page
    .locator('tbody tr[data-id]')
    .evaluateAll((rows) => rows.map((r) => Number(r.dataset.id)));
}

export function tableTests(browser) {
  test('table: every column sorts up and down, what is missing comes last', async () => {
    const document = shuffled();
    const { page } = await browser.open(document);
    const heads = await page.locator('thead th').allTextContents();
    assert.deepEqual(heads, Object.keys(VALUES));
    const order = async (head) => {
      await page.locator('thead button').nth(heads.indexOf(head)).click();
      const state = await page
        .locator('thead th')
        .nth(heads.indexOf(head))
        .getAttribute('aria-sort');
      return { state, ids: await ids(page) };
    };
    await order('Nodes');
    for (const head of heads) {
      for (const [state, sign] of [
        ['ascending', 1],
        ['descending', -1],
      ]) {
        const shown = await order(head);
        assert.equal(shown.state, state, head);
        const values = shown.ids.map((id) =>
          VALUES[head](document.lines.find((line) => line.id === id)),
        );
        values.slice(1).forEach((value, i) => {
          const before = values[i];
          const good =
            value === null || (before !== null && (sign > 0 ? before <= value : before >= value));
          assert.ok(good, `${head} ${state}: ${values}`);
        });
      }
    }
    const marked = await page
      .locator('th[aria-sort="ascending"], th[aria-sort="descending"]')
      .count();
    assert.equal(marked, 1);
    await page.context().close();
  });

  test('table: Enter on a head sorts', async () => {
    const { page } = await browser.open(shuffled());
    await page.locator('thead button', { hasText: 'Length' }).focus();
    await page.keyboard.press('Enter');
    assert.deepEqual(await ids(page), [4, 3, 1, 2]);
    await page.keyboard.press('Enter');
    assert.deepEqual(await ids(page), [2, 1, 3, 4]);
    await page.context().close();
  });

  test('table: a click flies to the line and marks it', async () => {
    const { page } = await browser.open(samples.plate());
    const before = await page.evaluate(() => window.weldlineReport.camera());
    await page.locator('tr[data-id="3"]').click();
    await drawn(page);
    const { camera, counts } = await page.evaluate(() => ({
      camera: window.weldlineReport.camera(),
      counts: window.weldlineReport.counts(),
    }));
    assert.equal(counts.chosen, 3);
    assert.equal(await page.getAttribute('tr[data-id="3"]', 'aria-selected'), 'true');
    assert.ok(camera.half < before.half / 2, 'nearer');
    // Line 3 lies near the end of the plate (x = 114 of 120) on the side of small y.
    assert.ok(camera.focus[0] > 0.3 && camera.focus[1] < -0.1, `looks at ${camera.focus}`);
    assert.deepEqual(camera.from, before.from);
    await page.context().close();
  });

  test('table: arrow keys walk, Enter flies, Escape lets go', async () => {
    const { page } = await browser.open(samples.plate());
    await page.locator('tbody tr').first().focus();
    await page.keyboard.press('ArrowDown');
    assert.equal(await page.evaluate(() => document.activeElement.dataset.id), '2');
    await page.keyboard.press('End');
    await page.keyboard.press('ArrowUp');
    const before = await page.evaluate(() => window.weldlineReport.camera());
    await page.keyboard.press('Enter');
    await drawn(page);
    const after = await page.evaluate(() => window.weldlineReport.camera());
    assert.notDeepEqual(after, before);
    assert.equal(await page.evaluate(() => window.weldlineReport.counts().chosen), 2);
    await page.keyboard.press('Escape');
    assert.equal(await page.evaluate(() => window.weldlineReport.counts().chosen), null);
    assert.equal(await page.locator('tr[aria-selected="true"]').count(), 0);
    await page.context().close();
  });

  test('table: one row is in the tab order', async () => {
    const { page } = await browser.open(samples.plate());
    assert.equal(await page.locator('tbody tr[data-id][tabindex="0"]').count(), 1);
    await page.locator('tr[data-id="3"]').click();
    assert.equal(await page.getAttribute('tr[data-id="3"]', 'tabindex'), '0');
    assert.equal(await page.locator('tbody tr[data-id][tabindex="0"]').count(), 1);
    await page.context().close();
  });
}
