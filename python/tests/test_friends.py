"""ASE, XYZ, pandas; the checker."""
import numpy as np
import pytest

import quor_gjf as gjf
from conftest import SOURCE, WATER

# --- ASE


def test_ase_gets_everything_it_can_hold(job):
    pytest.importorskip("ase")
    job.freeze("H")
    job.pairs = [(1, 2)]
    atoms = job.to_ase()
    assert atoms.get_chemical_symbols() == ["O", "H", "H"] and not atoms.pbc.any()
    np.testing.assert_array_equal(atoms.positions, job.positions)
    assert list(atoms.constraints[0].index) == [1, 2]
    assert atoms.info == {"charge": 1, "multiplicity": 2, "title": "Water"}


def test_ase_round_trip_over_examples(examples):
    pytest.importorskip("ase")
    count = 0
    for path in examples:
        for job in gjf.read_all(path):
            # Coordinates in bohr come back in ångström.
            if job.is_zmatrix or not job.atoms or "Bq" in job.symbols or "units" in str(job.route):
                continue
            back = gjf.from_ase(job.to_ase(), route=str(job.route))
            assert (sorted(back.symbols), back.title, back.pairs) == (sorted(job.symbols), job.title, [(job.charge, job.multiplicity)])
            in_order = sorted(range(len(job.symbols)), key=lambda i: job.symbols[i] == "Tv")
            np.testing.assert_allclose(back.positions, job.positions[in_order], atol=1e-12)
            assert [code == -1 for code in back.freeze_codes] == [job.freeze_codes[i] == -1 for i in in_order]
            count += 1
    assert count >= 18


def test_ase_cells_are_translation_vectors():
    ase = pytest.importorskip("ase")
    atoms = ase.Atoms("CH", positions=[[0, 0, 0], [1, 0, 0]], cell=[2.5, 0, 0], pbc=[True, False, False])
    job = gjf.from_ase(atoms, route="# pbepbe/3-21g")
    assert job.symbols == ["C", "H", "Tv"] and job.positions[2].tolist() == [2.5, 0, 0] and job.title == "CH"
    back = job.to_ase()
    assert list(back.pbc) == [True, False, False] and back.cell.tolist()[0] == [2.5, 0, 0] and len(back) == 2


def test_charge_and_multiplicity_for_ase(job):
    ase = pytest.importorskip("ase")
    atoms = ase.Atoms("OH", positions=np.zeros((2, 3)), charges=[-0.5, -0.5], magmoms=[2, 0])
    assert gjf.from_ase(atoms).pairs == [(-1, 3)]
    assert gjf.from_ase(atoms, charge=0, multiplicity=2, title="T", mem="1GB").mem == "1GB"
    with pytest.raises(TypeError):
        gjf.from_ase(atoms, memory="1GB")


def test_ase_units_are_angstrom():
    pytest.importorskip("ase")
    job = gjf.loads("# hf/sto-3g units=au\n\nT\n\n0 1\nH 0 0 0\nH 0 0 1.4\n\n")
    assert job.to_ase().positions[1][2] == pytest.approx(1.4 * 0.529177210903)
    assert "0.74084" in job.to_xyz()


ZMATRIX = "# hf/sto-3g{}\n\nT\n\n0 1\nX\nO 1 1.0\nH 2 r 1 a\nHC 2 r 1 a 3 180.\n{}\nr={}\na=90.0\n\n"


@pytest.mark.parametrize("units, unit", [("", 1), (" units=au", 0.529177210903), (" units=(au,deg)", 0.529177210903)])
def test_a_zmatrix_goes_to_other_programs(units, unit):
    job = gjf.loads(ZMATRIX.format(units, "", "2.0 0.05"))
    wanted = np.array([[0, 0, 0], [0, 0, 1], [2, 0, 1], [-2, 0, 1]])
    np.testing.assert_allclose(job.positions, wanted, atol=1e-12)
    frame = job.to_frame() if pytest.importorskip("pandas") else None
    assert frame["symbol"].tolist() == ["X", "O", "H", "H"] and frame["element"].tolist() == ["X", "O", "H", "HC"]
    np.testing.assert_allclose(frame["x"], wanted[:, 0], atol=1e-12)
    assert frame["freeze"].isna().all() and frame["mm_charge"].isna().all() and frame["fragment"].tolist() == [None] * 4
    assert job.to_xyz().splitlines()[4].split() == ["H", f"{2 * unit:.8f}", "0.00000000", f"{unit:.8f}"]
    pytest.importorskip("ase")
    atoms = job.to_ase()
    assert atoms.get_chemical_symbols() == ["X", "O", "H", "H"] and not atoms.constraints
    np.testing.assert_allclose(atoms.positions, wanted * unit, atol=1e-12)


def test_the_vectors_of_a_zmatrix_are_the_cell():
    pytest.importorskip("ase")
    atoms = gjf.loads(ZMATRIX.format("", "Tv 2 5.0 1 90. 3 90.\n", "2.0")).to_ase()
    assert len(atoms) == 4 and list(atoms.pbc) == [True, False, False]
    np.testing.assert_allclose(np.abs(atoms.cell[0]), [0, 5, 1], atol=1e-12)


