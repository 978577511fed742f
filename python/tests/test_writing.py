"""Writing: what is written, what is refused, and that a refusal touches no file."""
import os
import pathlib

import numpy as np
import pytest

import quor_gjf as gjf
from conftest import SOURCE, WATER

WIDE = WATER.replace("0.7572", "10.75720000001").replace("-0.7572", "-10.75720000001")


def example(name):
    return (SOURCE / "examples/jobs" / name).read_text(encoding="utf-8")


def test_an_unchanged_job_gives_its_bytes():
    for text in (WATER, WATER.replace("\n", "\r\n"), "\ufeff" + WATER, WATER.rstrip("\n"), WATER + "\n\n\n\n",
                 example("butane_scan_zmatrix.gjf"), example("comments_crlf.gjf")):
        assert str(gjf.loads(text)) == text


def test_a_change_taken_back_gives_the_bytes_again(job):
    job.charge = 1
    assert str(job) != WATER and not job.is_as_read
    job.charge = 0
    assert str(job) == WATER and job.is_as_read


CHANGES = [
    (lambda job: setattr(job, "mem", "8GB"), "%mem=8GB\n"),
    (lambda job: setattr(job, "chk", None), "#p b3lyp/6-31g(d) opt freq geom=connectivity"),
    (lambda job: setattr(job, "title", "Other\ntitle"), "\n\nOther\ntitle\n\n"),
    (lambda job: setattr(job, "pairs", [(1, 2), (0, 1)]), "\n1 2 0 1\n"),
    (lambda job: job.freeze("H"), "H                                        -1 0.0000      0.7572      -0.4692"),
    (lambda job: job.translate((0, 0, 1)), "O                                           0.000000    0.000000    1.117300"),
    (lambda job: job.sections.append("last"), "\n\nlast\n\n\n"),
    (lambda job: job.bonds.__setitem__((1, 2), 0.5), "\n1 2 1.0 3 1.0\n2 3 0.5\n3\n"),
]


@pytest.mark.parametrize("change, expected", CHANGES)
def test_a_change_is_written_and_read_back(job, change, expected, tmp_path):
    change(job)
    assert expected in str(job)
    job.save(tmp_path / "out.gjf")
    assert (tmp_path / "out.gjf").read_text() == str(job)
    assert gjf.read(tmp_path / "out.gjf").fixed_layout() == job.fixed_layout()


def lose(part):
    """Jobs that the fixed layout cannot carry, with the part that would be lost."""
    def change(job, name, value):
        setattr(job, name, value)
        return job

    def changed(name, value):
        return change(gjf.loads(WATER), name, value)

    oniom = gjf.loads("#p oniom(hf/sto-3g:amber)\n\nT\n\n0 1 0 1 0 1\nC 0 0 0 0 H\nC 0 0 0 1.5 L H 1\n\n")
    checkpoint = gjf.loads("#p hf/sto-3g geom=allcheck\n\n")
    orders = gjf.loads(WATER)
    orders.bonds[0, 1] = 1.25
    section = gjf.loads(WATER)
    section.sections.append("two\n\nblocks")
    words = gjf.loads(WATER)
    words.route.append_word("opt ! not read again")
    return {
        "Z-matrix": lambda: change(gjf.loads(example("peroxide_zmatrix.gjf")), "mem", "1GB"),
        "link atoms": lambda: change(oniom, "mem", "1GB"),
        "too wide": lambda: change(gjf.loads(WIDE), "mem", "1GB"),
        "title": lambda: changed("title", "blank\n\nline"),
        "its title": lambda: change(checkpoint, "title", "Lost"),
        "charge and multiplicity": lambda: change(checkpoint, "multiplicity", 2),
        "extra input sections": lambda: section,
        "sections": lambda: orders,
        "Link 0": lambda: changed("mem", "1GB\n%nproc=3"),
        "route": lambda: words,
    }[part]()


@pytest.mark.parametrize("part", ["Z-matrix", "link atoms", "too wide", "title", "its title", "charge and multiplicity",
                                  "extra input sections", "sections", "Link 0", "route"])
