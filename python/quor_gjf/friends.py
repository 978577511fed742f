"""Jobs and the programs around them: ASE, XYZ, pandas. Each is imported when it is used."""
from __future__ import annotations

from .molecule import Molecule

TYPE_CHECKING = False
if TYPE_CHECKING:
    from typing import Any, List

    import ase
    import pandas

TRANSLATION_VECTOR = "Tv"
GHOST = "Bq"


def _angstrom(job: Molecule) -> Any:
    """Positions in ångström, whatever the route's unit; ValueError when an atom has none."""
    import numpy as np

    positions = job._native.positions_in_angstrom()
    if not np.isfinite(positions).all():
        raise ValueError("; ".join(dict.fromkeys(reason for _, reason in job._native.lost_atoms()[:5])))
    return positions


def to_ase(job: Molecule) -> "ase.Atoms":
    import numpy as np
    from ase import Atoms
    from ase.constraints import FixAtoms

    symbols = job.symbols
    positions = _angstrom(job)
    vectors = [i for i, symbol in enumerate(symbols) if symbol == TRANSLATION_VECTOR]
    real = [i for i, symbol in enumerate(symbols) if symbol != TRANSLATION_VECTOR]
    atoms = Atoms(symbols=["X" if symbols[i] == GHOST else symbols[i] for i in real], positions=positions[real],
                  info={"charge": job.charge, "multiplicity": job.multiplicity, "title": job.title})
    if len(vectors) > 3:
        raise ValueError("more than three translation vectors")
    if vectors:
        cell = np.zeros((3, 3))
        cell[: len(vectors)] = positions[vectors]
        atoms.set_cell(cell)
        atoms.set_pbc([i < len(vectors) for i in range(3)])
    frozen = {i for i, code in enumerate(job.freeze_codes) if code == -1}
    fixed = [place for place, i in enumerate(real) if i in frozen]
    if fixed:
        atoms.set_constraint(FixAtoms(indices=fixed))
    return atoms


def to_xyz(job: Molecule) -> str:
    positions = _angstrom(job)
    comment = " ".join(job.title.split())
    lines = [f"{symbol:<2} {x:15.8f} {y:15.8f} {z:15.8f}" for symbol, (x, y, z) in zip(job.symbols, positions)]
    return "\n".join([str(len(lines)), comment, *lines, ""])


def to_frame(job: Molecule) -> "pandas.DataFrame":
    import numpy as np
    import pandas

    native = job._native
    x, y, z = native.positions.T
    # The rows of a Z-matrix have none of the fields behind the coordinates.
    atoms: List[Any] = list(native.atom_values()) or [None] * len(x)

    def column(name: str) -> List[Any]:
        return [getattr(atom, name, None) for atom in atoms]

    frame = pandas.DataFrame({
        "element": native.elements(),
        "symbol": native.symbols(),
        "x": x,
        "y": y,
        "z": z,
        "freeze": pandas.array(column("freeze"), dtype="Int64"),
        "layer": column("layer"),
        "mm_type": column("mm_type"),
        "mm_charge": np.array(column("mm_charge"), dtype=float),
        "fragment": job.fragments or [None] * len(x),
    })
    frame.index.name = "atom"
    return frame
