"""python_test.py NEVREL MODULE: the Python module gives the command's bytes for arrays of every type and layout, and
refuses others with the exceptions that numpy raises; its stubs are those of the module."""

import ast
import concurrent.futures
import inspect
import os
import subprocess
import sys
import tempfile
import threading

import numpy as np

from pictures import SETTINGS, SIZES, cases, check, picture, run, smoothed

PACKAGE = os.path.dirname(os.path.abspath(sys.argv[2]))
sys.path.insert(0, os.path.dirname(PACKAGE))
import nevrel  # noqa: E402


def same_bytes():
    for dtype in ("u1", "u2", "f4"):
        for array, settings in cases(dtype):
            before = array.copy()
            check("python", array, settings, nevrel.smooth(array, **settings))
            assert array.tobytes() == before.tobytes()
    for array, settings in list(cases("f2"))[2:6]:
        wide = array.astype("f4")  # halves are smoothed as floats and rounded once
        check("python", array, settings, nevrel.smooth(array, **settings), smoothed(wide, settings).astype("f2"))
    for dtype in ("u1", "u2", "f4"):
        array = picture(SIZES[0], dtype)
        array[..., 3] = 1 if dtype == "f4" else np.iinfo(dtype).max
        check("python", array[..., :3], {}, nevrel.smooth(array[..., :3].copy()), smoothed(array, {})[..., :3].copy())


def layouts(array):
    """Arrays of the same picture that lie in memory in other ways."""
    height, width, channels = array.shape
    padded = np.full((height, width + 3, channels), 7, array.dtype)
    reordered = np.zeros((channels, width, height), array.dtype)
    unaligned = np.zeros(array.nbytes + 1, "u1")[1:].view(array.dtype).reshape(array.shape)
    for view in (padded[:, 1:-2], padded[::-1, 2:-1], np.zeros((height, width * 2, channels), array.dtype)[:, ::2],
                 reordered.T, np.zeros((height, width, channels + 2), array.dtype)[..., 1:-1], unaligned,
                 np.zeros_like(array)[:, ::-1]):
        view[...] = array
        yield view


def strides():
    for dtype in ("u1", "u2", "f4"):
        array = picture(SIZES[0], dtype)
        expected = smoothed(array, {})
        for view in layouts(array):
            check("strides", array, {}, nevrel.smooth(view))
            surroundings = None if view.base is None else view.base.copy()
            for out in layouts(np.zeros_like(array)):
                assert nevrel.smooth(view, out=out) is out
                check("out", array, {}, out.copy("C"))
            assert surroundings is None or view.base.tobytes() == surroundings.tobytes()
            nevrel.smooth(view, out=view)
            check("in place", array, {}, view.copy("C"))
        once = np.concatenate([array, array])
        nevrel.smooth(once[1:-1][:len(array)], out=once[:len(array)])  # overlapping
        moved = np.concatenate([array, array])[1:-1][:len(array)]
        check("overlap", moved, {}, once[:len(array)])
    row = picture((9, 1), "u1")
    repeated = np.broadcast_to(row, (5, 9, 4))
    check("broadcast", repeated, {}, nevrel.smooth(repeated))
    assert nevrel.smooth(np.zeros((0, 5, 4), "u1")).shape == (0, 5, 4)


def errors():
    array = picture((7, 5), "u1")
    frozen = np.zeros_like(array)
    frozen.flags.writeable = False
    for exception, part, arguments, controls in [
            (TypeError, "int64", [array.astype("i8")], {}),
            (TypeError, ">u2", [array.astype(">u2")], {}),
            (TypeError, "hardness", [array], {"hardness": 3}),
            (TypeError, "float", [array], {"softness": 0.5}),
            (TypeError, "uint16", [array], {"out": array.astype("u2")}),
            (ValueError, "(7, 4)", [array[0]], {}),
            (ValueError, "color_threshold must be from 1 to 255, not 0", [array], {"color_threshold": 0}),
            (ValueError, "bias", [array], {"bias": 1 << 80}),
            (ValueError, "key_color", [array], {"key_color": (1, 2)}),
            (ValueError, "key_color must be from 0 to 255", [array], {"key_color": (1, 2, 256)}),
            (ValueError, "alpha", [array[..., :3]], {"color_key_enable": True}),
            (ValueError, "(5, 7, 4)", [array], {"out": array[:-1]}),
            (ValueError, "read-only", [array], {"out": frozen})]:
        try:
            nevrel.smooth(*arguments, **controls)
        except exception as error:
            assert part in str(error), f"{part}: {error}"
        else:
            raise AssertionError(f"no {exception} for {controls} {part}")


def stubs():
    """The stub has the signature that the module makes of the controls."""
    tree = ast.parse(open(f"{PACKAGE}/__init__.pyi").read())
    stub = next(node for node in tree.body if isinstance(node, ast.FunctionDef)).args
    written = {a.arg: ast.literal_eval(d) for a, d in zip(stub.kwonlyargs, stub.kw_defaults)}
    parameters = inspect.signature(nevrel.smooth).parameters
    assert list(parameters) == ["array", *written]
    assert written == {name: p.default for name, p in parameters.items() if name != "array"}


def threads():
    """While one thread smooths another runs, though none is ever asked to make room for it."""
    array = np.zeros((500, 500, 4), "u1")
    array[::2, ::3] = 255
    others_turn = threading.Event()

    def smooth_until_another_runs():
        for _ in range(1000):
            nevrel.smooth(array)
            if others_turn.is_set():
                return
        raise AssertionError("the interpreter's lock is not released")

    with concurrent.futures.ThreadPoolExecutor(1) as pool:
        sys.setswitchinterval(1000)
        worker = pool.submit(smooth_until_another_runs)
        others_turn.set()
        worker.result()
        sys.setswitchinterval(0.005)


def example(folder):
    """Three frames through the example have the bytes that the command gives them."""
    size = SIZES[0]
    frames = np.stack([picture(size, "u1"), picture(size, "u1")[::-1], picture(size, "u1")[:, ::-1]])
    raw = ["-f", "rawvideo", "-pix_fmt", "rgba", "-s", "%dx%d" % size]
    run("ffmpeg", "-v", "error", *raw, "-i", "-", "-c:v", "ffv1", f"{folder}/in.mkv", input=frames.tobytes())
    script = os.path.join(os.path.dirname(__file__), "../../samples/smooth_video.py")
    run(sys.executable, "-B", script, f"{folder}/in.mkv", f"{folder}/out.mkv", "softness=30",
        env={**os.environ, "PYTHONPATH": os.path.dirname(PACKAGE)}, stdin=subprocess.DEVNULL)
    smooth = run("ffmpeg", "-v", "error", "-i", f"{folder}/out.mkv", "-f", "rawvideo", "-pix_fmt", "rgba", "-")
    expected = np.stack([smoothed(np.ascontiguousarray(frame), {"softness": 30}) for frame in frames])
    assert smooth == expected.tobytes()


same_bytes()
strides()
errors()
stubs()
threads()
with tempfile.TemporaryDirectory() as temporary:
    example(temporary)
