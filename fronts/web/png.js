"use strict";
// PNG to straight samples and back, every bit of them kept. A canvas would multiply colours by alpha and cut 16 bits to
// 8.

const pngSignature = [137, 80, 78, 71, 13, 10, 26, 10];
const pngChannels = { 0: 1, 2: 3, 3: 1, 4: 2, 6: 4 };
// What smoothing does not change: how the samples are to be seen, and what is told of the picture.
const pngKept = ["cHRM", "cICP", "gAMA", "iCCP", "sRGB", "pHYs", "oFFs", "eXIf", "tEXt", "zTXt", "iTXt", "tIME"];

const crcTable = Uint32Array.from({ length: 256 }, (_, n) => {
  for (let k = 0; k < 8; ++k) n = n & 1 ? 0xEDB88320 ^ (n >>> 1) : n >>> 1;
  return n;
});
function crcOf(bytes) {
  let crc = -1;
  for (let i = 0; i < bytes.length; ++i) crc = crcTable[(crc ^ bytes[i]) & 255] ^ (crc >>> 8);
  return ~crc >>> 0;
}

async function through(stream, parts) {
  try {
    return new Uint8Array(await new Response(new Blob(parts).stream().pipeThrough(stream)).arrayBuffer());
  } catch {
    throw new Trouble("broken");
  }
}

const isPng = bytes => pngSignature.every((byte, i) => bytes[i] === byte);

// The chunks by name; those of one name in a list.
function pngChunks(bytes) {
  const view = new DataView(bytes.buffer, bytes.byteOffset, bytes.byteLength);
  const chunks = new Map();
  for (let at = pngSignature.length; at + 12 <= bytes.length;) {
    const length = view.getUint32(at), end = at + 8 + length;
    if (end + 4 > bytes.length) break;
    const named = bytes.subarray(at + 4, end);
    const name = String.fromCharCode(...named.subarray(0, 4));
    if (crcOf(named) !== view.getUint32(end)) throw new Trouble("broken");
    chunks.set(name, [...(chunks.get(name) ?? []), named.subarray(4)]);
    if (name === "IEND") return chunks;
    at = end + 4;
  }
  throw new Trouble("broken");
}

function pngHeader(chunks) {
  const [bytes] = chunks.get("IHDR") ?? [new Uint8Array()];
  if (bytes.length !== 13) throw new Trouble("broken");
  const view = new DataView(bytes.buffer, bytes.byteOffset, 13);
  const width = view.getUint32(0), height = view.getUint32(4), bits = bytes[8], type = bytes[9];
  const channels = pngChannels[type], depths = { 0: [1, 2, 4, 8, 16], 3: [1, 2, 4, 8] }[type] ?? [8, 16];
  if (!channels || !depths.includes(bits) || width === 0 || height === 0) throw new Trouble("broken");
  return { width, height, bits, type, channels, interlaced: bytes[12] === 1 };
}

// Undoes the filters of the rows of one pass in place.
function unfilter(data, start, rows, rowBytes, pixelBytes) {
  for (let y = 0, at = start; y < rows; ++y, at += rowBytes + 1) {
    const filter = data[at], row = at + 1, above = y > 0 ? row - rowBytes - 1 : -1;
    if (filter > 4) throw new Trouble("broken");
    if (filter === 0) continue;
    for (let i = 0; i < rowBytes; ++i) {
      const left = i >= pixelBytes ? data[row + i - pixelBytes] : 0;
      const up = above >= 0 ? data[above + i] : 0;
      const corner = above >= 0 && i >= pixelBytes ? data[above + i - pixelBytes] : 0;
      data[row + i] += filter === 1 ? left : filter === 2 ? up : filter === 3 ? (left + up) >> 1
        : paeth(left, up, corner);
    }
  }
}
function paeth(left, up, corner) {
  const guess = left + up - corner;
  const fromLeft = Math.abs(guess - left), fromUp = Math.abs(guess - up), fromCorner = Math.abs(guess - corner);
  return fromLeft <= fromUp && fromLeft <= fromCorner ? left : fromUp <= fromCorner ? up : corner;
}

// Sets a pixel of `samples` from the values of its channels in the file.
function pngPixels({ type, bits, channels }, chunks, samples) {
  const full = samples instanceof Uint16Array ? 65535 : 255;
  const [transparent] = chunks.get("tRNS") ?? [];
  if (type === 3) {
    const [palette] = chunks.get("PLTE") ?? [];
    if (!palette) throw new Trouble("broken");
    return (to, [index]) => {
      if (index * 3 + 2 >= palette.length) throw new Trouble("broken");
      for (let i = 0; i < 3; ++i) samples[to + i] = palette[index * 3 + i];
      samples[to + 3] = transparent?.[index] ?? 255;
    };
  }
  const gray = channels < 3, alpha = channels % 2 === 0, scale = bits < 8 ? 255 / (2 ** bits - 1) : 1;
  const hidden = transparent && !alpha && transparent.length >= 2 * channels
    ? Array.from({ length: channels }, (_, i) => transparent[2 * i] << 8 | transparent[2 * i + 1]) : null;
  return (to, values) => {
    for (let i = 0; i < 3; ++i) samples[to + i] = values[gray ? 0 : i] * scale;
    samples[to + 3] = alpha ? values[channels - 1] : hidden?.every((value, i) => value === values[i]) ? 0 : full;
  };
}

