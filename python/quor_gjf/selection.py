"""Selections of atoms: indices, boolean arrays, texts, predicates."""
from __future__ import annotations

from typing import TYPE_CHECKING, Any, Callable, Iterable, List, Sequence, Union

import numpy as np
import numpy.typing as npt

if TYPE_CHECKING:
    from .atoms import Atom
    from .job import Job

Selection = Union[None, int, str, slice, Sequence[int], Sequence[bool], Sequence[str], "npt.NDArray[Any]", Iterable[int],
                  "Callable[[Atom], bool]"]
"""What names atoms: None for all, an index or several (from 0, negative ones from the end), a slice, one truth value for each
atom, a function of an atom, or a text or several, as ``quor-gjf edit --freeze`` takes them: ``"C and not layer:H"``, ``"within 5 of 12"``,
``"1-3"`` (in texts atoms count from 1); see docs/editing.md."""


def index_of(index: int, count: int, what: str = "atom") -> int:
    """Return an index from 0 for one that may be negative; IndexError when there is no such place."""
    place = index + count if index < 0 else index
    if not 0 <= place < count:
        raise IndexError(f"there is no {what} {index}: there are {count}")
    return place


def select(job: "Job", selection: Selection) -> List[int]:
    """Return the indices that a selection names, in its order; those of texts in the order of the atoms.

    ValueError for a text that cannot be read, or that names an atom that is not there.

    >>> from quor_gjf.selection import select
    >>> select(job, "H"), select(job, [-1, 0]), select(job, np.array([True, False, True]))
    ([1, 2], [2, 0], [0, 2])
    >>> select(job, lambda atom: atom.position[2] > 0)
    [0]
    >>> select(job, "2-3"), select(job, "within 1.0 of O and not O")
    ([1, 2], [1, 2])
    """
    count = len(job.atoms)
    if selection is None:
        return list(range(count))
    if isinstance(selection, slice):
        return list(range(count))[selection]
    if isinstance(selection, str):
        return job._native.select(selection)
    if callable(selection):
        return [index for index, atom in enumerate(job.atoms) if selection(atom)]
    if isinstance(selection, (bool, np.bool_)):
        raise TypeError("one truth value does not select atoms")
    if isinstance(selection, (int, np.integer)):
        return [index_of(int(selection), count)]
    return _by_list(job, selection, count)


def _by_list(job: "Job", entries: Any, count: int) -> List[int]:
    array = entries if isinstance(entries, np.ndarray) else np.asarray(list(entries))
    if array.size == 0 and array.dtype != bool:
        return []
    if array.ndim != 1:
        raise TypeError("a selection of atoms is one-dimensional")
    if array.dtype == bool:
        if len(array) != count:
            raise IndexError(f"a boolean selection has one entry an atom: {len(array)} for {count} atoms")
        return [int(index) for index in np.flatnonzero(array)]
    if array.dtype.kind in "iu":
        return [index_of(int(index), count) for index in array]
    if array.dtype.kind == "U":
        return sorted(set().union(*map(job._native.select, array.tolist())))
    raise TypeError(f"atoms cannot be selected by {array.dtype} values")
