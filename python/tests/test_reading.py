"""Reading: what comes, how errors come, many files at once."""
import copy
import json
import os
import pathlib
import pickle
import threading
import time

import numpy as np
import pytest

import quor_gjf as gjf
from conftest import WATER

MALFORMED = [
    ("", "Empty"),
    ("#p hf/sto-3g\n", "Missing title section"),
    ("#p hf/sto-3g\n\nTitle\n", "Missing geometry section"),
    ("#p hf/sto-3g\n\nTitle\n\nnot a charge\nH 0 0 0\n", ""),
    ("#p hf/sto-3g geom=connectivity\n\nTitle\n\n0 1\nH 0 0 0\n\n1 x 1.0\n", "Invalid connectivity atom index 'x'"),
    ("#p hf/sto-3g geom=connectivity\n\nTitle\n\n0 1\nH 0 0 0\nH 0 0 1\n\n1 5 1.0\n2\n", "outside the geometry"),
    ("#p hf/sto-3g\n\nTitle\n\n99999999999 1\nH 0 0 0\n", ""),
]


def large_job(count):
    rng = np.random.default_rng(7)
    rows = "".join(f"{symbol:<2} {x:12.6f} {y:12.6f} {z:12.6f}\n"
                   for symbol, (x, y, z) in zip(np.resize(["C", "H", "O", "N"], count), rng.uniform(-50, 50, (count, 3))))
    return f"#p b3lyp/6-31g(d) opt\n\nLarge\n\n0 1\n{rows}\n"


@pytest.mark.parametrize("text, message", MALFORMED)
def test_malformed_text_is_a_parse_error(text, message):
    for load in (gjf.loads, gjf.loads_all):
        with pytest.raises(gjf.ParseError) as caught:
            load(text)
        assert isinstance(caught.value, ValueError)
        assert str(caught.value).startswith("GJF Parse Error: ")
    if message and message != "Empty":
        with pytest.raises(gjf.ParseError, match=message):
            gjf.loads(text)


def test_files_that_cannot_be_read(tmp_path):
    missing = tmp_path / "no.gjf"
    for load in (gjf.read, gjf.read_all, gjf.check, lambda path: gjf.read_many([path])):
        with pytest.raises(gjf.MissingFileError) as caught:
            load(missing)
        error = caught.value
        assert isinstance(error, (FileNotFoundError)) and isinstance(error, gjf.ParseError)
        assert str(error) == f"GJF Parse Error: Cannot open file: {missing}"
        assert error.filename == str(missing)
    with pytest.raises(gjf.FileError) as caught:
        gjf.read(tmp_path)
    assert not isinstance(caught.value, FileNotFoundError)


def test_paths_of_every_kind(tmp_path):
    path = tmp_path / "water.gjf"
    path.write_text(WATER)
    jobs = [gjf.read(path), gjf.read(str(path)), gjf.read(os.fsencode(path))]
    assert jobs[0] == jobs[1] == jobs[2] == gjf.loads(WATER)
    assert {job.path for job in jobs} == {str(path)}


@pytest.mark.parametrize("bad", [None, 5, 1.0, ["a.gjf"]])
def test_what_is_no_path_is_a_type_error(bad):
    with pytest.raises(TypeError):
        gjf.read(bad)
    with pytest.raises(TypeError):
        gjf.loads(bad)


def test_all_parts_are_there(job):
    assert (job.chk, job.mem, job.nproc) == ("water.chk", None, None)
    assert (job.route.print_level, job.route.method, job.route.basis) == ("p", "b3lyp", "6-31g(d)")
    assert list(job.route.keywords) == ["opt", "freq", "geom"]
    assert (job.title, job.charge, job.multiplicity, job.pairs) == ("Water", 0, 1, [(0, 1)])
    assert (job.symbols, job.elements) == (["O", "H", "H"], {"H": 2, "O": 1})
    np.testing.assert_array_equal(job.positions, [[0, 0, 0.1173], [0, 0.7572, -0.4692], [0, -0.7572, -0.4692]])
    assert list(job.bonds) == [(0, 1, 1.0), (0, 2, 1.0)]
    assert job.sections[0].kind is gjf.SectionKind.CONNECTIVITY


