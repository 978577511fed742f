"""Writing: what did not change keeps its bytes, what is refused, and that a refusal touches no file."""
import difflib
import os
import pathlib
import pickle

import numpy as np
import pytest

import quor_gjf as gjf
from conftest import SOURCE, WATER

WIDE = WATER.replace("-0.7572", "-110.7572000001")
ODD = """\
! prepared by hand\r
  %Mem = 2GB   ! of eight\r
%SubSt l502 here\r
#P  B3LYP/6-31G(d)\tOpt=(TS, CalcFC)   ! a saddle\r
   Freq\r
\r
 Two lines of\r
   title  \r
\r
 0,1\r
 O1  , 0.00000000   0.0   1.173E-1   ! the centre\r
H(Iso=2)   0   .0000  +0.7572000  -0.4692\r
 H\t0\t0.\t-0.7572\t-0.4692\r
\r
"""
CHAIN = """\
%chk=a.chk
# hf/sto-3g opt   ! first

One

0 1
H  0.00 0 0
H  0.00 0 0.740

   --LINK1--
%chk=a.chk
# hf/sto-3g Geom=AllCheck   ! second


--link1--
%chk=b.chk
#P  HF/STO-3G   ! third

Three

0 1
H
H 1 r   ! the bond

r  0.7400

"""


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
    (lambda job: job.freeze("H"), "H -1 0.0000  0.7572 -0.4692\n"),
    (lambda job: job.translate((0, 0, 1)), "O  0.0000  0.0000 1.117300\n"),
    (lambda job: job.sections.append("last"), "\n\nlast\n\n"),
    (lambda job: job.bonds.__setitem__((1, 2), 0.5), "\n1 2 1.0 3 1.0\n2 3 0.5\n3\n"),
    (lambda job: job.bonds.__setitem__((0, 1), 1.25), "\n1 2 1.25 3 1.0\n2\n3\n"),
]


@pytest.mark.parametrize("change, expected", CHANGES)
def test_a_change_is_written_and_read_back(job, change, expected, tmp_path):
    change(job)
    assert expected in str(job)
    job.save(tmp_path / "out.gjf")
    assert (tmp_path / "out.gjf").read_text() == str(job)
    assert gjf.read(tmp_path / "out.gjf").fixed_layout() == job.fixed_layout()


def changed_lines(old, new):
    """The lines taken out and put in, as they stand."""
    lines = difflib.ndiff(old.splitlines(keepends=True), new.splitlines(keepends=True))
    return [line[0] + line[2:] for line in lines if line[0] in "+-"]


LOCAL_CHANGES = [
    (lambda job: setattr(job, "mem", "16GB"), ["-  %Mem = 2GB   ! of eight\r\n", "+  %Mem = 16GB   ! of eight\r\n"]),
    (lambda job: job.route.keywords.set_option("opt", "noeigentest"),
     ["-#P  B3LYP/6-31G(d)\tOpt=(TS, CalcFC)   ! a saddle\r\n", "+#P  B3LYP/6-31G(d)\tOpt=(TS,CalcFC,noeigentest)   ! a saddle\r\n"]),
    (lambda job: setattr(job.route, "basis", "def2tzvp"),
     ["-#P  B3LYP/6-31G(d)\tOpt=(TS, CalcFC)   ! a saddle\r\n", "+#P  B3LYP/def2tzvp\tOpt=(TS, CalcFC)   ! a saddle\r\n"]),
    (lambda job: job.route.keywords.__delitem__("freq"), ["-   Freq\r\n"]),
    (lambda job: setattr(job, "charge", 1), ["- 0,1\r\n", "+ 1,1\r\n"]),
    (lambda job: setattr(job.atoms[0], "freeze", -1),
     ["- O1  , 0.00000000   0.0   1.173E-1   ! the centre\r\n", "+ O1 -1  , 0.00000000   0.0   1.173E-1   ! the centre\r\n"]),
    (lambda job: job.remove_atoms([2]), ["- H\t0\t0.\t-0.7572\t-0.4692\r\n"]),
    (lambda job: job.remove_atoms([0, 2]),
     ["- O1  , 0.00000000   0.0   1.173E-1   ! the centre\r\n", "- H\t0\t0.\t-0.7572\t-0.4692\r\n"]),
]


