"""Builds the wheel from a finished CMake build, installs it into a fresh virtual environment and runs the tests there.

Usage: run_in_fresh_environment.py CMAKE_BUILD [PYTEST_ARGUMENT...]

The environment sees the system's packages, for NumPy and pytest, and no network. The vocabulary variable is unset: the package must
find its own.
"""
import os
import pathlib
import shutil
import subprocess
import sys

PROJECT = pathlib.Path(__file__).resolve().parents[1]


def run(*arguments, **options):
    subprocess.run([str(argument) for argument in arguments], check=True, **options)


def main():
    build = pathlib.Path(sys.argv[1]).resolve()
    work = build / "python" / "fresh"
    shutil.rmtree(work, ignore_errors=True)
    work.mkdir(parents=True)
    environment = {name: value for name, value in os.environ.items()
                   if name not in ("QUOR_G16_ROUTE_SCHEMA_YAML", "PYTHONPATH", "LD_LIBRARY_PATH", "VIRTUAL_ENV")}
    environment.update(QUOR_GJF_CMAKE_BUILD=str(build), HOME=str(work), PIP_NO_INDEX="1", PIP_DISABLE_PIP_VERSION_CHECK="1",
                       PIP_NO_CACHE_DIR="1", PYTHONDONTWRITEBYTECODE="1", QUOR_GJF_TOOL=str(build / "cli" / "quor-gjf"))
    run(sys.executable, "-m", "venv", "--system-site-packages", work / "venv", env=environment)
    python = work / "venv" / "bin" / "python"
    run(python, "-m", "pip", "install", "--quiet", PROJECT, env=environment)
    package = work / "venv" / "lib" / f"python{sys.version_info[0]}.{sys.version_info[1]}" / "site-packages" / "quor_gjf"
    run(python, "-m", "pytest", "-q", "-p", "no:cacheprovider", "--confcutdir", PROJECT / "tests", "--rootdir", PROJECT / "tests",
        *(sys.argv[2:] or [PROJECT / "tests"]), cwd=work, env={**environment, "QUOR_GJF_PACKAGE": str(package)})


if __name__ == "__main__":
    main()
