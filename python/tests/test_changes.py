"""What edits bring: warnings, errors, and edits of units, elements and options."""
import warnings

import pytest

import quor_gjf as gjf

ROUTE = "# hf/sto-3g opt=(ts,calcfc)"
TEXT = ROUTE + "\n\nt\n\n0 1\nO 0.0 0.0 0.0\nH 0.0 0.76 0.59\nH 0.0 -0.76 0.59\n\n"


@pytest.fixture
def path(tmp_path):
    made = tmp_path / "w.gjf"
    made.write_text(TEXT)
    return made


def test_an_edit_warns_of_what_it_brings(path):
    with pytest.warns(gjf.CheckWarning, match="GJF-M002"):
        with gjf.edit(path) as job:
            job.charge = 1
    assert gjf.read(path).charge == 1


def test_a_strict_edit_writes_nothing_then(path):
    with pytest.raises(gjf.CheckError, match="GJF-M002") as caught:
        with gjf.edit(path, strict=True) as job:
            job.charge = 1
    assert [finding.code for finding in caught.value.findings] == ["GJF-M002"]
    assert path.read_text() == TEXT


def test_an_edit_that_brings_nothing_is_silent(path):
    with warnings.catch_warnings():
        warnings.simplefilter("error")
        with gjf.edit_all(path, strict=True) as jobs:
            jobs[0].charge = 1
            jobs[0].multiplicity = 2
    assert gjf.read(path).multiplicity == 2


@pytest.mark.parametrize("route, hints", [
    ("# b3lpy/6-31g", ["did you mean b3lyp?"]),
    ("# hf/sto-3g opt=clacfc frq", ["did you mean calcfc?", "did you mean freq?"]),
    ("# hf/sto-3g opt=calcfc", []),
    ("", []),
])
def test_unknown_words_have_candidates(route, hints):
    assert sorted(finding.hint for finding in gjf.unknown_words(route)) == hints


def test_units_and_elements_follow():
    job = gjf.loads(TEXT)
    job.set_units("bohr")
    assert "units=au" in str(job) and "1.436192" in str(job)
    job.set_units("angstrom")
    assert "units" not in str(job)
    job.set_element("S", 0)
    assert job.symbols == ["S", "H", "H"]
    for refused in ("Qq", "", "16"):
        with pytest.raises(gjf.ParseError, match="is no element"):
            job.set_element(refused)
    with pytest.raises(ValueError, match="not a unit of length"):
        job.set_units("pm")
    with pytest.raises(gjf.ParseError, match="angles"):
        gjf.loads("# hf/sto-3g\n\nt\n\n0 1\nO\nH 1 0.96\n\n").set_units("bohr")


def test_options_keep_their_order_and_case():
    job = gjf.loads(TEXT)
    assert job.route.keywords.remove_option("opt", "CalcFC")
    assert not job.route.keywords.remove_option("opt", "tight")
    job.route.keywords["scf"] = ["XQC", "Conver=8"]
    assert str(job).startswith("# hf/sto-3g opt=(ts) scf=(XQC,Conver=8)\n")


@pytest.mark.parametrize("selection", ["Fee", "1-", "within of 1", "9", ""])
def test_a_wrong_selection_is_an_error(selection):
    job = gjf.loads(TEXT)
    with pytest.raises(ValueError):
        job.freeze(selection)
    assert job.frozen == []


def test_selections_are_those_of_the_tool():
    job = gjf.loads(TEXT)
    for selection, frozen in (("1-2", [0, 1]), ("within 1 of 1", [0, 1, 2]), ("H", [1, 2])):
        job.freeze(None, 0)
        job.freeze(selection)
        assert job.frozen == frozen


def test_values_are_looked_at_where_they_are_set():
    job = gjf.loads(TEXT)
    job.nproc = "8"
    job.route = "hf/sto-3g freq"
    assert (job.nproc, str(job.route)) == (8, "# hf/sto-3g freq")
    for refused in ("x", "8x", "-8", ""):
        with pytest.raises(ValueError):
            job.nproc = refused


WATER = "# ub3lyp/6-31g(d) opt\n\nt\n\n0 1\nO 0 0 0\nH 0 0.76 0.59\nH 0 -0.76 0.59\n\n"


