// All tests of the report page in one browser.
//
//   node run.js [PART OF A NAME]    only the tests whose names contain it
//   UPDATE=1 node run.js pictures   draws the reference pictures anew; look at them before keeping

import { startBrowser } from './page.js';
import { runAll } from './harness.js';
import { documentTests } from './document.test.js';
import { fillingTests } from './filling.test.js';
import { hardTests } from './hard.test.js';
import { layoutTests } from './layout.test.js';
import { lineTests } from './lines.test.js';
import { loadingTests } from './loading.test.js';
import { pictureTests } from './pictures.test.js';
import { referenceTests } from './reference.test.js';
import { tableTests } from './table.test.js';

const browser = await startBrowser();
documentTests();
for (const add of [
  loadingTests,
  tableTests,
  lineTests,
  fillingTests,
  pictureTests,
  layoutTests,
  hardTests,
  referenceTests,
])
  add(browser);
const good = await runAll(process.argv[2]);
await browser.close();
process.exit(good ? 0 : 1);
