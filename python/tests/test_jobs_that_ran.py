"""No false alarm at jobs that Gaussian ran: made from what outputs repeat of them, and the job files that lie beside outputs.

The variable QUOR_GJF_REAL_OUTPUTS names a folder of outputs. A folder `jobs` in it holds job files, which `pairs.tsv` gives to outputs.
"""
import collections
import csv
import os
import pathlib

import pytest

import quor_gjf as gjf
from echoes import echoed_jobs

# What these are about is not in an echo: the sections behind the molecule, and what other jobs leave in a checkpoint.
NOT_ECHOED = ("GJF-S", "GJF-L007", "GJF-L008", "GJF-L009")
MOST_WARNED = 0.08  # of the jobs


@pytest.fixture(scope="module")
def outputs():
    folder = os.environ.get("QUOR_GJF_REAL_OUTPUTS")
    if not folder:
        pytest.skip("QUOR_GJF_REAL_OUTPUTS names no folder of outputs")
    return pathlib.Path(folder)


def test_jobs_that_ran_raise_no_error(outputs):
    count, warned, set_aside = 0, {}, collections.Counter()
    for path in sorted(path for path in outputs.iterdir() if path.is_file() and path.suffix != ".tsv"):
        for number, job in enumerate(echoed_jobs(path), 1):
            if not job.ended_normally:
                continue
            count += 1
            findings = gjf.check(job.text)
            set_aside.update(finding.code for finding in findings if finding.code.startswith(NOT_ECHOED))
            told = [finding for finding in findings if not finding.code.startswith(NOT_ECHOED)]
            assert [str(finding) for finding in told if finding.severity == "error"] == [], (path.name, number, job.text)
            if any(finding.severity == "warning" for finding in told):
                warned[path.name, number] = [str(finding) for finding in told]
    assert count >= 30
    print(f"{count} jobs, {len(warned)} with a warning, set aside: {dict(set_aside)}")
    assert len(warned) <= MOST_WARNED * count, warned


def test_job_files_beside_normal_outputs_raise_no_error(outputs):
    with open(outputs / "pairs.tsv", newline="") as file:
        pairs = [(outputs / (row["output"] + ".gz"), row["job"]) for row in csv.DictReader(file, delimiter="\t")]
    ran = [job for output, job in pairs if echoed_jobs(output) and all(echo.ended_normally for echo in echoed_jobs(output))]
    assert len(ran) >= 5
    errors = {job: [str(finding) for finding in gjf.check(str(outputs / "jobs" / job)) if finding.severity == "error"]
              for job in ran}
    assert {job: found for job, found in errors.items() if found} == {}
