"""Places in lists, as Python counts them."""
from __future__ import annotations


def index_of(index: int, count: int, what: str = "atom") -> int:
    """Return an index from 0 for one that may be negative; IndexError when there is no such place."""
    place = index + count if index < 0 else index
    if not 0 <= place < count:
        raise IndexError(f"there is no {what} {index}: there are {count}")
    return place
