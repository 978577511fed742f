"""One job, and a file of several."""
from __future__ import annotations

import json
import os
from typing import TYPE_CHECKING, Any, Dict, Iterable, List, NamedTuple, Optional, Sequence, Tuple, Union

import numpy as np
import numpy.typing as npt

from . import _core
from .atoms import Atom, Atoms
from .bonds import Bonds
from .errors import ParseError, file_error
from .route import Route
from .sections import Sections
from .selection import Selection, index_of, select

if TYPE_CHECKING:
    import ase
    import pandas

PathLike = Union[str, bytes, "os.PathLike[str]", "os.PathLike[bytes]"]
AtomLike = Union[Atom, Tuple[str, Sequence[float]], Tuple[str, float, float, float]]

LINK0_NAMES = ("chk", "oldchk", "rwf", "mem", "nproc", "cpu")


class ChargeSpin(NamedTuple):
    """A charge and a spin multiplicity."""

    charge: int
    multiplicity: int


def _atom(entry: AtomLike) -> Atom:
    if isinstance(entry, Atom):
        return entry
    element, *rest = entry
    return Atom(element, rest if len(rest) == 3 else rest[0])  # type: ignore[arg-type]


class Job:
    """One Gaussian job. It is used by one thread at a time.

    ``str(job)`` is its text. In a job that was read, what was not changed keeps its bytes: comments, columns, digits, line ends;
    and sections that name atoms follow them. A job that was made is written in a fixed layout. What cannot be written so raises
    ``WriteError``.

    >>> job = gjf.Job("#p hf/sto-3g opt", "Hydrogen", atoms=[("H", (0, 0, 0)), ("H", (0, 0, 0.74))], mem="1GB")
    >>> job
    <Job 'Hydrogen', #p hf/sto-3g opt, 2 atoms, charge 0, multiplicity 1>
    >>> print(job)
    %mem=1GB
    #p hf/sto-3g opt 
    <BLANKLINE>
    Hydrogen
    <BLANKLINE>
    0 1
    H                                           0.000000    0.000000    0.000000       
    H                                           0.000000    0.000000    0.740000       
    <BLANKLINE>
    <BLANKLINE>
    <BLANKLINE>
    """

    __slots__ = ("_native", "path", "__weakref__")
    __hash__ = None  # type: ignore[assignment]

    path: Optional[str]
    """Where the job was read from, or None."""

    def __init__(self, route: str = "#", title: str = "", charge: int = 0, multiplicity: int = 1, atoms: Iterable[AtomLike] = (), *,
                 bonds: Iterable[Tuple[int, int, float]] = (), chk: Optional[str] = None, oldchk: Optional[str] = None,
                 rwf: Optional[str] = None, mem: Optional[str] = None, nproc: Optional[int] = None,
                 cpu: Optional[str] = None) -> None:
        self._native = _core.Job()
        self.path = None
        self.route = route  # type: ignore[assignment]
        self.title = title
        self._native.set_charge_and_multiplicity(charge, multiplicity)
        for name, value in zip(LINK0_NAMES, (chk, oldchk, rwf, mem, nproc, cpu)):
            setattr(self, name, value)
        self.atoms.extend(_atom(entry) for entry in atoms)
        for a, b, order in bonds:
            self.bonds[a, b] = order

    @classmethod
    def _of(cls, native: _core.Job, path: Optional[str] = None) -> "Job":
        job = cls.__new__(cls)
        job._native = native
        job.path = path
        return job

    # --- Text and files

    def __str__(self) -> str:
        return self._native.text(False)

    def to_text(self, *, force: bool = False) -> str:
        """Return the text, as ``str(job)`` does.

        ``force``: write where ``str(job)`` raises WriteError. A section that names atoms in a form that cannot follow them stays as it
        is; a job whose text cannot take the change at all is written in the fixed layout, which leaves comments out.

        >>> print(job.to_text().splitlines()[1])
        #p b3lyp/6-31g(d) opt freq geom=connectivity
        """
        return self._native.text(force)

    def save(self, path: Optional[PathLike] = None, *, force: bool = False) -> None:
        """Write the job to a file, whole or not at all; without a path to the one that it was read from.

        Other jobs of that file stay as they are. Raises WriteError for a job that cannot be written without loss, and when the file
        that the job was read from has changed meanwhile; ``force`` writes all the same (see ``to_text``). FileError when the
        file cannot be written.

        >>> job.save("water.gjf")
        >>> gjf.read("water.gjf") == job
        True
        """
        target = _target(path, self.path)
        try:
            self._native.save(target, _is_own(target, self.path), self.path is None, force)
        except ParseError as error:
            raise file_error(error, target) from None
        if self.path is None and os.path.isfile(target):  # a pipe cannot be saved to again
            self.path = target

    def fixed_layout(self) -> str:
        """Return the text in the fixed layout, which leaves comments out; unchecked: it may lack what that layout cannot carry."""
        return self._native.fixed_layout()

    def report(self) -> str:
        """Return a report for people, as ``quor-gjf report`` prints it."""
        return self._native.report()

    def to_json(self) -> str:
        """Return the job as a JSON object, as it stands among the ``jobs`` of ``quor-gjf report --json`` (see docs/json.md).

        >>> import json
        >>> json.loads(job.to_json())["molecule"]["atoms"][1]
        {'element': 'H', 'x': 0.0, 'y': 0.7572, 'z': -0.4692}
        """
        return self._native.json()

    @property
    def is_as_read(self) -> bool:
        """Whether the job was read from text and still says what it said then."""
        return self._native.is_as_read()

    # --- Values

    def copy(self) -> "Job":
        """Return an independent copy."""
        return Job._of(self._native.copy(), self.path)

    __copy__ = copy

    def __deepcopy__(self, memo: Any) -> "Job":
        return self.copy()

    def __reduce__(self) -> Any:
        return Job._of, (self._native, self.path)

    def __eq__(self, other: object) -> bool:
        """Jobs are equal when they say the same; comments, spacing and digits beyond the value do not count."""
        if not isinstance(other, Job):
            return NotImplemented
        return self.difference(other) is None

    def difference(self, other: "Job") -> Optional[str]:
        """Name the first part in which another job differs, or None.

        >>> other = job.copy()
        >>> other.charge = 1
        >>> job.difference(other)
        'charge and multiplicity'
        """
        return self._native.first_difference(other._native)

    def __repr__(self) -> str:
        count = len(self.symbols)
        title = " ".join(self.title.split())
        title = title if len(title) <= 40 else title[:37] + "..."
        return (f"<Job {title!r}, {self.route}, {count} atom{'' if count == 1 else 's'}, charge {self.charge}, "
                f"multiplicity {self.multiplicity}>")

    # --- Link 0

    @property
    def chk(self) -> Optional[str]:
        """Checkpoint file; None when there is none. So with the other Link 0 values; setting None takes the line away."""
        return self._native.chk

    @chk.setter
    def chk(self, value: Optional[str]) -> None:
        self._native.chk = value

    @property
    def oldchk(self) -> Optional[str]:
        """Checkpoint file to read from."""
        return self._native.oldchk

    @oldchk.setter
    def oldchk(self, value: Optional[str]) -> None:
        self._native.oldchk = value

    @property
    def rwf(self) -> Optional[str]:
        """Read-write file."""
        return self._native.rwf

    @rwf.setter
    def rwf(self, value: Optional[str]) -> None:
        self._native.rwf = value

    @property
    def mem(self) -> Optional[str]:
        """Memory with its unit, as in ``"8GB"``."""
        return self._native.mem

    @mem.setter
    def mem(self, value: Optional[str]) -> None:
        self._native.mem = value

    @property
    def nproc(self) -> Optional[int]:
        """Number of processors."""
        return self._native.nproc

    @nproc.setter
    def nproc(self, value: Optional[int]) -> None:
        self._native.nproc = value

    @property
    def cpu(self) -> Optional[str]:
        """List of processors."""
        return self._native.cpu

    @cpu.setter
    def cpu(self, value: Optional[str]) -> None:
        self._native.cpu = value

    @property
    def other_link0_lines(self) -> List[str]:
        """Every other Link 0 line, whole; set a list to change them."""
        return self._native.other_link0_lines

    @other_link0_lines.setter
    def other_link0_lines(self, lines: Iterable[str]) -> None:
        self._native.other_link0_lines = list(lines)

    # --- Route, title, charge and multiplicity

    @property
    def route(self) -> Route:
        """The route; a text can be set."""
        return Route(self._native)

    @route.setter
    def route(self, route: Union[str, Route]) -> None:
        self._native.set_route_line(str(route))

    @property
    def title(self) -> str:
        """The title; lines are separated by line feeds."""
        return self._native.title

    @title.setter
    def title(self, title: str) -> None:
        self._native.title = title

    @property
    def overlays(self) -> Optional[str]:
        """Overlay input behind the route, or None."""
        return self._native.overlays

    @overlays.setter
    def overlays(self, text: Optional[str]) -> None:
        self._native.overlays = text

    @property
    def charge(self) -> int:
        """Charge of the first pair."""
        return self._native.charge

    @charge.setter
    def charge(self, charge: int) -> None:
        self._native.set_charge_and_multiplicity(charge, self.multiplicity)

    @property
    def multiplicity(self) -> int:
        """Spin multiplicity of the first pair; 0 when the job has none."""
        return self._native.multiplicity

    @multiplicity.setter
    def multiplicity(self, multiplicity: int) -> None:
        self._native.set_charge_and_multiplicity(self.charge, multiplicity)

    @property
    def pairs(self) -> List[ChargeSpin]:
        """All pairs of charge and multiplicity, those of layers or fragments included; set a list to change them.

        >>> job.pairs = [(0, 1), (1, 2)]
        >>> job.pairs
        [ChargeSpin(charge=0, multiplicity=1), ChargeSpin(charge=1, multiplicity=2)]
        """
        return [ChargeSpin(*pair) for pair in self._native.pairs]

    @pairs.setter
    def pairs(self, pairs: Iterable[Tuple[int, int]]) -> None:
        self._native.pairs = [(charge, multiplicity) for charge, multiplicity in pairs]

    # --- Molecule

    @property
    def atoms(self) -> Atoms:
        """The atoms, as a list. Empty for a Z-matrix, and where the molecule comes from a checkpoint."""
        return Atoms(self)

    @atoms.setter
    def atoms(self, atoms: Iterable[AtomLike]) -> None:
        values = [_atom(entry).copy() for entry in atoms]
        self.atoms.clear()
        self.atoms.extend(values)

    @property
    def is_zmatrix(self) -> bool:
        """Whether the molecule is a Z-matrix."""
        return self._native.is_zmatrix()

    @property
    def zmatrix(self) -> List[Tuple[str, Optional[Tuple[int, str]], Optional[Tuple[int, str]], Optional[Tuple[int, str]]]]:
        """Z-matrix rows: label, then bond, angle and dihedral, each the atom counted from 1 and the value as written."""
        return self._native.zmatrix()

    @property
    def variables(self) -> Dict[str, str]:
        """Variables of the molecule by name, as written."""
        return self._native.variables()

    @property
    def constants(self) -> Dict[str, str]:
        """Constants of a Z-matrix by name, as written."""
        return self._native.constants()

    @property
    def positions(self) -> "npt.NDArray[np.float64]":
        """Cartesian coordinates as an array of shape (atoms, 3), in the job's unit (ångström unless the route says otherwise).

        The array is a copy that cannot be written to: set a whole array to change the job. Setting drops the coordinates as they were
        written, so the new numbers are written. Variables stand for their values. The rows of a Z-matrix stand where Gaussian puts
        them: the first at the origin, the second on the z axis, the third in the xz plane; their positions cannot be set (ValueError).
        An atom whose place is not known has NaN.

        >>> job.positions = job.positions + [0, 0, 1]
        >>> job.positions[0]
        array([0.    , 0.    , 1.1173])
        """
        array = self._native.positions
        array.flags.writeable = False
        return array

    @positions.setter
    def positions(self, positions: Any) -> None:
        if self.is_zmatrix:
            raise ValueError("the molecule is a Z-matrix: its positions cannot be set")
        self._native.positions = np.asarray(positions, dtype=float)

    @property
    def symbols(self) -> List[str]:
        """Chemical symbols, as of ``Atom.symbol``; of a Z-matrix too."""
        return self._native.symbols()

    @property
    def bonds(self) -> Bonds:
        """The bonds; (a, b, order) triples can be set."""
        return Bonds(self)

    @bonds.setter
    def bonds(self, bonds: Iterable[Tuple[int, int, float]]) -> None:
        triples = [(a, b, float(order)) for a, b, order in bonds]
        changed = self.copy()
        changed.bonds.clear()
        for a, b, order in triples:
            changed.bonds[a, b] = order
        self._native.assign(changed._native)

    @property
    def sections(self) -> Sections:
        """The extra input sections."""
        return Sections(self)

    # --- Edits of atoms

    def select(self, selection: Selection) -> List[int]:
        """Return the indices that a selection names: see ``quor_gjf.Selection``."""
        return select(self, selection)

    def add_atom(self, atom: AtomLike, bonds: Union[Dict[int, float], Iterable[Tuple[int, float]]] = ()) -> int:
        """Append an atom, with the orders of its bonds to atoms that are there; return its index.

        >>> job.add_atom(("H", (0, 0, 2)), bonds={0: 1.0})
        3
        """
        pairs = list(bonds.items() if isinstance(bonds, dict) else bonds)
        self._native.add_atom(_atom(atom)._look(), pairs)
        return len(self.atoms) - 1

    def remove_atoms(self, selection: Selection) -> None:
        """Remove atoms and their bonds."""
        self._native.remove_atoms(select(self, selection))

    def move_atom(self, start: int, end: int) -> None:
        """Take an atom out at one place and put it in at another."""
        count = len(self.atoms)
        self._native.move_atom(index_of(start, count), index_of(end, count))

    def reorder(self, order: Sequence[int]) -> None:
        """Put the old atom ``order[i]`` at place i, for all atoms."""
        count = len(self.atoms)
        self._native.reorder_atoms([index_of(int(index), count) for index in order])

    def move_to_end(self, selection: Selection) -> None:
        """Put the selected atoms last."""
        self._native.move_atoms_to_end(select(self, selection))

    def move_to_beginning(self, selection: Selection) -> None:
        """Put the selected atoms first."""
        self._native.move_atoms_to_beginning(select(self, selection))

    def translate(self, shift: Sequence[float], selection: Selection = None) -> None:
        """Shift atoms by a vector."""
        x, y, z = (float(value) for value in shift)
        self._native.translate(select(self, selection), x, y, z)

    def scale(self, factor: float, selection: Selection = None) -> None:
        """Multiply coordinates by a factor."""
        self._native.scale(select(self, selection), factor)

    def rotate(self, angles: Sequence[float], selection: Selection = None) -> None:
        """Rotate atoms about the origin by angles in radians: about x, then y, then z."""
        a, b, c = (float(value) for value in angles)
        self._native.rotate(select(self, selection), a, b, c)

    def use_numeric_coordinates(self) -> None:
        """Drop the texts of numeric coordinates, so that the numbers are written with six decimals."""
        self._native.use_numeric_coordinates()

    @property
    def touching_coordinates(self) -> List[int]:
        """Atoms whose coordinate texts are too wide for the fixed layout; ``use_numeric_coordinates`` mends that."""
        return self._native.atoms_with_touching_coordinates()

    # --- Labels

    def freeze(self, selection: Selection = None, code: Optional[int] = -1) -> None:
        """Set the freeze code of atoms: -1 frozen, 0 free; None takes it away.

        >>> job.freeze("O")
        >>> job.frozen
        [0]
        """
        indices = select(self, selection)
        if code is None:
            self._native.clear_freeze(indices)
        else:
            self._native.set_freeze(indices, code)

    @property
    def freeze_codes(self) -> List[Optional[int]]:
        """Freeze code of each atom."""
        return [atom.freeze for atom in self._native.atom_values()]

    @property
    def frozen(self) -> List[int]:
        """Atoms whose freeze code is there and not 0."""
        return [index for index, code in enumerate(self.freeze_codes) if code]

    def set_layer(self, layer: str, selection: Selection = None) -> None:
        """Put atoms into an ONIOM layer. As soon as one atom is in a layer, the others without one go to ``"L"``.

        >>> job.set_layer("H", "O")
        >>> job.layers, job.layer_counts
        (['H', 'L', 'L'], {'H': 1, 'L': 2})
        """
        self._native.set_layer(select(self, selection), layer)

    def complete_layers(self) -> None:
        """Put atoms without a layer into ``"L"`` when others have one."""
        self._native.ensure_layers()

    @property
    def layers(self) -> List[Optional[str]]:
        """ONIOM layer of each atom."""
        return [atom.layer for atom in self._native.atom_values()]

    @property
    def layer_counts(self) -> Dict[str, int]:
        """Number of atoms in each layer; empty for a job without layers."""
        return self._native.layer_counts()

    @property
    def is_oniom(self) -> bool:
        """Whether an atom is in a layer."""
        return bool(self.layer_counts)

    def set_fragment(self, fragment: Union[int, str, None], selection: Selection = None) -> None:
        """Put atoms into a fragment; None takes them out of theirs.

        >>> job.set_fragment(2, [1, 2])
        >>> job.fragments
        [None, '2', '2']
        """
        self._native.set_fragment(select(self, selection), "" if fragment is None else str(fragment))

    @property
    def fragments(self) -> List[Optional[str]]:
        """Fragment of each atom."""
        return [self._native.fragment(index) for index in range(len(self.atoms))]

    def set_mm(self, selection: Selection = None, *, type: Optional[str] = None, charge: Optional[float] = None) -> None:
        """Set the molecular-mechanics type, the charge, or both; an empty type takes the type away."""
        if charge is not None and not np.isfinite(charge):
            raise ParseError("GJF Parse Error: Atom MM charge must be finite")
        for index in select(self, selection):
            if type is not None:
                self._native.set_mm_type(index, type)
            if charge is not None:
                self._native.set_mm_charge(index, charge)

    @property
    def mm_parameters(self) -> Optional[str]:
        """The molecular-mechanics parameter section; None takes it away."""
        return self.sections.text("MM_PARAMETERS")

    @mm_parameters.setter
    def mm_parameters(self, text: Optional[str]) -> None:
        if text is None:
            self.sections.remove("MM_PARAMETERS")
        else:
            self.sections.put("MM_PARAMETERS", text)

    @property
    def elements(self) -> Dict[str, int]:
        """Number of atoms of each element as written, by name.

        >>> job.elements
        {'H': 2, 'O': 1}
        """
        names = self._native.elements()
        return {name: names.count(name) for name in sorted(set(names))}

    def ranges(self, selection: Selection = None) -> str:
        """Return atoms as Gaussian writes them: numbers from 1, three or more in a row as a range.

        >>> job.ranges([2, 1, 0])
        '1-3'
        """
        return self._native.format_index_ranges(select(self, selection))

    # --- Friends

    def to_ase(self) -> "ase.Atoms":
        """Return ASE atoms, in ångström: frozen atoms as FixAtoms, translation vectors as the cell; charge, multiplicity and
        title in ``info``."""
        from .friends import to_ase

        return to_ase(self)

    def to_xyz(self) -> str:
        """Return the molecule in XYZ format, in ångström."""
        from .friends import to_xyz

        return to_xyz(self)

    def to_frame(self) -> "pandas.DataFrame":
        """Return the atoms as a pandas frame, one row an atom."""
        from .friends import to_frame

        return to_frame(self)


