// Report pages in a browser: the template filled as the program fills it, opened from a file.

import { mkdtempSync, readFileSync, rmSync, writeFileSync } from 'node:fs';
import { tmpdir } from 'node:os';
import { join } from 'node:path';
import { chromium } from 'playwright-core';

const TEMPLATE = new URL('../../web/report/dist/report.html', import.meta.url);
const PLACEHOLDER = '@REPORT_DATA@';

// Pictures must not depend on the machine: software drawing, one pixel a pixel, given fonts.
const SOFTWARE = [
  '--no-sandbox',
  '--use-gl=angle',
  '--use-angle=swiftshader',
  '--enable-unsafe-swiftshader',
  '--force-device-scale-factor=1',
  '--hide-scrollbars',
  '--font-render-hinting=none',
  '--disable-lcd-text',
];

export function template() {
  return readFileSync(TEMPLATE, 'utf8');
}

export function fill(document) {
  const text = typeof document === 'string' ? document : JSON.stringify(document);
  return template().replace(PLACEHOLDER, () => text.replaceAll('<', '\\u003c'));
}

export async function startBrowser(more = []) {
  const browser = await chromium.launch({
    executablePath: '/usr/bin/chromium',
    args: [...SOFTWARE, ...more],
  });
  const folder = mkdtempSync(join(tmpdir(), 'report-'));
  let number = 0;
  return {
    // Opens the page of a document; `before` runs in it ahead of everything else. The result holds
    // what the page said and asked for.
    async open(document, { size = [1600, 1000], before, ...options } = {}) {
      number += 1;
      const file = join(folder, `report${number}.html`);
      writeFileSync(file, fill(document));
      const context = await browser.newContext({
        viewport: { width: size[0], height: size[1] },
        reducedMotion: 'reduce',
        ...options,
      });
      if (before) await context.addInitScript(before);
      const page = await context.newPage();
      const said = [];
      const asked = [];
      page.on('console', (message) => {
        if (['error', 'warning'].includes(message.type())) said.push(message.text());
      });
      page.on('pageerror', (error) => said.push(String(error)));
      page.on('request', (request) => asked.push(request.url()));
      await page.goto(`file://${file}`);
      return { page, said, asked, file };
    },
    async close() {
      await browser.close();
      rmSync(folder, { recursive: true });
    },
  };
}

// Waits until the picture has been drawn after everything asked so far.
export async function drawn(page) {
  await page.evaluate(
    () =>
      new Promise((done) => {
        requestAnimationFrame(() => requestAnimationFrame(() => requestAnimationFrame(done)));
      }),
  );
}
