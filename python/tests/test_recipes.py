"""Runs every recipe of docs/python.md as it stands there, and looks at what it did."""
import csv
import re
import subprocess
import sys

import numpy as np
import pytest

import quor_gjf as gjf
from conftest import SOURCE

PEROXIDE = """\
#p hf/6-31g(d) opt

Hydrogen peroxide

0 1
O  0.00  0.70  0.00
O  0.00 -0.70  0.00
H  0.90  0.90  0.30
H -0.90 -0.90  0.30

"""


def recipes():
    text = (SOURCE / "docs/python.md").read_text(encoding="utf-8")
    parts = re.split(r"^### (\d+)\. .*$", text, flags=re.MULTILINE)[1:]
    return {int(number): re.search(r"```python\n(.*?)```", body, re.DOTALL)[1] for number, body in zip(parts[::2], parts[1::2])}


RECIPES = recipes()


@pytest.fixture
def run(tmp_path):
    """Runs a recipe in the test's folder; returns its result."""
    def run_recipe(number, expected_code=0):
        result = subprocess.run([sys.executable, "-c", RECIPES[number]], cwd=tmp_path, capture_output=True, text=True, check=False)
        assert result.returncode == expected_code, result.stderr
        return result.stdout
    return run_recipe


def example(name):
    return (SOURCE / "examples/jobs" / name).read_text(encoding="utf-8")


def test_there_are_ten():
    assert sorted(RECIPES) == list(range(1, 11))


def test_1_freezes_all_but_a_region(run, tmp_path):
    atoms = [("He", (float(x), 0.0, 0.0)) for x in (0, 1, 2.9, 3.1, 8, 9)]
    gjf.Job("# hf/sto-3g", "Row", atoms=atoms).save(tmp_path / "cluster.gjf")
    assert run(1) == "frozen: 4-6\n"
    assert gjf.read(tmp_path / "cluster_frozen.gjf").freeze_codes == [0, 0, 0, -1, -1, -1]


def test_2_sets_layers_from_residues(run, tmp_path):
    atoms = [gjf.Atom("C", (float(i), 0, 0), params={"ResName": name, "ResNum": number, "PDBName": "CA"})
             for i, (name, number) in enumerate([("HIS", "57"), ("HIS", "58"), ("SER", "195"), ("GLY", "57")])]
    gjf.Job("# amber", "Residues", atoms=atoms).save(tmp_path / "protein.gjf")
    (tmp_path / "residues.txt").write_text("HIS57\nSER195\n")
    run(2)
    assert gjf.read(tmp_path / "protein_oniom.gjf").layers == ["H", "L", "H", "L"]


def test_3_changes_the_method_in_many_files(run, tmp_path):
    folder = tmp_path / "jobs"
    folder.mkdir()
    for number in range(40):
        (folder / f"job{number:03}.gjf").write_text(PEROXIDE.replace("Hydrogen", f"No {number}: hydrogen"))
    (folder / "broken.gjf").write_text("#p hf opt\n\nNothing more\n")
    (folder / "zmatrix.gjf").write_text(example("peroxide_zmatrix.gjf"))
    (folder / "several.gjf").write_text(example("formaldehyde_td.gjf"))
    assert run(3) == "42 changed; 1 left as they are\n"
    for number in range(40):
        changed = gjf.read(folder / f"job{number:03}.gjf")
        assert (str(changed.route), changed.title) == ("#p wb97xd/def2tzvp opt", f"No {number}: hydrogen peroxide")
    assert [job.route.method for job in gjf.read_all(folder / "several.gjf")] == ["wb97xd", "wb97xd"]
    zmatrix = (folder / "zmatrix.gjf").read_text().splitlines()
    before = example("peroxide_zmatrix.gjf").splitlines()
    assert len(zmatrix) == len(before)
    assert [new for old, new in zip(before, zmatrix) if old != new] == [line for line in zmatrix if line.startswith("#")]


