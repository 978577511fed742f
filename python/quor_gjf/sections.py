"""Extra input: the sections behind the molecule specification."""
from __future__ import annotations

import enum
from collections.abc import Sequence

from . import _core
from .indices import index_of

TYPE_CHECKING = False
if TYPE_CHECKING:
    from typing import Iterable, Iterator, List, Optional, Union, overload


class SectionKind(enum.IntEnum):
    """What a section is. Sections of a job stand in this order; those of unknown kind stand last."""

    UNKNOWN = 0
    CONNECTIVITY = 1
    FROZEN_ATOM_ALTERATIONS = 2
    COORDINATE_MODIFICATIONS = 3
    SECOND_TITLE_AND_MOLECULE = 4
    SECOND_CONNECTIVITY = 5
    SECOND_FROZEN_ATOM_ALTERATIONS = 6
    SECOND_COORDINATE_MODIFICATIONS = 7
    THIRD_TITLE_AND_TS_STRUCTURE = 8
    THIRD_CONNECTIVITY = 9
    THIRD_FROZEN_ATOM_ALTERATIONS = 10
    THIRD_COORDINATE_MODIFICATIONS = 11
    PDB_SECONDARY_STRUCTURE = 12
    ATOMIC_MASSES = 13
    EXTERNAL = 14
    LINK_SPECIFIC_INPUT = 15
    MM_PARAMETERS = 16
    FREQUENCY_OF_INTEREST = 17
    BACKGROUND_CHARGE = 18
    BOMD_INPUT = 19
    PCM_INPUT = 20
    IRC_COORDINATES = 21
    HARMONIC_CONSTRAINTS = 22
    SEMI_EMPIRICAL_GAUSSIAN = 23
    SEMI_EMPIRICAL_MOPAC = 24
    BASIS_SET = 25
    BASIS_SET_ALTERATIONS = 26
    FINITE_FIELD = 27
    ECP = 28
    DENSITY_FITTING_BASIS = 29
    PCM_SOLVATION = 30
    DFTB_PARAMETERS = 31
    GUESS_SOURCE = 32
    SYMMETRY_COMBINE = 33
    ORBITAL_SPECIFICATIONS = 34
    ORBITAL_ALTERATIONS = 35
    ORBITAL_REORDERING = 36
    GVB_PAIRS = 37
    CAS_WEIGHTS = 38
    SPIN_ORBIT_STATES = 39
    ORBITAL_FREEZING = 40
    EPT_ORBITALS = 41
    SPIN_SPIN_ATOMS = 42
    ATOMIC_RADII = 43
    ANTECHAMBER_OUTPUT = 44
    ELECTROSTATIC_DATA = 45
    NBO_INPUT = 46
    HARMONIC_MODE_SELECTION = 47
    HINDERED_ROTOR = 48
    ANHARMONIC_MODE_SELECTION = 49
    ANHARMONIC_INPUT = 50
    FCHT_INPUT = 51
    PICKETT_ATOMS = 52
    ACID_OUTPUT = 53
    PROAIMS_OUTPUT = 54
    MATRIX_ELEMENT_FILE = 55

    @property
    def title(self) -> str:
        """The name for people.

        >>> gjf.SectionKind.COORDINATE_MODIFICATIONS.title
        'Modifications to coordinates'
        """
        return _core.Job.section_kind_name(int(self))


if TYPE_CHECKING:
    Kind = Union[SectionKind, int, str]


def kind_of(kind: Kind) -> SectionKind:
    """Return the kind for its number, name, short name or title; letter case and underlines do not matter.

    >>> kind_of("modredundant").name
    'COORDINATE_MODIFICATIONS'
    """
    if not isinstance(kind, str):
        return SectionKind(kind)
    number = _core.Job.find_section_kind(kind)
    if number is not None:
        return SectionKind(number)
    name = kind.replace("_", "").lower()
    for candidate in SectionKind:
        if name == candidate.name.replace("_", "").lower():
            return candidate
    raise ValueError(f"there is no kind of section {kind!r}")


