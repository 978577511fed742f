"""Checks rules of the tree that the compiler does not know: direction of includes, role lines, file lengths.

Usage: lint_tree.py SOURCE_FOLDER
"""
import itertools
import pathlib
import re
import sys

ROOMS = ["text", "chemistry", "schema", "knowledge", "route", "job", "sections", "reader", "editor",
         "selection", "check", "output", "document", "report", "language", "protocol", "c_api"]
# Rooms that do not know each other.
STRANGERS = {frozenset(pair) for pair in itertools.combinations(("editor", "selection", "check", "output"), 2)}
LENGTH_LIMIT = 600
CODE = {".cpp", ".hpp", ".h", ".c"}
INCLUDE = re.compile(r'^\s*#\s*include\s*[<"]([^>"]+)[>"]', re.MULTILINE)
PUBLIC_ONLY = ("cli/", "examples/", "python/")
PUBLIC_LIST = re.compile(r"^\s+(gjf/\S+?\.(?:hpp|h))\)?$", re.MULTILINE)
GJF = "src/input/backends/gaussian/gjf/"


def room_of(path):
    """The room of a file or include path, or None."""
    match = re.search(r"gjf/(?:core/(\w+)/|(c_api)/)", path)
    return match and (match.group(1) or match.group(2))


def include_problems(path, includes):
    room = room_of(path) if path.startswith(GJF) else None
    for include in includes:
        if include.startswith("yaml-cpp/") and not path.endswith("core/schema/schema_document.cpp"):
            yield f"includes {include}: only schema_document.cpp may"
        other = room_of(include) if include.startswith("gjf/") else None
        if room not in ROOMS or other not in ROOMS:
            continue
        if ROOMS.index(other) > ROOMS.index(room) or frozenset((room, other)) in STRANGERS:
            yield f"includes {include}: {room} may not use {other}"


def public_problems(path, includes, public):
    if path.startswith(PUBLIC_ONLY):
        for include in includes:
            if include.startswith("gjf/") and include not in public:
                yield f"includes {include}, which is private"


def text_problems(path, text):
    lines = text.split("\n")
    if not lines[0].startswith(("// ", "/* ")):
        yield "does not open with a comment that tells its role"
    if len(lines) > LENGTH_LIMIT + 1:
        yield f"has {len(lines) - 1} lines, more than {LENGTH_LIMIT}"
    if path.startswith("src/") and "std::tolower" in text.replace("<cctype>", ""):
        yield "uses std::tolower"


def problems(path, text, public):
    """All problems of one file; `path` is relative to the source folder, with forward slashes."""
    includes = INCLUDE.findall(text)
    yield from include_problems(path, includes)
    yield from public_problems(path, includes, public)
    yield from text_problems(path, text)


def files_in(root):
    for folder in ("src", "cli", "python", "tests", "examples", "tools", "benchmarks", "fuzz"):
        for path in sorted((root / folder).rglob("*")):
            if path.suffix in CODE and path.is_file():
                yield path


def main():
    root = pathlib.Path(sys.argv[1])
    public = set(PUBLIC_LIST.findall((root / "src/public_headers.cmake").read_text(encoding="utf-8")))
    count = 0
    found = []
    for path in files_in(root):
        count += 1
        name = path.relative_to(root).as_posix()
        found += [f"{name} {problem}" for problem in problems(name, path.read_text(encoding="utf-8"), public)]
    found += [f"src/public_headers.cmake names {header}, which is not there" for header in sorted(public)
              if not (root / "src/input/backends/gaussian" / header).is_file()]
    print("\n".join(found) or f"{count} files, {len(public)} public headers: nothing found")
    return 1 if found or count < 50 else 0


if __name__ == "__main__":
    sys.exit(main())
