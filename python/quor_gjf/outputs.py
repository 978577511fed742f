"""What Gaussian printed: how jobs ended, why, and with which geometry."""
from __future__ import annotations

import os

from . import _core
from .errors import FileError, MissingFileError, refuse_odd_arguments

TYPE_CHECKING = False
if TYPE_CHECKING:
    from typing import Any, Callable, Dict, Iterable, Iterator, List, Optional, Tuple, Union

    import ase
    import numpy as np
    import numpy.typing as npt

    Path = Union[str, os.PathLike[str]]


class OutputPoint:
    """A geometry at which something was calculated, with what was found there.

    ``numbers`` are atomic numbers (-1 a dummy atom, -2 a translation vector, 0 a ghost), ``positions`` an array of (atoms, 3) in ångström.
    ``energy`` is in hartree, None unless it converged; ``rms_force`` in atomic units. ``line`` counts from 1; ``step`` of an optimization
    and ``scan_point`` from 1 too, 0 outside one.
    """

    __slots__ = ("energy", "energy_kind", "frame", "line", "numbers", "positions", "rms_force", "scan_point", "step")

    def __init__(self, values: "Tuple[Any, ...]") -> None:
        self.line: int
        self.frame: str
        self.step: int
        self.scan_point: int
        self.energy: Optional[float]
        self.energy_kind: Optional[str]
        self.rms_force: Optional[float]
        self.numbers: npt.NDArray[np.intc]
        self.positions: npt.NDArray[np.float64]
        (self.line, self.frame, self.step, self.scan_point, self.energy, self.energy_kind, self.rms_force, self.numbers,
         self.positions) = values

    def __repr__(self) -> str:
        energy = "no energy" if self.energy is None else f"energy {self.energy:.8f}"
        return f"OutputPoint(line={self.line}, step={self.step}, {energy}, {len(self.numbers)} atoms)"

    def to_ase(self, charge: int = 0, multiplicity: int = 1) -> "ase.Atoms":
        """Return ASE's atoms; dummies are left out, ghosts are X, translation vectors become the cell."""
        import ase
        import numpy as np

        real = self.numbers >= 0
        atoms = ase.Atoms(numbers=self.numbers[real], positions=self.positions[real], info={"charge": charge, "multiplicity": multiplicity})
        vectors = self.positions[self.numbers == -2]
        if len(vectors):
            cell = np.zeros((3, 3))
            cell[: len(vectors)] = vectors[:3]
            atoms.set_cell(cell)
            atoms.set_pbc([i < len(vectors) for i in range(3)])
        return atoms


class Output:
    """An output of Gaussian, or a formatted checkpoint, as a file: text, gzip or xz.

    ``summary`` is what ``quor-gjf diagnose --json`` prints of it (see docs/json.md). Iterating reads the file anew and gives each point at
    which something was calculated, in their order.

    >>> import pathlib
    >>> path = pathlib.Path("water.log")
    >>> _ = path.write_text(" Entering Link 1 = /g16/l1.exe PID= 1.\\n -----\\n # hf/sto-3g\\n -----\\n Normal termination of Gaussian 16\\n")
    >>> output = gjf.Output(path)
    >>> output.termination, output.route
    ('normal', '# hf/sto-3g')
    """

    def __init__(self, path: "Path") -> None:
        """Read a file to its end. MissingFileError or FileError where that fails."""
        import json

        self.path = os.fspath(path)
        text, last, best = _told(self.path, lambda: _core.read_output(self.path))
        self.summary: Dict[str, Any] = json.loads(text)
        #: The last geometry at which something was calculated; None where there is none.
        self.last: Optional[OutputPoint] = OutputPoint(last) if last is not None else None
        #: The best of an optimization: the lowest energy, of a saddle the smallest forces, of a scan in its last point.
        self.best: Optional[OutputPoint] = OutputPoint(best) if best is not None else None

    def __repr__(self) -> str:
        return f"Output({self.path!r}, {self.termination!r})"

    def __iter__(self) -> "Iterator[OutputPoint]":
        points: List[OutputPoint] = []
        _told(self.path, lambda: _core.walk_output(self.path, lambda values: points.append(OutputPoint(values))))
        return iter(points)

    @property
    def termination(self) -> str:
        """How the last step ended: normal, error or unfinished."""
        return str(self.summary["termination"])

    @property
    def cause(self) -> "Optional[str]":
        """Why the job failed: an id of the table of failures; None where it did not, or nobody knows."""
        return self.summary.get("cause")

    @property
    def route(self) -> str:
        """The user's last route, never one that Gaussian wrote; empty where none was printed."""
        return str(self.summary.get("route", ""))

    @property
    def charge(self) -> "Optional[int]":
        """The charge of the whole: of ONIOM's real system, or the supermolecule; None where none was printed."""
        return self.summary.get("charge")

    @property
    def multiplicity(self) -> "Optional[int]":
        """The multiplicity of the whole; None where none was printed."""
        return self.summary.get("multiplicity")

    @property
    def energy(self) -> "Optional[float]":
        """The last finished energy of the last job in hartree; None where none converged."""
        energy = self.summary.get("energy")
        return None if energy is None else float(energy["value"])

    def to_ase(self, best: bool = False) -> "ase.Atoms":
        """Return the last geometry, or the best one, as ASE's atoms; ValueError where there is none."""
        point = self.best if best else self.last
        if point is None:
            raise ValueError(f"{self.path}: no geometry")
        return point.to_ase(self.charge or 0, self.multiplicity or 1)


def _told(path: str, read: "Callable[[], Any]") -> "Any":
    try:
        return read()
    except _core.OutputError as error:
        found = (FileError if os.path.exists(path) else MissingFileError)(str(error))
        found.filename = path
        raise found from None


def diagnose(paths: "Union[Path, Iterable[Path]]", threads: "Optional[int]" = None) -> "List[Dict[str, Any]]":
    """Return what happened to each of some outputs, as ``quor-gjf diagnose --json`` tells it (see docs/json.md).

    A file that cannot be read has ``error`` alone. ``threads``: how many are read at once; as many as the machine has processors when it is None.

    >>> gjf.diagnose("missing.log")[0]["error"]
    'Cannot open file: No such file or directory'
    """
    import json

    refuse_odd_arguments(threads, "return")
    names = [os.fspath(paths)] if isinstance(paths, (str, os.PathLike)) else [os.fspath(path) for path in paths]
    answers = _core.diagnose_many(names, threads or 0)
    return [json.loads(text) if not error else {"version": 1, "file": name, "error": error} for name, (text, error) in zip(names, answers)]
