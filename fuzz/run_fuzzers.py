"""Runs fuzzers one after another from their seeds and prints what each did and how much processor time it had for it.

Usage: run_fuzzers.py BUILD_FOLDER SECONDS SEED [NAME...]

With a seed other than 0 a run makes the same inputs as the one before, as far as its time reaches.

Run it from the top of the tree. What a fuzzer finds worth keeping goes to BUILD_FOLDER/found/NAME and serves the next run; an
input on which a property does not hold goes to BUILD_FOLDER/failed/NAME, to be mended and then kept in tests/regressions/NAME.
"""
import base64
import os
import pathlib
import re
import resource
import subprocess
import sys

NAMES = ["job_text", "multi_job", "route", "schema_document", "schema_image", "editor_operations", "check_text", "document", "c_interface"]
LONGEST = 4000
JOBS = pathlib.Path("examples/jobs")
SEEDS = pathlib.Path("fuzz/seeds")
REGRESSIONS = pathlib.Path("tests/regressions")


def image_seeds(folder):
    """Images are stored as base64 text; bytes are what the fuzzer changes best."""
    folder.mkdir(parents=True, exist_ok=True)
    for path in sorted((SEEDS / "schema_image").iterdir()):
        (folder / path.stem).write_bytes(base64.b64decode(path.read_text(encoding="ascii")))
    return folder


def seeds_of(name, build):
    folders = [SEEDS / name, REGRESSIONS / name]
    if name in ("job_text", "check_text", "document"):
        folders.append(JOBS)
    if name == "schema_image":
        folders[0] = image_seeds(build / "image_seeds")
    return [str(folder) for folder in folders if folder.is_dir()]


def run(name, build, seconds, seed):
    found, failed = build / "found" / name, build / "failed" / name
    for folder in (found, failed):
        folder.mkdir(parents=True, exist_ok=True)
    environment = dict(os.environ, QUOR_G16_ROUTE_SCHEMA_YAML="resources/schemas/input/gaussian_route.yaml")
    command = [str(build / "fuzz" / f"{name}_fuzzer"), f"-max_total_time={seconds}", f"-seed={seed}", f"-max_len={LONGEST}", "-timeout=20",
               "-rss_limit_mb=2500", "-print_final_stats=1", f"-artifact_prefix={failed}/", str(found), *seeds_of(name, build)]
    before = resource.getrusage(resource.RUSAGE_CHILDREN).ru_utime
    result = subprocess.run(command, env=environment, check=False, capture_output=True, text=True, errors="replace")
    processor = resource.getrusage(resource.RUSAGE_CHILDREN).ru_utime - before
    executions = re.search(r"number_of_executed_units: (\d+)", result.stderr)
    coverage = re.findall(r"cov: (\d+)", result.stderr)
    print(f"{name:20} {executions.group(1) if executions else '?':>12} executions {coverage[-1] if coverage else '?':>8} edges"
          f"   {processor:6.0f} s of processor time   {'ok' if result.returncode == 0 else 'FAILED'}", flush=True)
    if result.returncode != 0:
        print(result.stderr[-3000:])
    return result.returncode == 0


def main():
    build, seconds, seed, *names = sys.argv[1:]
    results = [run(name, pathlib.Path(build), int(seconds), int(seed)) for name in names or NAMES]
    return 0 if all(results) else 1


if __name__ == "__main__":
    sys.exit(main())
