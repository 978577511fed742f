"""Measures every target in one run and prints the table: what is wanted, what was measured, and whether it is met.

Usage: report.py BUILD                   prints
       report.py BUILD --record "WHAT"   and adds a row to results/history.md, and puts the table into docs/performance.md
       report.py BUILD --commit NAME     names the sources measured, where they are not those of the last commit
"""
import argparse
import json
import os
import pathlib
import resource
import shutil
import subprocess
import sys
import time

HERE = pathlib.Path(__file__).resolve().parent
sys.path[:0] = [str(HERE), str(HERE / "peers")]
import answering  # noqa: E402
import compare_peers  # noqa: E402
import instructions  # noqa: E402
import starting  # noqa: E402

HISTORY = HERE / "results/history.md"
DOCUMENT = HERE.parent / "docs/performance.md"
MARKS = ("<!-- figures -->\n", "<!-- end of figures -->\n")
BENCHMARKS = "^((read|check|write)/(small|large|oniom_large)|floor(_of_views)?/.*|read_file/(small|large)|route/25_words|schema/load)$"
BATCH = 10_000
SAVED = 5_000
MEMORY_FOLDER = pathlib.Path("/dev/shm")  # where Linux keeps files in memory
# Lets the C library keep large blocks that are freed, which it else gives back to the system: what is read next then faults its pages in anew.
KEEPING_MEMORY = "glibc.malloc.mmap_threshold=4294967296:glibc.malloc.trim_threshold=4294967296"
# What counts as linear: sorted ranges and growing digits cost a little more than in proportion.
LINEAR_EXPONENT = 1.2


def library_figures(build, repetitions, pattern=BENCHMARKS, more=()):
    """For each benchmark the best processor time in seconds, and its counters. Runs alternate, so that noise meets all alike."""
    command = ["env", *more, str(build / "benchmarks/library_benchmark"), f"--benchmark_filter={pattern}", "--benchmark_format=json",
               f"--benchmark_repetitions={repetitions}", "--benchmark_min_time=0.1", "--benchmark_enable_random_interleaving=true"]
    output = json.loads(subprocess.run(command, capture_output=True, text=True, check=True).stdout)
    if output["context"]["build"] != "release":
        sys.exit("Not a release build: its figures say nothing of speed.")
    seconds = {"ns": 1e-9, "us": 1e-6, "ms": 1e-3, "s": 1.0}
    figures = {}
    for run in output["benchmarks"]:
        if run.get("error_occurred"):
            sys.exit(f"{run['name']}: {run['error_message']}")
        if run["run_type"] == "iteration":
            run["seconds"] = run["cpu_time"] * seconds[run["time_unit"]]
            run["bytes/s"] = run.get("bytes/s", 0)
            best = figures.setdefault(run["run_name"], run)
            if run["seconds"] < best["seconds"]:
                figures[run["run_name"]] = run
    return figures


def environment():
    return {**os.environ, "QUOR_G16_ROUTE_SCHEMA_YAML": str(HERE.parent / "resources/schemas/input/gaussian_route.yaml")}


def run_tool(build, *arguments, **more):
    """Runs the command-line tool, with `more` in its environment; returns the seconds that went by and those of processor time."""
    used = resource.getrusage(resource.RUSAGE_CHILDREN)
    begin = time.perf_counter()
    result = subprocess.run([str(build / "cli/quor-gjf"), *arguments], env={**environment(), **more}, stdout=subprocess.DEVNULL,
                            stderr=subprocess.PIPE, text=True, check=False)
    elapsed = time.perf_counter() - begin
    now = resource.getrusage(resource.RUSAGE_CHILDREN)
    if result.returncode != 0:
        sys.exit(f"quor-gjf {' '.join(arguments)} ended with {result.returncode}:\n{result.stderr}")
    return elapsed, now.ru_utime + now.ru_stime - used.ru_utime - used.ru_stime


def report_seconds(build):
    return min(run_tool(build, "report", str(build / "inputs/small.gjf"))[1] for _ in range(30))


def batch_folder(build):
    folder = build / "inputs/batch"
    if len(list(folder.glob("*.gjf"))) != BATCH:
        subprocess.run([sys.executable, str(HERE / "make_inputs.py"), "--batch", str(BATCH), str(folder)], check=True)
    return folder


def check_seconds(build):
    """Seconds to check the batch with one thread and with two, in turn, the best of three."""
    folder = batch_folder(build)
    run_tool(build, "check", "-j", "2", str(folder))  # files into the system's cache
    times = [[run_tool(build, "check", "-j", jobs, str(folder))[0] for jobs in ("1", "2")] for _ in range(3)]
    return min(one for one, _ in times), min(two for _, two in times)


