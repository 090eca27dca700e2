#!/usr/bin/env python3
"""smooth_video.py IN OUT [NAME=NUMBER ...]: smooths a video's frames with the controls given, such as softness=80, on
as many threads as there are processors. ffmpeg reads it, and writes OUT without loss as FFV1, in .mkv or .avi."""

import collections
import concurrent.futures
import json
import os
import subprocess
import sys

import numpy as np

import nevrel


def frames_of(path, width, height):
    """The frames of a video as arrays of shape (height, width, 4), 8 bits a sample."""
    command = ["ffmpeg", "-v", "error", "-i", path, "-f", "rawvideo", "-pix_fmt", "rgba", "-"]
    with subprocess.Popen(command, stdin=subprocess.DEVNULL, stdout=subprocess.PIPE) as reader:
        while len(pixels := reader.stdout.read(width * height * 4)) == width * height * 4:
            yield np.frombuffer(pixels, np.uint8).reshape(height, width, 4)
    if reader.returncode:
        raise subprocess.CalledProcessError(reader.returncode, command)


def smooth_video(source, target, **controls):
    probe = subprocess.check_output(["ffprobe", "-v", "error", "-select_streams", "v:0", "-show_entries",
                                     "stream=width,height,r_frame_rate", "-of", "json", source])
    stream = json.loads(probe)["streams"][0]
    width, height = stream["width"], stream["height"]
    command = ["ffmpeg", "-v", "error", "-y", "-f", "rawvideo", "-pix_fmt", "rgba", "-s", f"{width}x{height}",
               "-r", stream["r_frame_rate"], "-i", "-", "-c:v", "ffv1", target]
    workers = os.cpu_count() or 1
    with concurrent.futures.ThreadPoolExecutor(workers) as pool, \
            subprocess.Popen(command, stdin=subprocess.PIPE) as writer:
        under_way = collections.deque()
        for frame in frames_of(source, width, height):
            under_way.append(pool.submit(nevrel.smooth, frame, **controls))
            if len(under_way) > workers:  # so that memory does not grow with the video
                writer.stdin.write(under_way.popleft().result())
        for smoothed in under_way:
            writer.stdin.write(smoothed.result())
    if writer.returncode:
        raise subprocess.CalledProcessError(writer.returncode, command)


if __name__ == "__main__":
    if len(sys.argv) < 3:
        sys.exit(__doc__)
    smooth_video(sys.argv[1], sys.argv[2], **{name: int(value) for name, value in
                                               (argument.split("=") for argument in sys.argv[3:])})
