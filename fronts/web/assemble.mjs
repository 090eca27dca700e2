// assemble.mjs WASM SAMPLE PAGE: puts the parts beside this file into one page that loads nothing else.
import { mkdirSync, readFileSync, writeFileSync } from "node:fs";
import { dirname } from "node:path";
import { gzipSync } from "node:zlib";

const largest = 300000;  // bytes, so that it is there at once
const [wasm, sample, page] = process.argv.slice(2);

function read(name) {
  const text = readFileSync(new URL(name, import.meta.url), "utf8");
  if (name.endsWith(".js") && /<\/?script|<!--/i.test(text)) throw new Error(`${name} would end the script around it`);
  return text;
}
const join = (...names) => names.map(read).join("\n");

const parts = {
  style: read("page.css"),
  page: join("texts.js", "panel.js", "view.js", "gestures.js", "page.js"),
  worker: join("core.js", "png.js", "pictures.js", "worker.js"),
  core: gzipSync(readFileSync(wasm), { level: 9 }).toString("base64"),
  sample: readFileSync(sample).toString("base64"),
};
const whole = read("page.html").replace(/@(\w+)@/g, (_, name) => {
  if (!(name in parts)) throw new Error(`page.html asks for an unknown part: ${name}`);
  return parts[name];
});
if (Buffer.byteLength(whole) > largest) throw new Error(`the page has ${Buffer.byteLength(whole)} bytes`);
mkdirSync(dirname(page), { recursive: true });
writeFileSync(page, whole);