@pytest.mark.parametrize("change, expected", LOCAL_CHANGES)
def test_a_change_moves_nothing_else(change, expected):
    job = gjf.loads(ODD)
    change(job)
    assert changed_lines(ODD, str(job)) == expected
    again = pickle.loads(pickle.dumps(job))
    assert (str(again), str(job.copy()), str(gjf.Jobs([job]))) == (str(job),) * 3


@pytest.mark.parametrize("name", ["peroxide_zmatrix.gjf", "butane_scan_zmatrix.gjf"])
def test_z_matrices_are_written_as_they_stand(name, tmp_path):
    path = tmp_path / name
    path.write_text(example(name))
    job = gjf.read(path)
    assert job.is_zmatrix
    job.mem = "123MB"
    job.save()
    lines = changed_lines(example(name), path.read_text())
    assert "+%mem=123MB\n" in lines and all("mem" in line.lower() for line in lines)


def test_link_atoms_and_wide_coordinates_are_written_as_they_stand():
    oniom = "#p oniom(hf/sto-3g:amber)\n\nT\n\n0 1 0 1 0 1\nC 0 0 0 0 H\nC 0 0 0 1.5 L H-H1 1 0.7\n\n"
    for text in (oniom, WIDE):
        job = gjf.loads(text)
        job.mem = "1GB"
        assert changed_lines(text, str(job)) == ["+%mem=1GB\n"]


def test_sections_follow_the_atoms():
    text = WATER.replace("opt freq", "opt=modredundant").rstrip("\n") + "\n\n! the angle\nA 2 1 3 F   ! fixed\n\n"
    job = gjf.loads(text)
    job.move_to_end("O")
    assert "\n\n1\n2\n3 1 1.0 2 1.0\n\n! the angle\nA 1 3 2 F   ! fixed\n\n" in str(job)


def test_numbered_atoms_that_cannot_follow_need_force(tmp_path):
    text = "# hf/sto-3g opt=(ts,modredundant)\n\nT\n\n0 1\nO 0 0 0\nH 0 0 1\nH 0 1 0\n\nq = (2 - 1)/R(1,3)\n\n"
    path = tmp_path / "t.gjf"
    path.write_text(text)
    job = gjf.read(path)
    job.remove_atoms([1])
    for write in (lambda: str(job), job.to_text, job.save, lambda: gjf.Jobs([job]).to_text()):
        with pytest.raises(gjf.WriteError, match="cannot follow the change of atoms"):
            write()
    assert path.read_text() == text
    expected = text.replace("H 0 0 1\n", "")
    assert job.to_text(force=True) == gjf.Jobs([job]).to_text(force=True) == expected
    job.save(force=True)
    assert path.read_text() == expected


def checkpoint_job():
    return gjf.loads("#p hf/sto-3g geom=allcheck   ! all of it\n\n")


def title_of(job, title):
    job.title = title
    return job


def edited(job, edit):
    edit(job)
    return job


