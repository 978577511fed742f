"""What users wait for before any work is done: whole runs of the tool on little, and importing the Python package and calling it.

Processor times, each the best of many runs, which alternate, so that other work on the machine meets all alike.
"""
import json
import os
import pathlib
import resource
import subprocess

import instructions

HERE = pathlib.Path(__file__).resolve().parent
RUNS = 40
# The package is built for this one.
PYTHON = "/usr/bin/python3"


def processor_seconds(command, environment):
    before = resource.getrusage(resource.RUSAGE_CHILDREN)
    subprocess.run(command, env=environment, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL, check=True)
    after = resource.getrusage(resource.RUSAGE_CHILDREN)
    return after.ru_utime + after.ru_stime - before.ru_utime - before.ru_stime


def best_seconds(commands, environment, runs=RUNS):
    """For each name the best time of its command."""
    best = dict.fromkeys(commands, float("inf"))
    for _ in range(runs):
        for name, command in commands.items():
            best[name] = min(best[name], processor_seconds(command, environment))
    return best


def add_tool(table, build, environment):
    commands = {name: [str(build / "cli/quor-gjf"), *(each.replace("INPUTS", str(build / "inputs")) for each in arguments)]
                for name, arguments in instructions.COMMANDS.items()}
    times = best_seconds(commands, environment)
    version = times["tool_version"]
    table.add("version", "`quor-gjf --version`, ms of processor time", 1e3 * version, "{:.2f}", most=2.5)
    for name, what in (("check_small", "`check` of a small job"), ("complete", "`complete`"), ("route", "`route`")):
        table.add(f"start_{name}", f"{what}, ms more than `--version`", 1e3 * (times[f"tool_{name}"] - version), "{:.2f}", most=3.5)


def installed_package(build):
    """A folder with the package of a build, or None."""
    if not list((build / "python").glob("_core*.so")):
        return None
    folder = (build / "package").resolve()
    subprocess.run(["cmake", "--install", str(build), "--component", "python", "--prefix", str(folder)], check=True, stdout=subprocess.DEVNULL)
    for path in (HERE.parent / "python/quor_gjf").glob("*.py"):
        (folder / "quor_gjf" / path.name).write_bytes(path.read_bytes())
    return folder


def package_figures(build, package, environment, batch):
    """Seconds: of importing, of reading a small file, and of a batch of files by the package and by the tool."""
    environment = {**environment, "PYTHONPATH": str(package)}
    imports = {name: [PYTHON, "-c", f"import {name}"] for name in ("json", "quor_gjf")}
    for command in imports.values():
        processor_seconds(command, environment)  # writes the compiled modules
    script = [PYTHON, str(HERE.parent / "python/benchmarks/package_rates.py"), str(build / "cli/quor-gjf"), str(build / "inputs/small.gjf"), str(batch)]
    rates = json.loads(subprocess.run(script, env=environment, capture_output=True, text=True, check=True).stdout)
    return {**best_seconds(imports, environment), **rates}


def add_package(table, build, environment, batch, parse_file_seconds):
    package = installed_package(build)
    figures = package_figures(build, package, environment, batch) if package else None
    note = f"{os.cpu_count()} processors" if package else "the package was not built: pybind11 is missing"

    def add(key, target, value, form, **limit):
        table.add(key, target, value(figures) if figures else None, form, note=note if not figures or "many" in key else "", **limit)

    add("import", "Python: `import quor_gjf`, ms more than `import json`", lambda of: 1e3 * (of["quor_gjf"] - of["json"]), "{:.1f}", most=20)
    add("python_read", "`quor_gjf.read` of a small file, times `parse_file` in C++", lambda of: of["read"] / parse_file_seconds, "{:.2f}", most=3)
    add("check_many", "`check_many`, files a second over those of `check -j 2`", lambda of: of["check"] / of["check_many"], "{:.2f}", least=0.8)
    add("read_many", "`read_many`, files a second over those of `find -j 2`", lambda of: of["find"] / of["read_many"], "{:.2f}", least=0.8)
