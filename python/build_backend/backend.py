"""Builds the package with the setuptools that the system has.

pip builds in an environment that hides installed packages, so that it can fetch what a package asks for. This one asks for
nothing and must build without a network: setuptools and wheel are looked for where Debian puts them when they are hidden.
"""
import importlib.util
import sys

DEBIAN_PACKAGES = "/usr/lib/python3/dist-packages"
NEEDED = ("setuptools", "wheel")


def _missing():
    return [name for name in NEEDED if importlib.util.find_spec(name) is None]


if _missing():
    sys.path.append(DEBIAN_PACKAGES)
if _missing():
    raise ModuleNotFoundError("setuptools and wheel are needed to build quor_gjf (Debian: python3-setuptools python3-wheel)")

from setuptools import build_meta  # noqa: E402

build_wheel = build_meta.build_wheel
prepare_metadata_for_build_wheel = build_meta.prepare_metadata_for_build_wheel


def build_sdist(sdist_directory, config_settings=None):
    raise RuntimeError("quor_gjf is built from its source tree: its C++ sources lie outside this folder")


def get_requires_for_build_wheel(config_settings=None):
    return []