class Jobs(List[Job]):
    """The jobs of a file, as a list that can be written: ``str(jobs)`` and ``save``.

    What stands between jobs of one file is kept while they are in their order.

    >>> jobs = gjf.Jobs([job, job.copy()])
    >>> jobs[1].route.keywords["freq"] = None
    >>> str(jobs).count("--Link1--")
    1
    """

    path: Optional[str] = None
    _source: Optional[_core.Source] = None

    def __str__(self) -> str:
        return self.to_text()

    def to_text(self, *, force: bool = False) -> str:
        """Return the text of all jobs, as ``str(jobs)`` does; ``force`` as in ``Job.to_text``."""
        return _core.file_text([job._native for job in self], force)

    def save(self, path: Optional[PathLike] = None, *, force: bool = False) -> None:
        """Write all jobs to one file, whole or not at all; without a path to the one that they were read from.

        Raises WriteError as ``Job.save`` does, unless ``force``.
        """
        target = _target(path, self.path)
        own = _is_own(target, self.path)
        try:
            self._source = _core.save_jobs([job._native for job in self], self._source, target, own, self.path is None, force)
        except ParseError as error:
            raise file_error(error, target) from None
        if self.path is None and os.path.isfile(target):  # a pipe cannot be saved to again
            self.path = target

    def to_json(self) -> str:
        """Return all jobs as one JSON object, which is what ``quor-gjf report --json`` prints for their file."""
        head = f'{{"version":{_core.Job.json_version},"file":{json.dumps(self.path or "-", ensure_ascii=False)},"jobs":['
        return head + ",".join(job.to_json() for job in self) + "]}"


def _target(path: Optional[PathLike], own: Optional[str]) -> str:
    target = own if path is None else os.fsdecode(path)
    if target is None:
        raise ValueError("a path is needed: the job was not read from a file")
    return target


def _is_own(target: str, path: Optional[str]) -> bool:
    if path is None:
        return False
    return target == path or (os.path.exists(target) and os.path.exists(path) and os.path.samefile(target, path))
