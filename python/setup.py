"""Builds the native half of quor_gjf with CMake and puts it, with the libraries and the vocabulary, into the package.

The environment variable QUOR_GJF_CMAKE_BUILD may name a folder that CMake has built the whole already.
"""
import os
import pathlib
import shutil
import subprocess
import sys

from setuptools import Extension, setup
from setuptools.command.build_ext import build_ext

SOURCE = pathlib.Path(__file__).resolve().parent.parent
PREBUILT = os.environ.get("QUOR_GJF_CMAKE_BUILD")
# All that building leaves behind lies here, and not in this folder.
WORK = pathlib.Path(PREBUILT or SOURCE / "build" / "python").resolve() / "wheel"


def run(*arguments):
    subprocess.run([str(argument) for argument in arguments], check=True, stdout=sys.stderr)


def build_with_cmake(folder):
    run("cmake", "-S", SOURCE, "-B", folder, "-DCMAKE_BUILD_TYPE=Release", "-DQUOR_GJF_BUILD_PYTHON=ON", "-DQUOR_GJF_BUILD_TESTS=OFF",
        "-DQUOR_GJF_WARNINGS_AS_ERRORS=OFF", f"-DPython_EXECUTABLE={sys.executable}")
    run("cmake", "--build", folder, "--parallel", os.cpu_count() or 1, "--target", "quor_gjf_python", "quor-gjf")


def replace_links_by_their_files(folder):
    """A wheel holds no links: each library is kept once, under the name that it is looked for by."""
    for link in folder.glob("*.so*"):
        if link.is_symlink():
            file = link.resolve()
            link.unlink()
            file.rename(link)


class BuildWithCMake(build_ext):
    """Builds the one extension by CMake and installs all that belongs to it beside it."""

    def build_extension(self, ext):
        folder = PREBUILT or WORK.parent
        if not PREBUILT:
            build_with_cmake(folder)
        package = pathlib.Path(self.get_ext_fullpath(ext.name)).resolve().parent
        run("cmake", "--install", folder, "--component", "python", "--strip", "--prefix", package.parent)
        replace_links_by_their_files(package)


shutil.rmtree(WORK, ignore_errors=True)
WORK.mkdir(parents=True)
setup(options={"build": {"build_base": str(WORK)}, "egg_info": {"egg_base": str(WORK)}},
      ext_modules=[Extension("quor_gjf._core", sources=[])],
      cmdclass={"build_ext": BuildWithCMake})
