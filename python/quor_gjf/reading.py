"""Reading jobs from files and texts, and from ASE atoms."""
from __future__ import annotations

import contextlib
import os

from . import _core
from .atoms import Atom
from .checks import tell_change
from .errors import ParseError, file_error, refuse_odd_arguments
from .friends import TRANSLATION_VECTOR
from .job import Job, Jobs, job_of

TYPE_CHECKING = False
if TYPE_CHECKING:
    from typing import Any, Iterable, Iterator, List, Optional, Union

    import ase

    from .job import PathLike


def read(path: PathLike) -> Job:
    """Read the first job of a file.

    ParseError for malformed text, MissingFileError (a FileNotFoundError too) or FileError when the file cannot be read.

    >>> gjf.read("nowhere.gjf")
    Traceback (most recent call last):
        ...
    quor_gjf.errors.MissingFileError: GJF Parse Error: Cannot open file: nowhere.gjf
    """
    name = os.fsdecode(path)
    try:
        return Job._of(_core.read(name), name)
    except ParseError as error:
        raise file_error(error, name) from None


def read_all(path: PathLike) -> Jobs:
    """Read every job of a file.

    One that cannot be read, among others that can, is an ``UnreadableJob``: it keeps its text and its place, and raises when it is
    used. ParseError when none can be read.
    """
    name = os.fsdecode(path)
    try:
        return _jobs(_core.read_all(name), name)
    except ParseError as error:
        raise file_error(error, name) from None


def loads(text: str) -> Job:
    """Read the first job of a text.

    >>> gjf.loads("# hf/sto-3g\\n\\nHelium\\n\\n0 1\\nHe 0 0 0\\n").symbols
    ['He']
    """
    return Job._of(_core.loads(text))


def loads_all(text: str) -> Jobs:
    """Read every job of a text, as ``read_all`` does."""
    return _jobs(_core.loads_all(text), None)


def _jobs(natives: "List[_core.Job]", path: Optional[str]) -> Jobs:
    jobs = Jobs(job_of(native, path) for native in natives)
    jobs.path = path
    jobs._source = natives[0].source
    return jobs


def read_many(paths: Iterable[PathLike], threads: Optional[int] = None, *, all_jobs: bool = False,
              on_error: str = "raise") -> "List[Union[Job, Jobs, ParseError, None]]":
    """Read many files at once, and return one result a file, in the order of the paths.

    ``threads``: how many work at the same time; as many as the machine has processors when it is None. ``all_jobs``: a result
    is a ``Jobs`` of all jobs instead of the first job. ``on_error``: ``"raise"`` the first error, ``"return"`` errors in the places of
    their files, or ``"skip"``, which puts None there.
    """
    refuse_odd_arguments(threads, on_error)
    names = [os.fsdecode(path) for path in paths]
    results: List[Union[Job, Jobs, ParseError, None]] = []
    for name, (natives, message, line, column) in zip(names, _core.read_many(names, all_jobs, threads or 0)):
        if not message:
            results.append(_jobs(natives, name) if all_jobs else Job._of(natives[0], name))
            continue
        error = file_error(ParseError(message), name)
        error.line, error.column = line or None, column or None
        if on_error == "raise":
            raise error
        results.append(error if on_error == "return" else None)
    return results


@contextlib.contextmanager
def edit(path: PathLike, *, strict: bool = False) -> Iterator[Job]:
    """Read a file of one job, and save it at the end of the ``with`` block when the job was changed; not after an error.

    What was not changed keeps its bytes. WriteError when the file was changed by others meanwhile. What ``check`` finds in the new text
    and not in the old one is a ``CheckWarning`` each; with ``strict`` nothing is written then, and CheckError is raised.

    >>> job.save("water.gjf")
    >>> with gjf.edit("water.gjf") as water:
    ...     water.charge = 1
    ...     water.multiplicity = 2
    >>> gjf.read("water.gjf").pairs
    [ChargeSpin(charge=1, multiplicity=2)]
    """
    with edit_all(path, strict=strict) as jobs:
        if len(jobs) != 1:
            raise ValueError(f"{os.fsdecode(path)} holds {len(jobs)} jobs: use edit_all")
        yield jobs[0]


@contextlib.contextmanager
def edit_all(path: PathLike, *, strict: bool = False) -> Iterator[Jobs]:
    """Read all jobs of a file, and save them at the end of the ``with`` block when something was changed; not after an error.

    ``strict`` as for ``edit``.
    """
    jobs = read_all(path)
    before = list(jobs)
    text = _core.read_text(os.fsdecode(path))
    yield jobs
    same_jobs = len(jobs) == len(before) and all(a is b for a, b in zip(jobs, before))
    if not same_jobs or not all(job.is_as_read for job in jobs):
        tell_change(text, jobs, strict)
        jobs.save()


def from_ase(atoms: "ase.Atoms", route: str = "#", charge: Optional[int] = None, multiplicity: Optional[int] = None,
             title: Optional[str] = None, **link0: Any) -> Job:
    """Make a job from ASE atoms. FixAtoms become freeze codes, periodic directions of the cell translation vectors.

    Charge, multiplicity and title are taken from ``info`` when they are not given, else from the initial charges and magnetic moments,
    else they are 0, 1 and the formula. ``link0``: ``mem="8GB"`` and the like, as for ``Job``.
    """
    import numpy as np
    from ase.constraints import FixAtoms

    info = atoms.info
    if charge is None:
        charge = int(info.get("charge", round(float(atoms.get_initial_charges().sum()))))
    if multiplicity is None:
        moment = abs(float(atoms.get_initial_magnetic_moments().sum()))
        multiplicity = int(info.get("multiplicity", round(moment) + 1))
    if title is None:
        title = str(info.get("title") or atoms.get_chemical_formula())
    fixed = {int(i) for constraint in atoms.constraints if isinstance(constraint, FixAtoms) for i in constraint.get_indices()}
    entries: List[Atom] = [
        Atom(symbol, position, freeze=-1 if i in fixed else None)
        for i, (symbol, position) in enumerate(zip(atoms.get_chemical_symbols(), atoms.get_positions()))
    ]
    entries += [Atom(TRANSLATION_VECTOR, vector) for vector, periodic in zip(np.array(atoms.cell), atoms.pbc) if periodic]
    return Job(route, title, charge, multiplicity, entries, **link0)


def vocabulary_path() -> str:
    """Return the path of the route vocabulary in use."""
    return _core.vocabulary_path()
