"""Finds circles among modules: files of the tool that include each other, and modules of the Python package that import each other."""
import ast
import pathlib
import re

QUOTED_INCLUDE = re.compile(r'^\s*#\s*include\s*"([\w/]+)\.hpp"', re.MULTILINE)


def imported_modules(text, package):
    """The modules of a package that a module's text imports anywhere, also late, inside a function, or for types alone."""
    for node in ast.walk(ast.parse(text)):
        if isinstance(node, ast.ImportFrom):
            path = (node.module or "").split(".") if node.module else []
            if node.level == 0:
                if path[:1] != [package]:
                    continue
                path = path[1:]
            yield from path[:1] or (alias.name for alias in node.names)
        elif isinstance(node, ast.Import):
            for alias in node.names:
                path = alias.name.split(".")
                if path[0] == package:
                    yield path[1] if len(path) > 1 else "__init__"


def package_uses(folder):
    """Who imports whom, by the names of modules."""
    texts = {path.stem: path.read_text(encoding="utf-8") for path in sorted(pathlib.Path(folder).glob("*.py"))}
    return {name: {other for other in imported_modules(text, pathlib.Path(folder).name) if other in texts}
            for name, text in texts.items()}


def tool_uses(folder):
    """Who includes whom: a header and the source of the same name are one module."""
    uses = {}
    for path in sorted(pathlib.Path(folder).rglob("*.[ch]pp")):
        uses.setdefault(path.stem, set()).update(pathlib.PurePath(include).name
                                                 for include in QUOTED_INCLUDE.findall(path.read_text(encoding="utf-8")))
        uses[path.stem].discard(path.stem)
    return uses


def circles(uses):
    """The sets of modules in which each uses, over others, each: sorted lists, sorted."""
    def reached(start):
        seen, waiting = set(), [start]
        while waiting:
            for other in uses.get(waiting.pop(), ()):
                if other not in seen:
                    seen.add(other)
                    waiting.append(other)
        return seen

    reach = {module: reached(module) for module in uses}
    found = {tuple(sorted({module} | {other for other in reach[module] if module in reach.get(other, ())}))
             for module in uses if module in reach[module]}
    return [list(circle) for circle in sorted(found)]
