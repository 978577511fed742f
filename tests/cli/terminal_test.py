"""Runs the tool with a terminal in the place of its output: colour, and the line of progress.

Usage: terminal_test.py TOOL WORK_FOLDER
"""
import os
import pathlib
import pty
import re
import shutil
import subprocess
import sys
import threading
import time

JOB = "# hf/sto-3g\n\nt\n\n0 2\nHe 0.0 0.0 0.0\n\n"
ESCAPE = "\033"


def run(command, work, terminal_of, **variables):
    """Runs a command whose "stdout" or "stderr" is a terminal; returns what it wrote there."""
    environment = {k: v for k, v in os.environ.items() if k not in ("NO_COLOR", "TERM")}
    master, slave = pty.openpty()
    streams = {"stdout": subprocess.DEVNULL, "stderr": subprocess.DEVNULL, terminal_of: slave}
    process = subprocess.Popen(command, cwd=work, env={**environment, **variables}, stdin=subprocess.DEVNULL, **streams)
    os.close(slave)
    written = b""
    while True:
        try:
            part = os.read(master, 4096)
        except OSError:  # the other end is closed
            break
        if not part:
            break
        written += part
    process.wait()
    os.close(master)
    return written.decode("utf-8", "replace")


def colour_problems(tool, work):
    check = [tool, "check", "job.gjf"]
    coloured = run(check, work, "stdout", TERM="xterm")
    if f"{ESCAPE}[1;31merror:{ESCAPE}[0m" not in coloured:
        yield f"no red error: {coloured!r}"
    for variables in ({"TERM": "xterm", "NO_COLOR": "1"}, {"TERM": "xterm", "NO_COLOR": ""}, {"TERM": "dumb"}, {}):
        plain = run(check, work, "stdout", **variables)
        if "error: charge" not in plain or ESCAPE in plain:
            yield f"{variables}: {plain!r}"
    if ESCAPE in run([tool, "check", "--json", "job.gjf"], work, "stdout", TERM="xterm"):
        yield "JSON is coloured"
    plain = subprocess.run(check, cwd=work, env={**os.environ, "TERM": "xterm"}, capture_output=True, text=True, check=False).stdout
    if ESCAPE in plain or "error: charge" not in plain:
        yield f"colour without a terminal: {plain!r}"


def diff_problems(tool, work):
    edit = [tool, "edit", "job.gjf", "--diff", "--title", "a\033b"]
    coloured = run(edit, work, "stdout", TERM="xterm")
    for line in (f"{ESCAPE}[1m--- job.gjf{ESCAPE}[0m", f"{ESCAPE}[36m@@ -1,6 +1,6 @@{ESCAPE}[0m", f"{ESCAPE}[31m-t{ESCAPE}[0m",
                 f"{ESCAPE}[32m+a?b{ESCAPE}[0m"):
        if line not in coloured:
            yield f"no {line!r} in {coloured!r}"
    for variables in ({"TERM": "xterm", "NO_COLOR": "1"}, {"TERM": "dumb"}):
        plain = run(edit, work, "stdout", **variables)
        if "\n-t" not in plain or f"{ESCAPE}[" in plain:
            yield f"diff with {variables}: {plain!r}"


def run_with_slow_file(tool, work, terminal_of):
    """Checks a file whose text comes after more than a second."""
    slow = work / "slow"
    os.mkfifo(slow)

    def write_late():
        with open(slow, "w", encoding="utf-8") as file:  # waits until it is read
            time.sleep(1.3)
            file.write(JOB)

    writer = threading.Thread(target=write_late)
    writer.start()
    written = run([tool, "check", "--ignore", "GJF-M002", "slow", "job.gjf"], work, terminal_of, TERM="xterm")
    writer.join()
    slow.unlink()
    return written


def progress_problems(tool, work):
    slow = run_with_slow_file(tool, work, "stderr")
    if not re.search("\r1 of 2 files, \\d+/s", slow) or f"\r{ESCAPE}[K2 files, 0 errors" not in slow:
        yield f"no progress, or it stays: {slow!r}"
    if "of 2 files" in run_with_slow_file(tool, work, "stdout"):
        yield "progress on standard output"
    if "of 1 files" in run([tool, "check", "job.gjf"], work, "stderr", TERM="xterm"):
        yield "progress of short work"


def main():
    tool, work = sys.argv[1], pathlib.Path(sys.argv[2])
    shutil.rmtree(work, ignore_errors=True)
    work.mkdir(parents=True)
    (work / ".quor-gjf").touch()
    (work / "job.gjf").write_text(JOB, encoding="utf-8")
    found = [*colour_problems(tool, work), *diff_problems(tool, work), *progress_problems(tool, work)]
    print("\n".join(found) or "colour and progress as they should be")
    return 1 if found else 0


if __name__ == "__main__":
    sys.exit(main())