@pytest.mark.parametrize("molecule, reason", [
    ("O\nH 1 r\n\ns=1.0\n", "r has no value"),
    ("O\nH 1 r\n\nr=r\n", "r refers to itself"),
    ("O\nH 2 1.0\n", "atom 2 refers to a row that is not above it"),
    ("O\nC 1 1.0\nO 2 1.0 1 180.\nH 3 1.0 2 90. 1 0.\n", "atom 4 has a dihedral with atoms in one line"),
    ("O 0 0 q\nH 0 0 1.0\n", "q has no value"),
])
def test_atoms_without_a_place_are_told(molecule, reason):
    job = gjf.loads("# hf/sto-3g\n\nT\n\n0 1\n" + molecule + "\n")
    assert np.isnan(job.positions).any() and np.isfinite(job.positions).any()
    with pytest.raises(ValueError, match=reason):
        job.to_xyz()
    pytest.importorskip("ase")
    with pytest.raises(ValueError, match=reason):
        job.to_ase()


def test_ase_reads_what_we_read(tmp_path, examples):
    """An independent reader finds the same atoms in the files that we write."""
    io = pytest.importorskip("ase.io")
    count = 0
    for path in examples:
        job = gjf.read(path)
        # ASE takes the second molecule of a QST job for a part of the first, and has no symbol for ghost atoms.
        other_molecule = job.sections.text("SECOND_TITLE_AND_MOLECULE") is not None
        if job.is_zmatrix or not job.atoms or other_molecule or {"Tv", "Bq", "X"} & set(job.symbols):
            continue
        job.mem = "1GB"
        try:
            job.save(tmp_path / "again.com")
            other = io.read(tmp_path / "again.com", format="gaussian-in")
        except (gjf.WriteError, io.ParseError):
            # ASE refuses labels of molecular mechanics, freeze codes and symbolic coordinates.
            continue
        assert other.get_chemical_symbols() == job.symbols
        np.testing.assert_allclose(other.positions, job.positions, atol=5e-7)
        count += 1
    assert count >= 12


# --- XYZ and pandas


def test_xyz(job):
    assert job.to_xyz().splitlines() == ["3", "Water", "O       0.00000000      0.00000000      0.11730000",
                                         "H       0.00000000      0.75720000     -0.46920000",
                                         "H       0.00000000     -0.75720000     -0.46920000"]


def test_frame(job):
    pandas = pytest.importorskip("pandas")
    job.freeze("O")
    job.set_layer("H", "O")
    job.set_mm(1, type="HW", charge=0.4)
    job.set_fragment(1, [2])
    frame = job.to_frame()
    assert list(frame.columns) == ["element", "symbol", "x", "y", "z", "freeze", "layer", "mm_type", "mm_charge", "fragment"]
    np.testing.assert_array_equal(frame[["x", "y", "z"]].to_numpy(), job.positions)
    assert frame["freeze"].tolist() == [-1, pandas.NA, pandas.NA] and frame["layer"].tolist() == ["H", "L", "L"]
    assert frame["mm_type"].tolist() == [None, "HW", None] and frame["mm_charge"].isna().tolist() == [True, False, True]
    assert frame["fragment"].tolist() == [None, None, "1"] and frame.loc[frame["symbol"] == "H", "y"].sum() == 0
    assert len(gjf.Job().to_frame()) == 0


# --- The checker


def test_fixes_are_told_and_applied(folder):
    text = "\ufeff# hf/sto-3g\n\nt\n\n0 1\nHe 0.0 0.0 0.0\n"
    mark, end = gjf.check(text)
    assert (mark.code, mark.begin, mark.end, [fix.safety for fix in mark.fixes]) == ("GJF-T008", 3, 14, ["safe"])
    assert end.fixes == (("put a blank line behind it", "safe", ((37, 37, "\n"),)),)
    fixed = gjf.fix(text)
    assert fixed.text == text[1:] + "\n" and fixed.findings == [] and fixed.dropped == []
    assert [(each.code, each.line) for each in fixed.applied] == [("GJF-T008", 1), ("GJF-T001", 6)]
    assert gjf.fix(text, ignore=["GJF-T008"]).text == text + "\n"
    (folder / "a.gjf").write_text(text, encoding="utf-8")
    assert gjf.fix("a.gjf") == fixed
    with pytest.raises(gjf.FileError):
        gjf.fix("nowhere.gjf")


def test_check_takes_files_texts_and_jobs(tmp_path, job):
    wrong = WATER.replace("0 1\n", "0 2\n").replace("opt freq", "opt freqq")
    path = tmp_path / "wrong.gjf"
    path.write_text(wrong)
    findings = gjf.check(wrong)
    assert gjf.check(path) == gjf.check(str(path)) == gjf.check(gjf.loads(wrong)) == gjf.check(gjf.loads_all(wrong)) == findings
    assert {finding.line for finding in findings} >= {2, 6} and {"error"} <= {finding.severity for finding in findings}
    for finding in findings:
        assert finding.code in gjf.check_codes() and finding.job == 1 and finding.message and finding.message in str(finding)
    assert gjf.check(job) == []


def test_codes_can_be_ignored():
    wrong = WATER.replace("0 1\n", "0 2\n")
    code, = {finding.code for finding in gjf.check(wrong)}
    assert gjf.check(wrong, ignore=[code.lower()]) == []
    assert gjf.check(wrong, ignore=["GJF-X999"]) != []


def test_examples_are_clean():
    for path in sorted((SOURCE / "examples/jobs").glob("*.gjf")):
        assert [finding for finding in gjf.check(path) if finding.severity == "error"] == []
