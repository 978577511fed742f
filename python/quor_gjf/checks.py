"""Checking jobs before they are run, and mending what is found."""
from __future__ import annotations

import os
import warnings

from . import _core
from .errors import ParseError, VocabularyError, file_error, refuse_odd_arguments
from .job import Job, Jobs

TYPE_CHECKING = False
if TYPE_CHECKING:
    from typing import Any, Iterable, List, NamedTuple, Optional, Tuple, Union

    Source = Union[str, os.PathLike[str], Job, Jobs]
    Config = Union[str, os.PathLike[str]]
else:
    from .named import NamedTuple


class TextEdit(NamedTuple):
    """One change of a text: the bytes from ``begin`` to ``end`` (from 0, ``end`` not included) give way to ``text``."""

    begin: int
    end: int
    text: str


class Fix(NamedTuple):
    """One way to mend what was found."""

    title: str
    safety: str
    """``"safe"``, ``"unsafe"`` (the likely one) or ``"choice"`` (one of several, never applied unasked)."""
    edits: Tuple[TextEdit, ...]


class RelatedPlace(NamedTuple):
    """Another place that a finding speaks of."""

    message: str
    line: int
    column: int
    length: int


class Finding(NamedTuple):
    """One remark of the checker. Lines and columns (in bytes) count from 1; 0 where there is none."""

    code: str
    severity: str
    """``"error"``, ``"warning"`` or ``"note"``."""
    message: str
    job: int
    """Number of the job in the file, from 1; 0 for the file as a whole."""
    line: int
    column: int
    length: int
    hint: str
    """What would mend it; may be empty."""
    begin: int = 0
    """The same place in bytes of the text, from 0; ``end`` is not included."""
    end: int = 0
    related: Tuple[RelatedPlace, ...] = ()
    fixes: Tuple[Fix, ...] = ()

    def __str__(self) -> str:
        place = f"{self.line}:{self.column}: " if self.column else f"{self.line}: " if self.line else ""
        return f"{place}{self.severity}: {self.message} [{self.code}]"


class FixReport(NamedTuple):
    """A fix that was applied or dropped, with the code and the line of its finding when it was tried."""

    code: str
    line: int
    title: str
    safety: str


class FixedText(NamedTuple):
    """A text that was mended."""

    text: str
    findings: List[Finding]
    """What is found in it still."""
    applied: List[FixReport]
    dropped: List[FixReport]
    """With them, something would be found that was not before."""


def _text_of(source: Source) -> str:
    if isinstance(source, (Job, Jobs)) or (isinstance(source, str) and "\n" in source):
        return str(source)
    path = os.fspath(source)
    try:
        return _core.read_text(path)
    except ParseError as error:
        raise file_error(error, path) from None


def _require_vocabulary() -> None:
    """Raise where a job that passes would hardly have been checked; warn where another vocabulary serves than was found first."""
    problem = _core.missing_for_checks()
    if problem:
        raise VocabularyError(problem)
    told = _core.vocabulary_warning()
    if told:
        warnings.warn(told, stacklevel=3)


def _findings(rows: Iterable[Tuple[Any, ...]]) -> List[Finding]:
    return [
        Finding._make((
            *row[:10],
            tuple(RelatedPlace(*place) for place in row[10]),
            tuple(Fix(title, safety, tuple(TextEdit(*edit) for edit in edits)) for title, safety, edits in row[11]),
        ))
        for row in rows
    ]


def _configuration(config: Optional[Config]) -> Tuple[str, str]:
    """Return the text of a configuration and the name that faults in it are told by."""
    if config is None or (isinstance(config, str) and ("\n" in config or not config)):
        return config or "", "config"
    return _text_of(config), os.fspath(config)


def check(source: Source, ignore: Iterable[str] = (), config: Optional[Config] = None) -> List[Finding]:
    """Check a file, a text or a job, and return what was found, in the order of places.

    A ``str`` with a line break is a text, another one a path. ``ignore``: codes that are not reported. ``config``: a configuration file, as
    ``.quor-gjf``, or its text, whose rules, limits and severities hold; without it none does. ValueError for a mistake in it.

    >>> gjf.check(job)
    []
    >>> for finding in gjf.check("#p b3lyp/6-31g(d) opt\\n\\nWater\\n\\n0 2\\nO 0 0 0\\nH 0 0.7 0.5\\nH 0 -0.7 0.5\\n\\n"):
    ...     print(finding.severity, finding.line)
    error 5
    """
    _require_vocabulary()
    return _findings(_core.check_text(_text_of(source), list(ignore), *_configuration(config)))