class Section:
    """One section of a job, a window on its place: kind and text. Both can be set."""

    __slots__ = ("_job", "_index")
    __hash__ = None  # type: ignore[assignment]

    def __init__(self, job: _core.Job, index: int) -> None:
        self._job = job
        self._index = index

    @property
    def kind(self) -> SectionKind:
        """What the section is."""
        return SectionKind(self._job.section_kind(self._index))

    @kind.setter
    def kind(self, kind: Kind) -> None:
        self._job.set_section(self._index, int(kind_of(kind)), self.text)

    @property
    def text(self) -> str:
        """The lines, without the empty line that ends the section."""
        return self._job.section_text(self._index)

    @text.setter
    def text(self, text: str) -> None:
        self._job.set_section(self._index, int(self.kind), text)

    @property
    def lines(self) -> List[str]:
        """The lines as a list."""
        return self.text.splitlines()

    def __str__(self) -> str:
        return self.text

    def __eq__(self, other: object) -> bool:
        if not isinstance(other, Section):
            return NotImplemented
        return (self.kind, self.text) == (other.kind, other.text)

    def __repr__(self) -> str:
        return f"<Section {self.kind.name}, {len(self.lines)} lines>"


class Sections(Sequence[Section]):
    """The extra input sections of a job, in their order.

    >>> job.sections.add("COORDINATE_MODIFICATIONS", "B 1 2 F")
    1
    >>> job.sections
    <Sections CONNECTIVITY, COORDINATE_MODIFICATIONS>
    >>> job.sections.put("COORDINATE_MODIFICATIONS", "A 2 1 3 F", append=True)
    >>> job.sections.text("coordinate_modifications")
    'B 1 2 F\\nA 2 1 3 F'
    >>> job.sections.remove("CONNECTIVITY")
    >>> len(job.sections)
    1
    """

    __slots__ = ("_job",)

    def __init__(self, job: _core.Job) -> None:
        self._job = job

    def __len__(self) -> int:
        return self._job.section_count()

    if TYPE_CHECKING:
        @overload
        def __getitem__(self, index: int) -> Section: ...

        @overload
        def __getitem__(self, index: slice) -> List[Section]: ...

    def __getitem__(self, index: Union[int, slice]) -> Union[Section, List[Section]]:
        if isinstance(index, slice):
            return [Section(self._job, i) for i in range(len(self))[index]]
        return Section(self._job, index_of(index, len(self), "section"))

    def __iter__(self) -> Iterator[Section]:
        return (Section(self._job, index) for index in range(len(self)))

    def __setitem__(self, index: int, text: str) -> None:
        self[index].text = text

    def __delitem__(self, index: int) -> None:
        self._job.remove_section(index_of(index, len(self), "section"))

    def append(self, text: str) -> None:
        """Append a section of unknown kind."""
        self._job.add_section(text)

    def replace_all(self, texts: Iterable[str]) -> None:
        """Replace all sections by ones of unknown kind."""
        self._job.set_sections(list(texts))

    def add(self, kind: Kind, text: str) -> int:
        """Insert a section behind all of its own or an earlier kind; return its index."""
        return self._job.insert_section(int(kind_of(kind)), text)

    def put(self, kind: Kind, text: str, append: bool = False) -> None:
        """Set the text of the first section of a kind, or add to it; a section is made when there is none."""
        self._job.upsert_section(int(kind_of(kind)), text, append)

    def remove(self, *kinds: Kind) -> None:
        """Remove every section of these kinds."""
        self._job.remove_sections_of([int(kind_of(kind)) for kind in kinds])

    def clear(self) -> None:
        """Remove all sections."""
        self._job.clear_sections()

    def of(self, kind: Kind) -> List[Section]:
        """Return the sections of a kind."""
        wanted = kind_of(kind)
        return [section for section in self if section.kind == wanted]

    def text(self, kind: Kind) -> Optional[str]:
        """Return the text of the first section of a kind, or None."""
        return next((section.text for section in self.of(kind)), None)

    def read_bonds(self, index: int) -> None:
        """Read the text of a section as the job's bonds."""
        self._job.connect_section(index_of(index, len(self), "section"))

    @property
    def expected(self) -> List[SectionKind]:
        """The kinds that the route asks for, in their order."""
        return [SectionKind(kind) for kind in self._job.expected_sections()]

    def __repr__(self) -> str:
        return f"<Sections {', '.join(section.kind.name for section in self)}>"
