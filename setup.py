"""Has CMake build the Python module, whose sources and rules are in fronts/python; for pip."""

import re
import subprocess
import sys
from pathlib import Path

from setuptools import Extension, setup
from setuptools.command.build_ext import build_ext

ROOT = Path(__file__).resolve().parent


class BuildWithCMake(build_ext):
    def run(self):
        build = Path(self.build_temp).resolve()
        options = {"CMAKE_BUILD_TYPE": "Release", "NEVREL_CORE_ONLY": "ON", "NEVREL_BUILD_TESTS": "OFF",
                   "NEVREL_BUILD_PYTHON": "ON", "NEVREL_PYTHON_FOLDER": ".", "Python_EXECUTABLE": sys.executable}
        for command in (["cmake", "-S", ROOT, "-B", build, *(f"-D{name}={value}" for name, value in options.items())],
                        ["cmake", "--build", build, "--target", "nevrel_python", "--parallel"],
                        ["cmake", "--install", build, "--prefix", self.build_lib, "--component", "python"]):
            subprocess.run(command, check=True)


# What is left behind lies in the folder of builds.
(ROOT / "build").mkdir(exist_ok=True)
setup(
    version=re.search(r"project\(nevrel VERSION ([\d.]+)", (ROOT / "CMakeLists.txt").read_text())[1],
    packages=[],
    ext_modules=[Extension("nevrel._core", [])],
    cmdclass={"build_ext": BuildWithCMake},
    options={"build": {"build_base": "build/pip"}, "egg_info": {"egg_base": "build"}},
)