def test_requests_edit_as_the_tool_does():
    answer = gjf.request("edit", WATER, method="m062x", remove_keyword="opt", replace_element=["2-3=Li"], chk_from_name=True,
                         stdin_filename="a/water.gjf")
    assert answer["text"] == "%chk=water.chk\n# um062x/6-31g(d)" + WATER[21:].replace("H ", "Li ")
    assert answer["remarks"] == ["--method m062x: set as um062x, with the prefix of ub3lyp"]
    assert (answer["changed"], answer["refused"], answer["findings"]) == (True, False, [])
    answer = gjf.request("edit", WATER, charge="1", strict=True)
    assert (answer["text"], answer["refused"], [each["code"] for each in answer["findings"]]) == (WATER, True, ["GJF-M002"])


@pytest.mark.parametrize("command, text, options, error, message", [
    ("edit", WATER, {}, ValueError, "no operation is given"),
    ("edit", WATER, {"method": "b3lpy"}, ValueError, "did you mean b3lyp"),
    ("edit", WATER, {"metod": "b3lyp"}, ValueError, "'edit' has no option 'metod'"),
    ("edit", WATER, {"section": "basis=@/etc/hostname"}, ValueError, "none is opened here"),
    ("edit", WATER, {"charge": "1", "job": 2}, RuntimeError, "there is no job 2"),
    ("edit", "# hf\n\nt\n\n0 x\nHe 0 0 0\n\n", {"charge": "1"}, gjf.ParseError, "Invalid charge/spin line"),
    ("edti", WATER, {}, ValueError, "no command 'edti'"),
    ("check", WATER, {"select": ["GJF-Q999"]}, ValueError, "there is no check GJF-Q999"),
])
def test_requests_refuse(command, text, options, error, message):
    with pytest.raises(error, match=message):
        gjf.request(command, text, **options)


RULE = '[rules.slow]\nwhen = "opt"\nmessage = "no opt here"\n'


def test_configurations_hold_where_they_are_given(tmp_path):
    (tmp_path / "site.toml").write_text(RULE)
    (tmp_path / "a.gjf").write_text(WATER)
    (tmp_path / ".quor-gjf").write_text(RULE)  # which nobody asked for

    def codes(*arguments, **named):
        return [finding.code for finding in gjf.check(*arguments, **named)]

    assert codes(WATER) == codes(tmp_path / "a.gjf") == codes(WATER, config="") == []
    assert codes(WATER, config=RULE) == codes(tmp_path / "a.gjf", config=tmp_path / "site.toml") == ["site:slow"]
    assert codes(WATER, ["site:slow"], RULE) == codes(WATER, config=RULE + '[check.severity]\n"site:" = "off"\n') == []
    assert codes(WATER, config="[limits]\nrequire = ['%chk']\n") == ["GJF-X004"]
    assert [each.severity for each in gjf.fix(WATER, config=RULE).findings] == ["warning"]
    both = gjf.check_many([tmp_path / "a.gjf"] * 2, config=RULE + '[check.per-file-ignores]\n"*.com" = ["site:"]\n')
    assert [[each.message for each in found] for found in both] == [["no opt here"]] * 2
    assert gjf.request("check", WATER, config=RULE)["findings"][0]["code"] == "site:slow"


@pytest.mark.parametrize("config, message", [
    ("ignore\n", "config:1: "),
    ("[rules.a]\nwhen = 'opt'\n", "config:2: rules.a has no message"),
    ("[rules.a]\nmessage = 'm'\n", "config:2: rules.a has no when"),
    ("[rules.a]\nwhen = 'atoms >'\nmessage = 'm'\n", "config:2: rules.a.when: "),
    (RULE + "severity = 'error'\n", "config:4: rules.slow.severity is "),
    ("ignore = ['GJF-Q']\n", "config:1: check.ignore: there is no check GJF-Q"),
    ("[limits]\nmemory = '64XB'\n", "config:2: limits.memory is an amount of memory"),
])
def test_mistakes_in_configurations_are_told(tmp_path, config, message):
    for refused in (lambda: gjf.check(WATER, config=config), lambda: gjf.fix(WATER, config=config),
                    lambda: gjf.check_many([], config=config), lambda: gjf.request("check", WATER, config=config)):
        with pytest.raises(ValueError, match=message):
            refused()
    (tmp_path / "site.toml").write_text(config)
    with pytest.raises(ValueError, match="site.toml" + message[6:]):
        gjf.check(WATER, config=tmp_path / "site.toml")


def test_a_configuration_that_is_not_there_is_told():
    with pytest.raises(FileNotFoundError):
        gjf.check(WATER, config="/no/such/.quor-gjf")
