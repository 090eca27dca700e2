"""Pictures and settings that every front is given, and what the command makes of them."""

import functools
import os
import subprocess
import sys

import numpy as np

NEVREL = os.path.abspath(sys.argv[1])  # the command

# Of the controls that differ from their defaults.
SETTINGS = [
    {},
    {"color_threshold": 80, "softness": 30, "bias": 40},
    {"color_key_enable": 1, "key_color": (250, 250, 255), "key_color_threshold": 9},
    {"color_key_enable": 1, "key_color": (0, 0, 0), "key_color_threshold": 60, "invert": 1, "softness": 100},
]
SIZES = [(50, 61), (33, 20), (7, 5), (9, 1), (1, 9), (1, 1)]  # width, height
RANGES = {"color_threshold": (1, 255), "softness": (0, 100), "bias": (0, 100), "color_key_enable": (0, 1),
          "key_color": (0, 255), "key_color_threshold": (0, 255), "invert": (0, 1)}
RAW = {np.dtype("u1"): "rgba", np.dtype("u2"): "rgba64le", np.dtype("f4"): "rgbaf32le"}


def picture(size, dtype):
    """Discs in white, black, red and a translucent blue, whose edges are staircases of all lengths."""
    width, height = size
    y, x = np.mgrid[:height, :width]
    zone = ((x - 20) ** 2 + (y - 9) ** 2 < 300) + 2 * ((x - 4) ** 2 + (3 * y - 40) ** 2 < 900)
    palette = np.array([[255, 255, 255, 255], [0, 0, 0, 255], [230, 40, 50, 255], [20, 60, 200, 140]])
    eight_bit = palette[zone]
    if dtype == "u1":
        return eight_bit.astype("u1")
    if dtype == "u2":
        return (eight_bit * 257 - (eight_bit > 0) * 3).astype("u2")  # between the values of 8 bits
    return (eight_bit / 200 - (eight_bit == 0) * 0.01).astype(dtype)  # beyond full intensity too


def cases(dtype):
    """Each size with some settings, the largest with all: pairs of a picture and settings."""
    for settings in SETTINGS:
        yield picture(SIZES[0], dtype), settings
    for index, size in enumerate(SIZES[1:]):
        yield picture(size, dtype), SETTINGS[index % len(SETTINGS)]


def options(settings):
    for key, value in settings.items():
        if key == "key_color":
            yield from ("--color-key", "#%02x%02x%02x" % value)
        elif key == "invert":
            yield "--invert"
        elif key != "color_key_enable":
            yield from ("--" + key.replace("key_color", "key").replace("_", "-"), str(value))


def smoothed(array, settings):
    """The command's bytes for H x W x 4."""
    height, width, _ = array.shape
    return _smoothed(array.tobytes(), array.dtype, width, height, tuple(options(settings)))


@functools.lru_cache(maxsize=None)
def _smoothed(pixels, dtype, width, height, arguments):
    raw = f"{width}x{height}:{RAW[dtype]}"
    result = run(NEVREL, "smooth", "--quiet", "--raw", raw, *arguments, input=pixels)
    return np.frombuffer(result, dtype).reshape(height, width, 4)


def run(*command, **arguments):
    """What a program prints; the test ends where it fails."""
    done = subprocess.run(command, stdout=subprocess.PIPE, stderr=subprocess.PIPE, **arguments)
    assert done.returncode == 0, f"{command}: status {done.returncode}, {done.stderr.decode()}"
    return done.stdout


def check(front, array, settings, result, expected=None):
    expected = smoothed(array, settings) if expected is None else expected
    where = f"{front}: {array.shape} {array.dtype} {settings}"
    assert result.shape == expected.shape, f"{where}: {result.shape}"
    assert result.dtype == expected.dtype and result.tobytes() == expected.tobytes(), where
