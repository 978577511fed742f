"""Builds and runs the program that README.md shows.

Usage: check_readme.py SOURCE COMPILER LIBRARY_FOLDER WORK_FOLDER
"""
import pathlib
import re
import shutil
import subprocess
import sys

HNC = "hf/6-31g(d), 3 atoms\n"


def main():
    source, compiler, libraries = pathlib.Path(sys.argv[1]), sys.argv[2], sys.argv[3]
    work = pathlib.Path(sys.argv[4])
    shutil.rmtree(work, ignore_errors=True)
    work.mkdir(parents=True)
    snippet = re.search(r"```cpp\n(.*?)```", (source / "README.md").read_text(encoding="utf-8"), re.DOTALL).group(1)
    (work / "readme.cpp").write_text(snippet, encoding="utf-8")
    subprocess.run([compiler, "-std=c++17", "-Wall", "-Wextra", "-Werror", f"-I{source}/src", f"-I{source}/src/input/backends/gaussian",
                    "readme.cpp", f"-L{libraries}", "-lquor_g16_gjf", f"-Wl,-rpath,{libraries}", "-o", "readme"], cwd=work, check=True)
    jobs = source / "examples/jobs"

    def run(job):
        return subprocess.run(["./readme", job], cwd=work, check=False, capture_output=True, text=True)

    result = run(jobs / "hnc_irc.gjf")
    assert result.returncode == 0 and result.stdout == HNC, result
    before, after = (path.read_text(encoding="utf-8").split("\n") for path in (jobs / "hnc_irc.gjf", work / "frozen.gjf"))
    assert len(before) == len(after), after
    changed = [line for old, line in zip(before, after) if old != line]
    assert len(changed) == 2 and "def2tzvp" in changed[0] and changed[1].split()[:2] == ["C", "-1"], changed
    # What would not be read as meant, and what cannot be read at all, is told and leaves no file.
    (work / "charge.gjf").write_text("# hf/sto-3g\n\nt\n\n99999999999 1\nHe 0 0 0\n\n", encoding="utf-8")
    for job, message in ((jobs / "iron_carbonyl_gen.gjf", "would be read"), ("missing.gjf", "Cannot open file"),
                         ("charge.gjf", "beyond 32 bits")):
        (work / "frozen.gjf").unlink(missing_ok=True)
        result = run(job)
        assert result.returncode == 1 and message in result.stderr, result
        assert not (work / "frozen.gjf").exists(), job


if __name__ == "__main__":
    main()
