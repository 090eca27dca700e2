"use strict";
// Whatever the browser decodes, as straight samples.

// Exact by the graphics library, which hands on what was decoded. Null where it is missing or the picture too large.
function readBack(bitmap) {
  const { width, height } = bitmap;
  const gl = new OffscreenCanvas(1, 1).getContext("webgl");
  if (!gl || Math.max(width, height) > gl.getParameter(gl.MAX_TEXTURE_SIZE)) return null;
  gl.pixelStorei(gl.UNPACK_PREMULTIPLY_ALPHA_WEBGL, false);
  gl.pixelStorei(gl.UNPACK_COLORSPACE_CONVERSION_WEBGL, gl.NONE);
  gl.bindTexture(gl.TEXTURE_2D, gl.createTexture());
  gl.texImage2D(gl.TEXTURE_2D, 0, gl.RGBA, gl.RGBA, gl.UNSIGNED_BYTE, bitmap);
  gl.bindFramebuffer(gl.FRAMEBUFFER, gl.createFramebuffer());
  gl.framebufferTexture2D(gl.FRAMEBUFFER, gl.COLOR_ATTACHMENT0, gl.TEXTURE_2D,
                          gl.getParameter(gl.TEXTURE_BINDING_2D), 0);
  if (gl.checkFramebufferStatus(gl.FRAMEBUFFER) !== gl.FRAMEBUFFER_COMPLETE) return null;
  const samples = new Uint8Array(width * height * 4);
  gl.readPixels(0, 0, width, height, gl.RGBA, gl.UNSIGNED_BYTE, samples);
  return gl.getError() === gl.NO_ERROR ? samples : null;
}

// By a canvas, which multiplies by alpha: exact where all is opaque.
function drawn(bitmap) {
  const { width, height } = bitmap;
  const pen = new OffscreenCanvas(width, height).getContext("2d", { willReadFrequently: true });
  pen.drawImage(bitmap, 0, 0);
  return new Uint8Array(pen.getImageData(0, 0, width, height).data.buffer);
}

async function decode(blob) {
  const bitmap = await createImageBitmap(blob, { premultiplyAlpha: "none", colorSpaceConversion: "none" })
    .catch(() => { throw new Trouble("notAPicture"); });
  const { width, height } = bitmap;
  const exact = readBack(bitmap), samples = exact ?? drawn(bitmap);
  bitmap.close();
  return { width, height, samples, kept: [], exact: exact !== null || isOpaque(samples) };
}

// { width, height, samples, kept: chunks for the PNG that is saved, exact: whether no sample was changed on the way }
async function readPicture(blob) {
  const bytes = new Uint8Array(await blob.arrayBuffer());
  return isPng(bytes) ? readPng(bytes) : decode(blob);
}
