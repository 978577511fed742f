"""Checks rules of the tree that the compiler does not know: direction of includes, private headers, circles, role lines, lengths.

Usage: lint_tree.py SOURCE_FOLDER
"""
import itertools
import pathlib
import re
import sys

from function_lengths import cpp_functions, python_functions
from module_circles import circles, package_uses, tool_uses

ROOMS = ["text", "chemistry", "schema", "knowledge", "route", "job", "sections", "reader", "basis", "editor",
         "selection", "check", "output", "predicate", "configuration", "document", "editing", "next", "report", "language", "protocol", "c_api"]
# Rooms that do not know each other.
STRANGERS = {frozenset(pair) for pair in itertools.combinations(("editor", "selection", "check", "output"), 2)}
# Lines of a file: of what users get, and of all else.
PRODUCT = ("src/", "cli/", "python/quor_gjf/", "python/src/")
LENGTH_LIMIT, PRODUCT_LENGTH_LIMIT = 600, 450
FUNCTION_LIMIT = 40
# What was longer when these limits came; the list only becomes shorter.
CODE = {".cpp", ".hpp", ".h", ".c", ".py"}
# Where a header's reach is told.
REACH_LINES = 6
INCLUDE = re.compile(r'^\s*#\s*include\s*[<"]([^>"]+)[>"]', re.MULTILINE)
PUBLIC_ONLY = ("cli/", "examples/", "python/")
PUBLIC_LIST = re.compile(r"^\s+(gjf/\S+?\.(?:hpp|h))\)?$", re.MULTILINE)
GJF = "src/input/backends/gaussian/gjf/"
PRIVATE_TO = re.compile(r"\bPrivate to the (room|library)\b")


def room_of(path):
    """The room of a file or include path, or None."""
    match = re.search(r"gjf/(?:core/(\w+)/|(c_api)/)", path)
    return match and (match.group(1) or match.group(2))


def include_problems(path, includes):
    room = room_of(path) if path.startswith(GJF) else None
    for include in includes:
        if include.startswith("yaml-cpp/") and not path.endswith("core/schema/schema_document.cpp"):
            yield f"includes {include}: only schema_document.cpp may"
        if include.startswith("toml++/") and not path.endswith("core/configuration/toml_settings.cpp"):
            yield f"includes {include}: only toml_settings.cpp may"
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


def reach_of(path, text, public):
    """How far a header of a room reaches: "room", "library", "all", or None where it does not say."""
    if path.removeprefix("src/input/backends/gaussian/") in public:
        return "all"
    match = PRIVATE_TO.search(" ".join(line.removeprefix("//").strip() for line in text.split("\n")[:REACH_LINES]))
    return match and match.group(1)


def reach_problems(path, includes, reaches):
    """Headers that are private to a room are included there and by tests alone; `reaches` knows the include paths of all rooms."""
    for include in includes:
        if reaches.get(include) == "room" and not path.startswith((GJF, "tests/", "fuzz/")):
            yield f"includes {include}, which is private to its room"
        elif reaches.get(include) == "room" and path.startswith((GJF, "tests/unit/")):
            room = room_of(path) or path.split("/")[2]
            if room != room_of(include):
                yield f"includes {include}, which is private to {room_of(include)}"


def text_problems(path, text):
    lines = text.split("\n")
    roles = ('"""', "#!") if path.endswith(".py") else ("// ", "/* ")
    if not lines[0].startswith(roles):
        yield "does not open with a comment that tells its role"
    limit = PRODUCT_LENGTH_LIMIT if path.startswith(PRODUCT) else LENGTH_LIMIT
    if len(lines) > limit + 1:
        yield f"has {len(lines) - 1} lines, more than {limit}"
    if path.startswith(PRODUCT):
        for name, line, length in (python_functions if path.endswith(".py") else cpp_functions)(text):
            if length > FUNCTION_LIMIT:
                yield f"line {line}: {name} has {length} lines, more than {FUNCTION_LIMIT}"
    if path.startswith("src/") and "std::tolower" in text.replace("<cctype>", ""):
        yield "uses std::tolower"


def problems(path, text, public, reaches):
    """All problems of one file; `path` is relative to the source folder, with forward slashes."""
    includes = [] if path.endswith(".py") else INCLUDE.findall(text)
    yield from include_problems(path, includes)
    yield from public_problems(path, includes, public)
    yield from reach_problems(path, includes, reaches)
    if path.startswith(GJF) and path.endswith(".hpp") and room_of(path) and reach_of(path, text, public) is None:
        yield "is not public and does not say whether it is private to the room or to the library"
    yield from text_problems(path, text)


def circle_problems(tool, package):
    """Modules that know each other; `tool` and `package` tell who uses whom."""
    for place, found in (("cli", circles(tool)), ("python/quor_gjf", circles(package))):
        for circle in found:
            yield f"{place}: a circle of {', '.join(circle)}"


def files_in(root):
    for folder in ("src", "cli", "python", "tests", "examples", "tools", "benchmarks", "fuzz"):
        for path in sorted((root / folder).rglob("*")):
            if path.suffix in CODE and path.is_file():
                yield path


def main():
    root = pathlib.Path(sys.argv[1])
    public = set(PUBLIC_LIST.findall((root / "src/public_headers.cmake").read_text(encoding="utf-8")))
    texts = {path.relative_to(root).as_posix(): path.read_text(encoding="utf-8") for path in files_in(root)}
    reaches = {name[name.index("gjf/"):]: reach_of(name, text, public)
               for name, text in texts.items() if name.startswith(GJF) and name.endswith(".hpp")}
    found = [f"{name} {problem}" for name, text in texts.items() for problem in problems(name, text, public, reaches)]
    found += circle_problems(tool_uses(root / "cli"), package_uses(root / "python/quor_gjf"))
    found += [f"src/public_headers.cmake names {header}, which is not there" for header in sorted(public)
              if not (root / "src/input/backends/gaussian" / header).is_file()]
    print("\n".join(found) or f"{len(texts)} files, {len(public)} public headers: nothing found")
    return 1 if found or len(texts) < 50 else 0


if __name__ == "__main__":
    sys.exit(main())
