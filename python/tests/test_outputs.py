"""Outputs: what happened, and geometries as arrays."""
import gzip
import json
import lzma

import numpy as np
import pytest

import quor_gjf as gjf

HEAD = (" Entering Link 1 = /g16/l1.exe PID= 1.\n Gaussian 16:  ES64L-G16RevC.01  3-Jul-2019\n %chk=a.chk\n"
        " -----\n # opt hf/sto-3g\n -----\n Charge = -1 Multiplicity = 2\n")
POINT = (" Input orientation:\n -----------\n Center\n Number\n -----------\n 1 8 0 0.0 0.0 0.{}\n 2 -1 0 0.0 0.0 1.0\n -----------\n"
         " SCF Done:  E(RHF) =  -75.{}     A.U. after    8 cycles\n Step number {} out of a maximum of 20\n")
STOPPED = HEAD + POINT.format(1, 5, 1) + POINT.format(2, 75, 2) + POINT.format(3, 6, 3)
DIED = STOPPED + " Convergence failure -- run terminated.\n Error termination via Lnk1e in /g16/l502.exe at\n"
CHECKPOINT = ("title\nFOpt      RHF                           STO-3G\n" + "Charge".ljust(43) + "I                0\n" +
              "Multiplicity".ljust(43) + "I                1\n" + "Atomic numbers".ljust(43) + "I   N=           1\n           8\n" +
              "Current cartesian coordinates".ljust(43) + "R   N=           3\n  0.00000000E+00  1.88972612E+00  1.00000000-101\n")


@pytest.fixture
def folder(tmp_path):
    (tmp_path / "died.log").write_text(DIED)
    (tmp_path / "died.log.gz").write_bytes(gzip.compress(DIED.encode()))
    (tmp_path / "died.log.xz").write_bytes(lzma.compress(DIED.encode()))
    (tmp_path / "opt.fchk").write_text(CHECKPOINT)
    (tmp_path / "notes.txt").write_text("nothing\n")
    (tmp_path / "cut.log.gz").write_bytes(gzip.compress(DIED.encode())[:40])
    return tmp_path


@pytest.mark.parametrize("name", ["died.log", "died.log.gz", "died.log.xz"])
def test_tells_what_happened(folder, name):
    output = gjf.Output(folder / name)
    assert (output.termination, output.cause, output.route) == ("error", "scf_502", "# opt hf/sto-3g")
    assert (output.charge, output.multiplicity) == (-1, 2)
    assert output.summary["link"] == 502
    assert [finding["code"] for finding in output.summary["findings"]] == ["GJF-O001"]
    assert gjf.Output(str(folder / name)).summary == output.summary


def test_gives_geometries_as_arrays(folder):
    output = gjf.Output(folder / "died.log")
    assert output.best.step == 2 and output.best.energy == -75.75 and output.best.energy_kind == "scf"
    assert output.last.step == 3 and output.last.energy is None
    assert output.last.positions.shape == (2, 3) and output.last.positions.dtype == np.float64
    assert output.last.numbers.tolist() == [8, -1]
    assert output.last.positions[0].tolist() == [0.0, 0.0, 0.3]


def test_walks_over_the_points(folder):
    output = gjf.Output(folder / "died.log")
    for _ in range(2):
        assert [point.step for point in output] == [1, 2, 3]
    assert [point.energy for point in output] == [-75.5, -75.75, None]
    assert "step=1, energy -75.50000000, 2 atoms" in repr(next(iter(output)))


def test_reads_formatted_checkpoints(folder):
    output = gjf.Output(folder / "opt.fchk")
    assert output.summary["formatted_checkpoint"]["basis"] == "STO-3G"
    assert np.allclose(output.last.positions, [[0, 1, 0]], atol=1e-8)
    assert output.energy is None and output.best is None


def test_gives_atoms_of_ase(folder):
    ase = pytest.importorskip("ase")
    atoms = gjf.Output(folder / "died.log").to_ase(best=True)
    assert isinstance(atoms, ase.Atoms) and atoms.get_chemical_formula() == "O"
    assert atoms.info == {"charge": -1, "multiplicity": 2}
    with pytest.raises(ValueError, match="no geometry"):
        gjf.Output(folder / "opt.fchk").to_ase(best=True)


@pytest.mark.parametrize("name, error, message", [
    ("missing.log", gjf.MissingFileError, "Cannot open file: No such file or directory"),
    (".", gjf.FileError, "Cannot open file: Is a directory"),
    ("notes.txt", gjf.FileError, "no output of Gaussian"),
])
def test_refuses_what_is_no_output(folder, name, error, message):
    with pytest.raises(error, match=message) as caught:
        gjf.Output(folder / name)
    assert caught.value.filename == str(folder / name)
    assert gjf.diagnose(folder / name) == [{"version": 1, "file": str(folder / name), "error": message}]


def test_a_cut_off_file_is_refused_or_read_so_far(folder):
    answer, = gjf.diagnose([folder / "cut.log.gz"])
    assert "error" in answer or answer["termination"] == "unfinished"


def test_diagnoses_many(folder):
    names = [folder / "died.log", str(folder / "missing.log"), folder / "opt.fchk"]
    for threads in (None, 1, 3):
        answers = gjf.diagnose(names, threads=threads)
        assert [answer["file"] for answer in answers] == [str(name) for name in names]
        assert [answer.get("cause") for answer in answers] == ["scf_502", None, None]
    with pytest.raises(ValueError):
        gjf.diagnose(names, threads=0)
    assert gjf.diagnose([]) == []


def test_a_request_reads_a_text_alone(folder):
    answer = gjf.request("diagnose", DIED, steps=True)
    assert answer["cause"] == "scf_502" and [step["step"] for step in answer["steps"]] == [1, 2, 3]
    assert json.dumps(gjf.request("diagnose", DIED)).find("steps\": [") == -1
    with pytest.raises(RuntimeError, match="no output of Gaussian"):
        gjf.request("diagnose", "nothing")
    with pytest.raises(ValueError):
        gjf.request("diagnose", DIED, details=True)
