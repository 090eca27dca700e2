"""frei0r_test.py NEVREL FILTER: the frei0r filter, called directly and in ffmpeg, melt and GStreamer, gives the
command's bytes."""

import ctypes
import os
import sys
import tempfile
from ctypes import byref, c_double, c_float, c_int, c_uint, c_void_p

import numpy as np

from pictures import RANGES, SETTINGS, cases, check, picture, run

FILTER = os.path.abspath(sys.argv[2])


def share(key, value):
    low, high = RANGES[key]
    return (value - low) / (high - low)


def directly():
    filter_ = ctypes.CDLL(FILTER)
    filter_.f0r_construct.restype = c_void_p
    filter_.f0r_construct.argtypes = [c_uint, c_uint]
    filter_.f0r_destruct.argtypes = [c_void_p]
    for access in (filter_.f0r_set_param_value, filter_.f0r_get_param_value):
        access.argtypes = [c_void_p, c_void_p, c_int]
    filter_.f0r_update.argtypes = [c_void_p, c_double, c_void_p, c_void_p]
    assert filter_.f0r_init() == 1
    assert not filter_.f0r_construct(0, 8)

    def value_of(key, value):
        if key == "key_color":
            return (c_float * 3)(*(share(key, channel) for channel in value))
        return c_double(share(key, value))

    for array, settings in cases("u1"):
        height, width, _ = array.shape
        instance = filter_.f0r_construct(width, height)
        for index, key in enumerate(RANGES):
            if key in settings:
                value = value_of(key, settings[key])
                filter_.f0r_set_param_value(instance, byref(value), index)
                read = type(value)()
                filter_.f0r_get_param_value(instance, byref(read), index)
                assert bytes(read) == bytes(value), key
        result = np.empty_like(array)
        filter_.f0r_update(instance, 40.0, array.ctypes.data, result.ctypes.data)
        check("frei0r", array, settings, result)
        filter_.f0r_destruct(instance)

    # What lies outside 0 to 1 or is no number becomes a value of the control.
    instance = filter_.f0r_construct(7, 5)
    for value, expected in ((-1.0, 0.0), (2.0, 1.0), (float("nan"), 0.0)):
        read = c_double()
        filter_.f0r_set_param_value(instance, byref(c_double(value)), 1)
        filter_.f0r_get_param_value(instance, byref(read), 1)
        assert read.value == expected, value
    filter_.f0r_destruct(instance)
    filter_.f0r_deinit()


def in_hosts(folder):
    os.environ.update(FREI0R_PATH=os.path.dirname(FILTER), HOME=folder, XDG_CACHE_HOME=folder, XDG_CONFIG_HOME=folder,
                      XDG_DATA_HOME=folder, XDG_RUNTIME_DIR=folder, GST_REGISTRY=f"{folder}/registry",
                      GST_PLUGIN_PATH="", LC_ALL="C.UTF-8")
    settings = SETTINGS[2]

    def smoothed_by(size, *command):
        array = picture(size, "u1")
        array.tofile(f"{folder}/in.rgba")
        run("ffmpeg", "-v", "error", "-y", "-f", "rawvideo", "-pix_fmt", "rgba", "-s", "%dx%d" % size,
            "-i", f"{folder}/in.rgba", f"{folder}/in.png")
        run(*command, cwd=folder)
        result = np.fromfile(f"{folder}/out.rgba", "u1").reshape(array.shape)
        os.remove(f"{folder}/out.rgba")  # so that the next host has to write its own
        check(command[0], array, settings, result)

    key = [share("key_color", channel) for channel in settings["key_color"]]
    threshold = share("key_color_threshold", settings["key_color_threshold"])
    parameters = "|".join(["0.0354331", "0.7", "0", "y", "/".join(map(str, key)), str(threshold)])
    smoothed_by((32, 20), "ffmpeg", "-v", "error", "-y", "-i", "in.png", "-vf",
                f"format=rgba,frei0r=nevrel:{parameters}", "-f", "rawvideo", "-pix_fmt", "rgba", "out.rgba")

    with open(f"{folder}/profile", "w") as profile:
        profile.write("description=odd\nframe_rate_num=24\nframe_rate_den=1\nwidth=33\nheight=20\nprogressive=1\n"
                      "sample_aspect_num=1\nsample_aspect_den=1\ndisplay_aspect_num=33\ndisplay_aspect_den=20\n"
                      "colorspace=709\n")
    smoothed_by((33, 20), "melt", "-silent", "-profile", f"{folder}/profile", "avformat:in.png", "out=0",
                "-filter", "frei0r.nevrel", "color key enable=1", "key color=#fafaff",
                f"key color threshold={threshold}", "-consumer", "avformat:out.rgba", "f=rawvideo", "vcodec=rawvideo",
                "pix_fmt=rgba", "mlt_image_format=rgba", "real_time=-1", "an=1")

    smoothed_by((33, 20), "gst-launch-1.0", "-q", "filesrc", "location=in.rgba", f"blocksize={33 * 20 * 4}", "!",
                "rawvideoparse", "width=33", "height=20", "format=rgba", "!", "frei0r-filter-nevrel",
                "color-key-enable=true", *(f"key-color-{name}={value}" for name, value in zip("rgb", key)),
                f"key-color-threshold={threshold}", "!", "filesink", "location=out.rgba")


directly()
with tempfile.TemporaryDirectory() as temporary:
    in_hosts(temporary)
