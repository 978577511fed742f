"""What the tests share: where the tree is, and the job that the examples of the documentation use."""
import pathlib

import pytest

import quor_gjf as gjf

SOURCE = pathlib.Path(__file__).resolve().parents[2]
WATER = """\
%chk=water.chk
#p b3lyp/6-31g(d) opt freq geom=connectivity

Water

0 1
O  0.0000  0.0000  0.1173
H  0.0000  0.7572 -0.4692
H  0.0000 -0.7572 -0.4692

1 2 1.0 3 1.0
2
3

"""


@pytest.fixture
def job():
    """Water with two bonds."""
    return gjf.loads(WATER)


@pytest.fixture(scope="session")
def examples():
    """The job files of the project."""
    files = sorted(path for path in (SOURCE / "examples/jobs").iterdir() if path.suffix in (".gjf", ".com"))
    assert len(files) >= 42
    return files


@pytest.fixture
def folder(tmp_path, monkeypatch):
    """A folder of its own, as the current one."""
    monkeypatch.chdir(tmp_path)
    return tmp_path
