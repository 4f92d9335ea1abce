// Elements of the page. Text goes in as text, never as markup.

export function byId(id) {
  return document.getElementById(id);
}

// An element with attributes and children; strings become text nodes.
export function element(name, attributes = {}, ...children) {
  return filled(document.createElement(name), attributes, children);
}

export function svgElement(name, attributes = {}, ...children) {
  return filled(document.createElementNS('http://www.w3.org/2000/svg', name), attributes, children);
}

function filled(node, attributes, children) {
  for (const [key, value] of Object.entries(attributes)) {
    if (value === undefined || value === null || value === false) continue;
    if (key.startsWith('on')) node.addEventListener(key.slice(2), value);
    else node.setAttribute(key, value === true ? '' : String(value));
  }
  node.append(...children);
  return node;
}
