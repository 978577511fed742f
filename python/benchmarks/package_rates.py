"""Prints, as JSON, how many seconds the package takes to read one file, and it and the tool to work on a folder of many.

Usage: package_rates.py TOOL FILE FOLDER

The first is processor time, the best of many; the others are times that went by with two threads, the best of some that alternate.
"""
import json
import pathlib
import subprocess
import sys
import time

import quor_gjf as gjf


def best_read(path, calls=200, rounds=15):
    def one_round():
        begin = time.process_time()
        for _ in range(calls):
            gjf.read(path)
        return (time.process_time() - begin) / calls
    return min(one_round() for _ in range(rounds))


def elapsed(work):
    begin = time.perf_counter()
    work()
    return time.perf_counter() - begin


def main():
    tool, file, folder = sys.argv[1:]
    paths = sorted(map(str, pathlib.Path(folder).glob("*.gjf")))

    def run(*arguments):
        # `find` ends with 1, since nothing is found.
        if subprocess.run([tool, *arguments, folder], stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL, check=False).returncode > 1:
            sys.exit(f"quor-gjf {' '.join(arguments)} failed")

    many = {
        "check": lambda: run("check", "-j", "2"),
        "check_many": lambda: gjf.check_many(paths, 2),
        "find": lambda: run("find", "-j", "2", "atoms > 100000"),
        "read_many": lambda: gjf.read_many(paths, 2),
    }
    times = {name: min(values) for name, values in zip(many, zip(*[[elapsed(work) for work in many.values()] for _ in range(4)]))}
    print(json.dumps({"read": best_read(file), **times}))


if __name__ == "__main__":
    main()
