"""The bonds of a job."""
from __future__ import annotations

from collections.abc import Collection

from . import _core
from .indices import index_of

TYPE_CHECKING = False
if TYPE_CHECKING:
    from typing import Iterator, List, NamedTuple, Tuple
else:
    from .named import NamedTuple


class Bond(NamedTuple):
    """Two atoms counted from 0, the smaller index first, and the order of their bond."""

    a: int
    b: int
    order: float


class Bonds(Collection[Bond]):
    """The bonds of a job's connectivity section: a collection, and a mapping from pairs of atoms to orders.

    >>> list(job.bonds)
    [Bond(a=0, b=1, order=1.0), Bond(a=0, b=2, order=1.0)]
    >>> job.bonds[1, 2] = 0.5
    >>> job.bonds[2, 1], (0, 1) in job.bonds, job.bonds.of(2)
    (0.5, True, [0, 1])
    >>> del job.bonds[1, 2]
    >>> job.bonds[1, 2]
    0.0
    """

    __slots__ = ("_job",)

    def __init__(self, job: _core.Job) -> None:
        self._job = job

    def _pair(self, pair: Tuple[int, int]) -> Tuple[int, int]:
        a, b = pair
        count = self._job.atom_count()
        return index_of(a, count), index_of(b, count)

    def __len__(self) -> int:
        return self._job.bond_count()

    def __iter__(self) -> Iterator[Bond]:
        return (Bond(*bond) for bond in self._job.bonds())

    def __contains__(self, pair: object) -> bool:
        if not isinstance(pair, tuple) or len(pair) not in (2, 3):
            return False
        found = {(bond.a, bond.b): bond for bond in self}.get((min(pair[:2]), max(pair[:2])))
        return found is not None and (len(pair) == 2 or found.order == pair[2])

    def __getitem__(self, pair: Tuple[int, int]) -> float:
        """Return the order of a bond, 0.0 when there is none."""
        return self._job.bond_order(*self._pair(pair))

    def __setitem__(self, pair: Tuple[int, int], order: float) -> None:
        self._job.set_bond_order(*self._pair(pair), order)

    def __delitem__(self, pair: Tuple[int, int]) -> None:
        self._job.remove_bond(*self._pair(pair))

    def of(self, index: int) -> List[int]:
        """Return the atoms bonded to an atom."""
        return self._job.neighbours(index_of(index, self._job.atom_count()))

    def clear(self) -> None:
        """Remove all bonds; an empty connectivity section stays."""
        self._job.clear_bonds()

    def __eq__(self, other: object) -> bool:
        if not isinstance(other, (Bonds, list, tuple)):
            return NotImplemented
        return sorted(self) == sorted(other)

    def __repr__(self) -> str:
        return f"<{len(self)} bonds>"
