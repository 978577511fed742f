"""Checking jobs before they are run."""
from __future__ import annotations

import os
from typing import Iterable, List, NamedTuple, Union

from . import _core
from .errors import ParseError, file_error
from .job import Job, Jobs


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

    def __str__(self) -> str:
        place = f"{self.line}:{self.column}: " if self.column else f"{self.line}: " if self.line else ""
        return f"{place}{self.severity}: {self.message} [{self.code}]"


def check(source: Union[str, "os.PathLike[str]", Job, Jobs], ignore: Iterable[str] = ()) -> List[Finding]:
    """Check a file, a text or a job, and return what was found, in the order of places.

    A ``str`` with a line break is a text, another one a path. ``ignore``: codes that are not reported.

    >>> gjf.check(job)
    []
    >>> for finding in gjf.check("#p b3lyp/6-31g(d) opt\\n\\nWater\\n\\n0 2\\nO 0 0 0\\nH 0 0.7 0.5\\nH 0 -0.7 0.5\\n\\n"):
    ...     print(finding.severity, finding.line)
    error 5
    """
    if isinstance(source, (Job, Jobs)) or (isinstance(source, str) and "\n" in source):
        text = str(source)
    else:
        path = os.fspath(source)
        try:
            text = _core.read_text(path)
        except ParseError as error:
            raise file_error(error, path) from None
    return [Finding(*finding) for finding in _core.check_text(text, list(ignore))]


def check_codes() -> "dict[str, str]":
    """Return every code of the checker with its title."""
    return dict(_core.check_descriptions())
