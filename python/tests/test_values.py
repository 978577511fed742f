"""Jobs as values: copies, pickles, equality, reprs; selections."""
import copy
import pickle

import numpy as np
import pytest

import quor_gjf as gjf
from conftest import WATER

CHANGES = {
    "Link 0 lines": lambda job: setattr(job, "nproc", 3),
    "route": lambda job: job.route.append_word("pop=full"),
    "overlay input": lambda job: setattr(job, "overlays", "1/2/3"),
    "title": lambda job: setattr(job, "title", "Else"),
    "charge and multiplicity": lambda job: setattr(job, "multiplicity", 3),
    "atoms": lambda job: setattr(job.atoms[2], "freeze", 0),
    "extra input sections": lambda job: job.bonds.clear(),
}


@pytest.mark.parametrize("part", CHANGES)
@pytest.mark.parametrize("copied", [copy.copy, copy.deepcopy, gjf.Job.copy, lambda job: pickle.loads(pickle.dumps(job))])
def test_copies_are_equal_and_independent(job, part, copied):
    other = copied(job)
    assert other == job and not other != job and other.difference(job) is None
    CHANGES[part](other)
    assert other != job and job.difference(other) == part
    assert str(job) == WATER


@pytest.mark.parametrize("protocol", range(2, pickle.HIGHEST_PROTOCOL + 1))
def test_pickles_hold_everything(examples, protocol):
    for path in examples:
        jobs = gjf.read_all(path)
        again = pickle.loads(pickle.dumps(jobs, protocol))
        assert again == jobs and again.path == jobs.path and type(again) is gjf.Jobs
        for a, b in zip(again, jobs):
            assert (a.report(), str(a), a.is_as_read, a.path) == (b.report(), str(b), True, b.path)


def test_pickles_of_other_versions_are_refused(job):
    native = job._native
    state = native.__getstate__()
    with pytest.raises(ValueError, match="another version"):
        type(native).__new__(type(native)).__setstate__((99, *state[1:]))


def test_errors_can_be_pickled():
    for load in (lambda: gjf.loads("#"), lambda: gjf.read("/no/such.gjf")):
        with pytest.raises(gjf.ParseError) as caught:
            load()
        again = pickle.loads(pickle.dumps(caught.value))
        assert (type(again), str(again)) == (type(caught.value), str(caught.value))


def test_equality_minds_meaning_and_not_spelling(job):
    spaced = WATER.replace("0.0000", "0.00").replace("O  ", "O     ").replace("\n\n", "\n\n", 1)
    assert gjf.loads(spaced) == job
    assert gjf.loads(WATER.replace("0.1173", "0.1174")) != job
    assert job != WATER and job != None  # noqa: E711
    with pytest.raises(TypeError):
        hash(job)


def test_reprs(job):
    assert repr(job) == "<Job 'Water', #p b3lyp/6-31g(d) opt freq geom=connectivity, 3 atoms, charge 0, multiplicity 1>"
    assert repr(job.atoms[0]) == "Atom('O', (0.0, 0.0, 0.1173))"
    assert eval(repr(job.atoms[1]), {"Atom": gjf.Atom}) == job.atoms[1]
    assert repr(job.atoms) == "<3 atoms>" and repr(job.bonds) == "<2 bonds>"
    assert repr(job.sections) == "<Sections CONNECTIVITY>"
    assert repr(job.route.keywords["opt"]) == "<Keyword opt>"
    assert len(repr(gjf.Job(title="x" * 500))) < 120


def test_atoms_are_values_or_windows(job):
    window, value = job.atoms[1], job.atoms[1].copy()
    job.atoms[1].freeze = -1
    assert (window.freeze, value.freeze) == (-1, None)
    del job.atoms[0]
    assert window.element == "H" and window.freeze is None
    del job.atoms[:]
    with pytest.raises(IndexError):
        window.element
    for again in (copy.copy(value), copy.deepcopy(value), pickle.loads(pickle.dumps(value))):
        assert again == value and again.index is None


SELECTIONS = [
    (None, [0, 1, 2]), (0, [0]), (-1, [2]), (np.int64(1), [1]), (slice(1, None), [1, 2]), ([2, 0], [2, 0]), ((1,), [1]), (range(2), [0, 1]),
    ([], []), (np.array([], dtype=int), []), (np.array([2, -3]), [2, 0]), ([True, False, True], [0, 2]), (np.zeros(3, bool), []), ("H", [1, 2]),
    ("He", []), (["O", "H"], [0, 1, 2]), ({"O"}, [0]), ("1-2", [0, 1]), ("3,1", [0, 2]), ("not H", [0]), (["3", "O"], [0, 2]),
    ("within 1 of 1 and H", [1, 2]), ("bonded to 2", [0]), ("type:OW", []), (lambda atom: atom.symbol == "H" and atom.position[1] > 0, [1]), (lambda atom: False, []),
]
WRONG_SELECTIONS = [
    (3, IndexError), (-4, IndexError), ([0, 3], IndexError), ([True, False], IndexError), (np.ones(4, bool), IndexError), (1.0, TypeError),
    ([0.0], TypeError), (True, TypeError), (object(), TypeError), (np.zeros((2, 2), int), TypeError), ([None], TypeError),
    (lambda atom: 1 / 0, ZeroDivisionError), ("Fee", ValueError), ("", ValueError), ("4", ValueError), ("0", ValueError), ("1-9", ValueError),
    ("H or", ValueError), ("within 2 of", ValueError), (["H", "Fee"], ValueError), ("O\0H", ValueError),
]


@pytest.mark.parametrize("selection, expected", SELECTIONS)
def test_selections(job, selection, expected):
    assert job.select(selection) == expected
    job.freeze(selection, code=7)
    assert job.frozen == sorted(expected)


@pytest.mark.parametrize("selection, error", WRONG_SELECTIONS)
def test_wrong_selections_change_nothing(job, selection, error):
    for edit in (job.freeze, job.remove_atoms, lambda what: job.set_layer("H", what), lambda what: job.translate((1, 1, 1), what)):
        with pytest.raises(error):
            edit(selection)
    assert str(job) == WATER


def test_symbols_are_those_of_species():
    labels = ["HC", "HW1", "OXT", "CL", "-1", "-2", "0", "C-Bq", "Bq", "C-CT--0.12", "CA", "Q1", "D"]
    rows = "".join(f"{label} 0 0 {10 * i}.0\n" for i, label in enumerate(labels))
    job = gjf.loads("# hf/sto-3g\n\nT\n\n0 1\n" + rows + "\n")
    assert job.symbols == ["H", "H", "O", "Cl", "X", "Tv", "Bq", "Bq", "Bq", "C", "Ca", "Q1", "D"]
    assert [atom.symbol for atom in job.atoms] == job.symbols and job.to_xyz().splitlines()[2].split()[0] == "H"
    assert job.select("H")[:2] == [0, 1]


def test_element_names_know_numbers_and_labels():
    job = gjf.loads("# hf/sto-3g\n\nT\n\n0 1\n6 0 0 0\nC12 0 0 1\nc 0 0 2\nN 0 0 3\n\n")
    assert job.select("C") == [0, 1, 2] and job.select("element:6") == [0, 1, 2] and job.select("element:C12") == [1]
    assert job.symbols == ["C", "C", "C", "N"] and list(job.elements) == ["6", "C12", "N", "c"]
