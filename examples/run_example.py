"""Runs an example program on the example jobs and compares what it wrote with what it should have.

Usage: run_example.py NAME PROGRAM JOBS
"""
import pathlib
import subprocess
import sys
import tempfile


def atom_lines(text):
    """The atom lines of the first job: those behind its charge line, up to the next empty line."""
    lines = text.split("\n")
    start = next(i for i, line in enumerate(lines) if line.replace("-", "").replace(" ", "").isdigit()) + 1
    return lines[start:lines.index("", start)]


def freeze_by_element(run, jobs):
    text = run(jobs / "water_opt_freq.gjf", "O", "-1")
    codes = [(line.split()[0], line[41:43].strip()) for line in atom_lines(text)]
    assert codes == [("O", "-1"), ("H", ""), ("H", "")], codes


def assign_layers(run, jobs):
    text = run(jobs / "ethanol_long_route.gjf")
    layers = [(line.split()[0], line[-2:].strip()) for line in atom_lines(text)]
    expected = [("C", "L"), ("C", "L"), ("O", "H")] + [("H", "L")] * 5 + [("H", "H")]
    assert layers == expected, layers


def add_atom(run, jobs):
    text = run(jobs / "acetate_oniom.gjf")
    assert len(atom_lines(text)) == 12, text
    assert atom_lines(text)[-1].split() == ["H", "1.000000", "-0.500000", "0.000000"], text
    assert "\n\n1 2 1.0 3 1.0 4 1.0 5 1.0 12 1.0\n" in text, text
    assert "\n12\n" in text, text


def swap_model_chemistry(run, jobs):
    text = run(jobs / "chained_restart.gjf", "m062x", "def2svp")
    assert text.count("--Link1--") == 2, text
    assert text.count("#p m062x/def2svp ") == 3, text
    assert "b3lyp" not in text, text


def merge_files(run, jobs):
    text = run(jobs / "water_opt_freq.gjf", jobs / "chained_restart.gjf")
    assert text.count("--Link1--") == 3, text
    assert text.startswith("%chk=water.chk\n"), text
    assert "%chk=neutral.chk\n" in text, text


def main():
    name, program, jobs = sys.argv[1], sys.argv[2], pathlib.Path(sys.argv[3])
    with tempfile.TemporaryDirectory() as folder:
        result = pathlib.Path(folder) / "result.gjf"

        def run(*arguments):
            subprocess.run([program, *map(str, arguments), str(result)], check=True)
            return result.read_text(encoding="utf-8")

        globals()[name](run, jobs)
        missing = subprocess.run([program, "/no/such/file.gjf", "x", "y", str(result)], capture_output=True, text=True, check=False)
        assert missing.returncode == 1 and missing.stderr, "a missing file is not reported"


if __name__ == "__main__":
    main()
