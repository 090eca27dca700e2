"""Builds the wheel with setuptools, the system's own where it has one: pip hides it from builds and would download."""

import sys
from pathlib import Path

SYSTEM = Path("/usr/lib/python3/dist-packages")
HAS_TOOLS = (SYSTEM / "setuptools").is_dir() and (SYSTEM / "wheel").is_dir()


def get_requires_for_build_wheel(config_settings=None):
    return [] if HAS_TOOLS else ["setuptools>=61", "wheel"]


def build_wheel(wheel_directory, config_settings=None, metadata_directory=None):
    if HAS_TOOLS:
        sys.path.append(str(SYSTEM))
    from setuptools import build_meta

    return build_meta.build_wheel(wheel_directory, config_settings, metadata_directory)
