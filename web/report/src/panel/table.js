// Table of the lines. Heads sort; a click or Enter on a row chooses its line. One row is in the tab
// order, the arrow keys walk from row to row.

import { element } from '../dom.js';
import { columnsOf, sorted } from './columns.js';

// onChoose(place) gets the place of the line in the document. Returns { mark }.
export function makeTable(host, lines, units, onChoose) {
  const columns = columnsOf(lines, units);
  const rows = lines.map((line) => rowOf(line, columns));
  const body = element('tbody');
  const order = { column: columns[0], upwards: true };

  const heads = columns.map((column) =>
    element(
      'th',
      { scope: 'col', class: column.numeric && 'numeric' },
      element('button', { type: 'button', onclick: () => sortBy(column) }, column.head),
    ),
  );
  function sortBy(column) {
    order.upwards = order.column === column ? !order.upwards : true;
    order.column = column;
    show();
  }
  function show() {
    heads.forEach((head, i) => {
      const active = columns[i] === order.column;
      head.setAttribute('aria-sort', !active ? 'none' : order.upwards ? 'ascending' : 'descending');
    });
    body.replaceChildren(
      ...sorted(lines, order.column, order.upwards).map((line) => rows[line.place]),
    );
    makeReachable(rows, body.firstElementChild);
  }
  body.addEventListener('click', (event) => choose(event.target.closest('tr')));
  body.addEventListener('keydown', (event) => {
    const row = event.target.closest('tr');
    const next = neighbour(row, event.key);
    if (next) walkTo(rows, next);
    else if (event.key === 'Enter' || event.key === ' ') choose(row);
    else return;
    event.preventDefault();
  });
  function choose(row) {
    if (!row) return;
    makeReachable(rows, row);
    onChoose(rows.indexOf(row));
  }
  show();
  host.replaceChildren(
    element(
      'table',
      { class: 'lines-table' },
      element('caption', { class: 'unseen' }, 'Weld and meld lines'),
      element('thead', {}, element('tr', {}, ...heads)),
      body,
    ),
  );
  return { mark: (place) => mark(rows, place) };
}

function rowOf(line, columns) {
  return element(
    'tr',
    { tabindex: -1, 'data-id': line.id, 'aria-selected': 'false' },
    ...columns.map((column) =>
      element(
        'td',
        { class: column.numeric ? 'numeric' : 'word' },
        column.text(column.value(line)),
      ),
    ),
  );
}

function neighbour(row, key) {
  switch (key) {
    case 'ArrowDown':
      return row.nextElementSibling;
    case 'ArrowUp':
      return row.previousElementSibling;
    case 'Home':
      return row.parentElement.firstElementChild;
    case 'End':
      return row.parentElement.lastElementChild;
    default:
      return null;
  }
}

function makeReachable(rows, reachable) {
  for (const row of rows) row.tabIndex = row === reachable ? 0 : -1;
}

function walkTo(rows, row) {
  makeReachable(rows, row);
  row.focus();
}

function mark(rows, place) {
  rows.forEach((row, i) => row.setAttribute('aria-selected', String(i === place)));
  if (place !== null) {
    makeReachable(rows, rows[place]);
    rows[place].scrollIntoView({ block: 'nearest' });
  }
}
