"""Checks how many files are flushed at one time when many are changed in place, and that each folder is flushed once, at the end.

Usage: saving_test.py TOOL SLOW_FLUSH_LIBRARY WORK_FOLDER
"""
import os
import pathlib
import shutil
import subprocess
import sys

FOLDERS = 3
FILES = 40  # in each
JOB = "%mem=1GB\n# hf/sto-3g\n\nt\n\n0 1\nHe 0.0 0.0 0.0\n\n"


def flushes(tool, library, work, *arguments):
    """Changes all files; returns the counts, and fails where a file is not as it should be."""
    shutil.rmtree(work, ignore_errors=True)
    for folder in range(FOLDERS):
        (work / f"many/{folder}").mkdir(parents=True)
        for file in range(FILES):
            (work / f"many/{folder}/{file:02}.gjf").write_text(JOB, encoding="utf-8")
    (work / ".quor-gjf").touch()
    environment = {**os.environ, "LD_PRELOAD": library, "FLUSH_COUNTS": str(work / "counts")}
    subprocess.run([tool, "edit", *arguments, "--set", "mem=2GB", "many"], cwd=work, env=environment, check=True, capture_output=True)
    texts = {path.read_text(encoding="utf-8") for path in (work / "many").rglob("*.gjf")}
    names = [path for path in (work / "many").rglob("*") if path.is_file()]
    assert "-o" in arguments or texts == {JOB.replace("1GB", "2GB")}, texts
    assert len(names) == FOLDERS * FILES, names
    return [int(count) for count in (work / "counts").read_text(encoding="utf-8").split()]


def main():
    tool, library, work = sys.argv[1], sys.argv[2], pathlib.Path(sys.argv[3])
    for arguments in (["--in-place"], ["--in-place", "-j", "1"], ["-o", "changed"]):
        most, files, folders, late = flushes(tool, library, work, *arguments)
        assert 16 <= most <= 32, f"{arguments}: {most} flushes at one time"
        assert files == FOLDERS * FILES, f"{arguments}: {files} flushes of files"
        assert folders == FOLDERS, f"{arguments}: {folders} flushes of folders"
        assert late == 0, f"{arguments}: {late} files were flushed behind their folder"
    assert flushes(tool, library, work, "--dry-run", "-o", "changed") == [0, 0, 0, 0], "a dry run flushes"
    print(f"{FOLDERS * FILES} files: up to {most} flushes at one time, {folders} of folders")


if __name__ == "__main__":
    main()