function pngPasses({ width, height, interlaced }) {
  const whole = [[0, 0, 1, 1]];
  const adam7 = [[0, 0, 8, 8], [4, 0, 8, 8], [0, 4, 4, 8], [2, 0, 4, 4], [0, 2, 2, 4], [1, 0, 2, 2], [0, 1, 1, 2]];
  return (interlaced ? adam7 : whole).map(([left, top, stepX, stepY]) => ({
    left, top, stepX, stepY, columns: Math.ceil((width - left) / stepX), rows: Math.ceil((height - top) / stepY),
  })).filter(pass => pass.columns > 0 && pass.rows > 0);
}

// Straight RGBA samples: bytes, or 16 bits each where the file has 16.
async function readPng(bytes) {
  const chunks = pngChunks(bytes), header = pngHeader(chunks);
  const { width, height, bits, channels } = header;
  const data = await through(new DecompressionStream("deflate"), chunks.get("IDAT") ?? []);
  const passes = pngPasses(header), rowBytes = pass => Math.ceil(pass.columns * channels * bits / 8);
  const bytesOfAll = passes.reduce((sum, pass) => sum + pass.rows * (rowBytes(pass) + 1), 0);
  if (data.length < bytesOfAll) throw new Trouble("broken");
  const samples = new (bits === 16 ? Uint16Array : Uint8Array)(width * height * 4);
  const setPixel = pngPixels(header, chunks, samples);
  const valueAt = bits === 16 ? (row, i) => data[row + 2 * i] << 8 | data[row + 2 * i + 1]
    : bits === 8 ? (row, i) => data[row + i]
    : (row, i) => data[row + (i * bits >> 3)] >> (8 - bits - (i * bits & 7)) & (2 ** bits - 1);
  const values = new Array(channels);
  let start = 0;
  for (const pass of passes) {
    const rowLength = rowBytes(pass);
    unfilter(data, start, pass.rows, rowLength, Math.max(1, channels * bits >> 3));
    for (let y = 0; y < pass.rows; ++y, start += rowLength + 1) {
      for (let x = 0; x < pass.columns; ++x) {
        for (let i = 0; i < channels; ++i) values[i] = valueAt(start + 1, x * channels + i);
        setPixel(((pass.top + y * pass.stepY) * width + pass.left + x * pass.stepX) * 4, values);
      }
    }
  }
  if (channels < 3 && header.type !== 3) chunks.delete("iCCP");  // a profile of grays is none of RGB
  const kept = pngKept.flatMap(name => (chunks.get(name) ?? []).map(content => ({ name, content })));
  return { width, height, samples, kept, exact: true };
}

function pngChunk(name, ...parts) {
  const content = new Uint8Array(4 + parts.reduce((sum, part) => sum + part.length, 0));
  content.set([...name].map(letter => letter.charCodeAt(0)));
  let at = 4;
  for (const part of parts) {
    content.set(part, at);
    at += part.length;
  }
  const ends = new DataView(new ArrayBuffer(8));
  ends.setUint32(0, content.length - 4);
  ends.setUint32(4, crcOf(content));
  return [ends.buffer.slice(0, 4), content, ends.buffer.slice(4)];
}

function isOpaque(samples) {
  const full = samples instanceof Uint16Array ? 65535 : 255;
  for (let i = 3; i < samples.length; i += 4) if (samples[i] !== full) return false;
  return true;
}

// A blob of the samples, without an alpha channel where all is opaque. Rows are not filtered: cels pack best so.
async function writePng({ width, height, kept }, samples) {
  const channels = isOpaque(samples) ? 3 : 4, bytes = samples.BYTES_PER_ELEMENT;
  const rows = new Uint8Array((width * channels * bytes + 1) * height);
  let to = 0, from = 0;
  for (let y = 0; y < height; ++y) {
    ++to;
    for (let x = 0; x < width; ++x, from += 4) {
      for (let i = 0; i < channels; ++i) {
        const sample = samples[from + i];
        if (bytes === 2) rows[to++] = sample >> 8;
        rows[to++] = sample;
      }
    }
  }
  const header = new DataView(new ArrayBuffer(13));
  header.setUint32(0, width);
  header.setUint32(4, height);
  header.setUint8(8, bytes * 8);
  header.setUint8(9, channels === 3 ? 2 : 6);
  return new Blob([
    new Uint8Array(pngSignature), ...pngChunk("IHDR", new Uint8Array(header.buffer)),
    ...kept.flatMap(({ name, content }) => pngChunk(name, content)),
    ...pngChunk("IDAT", await through(new CompressionStream("deflate"), [rows])), ...pngChunk("IEND"),
  ], { type: "image/png" });
}