def test_atoms_carry_their_labels():
    text = "#p oniom(hf/sto-3g:amber)\n\nT\n\n0 1\nC-CT--0.12(PDBName=CA,ResName=ALA) -1 0.5 1.5 -2.5 H\nH 0 0 0 0 L\n\n"
    first, second = gjf.loads(text).atoms
    assert (first.element, first.mm_type, first.mm_charge, first.freeze, first.layer) == ("C", "CT", -0.12, -1, "H")
    assert first.params == {"PDBName": "CA", "ResName": "ALA"}
    assert first.position_texts == ("0.5", "1.5", "-2.5")
    assert (second.mm_type, second.mm_charge, second.params, second.layer) == (None, None, {}, "L")


def test_variables_give_positions(examples):
    benzene = gjf.read(next(path for path in examples if path.name == "benzene_symbolic.gjf"))
    assert benzene.variables["rc"] == "1.3970"
    np.testing.assert_array_equal(benzene.positions[:5], [[0, 1.397, 0], [1.2098, 0.6985, 0], [1.2098, -0.6985, 0], [0, -1.397, 0],
                                                          [-1.2098, -0.6985, 0]])
    np.testing.assert_array_equal(benzene.atoms[4].position, benzene.positions[4])


def test_a_zmatrix_has_rows_and_positions(examples):
    job = gjf.read(next(path for path in examples if path.name == "butane_scan_zmatrix.gjf"))
    assert job.is_zmatrix and job.symbols == ["C"] * 4 and len(job.atoms) == 0
    assert job.zmatrix[3] == ("C", (3, "B3"), (2, "A2"), (1, "D1"))
    assert job.variables["D1"] == "60.0"
    assert job.positions.shape == (4, 3) and not job.positions.flags.writeable
    assert job.positions[0].tolist() == [0, 0, 0] and job.positions[1][:2].tolist() == [0, 0] and job.positions[2][1] == 0
    with pytest.raises(ValueError, match="Z-matrix"):
        job.positions = np.zeros((4, 3))
    bonds = np.linalg.norm(np.diff(job.positions, axis=0), axis=1)
    np.testing.assert_allclose(bonds, [1.53] * 3, atol=1e-12)
    text = str(job)
    for edit in (job.freeze, job.remove_atoms, lambda atoms: job.set_layer("H", atoms), lambda atoms: job.translate((1, 1, 1), atoms)):
        with pytest.raises(ValueError, match="Z-matrix"):
            edit("C")
    assert str(job) == text


def test_bytes_that_are_not_utf8_survive(tmp_path):
    path = tmp_path / "latin.gjf"
    data = WATER.replace("Water", "Wasser für Ångström").encode("latin-1")
    path.write_bytes(data)
    job = gjf.read(path)
    assert job.title.encode("utf-8", "surrogateescape") == "Wasser für Ångström".encode("latin-1")
    job.charge = 2
    job.save()
    assert "Wasser für Ångström".encode("latin-1") in path.read_bytes()
    assert gjf.loads(WATER.replace("Water", "Wasser für Ångström")).title == "Wasser für Ångström"


def test_read_many_gives_what_read_gives(examples):
    for threads in (None, 1, 2, 7):
        assert gjf.read_many(examples, threads=threads) == [gjf.read(path) for path in examples]
        assert gjf.read_many(examples, threads=threads, all_jobs=True) == [gjf.read_all(path) for path in examples]
    assert gjf.read_many([]) == []


def test_read_many_keeps_errors_in_their_places(tmp_path, examples):
    broken = tmp_path / "broken.gjf"
    broken.write_text("# hf\n")
    paths = [examples[0], broken, tmp_path / "no.gjf", examples[1]]
    with pytest.raises(gjf.ParseError, match="Missing title"):
        gjf.read_many(paths)
    results = gjf.read_many(paths, on_error="return")
    assert [type(result) for result in results] == [gjf.Job, gjf.ParseError, gjf.MissingFileError, gjf.Job]
    assert [result is None for result in gjf.read_many(paths, on_error="skip")] == [False, True, True, False]


@pytest.mark.parametrize("arguments", [{"threads": 0}, {"threads": -1}, {"on_error": "ignore"}])
def test_what_works_on_many_refuses_odd_arguments(arguments):
    for work in (gjf.read_many, gjf.check_many):
        with pytest.raises(ValueError):
            work([], **arguments)


