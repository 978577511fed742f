"""Classes of named fields, as ``typing.NamedTuple`` makes them; importing ``typing`` takes as long as all of the package."""
from __future__ import annotations

from collections import namedtuple

TYPE_CHECKING = False
if TYPE_CHECKING:
    from typing import Any


class _Named(type):
    def __new__(mcs, name: str, bases: "tuple[type, ...]", members: "dict[str, Any]") -> type:
        if not bases:
            return super().__new__(mcs, name, bases, members)
        fields = members["__annotations__"]
        defaults = [members.pop(field) for field in fields if field in members]
        return type(name, (namedtuple(name, fields, defaults=defaults),), {"__slots__": (), **members})


class NamedTuple(metaclass=_Named):
    """The base of such a class, which is a tuple and none of this."""
