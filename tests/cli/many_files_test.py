"""Checks a folder of many small files: the same output with one thread and with several, in the order of the files, in memory
that does not grow with their number.

Usage: many_files_test.py TOOL WORK_FOLDER [memory]    # with "memory", memory and time are measured as well
"""
import os
import pathlib
import resource
import shutil
import subprocess
import sys

FILES = 2000
FEWER = 200
# Peak memory may differ by this much, in KiB, and not by the 1800 files: a text and its findings are some kilobytes.
ALLOWANCE = 4096
FIXED = 1000
MOST_FOR_FIXES = 3  # times the processor time of a check


def job(number):
    """Every third job has a wrong multiplicity, every seventh an unknown option, every eleventh cannot be read."""
    multiplicity = 2 if number % 3 == 0 else 1
    option = "calfc" if number % 7 == 0 else "calcfc"
    last = "0x" if number % 11 == 0 else "0.5"
    return f"%mem=1GB\n# hf/sto-3g opt={option}\n\njob {number}\n\n0 {multiplicity}\nO 0.0 0.0 0.0\nH 0.0 0.7 0.5\nH 0.0 -0.7 {last}\n\n"


def write_jobs(folder, count):
    folder.mkdir(parents=True)
    for number in range(count):
        (folder / f"job_{number:04}.gjf").write_text(job(number), encoding="utf-8")


def run(tool, work, *arguments):
    """Returns exit code, output and peak memory in KiB."""
    output = work / "output"
    with open(output, "wb") as file:
        process = subprocess.Popen([tool, "check", *arguments], cwd=work, stdout=file, stderr=subprocess.STDOUT)
        _, status, usage = os.wait4(process.pid, 0)
        process.returncode = os.waitstatus_to_exitcode(status)
    return process.returncode, output.read_text(encoding="utf-8"), usage.ru_maxrss


def processor_seconds(tool, work, *arguments):
    """The least processor time of several runs, and the output."""
    least = float("inf")
    for _ in range(3):
        used = resource.getrusage(resource.RUSAGE_CHILDREN)
        _, output, _ = run(tool, work, *arguments)
        now = resource.getrusage(resource.RUSAGE_CHILDREN)
        least = min(least, now.ru_utime + now.ru_stime - used.ru_utime - used.ru_stime)
    return least, output


def hold_time_of_fixes(tool, work):
    """Of jobs of which every tenth has a fault with a fix, a difference takes at most so many times as long as a check."""
    (work / "tenth").mkdir()
    for number in range(FIXED):
        text = f"%mem={'1 GB' if number % 10 == 0 else '1GB'}\n# hf/sto-3g opt\n\njob {number}\n\n0 1\nO 0 0 0\nH 0 0.7 0.5\nH 0 -0.7 0.5\n\n"
        (work / f"tenth/job_{number:04}.gjf").write_text(text, encoding="utf-8")
    check, _ = processor_seconds(tool, work, "-j", "1", "tenth")
    fix, output = processor_seconds(tool, work, "-j", "1", "--fix", "--diff", "tenth")
    assert output.count("+%mem=1GB\n") == FIXED // 10, output[-500:]
    assert fix <= MOST_FOR_FIXES * check, f"{check:.3f} s of checks, {fix:.3f} s with their fixes"


def main():
    tool, work = sys.argv[1], pathlib.Path(sys.argv[2])
    shutil.rmtree(work, ignore_errors=True)
    write_jobs(work / "many", FILES)
    write_jobs(work / "fewer", FEWER)
    (work / ".quor-gjf").touch()
    _, _, few_memory = run(tool, work, "-j", "2", "fewer")
    code, one, _ = run(tool, work, "-j", "1", "many")
    assert code == 1, code
    for threads in ("2", "7"):
        code, several, memory = run(tool, work, "-j", threads, "many")
        assert code == 1 and several == one, f"-j {threads} gives another output"
        if threads == "2" and "memory" in sys.argv[3:]:
            assert memory < few_memory + ALLOWANCE, f"{few_memory} KiB for {FEWER} files, {memory} KiB for {FILES}"
    for name in ("sarif", "gitlab", "junit"):  # documents are written as they come
        _, _, few_memory = run(tool, work, "-j", "2", "--output-format", name, "fewer")
        _, _, memory = run(tool, work, "-j", "2", "--output-format", name, "many")
        assert memory < few_memory + ALLOWANCE or "memory" not in sys.argv[3:], f"{name}: {few_memory} KiB, {memory} KiB"
    if "memory" in sys.argv[3:]:
        hold_time_of_fixes(tool, work)
    places = [line.split(":")[0] for line in one.split("\n") if line.startswith("many/")]
    wrong = sorted({f"many/job_{n:04}.gjf" for n in range(FILES) if n % 3 == 0 or n % 7 == 0 or n % 11 == 0})
    assert places == sorted(places) and sorted(set(places)) == wrong, "files are missing or out of order"
    summary, fixes = one.rstrip().split("\n")[-2:]
    assert summary.startswith(f"{FILES} files, ") and fixes.split()[1:6] == "findings can be fixed: 0".split(), one[-200:]
    print(f"{FILES} files checked alike by 1, 2 and 7 threads; {few_memory} KiB for {FEWER} files, {memory} KiB for {FILES} in 7 threads")


if __name__ == "__main__":
    main()
