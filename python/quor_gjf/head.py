"""The head of a job: Link 0, route, title, charge and multiplicity."""
from __future__ import annotations

from . import _core
from .route import Route

TYPE_CHECKING = False
if TYPE_CHECKING:
    from typing import Iterable, List, NamedTuple, Optional, Tuple, Union
else:
    from .named import NamedTuple

LINK0_NAMES = ("chk", "oldchk", "rwf", "mem", "nproc", "cpu")


class ChargeSpin(NamedTuple):
    """A charge and a spin multiplicity."""

    charge: int
    multiplicity: int


class Head:
    """What stands above the molecule of a job."""

    __slots__ = ("_native",)

    _native: _core.Job

    @property
    def chk(self) -> Optional[str]:
        """Checkpoint file; None when there is none. So with the other Link 0 values; setting None takes the line away."""
        return self._native.chk

    @chk.setter
    def chk(self, value: Optional[str]) -> None:
        self._native.chk = value

    @property
    def oldchk(self) -> Optional[str]:
        """Checkpoint file to read from."""
        return self._native.oldchk

    @oldchk.setter
    def oldchk(self, value: Optional[str]) -> None:
        self._native.oldchk = value

    @property
    def rwf(self) -> Optional[str]:
        """Read-write file."""
        return self._native.rwf

    @rwf.setter
    def rwf(self, value: Optional[str]) -> None:
        self._native.rwf = value

    @property
    def mem(self) -> Optional[str]:
        """Memory with its unit, as in ``"8GB"``."""
        return self._native.mem

    @mem.setter
    def mem(self, value: Optional[str]) -> None:
        self._native.mem = value

    @property
    def nproc(self) -> Optional[int]:
        """Number of processors."""
        return self._native.nproc

    @nproc.setter
    def nproc(self, value: Union[int, str, None]) -> None:
        # A text of digits, as in a file, is a number too.
        if isinstance(value, str):
            if not (value.isascii() and value.isdigit()):
                raise ValueError(f"not a number of processors: {value!r}")
            value = int(value)
        self._native.nproc = value

    @property
    def cpu(self) -> Optional[str]:
        """List of processors."""
        return self._native.cpu

    @cpu.setter
    def cpu(self, value: Optional[str]) -> None:
        self._native.cpu = value

    @property
    def other_link0_lines(self) -> List[str]:
        """Every other Link 0 line, whole; set a list to change them."""
        return self._native.other_link0_lines

    @other_link0_lines.setter
    def other_link0_lines(self, lines: Iterable[str]) -> None:
        self._native.other_link0_lines = list(lines)

    # --- Route, title, charge and multiplicity

    @property
    def route(self) -> Route:
        """The route; a text can be set, with or without its ``#``."""
        return Route(self._native)

    @route.setter
    def route(self, route: Union[str, Route]) -> None:
        self._native.set_route_text(str(route))

    @property
    def title(self) -> str:
        """The title; lines are separated by line feeds."""
        return self._native.title

    @title.setter
    def title(self, title: str) -> None:
        self._native.title = title

    @property
    def overlays(self) -> Optional[str]:
        """Overlay input behind the route, or None."""
        return self._native.overlays

    @overlays.setter
    def overlays(self, text: Optional[str]) -> None:
        self._native.overlays = text

    @property
    def charge(self) -> int:
        """Charge of the first pair."""
        return self._native.charge

    @charge.setter
    def charge(self, charge: int) -> None:
        self._native.set_charge_and_multiplicity(charge, self.multiplicity)

    @property
    def multiplicity(self) -> int:
        """Spin multiplicity of the first pair; 0 when the job has none."""
        return self._native.multiplicity

    @multiplicity.setter
    def multiplicity(self, multiplicity: int) -> None:
        self._native.set_charge_and_multiplicity(self.charge, multiplicity)

    @property
    def pairs(self) -> List[ChargeSpin]:
        """All pairs of charge and multiplicity, those of layers or fragments included; set a list to change them.

        >>> job.pairs = [(0, 1), (1, 2)]
        >>> job.pairs
        [ChargeSpin(charge=0, multiplicity=1), ChargeSpin(charge=1, multiplicity=2)]
        """
        return [ChargeSpin(*pair) for pair in self._native.pairs]

    @pairs.setter
    def pairs(self, pairs: Iterable[Tuple[int, int]]) -> None:
        self._native.pairs = [(charge, multiplicity) for charge, multiplicity in pairs]
