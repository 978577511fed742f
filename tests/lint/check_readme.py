"""Builds and runs the program that README.md shows.

Usage: check_readme.py SOURCE COMPILER LIBRARY_FOLDER WORK_FOLDER
"""
import pathlib
import re
import shutil
import subprocess
import sys


def main():
    source, compiler, libraries = pathlib.Path(sys.argv[1]), sys.argv[2], sys.argv[3]
    work = pathlib.Path(sys.argv[4])
    shutil.rmtree(work, ignore_errors=True)
    work.mkdir(parents=True)
    snippet = re.search(r"```cpp\n(.*?)```", (source / "README.md").read_text(encoding="utf-8"), re.DOTALL).group(1)
    (work / "readme.cpp").write_text(snippet, encoding="utf-8")
    subprocess.run([compiler, "-std=c++17", "-Wall", "-Wextra", "-Werror", f"-I{source}/src", f"-I{source}/src/input/backends/gaussian",
                    "readme.cpp", f"-L{libraries}", "-lquor_g16_gjf", f"-Wl,-rpath,{libraries}", "-o", "readme"], cwd=work, check=True)
    job = source / "examples/jobs/iron_carbonyl_gen.gjf"
    output = subprocess.run(["./readme", job], cwd=work, check=True, capture_output=True, text=True).stdout
    assert output == "b3lyp/gen, 13 atoms\n", output
    text = (work / "frozen.gjf").read_text(encoding="utf-8")
    assert "b3lyp/def2tzvp" in text and text.count(" -1 ") >= 5, text
    missing = subprocess.run(["./readme", "missing.gjf"], cwd=work, check=False, capture_output=True, text=True)
    assert missing.returncode == 1 and "Cannot open file" in missing.stderr, missing


if __name__ == "__main__":
    main()