def test_check_many_finds_what_check_finds(tmp_path, examples):
    wrong = tmp_path / "wrong.gjf"
    wrong.write_text("# hf/sto-3g opt=calfc\n\nt\n\n0 2\nHe 0. 0. 0.\n\n")
    paths = [wrong, *examples, wrong]
    expected = [gjf.check(path) for path in paths]
    assert expected[0] and expected[0] == expected[-1]
    for threads in (None, 1, 2, 7):
        assert gjf.check_many(paths, threads=threads) == expected
    codes = {finding.code for finding in expected[0]}
    assert gjf.check_many([wrong], ignore=codes) == [[]]
    assert gjf.check_many([]) == []


def test_check_many_keeps_errors_in_their_places(tmp_path, examples):
    paths = [examples[0], tmp_path / "no.gjf", tmp_path]
    with pytest.raises(gjf.MissingFileError, match="no.gjf"):
        gjf.check_many(paths)
    results = gjf.check_many(paths, on_error="return")
    assert results[0] == gjf.check(examples[0]) and [isinstance(each, gjf.ParseError) for each in results] == [False, True, True]
    assert gjf.check_many(paths, on_error="skip")[1:] == [None, None]


def test_reading_and_checking_many_leave_python_running(tmp_path):
    path = tmp_path / "many.gjf"
    path.write_text("\n--Link1--\n".join(["# hf/sto-3g\n\nt\n\n0 1\nHe 0. 0. 0.\n\n"] * 300))
    for work in (lambda: gjf.check_many([path] * 20, threads=1), lambda: gjf.read_many([path] * 20, threads=1, all_jobs=True)):
        thread = threading.Thread(target=work)
        thread.start()
        turns = 0
        while thread.is_alive():
            turns += 1
            time.sleep(0.0005)
        assert turns > 5


def test_many_threads_read_and_write_at_once(tmp_path):
    text = large_job(300)
    (tmp_path / "source.gjf").write_text(text)
    wrong = []

    def work(number):
        for turn in range(20):
            job, = gjf.read_many([tmp_path / "source.gjf"], threads=2)
            job.charge = number
            job.save(tmp_path / f"{number}.gjf")
            if gjf.read(tmp_path / f"{number}.gjf").charge != number or len(job.atoms) != 300:
                wrong.append((number, turn))

    threads = [threading.Thread(target=work, args=(number,)) for number in range(6)]
    for thread in threads:
        thread.start()
    for thread in threads:
        thread.join()
    assert not wrong


@pytest.mark.parametrize("what", ["loads", "str", "check"])
def test_other_threads_run_meanwhile(what):
    text = large_job(60000)
    job = gjf.loads(text)
    job.charge = 2
    spans = {}

    def long_work():
        begin = time.perf_counter()
        {"loads": lambda: gjf.loads(text), "str": lambda: str(job), "check": lambda: gjf.check(text)}[what]()
        spans["work"] = (begin, time.perf_counter())

    thread = threading.Thread(target=long_work)
    ticks = []
    thread.start()
    while thread.is_alive():
        ticks.append(time.perf_counter())
        time.sleep(0.001)
    begin, end = spans["work"]
    during = [tick for tick in ticks if begin < tick < end]
    # With the lock held there would be one tick at most in the middle of the work.
    quarter = (end - begin) / 4
    assert len([tick for tick in during if begin + quarter < tick < end - quarter]) >= 5


def test_no_leak_over_ten_thousand_reads(tmp_path):
    path = tmp_path / "leak.gjf"
    path.write_text(large_job(30).replace("Large", "Large, with ü"))

    def turn(count):
        for _ in range(count):
            job = gjf.read(path)
            job.positions, job.symbols, job.atoms[3].params, str(job.route), job.route.keywords["opt"].options

    def resident():
        return int(pathlib.Path("/proc/self/statm").read_text().split()[1]) * os.sysconf("SC_PAGE_SIZE")

    turn(1000)
    before = resident()
    turn(10000)
    # One job kept a read would be more than 100 MB.
    assert resident() - before < 3_000_000