REFUSED = {
    "without loss: its text would not read back": lambda: gjf.Job("# hf/sto-3g", "blank\n\nline", atoms=[("He", (0, 0, 0))]),
    "cannot carry its route": lambda: edited(gjf.Job("# hf/sto-3g", "T", atoms=[("He", (0, 0, 0))]),
                                             lambda job: job.route.append_word("opt ! not read again")),
    "cannot carry its Link 0 lines": lambda: gjf.Job("# hf", "T", mem="1GB\n%nproc=3", atoms=[("He", (0, 0, 0))]),
    "cannot carry its extra input sections": lambda: edited(gjf.Job("# hf", "T", atoms=[("He", (0, 0, 0))]),
                                                            lambda job: job.sections.append("two\n\nblocks")),
    "cannot carry its extra": lambda: gjf.Job("# hf geom=connectivity", "T", atoms=[("H", (0, 0, i)) for i in (0, 1)], bonds=[(0, 1, 1.25)]),
    "too wide for their columns": lambda: edited(gjf.Job("# hf", "T", atoms=[gjf.loads(WIDE).atoms[2].copy()]), lambda job: None),
    "The title of this job comes from its checkpoint": lambda: title_of(checkpoint_job(), "Lost"),
    "come from its checkpoint": lambda: edited(checkpoint_job(), lambda job: setattr(job, "multiplicity", 2)),
    "The changed text cannot be read: ": lambda: title_of(gjf.loads(WATER), "blank\n\nline"),
    "'Connectivity specifications', which would be read as": lambda: edited(gjf.loads(WATER), lambda job: setattr(job, "route", "# hf")),
    "meant: the section": lambda: edited(gjf.loads(WATER), lambda job: job.sections.append("two\n\nblocks")),
    "meant: the Link 0 lines": lambda: edited(gjf.loads(WATER), lambda job: setattr(job, "mem", "1GB\n%nproc=3")),
    "is a variable": lambda: edited(gjf.loads(example("benzene_symbolic.gjf")), lambda job: setattr(job, "positions", job.positions)),
}


@pytest.mark.parametrize("message", REFUSED)
def test_what_cannot_be_written_is_refused(message, tmp_path):
    job = REFUSED[message]()
    target = tmp_path / "old.gjf"
    target.write_text("old")
    for write in (lambda: str(job), lambda: job.save(target), lambda: gjf.Jobs([job, job]).save(target), lambda: str(gjf.Jobs([job]))):
        with pytest.raises(gjf.WriteError, match=message):
            write()
    assert target.read_text() == "old" and os.listdir(tmp_path) == ["old.gjf"]


def test_force_lays_out_anew_what_the_text_cannot_take():
    text = example("benzene_symbolic.gjf")
    job = gjf.loads(text)
    before = job.positions
    job.positions = before + 1.0
    assert job.variables == {}
    written = job.to_text(force=True)
    assert "rc" not in written and written == job.fixed_layout()
    np.testing.assert_allclose(gjf.loads(written).positions, before + 1.0, atol=5e-7)
    lost = title_of(checkpoint_job(), "Lost")
    with pytest.raises(gjf.WriteError, match="cannot carry its title"):
        lost.to_text(force=True)


def test_force_keeps_the_other_jobs(tmp_path):
    path = tmp_path / "two.gjf"
    path.write_text(CHAIN.replace("H  0.00 0 0.740", "H  0.00 0 r\n\nr 0.740"))
    first = gjf.read(path)
    first.positions = [[0, 0, 0], [0, 0, 1]]
    with pytest.raises(gjf.WriteError, match="Job 1: .*is a variable"):
        first.save()
    before = gjf.read_all(path)
    first.save(force=True)
    after = gjf.read_all(path)
    assert after[0] == first and after[1:] == before[1:] and after[0].variables == {}
    for line in ("# hf/sto-3g Geom=AllCheck   ! second\n", "H 1 r   ! the bond\n"):
        assert line in path.read_text()


def test_numeric_coordinates_make_wide_ones_fit():
    wide = gjf.Job("# hf", "T", atoms=[gjf.loads(WIDE).atoms[2].copy()])
    assert wide.touching_coordinates == [0]
    wide.use_numeric_coordinates()
    assert wide.touching_coordinates == []
    np.testing.assert_allclose(gjf.loads(str(wide)).positions, gjf.loads(WIDE).positions[2:], atol=5e-7)


# --- Files of several jobs