def test_what_the_layout_cannot_carry_is_refused(part, tmp_path):
    job = lose(part)
    target = tmp_path / "old.gjf"
    target.write_text("old")
    for write in (lambda: str(job), lambda: job.save(target), lambda: gjf.Jobs([job, job]).save(target), lambda: str(gjf.Jobs([job]))):
        with pytest.raises(gjf.WriteError, match="without loss"):
            write()
    assert target.read_text() == "old" and os.listdir(tmp_path) == ["old.gjf"]


def test_numeric_coordinates_make_wide_ones_fit():
    job = gjf.loads(WIDE)
    job.mem = "1GB"
    assert job.touching_coordinates == [1, 2]
    job.use_numeric_coordinates()
    assert job.touching_coordinates == []
    np.testing.assert_allclose(gjf.loads(str(job)).positions, gjf.loads(WIDE).positions, atol=5e-7)


def test_other_jobs_of_the_file_are_not_lost(tmp_path):
    path = tmp_path / "chain.gjf"
    path.write_text(example("chained_restart.gjf"))
    first = gjf.read(path)
    first.mem = "1GB"
    link = tmp_path / "link.gjf"
    link.symlink_to(path)
    for target in (None, path, link):
        with pytest.raises(gjf.WriteError, match="read_all"):
            first.save(target)
    assert path.read_text() == example("chained_restart.gjf")
    first.save(tmp_path / "first.gjf")
    assert gjf.read(tmp_path / "first.gjf") == first
    jobs = gjf.read_all(path)
    with pytest.raises(gjf.WriteError, match="read_all"):
        jobs[1].save()
    jobs[1].mem = "2GB"
    jobs.save()
    again = gjf.read_all(path)
    assert again == jobs and again[1].mem == "2GB"


def test_jobs_are_written_together(tmp_path, job):
    other = job.copy()
    other.title = "Other"
    jobs = gjf.Jobs([job, other])
    assert str(jobs).count("--Link1--") == 1 and str(jobs).endswith("\n\n\n")
    jobs.save(tmp_path / "both.gjf")
    assert gjf.read_all(tmp_path / "both.gjf") == [job, other]
    assert str(gjf.Jobs()) == ""


def test_files_that_cannot_be_written(job, tmp_path):
    with pytest.raises(gjf.FileError, match="Cannot write file: "):
        job.save(tmp_path / "no" / "such" / "folder.gjf")
    with pytest.raises(OSError):
        gjf.Jobs([job]).save(tmp_path / "no" / "folder.gjf")
    with pytest.raises(ValueError, match="path is needed"):
        job.save()
    with pytest.raises(ValueError, match="path is needed"):
        gjf.Jobs([job]).save()


def test_save_goes_back_to_its_file(job, tmp_path):
    path = pathlib.Path(tmp_path / "w.gjf")
    job.save(path)
    assert job.path == str(path)
    read = gjf.read(path)
    read.charge = 1
    read.save()
    read.save(tmp_path / "copy.gjf")
    assert read.path == str(path)
    assert gjf.read(path) == gjf.read(tmp_path / "copy.gjf") == read


def test_edit_saves_at_the_end(job, tmp_path):
    path = tmp_path / "w.gjf"
    job.save(path)
    with gjf.edit(path) as edited:
        edited.mem = "5GB"
        assert gjf.read(path).mem is None
    assert gjf.read(path).mem == "5GB"


def test_edit_writes_nothing_after_an_error_or_without_a_change(job, tmp_path):
    path = tmp_path / "w.gjf"
    job.save(path)
    before = os.stat(path)
    with pytest.raises(ZeroDivisionError):
        with gjf.edit(path) as edited:
            edited.mem = "5GB"
            1 / 0
    with gjf.edit(path) as edited:
        edited.mem = "5GB"
        edited.mem = None
    after = os.stat(path)
    assert (before.st_ino, before.st_mtime_ns) == (after.st_ino, after.st_mtime_ns)
    assert path.read_text() == WATER


def test_edit_of_several_jobs(tmp_path):
    path = tmp_path / "chain.gjf"
    path.write_text(example("formaldehyde_td.gjf"))
    with pytest.raises(ValueError, match="edit_all"):
        with gjf.edit(path):
            pass
    with gjf.edit_all(path) as jobs:
        del jobs[1]
    assert len(gjf.read_all(path)) == 1
