// The page, step by step: read the data, fill the tables, draw the picture, connect the two.

import './style/base.css';
import './style/layout.css';
import './style/picture.css';
import './style/panels.css';
import './style/print.css';

import { readDocument } from './data.js';
import { byId } from './dom.js';
import { fillCurve, reached, STEPS, timeRange } from './fillcurve.js';
import { makeAngleLegend } from './panel/angles.js';
import { linesNote, makeHead, makePairs, makeRemarks, makeSummary } from './panel/details.js';
import { makeDisplay } from './panel/display.js';
import { makeFill } from './panel/fill.js';
import { makeHistogram } from './panel/histogram.js';
import { makeTable } from './panel/table.js';
import { makeViews } from './panel/views.js';
import { attachPrint } from './print.js';
import { Selection } from './selection.js';
import { makeTheme } from './theme.js';
import { makeWatch } from './watch.js';
import { attachKeys } from './view/keys.js';
import { drawScale, drawTriad } from './view/overlay.js';
import { lineAt } from './view/picking.js';
import { attachPointer } from './view/pointer.js';
import { canDraw, Scene } from './view/scene.js';

function start() {
  let data;
  try {
    data = readDocument(byId('report-data').textContent);
  } catch (error) {
    makeTheme(byId('theme'), () => {});
    byId('trouble').textContent = error.message;
    byId('trouble').hidden = false;
    document.body.classList.add('empty');
    return;
  }
  const range = timeRange(data.skin, data.lines);
  fillTables(data, range);
  connect(data, range, makeScene(data, range));
}

function fillTables(data, range) {
  makeHead(data);
  makeSummary(byId('summary'), data, range);
  makeAngleLegend(byId('angles'), data.weldLimit);
  makeHistogram(byId('histogram'), data.histogram, data.weldLimit);
  makePairs(byId('settings'), data.settings);
  makePairs(byId('mesh'), data.mesh);
  makeRemarks(data.remarks);
  byId('lines-note').textContent = linesNote(data);
}

// The scene, or null with one sentence in its place.
function makeScene(data, range) {
  let why = '';
  if (data.skin.triangles.length === 0) why = 'The result holds no skin to draw.';
  else if (!canDraw()) {
    why =
      'This browser cannot draw the part: WebGL 2 is missing or switched off. ' +
      'The tables are complete.';
  }
  if (why) {
    byId('no-picture').textContent = why;
    byId('no-picture').hidden = false;
    document.body.classList.add('pictureless');
    return null;
  }
  return new Scene(byId('canvas'), data, range, ({ camera, frame }) => {
    drawTriad(byId('triad'), camera);
    drawScale(byId('scale'), camera, frame.size, data.units.length);
  });
}

function connect(data, range, view) {
  const curve = fillCurve(data.skin, range);
  const watch = makeWatch(view, data, curve, range);
  window.weldlineReport = watch;
  makeTheme(byId('theme'), (colours) => view?.setTheme(colours));
  const fill = makeFill(byId('fill'), {
    range,
    curve,
    unit: data.units.time,
    short: !data.skin.time.every(reached),
    onTime: (step) => {
      watch.step = step;
      view?.set({ now: step >= STEPS ? 2 : step / STEPS });
    },
  });
  const selection = new Selection(view);
  watch.selection = selection;
  if (data.lines.length > 0) {
    selection.table = makeTable(byId('lines-scroll'), data.lines, data.units, (place) =>
      selection.choose(place, true),
    );
  }
  attachPrint(byId('print'), byId('print-picture'), view);
  document.addEventListener('keydown', (event) => {
    if (event.key === 'Escape') selection.choose(null);
  });
  if (view) connectPicture(data, view, fill, selection, watch);
}

function connectPicture(data, view, fill, selection, watch) {
  const count = (name) => data.lines.filter((line) => line.class === name).length;
  makeViews(byId('views'), view.camera);
  makeDisplay(byId('display'), {
    frame: view.frame,
    origin: data.skin.origin,
    unit: data.units.length,
    counts: { weld: count('weld'), meld: count('meld') },
    through: data.linesThroughPart === true,
    on: {
      bands: (bands) => {
        view.set({ bands });
        fill.setBands(bands);
      },
      showThrough: (showThrough) => view.set({ showThrough }),
      kind: (name, shown) => view.showClass(name, shown),
      cut: (axis, share, other) => view.cut(axis, share, other),
    },
  });
  attachKeys(byId('canvas'), view.camera, fill.toggle);
  attachPointer(byId('canvas'), view.camera, (at) => {
    selection.choose(lineAt(at, view.polylines, view.camera, (place) => watch.lineShown(place)));
  });
}

start();
