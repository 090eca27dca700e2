// same_results.mjs WASM CORE_JS WRITE_PICTURES: of pinned and random pictures the page's core makes the bytes that the
// native one makes.
import { execFileSync } from "node:child_process";
import { mkdtempSync, readFileSync, rmSync } from "node:fs";
import { tmpdir } from "node:os";
import { join } from "node:path";

const [wasm, coreJs, writePictures] = process.argv.slice(2);
const { Core } = new Function(`${readFileSync(coreJs, "utf8")}\nreturn { Core };`)();
const sampleKinds = [Uint8Array, Uint16Array, Uint16Array, null, Float32Array];

function pictures() {
  const folder = mkdtempSync(join(tmpdir(), "pictures-"));
  try {
    execFileSync(writePictures, [join(folder, "pictures")]);
    return readFileSync(join(folder, "pictures"));
  } finally {
    rmSync(folder, { recursive: true });
  }
}

const core = await Core.load(readFileSync(wasm));
let sampleType;
Object.defineProperty(core, "sampleType", { get: () => sampleType });
const file = pictures();
let at = 0, count = 0;
const take = (Kind, length) => {
  const bytes = file.subarray(at, at += length * Kind.BYTES_PER_ELEMENT);
  return new Kind(Uint8Array.from(bytes).buffer);
};
for (; at < file.length; ++count) {
  const [sample, width, height, ...fields] = take(Int32Array, 12);
  const samples = take(sampleKinds[sample], width * height * 4), expected = take(sampleKinds[sample], samples.length);
  sampleType = sample;
  core.open({ width, height, samples });
  core.smooth(core.controls.map(({ offset, values }) => fields.slice(offset / 4 - 1).slice(0, values.length)));
  const after = core.after, bytes = new Uint8Array(after.buffer, after.byteOffset, after.byteLength);
  if (Buffer.compare(bytes, new Uint8Array(expected.buffer)) !== 0)
    throw new Error(`picture ${count}: sample type ${sample}, ${width} x ${height}, fields ${fields}`);
}
if (count !== 1018) throw new Error(`${count} pictures`);
