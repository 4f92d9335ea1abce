// On paper the picture is an image, taken in light colours when printing begins.

import { pictureColours } from './theme.js';

export function attachPrint(button, image, scene) {
  button.addEventListener('click', () => window.print());
  window.addEventListener('beforeprint', () => {
    if (!scene) return;
    const before = pictureColours();
    scene.setTheme(pictureColours('light'));
    image.src = scene.picture();
    scene.setTheme(before);
  });
}
