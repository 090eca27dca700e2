"use strict";
// The picture on the screen: before and after on both sides of a divider, edges, and a loupe.

const zooms = [1 / 16, 1 / 8, 1 / 4, 1 / 2, 1, 2, 3, 4, 6, 8, 12, 16, 24, 32, 48, 64];
const edgeColor = [230, 0, 60];
const edgeStyle = `rgb(${edgeColor})`;
const markRight = 1, markBelow = 2;
const loupePixels = 11, loupeScale = 10;

// Lengths are in pixels of the canvas, places in those of the picture.
class View {
  constructor(canvas, divider, loupe) {
    Object.assign(this, { canvas, divider, loupe });
    this.pen = canvas.getContext("2d");
    this.picture = null;  // { width, height, before, after, overlay, marks }; the last two where edges are shown
    this.zoom = 0;        // pixels of the canvas for one of the picture; 0 to fit
    this.left = this.top = 0;  // the place at the canvas's corner
    this.split = 0.5;
    this.point = null;  // the place under the loupe
    this.waiting = false;
    new ResizeObserver(() => this.redraw()).observe(canvas);
  }

  show(picture) {
    for (const name of ["before", "after", "overlay"]) this.picture?.[name]?.close();
    this.picture = picture;
    this.point = null;
    this.zoomTo(0);
  }

  // Takes what has been made anew.
  update({ after, overlay, marks }) {
    this.picture.after?.close();
    this.picture.overlay?.close();
    Object.assign(this.picture, { after, overlay, marks });
    this.redraw();
  }

  redraw() {
    if (this.waiting) return;
    this.waiting = true;
    requestAnimationFrame(() => {
      this.waiting = false;
      this.draw();
    });
  }

  get density() { return devicePixelRatio || 1; }

  get scale() {
    const { canvas, picture } = this;
    return this.zoom || Math.min(canvas.width / picture.width, canvas.height / picture.height);
  }

  get splitAt() { return Math.round(this.canvas.width * this.split); }

  placeAt(x, y) { return { x: this.left + x / this.scale, y: this.top + y / this.scale }; }

  contains({ x, y }) { return x >= 0 && y >= 0 && x < this.picture.width && y < this.picture.height; }

  // Smaller than the room it is in the middle, larger it leaves no room.
  settle() {
    const { canvas, picture, scale } = this;
    const settled = (at, size, room) => size * scale <= room ? (size - room / scale) / 2
      : Math.min(Math.max(at, 0), size - room / scale);
    this.left = settled(this.left, picture.width, canvas.width);
    this.top = settled(this.top, picture.height, canvas.height);
  }

  draw() {
    const { canvas, divider, pen } = this;
    canvas.width = Math.round(canvas.clientWidth * this.density);
    canvas.height = Math.round(canvas.clientHeight * this.density);
    divider.style.left = `${100 * this.split}%`;
    divider.setAttribute("aria-valuenow", Math.round(100 * this.split));
    if (!this.picture?.after || canvas.width === 0) return;
    this.settle();
    this.drawPart(this.picture.before, 0, this.splitAt);
    this.drawPart(this.picture.after, this.splitAt, canvas.width);
    if (this.picture.marks) this.drawEdges();
    byId("zoom").textContent = `${Math.round(this.scale * 100)} %`;
    this.drawLoupe();
    pen.setTransform(1, 0, 0, 1, 0, 0);
  }

  drawPart(bitmap, from, to) {
    const { pen, picture, scale } = this;
    pen.save();
    pen.beginPath();
    pen.rect(from, 0, to - from, this.canvas.height);
    pen.clip();
    pen.imageSmoothingEnabled = scale < 1;
    pen.imageSmoothingQuality = "medium";
    pen.drawImage(bitmap, -this.left * scale, -this.top * scale, picture.width * scale, picture.height * scale);
    pen.restore();
  }

  drawEdges() {
    const { canvas, left, pen, picture, scale, top } = this;
    if (scale < 4) return this.drawPart(picture.overlay, 0, canvas.width);
    const lastX = Math.min(picture.width, Math.ceil(left + canvas.width / scale));
    const lastY = Math.min(picture.height, Math.ceil(top + canvas.height / scale));
    const line = Math.max(1, scale / 8);
    pen.fillStyle = edgeStyle;
    for (let y = Math.max(0, Math.floor(top)); y < lastY; ++y) {
      for (let x = Math.max(0, Math.floor(left)); x < lastX; ++x) {
        const mark = picture.marks[y * picture.width + x], atX = (x - left) * scale, atY = (y - top) * scale;
        if (mark & markRight) pen.fillRect(atX + scale - line / 2, atY, line, scale);
        if (mark & markBelow) pen.fillRect(atX, atY + scale - line / 2, scale, line);
      }
    }
  }

  // Before and after side by side around the point.
  drawLoupe() {
    const { loupe, point, picture } = this, pen = loupe.getContext("2d");
    // Else the picture itself is as large, but does not show where keys have moved the dropper.
    const needed = this.scale < loupeScale || this.canvas.matches(".picking");
    loupe.hidden = !point || !needed;
    if (loupe.hidden) return;
    const side = loupePixels * loupeScale, half = (loupePixels - 1) / 2;
    const [x, y] = [Math.floor(point.x), Math.floor(point.y)];
    pen.clearRect(0, 0, loupe.width, loupe.height);
    pen.imageSmoothingEnabled = false;
    [picture.before, picture.after].forEach((bitmap, i) => {
      const at = 1 + i * (side + loupeScale);
      pen.drawImage(bitmap, x - half, y - half, loupePixels, loupePixels, at, 1, side, side);
      for (const [style, inset] of [["#000", 0], ["#fff", 1]]) {
        pen.strokeStyle = style;
        pen.strokeRect(at + half * loupeScale + inset - 0.5, 1 + half * loupeScale + inset - 0.5,
                       loupeScale + 1 - 2 * inset, loupeScale + 1 - 2 * inset);
      }
    });
    this.placeLoupe();
  }

  // Beside the point, where there is room.
  placeLoupe() {
    const { canvas, density, left, loupe, point, scale, top } = this, gap = 24;
    const at = (place, corner, room, size) => {
      const centre = (place - corner) * scale / density;
      return centre + gap + size <= room ? centre + gap : Math.max(0, centre - gap - size);
    };
    const x = at(point.x, left, canvas.clientWidth, loupe.offsetWidth);
    const y = at(point.y, top, canvas.clientHeight, loupe.offsetHeight);
    loupe.style.transform = `translate(${x}px, ${y}px)`;
  }

  // Keeps the place at (x, y) of the canvas where it is.
  zoomTo(zoom, x = this.canvas.width / 2, y = this.canvas.height / 2) {
    if (!this.picture) return;
    const place = this.placeAt(x, y);
    this.zoom = zoom;
    this.left = place.x - x / this.scale;
    this.top = place.y - y / this.scale;
    this.redraw();
  }

  zoomBy(steps, x, y) {
    if (!this.picture) return;
    const larger = zooms.filter(zoom => zoom > this.scale * 1.001);
    const smaller = zooms.filter(zoom => zoom < this.scale * 0.999);
    const next = steps > 0 ? larger[0] : smaller.at(-1);
    if (next) this.zoomTo(next, x, y);
  }

  moveBy(dx, dy) {
    this.left -= dx / this.scale;
    this.top -= dy / this.scale;
    this.redraw();
  }

  splitTo(share) {
    this.split = Math.min(1, Math.max(0, share));
    this.redraw();
  }
}
