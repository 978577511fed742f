"""Runs test programs in a process whose locale has been set, C and C++ alike.

Usage: run_under_locale.py LOCALE EXPECTED FOLDER PRELOADED SHOW_LOCALE PROGRAM...

The locale is made in FOLDER, so nothing of the system changes. SHOW_LOCALE must print EXPECTED, or nothing would be shown.
A program may be followed by a filter of its tests, as in PROGRAM=-Slow*. Exit status 77: the locale cannot be made here.
"""
import os
import pathlib
import subprocess
import sys


def make_locale(name, folder):
    path = pathlib.Path(folder) / name
    path.parent.mkdir(parents=True, exist_ok=True)
    if not path.exists():
        language, _, codeset = name.partition(".")
        subprocess.run(["localedef", "-c", "-i", language, "-f", codeset, str(path)], check=False, stderr=subprocess.DEVNULL)
    return path.exists()


def main():
    name, expected, folder, preloaded, show_locale, *programs = sys.argv[1:]
    if not make_locale(name, folder):
        print(f"{name} cannot be made: apt-get install locales")
        return 77
    environment = dict(os.environ, LC_ALL=name, LANG=name, LOCPATH=folder, LD_PRELOAD=preloaded)
    shown = subprocess.run([show_locale], env=environment, check=True, capture_output=True, text=True).stdout.strip()
    if shown != expected:
        print(f"the locale is not in force: {shown!r} instead of {expected!r}")
        return 1
    failed = []
    for program in programs:
        path, _, tests = program.partition("=")
        result = subprocess.run([path, "--gtest_brief=1", f"--gtest_filter={tests or '*'}"], env=environment, check=False,
                                capture_output=True, text=True)
        print(pathlib.Path(path).name, "passed" if result.returncode == 0 else "FAILED")
        if result.returncode != 0:
            failed.append(program)
            print(result.stdout[-3000:], result.stderr[-1000:])
    print(f"{len(programs) - len(failed)} of {len(programs)} programs pass under {name}")
    return 1 if failed else 0


if __name__ == "__main__":
    sys.exit(main())
