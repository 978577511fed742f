"""Atoms: one, and the list of them."""
from __future__ import annotations

import math
from collections.abc import MutableSequence

from . import _core
from .errors import ParseError
from .indices import index_of

TYPE_CHECKING = False
if TYPE_CHECKING:
    from typing import Any, Dict, Iterable, Iterator, List, Mapping, Optional, Sequence, Union, overload

    import numpy as np
    import numpy.typing as npt

    Position = Union[Sequence[float], npt.NDArray[Any]]


class Atom:
    """One atom line.

    An atom made by itself is a value. One taken from ``job.atoms`` is a window on its place in the job: what is set goes to the
    job, and after atoms were added or removed it shows the atom that is at that place then. ``copy()`` gives a value.

    >>> atom = gjf.Atom("C", (0, 0, 1.5), freeze=-1, layer="H", params={"ResName": "ALA"})
    >>> atom
    Atom('C', (0.0, 0.0, 1.5), freeze=-1, layer='H', params={'ResName': 'ALA'})
    >>> job.atoms[1].layer = "L"
    >>> job.atoms[1].layer
    'L'
    """

    __slots__ = ("_job", "_index", "_value")
    __hash__ = None  # type: ignore[assignment]

    def __init__(self, element: str, position: Position = (0.0, 0.0, 0.0), *, freeze: Optional[int] = None,
                 layer: Optional[str] = None, mm_type: Optional[str] = None, mm_charge: Optional[float] = None,
                 params: Optional[Mapping[str, str]] = None) -> None:
        self._job: Optional[_core.Job] = None
        self._index = -1
        self._value = _core.AtomValue()
        self.element = element
        self.position = position  # type: ignore[assignment]
        self.freeze = freeze
        self.layer = layer
        self.mm_type = mm_type
        self.mm_charge = mm_charge
        self.params = dict(params or {})

    @classmethod
    def _at(cls, job: _core.Job, index: int) -> "Atom":
        atom = cls.__new__(cls)
        atom._job = job
        atom._index = index
        return atom

    @classmethod
    def _of(cls, value: _core.AtomValue) -> "Atom":
        atom = cls.__new__(cls)
        atom._job = None
        atom._index = -1
        atom._value = value
        return atom

    def _look(self) -> _core.AtomValue:
        return self._value if self._job is None else self._job.atom(self._index)

    def _set(self, name: str, value: Any) -> None:
        atom = self._look()
        setattr(atom, name, value)
        if self._job is not None:
            self._job.replace_atom(self._index, atom)

    @property
    def index(self) -> Optional[int]:
        """The place in the job, from 0; None for an atom that belongs to no job."""
        return None if self._job is None else self._index

    @property
    def element(self) -> str:
        """Element symbol or atom name, as written."""
        return self._look().element

    @element.setter
    def element(self, element: str) -> None:
        if not element or any(c.isspace() or c in ",()" for c in element):
            raise ValueError(f"not an element or atom name: {element!r}")
        self._set("element", element)

    @property
    def symbol(self) -> str:
        """The chemical symbol, also where the file has an atomic number or a name such as C12 or HW1; Bq of a ghost, X of a dummy
        atom, Tv of a translation vector, and the name as written when it is none of these.

        >>> [gjf.Atom(name).symbol for name in ("cl", "6", "C12", "HC", "Bq", "TV", "?")]
        ['Cl', 'C', 'C', 'H', 'Bq', 'Tv', '?']
        """
        return self._look().symbol

    @property
    def position(self) -> "npt.NDArray[np.float64]":
        """Coordinates in the job's unit; NaN where a variable has no value. Setting drops the texts as written."""
        import numpy as np  # takes longer than all else of the package: not before an array is asked for

        array = np.array(self._look().position if self._job is None else self._job.position(self._index))
        array.flags.writeable = False
        return array

    @position.setter
    def position(self, position: Position) -> None:
        x, y, z = (float(value) for value in position)
        if not all(map(math.isfinite, (x, y, z))):
            raise ValueError("a position must be finite")
        self._set("position", (x, y, z))

    @property
    def position_texts(self) -> "tuple[str, str, str]":
        """Coordinates as written: numbers or names of variables; empty after the position was set."""
        return self._look().position_texts

    @property
    def freeze(self) -> Optional[int]:
        """Freeze code: -1 frozen, 0 free, None when there is none."""
        return self._look().freeze

    @freeze.setter
    def freeze(self, code: Optional[int]) -> None:
        self._set("freeze", code)

    @property
    def layer(self) -> Optional[str]:
        """ONIOM layer as written, or None. ``job.set_layer`` also gives the other atoms a layer."""
        return self._look().layer

    @layer.setter
    def layer(self, layer: Optional[str]) -> None:
        self._set("layer", layer)

    @property
    def mm_type(self) -> Optional[str]:
        """Molecular-mechanics atom type, or None."""
        return self._look().mm_type

    @mm_type.setter
    def mm_type(self, mm_type: Optional[str]) -> None:
        self._set("mm_type", mm_type)

    @property
    def mm_charge(self) -> Optional[float]:
        """Molecular-mechanics partial charge in elementary charges, or None."""
        return self._look().mm_charge

    @mm_charge.setter
    def mm_charge(self, charge: Optional[float]) -> None:
        if charge is not None and not math.isfinite(charge):
            raise ParseError("GJF Parse Error: Atom MM charge must be finite")
        self._set("mm_charge", charge)

    @property
    def params(self) -> Dict[str, str]:
        """The parameters in parentheses, as a copy; set a whole dict to change them."""
        return self._look().params

    @params.setter
    def params(self, params: Mapping[str, str]) -> None:
        self._set("params", dict(params))

    def param(self, name: str) -> Optional[str]:
        """Return a parameter's value, whatever the letter case of its name, or None.

        >>> gjf.Atom("C", params={"PDBName": "CA", "ResName": "ALA"}).param("resname")
        'ALA'
        """
        return next((value for key, value in self.params.items() if key.lower() == name.lower()), None)

    @property
    def fragment(self) -> Optional[str]:
        """The fragment, or None."""
        return self.param("fragment")

    def copy(self) -> "Atom":
        """Return the atom as a value of its own."""
        return Atom._of(self._look().copy())

    __copy__ = copy

    def __deepcopy__(self, memo: Any) -> "Atom":
        return self.copy()

    def __reduce__(self) -> Any:
        if not all(map(math.isfinite, self._look().position)):
            raise TypeError("an atom whose coordinates are variables cannot be pickled apart from its job")
        return _atom_from, (self.element, self._look().position, self._labels())

    def _labels(self) -> Dict[str, Any]:
        labels = {name: getattr(self, name) for name in ("freeze", "layer", "mm_type", "mm_charge", "params")}
        return {name: value for name, value in labels.items() if value is not None and value != {}}

    def __eq__(self, other: object) -> bool:
        if not isinstance(other, Atom):
            return NotImplemented
        import numpy as np

        same_place = np.array_equal(self.position, other.position, equal_nan=True)
        return same_place and self.element == other.element and self._labels() == other._labels()

    def __repr__(self) -> str:
        x, y, z = (float(value) for value in self.position)
        labels = "".join(f", {name}={value!r}" for name, value in self._labels().items())
        return f"Atom({self.element!r}, ({x}, {y}, {z}){labels})"


