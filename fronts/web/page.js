"use strict";
// Brings the parts together: the worker that does the work, the view, the controls and the buttons.

// The worker's answers come in the order of the requests.
class Requests {
  constructor(source) {
    this.worker = new Worker(URL.createObjectURL(new Blob([source], { type: "text/javascript" })));
    this.pending = new Map();
    this.last = 0;
    // It has not even begun.
    this.worker.onerror = ({ message }) => this.pending.forEach(({ reject }) => reject(new Error(message)));
    this.worker.onmessage = ({ data: { id, answer, trouble, detail } }) => {
      const { resolve, reject } = this.pending.get(id);
      this.pending.delete(id);
      if (trouble) reject(Object.assign(new Error(detail), { trouble }));
      else resolve(answer);
    };
  }

  ask(what, rest = {}) {
    return new Promise((resolve, reject) => {
      this.pending.set(++this.last, { resolve, reject });
      this.worker.postMessage({ id: this.last, ask: what, ...rest });
    });
  }
}

// Runs `work` as often as it is asked for, one after the other; of those asked for meanwhile only the last one counts.
function latest(work) {
  let running = null, again = null;
  const run = async (...values) => {
    do {
      again = null;
      await work(...values);
      if (again) values = again;
    } while (again);
    running = null;
  };
  return (...values) => {
    if (running) again = values;
    else running = run(...values);
    return running;
  };
}

const worker = new Requests(byId("worker").textContent);
const view = new View(byId("view"), byId("divider"), byId("loupe"));
let panel = null;
let opened = null;  // { name, width, height, bits, milliseconds, failed: whether its last smoothing did }
let version = "";
let message = () => "";

function say(words) {
  message = words;
  byId("message").textContent = message();
}

function showState() {
  if (!opened) return;
  const { bits, height, milliseconds, width } = opened;
  const time = `${milliseconds.toFixed(0)} ${text("milliseconds")}`;
  byId("state").textContent = `${width} × ${height}, ${bits} ${text("bits")}, ${time}`;
}

function fail(error) {
  console.warn(error.message);
  say(() => text(error.trouble ?? "failed"));
}

const smooth = latest(async () => {
  if (!opened) return;
  const { picture } = view;
  try {
    const edges = byId("edges").checked ? edgeColor : null;
    const answer = await worker.ask("smooth", { settings: panel.settings(), edges });
    if (view.picture !== picture) return;  // another has been opened meanwhile
    view.update(answer);
    tell(view.point);
    Object.assign(opened, { milliseconds: answer.milliseconds, failed: false });
    showState();
  } catch (error) {
    opened.failed = true;
    fail(error);
  }
});

// What was said of the values before holds no longer.
function change() {
  say(() => gestures.picking ? text("pick") : "");
  smooth();
}

const tell = latest(async place => {
  if (!place) return void (byId("pixel").textContent = "");
  const [x, y] = [Math.floor(place.x), Math.floor(place.y)];
  const { before, after } = await worker.ask("pixel", { x, y });
  const shown = channels => opened.bits === 8 ? `${hexOf(channels)} ${String(channels[3]).padStart(3)}`
    : channels.map(value => String(value).padStart(5)).join(" ");
  byId("pixel").textContent = `${x}, ${y}  ${shown(before)} → ${shown(after)}`;
});

async function open(blob, name) {
  say(() => text("loading"));
  try {
    const { before, exact, ...size } = await worker.ask("open", { blob });
    opened = { name: name.replace(/\.[^.]*$/, ""), milliseconds: 0, ...size };
    view.show({ before, width: size.width, height: size.height });
    say(() => exact ? "" : text("inexact"));
    byId("save").disabled = false;
    await smooth();
  } catch (error) {
    fail(error);
  }
}

function openSample() {
  const bytes = Uint8Array.from(atob(byId("sample").textContent), letter => letter.charCodeAt(0));
  return open(new Blob([bytes]), "cel.png");
}

async function save() {
  say(() => text("saving"));
  try {
    await smooth();
    if (opened.failed) return;
    const { blob } = await worker.ask("save");
    const link = make("a", { href: URL.createObjectURL(blob), download: `${opened.name}-smooth.png` });
    link.click();
    setTimeout(() => URL.revokeObjectURL(link.href), 60000);
    say(() => text("saved") + link.download);
  } catch (error) {
    fail(error);
  }
}

function pick(on) {
  gestures.pick(on);
  byId("dropper").setAttribute("aria-pressed", on);
  say(() => on ? text("pick") : "");
  if (on) view.canvas.focus();
}

async function picked(place) {
  const { before } = await worker.ask("pixel", { x: Math.floor(place.x), y: Math.floor(place.y) });
  panel.key(before.map(value => opened.bits === 8 ? value : value >> 8));
  pick(false);
  byId("dropper").focus();
  smooth();
}

function speak(chosen) {
  language = byId("language").value = chosen;
  showTexts();
  byId("version").textContent = `nevrel ${version}  ${text("copyright")}`;
  byId("message").textContent = message();
  showState();
}

const gestures = new Gestures(view, byId("stage"), {
  pointed(place) {
    if (!byId("show-loupe").checked && !gestures.picking) view.point = null;
    if (opened) tell(place);
  },
  picked,
});

function listen() {
  byId("file").addEventListener("change", ({ target }) => {
    if (target.files[0]) open(target.files[0], target.files[0].name);
    target.value = "";
  });
  byId("take-sample").addEventListener("click", openSample);
  byId("save").addEventListener("click", save);
  byId("language").addEventListener("change", ({ target }) => speak(target.value));
  byId("smaller").addEventListener("click", () => view.zoomBy(-1));
  byId("larger").addEventListener("click", () => view.zoomBy(1));
  byId("fit").addEventListener("click", () => view.zoomTo(0));
  byId("whole").addEventListener("click", () => view.zoomTo(1));
  byId("edges").addEventListener("change", change);
  byId("dropper").addEventListener("click", () => pick(!gestures.picking));
  addEventListener("keydown", shortcut);
  addEventListener("paste", ({ clipboardData }) => {
    if (clipboardData.files[0]) open(clipboardData.files[0], clipboardData.files[0].name);
  });
  addEventListener("dragover", event => {
    event.preventDefault();
    byId("stage").classList.add("over");
  });
  addEventListener("dragleave", () => byId("stage").classList.remove("over"));
  addEventListener("drop", event => {
    event.preventDefault();
    byId("stage").classList.remove("over");
    const [file] = event.dataTransfer.files;
    if (file) open(file, file.name);
  });
}

function shortcut(event) {
  if (event.ctrlKey || event.altKey || event.metaKey || event.target.matches("[type=number], select")) return;
  const keys = {
    "+": () => view.zoomBy(1), "=": () => view.zoomBy(1), "-": () => view.zoomBy(-1),
    0: () => view.zoomTo(0), 1: () => view.zoomTo(1),
    e: () => byId("edges").click(), l: () => byId("show-loupe").click(),
    Escape: () => gestures.picking && pick(false),
  };
  if (!Object.hasOwn(keys, event.key)) return;
  event.preventDefault();
  keys[event.key]();
}

async function start() {
  speak(navigator.language.startsWith("ja") ? "ja" : "en");
  const core = await worker.ask("start", { packed: byId("core").textContent, textIds: moduleTexts }).catch(error => {
    say(() => text("noSupport"));
    throw error;
  });
  fromModule = core.texts;
  version = core.version;
  panel = new Panel(byId("panel"), core.controls, change);
  listen();
  speak(language);
  await openSample();
}
start();
