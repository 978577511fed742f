"""Every edit under its Python name, and that a refused one changes nothing."""
import json
import math

import numpy as np
import pytest

import quor_gjf as gjf
from conftest import WATER

# --- Link 0 and head


@pytest.mark.parametrize("name, value", [("chk", "a.chk"), ("oldchk", "b.chk"), ("rwf", "c.rwf"), ("mem", "8GB"), ("nproc", 12), ("cpu", "0-3")])
def test_link0_values_come_and_go(job, name, value):
    setattr(job, name, value)
    assert getattr(job, name) == value and getattr(gjf.loads(str(job)), name) == value
    setattr(job, name, None)
    assert getattr(job, name) is None and f"%{name}" not in str(job)


@pytest.mark.parametrize("name, value", [("chk", 5), ("nproc", "many"), ("nproc", "-1"), ("nproc", ""), ("nproc", "\u0663"), ("nproc", 1.5), ("nproc", 2**40), ("title", None), ("charge", "1"),
                                         ("pairs", [(1,)]), ("pairs", [("a", "b")]), ("other_link0_lines", [1])])
def test_values_of_the_wrong_type_change_nothing(job, name, value):
    with pytest.raises((TypeError, ValueError)):
        setattr(job, name, value)
    assert str(job) == WATER


def test_values_as_a_file_has_them(job):
    job.nproc = "8"
    assert job.nproc == 8 and "%nproc" in str(job)


def test_link0_keys_count_however_they_are_spelt():
    text = "% nprocs = 4\n%Oldch=a.chk\n# hf/sto-3g\n\nt\n\n0 1\nHe 0 0 0\n\n"
    job = gjf.loads(text)
    assert (job.nproc, job.oldchk, str(job)) == (4, "a.chk", text)
    assert json.loads(job.to_json())["link0"] == {"oldchk": "a.chk", "nproc": 4, "other": ["% nprocs = 4", "%Oldch=a.chk"]}
    job.nproc, job.oldchk = 8, "b.chk"
    assert str(job).count("proc") == 1 and str(job).lower().count("oldch") == 1 and (job.nproc, job.oldchk) == (8, "b.chk")
    job.nproc = job.oldchk = None
    assert str(job).startswith("# hf") and (job.nproc, job.oldchk) == (None, None)
    for text, line in (("hf/sto-3g opt", "# hf/sto-3g opt"), (" #p hf/sto-3g", "#p hf/sto-3g"), ("#hf/sto-3g", "#hf/sto-3g")):
        job.route = text
        assert str(job.route).rstrip() == line and job.route.method == "hf"


def test_unknown_attributes_are_not_swallowed(job):
    for wrong in ("tittle", "memory", "multiplicty"):
        with pytest.raises(AttributeError):
            setattr(job, wrong, 1)
    with pytest.raises(AttributeError):
        job.atoms[0].frozen = -1


def test_head(job):
    job.other_link0_lines = ["%save", "%nosave"]
    job.title = "Two\nlines"
    job.charge = -1
    job.multiplicity = 2
    assert (job.pairs, job.other_link0_lines) == ([(-1, 2)], ["%save", "%nosave"])
    job.pairs = []
    assert (job.charge, job.multiplicity, job.pairs) == (0, 0, [])


# --- Atoms


def elements(job):
    return [atom.element for atom in job.atoms]


def test_the_list_of_atoms_is_a_list(job):
    job.atoms.append(gjf.Atom("He", (1, 2, 3)))
    job.atoms.insert(0, gjf.Atom("Ne"))
    job.atoms.insert(-1, gjf.Atom("Ar"))
    assert elements(job) == ["Ne", "O", "H", "H", "Ar", "He"]
    assert sorted(job.bonds) == [(1, 2, 1.0), (1, 3, 1.0)]
    assert job.atoms.pop() == gjf.Atom("He", (1, 2, 3)) and job.atoms.pop(0).element == "Ne"
    job.atoms[-1] = gjf.Atom("Kr")
    assert elements(job) == ["O", "H", "H", "Kr"] and elements(job)[1:3] == [atom.element for atom in job.atoms[1:3]]
    job.atoms.reverse()
    assert elements(job) == ["Kr", "H", "H", "O"] and sorted(job.bonds) == [(1, 3, 1.0), (2, 3, 1.0)]
    del job.atoms[1:3]
    assert elements(job) == ["Kr", "O"] and len(job.bonds) == 0
    job.atoms.extend(job.atoms)
    assert elements(job) == ["Kr", "O"] * 2 and job.atoms[0] in job.atoms
    job.atoms.clear()
    assert len(job.atoms) == 0 and list(job.atoms) == []
    job.atoms = [("H", 0, 0, 0), ("H", (0, 0, 1)), gjf.Atom("H", freeze=-1)]
    assert elements(job) == ["H"] * 3 and job.frozen == [2]


