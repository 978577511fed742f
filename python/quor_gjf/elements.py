"""Chemical symbols, and which of them an atom label means."""
from __future__ import annotations

import re

SYMBOLS = (
    "X H He Li Be B C N O F Ne Na Mg Al Si P S Cl Ar K Ca Sc Ti V Cr Mn Fe Co Ni Cu Zn Ga Ge As Se Br Kr Rb Sr Y Zr Nb Mo Tc Ru "
    "Rh Pd Ag Cd In Sn Sb Te I Xe Cs Ba La Ce Pr Nd Pm Sm Eu Gd Tb Dy Ho Er Tm Yb Lu Hf Ta W Re Os Ir Pt Au Hg Tl Pb Bi Po At "
    "Rn Fr Ra Ac Th Pa U Np Pu Am Cm Bk Cf Es Fm Md No Lr Rf Db Sg Bh Hs Mt Ds Rg Cn Nh Fl Mc Lv Ts Og"
).split()
"""Symbols by atomic number; X, at 0, is a dummy atom."""

TRANSLATION_VECTOR = "Tv"
GHOST = "Bq"

_KNOWN = {symbol.lower(): symbol for symbol in [*SYMBOLS, TRANSLATION_VECTOR, GHOST]}
_SPLIT = re.compile(r"([A-Za-z]+)(-?)(.*)", re.DOTALL)


def symbol_of(element: str) -> str:
    """Return the chemical symbol that the element of an atom line means.

    Atomic numbers and labels with a number behind the symbol are understood; what is not stays as it is.

    >>> [symbol_of(text) for text in ("C", "cl", "6", "C12", "Bq", "TV", "C-Bq", "?")]
    ['C', 'Cl', 'C', 'C', 'Bq', 'Tv', 'Bq', '?']
    """
    if element in _SYMBOL_SET:
        return element
    if element.isascii() and element.isdigit():
        number = int(element)
        return SYMBOLS[number] if number < len(SYMBOLS) else element
    parts = _SPLIT.match(element)
    if parts is None:
        return element
    if parts[2] and parts[3].lower() == GHOST.lower():
        return GHOST
    return _KNOWN.get(parts[1].lower(), element)


_SYMBOL_SET = frozenset(_KNOWN.values())
