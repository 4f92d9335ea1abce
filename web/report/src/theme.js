// Light and dark: what the system wants until the button says otherwise. The picture takes its
// colours from the same style sheet as the page.

const NAMES = ['background', 'waiting', 'never', 'edge', 'rim', 'accent'];

export function makeTheme(button, onChange) {
  const system = window.matchMedia('(prefers-color-scheme: dark)');
  let own = null;
  const dark = () => own ?? system.matches;
  const show = () => {
    document.documentElement.dataset.theme = dark() ? 'dark' : 'light';
    button.setAttribute('aria-pressed', String(dark()));
    onChange(pictureColours());
  };
  button.addEventListener('click', () => {
    own = !dark();
    show();
  });
  system.addEventListener('change', show);
  show();
}

// Colours of the picture, "#rrggbb" each, in the theme in force or in a given one.
export function pictureColours(theme = document.documentElement.dataset.theme) {
  const before = document.documentElement.dataset.theme;
  document.documentElement.dataset.theme = theme;
  const style = getComputedStyle(document.documentElement);
  const colours = Object.fromEntries(
    NAMES.map((name) => [name, style.getPropertyValue(`--picture-${name}`).trim()]),
  );
  document.documentElement.dataset.theme = before;
  return colours;
}
