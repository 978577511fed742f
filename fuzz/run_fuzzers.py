"""Runs fuzzers one after another from their seeds and prints what each did and how much processor time it had for it.

Usage: run_fuzzers.py BUILD_FOLDER --seconds N | --inputs N [NAME...]

Run it from the top of the tree. With --seconds each fuzzer makes other inputs than the time before: what it finds worth keeping goes to
BUILD_FOLDER/found/NAME and serves the next run. With --inputs it starts from the tree's seeds alone and makes the same inputs each time,
on any machine. An input on which a property does not hold goes to BUILD_FOLDER/failed/NAME, to be mended and then kept in
tests/regressions/NAME.
"""
import argparse
import base64
import gzip
import os
import pathlib
import re
import resource
import subprocess
import sys
import tempfile

NAMES = ["job_text", "multi_job", "route", "schema_document", "schema_image", "editor_operations", "check_text", "document", "messages", "outputs", "c_interface"]
LONGEST = 4000
JOBS = [pathlib.Path("examples/jobs"), pathlib.Path("examples/forms")]
SEEDS = pathlib.Path("fuzz/seeds")
REGRESSIONS = pathlib.Path("tests/regressions")


def image_seeds(folder):
    """Images are stored as base64 text; bytes are what the fuzzer changes best."""
    folder.mkdir(parents=True, exist_ok=True)
    for path in sorted((SEEDS / "schema_image").iterdir()):
        (folder / path.stem).write_bytes(base64.b64decode(path.read_text(encoding="ascii")))
    return folder


def cut_outputs(folder, seeds):
    """The heads of real outputs, and their ends, as long as inputs may be."""
    seeds.mkdir(parents=True, exist_ok=True)
    for path in [path for path in sorted(folder.iterdir()) if path.suffix == ".gz"][:30]:
        text = gzip.decompress(path.read_bytes())
        (seeds / f"{path.stem}.head").write_bytes(text[:LONGEST])
        (seeds / f"{path.stem}.end").write_bytes(text[-LONGEST:])
    return seeds


def seeds_of(name, build):
    folders = [SEEDS / name, REGRESSIONS / name]
    if name in ("job_text", "multi_job", "check_text", "document"):
        folders.extend(JOBS)
    if name == "outputs" and "QUOR_GJF_REAL_OUTPUTS" in os.environ:
        folders.append(cut_outputs(pathlib.Path(os.environ["QUOR_GJF_REAL_OUTPUTS"]), build / "output_seeds"))
    if name == "schema_image":
        folders[0] = image_seeds(build / "image_seeds")
    return [folder for folder in folders if folder.is_dir()]


def seed_files(folders):
    """In an order that no file system decides."""
    return sorted(str(path) for folder in folders for path in folder.iterdir())


def run(name, build, limits, kept):
    failed = build / "failed" / name
    for folder in (kept, failed):
        folder.mkdir(parents=True, exist_ok=True)
    environment = dict(os.environ, QUOR_G16_ROUTE_SCHEMA_YAML="resources/schemas/input/gaussian_route.yaml")
    command = [str(build / "fuzz" / f"{name}_fuzzer"), *limits, f"-max_len={LONGEST}", "-timeout=20", "-rss_limit_mb=2500",
               "-print_final_stats=1", f"-artifact_prefix={failed}/", f"-seed_inputs={','.join(seed_files(seeds_of(name, build)))}", str(kept)]
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
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("build", type=pathlib.Path)
    length = parser.add_mutually_exclusive_group(required=True)
    length.add_argument("--seconds", type=int)
    length.add_argument("--inputs", type=int)
    parser.add_argument("names", nargs="*", default=NAMES)
    wanted = parser.parse_intermixed_args()
    if wanted.seconds:
        results = [run(name, wanted.build, [f"-max_total_time={wanted.seconds}"], wanted.build / "found" / name) for name in wanted.names]
    else:
        with tempfile.TemporaryDirectory() as folder:
            limits = [f"-runs={wanted.inputs}", "-seed=1", "-reload=0", "-use_cmp=0"]  # neither the clock nor addresses have a say
            results = [run(name, wanted.build, limits, pathlib.Path(folder) / name) for name in wanted.names]
    return 0 if all(results) else 1


if __name__ == "__main__":
    sys.exit(main())
