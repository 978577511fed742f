"""The installed package: complete, self-contained, typed, documented."""
import doctest
import importlib
import inspect
import os
import pathlib
import pickle
import pkgutil
import subprocess
import sys

import numpy
import pytest

import quor_gjf as gjf
from conftest import WATER

PACKAGE = pathlib.Path(gjf.__file__).parent
LIBRARIES = ("libquor_g16_gjf.so.0", "libquor_core_fs.so.0", "libquor_core_resource.so.0", "libyaml-cpp.so")
MODULES = sorted(module.name for module in pkgutil.iter_modules([str(PACKAGE)]) if module.name != "_core")


def run_python(code, **environment):
    bare = {name: value for name, value in os.environ.items() if not name.startswith("QUOR_")}
    return subprocess.run([sys.executable, "-c", code], capture_output=True, text=True, check=True, cwd="/", env={**bare, **environment}).stdout


def test_the_installed_package_is_tested():
    expected = os.environ.get("QUOR_GJF_PACKAGE")
    if expected is None:
        pytest.skip("not run by run_in_fresh_environment.py")
    assert PACKAGE == pathlib.Path(expected)
    assert "QUOR_G16_ROUTE_SCHEMA_YAML" not in os.environ


def test_finds_its_own_vocabulary(tmp_path):
    code = "import quor_gjf as g; print(g.vocabulary_path()); print(g.route('# b3lyp/6-31g(d) optimise scf=tigt').warnings)"
    path, warnings = run_python(code, HOME=str(tmp_path)).splitlines()
    assert path == str(PACKAGE / "share/quorlib/schemas/input/gaussian_route.yaml")
    assert "GJF-W005" in warnings and "b3lyp" not in warnings


def test_carries_the_image_of_its_vocabulary():
    vocabulary = PACKAGE / "share/quorlib/schemas/input/gaussian_route.yaml"
    assert pathlib.Path(f"{vocabulary}.image").read_bytes().startswith(b"vocabulary of quor-gjf")


def test_finds_its_own_facts(tmp_path):
    code = "import quor_gjf as g; print([f.code for f in g.check('# hf/sto-3g symm nosymm\\n\\nt\\n\\n0 1\\nHe 0. 0. 0.\\n\\n')])"
    assert run_python(code, HOME=str(tmp_path)) == "['GJF-R008']\n"


def test_another_vocabulary_can_be_named(tmp_path):
    other = tmp_path / "other.yaml"
    other.write_text((PACKAGE / "share/quorlib/schemas/input/gaussian_route.yaml").read_text())
    assert run_python("import quor_gjf; print(quor_gjf.vocabulary_path())", QUOR_G16_ROUTE_SCHEMA_YAML=str(other)) == f"{other}\n"


def test_carries_its_libraries():
    names = sorted(path.name for path in PACKAGE.glob("lib*"))
    assert all(any(name.startswith(library) for name in names) for library in LIBRARIES)
    assert not any(path.is_symlink() for path in PACKAGE.glob("lib*"))
    linked = subprocess.run(["ldd", str(next(PACKAGE.glob("_core*.so")))], capture_output=True, text=True, check=True).stdout
    for library in LIBRARIES:
        line = next(line for line in linked.splitlines() if library in line)
        assert str(PACKAGE) in line, line


def test_friends_are_not_imported_with_it():
    loaded = run_python("import sys, quor_gjf; print(*[name for name in ('ase', 'pandas', 'scipy', 'matplotlib') if name in sys.modules])")
    assert loaded == "\n"


def test_numpy_is_imported_at_the_first_array():
    code = (f"import sys, quor_gjf as g; job = g.loads({WATER!r}); job.freeze('H'); job.freeze(0); str(job); g.check(job)\n"
            "print('numpy' in sys.modules, job.positions.shape, 'numpy' in sys.modules)")
    assert run_python(code) == "False (3, 3) True\n"


def test_no_module_that_takes_long_is_imported_with_it():
    code = ("import sys; before = set(sys.modules); import quor_gjf\n"
            "dear = {'typing', 'dataclasses', 're', 'pathlib', 'json', 'inspect', 'ast', 'numpy'}; print(*dear & (set(sys.modules) - before))")
    assert run_python(code) == "\n"


def test_named_fields_are_those_of_tuples():
    finding = gjf.Finding("GJF-M002", "error", "odd", 1, 5, 1, 3, "")
    assert finding == ("GJF-M002", "error", "odd", 1, 5, 1, 3, "", 0, 0, (), ())
    assert str(finding) == "5:1: error: odd [GJF-M002]" and finding._replace(line=0, column=0).fixes == ()
    assert pickle.loads(pickle.dumps(finding)) == finding and type(pickle.loads(pickle.dumps(finding))) is gjf.Finding
    assert repr(gjf.ChargeSpin(0, multiplicity=1)) == "ChargeSpin(charge=0, multiplicity=1)"
    for arguments in ((), (0,), (0, 1, 2)):
        with pytest.raises(TypeError):
            gjf.ChargeSpin(*arguments)
    with pytest.raises(AttributeError):
        finding.line = 1


def test_versions_agree():
    project = (pathlib.Path(__file__).parents[2] / "CMakeLists.txt").read_text()
    assert f"VERSION {gjf.__version__}" in project
    assert importlib.import_module("importlib.metadata").version("quor-gjf") == gjf.__version__