def _atom_from(element: str, position: Position, labels: Dict[str, Any]) -> Atom:
    return Atom(element, position, **labels)


class Atoms(MutableSequence[Atom]):
    """The atoms of a job, as a list. Bonds are renumbered when atoms come and go.

    >>> job.atoms.append(gjf.Atom("He", (5, 0, 0)))
    >>> [atom.element for atom in job.atoms]
    ['O', 'H', 'H', 'He']
    >>> del job.atoms[0]
    >>> len(job.atoms), len(job.bonds)
    (3, 0)
    """

    __slots__ = ("_job",)

    def __init__(self, job: _core.Job) -> None:
        self._job = job

    def __len__(self) -> int:
        return self._job.atom_count()

    if TYPE_CHECKING:
        @overload
        def __getitem__(self, index: int) -> Atom: ...

        @overload
        def __getitem__(self, index: slice) -> List[Atom]: ...

    def __getitem__(self, index: Union[int, slice]) -> Union[Atom, List[Atom]]:
        if isinstance(index, slice):
            return [Atom._at(self._job, i) for i in range(len(self))[index]]
        return Atom._at(self._job, index_of(int(index), len(self)))

    def __iter__(self) -> Iterator[Atom]:
        for index in range(len(self)):
            yield Atom._at(self._job, index)

    def __setitem__(self, index: Any, atom: Any) -> None:
        if isinstance(index, slice):
            raise TypeError("atoms are replaced one by one")
        self._job.replace_atom(index_of(int(index), len(self)), _value_of(atom))

    def __delitem__(self, index: Union[int, slice]) -> None:
        places = list(range(len(self)))[index] if isinstance(index, slice) else [index_of(int(index), len(self))]
        self._job.remove_atoms(places)

    def insert(self, index: int, atom: Atom) -> None:
        """Put an atom before the one at ``index``."""
        count = len(self)
        place = max(0, index + count) if index < 0 else min(index, count)
        self._job.add_atom(_value_of(atom), [])
        if place < count:
            self._job.move_atom(count, place)

    def pop(self, index: int = -1) -> Atom:
        """Take an atom out of the job and return it as a value."""
        atom = self[index].copy()
        del self[index]
        return atom

    def reverse(self) -> None:
        """Turn the order of the atoms round."""
        self._job.reorder_atoms(list(range(len(self)))[::-1])

    def clear(self) -> None:
        """Remove all atoms and bonds."""
        self._job.clear_atoms()

    def extend(self, atoms: Iterable[Atom]) -> None:
        """Add atoms at the end."""
        for atom in list(atoms):
            self.append(atom.copy())

    def __eq__(self, other: object) -> bool:
        if not isinstance(other, (Atoms, list, tuple)):
            return NotImplemented
        return list(self) == list(other)

    def __repr__(self) -> str:
        return f"<{len(self)} atoms>"


def _value_of(atom: Atom) -> _core.AtomValue:
    if not isinstance(atom, Atom):
        raise TypeError(f"an Atom is wanted, not {type(atom).__name__}")
    return atom._look()