def test_4_sets_up_a_scan(run, tmp_path):
    (tmp_path / "peroxide.gjf").write_text(PEROXIDE)
    run(4)
    scan = gjf.read(tmp_path / "scan.gjf")
    assert "modredundant" in scan.route.keywords["opt"].options
    assert [(section.kind, section.text) for section in scan.sections] == [(gjf.SectionKind.COORDINATE_MODIFICATIONS,
                                                                            "D 3 1 2 4 S 36 10.0")]


def test_5_restarts_from_a_checkpoint(run, tmp_path):
    (tmp_path / "ts.gjf").write_text("%chk=ts.chk\n%mem=2GB\n" + PEROXIDE.replace("opt", "opt=(ts,calcfc) freq"))
    run(5)
    again = gjf.read(tmp_path / "again.gjf")
    assert (again.oldchk, again.chk, again.mem, again.nproc) == ("ts.chk", "again.chk", "2GB", None)
    assert (again.title, len(again.atoms), again.pairs) == ("", 0, [])
    assert {"geom", "guess", "opt", "freq"} == set(again.route.keywords)
    assert set(again.route.keywords["opt"].options) == {"ts", "readfc"}


def test_6_goes_to_ase_and_back(run, tmp_path):
    pytest.importorskip("ase")
    (tmp_path / "molecule.gjf").write_text("%mem=3GB\n" + PEROXIDE.replace("0 1\n", "1 2\n"))
    run(6)
    before, after = gjf.read(tmp_path / "molecule.gjf"), gjf.read(tmp_path / "rattled.gjf")
    assert (after.symbols, after.pairs, after.title, after.mem) == (before.symbols, before.pairs, before.title, "3GB")
    shift = (after.positions - before.positions).mean(axis=0)
    moved = np.abs(after.positions - before.positions - shift)
    assert 0 < moved.max() < 0.3


def test_7_splits_a_file(run, tmp_path):
    (tmp_path / "chain.gjf").write_text(example("chained_restart.gjf"))
    run(7)
    whole = gjf.read_all(tmp_path / "chain.gjf")
    assert len(whole) == 3
    assert [gjf.read(tmp_path / f"chain_{number}.gjf") for number in (1, 2, 3)] == whole
    assert all((tmp_path / f"chain_{number}.gjf").read_text() in example("chained_restart.gjf") for number in (1, 2, 3))


def test_8_lints(run, tmp_path):
    folder = tmp_path / "submit"
    folder.mkdir()
    (folder / "good.gjf").write_text(PEROXIDE)
    assert run(8) == ""
    (folder / "odd.gjf").write_text(PEROXIDE.replace("0 1", "0 2"))
    out = run(8, expected_code=1)
    assert out.startswith("submit/odd.gjf:5:") and "error" in out and len(out.splitlines()) == 1


def test_9_makes_a_table_of_routes(run, tmp_path):
    pytest.importorskip("pandas")
    folder = tmp_path / "project" / "part"
    folder.mkdir(parents=True)
    (folder / "a.gjf").write_text(PEROXIDE)
    (folder / "b.gjf").write_text("no job")
    (folder / "c.gjf").write_text(example("formaldehyde_td.gjf"))
    run(9)
    with open(tmp_path / "routes.csv", newline="") as file:
        rows = list(csv.DictReader(file))
    assert [row["file"].rsplit("/", 1)[1] + row["job"] for row in rows] == ["a.gjf1", "c.gjf1", "c.gjf2"]
    assert (rows[0]["method"], rows[0]["basis"], rows[0]["keywords"], rows[0]["atoms"]) == ("hf", "6-31g(d)", "opt", "4")


def test_10_builds_a_job_from_nothing(run, tmp_path):
    run(10)
    job = gjf.read(tmp_path / "ethene.gjf")
    assert str(job.route) == "#p b3lyp/6-31g(d) opt freq=noraman geom=connectivity"
    assert (job.elements, job.chk, job.mem, job.nproc) == ({"C": 2, "H": 4}, "ethene.chk", "4GB", 4)
    assert sorted(job.bonds) == [(0, 1, 2.0), (0, 2, 1.0), (0, 3, 1.0), (1, 4, 1.0), (1, 5, 1.0)]
