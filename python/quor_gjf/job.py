"""One job, and a file of several."""
from __future__ import annotations

import os

from . import _core, friends
from .errors import ParseError, file_error
from .head import LINK0_NAMES
from .molecule import Molecule, atom_of

TYPE_CHECKING = False
if TYPE_CHECKING:
    from typing import Any, Iterable, List, Optional, Tuple, Union

    import ase
    import pandas

    from .molecule import AtomLike

    PathLike = Union[str, bytes, os.PathLike[str], os.PathLike[bytes]]


class Job(Molecule):
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

    __slots__ = ("path", "__weakref__")
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
        self.atoms.extend(atom_of(entry) for entry in atoms)
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
    def functions(self) -> Optional[int]:
        """Number of basis functions, as Gaussian prints it behind NBasis; None when it is not known (``to_json`` tells why).

        >>> job.functions, job.electrons
        (19, 10)
        """
        return self._native.size()[0]

    @property
    def electrons(self) -> Optional[int]:
        """Number of electrons, without those that core potentials stand for; None when it is not known."""
        return self._native.size()[1]

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

    # --- Friends

    def to_ase(self) -> "ase.Atoms":
        """Return ASE atoms, in ångström: frozen atoms as FixAtoms, translation vectors as the cell; charge, multiplicity and
        title in ``info``."""
        return friends.to_ase(self)

    def to_xyz(self) -> str:
        """Return the molecule in XYZ format, in ångström."""
        return friends.to_xyz(self)

    def to_frame(self) -> "pandas.DataFrame":
        """Return the atoms as a pandas frame, one row an atom."""
        return friends.to_frame(self)


class UnreadableJob(Job):
    """A job of a file that cannot be read, among others that can.

    It keeps its text, which ``str(job)`` returns, and its place among the others when these are saved. Any other use raises the
    ParseError that tells why, with ``filename``, ``line`` and ``column``.

    >>> jobs = gjf.loads_all(str(job) + "\\n--Link1--\\n# hf/sto-3g\\n\\nbroken\\n\\n0 x\\nHe 0 0 0\\n")
    >>> jobs[1].title
    Traceback (most recent call last):
        ...
    quor_gjf.ParseError: GJF Parse Error: Job 2: GJF Parse Error: Invalid charge/spin line: 0 x
    """

    __slots__ = ("_handle",)
    _handle: _core.Job
    is_as_read = True  # nothing can change it

    @property
    def _native(self) -> _core.Job:  # type: ignore[override]
        """Raise the ParseError of the job."""
        try:
            self._handle.refuse_unreadable()
        except ParseError as error:
            raise (error if self.path is None else file_error(error, self.path)) from None
        return self._handle

    def __str__(self) -> str:
        return self._handle.text(False)

    def __repr__(self) -> str:
        return "<Job that cannot be read>"

    def copy(self) -> Job:
        """Return the job itself, since nothing can change it."""
        return self

    def __reduce__(self) -> Any:
        return _job_of_source, (self._handle.source, self._handle.index, self.path)


def _job_of_source(source: _core.Source, index: int, path: Optional[str]) -> Job:
    return job_of(source.job(index), path)


def job_of(native: _core.Job, path: Optional[str]) -> Job:
    """Return the job of a handle, also of one that cannot be read."""
    if native.readable():
        return Job._of(native, path)
    job = UnreadableJob.__new__(UnreadableJob)
    job._handle = native
    job.path = path
    return job


def _handle_of(job: Job) -> _core.Job:
    return job._handle if isinstance(job, UnreadableJob) else job._native


class Jobs(list[Job]):
    """The jobs of a file, as a list that can be written: ``str(jobs)`` and ``save``.

    What stands between jobs of one file is kept while they are in their order. A job that cannot be read, among others that can, is
    an ``UnreadableJob``.

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
        return _core.file_text([_handle_of(job) for job in self], force)

    def save(self, path: Optional[PathLike] = None, *, force: bool = False) -> None:
        """Write all jobs to one file, whole or not at all; without a path to the one that they were read from.

        Raises WriteError as ``Job.save`` does, unless ``force``.
        """
        target = _target(path, self.path)
        own = _is_own(target, self.path)
        try:
            self._source = _core.save_jobs([_handle_of(job) for job in self], self._source, target, own, self.path is None, force)
        except ParseError as error:
            raise file_error(error, target) from None
        if self.path is None and os.path.isfile(target):  # a pipe cannot be saved to again
            self.path = target

    def to_json(self) -> str:
        """Return all jobs as one JSON object, which is what ``quor-gjf report --json`` prints for their file."""
        return _core.report_json(self.path or "-", [_handle_of(job) for job in self])


def _target(path: Optional[PathLike], own: Optional[str]) -> str:
    target = own if path is None else os.fsdecode(path)
    if target is None:
        raise ValueError("a path is needed: the job was not read from a file")
    return target


def _is_own(target: str, path: Optional[str]) -> bool:
    if path is None:
        return False
    return target == path or (os.path.exists(target) and os.path.exists(path) and os.path.samefile(target, path))