@pytest.mark.parametrize("edit, error", [
    (lambda job: job.atoms[3], IndexError), (lambda job: job.atoms.__delitem__(-4), IndexError), (lambda job: job.atoms.pop(5), IndexError),
    (lambda job: job.atoms.__setitem__(3, gjf.Atom("H")), IndexError), (lambda job: job.atoms.append("H"), TypeError),
    (lambda job: job.atoms.__setitem__(slice(0, 1), [gjf.Atom("H")]), TypeError), (lambda job: job.add_atom(("H", (0, 0))), ValueError),
    (lambda job: job.add_atom(("H", (0, 0, math.nan))), ValueError), (lambda job: job.add_atom(("H", (0, 0, 0)), {3: 1.0}), gjf.ParseError),
    (lambda job: job.add_atom(("H", (0, 0, 0)), {0: math.inf}), gjf.ParseError), (lambda job: job.move_atom(0, 3), IndexError),
    (lambda job: job.reorder([0, 1]), gjf.ParseError), (lambda job: job.reorder([0, 1, 1]), gjf.ParseError),
    (lambda job: job.reorder([0, 1, 3]), IndexError), (lambda job: setattr(job, "positions", np.zeros((2, 3))), ValueError),
    (lambda job: setattr(job, "positions", np.zeros(9)), ValueError), (lambda job: setattr(job, "positions", np.full((3, 3), np.inf)), ValueError),
    (lambda job: setattr(job, "positions", "abc"), ValueError), (lambda job: setattr(job.atoms[0], "element", ""), ValueError),
    (lambda job: setattr(job.atoms[0], "element", "C 1"), ValueError), (lambda job: setattr(job.atoms[0], "position", (1, 2)), ValueError),
    (lambda job: setattr(job.atoms[0], "mm_charge", math.nan), gjf.ParseError), (lambda job: job.set_mm(0, charge=math.inf), gjf.ParseError),
    (lambda job: setattr(job.atoms[0], "params", {"a": 1}), RuntimeError), (lambda job: job.atoms[0].position.__setitem__(0, 1.0), ValueError),
    (lambda job: job.positions.__setitem__((0, 0), 1.0), ValueError), (lambda job: job.bonds.__setitem__((0, 0), 1.0), gjf.ParseError),
    (lambda job: job.bonds.__setitem__((0, 3), 1.0), IndexError), (lambda job: job.bonds.__setitem__((0, 1), math.nan), gjf.ParseError),
    (lambda job: setattr(job, "bonds", [(0, 1, 1.0), (0, 5, 1.0)]), IndexError), (lambda job: job.sections.add(1, "1 2 1.0"), gjf.ParseError),
    (lambda job: job.sections.add("NO_KIND", "x"), ValueError), (lambda job: job.sections.add(99, "x"), ValueError),
    (lambda job: job.sections[1], IndexError), (lambda job: job.sections.__delitem__(1), IndexError),
    (lambda job: job.sections.read_bonds(4), IndexError), (lambda job: setattr(job.sections[0], "text", "1 9 1.0"), gjf.ParseError),
    (lambda job: job.sections.put("CONNECTIVITY", "1 x"), gjf.ParseError), (lambda job: setattr(job.route, "method", " "), gjf.ParseError),
    (lambda job: setattr(job.route, "basis", ""), gjf.ParseError), (lambda job: job.route.keywords.__setitem__("", "x"), gjf.ParseError),
    (lambda job: job.route.keywords.__delitem__("scf"), KeyError), (lambda job: job.route.keywords["scf"], KeyError),
    (lambda job: job.route.keywords.set_option(" ", "x"), gjf.ParseError), (lambda job: job.route.keywords.add(""), gjf.ParseError),
])
def test_refused_edits_change_nothing(job, edit, error):
    with pytest.raises(error):
        edit(job)
    assert str(job) == WATER and job.is_as_read


