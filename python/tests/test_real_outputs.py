"""Positions of Z-matrices beside those that Gaussian printed.

The variable QUOR_GJF_REAL_OUTPUTS names a folder of outputs, compressed by gzip or not.
"""
import os
import pathlib
import re

import numpy as np
import pytest

import quor_gjf as gjf
from echoes import lines_of

NUMBER = re.compile(r"-?\d+\.\d*$")


def echoed_rows(lines):
    """The rows that an output repeats, names replaced by their values; none where it has no Z-matrix."""
    rows = []
    values = {}
    for line in lines[2:]:
        fields = line.split()
        if not fields:
            break
        if len(fields) >= 2 and NUMBER.match(fields[1]):
            values[fields[0]] = fields[1]
        elif not fields[0].endswith(":"):
            rows.append(fields[:7])
    rows = [[values.get(field, field) for field in row] for row in rows]
    return rows if len(rows) > 1 and all(len(row) == 1 + 2 * min(i, 3) for i, row in enumerate(rows)) else []


def refined_rows(lines, rows):
    """The rows with the values of Gaussian's table, which has lengths with six decimals, but angles with three alone."""
    refined = []
    for row, line in zip(rows, lines[3:]):
        values = [float(value) for value in re.findall(r"(-?\d+\.\d+)\(", line)]
        row = list(row)
        for place, value in zip(range(2, len(row), 2), values):
            if place == 2 or abs(float(row[place]) - value) > 6e-4:
                row[place] = repr(value)
        refined.append(row)
    return refined


def orientation(lines, count):
    return np.array([[float(field) for field in line.split()[3:6]] for line in lines[5:5 + count]])


def compared(lines):
    """The largest difference of each orientation in an output that stands behind the Z-matrix it was made from."""
    rows, waiting, differences = [], False, []
    for i, line in enumerate(lines):
        if "Symbolic Z-matrix:" in line:
            rows = echoed_rows(lines[i:i + 500])
            waiting = bool(rows)
        elif "Z-MATRIX (ANGSTROMS AND DEGREES)" in line and rows:
            rows = refined_rows(lines[i:], rows)
            waiting = True
        elif waiting and re.search(r"(Z-Matrix|Input) orientation:", line):
            text = "# hf/sto-3g\n\nt\n\n0 1\n" + "".join(" ".join(row) + "\n" for row in rows) + "\n"
            differences.append(np.abs(gjf.loads(text).positions - orientation(lines[i:], len(rows))).max())
            waiting = False
    return differences


def test_positions_are_those_that_gaussian_printed():
    folder = os.environ.get("QUOR_GJF_REAL_OUTPUTS")
    if not folder:
        pytest.skip("QUOR_GJF_REAL_OUTPUTS names no folder of outputs")
    found = {path.name: compared(lines_of(path)) for path in sorted(pathlib.Path(folder).iterdir()) if path.is_file()}
    found = {name: differences for name, differences in found.items() if differences}
    assert found, f"no output of {folder} has a Z-matrix"
    assert {name: max(differences) for name, differences in found.items() if max(differences) > 1e-5} == {}