@pytest.mark.usefixtures("folder")
@pytest.mark.parametrize("name", [*MODULES, "__init__"])
def test_examples_of_docstrings(name):
    module = importlib.import_module("quor_gjf" if name == "__init__" else f"quor_gjf.{name}")
    results = doctest.DocTestRunner(optionflags=doctest.REPORT_NDIFF)
    for test in doctest.DocTestFinder(exclude_empty=True).find(module):
        test.globs.update(namespace())
        results.run(test)
    assert results.failures == 0


def namespace():
    """What the examples may use; made anew for each, since they change it."""
    return {"gjf": gjf, "np": numpy, "job": gjf.loads(WATER)}


def test_most_docstrings_have_examples():
    count = sum(len(test.examples) for name in MODULES
                for test in doctest.DocTestFinder().find(importlib.import_module(f"quor_gjf.{name}")))
    assert count >= 60


def test_everything_public_is_documented():
    missing = []
    for name in gjf.__all__:
        thing = getattr(gjf, name)
        if name != "Selection" and not inspect.getdoc(thing):
            missing.append(name)
        for member, value in vars(thing).items() if inspect.isclass(thing) and thing.__module__.startswith("quor_gjf") else ():
            own = isinstance(value, property) or (inspect.isfunction(value) and not member.startswith("_"))
            if own and not inspect.getdoc(value) and thing.__name__ not in ("Keyword", "RouteWarning"):
                missing.append(f"{name}.{member}")
    assert not missing


@pytest.fixture(scope="module")
def mypy(tmp_path_factory):
    """Mypy by the package's own settings; what it makes of the standard library and NumPy is kept for the next call."""
    pytest.importorskip("mypy")
    settings, cache = pathlib.Path(__file__).parents[1] / "pyproject.toml", tmp_path_factory.mktemp("mypy")
    return lambda path: subprocess.run([sys.executable, "-m", "mypy", "--config-file", str(settings), "--cache-dir", str(cache), str(path)],
                                       capture_output=True, text=True, check=False)


def test_types_are_clean(mypy):
    assert (PACKAGE / "py.typed").is_file() and (PACKAGE / "_core.pyi").is_file()
    result = mypy(PACKAGE)
    assert result.returncode == 0, result.stdout + result.stderr


def test_stubs_match_the_native_module():
    pytest.importorskip("mypy")
    result = subprocess.run([sys.executable, "-m", "mypy.stubtest", "quor_gjf._core", "--concise"], capture_output=True, text=True,
                            check=False, cwd=PACKAGE.parent)
    # The metaclass of native classes, and the constructor of classes that cannot be made, are not in the stubs.
    of_pybind11 = ("metaclass differs", 'stub does not have *args argument "args"')
    lines = [line for line in result.stdout.splitlines() if line.startswith("quor_gjf") and not line.endswith(of_pybind11)]
    assert "quor_gjf._core.Job is inconsistent, metaclass differs" in result.stdout, result.stdout + result.stderr
    assert not lines


def test_a_script_with_wrong_types_is_refused(tmp_path, mypy):
    script = tmp_path / "script.py"
    script.write_text("import quor_gjf as gjf\njob = gjf.read('a.gjf')\njob.charge = 'one'\nx: int = job.title\ngjf.read(5)\n")
    result = mypy(script)
    assert [line.split(":")[1] for line in result.stdout.splitlines() if "error" in line and "script.py" in line] == ["3", "4", "5"]


BROKEN = {"named": ("broken.yaml", "states: [1, 2\n"), "missing": (None, None)}


@pytest.mark.parametrize("name", BROKEN)
@pytest.mark.parametrize("call", ["check('# hf\\n')", "check_many([])", "fix('# hf\\n')"])
def test_does_not_check_without_a_vocabulary(tmp_path, name, call):
    file, text = BROKEN[name]
    path = tmp_path / (file or "missing.yaml")
    if file:
        path.write_text(text)
    code = f"import quor_gjf\ntry:\n    quor_gjf.{call}\nexcept quor_gjf.VocabularyError as error:\n    print(error)"
    told = run_python(code, QUOR_G16_ROUTE_SCHEMA_YAML=str(path))
    assert told.startswith(f"{path}:2: " if file else f"{path}, which ")


def test_warns_of_a_broken_vocabulary_on_the_way(tmp_path):
    folder = tmp_path / "resources/schemas/input"
    folder.mkdir(parents=True)
    (folder / "gaussian_route.yaml").write_text("states: [1, 2\n")
    code = f"""import os, warnings
os.chdir({str(tmp_path)!r})
import quor_gjf
with warnings.catch_warnings(record=True) as told:
    warnings.simplefilter("always")
    quor_gjf.check("# hf/sto-3g\\n\\nt\\n\\n0 1\\nHe 0.0 0.0 0.0\\n\\n")
print(*[each.message for each in told])"""
    assert "gaussian_route.yaml:2: " in run_python(code)


def test_brings_the_tool(tmp_path):
    (tmp_path / "a.gjf").write_text("# hf/sto-3g\n\nt\n\n0 2\nHe 0.0 0.0 0.0\n\n")
    for command in ([sys.executable, "-m", "quor_gjf"], [PACKAGE / "quor-gjf"]):
        def run(*arguments):
            return subprocess.run([*command, *arguments], capture_output=True, text=True, check=False, cwd=tmp_path,
                                  env={name: value for name, value in os.environ.items() if not name.startswith("QUOR_")})
        assert run("--version").stdout == f"quor-gjf {gjf.__version__}\n"
        found = run("check", "--quiet", "--no-config", "a.gjf")
        assert found.returncode == 1 and found.stdout.startswith("a.gjf:5: error: ")
        assert run("chek").returncode == 2