def check_many(paths: "Iterable[Union[str, os.PathLike[str]]]", threads: Optional[int] = None, *, ignore: Iterable[str] = (),
               on_error: str = "raise", config: Optional[Config] = None) -> "List[Union[List[Finding], ParseError, None]]":
    """Check many files at once, and return what was found in each, in the order of the paths.

    ``threads``: how many work at the same time; as many as the machine has processors when it is None. ``ignore``: codes that are not
    reported; ``config`` as in ``check``. ``on_error``, for files that cannot be opened: ``"raise"`` the first error, ``"return"`` errors in the places of their files,
    or ``"skip"``, which puts None there.

    >>> job.save("water.gjf")
    >>> gjf.check_many(["water.gjf", "missing.gjf"], threads=2, on_error="skip")
    [[], None]
    """
    refuse_odd_arguments(threads, on_error)
    _require_vocabulary()
    names = [os.fsdecode(path) for path in paths]
    results: List[Union[List[Finding], ParseError, None]] = []
    for name, (rows, message) in zip(names, _core.check_many(names, list(ignore), threads or 0, *_configuration(config))):
        if not message:
            results.append(_findings(rows))
            continue
        error = file_error(ParseError(message), name)
        if on_error == "raise":
            raise error
        results.append(error if on_error == "return" else None)
    return results


def fix(source: Source, unsafe: bool = False, ignore: Iterable[str] = (), config: Optional[Config] = None) -> FixedText:
    """Mend what is found in a file, a text or a job, and return the new text; nothing is written. ``ignore`` and ``config`` as in ``check``.

    Safe fixes are applied, with ``unsafe=True`` the likely ones too; a fix that would make the text worse is dropped.

    >>> gjf.fix("# hf/sto-3g\\n\\nt\\n\\n0 1\\nHe 0 0 0\\n").text
    '# hf/sto-3g\\n\\nt\\n\\n0 1\\nHe 0 0 0\\n\\n'
    """
    _require_vocabulary()
    text, findings, applied, dropped = _core.fix_text(_text_of(source), unsafe, list(ignore), *_configuration(config))
    return FixedText(text, _findings(findings), [FixReport(*each) for each in applied], [FixReport(*each) for each in dropped])


class CheckWarning(UserWarning):
    """Tells what an edit brings: something that ``check`` finds in the new text and not in the old one."""


class CheckError(ValueError):
    """An edit that is not written, since something would be found that was not before: ``findings``."""

    def __init__(self, findings: List[Finding]) -> None:
        super().__init__("; ".join(map(str, findings)))
        self.findings = findings


def check_change(before: Source, after: Source) -> List[Finding]:
    """Return what is found in ``after`` and not in ``before``; findings are the same when job, code and message are.

    >>> changed = job.copy()
    >>> changed.charge = 1
    >>> [finding.code for finding in gjf.check_change(job, changed)]
    ['GJF-M002']
    """
    return _findings(_core.findings_of_change(_text_of(before), _text_of(after)))


def unknown_words(route: str) -> List[Finding]:
    """Return what is found of words of a route that Gaussian does not know, with what may have been meant as the hint.

    >>> [finding.hint for finding in gjf.unknown_words("# b3lpy/6-31g(d) opt=clacfc")]
    ['did you mean b3lyp?', 'did you mean calcfc?']
    """
    return _findings(_core.unknown_route_words(route))


def tell_change(before: str, after: Source, strict: bool) -> None:
    """Warn of what a change brings, or raise CheckError. Says nothing where there is no vocabulary to check by."""
    found = [] if _core.missing_for_checks() else check_change(before, after)
    if found and strict:
        raise CheckError(found)
    for finding in found:
        warnings.warn(str(finding), CheckWarning, stacklevel=4)


def check_codes() -> "dict[str, str]":
    """Return every code of the checker with its title."""
    return dict(_core.check_descriptions())