def test_atoms_are_added_with_bonds(job):
    assert job.add_atom(("H", (0, 0, 2)), bonds={0: 1.0, 1: 0.0}) == 3
    assert job.add_atom(gjf.Atom("He"), bonds=[(3, 2.0)]) == 4
    assert sorted(job.bonds) == [(0, 1, 1.0), (0, 2, 1.0), (0, 3, 1.0), (3, 4, 2.0)]


def test_removing_many_is_removing_one_after_the_other():
    rng = np.random.default_rng(3)
    for _ in range(30):
        count = int(rng.integers(2, 25))
        job = gjf.Job("# hf/sto-3g geom=connectivity", "Random", atoms=[("C", (i, 0, 0)) for i in range(count)])
        for a, b in rng.integers(0, count, (count, 2)):
            if a != b:
                job.bonds[int(a), int(b)] = float(rng.integers(1, 4))
        gone = sorted({int(i) for i in rng.integers(0, count, count // 2)})
        one_by_one = job.copy()
        for index in reversed(gone):
            del one_by_one.atoms[index]
        job.remove_atoms(gone)
        assert job == one_by_one and list(job.bonds) == list(one_by_one.bonds)


def test_orders(job):
    job.move_atom(0, -1)
    assert elements(job) == ["H", "H", "O"] and sorted(job.bonds) == [(0, 2, 1.0), (1, 2, 1.0)]
    job.reorder([2, 0, 1])
    assert job == gjf.loads(WATER)
    job.move_to_end("O")
    assert elements(job) == ["H", "H", "O"]
    job.move_to_beginning("O")
    assert job == gjf.loads(WATER)


def test_positions(job):
    before = job.positions.copy()
    job.translate((1, 2, 3), "O")
    job.scale(2.0, [1])
    job.rotate((0, 0, math.pi / 2), [2])
    expected = [before[0] + [1, 2, 3], before[1] * 2, [-before[2][1], before[2][0], before[2][2]]]
    np.testing.assert_allclose(job.positions, expected, atol=1e-12)
    assert all(atom.position_texts == ("", "", "") for atom in job.atoms)
    job.positions = before.tolist()
    np.testing.assert_array_equal(job.positions, before)
    job.atoms[0].position = (9, 9, 9)
    assert job.positions[0].tolist() == [9, 9, 9] and job.atoms[1].position.tolist() == before[1].tolist()
    assert job.positions.dtype == np.float64 and job.positions.shape == (3, 3) and gjf.Job().positions.shape == (0, 3)


def test_setting_positions_of_symbolic_coordinates(examples):
    job = gjf.read(next(path for path in examples if path.name == "benzene_symbolic.gjf"))
    before = job.positions
    job.positions = before
    assert job.variables == {} and "rc" not in job.fixed_layout()
    np.testing.assert_array_equal(job.positions, before)


# --- Labels


def test_freeze_codes(job):
    job.freeze()
    job.freeze(1, code=0)
    assert (job.freeze_codes, job.frozen, job.ranges(job.frozen)) == ([-1, 0, -1], [0, 2], "1,3")
    job.freeze([0, 2], code=None)
    assert job.freeze_codes == [None, 0, None]


def test_layers(job):
    assert (job.layers, job.is_oniom, job.layer_counts) == ([None] * 3, False, {})
    job.atoms[2].layer = "M"
    assert job.layers == [None, None, "M"]
    job.complete_layers()
    assert job.layers == ["L", "L", "M"]
    job.set_layer("H", 0)
    assert (job.layers, job.is_oniom, job.layer_counts) == (["H", "L", "M"], True, {"H": 1, "L": 1, "M": 1})
    job.set_layer("L")
    assert job.layers == ["L"] * 3


def test_fragments(job):
    job.atoms[0].params = {"FRAGMENT": "7", "ResName": "HOH"}
    job.set_fragment(2, ["O"])
    assert job.atoms[0].params == {"Fragment": "2", "ResName": "HOH"} and job.atoms[0].fragment == "2"
    job.set_fragment("b", "H")
    assert job.fragments == ["2", "b", "b"]
    job.set_fragment(None)
    assert job.fragments == [None] * 3 and job.atoms[0].params == {"ResName": "HOH"}


def test_molecular_mechanics(job):
    job.set_mm("H", type="HW", charge=0.417)
    job.set_mm(0, type=" OW ")
    assert [(atom.mm_type, atom.mm_charge) for atom in job.atoms] == [("OW", None), ("HW", 0.417), ("HW", 0.417)]
    job.set_mm(1, type="")
    job.atoms[1].mm_charge = None
    assert (job.atoms[1].mm_type, job.atoms[1].mm_charge) == (None, None)
    assert [(atom.mm_type, atom.mm_charge) for atom in gjf.loads(str(job)).atoms] == [("OW", None), (None, None), ("HW", 0.417)]
    job.mm_parameters = "NonBon 3 1 0 0"
    assert job.sections[1].kind is gjf.SectionKind.MM_PARAMETERS and job.mm_parameters == "NonBon 3 1 0 0"
    job.mm_parameters = None
    assert job.mm_parameters is None and len(job.sections) == 1


# --- Bonds and sections


def test_bonds(job):
    job.bonds[2, 1] = 1.5
    assert job.bonds[1, 2] == 1.5 and (2, 1) in job.bonds and (1, 2, 1.0) not in job.bonds and job.bonds.of(-1) == [0, 1]
    job.bonds[1, 2] = 0
    assert (1, 2) not in job.bonds
    del job.bonds[0, 1]
    assert list(job.bonds) == [gjf.Bond(0, 2, 1.0)] and job.bonds == [(0, 2, 1.0)]
    window = job.bonds
    job.bonds = [(0, 1, 2), (1, 2, 1)]
    assert sorted(window) == [(0, 1, 2.0), (1, 2, 1.0)]
    job.bonds.clear()
    assert len(job.bonds) == 0 and job.sections[0].kind is gjf.SectionKind.CONNECTIVITY


def test_sections(job):
    kind = gjf.SectionKind
    job.sections.append("B 1 2 F")
    assert [section.kind for section in job.sections] == [kind.CONNECTIVITY, kind.UNKNOWN]
    job.sections[1].kind = "CoordinateModifications"
    job.sections[1].text = "B 1 3 F"
    assert job.sections.add(kind.ATOMIC_MASSES, "298.15") == 2 and job.sections.add(3, "A 2 1 3 F") == 2
    job.sections.put("coordinate_modifications", "D 1 2 3 4 F", append=True)
    assert [section.lines for section in job.sections[1:]] == [["B 1 3 F", "D 1 2 3 4 F"], ["A 2 1 3 F"], ["298.15"]]
    job.sections.put("coordinate_modifications", "X 1 F")
    job.sections[3] = "300"
    assert [section.text for section in job.sections.of(3)] == ["X 1 F", "A 2 1 3 F"] and job.sections.text(13) == "300"
    del job.sections[-1]
    job.sections.remove(kind.COORDINATE_MODIFICATIONS, "CONNECTIVITY")
    assert len(job.sections) == 0 and job.sections.text("ECP") is None
    job.sections.replace_all(["one", "1 2 1.0\n2\n3"])
    job.sections.read_bonds(1)
    assert list(job.bonds) == [(0, 1, 1.0)] and job.sections[0].text == "one"
    assert job.sections.expected == [kind.CONNECTIVITY]
    job.sections.clear()
    assert len(job.sections) == 0


# --- Route


ROUTE_EDITS = [
    (lambda route: setattr(route, "print_level", " #T"), "#t b3lyp/6-31g(d) opt freq geom=connectivity"),
    (lambda route: setattr(route, "method", "m062x"), "#p m062x/6-31g(d) opt freq geom=connectivity"),
    (lambda route: route.set_method("ccsd", ["t", "full"]), "#p ccsd=(t,full)/6-31g(d) opt freq geom=connectivity"),
    (lambda route: setattr(route, "basis", "cc-pVTZ"), "#p b3lyp/cc-pvtz opt freq geom=connectivity"),
    (lambda route: route.replace_method("mp2"), "#p mp2/6-31g(d) opt freq geom=connectivity"),
    (lambda route: route.replace_basis("gen"), "#p b3lyp/gen opt freq geom=connectivity"),
    (lambda route: route.clear_method(), "#p basis=6-31g(d) opt freq geom=connectivity"),
    (lambda route: route.clear_basis(), "#p b3lyp opt freq geom=connectivity"),
    (lambda route: route.keywords.add("nosymm"), "#p b3lyp/6-31g(d) opt freq geom=connectivity nosymm"),
    (lambda route: route.keywords.add("iop", {"3/76": "1000002000"}), "#p b3lyp/6-31g(d) opt freq geom=connectivity iop(3/76=1000002000)"),
    (lambda route: route.keywords.__setitem__("optimization", ["ts", "maxcycles = 5"]),
     "#p b3lyp/6-31g(d) optimization=(ts,maxcycles=5) freq geom=connectivity"),
    (lambda route: route.keywords.set_option("freq", "noraman"), "#p b3lyp/6-31g(d) opt freq=noraman geom=connectivity"),
    (lambda route: route.keywords.set_option("scf", "conver", 9), "#p b3lyp/6-31g(d) opt freq geom=connectivity scf=(conver=9)"),
    (lambda route: route.keywords.__delitem__("freq"), "#p b3lyp/6-31g(d) opt geom=connectivity"),
    (lambda route: route.keywords.discard("scf"), "#p b3lyp/6-31g(d) opt freq geom=connectivity"),
    (lambda route: route.append_word("pop=full"), "#p b3lyp/6-31g(d) opt freq geom=connectivity pop=full"),
    (lambda route: route.remove_word("opt"), "#p b3lyp/6-31g(d) freq geom=connectivity"),
    (lambda route: setattr(route, "words", ["#", "hf/sto-3g"]), "# hf/sto-3g"),
    (lambda route: route.copy_interpretation(gjf.route("#n hf/3-21g sp")) or route.rewrite(), "#n hf/3-21g sp"),
]


@pytest.mark.parametrize("edit, expected", ROUTE_EDITS)
def test_route_edits(job, edit, expected):
    edit(job.route)
    assert job.route == expected
    if "geom=connectivity" not in expected:
        job.sections.clear()
    read, meant = gjf.loads(str(job)).route, gjf.route(expected)
    assert (read.print_level, read.method, read.basis) == (meant.print_level, meant.method, meant.basis)
    assert ({name: keyword.options for name, keyword in read.keywords.items()}
            == {name: keyword.options for name, keyword in meant.keywords.items()})
    assert gjf.route(expected).method == job.route.method


def test_route_questions():
    route = gjf.route("#p ccsd(t)/cc-pvtz//mp2/6-31g(d) optim=(ts,maxcyc=50) opt=noeigen b3lpy")
    assert (route.method, route.secondary_method, route.secondary_basis) == ("ccsd(t)", "mp2", "6-31g(d)")
    assert route.has_method("MP2") and not route.has_method("hf") and "opt" in route and "freq" not in route
    assert [keyword.options for keyword in route.keywords.all("opt")] == [{"maxcyc": "50", "ts": "TRUE"}, {"noeigen": "TRUE"}]
    assert route.keywords.option("opt", "maxcycles") == "50" and route.keywords.option("opt", "tight") is None
    assert [keyword.name for keyword in route.keywords.by_category("other")] == ["b3lpy"]
    warning, = route.warnings
    begin, end = warning.span
    assert warning.code == "GJF-W005" and "b3lpy" in str(route)[begin - 2:end + 2]
    assert len(route.keywords) == 2 and dict(route.keywords).keys() == {"opt", "b3lpy"}
    assert gjf.route("# oniom(hf/sto-3g:amber)").oniom_expression == "oniom(hf/sto-3g:amber)"


def test_a_route_is_interpreted_anew_by_another_vocabulary(tmp_path):
    other = tmp_path / "tiny.yaml"
    other.write_text("not: a vocabulary\n")
    route = gjf.route("#p b3lyp/6-31g(d)")
    route.interpret(str(other))
    assert route.method == ""
    route.interpret()
    assert route.method == "b3lyp"
