// Buttons for the usual sides and for the whole part.

import { element } from '../dom.js';
import { VIEWS } from '../view/camera.js';

export function makeViews(host, camera) {
  const button = (name, label, act) =>
    element(
      'button',
      {
        type: 'button',
        class: 'tool',
        'aria-label': label,
        onclick: act,
      },
      name,
    );
  host.replaceChildren(
    ...Object.keys(VIEWS).map((name) =>
      button(name, name === 'iso' ? 'Look from a corner' : `Look from ${name}`, () =>
        camera.look(name),
      ),
    ),
    button('fit', 'See the whole part', () => camera.fit()),
  );
}
