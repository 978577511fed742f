"""Numbers of basis functions and electrons against those that Gaussian printed for the same job, and the least memory against what it had.

The variable QUOR_GJF_REAL_OUTPUTS names a folder of outputs. What an output does not repeat, sections of basis sets and molecules in
checkpoints, is set aside and counted.
"""
import json
import os
import pathlib
import re

import pytest

import quor_gjf as gjf
from echoes import echoed_job, lines_of

FUNCTIONS = re.compile(r"^ NBasis= *(\d+)", re.M)
ELECTRONS = re.compile(r"^ +(\d+) alpha electrons +(\d+) beta electrons", re.M)
MEMORY_IN_WORDS = re.compile(r"^ Leave Link +1 at .*MaxMem= *([1-9]\d*)", re.M)
IN_CORE_WORDS = re.compile(r"^ +Keep R.* in memory.*NReq= *(\d+)", re.M)
LEAST_RIGHT = 0.97  # of the jobs that name a basis set


def outputs():
    folder = os.environ.get("QUOR_GJF_REAL_OUTPUTS")
    if not folder:
        pytest.skip("QUOR_GJF_REAL_OUTPUTS names no folder of outputs")
    return sorted(path for path in pathlib.Path(folder).iterdir() if path.is_file() and path.suffix != ".tsv")


def jobs_printed(path):
    """The texts of an output's jobs, each with its own part of the output."""
    lines = lines_of(path)
    begins = [i for i, line in enumerate(lines) if line.startswith(" Entering Link 1 =")] + [len(lines)]
    for begin, end in zip(begins, begins[1:]):
        job = echoed_job(lines[begin:end])
        if job is not None:
            yield job.text, "\n".join(lines[begin:end])


def printed_sizes(path):
    """The jobs of an output with what was printed first in each: functions, and electrons."""
    for job, text in jobs_printed(path):
        functions, electrons = FUNCTIONS.search(text), ELECTRONS.search(text)
        if functions and electrons:
            yield gjf.loads(job), int(functions[1]), int(electrons[1]) + int(electrons[2])


def test_sizes_are_those_printed():
    right, wrong, aside = 0, [], []
    for path in outputs():
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


def test_least_memory_is_no_more_than_jobs_had():
    had, in_core = 0, 0
    for path in outputs():
        for job, text in jobs_printed(path):
            memory = MEMORY_IN_WORDS.search(text)
            if memory and FUNCTIONS.search(text) and "Normal termination" in text:
                least = json.loads(gjf.loads(job).to_json())["estimate"].get("mem_bytes", 0)
                had += least > 0
                assert least <= 8 * int(memory[1]), (path.name, job)
            fewest = min(map(int, FUNCTIONS.findall(text)), default=0)
            for words in IN_CORE_WORDS.findall(text):  # all integrals and more
                in_core += 1
                assert fewest ** 4 / 8 <= int(words), (path.name, words)
    print(f"{had} jobs had the memory they need at the least, {in_core} kept integrals in memory")
    assert had >= 5
    assert in_core >= 50
