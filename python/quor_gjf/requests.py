"""The commands of the tool over a text, by their names and options."""
from __future__ import annotations

from . import _core

TYPE_CHECKING = False
if TYPE_CHECKING:
    from typing import Any, Dict


def request(command: str, text: str, **options: Any) -> Dict[str, Any]:
    """Run a command of ``quor-gjf`` on a text, and return what it answers (see docs/json.md); no file is opened.

    ``command`` is check, fix, report, route, complete, outline, select, diff, edit, find or diagnose. ``options`` are the tool's long names, with
    ``_`` for ``-``: a text, a number, True, or a list of texts; those of edit are applied in their order. ValueError for a command or an
    option that is none, ParseError for a text that cannot be read, RuntimeError for an edit that is refused.

    >>> answer = gjf.request("edit", str(job), method="m062x", set=["mem=1GB", "nproc=4"], remove_keyword="scrf")
    >>> print(*answer["text"].splitlines()[:4], sep="\\n")
    %chk=water.chk
    %mem=1GB
    %nprocshared=4
    #p m062x/6-31g(d) opt freq geom=connectivity
    >>> answer["remarks"]
    ['--remove-keyword scrf: found nothing to change']
    """
    import json

    named = {name.replace("_", "-"): value for name, value in options.items()}
    answer: Dict[str, Any] = json.loads(_core.request_json(command, text, json.dumps(named)))
    return answer