def save_seconds(build, folder):
    """Seconds to change files in place, the same with flushes left out, and of a dry run; in turn, the best of three."""
    without = {"LD_PRELOAD": str(build / "benchmarks/libslow_flush.so"), "FLUSH_MICROSECONDS": "0"}
    try:
        subprocess.run([sys.executable, str(HERE / "make_inputs.py"), "--batch", str(SAVED), str(folder)], check=True)
        times = []
        for turn in range(3):
            commands = (("--in-place", {}), ("--in-place", without), ("--dry-run", {}))
            times.append([run_tool(build, "edit", how, "--set", f"mem={3 * turn + place + 1}GB", str(folder), **more)[0]
                          for place, (how, more) in enumerate(commands)])
        return [min(column) for column in zip(*times)]
    finally:
        shutil.rmtree(folder, ignore_errors=True)


class Table:
    """Rows of target, limit, measured and verdict."""

    def __init__(self):
        self.rows = []
        self.values = {}

    def add(self, key, target, value, form, most=None, least=None, note=""):
        """Adds a target, with its limit if it has one; without `value` it was not measured, and `note` tells why."""
        limit = f"≤ {form.format(most)}" if most is not None else f"≥ {form.format(least)}" if least is not None else ""
        self.values[key] = "-" if value is None else form.format(value)
        self.rows.append((target, limit, self.values[key] + (f" ({note})" if note else ""), self.verdict(value, most, least)))

    @staticmethod
    def verdict(value, most, least):
        if most is None and least is None:
            return ""
        if value is None:
            return "not measured"
        return "met" if (value <= most if most is not None else value >= least) else "MISSED"

    def text(self):
        return "| Target | Limit | Measured | |\n|---|---|---|---|\n" + "".join(f"| {' | '.join(row)} |\n" for row in self.rows)


def ratio(figures, name, floor="floor"):
    return figures[f"read/{name}"]["seconds"] / figures[f"{floor}/{name}"]["seconds"]


def add_floors(table, figures, keeping):
    table.add("floor", "read of the large job, times the floor", ratio(figures, "large"), "{:.2f}", most=1.5)
    table.add("floor_oniom", "the same, large ONIOM job", ratio(figures, "oniom_large"), "{:.2f}", most=1.7)
    table.add("keeping", "both, where the C library keeps memory for the next read", ratio(keeping, "large"), "{:.2f}",
              note=f"ONIOM {ratio(keeping, 'oniom_large'):.2f}")
    table.add("views", "both, times a floor of views", ratio(figures, "large", "floor_of_views"), "{:.2f}",
              note=f"ONIOM {ratio(figures, 'oniom_large', 'floor_of_views'):.2f}")


def add_reading(table, figures):
    def megabytes(name):
        return figures[name]["bytes/s"] / 1e6

    table.add("read", "read of the large job, MB/s", megabytes("read/large"), "{:.0f}")
    for key, name in (("write", "large"), ("write_oniom", "oniom_large")):
        table.add(key, f"write of {name}, bytes/s over those of its read", megabytes(f"write/{name}") / megabytes(f"read/{name}"), "{:.2f}", least=1,
                  note=f"{megabytes(f'write/{name}'):.0f} MB/s")
    table.add("small_read", "small job, vocabulary loaded: read, µs", 1e6 * figures["read/small"]["seconds"], "{:.1f}", most=20)
    table.add("small_write", "the same: write, µs", 1e6 * figures["write/small"]["seconds"], "{:.1f}", most=10)
    table.add("route", "a route of 25 words, µs", 1e6 * figures["route/25_words"]["seconds"], "{:.1f}", most=15)
    table.add("schema", "loading the vocabulary, ms", 1e3 * figures["schema/load"]["seconds"], "{:.1f}", most=40)
    table.add("memory", "large job from its file: most bytes of heap for each byte of input", figures["read_file/large"]["peak_per_byte"],
              "{:.2f}", most=9.5, note=f"without the file's text {figures['read/large']['peak_per_byte']:.2f}")
    table.add("allocations", "large job: allocations for each atom", figures["read/large"]["allocations_per_atom"], "{:.2f}")


def add_checks(table, build, figures):
    for key, name, most in (("small_check", "small", 4), ("large_check", "large", 3)):
        table.add(key, f"check of the {name} job, times its read",
                  figures[f"check/{name}"]["seconds"] / figures[f"read/{name}"]["seconds"], "{:.2f}", most=most,
                  note=f"{1e6 * figures[f'check/{name}']['seconds']:,.0f} µs")
    has_valgrind = shutil.which("valgrind") is not None
    for key, name, piece in (("family", "the small job", "small_check"), ("large_family", "10,000 atoms", "cartesian_check")):
        total, costs = instructions.costs_of_families(build, piece) if has_valgrind else (1, {})
        dearest = max(costs, key=costs.get, default=None)
        table.add(key, f"the dearest family of checks, of {name}, per cent of instructions", 100 * costs[dearest] / total if dearest else None,
                  "{:.1f}", most=15, note=dearest or "needs valgrind")
    table.add("facts", "all facts of a process, million instructions; 2.5 take about a millisecond",
              instructions.count_piece(build, "facts") / 1e6 if has_valgrind else None, "{:.2f}", most=2.5, note="" if has_valgrind else "needs valgrind")


