"""Counts instructions under valgrind, which do not depend on what else the machine does, and compares them with the record.

Usage: instructions.py BUILD             compares; fails where more than 3 % came on top
       instructions.py BUILD --renew     writes the record anew
       instructions.py BUILD --growth    how each operation of the editor grows with the number of atoms
       instructions.py BUILD --rules     what each family of checks takes of a check
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
PIECES = ("small_read", "small_check", "small_read_write", "cartesian_read", "cartesian_check", "facts", "oniom_read", "routes")
# Whole runs of the tool: what starting it takes, and what a command adds.
COMMANDS = {
    "tool_version": ["--version"],
    "tool_check_small": ["check", "INPUTS/small.gjf"],
    "tool_route": ["route", "#p b3lyp/6-31g(d) opt freq"],
    "tool_complete": ["complete", "#p b3lyp/6-31g(d) op"],
}
VOCABULARY = pathlib.Path(__file__).resolve().parents[1] / "resources/schemas/input/gaussian_route.yaml"
BAND = 3  # per cent
SIZES = (5_000, 20_000)


def run_counted(program, arguments, folder, more=()):
    """Runs a program; returns its lines and the counts of the parts dumped. The environment is fixed: it moves the stack."""
    valgrind = shutil.which("valgrind") or sys.exit("valgrind is not installed")
    command = [valgrind, "--tool=callgrind", f"--callgrind-out-file={folder}/counts", *more, str(program), *arguments]
    environment = {"PATH": "/usr/bin:/bin", "LC_ALL": "C", "HOME": str(folder), "QUOR_G16_ROUTE_SCHEMA_YAML": str(VOCABULARY)}
    result = subprocess.run(command, env=environment, capture_output=True, text=True, check=False)
    if result.returncode != 0:
        sys.exit(f"{' '.join(command)} failed:\n{result.stderr}")
    counts = []
    for path in sorted(pathlib.Path(folder).glob("counts*"), key=lambda path: [int(n) for n in re.findall(r"\d+", path.name)]):
        summary = re.search(r"^(?:summary|totals): (\d+)", path.read_text(encoding="utf-8", errors="replace"), re.MULTILINE)
        counts.append(int(summary.group(1)))
    return result.stdout.splitlines(), counts


def run_driver(build, arguments, folder, more=()):
    """Counts inside the driver's measured parts alone."""
    inside = ["--collect-atstart=no", "--toggle-collect=measured_part", *more]
    return run_counted(build / "benchmarks/instructions_driver", arguments, folder, inside)


def count_piece(build, piece):
    build = pathlib.Path(build).resolve()
    with tempfile.TemporaryDirectory() as folder:
        if piece in COMMANDS:
            arguments = [argument.replace("INPUTS", str(build / "inputs")) for argument in COMMANDS[piece]]
            _, counts = run_counted(build / "cli/quor-gjf", arguments, folder)
        else:
            _, counts = run_driver(build, [piece], folder)
    return max(counts)


def count_operations(build, atoms):
    with tempfile.TemporaryDirectory() as folder:
        names, counts = run_driver(pathlib.Path(build).resolve(), ["edit", str(atoms)], folder, ["--dump-after=measured_part"])
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


def costs_of_families(build, piece):
    """Instructions of a whole check, and by family of those below its function."""
    with tempfile.TemporaryDirectory() as folder:
        _, counts = run_driver(pathlib.Path(build).resolve(), [piece], folder)
        listing = subprocess.run(["callgrind_annotate", "--inclusive=yes", "--threshold=100", f"{folder}/counts"], capture_output=True, text=True,
                                 check=True).stdout
    family = re.compile(r"^\s*([\d,]+) .*::(\w+)\([\w:]*CheckedMolecule const&, [\w:]*Findings&\)", re.MULTILINE)
    costs = {}
    for count, name in family.findall(listing):
        costs[name] = max(costs.get(name, 0), int(count.replace(",", "")))
    return max(counts), costs


def print_rules(build):
    for piece in ("small_check", "cartesian_check"):
        total, costs = costs_of_families(build, piece)
        print(f"\n{piece}: {total} instructions\n\n| family of checks | instructions | share |\n|---|---|---|")
        for name, count in sorted(costs.items(), key=lambda item: -item[1]):
            print(f"| {name} | {count} | {100 * count / total:.1f} % |")


def tools():
    compiler = subprocess.run(["g++", "-dumpfullversion"], capture_output=True, text=True, check=True).stdout.strip()
    return {"g++": compiler, "C library": " ".join(platform.libc_ver()), "machine": platform.machine()}


def renew(build):
    record = {"tools": tools(), "instructions": {piece: count_piece(build, piece) for piece in (*PIECES, *COMMANDS)}}
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
    for piece in record["instructions"]:
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
    parser.add_argument("--rules", action="store_true")
    arguments = parser.parse_args()
    if arguments.growth:
        return print_growth(arguments.build)
    if arguments.rules:
        return print_rules(arguments.build)
    return renew(arguments.build) if arguments.renew else compare(arguments.build)


if __name__ == "__main__":
    sys.exit(main())
