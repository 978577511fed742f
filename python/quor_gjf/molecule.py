"""The molecule of a job: atoms, bonds and labels, and the sections behind it."""
from __future__ import annotations

import math

from .atoms import Atom, Atoms
from .bonds import Bonds
from .errors import ParseError
from .head import Head
from .indices import index_of
from .sections import Sections
from .selection import Selection, select

TYPE_CHECKING = False
if TYPE_CHECKING:
    from typing import Any, Dict, Iterable, List, Optional, Sequence, Tuple, Union

    import numpy as np
    import numpy.typing as npt

    AtomLike = Union[Atom, Tuple[str, Sequence[float]], Tuple[str, float, float, float]]


def atom_of(entry: AtomLike) -> Atom:
    """Return an atom for one, or for a pair of element and position."""
    if isinstance(entry, Atom):
        return entry
    element, *rest = entry
    return Atom(element, rest if len(rest) == 3 else rest[0])  # type: ignore[arg-type]


class Molecule(Head):
    """A job as far as its head, its atoms and its sections go."""

    __slots__ = ()

    @property
    def atoms(self) -> Atoms:
        """The atoms, as a list. Empty for a Z-matrix, and where the molecule comes from a checkpoint."""
        return Atoms(self._native)

    @atoms.setter
    def atoms(self, atoms: Iterable[AtomLike]) -> None:
        values = [atom_of(entry).copy() for entry in atoms]
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
        import numpy as np

        self._native.positions = np.asarray(positions, dtype=float)

    @property
    def symbols(self) -> List[str]:
        """Chemical symbols, as of ``Atom.symbol``; of a Z-matrix too."""
        return self._native.symbols()

    @property
    def bonds(self) -> Bonds:
        """The bonds; (a, b, order) triples can be set."""
        return Bonds(self._native)

    @bonds.setter
    def bonds(self, bonds: Iterable[Tuple[int, int, float]]) -> None:
        triples = [(a, b, float(order)) for a, b, order in bonds]
        changed = self._native.copy()
        Bonds(changed).clear()
        for a, b, order in triples:
            Bonds(changed)[a, b] = order
        self._native.assign(changed)

    @property
    def sections(self) -> Sections:
        """The extra input sections."""
        return Sections(self._native)

    # --- Edits of atoms

    def select(self, selection: Selection) -> List[int]:
        """Return the indices that a selection names: see ``quor_gjf.Selection``."""
        return select(self._native, selection)

    def add_atom(self, atom: AtomLike, bonds: Union[Dict[int, float], Iterable[Tuple[int, float]]] = ()) -> int:
        """Append an atom, with the orders of its bonds to atoms that are there; return its index.

        >>> job.add_atom(("H", (0, 0, 2)), bonds={0: 1.0})
        3
        """
        pairs = list(bonds.items() if isinstance(bonds, dict) else bonds)
        self._native.add_atom(atom_of(atom)._look(), pairs)
        return len(self.atoms) - 1

    def remove_atoms(self, selection: Selection) -> None:
        """Remove atoms and their bonds."""
        self._native.remove_atoms(select(self._native, selection))

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
        self._native.move_atoms_to_end(select(self._native, selection))

    def move_to_beginning(self, selection: Selection) -> None:
        """Put the selected atoms first."""
        self._native.move_atoms_to_beginning(select(self._native, selection))

    def translate(self, shift: Sequence[float], selection: Selection = None) -> None:
        """Shift atoms by a vector."""
        x, y, z = (float(value) for value in shift)
        self._native.translate(select(self._native, selection), x, y, z)

    def scale(self, factor: float, selection: Selection = None) -> None:
        """Multiply coordinates by a factor."""
        self._native.scale(select(self._native, selection), factor)

    def rotate(self, angles: Sequence[float], selection: Selection = None) -> None:
        """Rotate atoms about the origin by angles in radians: about x, then y, then z."""
        a, b, c = (float(value) for value in angles)
        self._native.rotate(select(self._native, selection), a, b, c)

    def set_units(self, unit: str) -> None:
        """Write the coordinates in ``"bohr"`` or ``"angstrom"``, and say so in the route; ParseError where lengths would not follow."""
        if unit not in ("bohr", "angstrom"):
            raise ValueError(f"not a unit of length: {unit!r}")
        self._native.set_length_unit(unit == "bohr")

    def set_element(self, symbol: str, selection: Selection = None) -> None:
        """Give atoms another element; ParseError for one whose label says what holds for its element alone.

        >>> job.set_element("F", "H")
        >>> job.symbols
        ['O', 'F', 'F']
        """
        for index in select(self._native, selection):
            self._native.set_element(index, symbol)

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
        indices = select(self._native, selection)
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
        self._native.set_layer(select(self._native, selection), layer)

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
        self._native.set_fragment(select(self._native, selection), "" if fragment is None else str(fragment))

    @property
    def fragments(self) -> List[Optional[str]]:
        """Fragment of each atom."""
        return [self._native.fragment(index) for index in range(len(self.atoms))]

    def set_mm(self, selection: Selection = None, *, type: Optional[str] = None, charge: Optional[float] = None) -> None:
        """Set the molecular-mechanics type, the charge, or both; an empty type takes the type away."""
        if charge is not None and not math.isfinite(charge):
            raise ParseError("GJF Parse Error: Atom MM charge must be finite")
        for index in select(self._native, selection):
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
        return self._native.format_index_ranges(select(self._native, selection))
