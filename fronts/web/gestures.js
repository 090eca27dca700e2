"use strict";
// What pointers, the wheel and keys do to the picture.

// Less than a notch of any wheel, and more than one of the many events of a touch pad.
const pixelsOfStep = 40, pixelsOfLine = 16;

class Gestures {
  // `pointed` is told of the place that is pointed at, or null; `picked` of one that is picked with the dropper.
  constructor(view, stage, { pointed, picked }) {
    Object.assign(this, { view, pointed, picked });
    this.fingers = new Map();  // the pointers that are down
    this.picking = false;
    this.turned = 0;  // how far the wheel has been turned since the last step
    const { canvas, divider } = view;
    canvas.addEventListener("pointerdown", event => this.down(event));
    canvas.addEventListener("pointermove", event => this.move(event));
    for (const end of ["pointerup", "pointercancel"])
      canvas.addEventListener(end, event => this.fingers.delete(event.pointerId));
    canvas.addEventListener("pointerleave", () => this.point(null));
    canvas.addEventListener("keydown", event => this.key(event));
    stage.addEventListener("wheel", event => this.wheel(event), { passive: false });
    divider.addEventListener("pointerdown", event => divider.setPointerCapture(event.pointerId));
    divider.addEventListener("pointermove", event => {
      if (!divider.hasPointerCapture(event.pointerId)) return;
      const box = canvas.getBoundingClientRect();
      view.splitTo((event.clientX - box.left) / box.width);
    });
    divider.addEventListener("keydown", event => this.dividerKey(event));
  }

  // Of an event, in pixels of the canvas.
  at({ clientX, clientY }) {
    const { canvas, density } = this.view, box = canvas.getBoundingClientRect();
    return { x: (clientX - box.left) * density, y: (clientY - box.top) * density };
  }

  // Points at a place of the picture, if it is one.
  point(place) {
    this.view.point = place && this.view.contains(place) ? place : null;
    this.view.redraw();
    this.pointed(this.view.point);
  }

  pick(on) {
    this.picking = on;
    this.view.canvas.classList.toggle("picking", on);
    if (!on) return void this.point(null);
    if (this.view.point) return;
    const { width, height } = this.view.canvas;
    this.point(this.view.placeAt(width / 2, height / 2));
  }

  down(event) {
    if (!this.view.picture || event.button !== 0) return;
    const at = this.at(event);
    this.point(this.view.placeAt(at.x, at.y));
    if (this.picking) {
      if (this.view.point) this.picked(this.view.point);
      return;
    }
    this.view.canvas.setPointerCapture(event.pointerId);
    this.fingers.set(event.pointerId, at);
  }

  move(event) {
    if (!this.view.picture) return;
    const at = this.at(event), before = this.fingers.get(event.pointerId);
    if (before && this.fingers.size === 1) this.view.moveBy(at.x - before.x, at.y - before.y);
    if (before && this.fingers.size === 2) this.pinch(event.pointerId, before, at);
    if (before) this.fingers.set(event.pointerId, at);
    this.point(this.view.placeAt(at.x, at.y));
  }

  // Two fingers: what lies between them grows as their distance does.
  pinch(id, before, at) {
    const [other] = [...this.fingers].filter(([finger]) => finger !== id).map(([, place]) => place);
    const distance = place => Math.max(1, Math.hypot(place.x - other.x, place.y - other.y));
    const zoom = this.view.scale * distance(at) / distance(before);
    this.view.moveBy((at.x - before.x) / 2, (at.y - before.y) / 2);
    this.view.zoomTo(Math.min(Math.max(zoom, zooms[0]), zooms.at(-1)), (at.x + other.x) / 2, (at.y + other.y) / 2);
  }

  wheel(event) {
    event.preventDefault();
    this.turned += event.deltaY * (event.deltaMode === WheelEvent.DOM_DELTA_LINE ? pixelsOfLine : 1);
    if (Math.abs(this.turned) < pixelsOfStep) return;
    const at = this.at(event);
    this.view.zoomBy(-this.turned, at.x, at.y);
    this.turned = 0;
  }

  key(event) {
    if (event.ctrlKey || event.altKey || event.metaKey || !this.view.picture) return;
    const ways = { ArrowLeft: [-1, 0], ArrowRight: [1, 0], ArrowUp: [0, -1], ArrowDown: [0, 1] };
    const way = ways[event.key];
    if (way && this.picking) this.step(way, event.shiftKey ? 10 : 1);
    else if (way) this.view.moveBy(-40 * way[0], -40 * way[1]);
    else if (event.key === "Enter" && this.picking && this.view.point) this.picked(this.view.point);
    else return;
    event.preventDefault();
  }

  // Moves the dropper by pixels, and the picture when the dropper leaves what is seen of it.
  step([dx, dy], pixels) {
    const { view } = this, { width, height } = view.picture;
    const next = (at, by, size) => Math.min(Math.max(Math.floor(at) + by * pixels, 0), size - 1) + 0.5;
    const from = view.point ?? { x: width / 2, y: height / 2 };
    const place = { x: next(from.x, dx, width), y: next(from.y, dy, height) };
    const x = (place.x - view.left) * view.scale, y = (place.y - view.top) * view.scale;
    if (x < 0 || y < 0 || x >= view.canvas.width || y >= view.canvas.height)
      view.moveBy((from.x - place.x) * view.scale, (from.y - place.y) * view.scale);
    this.point(place);
  }

  dividerKey(event) {
    const steps = {
      ArrowLeft: -1, ArrowDown: -1, ArrowRight: 1, ArrowUp: 1, PageDown: -10, PageUp: 10, Home: -100, End: 100,
    };
    if (!Object.hasOwn(steps, event.key)) return;
    event.preventDefault();
    this.view.splitTo(this.view.split + steps[event.key] / 100);
  }
}
