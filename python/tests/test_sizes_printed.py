"""Numbers of basis functions and electrons against those that Gaussian printed for the same job.

The variable QUOR_GJF_REAL_OUTPUTS names a folder of outputs. What an output does not repeat, sections of basis sets and molecules in
checkpoints, is set aside and counted.
"""
import os
import pathlib
import re

import pytest

import quor_gjf as gjf
from echoes import echoed_job, lines_of

FUNCTIONS = re.compile(r"^ NBasis= *(\d+)", re.M)
ELECTRONS = re.compile(r"^ +(\d+) alpha electrons +(\d+) beta electrons", re.M)
LEAST_RIGHT = 0.97  # of the jobs that name a basis set


def printed_sizes(path):
    """The jobs of an output with what was printed first in each: functions, and electrons."""
    lines = lines_of(path)
    begins = [i for i, line in enumerate(lines) if line.startswith(" Entering Link 1 =")] + [len(lines)]
    for begin, end in zip(begins, begins[1:]):
        job = echoed_job(lines[begin:end])
        text = "\n".join(lines[begin:end])
        functions, electrons = FUNCTIONS.search(text), ELECTRONS.search(text)
        if job is not None and functions and electrons:
            yield gjf.loads(job.text), int(functions[1]), int(electrons[1]) + int(electrons[2])


def test_sizes_are_those_printed():
    folder = os.environ.get("QUOR_GJF_REAL_OUTPUTS")
    if not folder:
        pytest.skip("QUOR_GJF_REAL_OUTPUTS names no folder of outputs")
    right, wrong, aside = 0, [], []
    for path in sorted(path for path in pathlib.Path(folder).iterdir() if path.is_file() and path.suffix != ".tsv"):
        for job, functions, electrons in printed_sizes(path):
            if job.electrons is None or job.route.basis in ("gen", "genecp"):
                aside.append((path.name, job.to_json()[-200:]))
                continue
            assert job.electrons == electrons, (path.name, str(job))
            if job.functions == functions:
                right += 1
            else:
                wrong.append((path.name, str(job.route), job.functions, functions))
    print(f"{right} right, {len(wrong)} wrong or not known, {len(aside)} set aside")
    assert right >= 30
    assert right >= LEAST_RIGHT * (right + len(wrong)), wrong
