"""Selections of atoms: indices, boolean arrays, texts, predicates."""
from __future__ import annotations

from . import _core
from .atoms import Atom, Atoms
from .indices import index_of

TYPE_CHECKING = False
if TYPE_CHECKING:
    from typing import Any, Callable, Iterable, List, Sequence, TypeAlias

    import numpy.typing as npt

Selection: TypeAlias = ("None | int | str | slice | Sequence[int] | Sequence[bool] | Sequence[str] | npt.NDArray[Any] | Iterable[int]"
                        " | Callable[[Atom], bool]")
"""What names atoms: None for all, an index or several (from 0, negative ones from the end), a slice, one truth value for each
atom, a function of an atom, or a text or several, as ``quor-gjf edit --freeze`` takes them: ``"C and not layer:H"``, ``"within 5 of 12"``,
``"1-3"`` (in texts atoms count from 1); see docs/editing.md."""


def select(job: _core.Job, selection: Selection) -> List[int]:
    """Return the indices that a selection names, in its order; those of texts in the order of the atoms.

    ValueError for a text that cannot be read, or that names an atom that is not there.

    >>> job.select("H"), job.select([-1, 0]), job.select(np.array([True, False, True]))
    ([1, 2], [2, 0], [0, 2])
    >>> job.select(lambda atom: atom.position[2] > 0)
    [0]
    >>> job.select("2-3"), job.select("within 1.0 of O and not O")
    ([1, 2], [1, 2])
    """
    count = job.atom_count()
    if selection is None:
        return list(range(count))
    if isinstance(selection, slice):
        return list(range(count))[selection]
    if isinstance(selection, str):
        return job.select(selection)
    if callable(selection):
        return [index for index, atom in enumerate(Atoms(job)) if selection(atom)]
    if isinstance(selection, int) and not isinstance(selection, bool):
        return [index_of(selection, count)]
    return _by_array(job, selection, count)


def _by_array(job: _core.Job, entries: Any, count: int) -> List[int]:
    import numpy as np

    if isinstance(entries, (bool, np.bool_)):
        raise TypeError("one truth value does not select atoms")
    if isinstance(entries, np.integer):
        return [index_of(int(entries), count)]
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
        return sorted(set().union(*map(job.select, array.tolist())))
    raise TypeError(f"atoms cannot be selected by {array.dtype} values")