WRONG_LINES = [
    ("# hf\n\nt\n\n0 one\nH 0 0 0\n\n", 5, 3), ("\n\n", None, None), ("# hf\n\nt\n\n0 1\n  H 0 0 0\n  H 0 0 1e999\n\n", 7, 9),
    ("# hf\n\nt\n\n0 99999999999\nH 0 0 0\n\n", 5, 3),
    ("# hf\n\nt\n\n0 two\nH 0 0 0\n\n--Link1--\n# hf\n\nt\n\n0 one\nH 0 0 0\n\n", 5, 3),
]


@pytest.mark.parametrize("text, line, column", WRONG_LINES)
def test_errors_tell_file_and_place(text, line, column, folder):
    with pytest.raises(gjf.ParseError) as caught:
        gjf.loads_all(text)
    assert (caught.value.filename, caught.value.line, caught.value.column) == (None, line, column) and "GJF Parse Error: " in str(caught.value)
    (folder / "bad.gjf").write_text(text)
    with pytest.raises(gjf.ParseError) as caught:
        gjf.read_all("bad.gjf")
    assert (caught.value.filename, caught.value.line, caught.value.column) == ("bad.gjf", line, column)
    [error] = gjf.read_many(["bad.gjf"], all_jobs=True, on_error="return")
    assert (error.filename, error.line, error.column) == ("bad.gjf", line, column)


def test_errors_of_edits_have_no_place(job):
    with pytest.raises(gjf.ParseError) as caught:
        job.reorder([0, 0, 1])
    assert (caught.value.filename, caught.value.line, caught.value.column) == (None, None, None)


HALF_READ = """#p hf/sto-3g

first

0 1
He 0. 0. 0.

--Link1--
# hf/sto-3g   ! broken

second

x 1
He 0. 0. 0.

--Link1--

--Link1--
#p hf/sto-3g

third

0 1
Ne 0. 0. 0.

"""


def test_jobs_that_cannot_be_read_keep_their_text_and_place(folder):
    (folder / "half.gjf").write_text(HALF_READ)
    [many] = gjf.read_many(["half.gjf"], all_jobs=True)
    for jobs in (gjf.loads_all(HALF_READ), gjf.read_all("half.gjf"), many, pickle.loads(pickle.dumps(gjf.read_all("half.gjf"))),
                 copy.deepcopy(many)):
        assert [isinstance(job, gjf.UnreadableJob) for job in jobs] == [False, True, False]
        assert [jobs[0].title, jobs[2].title] == ["first", "third"]
        assert str(jobs) == HALF_READ and str(jobs[1]) in HALF_READ and "! broken" in str(jobs[1]) and jobs[1].is_as_read
        assert json.loads(jobs.to_json())["jobs"][1] == {"error": {"line": 13, "message": "Invalid charge/spin line: x 1"}}
        for use in (lambda job: job.title, lambda job: job.atoms, lambda job: job.to_json(), lambda job: job == jobs[0],
                    lambda job: setattr(job, "charge", 1), lambda job: job.report()):
            with pytest.raises(gjf.ParseError, match="GJF Parse Error: Job 2: GJF Parse Error: Invalid charge/spin line: x 1") as caught:
                use(jobs[1])
            assert (caught.value.filename, caught.value.line, caught.value.column) == (jobs[1].path, 13, 1)
        repr(jobs)
        jobs[2].charge = 2
        assert str(jobs) == HALF_READ.replace("0 1\nNe", "2 1\nNe")
        assert str(gjf.Jobs([jobs[2], jobs[1]])).count("! broken") == 1
    jobs.save(folder / "copy.gjf")
    jobs = gjf.read_all("half.gjf")
    del jobs[0]
    jobs[1].mem = "1GB"
    jobs.save()
    assert (folder / "half.gjf").read_text() == HALF_READ[HALF_READ.index("# hf"):].replace("#p hf", "%mem=1GB\n#p hf")
    assert isinstance(jobs[0], gjf.UnreadableJob) and jobs[1].title == "third"
    with pytest.raises(gjf.ParseError):
        gjf.read("half.gjf")
    with gjf.edit_all("half.gjf") as jobs:
        jobs[1].mem = None
    assert (folder / "half.gjf").read_text() == HALF_READ[HALF_READ.index("# hf"):]
