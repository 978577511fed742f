"""Installs the library, moves the installation, and builds and runs a consumer in each of the three ways.

Usage: check_package.py SOURCE BUILD COMPILER WORK_FOLDER
"""
import os
import pathlib
import shutil
import subprocess
import sys

VOCABULARY = "share/quorlib/schemas/input/gaussian_route.yaml"


def run(*command, **options):
    result = subprocess.run([str(part) for part in command], capture_output=True, text=True, check=False, **options)
    if result.returncode != 0:
        sys.exit(f"{' '.join(map(str, command))}\n{result.stdout}{result.stderr}")
    return result.stdout


def clean_environment():
    """The environment without what could lead to a vocabulary or a library."""
    names = ("QUOR_G16_ROUTE_SCHEMA_YAML", "QUOR_G16_KNOWLEDGE", "HOME", "LD_LIBRARY_PATH")
    return {key: value for key, value in os.environ.items() if key not in names}


def check_run(program, vocabulary, how):
    method, path = run(program, cwd="/", env=clean_environment()).splitlines()
    if method != "b3lyp 1 1":
        sys.exit(f"{how}: the route was read as {method!r}")
    if vocabulary and not os.path.samefile(path, vocabulary):
        sys.exit(f"{how}: the vocabulary found is {path}, not {vocabulary}")
    print(f"{how}: runs, vocabulary {path}")


def main():
    source, build, compiler, work = sys.argv[1], sys.argv[2], sys.argv[3], pathlib.Path(sys.argv[4])
    shutil.rmtree(work, ignore_errors=True)
    first, moved = work / "first", work / "moved" / "deeper"
    run("cmake", "--install", build, "--prefix", first)
    moved.parent.mkdir(parents=True)
    first.rename(moved)
    vocabulary = moved / VOCABULARY
    if not vocabulary.is_file():
        sys.exit("no vocabulary was installed")
    if not pathlib.Path(f"{vocabulary}.image").read_bytes().startswith(b"vocabulary of quor-gjf"):
        sys.exit("no image of the vocabulary was installed")
    for header in ("gjf/core/text/text.hpp", "gjf/core/reader/reading.hpp", "gjf/core/schema/schema_tables.hpp"):
        if (moved / "include/quor" / header).exists():
            sys.exit(f"the private header {header} was installed")
    package = pathlib.Path(source) / "tests/package"

    run("cmake", "-S", package / "find_package", "-B", work / "find", f"-DCMAKE_PREFIX_PATH={moved}", f"-DCMAKE_CXX_COMPILER={compiler}")
    run("cmake", "--build", work / "find")
    check_run(work / "find/consumer", vocabulary, "find_package")

    pc_folder = next(moved.rglob("quor_g16_gjf.pc")).parent
    flags = run("pkg-config", "--cflags", "--libs", "quor_g16_gjf", env={**os.environ, "PKG_CONFIG_PATH": str(pc_folder)}).split()
    library = next(moved.rglob("libquor_g16_gjf.so")).parent
    run(compiler, "-std=c++17", package / "consumer.cpp", *flags, f"-Wl,-rpath,{library}", "-o", work / "pkg_config_consumer")
    check_run(work / "pkg_config_consumer", vocabulary, "pkg-config")

    run("cmake", "-S", package / "add_subdirectory", "-B", work / "add", f"-DLIBRARY_SOURCE={source}", f"-DCMAKE_CXX_COMPILER={compiler}",
        "-DCMAKE_BUILD_TYPE=Debug", "-DCMAKE_CXX_FLAGS_DEBUG=-O0", "-DCMAKE_UNITY_BUILD=ON", "-DCMAKE_UNITY_BUILD_BATCH_SIZE=100",
        "-DQUOR_GJF_PRECOMPILE=ON", "-DCMAKE_CXX_COMPILER_LAUNCHER=" + (shutil.which("ccache") or ""))
    run("cmake", "--build", work / "add", "--parallel", "2")
    check_run(work / "add/consumer", pathlib.Path(source) / "resources/schemas/input/gaussian_route.yaml", "add_subdirectory")

    tool = moved / "bin/quor-gjf"
    report = run(tool, "report", pathlib.Path(source) / "examples/jobs/water_opt_freq.gjf", cwd="/", env=clean_environment())
    if "Atoms (3)" not in report:
        sys.exit("the installed tool does not report")
    run(tool, "check", pathlib.Path(source) / "examples/jobs/water_opt_freq.gjf", cwd="/", env=clean_environment())
    for name in ("share/man/man1/quor-gjf.1", "share/bash-completion/completions/quor-gjf", "share/zsh/site-functions/_quor-gjf",
                 "share/fish/vendor_completions.d/quor-gjf.fish"):
        if not (moved / name).is_file():
            sys.exit(f"{name} was not installed")
    print("installed tool: runs, with manual page and completions")


if __name__ == "__main__":
    main()
