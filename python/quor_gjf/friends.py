"""Jobs and the programs around them: ASE, XYZ, pandas. Each is imported when it is used."""
from __future__ import annotations

from typing import TYPE_CHECKING, Any, List, Optional

import numpy as np

from .atoms import Atom
from .job import Job

if TYPE_CHECKING:
    import ase
    import pandas

TRANSLATION_VECTOR = "Tv"
GHOST = "Bq"


def _angstrom(job: Job) -> Any:
    """Positions in ångström, whatever the route's unit; ValueError when an atom has none."""
    positions = job._native.positions_in_angstrom()
    if not np.isfinite(positions).all():
        raise ValueError("; ".join(dict.fromkeys(reason for _, reason in job._native.lost_atoms()[:5])))
    return positions


def to_ase(job: Job) -> "ase.Atoms":
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


def from_ase(atoms: "ase.Atoms", route: str = "#", charge: Optional[int] = None, multiplicity: Optional[int] = None,
             title: Optional[str] = None, **link0: Any) -> Job:
    """Make a job from ASE atoms. FixAtoms become freeze codes, periodic directions of the cell translation vectors.

    Charge, multiplicity and title are taken from ``info`` when they are not given, else from the initial charges and magnetic moments,
    else they are 0, 1 and the formula. ``link0``: ``mem="8GB"`` and the like, as for ``Job``.
    """
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


def to_xyz(job: Job) -> str:
    positions = _angstrom(job)
    comment = " ".join(job.title.split())
    lines = [f"{symbol:<2} {x:15.8f} {y:15.8f} {z:15.8f}" for symbol, (x, y, z) in zip(job.symbols, positions)]
    return "\n".join([str(len(lines)), comment, *lines, ""])


def to_frame(job: Job) -> "pandas.DataFrame":
    import pandas

    native = job._native
    x, y, z = native.positions.T
    # The rows of a Z-matrix have none of the fields behind the coordinates.
    atoms = native.atom_values() or [None] * len(x)

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
