// Documents against their schema, and the template against its sources.

import assert from 'node:assert/strict';
import { execFileSync } from 'node:child_process';
import { mkdtempSync, readFileSync, rmSync } from 'node:fs';
import { tmpdir } from 'node:os';
import { join } from 'node:path';
import Ajv from 'ajv/dist/2020.js';
import { test } from './harness.js';
import { template } from './page.js';
import { arrival, meetingAngle } from './plate.js';
import { samples } from './sample.js';

const SCHEMA = new URL('../../docs/schema/report-1.json', import.meta.url);
const REPORT = new URL('../../web/report/', import.meta.url);

function validator() {
  return new Ajv({ strict: true, allowUnionTypes: true, formats: {} }).compile(
    JSON.parse(readFileSync(SCHEMA, 'utf8')),
  );
}

export function documentTests() {
  test('document: all samples but the deliberately broken keep the schema', () => {
    const valid = validator();
    for (const [name, make] of Object.entries(samples)) {
      assert.ok(valid(make()), `${name}: ${JSON.stringify(valid.errors)}`);
    }
  });

  test('document: the schema refuses what the page could not show', () => {
    const valid = validator();
    const refused = [
      (d) => {
        d.version = 2;
      },
      (d) => {
        delete d.skin.time;
      },
      (d) => {
        d.lines[0].class = 'seam';
      },
      (d) => {
        d.lines[0].polylines[0].points = [1, 2, 3];
      },
      (d) => {
        d.lines[0].smallestAngle = 181;
      },
      (d) => {
        d.settings = [['Method', 4]];
      },
      (d) => {
        d.extra = 1;
      },
    ];
    for (const spoil of refused) {
      const document = samples.plate();
      spoil(document);
      assert.ok(!valid(document), `accepted: ${spoil}`);
    }
  });

  test('document: the sample plate is what its head says', () => {
    assert.equal(arrival(0, 30), 0);
    assert.ok(Math.abs(arrival(30, 70) - 50) < 1e-12);
    assert.equal(arrival(36, 30), 36);
    // Tangents of sqrt(45^2 - 9^2) and 0, and the arc between: pi - acos(1/5) on the rim itself.
    const behind = Math.sqrt(1944) + 9 * (Math.PI - Math.acos(0.2));
    assert.ok(Math.abs(arrival(54, 30) - behind) < 1e-9);
    assert.ok(Math.abs(meetingAngle(63) - 120) < 1e-9);
    assert.ok(Math.abs(meetingAngle(54)) < 1e-9);
  });

  test('document: the big sample has half a million triangles', () => {
    const bytes = Buffer.from(samples.big().skin.triangles, 'base64').length;
    assert.ok(bytes / 12 >= 500000, `${bytes / 12} triangles`);
  });

  test('template: holds the placeholder once and names no other place', () => {
    const text = template();
    assert.equal(text.split('@REPORT_DATA@').length, 2);
    assert.doesNotMatch(text, /<(script|img|iframe)[^>]*\ssrc=["']?(https?:)?\/\//);
    assert.doesNotMatch(text, /<link[^>]*href="(?!data:)/);
    assert.doesNotMatch(text, /@import|sourceMappingURL/);
  });

  test('template: carries the licences of the code in it', () => {
    const [, texts] = template().match(
      /<script type="text\/plain" id="licences">([^]*?)<\/script>/,
    );
    for (const name of ['@kitware/vtk.js 37.4.3, BSD-3-Clause', 'gl-matrix']) {
      assert.ok(texts.includes(name), name);
    }
  });

  test('template: is what its sources build', () => {
    const folder = mkdtempSync(join(tmpdir(), 'template-'));
    try {
      execFileSync(
        'npx',
        ['vite', 'build', '--outDir', folder, '--emptyOutDir', '--logLevel', 'error'],
        { cwd: REPORT, stdio: ['ignore', 'ignore', 'inherit'] },
      );
      const same = readFileSync(join(folder, 'report.html'), 'utf8') === template();
      assert.ok(same, 'run scripts/build-report and commit web/report/dist/report.html');
    } finally {
      rmSync(folder, { recursive: true });
    }
  });
}
