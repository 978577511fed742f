"""What Python shows of each example job is what the C++ side reports."""
import json
import os
import pathlib
import re
import subprocess

import pytest

import quor_gjf as gjf
from conftest import SOURCE

EXAMPLES = sorted(path.name for path in (SOURCE / "examples/jobs").iterdir() if path.suffix in (".gjf", ".com"))


def jobs_of(name):
    return gjf.read_all(SOURCE / "examples/jobs" / name)


def reported_jobs(name):
    """The stored report of the C++ side, a text for each job."""
    text = (SOURCE / "tests/report/expected" / (name + ".txt")).read_text(encoding="utf-8")
    parts = re.split(r"^Job \d+.*\n|(?=^GJF File Analysis:$)", text, flags=re.MULTILINE)
    return [part for part in parts if "Control Section:" in part]


def value(report, label):
    found = re.search(rf"^ *{re.escape(label)}: ?(.*)$", report, re.MULTILINE)
    return found and found[1]


def label_of(atom):
    """An atom label as reports show it."""
    text = atom.element
    if atom.mm_type is not None or atom.mm_charge is not None:
        text += "-" + (atom.mm_type or "")
    if atom.mm_charge is not None:
        text += f"-{atom.mm_charge:g}"
    return text


@pytest.mark.parametrize("name", EXAMPLES)
def test_parts_agree_with_the_stored_report(name):
    jobs, reports = jobs_of(name), reported_jobs(name)
    assert len(jobs) == len(reports) > 0
    for job, report in zip(jobs, reports):
        assert value(report, "Checkpoint file") == job.chk
        assert value(report, "Route keywords") == " ".join(job.route.words)
        if job.title and "\n" not in job.title:
            assert value(report, "Title") == job.title
        atoms = re.findall(r"^ +(\d+)\. ([^ (]+)(?:\(([^)]*)\))? \((.*?)\)(.*)$", report, re.MULTILINE)
        assert len(atoms) == len(job.atoms)
        for (number, label, params, position, rest), atom in zip(atoms, job.atoms):
            assert int(number) == atom.index + 1
            assert label == label_of(atom), report
            if not job._native.is_symbolic():
                assert [float(field) for field in position.split(",")] == pytest.approx(list(atom.position), abs=5.1e-7)
            frozen, layer = re.search(r"\[freeze: (-?\d+)\]", rest), re.search(r"\[layer: (\w+)\]", rest)
            assert (frozen and int(frozen[1])) == atom.freeze
            assert (layer and layer[1]) == atom.layer
        kinds = re.findall(r"^  Section \d+ \[(.*)\]:$", report, re.MULTILINE)
        assert kinds == [section.kind.title for section in job.sections]


@pytest.mark.parametrize("name", EXAMPLES)
def test_report_is_that_of_the_tool(name):
    tool = os.environ.get("QUOR_GJF_TOOL")
    if not tool or not pathlib.Path(tool).is_file():
        pytest.skip("the tool is not built")
    printed = subprocess.run([tool, "report", str(SOURCE / "examples/jobs" / name)], capture_output=True, text=True, check=True).stdout
    for job in jobs_of(name):
        head, _, rest = job.report().partition("\n\n")
        assert rest.strip() and all(line in printed for line in job.report().splitlines() if line.strip() and "===" not in line)


@pytest.mark.parametrize("name", EXAMPLES)
def test_json_is_that_of_the_tool(name):
    tool = os.environ.get("QUOR_GJF_TOOL")
    if not tool or not pathlib.Path(tool).is_file():
        pytest.skip("the tool is not built")
    path = SOURCE / "examples/jobs" / name
    printed = subprocess.run([tool, "report", "--json", str(path)], capture_output=True, text=True, check=True).stdout
    jobs = gjf.read_all(path)
    assert jobs.to_json() + "\n" == printed
    assert [json.loads(job.to_json()) for job in jobs] == json.loads(printed)["jobs"]


def test_kinds_have_the_library_s_names():
    header = (SOURCE / "src/input/backends/gaussian/gjf/core/job/extra_input_kind.hpp").read_text()
    listed = dict((int(number), name) for name, number in re.findall(r"^    (\w+) = (\d+),$", header, re.MULTILINE))
    assert len(listed) == 56
    assert {kind.value: kind.name.replace("_", "").lower() for kind in gjf.SectionKind} == {
        number: name.lower() for number, name in listed.items()}


@pytest.mark.parametrize("name", EXAMPLES)
def test_unchanged_jobs_give_their_bytes(name):
    data = (SOURCE / "examples/jobs" / name).read_bytes()
    jobs = jobs_of(name)
    assert all(job.is_as_read for job in jobs)
    if len(jobs) == 1:
        assert str(jobs[0]).encode("utf-8", "surrogateescape") == data


@pytest.mark.parametrize("name", EXAMPLES)
def test_changed_jobs_keep_all_other_lines(name):
    data = (SOURCE / "examples/jobs" / name).read_bytes().decode("utf-8", "surrogateescape")
    jobs = jobs_of(name)
    assert str(jobs) == data
    count = len(jobs)
    for job in jobs:
        job.mem = "123MB"
        again = gjf.loads(str(job))
        assert (again.difference(job), again.mem) == (None, "123MB")
        assert [section.text for section in again.sections] == [section.text for section in job.sections]
    changed = str(jobs).splitlines(keepends=True)
    assert sum("123MB" in line for line in changed) == count
    assert ([line for line in changed if "%mem" not in line.lower()]
            == [line for line in data.splitlines(keepends=True) if "%mem" not in line.lower()])