def add_peers(table, peers):
    row = peers["large"]
    times = {peer: row["peers"].get(peer) for peer in compare_peers.OTHERS}
    times = {peer: value for peer, value in times.items() if isinstance(value, float)}
    fastest = min(times, key=times.get, default=None)
    note = f"{fastest}, {row['bytes'] / times[fastest] / 1e6:.1f} MB/s" if fastest else "none is installed"
    table.add("peer", "read of the large job, times faster than the fastest other program",
              times[fastest] / row["ours"] if fastest else None, "{:.1f}", least=15, note=note)


def add_growth(table, build):
    growth = instructions.growth(build) if shutil.which("valgrind") else {}
    worst = max(growth, key=lambda name: growth[name][2], default=None)
    table.add("growth", f"{len(growth)} operations of the editor: largest exponent of instructions over atoms",
              growth[worst][2] if worst else None, "{:.2f}", most=LINEAR_EXPONENT, note=worst or "needs valgrind")


def add_saving(table, build):
    saved, without, _ = save_seconds(build, build / "inputs/saved")
    table.add("save", f"`edit --in-place` of {SAVED:,} files, times the same without flushes", saved / without, "{:.2f}", most=1.5,
              note=f"{saved:.2f} s and {without:.2f} s")
    in_memory = os.access(MEMORY_FOLDER, os.W_OK)
    saved, _, dry = save_seconds(build, MEMORY_FOLDER / f"quor_gjf_saved_{os.getpid()}") if in_memory else (0, 0, 0)
    table.add("save_memory", "the same in memory, times a dry run", saved / dry if in_memory else None, "{:.2f}", most=2.2,
              note=f"{saved:.2f} s and {dry:.2f} s" if in_memory else f"needs {MEMORY_FOLDER}")


def add_starting(table, build, figures):
    starting.add_tool(table, build, environment())
    starting.add_package(table, build, environment(), batch_folder(build), figures["read_file/small"]["seconds"])


def measure(build, repetitions):
    table = Table()
    figures = library_figures(build, repetitions)
    add_floors(table, figures, library_figures(build, repetitions, "^(read|floor)/(large|oniom_large)$", ["GLIBC_TUNABLES=" + KEEPING_MEMORY]))
    add_reading(table, figures)
    add_checks(table, build, figures)
    peers = compare_peers.compare_in_own_python(build, 2.0)
    add_peers(table, peers)
    add_growth(table, build)
    table.add("report", "`quor-gjf report` of a small job, times loading the vocabulary",
              report_seconds(build) / figures["schema/load"]["seconds"], "{:.2f}", most=2)
    one, two = check_seconds(build)
    table.add("check", f"`check -j 2` of {BATCH:,} files, times faster than `-j 1`", one / two, "{:.2f}", least=1.8,
              note=f"{one:.2f} s and {two:.2f} s, {os.cpu_count()} processors")
    table.add("check_batch", f"`check -j 2` of {BATCH:,} files, s", two, "{:.2f}", most=0.2)
    add_saving(table, build)
    add_starting(table, build, figures)
    answering.add_answering(table, build, environment())
    return table, peers


def commit_name():
    def git(*arguments):
        return subprocess.run(["git", "-C", str(HERE), *arguments], capture_output=True, text=True, check=False).stdout.strip()
    return git("rev-parse", "--short", "HEAD") + ("+" if git("status", "--porcelain", "--", "../src", "../cli") else "")


COLUMNS = ("read", "floor", "floor_oniom", "peer", "write", "small_read", "small_write", "route", "schema", "memory", "allocations", "growth",
           "report", "check")


def record(table, what, commit):
    with HISTORY.open("a", encoding="utf-8") as history:
        history.write(f"| {commit} | {what} | " + " | ".join(table.values[key] for key in COLUMNS) + " |\n")
    text = DOCUMENT.read_text(encoding="utf-8")
    begin, end = (text.index(mark) for mark in MARKS)
    DOCUMENT.write_text(text[:begin] + MARKS[0] + f"\nAt {commit}, by `make bench-report`:\n\n" + table.text() + "\n" + text[end:], encoding="utf-8")


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("build", type=pathlib.Path)
    parser.add_argument("--record", metavar="WHAT")
    parser.add_argument("--commit", default=None)
    parser.add_argument("--repetitions", type=int, default=9)
    parser.add_argument("--starting", action="store_true", help="measure what starting takes, and nothing else")
    parser.add_argument("--answering", action="store_true", help="measure what the language server takes, and nothing else")
    parser.add_argument("--rules", action="store_true", help="print what each family of checks takes, and nothing else")
    arguments = parser.parse_args()
    if arguments.rules:
        return instructions.print_rules(arguments.build)
    if arguments.starting:
        table = Table()
        add_starting(table, arguments.build, library_figures(arguments.build, arguments.repetitions, "^read_file/small$"))
        return print(table.text())
    if arguments.answering:
        table = Table()
        answering.add_answering(table, arguments.build, environment())
        return print(table.text())
    table, peers = measure(arguments.build, arguments.repetitions)
    if arguments.record:
        record(table, arguments.record, arguments.commit or commit_name())
    print(table.text())
    compare_peers.print_table(peers)


if __name__ == "__main__":
    main()
