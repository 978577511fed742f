"""Counts instructions under valgrind, which do not depend on what else the machine does, and compares them with the record.

Usage: instructions.py BUILD             compares; fails where more than 3 % came on top
       instructions.py BUILD --renew     writes the record anew
       instructions.py BUILD --growth    how each operation of the editor grows with the number of atoms
"""
import argparse
import json
import math
import pathlib
import platform
import re
import shutil
import subprocess
import sys
import tempfile

RECORD = pathlib.Path(__file__).parent / "results/instructions.json"
PIECES = ("small_read_write", "cartesian_read", "oniom_read", "routes")
BAND = 3  # per cent
SIZES = (5_000, 20_000)


def run_counted(build, arguments, folder, more=()):
    """Runs the driver; returns its lines and the counts of the parts dumped. The environment is fixed: it moves the stack."""
    valgrind = shutil.which("valgrind") or sys.exit("valgrind is not installed")
    command = [valgrind, "--tool=callgrind", f"--callgrind-out-file={folder}/counts", "--collect-atstart=no", "--toggle-collect=measured_part", *more,
               str(pathlib.Path(build).resolve() / "benchmarks/instructions_driver"), *arguments]
    environment = {"PATH": "/usr/bin:/bin", "LC_ALL": "C"}
    result = subprocess.run(command, env=environment, capture_output=True, text=True, check=False)
    if result.returncode != 0:
        sys.exit(f"{' '.join(command)} failed:\n{result.stderr}")
    counts = []
    for path in sorted(pathlib.Path(folder).glob("counts*"), key=lambda path: [int(n) for n in re.findall(r"\d+", path.name)]):
        summary = re.search(r"^(?:summary|totals): (\d+)", path.read_text(encoding="utf-8", errors="replace"), re.MULTILINE)
        counts.append(int(summary.group(1)))
    return result.stdout.splitlines(), counts


def count_piece(build, piece):
    with tempfile.TemporaryDirectory() as folder:
        _, counts = run_counted(build, [piece], folder)
    return max(counts)


def count_operations(build, atoms):
    with tempfile.TemporaryDirectory() as folder:
        names, counts = run_counted(build, ["edit", str(atoms)], folder, ["--dump-after=measured_part"])
    counts = [count for count in counts if count]  # what was dumped at the end holds nothing
    if len(names) != len(counts):
        sys.exit(f"{len(names)} operations, but {len(counts)} counts")
    return dict(zip(names, counts))


def growth(build):
    """For each operation: instructions at both sizes, and the exponent with which they grow (1: in proportion)."""
    small, large = (count_operations(build, size) for size in SIZES)
    return {name: (small[name], large[name], math.log(large[name] / small[name]) / math.log(SIZES[1] / SIZES[0])) for name in small}


def print_growth(build):
    print(f"| operation | instructions, {SIZES[0]} atoms | {SIZES[1]} atoms | exponent |\n|---|---|---|---|")
    for name, (small, large, exponent) in growth(build).items():
        print(f"| {name} | {small} | {large} | {exponent:.2f} |")


def tools():
    compiler = subprocess.run(["g++", "-dumpfullversion"], capture_output=True, text=True, check=True).stdout.strip()
    return {"g++": compiler, "C library": " ".join(platform.libc_ver()), "machine": platform.machine()}


def renew(build):
    record = {"tools": tools(), "instructions": {piece: count_piece(build, piece) for piece in PIECES}}
    RECORD.write_text(json.dumps(record, indent=2) + "\n", encoding="utf-8")
    print(RECORD.read_text(encoding="utf-8"), end="")


def verdict(before, now):
    """What to say of a count, and whether it fails."""
    change = 100 * (now - before)
    if change > BAND * before:
        return "MORE", True
    return ("less: renew the record with `make bench-check renew=1`" if change < -BAND * before else "as recorded"), False


def compare(build):
    record = json.loads(RECORD.read_text(encoding="utf-8"))
    if record["tools"] != tools():
        print(f"The record was made with {record['tools']}, this build with {tools()}: expect other counts.")
    slower = False
    for piece in PIECES:
        before, now = record["instructions"][piece], count_piece(build, piece)
        text, fails = verdict(before, now)
        slower |= fails
        print(f"{piece:18} {before:12} -> {now:12}  {100 * (now / before - 1):+6.2f} %  {text}", flush=True)
    return 1 if slower else 0


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("build")
    parser.add_argument("--renew", action="store_true")
    parser.add_argument("--growth", action="store_true")
    arguments = parser.parse_args()
    if arguments.growth:
        return print_growth(arguments.build)
    return renew(arguments.build) if arguments.renew else compare(arguments.build)


if __name__ == "__main__":
    sys.exit(main())
