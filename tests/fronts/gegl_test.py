"""gegl_test.py NEVREL OPERATION: nevrel:smooth in the command gegl gives the command's bytes, and GIMP loads it."""

import os
import struct
import sys
import tempfile

import numpy as np

from pictures import cases, check, run, smoothed

OPERATION = os.path.abspath(sys.argv[2])
SYSTEM = run("pkg-config", "--variable=pluginsdir", "gegl-0.4").decode().strip()


def write_tiff(path, array):
    """An RGBA picture with straight alpha, whose samples GEGL takes as they are at every type."""
    height, width, channels = array.shape
    pixels = array.tobytes()
    short, long = 3, 4
    tags = [(256, long, 1, width), (257, long, 1, height), (258, short, channels, 8), (259, short, 1, 1),
            (262, short, 1, 2), (273, long, 1, 24), (277, short, 1, channels), (278, long, 1, height),
            (279, long, 1, len(pixels)), (338, short, 1, 2), (339, short, channels, 16)]
    with open(path, "wb") as file:
        file.write(struct.pack("<2sHI", b"II", 42, 24 + len(pixels)))
        file.write(struct.pack("<4H", *[array.itemsize * 8] * 4))
        file.write(struct.pack("<4H", *[3 if array.dtype.kind == "f" else 1] * 4))
        file.write(pixels + struct.pack("<H", len(tags)))
        file.write(b"".join(struct.pack("<HHII", *tag) for tag in tags) + bytes(4))


def read_tiff(path, shape, dtype):
    """The pixels of a file that the TIFF library has written in one go, behind its header."""
    return np.fromfile(path, dtype, int(np.prod(shape)), offset=8).reshape(shape)


def properties(settings):
    for key, value in settings.items():
        text = "#%02x%02x%02x" % value if key == "key_color" else str(value)
        if key in ("color_key_enable", "invert"):
            text = "true"
        yield f"{key.replace('_', '-')}={text}"


def smoothed_in_gegl(folder, array, settings, *after):
    write_tiff(f"{folder}/in.tif", array)
    run("gegl", f"{folder}/in.tif", "--", "nevrel:smooth", *properties(settings), *after, "gegl:tiff-save",
        f"path={folder}/out.tif", f"bitdepth={array.itemsize * 8}", f"fp={int(array.dtype.kind == 'f')}")


def in_gegl(folder):
    info = run("gegl", "--info", "nevrel:smooth")
    assert b"color-threshold" in info and b"(default: 70)" in info
    eight_bit, sixteen_bit, floats = (list(cases(dtype)) for dtype in ("u1", "u2", "f4"))
    # Not all: each starts a program that takes its time.
    for array, settings in [*eight_bit[:5], eight_bit[-1], sixteen_bit[2], sixteen_bit[6], floats[3], floats[6]]:
        smoothed_in_gegl(folder, array, settings)
        check("gegl", array, settings, read_tiff(f"{folder}/out.tif", array.shape, array.dtype))
        os.remove(f"{folder}/out.tif")

    # A part that is asked for is smoothed as a part of the whole picture.
    array, settings = eight_bit[0]
    smoothed_in_gegl(folder, array, settings, "gegl:crop", "x=2", "y=5", "width=20", "height=20")
    part = smoothed(array, settings)[5:25, 2:22]
    check("part", array, settings, read_tiff(f"{folder}/out.tif", part.shape, part.dtype), part)


def in_gimp(folder):
    os.makedirs(f"{folder}/gimp/plug-ins")
    # One plug-in runs the batch; asking all of them what they are takes long.
    os.symlink("/usr/lib/gimp/2.0/plug-ins/script-fu", f"{folder}/gimp/plug-ins/script-fu")
    with open(f"{folder}/gimp/gimprc", "w") as settings:
        settings.write(f'(plug-in-path "{folder}/gimp/plug-ins")\n')
    run("gimp-console", "--no-interface", "--no-data", "--no-fonts", "--no-splash", "--batch", "(gimp-quit 1)",
        env={**os.environ, "GIMP2_DIRECTORY": f"{folder}/gimp", "LD_DEBUG": "files",
             "LD_DEBUG_OUTPUT": f"{folder}/files"})
    loaded = [name for name in os.listdir(folder) if name.startswith("files.")
              and f"calling init: {OPERATION}" in open(f"{folder}/{name}", errors="replace").read()]
    assert loaded, "GIMP has not loaded the operation"


with tempfile.TemporaryDirectory() as temporary:
    os.environ.update(GEGL_PATH=f"{SYSTEM}:{os.path.dirname(OPERATION)}", GEGL_USE_OPENCL="no", HOME=temporary,
                      **{f"XDG_{name}_HOME": temporary for name in ("CACHE", "CONFIG", "DATA", "STATE")})
    in_gegl(temporary)
    in_gimp(temporary)