def test_editing_one_job_of_a_file_keeps_the_others(tmp_path):
    path = tmp_path / "chain.gjf"
    path.write_text(CHAIN)
    jobs = gjf.read_all(path)
    assert str(jobs) == CHAIN
    jobs[2].mem = "2GB"
    jobs.save()
    assert changed_lines(CHAIN, path.read_text()) == ["+%mem=2GB\n"]
    jobs[0].title = "First"
    jobs.save()
    assert changed_lines(CHAIN, path.read_text()) == ["-One\n", "+First\n", "+%mem=2GB\n"]
    assert gjf.read_all(path) == jobs == gjf.loads_all(str(jobs))


def test_a_job_of_several_is_saved_into_its_file(tmp_path):
    path = tmp_path / "chain.gjf"
    path.write_text(CHAIN)
    link = tmp_path / "link.gjf"
    link.symlink_to(path)
    first = gjf.read(path)
    first.title = "First"
    first.save()
    assert changed_lines(CHAIN, path.read_text()) == ["-One\n", "+First\n"]
    first.title = "One"
    first.save(link)
    assert path.read_text() == CHAIN and link.is_symlink()
    first.save(tmp_path / "first.gjf")
    assert (tmp_path / "first.gjf").read_text() == str(first) == CHAIN[:CHAIN.index("   --LINK1--")]
    last = gjf.read_all(path)[2]
    last.mem = "9GB"
    last.save()
    assert changed_lines(CHAIN, path.read_text()) == ["+%mem=9GB\n"]


def test_jobs_read_together_are_saved_together(tmp_path):
    path = tmp_path / "chain.gjf"
    path.write_text(CHAIN)
    jobs = gjf.read_all(path)
    for job in jobs:
        job.mem = "1GB"
    jobs[0].save()
    after = path.read_text()
    with pytest.raises(gjf.WriteError, match="File has changed since it was opened: .*together"):
        jobs[1].save()
    assert path.read_text() == after
    jobs.save()
    assert [job.mem for job in gjf.read_all(path)] == ["1GB"] * 3


def test_jobs_that_cannot_be_read_stay_as_they_are(tmp_path):
    path = tmp_path / "broken.gjf"
    whole = WATER + "--Link1--\n# hf\n\nno more\n"
    path.write_text(whole)
    first = gjf.read(path)
    for mem in ("2GB", "1GB"):
        first.mem = mem
        first.save()
        assert changed_lines(whole, path.read_text()) == [f"+%mem={mem}\n"]
    first.save(tmp_path / "first.gjf")
    assert changed_lines(WATER, (tmp_path / "first.gjf").read_text()) == ["+%mem=1GB\n"]


def test_jobs_come_and_go(job):
    jobs = gjf.loads_all(CHAIN)
    del jobs[1]
    assert str(jobs) == CHAIN.replace(CHAIN[CHAIN.index("%chk=a.chk\n# hf/sto-3g Geom"):CHAIN.index("%chk=b")], "")
    new = gjf.Job("# hf/sto-3g", "New", atoms=[("He", (0, 0, 0))])
    jobs.insert(1, new)
    text = str(jobs)
    assert gjf.loads_all(text) == jobs and all(line[0] == "+" for line in changed_lines(str(gjf.Jobs([jobs[0], jobs[2]])), text))
    foreign = gjf.loads(ODD)
    mixed = gjf.Jobs([foreign, jobs[2], jobs[0], foreign, job])
    assert gjf.loads_all(str(mixed)) == mixed
    for part in (ODD, CHAIN[CHAIN.index("%chk=b"):], CHAIN[:CHAIN.index("   --LINK1--")], WATER):
        assert part in str(mixed)


