"use strict";
// Answers the page, one request after the other, so that the page itself never waits.

let core = null, picture = null;

async function unpacked(base64) {
  const bytes = Uint8Array.from(atob(base64), letter => letter.charCodeAt(0));
  return through(new DecompressionStream("gzip"), [bytes]);
}

// For the screen, which has 8 bits.
function bitmapOf(samples, { width, height }) {
  let shown = new Uint8ClampedArray(samples.buffer, samples.byteOffset, samples.byteLength);
  if (samples instanceof Uint16Array) {
    shown = new Uint8ClampedArray(samples.length);
    for (let i = 0; i < samples.length; ++i) shown[i] = samples[i] >> 8;
  }
  return createImageBitmap(new ImageData(shown, width, height));
}

// Pixels with an edge, for zooms where lines between pixels have no room.
function overlayOf(marks, { width, height }, [red, green, blue]) {
  const pixels = new ImageData(width, height), words = new Uint32Array(pixels.data.buffer);
  const color = new Uint32Array(new Uint8Array([red, green, blue, 255]).buffer)[0];
  for (let i = 0; i < marks.length; ++i) if (marks[i]) words[i] = color;
  return createImageBitmap(pixels);
}

const answers = {
  async start({ packed, textIds }) {
    core = await Core.load(await unpacked(packed));
    const texts = japanese => Object.fromEntries(
      Object.entries(textIds).map(([name, id]) => [name, core.moduleText(id, japanese)]));
    return { version: core.version, controls: core.controls, texts: { en: texts(false), ja: texts(true) } };
  },

  // Where it fails, the picture before is still there.
  async open({ blob }) {
    const opened = await readPicture(blob), { width, height, kept, exact, samples } = opened;
    const before = await bitmapOf(samples, opened);
    core.open(opened);
    picture = { width, height, kept };
    return { width, height, exact, bits: samples.BYTES_PER_ELEMENT * 8, before };
  },

  // `edges`: their colour where they are wanted, else null.
  async smooth({ settings, edges }) {
    const start = performance.now();
    core.smooth(settings);
    const milliseconds = performance.now() - start;
    const marks = edges && core.edges(settings);
    return {
      milliseconds, marks, overlay: marks && await overlayOf(marks, picture, edges),
      after: await bitmapOf(core.after, picture),
    };
  },

  pixel({ x, y }) {
    const at = (y * picture.width + x) * 4;
    return { before: [...core.before.subarray(at, at + 4)], after: [...core.after.subarray(at, at + 4)] };
  },

  async save() { return { blob: await writePng(picture, core.after) }; },
};

let last = Promise.resolve();
onmessage = ({ data: { id, ask, ...rest } }) => {
  last = last.then(async () => {
    try {
      const answer = await answers[ask](rest);
      const moved = Object.values(answer).filter(value => value instanceof ImageBitmap);
      postMessage({ id, answer }, moved);
    } catch (error) {
      const name = error instanceof RangeError ? "tooLarge" : error instanceof Trouble ? error.name : "failed";
      postMessage({ id, trouble: name, detail: error.message });
    }
  });
};
