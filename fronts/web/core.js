"use strict";
// The core in WebAssembly: the picture in its memory, and its controls as the C interface tells them.

const coreOk = 0, coreOutOfMemory = 6;
const rgbaOrder = 0;
const samples8 = 0, samples16 = 1;
const controlKinds = ["slider", "checkbox", "color"];
const controlBytes = 44, settingsBytes = 40, imageBytes = 8;

// A failure that has a text of this name on the page. Its detail, which is English, goes to the browser's console.
class Trouble extends Error {
  constructor(name, detail = "") {
    super(detail);
    this.name = name;
  }
}

class Core {
  static async load(bytes) {
    const { instance } = await WebAssembly.instantiate(bytes, { env: { emscripten_notify_memory_growth() {} } });
    instance.exports._initialize();
    return new Core(instance.exports);
  }

  constructor(exports) {
    this.exports = exports;
    this.controls = this.readControls();
    this.settings = exports.malloc(settingsBytes);
    this.images = exports.malloc(2 * imageBytes);
    this.picture = null;
  }

  // Views end whenever the memory grows, so each is made anew.
  words(address, count) { return new Int32Array(this.exports.memory.buffer, address, count); }

  text(address) {
    const bytes = new Uint8Array(this.exports.memory.buffer, address);
    return new TextDecoder("shift_jis").decode(bytes.slice(0, bytes.indexOf(0)));
  }

  get version() { return this.text(this.exports.nevrel_version()); }

  moduleText(id, japanese) { return this.text(this.exports.nevrel_web_text(id, japanese ? 1 : 0)); }

  readControls() {
    const count = this.exports.nevrel_control_count();
    return Array.from({ length: count }, (_, i) => {
      const at = this.words(this.exports.nevrel_control_at(i), controlBytes / 4);
      const [name, key, description, kind, minimum, maximum, red, green, blue, offset, inKeyGroup] = at;
      return {
        name: this.text(name), key: this.text(key), description: this.text(description), kind: controlKinds[kind],
        minimum, maximum, values: kind === 2 ? [red, green, blue] : [red], offset, inKeyGroup: inKeyGroup !== 0,
      };
    });
  }

  // Takes in RGBA samples, of bytes or of 16 bits each, instead of those that were there before.
  open({ width, height, samples }) {
    const input = this.exports.malloc(samples.byteLength), output = this.exports.malloc(samples.byteLength);
    if (!input || !output) {
      this.free(input, output);
      throw new Trouble("tooLarge");
    }
    if (this.picture) this.free(this.picture.input, this.picture.output);
    this.picture = { width, height, input, output, Samples: samples.constructor, count: samples.length };
    this.before.set(samples);
    this.after.set(samples);
  }

  free(...addresses) { addresses.forEach(address => this.exports.free(address)); }

  samplesAt(address) { return new this.picture.Samples(this.exports.memory.buffer, address, this.picture.count); }
  get before() { return this.samplesAt(this.picture.input); }
  get after() { return this.samplesAt(this.picture.output); }
  get sampleType() { return this.picture.Samples === Uint8Array ? samples8 : samples16; }

  // Settings: an array of values for each of the controls.
  set(settings) {
    this.exports.nevrel_settings_init(this.settings, settingsBytes);
    const words = this.words(this.settings, settingsBytes / 4);
    this.controls.forEach((control, i) => words.set(settings[i], control.offset / 4));
  }

  require(status) {
    if (status === coreOk) return;
    const name = status === coreOutOfMemory ? "tooLarge" : "failed";
    throw new Trouble(name, this.text(this.exports.nevrel_status_text(status)));
  }

  smooth(settings) {
    const { width, height, input, output } = this.picture;
    this.set(settings);
    const rowBytes = this.after.byteLength / height;
    this.words(this.images, 4).set([input, rowBytes, output, rowBytes]);
    this.require(this.exports.nevrel_smooth(this.settings, rgbaOrder, this.sampleType, width, height, this.images,
                                            this.images + imageBytes, 0));
  }

  // A byte for each pixel: 1 where it differs from the one on its right, 2 from the one below.
  edges(settings) {
    const { width, height, input } = this.picture;
    this.set(settings);
    const marks = this.exports.malloc(width * height);
    if (!marks) throw new Trouble("tooLarge");
    try {
      this.require(this.exports.nevrel_web_edges(this.settings, this.sampleType, width, height, input, marks));
      return new Uint8Array(this.exports.memory.buffer, marks, width * height).slice();
    } finally {
      this.exports.free(marks);
    }
  }
}
