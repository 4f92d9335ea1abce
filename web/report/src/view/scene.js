// The picture: what is in it, what it looks like now, and when it is drawn.

// Loading these tells vtk.js how to draw what the scene holds; its own profiles bring more.
import '@kitware/vtk.js/Rendering/OpenGL/Actor';
import '@kitware/vtk.js/Rendering/OpenGL/Camera';
import '@kitware/vtk.js/Rendering/OpenGL/PolyDataMapper';
import '@kitware/vtk.js/Rendering/OpenGL/Renderer';
import vtkOpenGLRenderWindow from '@kitware/vtk.js/Rendering/OpenGL/RenderWindow';
import vtkRenderer from '@kitware/vtk.js/Rendering/Core/Renderer';
import vtkRenderWindow from '@kitware/vtk.js/Rendering/Core/RenderWindow';

import { ANGLE_MAP, flat, rgb, TIME_MAP } from '../colours.js';
import { Camera } from './camera.js';
import { corners, frameOf } from './frame.js';
import { chosenActors, classActors, scenePolylines, UNCUT } from './lines.js';
import { skinActors } from './skin.js';

export function canDraw() {
  const canvas = document.createElement('canvas');
  return Boolean(canvas.getContext('webgl2'));
}

export class Scene {
  // host: the element that holds the canvas; onDrawn(scene) is called after every drawing.
  constructor(host, data, range, onDrawn) {
    this.host = host;
    this.onDrawn = onDrawn;
    this.frame = frameOf(data.skin, data.lines);
    this.state = {
      timeColours: flat(TIME_MAP),
      angleColours: flat(ANGLE_MAP),
      now: 2,
      bands: 0,
      cut: UNCUT,
      cutting: false,
      showThrough: data.linesThroughPart === true,
      pixel: 1,
      toEye: [0, 0, 1],
      theme: null,
    };
    this.waits = 0;
    this.drawings = 0;
    this.makeWindow();
    this.polylines = data.lines.map((line) => scenePolylines(line, range, this.frame));
    this.classes = { weld: [], meld: [] };
    this.chosen = [];
    this.classOf = data.lines.map((line) => line.class);
    this.camera = new Camera(
      corners(this.frame),
      () => this.size(),
      () => this.draw(),
    );
    this.fill(data, range);
    new ResizeObserver(() => this.resize()).observe(host);
  }

  makeWindow() {
    this.renderer = vtkRenderer.newInstance();
    this.window = vtkRenderWindow.newInstance();
    this.window.addRenderer(this.renderer);
    this.view = vtkOpenGLRenderWindow.newInstance();
    this.view.setContainer(this.host);
    this.window.addView(this.view);
  }

  fill(data, range) {
    this.skin = skinActors(data.skin, range, this.frame, this.state);
    this.skin.forEach((actor) => this.renderer.addActor(actor));
    for (const name of Object.keys(this.classes)) {
      const polylines = this.polylines.filter((_, i) => this.classOf[i] === name).flat();
      this.classes[name] = classActors(name, polylines, this.state);
      this.classes[name].forEach((actor) => this.renderer.addActor(actor));
    }
  }

  size() {
    return [Math.max(this.host.clientWidth, 1), Math.max(this.host.clientHeight, 1)];
  }

  resize() {
    this.draw();
  }

  setTheme(colours) {
    this.state.theme = Object.fromEntries(
      Object.entries(colours).map(([name, hex]) => [name, rgb(hex)]),
    );
    this.renderer.setBackground(...this.state.theme.background);
    this.draw();
  }

  // Changes what the picture shows: any of now, bands, showThrough.
  set(changes) {
    Object.assign(this.state, changes);
    this.draw();
  }

  // Cuts at a share of the part along an axis (0, 1 or 2); other: keeps the other side.
  cut(axis, share, other) {
    const plane = [0, 0, 0, 1];
    if (axis !== null) {
      const ends = [this.frame.low[axis], this.frame.high[axis]];
      const place = ends[0] + (ends[1] - ends[0]) * share;
      const sign = other ? 1 : -1;
      plane[axis] = sign;
      plane[3] = (-sign * (place - this.frame.middle[axis])) / this.frame.size;
    }
    this.set({ cut: plane, cutting: axis !== null });
  }

  showClass(name, visible) {
    this.classes[name].forEach((actor) => actor.setVisibility(visible));
    this.draw();
  }

  // Highlights the line at this place of the list, or none.
  choose(place) {
    this.chosen.forEach((actor) => this.renderer.removeActor(actor));
    this.chosen =
      place === null ? [] : chosenActors(this.classOf[place], this.polylines[place], this.state);
    this.chosen.forEach((actor) => this.renderer.addActor(actor));
    this.draw();
  }

  flyTo(place) {
    const points = this.polylines[place].flatMap((polyline) => triples(polyline.points));
    if (points.length > 0) this.camera.fly(points);
  }

  // Draws at the next chance, once however often it is asked.
  draw() {
    if (!this.waits) this.waits = requestAnimationFrame(() => this.drawNow());
  }

  drawNow() {
    cancelAnimationFrame(this.waits);
    this.waits = 0;
    // A host without size is not shown, as on paper.
    if (!this.state.theme || this.host.clientWidth === 0) return;
    const [width, height] = this.size();
    const dense = Math.min(window.devicePixelRatio || 1, 2);
    const wanted = [Math.round(width * dense), Math.round(height * dense)];
    if (this.view.getSize().some((s, i) => s !== wanted[i])) this.view.setSize(...wanted);
    this.state.pixel = this.camera.pixel();
    this.state.toEye = this.camera.from;
    this.camera.apply(this.renderer.getActiveCamera());
    this.renderer.resetCameraClippingRange();
    this.window.render();
    this.drawings += 1;
    this.onDrawn(this);
  }

  // The picture as it is now, as the address of a PNG.
  picture() {
    this.drawNow();
    return this.host.querySelector('canvas').toDataURL('image/png');
  }
}

function triples(points) {
  const found = [];
  for (let i = 0; i < points.length; i += 3) found.push([points[i], points[i + 1], points[i + 2]]);
  return found;
}
