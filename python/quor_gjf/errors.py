"""What goes wrong, as exceptions."""
from __future__ import annotations

import os

from ._core import ParseError, WriteError

TYPE_CHECKING = False
if TYPE_CHECKING:
    from typing import Optional

__all__ = ["FileError", "MissingFileError", "ParseError", "VocabularyError", "WriteError", "file_error", "refuse_odd_arguments"]

for _error in (ParseError, WriteError):
    _error.__module__ = "quor_gjf"
ParseError.__doc__ = """Malformed job text, or an edit that is refused; the job is as it was. A ``ValueError``.

``filename``, ``line`` and ``column`` (from 1, in bytes) tell where the text is malformed; None where there is no file, and in a refused edit.
"""
ParseError.filename = None
ParseError.line = None
ParseError.column = None
WriteError.__doc__ = "A job that cannot be written without loss, or over a file that has changed; nothing is written. A ``ValueError``."


class FileError(ParseError, OSError):
    """A file that cannot be read or written; ``ParseError`` and ``OSError`` at once."""

    def __str__(self) -> str:
        return str(self.args[0]) if self.args else ""


class MissingFileError(FileError, FileNotFoundError):
    """A file that is not there; a ``FileNotFoundError`` too."""


class VocabularyError(RuntimeError):
    """No route vocabulary, or no facts, to check by; the message names the file and the line."""


_FILE_MESSAGES = ("GJF Parse Error: Cannot open file: ", "GJF Parse Error: Cannot write file: ")


def file_error(error: ParseError, path: str) -> ParseError:
    """Return the file error that ``error`` tells about, or ``error`` itself, with the path, when it tells about text."""
    message = str(error)
    if not message.startswith(_FILE_MESSAGES):
        error.filename = path
        return error
    gone = not os.path.exists(path) if "open" in message else not os.path.isdir(os.path.dirname(path) or ".")
    found = (MissingFileError if gone else FileError)(message)
    found.filename = path
    return found


def refuse_odd_arguments(threads: Optional[int], on_error: str) -> None:
    """Raise ValueError unless what works on many files can go by these."""
    if on_error not in ("raise", "return", "skip"):
        raise ValueError('on_error is "raise", "return" or "skip"')
    if threads is not None and threads < 1:
        raise ValueError("threads must be at least 1")
