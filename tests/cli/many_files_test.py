"""Checks a folder of many small files: the same output with one thread and with several, in the order of the files, in memory
that does not grow with their number.

Usage: many_files_test.py TOOL WORK_FOLDER [memory]    # with "memory", memory is measured as well
"""
import os
import pathlib
import shutil
import subprocess
import sys

FILES = 2000
FEWER = 200
# Peak memory may differ by this much, in KiB, and not by the 1800 files: a text and its findings are some kilobytes.
ALLOWANCE = 4096


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
    places = [line.split(":")[0] for line in one.split("\n") if line.startswith("many/")]
    wrong = sorted({f"many/job_{n:04}.gjf" for n in range(FILES) if n % 3 == 0 or n % 7 == 0 or n % 11 == 0})
    assert places == sorted(places) and sorted(set(places)) == wrong, "files are missing or out of order"
    summary, fixes = one.rstrip().split("\n")[-2:]
    assert summary.startswith(f"{FILES} files, ") and fixes.split()[1:6] == "findings can be fixed: 0".split(), one[-200:]
    print(f"{FILES} files checked alike by 1, 2 and 7 threads; {few_memory} KiB for {FEWER} files, {memory} KiB for {FILES} in 7 threads")


if __name__ == "__main__":
    main()