def test_many_jobs_of_one_file_are_written_in_linear_time(tmp_path):
    text = CHAIN[:CHAIN.index("   --LINK1--")] + "--Link1--\n"
    jobs = gjf.loads_all(text * 1000)
    for job in jobs:
        job.mem = "1GB"
    assert sum(len(str(job)) for job in jobs) == 1000 * len(str(jobs[0]))
    state = pickle.dumps(jobs)
    assert len(state) < 1000 * 3000
    assert str(pickle.loads(state)[999]) == str(jobs[999])


# --- Files that changed meanwhile


@pytest.mark.parametrize("read", [gjf.read, gjf.read_all])
def test_a_file_that_changed_meanwhile_is_not_overwritten(read, tmp_path):
    path = tmp_path / "w.gjf"
    path.write_text(WATER)
    mine = read(path)
    job = mine[0] if isinstance(mine, gjf.Jobs) else mine
    job.mem = "1GB"
    path.write_text(WATER + "\n")
    for save in (mine.save, lambda: mine.save(path), job.save):
        with pytest.raises(gjf.WriteError, match="File has changed since it was opened: "):
            save()
    assert path.read_text() == WATER + "\n"
    mine.save(tmp_path / "else.gjf")
    mine.save(force=True)
    assert path.read_text() == (tmp_path / "else.gjf").read_text() == str(mine)
    job.mem = None
    mine.save()
    assert path.read_text() == WATER
    path.unlink()
    with pytest.raises(gjf.WriteError, match="File has changed"):
        mine.save()
    mine.save(force=True)
    assert path.read_text() == WATER


def test_after_a_save_the_job_says_what_the_file_says(tmp_path):
    path = tmp_path / "w.gjf"
    path.write_text(WATER.replace("opt freq", "opt=modredundant").rstrip("\n") + "\n\nB 2 3 F\n\n")
    job = gjf.read(path)
    job.move_to_end("O")
    job.positions = positions = job.positions + 1 / 3
    job.save()
    np.testing.assert_array_equal(job.positions, positions)
    assert job.sections.text("COORDINATE_MODIFICATIONS") == "B 1 2 F"
    first = path.read_text()
    assert str(job) == first
    job.move_to_beginning("O")
    job.save()
    assert "B 2 3 F" in path.read_text()
    job.move_to_end("O")
    job.save()
    assert path.read_text() == first


def test_saves_without_a_change_do_not_touch_the_file(tmp_path):
    path = tmp_path / "chain.gjf"
    path.write_text(CHAIN)
    before = os.stat(path)
    gjf.read_all(path).save()
    gjf.read(path).save()
    after = os.stat(path)
    assert (before.st_ino, before.st_mtime_ns) == (after.st_ino, after.st_mtime_ns)


def test_a_text_becomes_a_file(tmp_path, job):
    job.mem = "1GB"
    job.save(tmp_path / "w.gjf")
    job.mem = "2GB"
    job.save()
    assert (tmp_path / "w.gjf").read_text() == str(job)
    (tmp_path / "w.gjf").write_text("else")
    with pytest.raises(gjf.WriteError, match="has changed"):
        job.save()


def test_jobs_are_written_together(tmp_path, job):
    other = job.copy()
    other.title = "Other"
    jobs = gjf.Jobs([job, other])
    assert str(jobs) == WATER + "--Link1--\n" + WATER.replace("Water", "Other")
    jobs.append(gjf.Job("# hf", "New", atoms=[("He", (0, 0, 0))]))
    assert str(jobs).startswith(WATER + "--Link1--\n") and str(jobs).endswith("0.000000       \n\n\n")
    jobs.pop()
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


def test_edit_takes_saves_in_between(tmp_path):
    path = tmp_path / "w.gjf"
    path.write_text(WATER)
    with gjf.edit(path) as edited:
        edited.mem = "1GB"
        edited.save()
        edited.mem = "2GB"
    assert changed_lines(WATER, path.read_text())[0] == "+%mem=2GB\n"
    with pytest.raises(gjf.WriteError, match="has changed"):
        with gjf.edit(path) as edited:
            edited.mem = "3GB"
            path.write_text(WATER)
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
