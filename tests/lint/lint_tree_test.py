"""Shows that each check of lint_tree.py finds a bad sample and passes a good one."""
import sys
import tempfile
from pathlib import Path

from function_lengths import cpp_functions, python_functions
from lint_tree import FUNCTION_LIMIT, GJF, circle_problems, problems
from module_circles import circles, imported_modules, package_uses, tool_uses

PUBLIC = {"gjf/gjf.hpp"}
REACHES = {"gjf/core/text/inner.hpp": "room", "gjf/core/text/shared.hpp": "library", "gjf/c_api/inner.hpp": "room"}
GOOD = "// Does one thing.\n"
LONG = "    ++x;\n" * FUNCTION_LIMIT
INNER, SHARED = "#include <gjf/core/text/inner.hpp>\n", "#include <gjf/core/text/shared.hpp>\n"

BAD = {
    "a room to the right": (GJF + "core/text/a.cpp", GOOD + "#include <gjf/core/schema/b.hpp>\n"),
    "a room that is a stranger": (GJF + "core/check/a.cpp", GOOD + "#include <gjf/core/editor/b.hpp>\n"),
    "the C interface from inside": (GJF + "core/editor/a.cpp", GOOD + "#include <gjf/c_api/quor_g16_gjf.h>\n"),
    "yaml-cpp elsewhere": (GJF + "core/schema/a.cpp", GOOD + "#include <yaml-cpp/yaml.h>\n"),
    "a private header in the tool": ("cli/a.cpp", GOOD + "#include <gjf/core/text/text.hpp>\n"),
    "no role line": ("src/core/fs/a.cpp", "#include <string>\n"),
    "too long": ("tests/a.cpp", GOOD + "int x;\n" * 700),
    "too long for users": ("src/core/fs/a.cpp", GOOD + "int x;\n" * 500),
    "a long module of the package": ("python/quor_gjf/a.py", '"""Does one thing."""\n' + "x = 1\n" * 500),
    "a module without its role": ("python/quor_gjf/a.py", "x = 1\n"),
    "a private header of another room": (GJF + "core/check/a.cpp", GOOD + INNER),
    "a private header of the C interface": (GJF + "core/text/a.cpp", GOOD + "#include <gjf/c_api/inner.hpp>\n"),
    "a private header in another room's test": ("tests/unit/check/a_test.cpp", GOOD + INNER),
    "a room's private header in a tool": ("tools/a/main.cpp", GOOD + INNER),
    "a header without its reach": (GJF + "core/text/a.hpp", GOOD + "int x;\n"),
    "a long function": ("src/core/fs/a.cpp", GOOD + "int f(int x) {\n" + LONG + "}\n"),
    "a long method": ("cli/a.hpp", GOOD + "struct A {\n    int f(int x,\n          int y) const {\n" + LONG + "    }\n};\n"),
    "a long constructor": ("cli/a.cpp", GOOD + "A::A(int x)\n    : x_(x), y_{x} {\n" + LONG + "}\n"),
    "a long template": ("cli/a.cpp", GOOD + "template <class X>\nX f(X x) {\n" + LONG + "}\n"),
    "a long function of the package": ("python/quor_gjf/a.py", '"""A."""\ndef f(x):\n' + "    x += 1\n" * FUNCTION_LIMIT),
    "a locale's tolower": ("src/core/fs/a.cpp", GOOD + "auto c = std::tolower('A');\n"),
}
FINE = {
    "a room to the left": (GJF + "core/editor/a.cpp", GOOD + "#include <gjf/core/job/b.hpp>\n"),
    "its own room": (GJF + "core/editor/a.cpp", GOOD + '#include "gjf/core/editor/b.hpp"\n'),
    "yaml-cpp in its place": (GJF + "core/schema/schema_document.cpp", GOOD + "#include <yaml-cpp/eventhandler.h>\n"),
    "a public header in the tool": ("cli/a.cpp", GOOD + "#include <gjf/gjf.hpp>\n"),
    "a header shared in the library": (GJF + "core/check/a.cpp", GOOD + SHARED),
    "its own private header": (GJF + "core/text/a.cpp", GOOD + INNER),
    "its own private header in its test": ("tests/unit/text/a_test.cpp", GOOD + INNER),
    "a private header in a fuzzer": ("fuzz/a_fuzzer.cpp", GOOD + INNER),
    "a private header that says so": (GJF + "core/text/a.hpp", "// Does one thing. Private to\n// the room.\n"),
    "a public header": (GJF + "gjf.hpp", GOOD),
    "a long test": ("tests/a.cpp", GOOD + "TEST(A, B) {\n" + LONG + "}\n"),
    "a function at the limit": ("src/core/fs/a.cpp", GOOD + "int f(int x) {\n" + LONG[: -2 * len("    ++x;\n")] + "}\n"),
    "a table": ("src/core/fs/a.cpp", GOOD + "const A table[] = {\n    {1, f(2)},\n" + LONG + "};\n"),
    "functions in a row": ("src/core/fs/a.cpp", GOOD + "int f(int x) {\n    return x;\n}\n\n" * 30),
    "a long text that tells": ("python/quor_gjf/a.py", '"""A."""\ndef f(x):\n    """A.\n' + "    b\n" * 50 + '    """\n    return x\n'),
    "a test of private parts": ("tests/unit/text/a.cpp", GOOD + "#include <gjf/core/text/text.hpp>\n"),
}


CIRCLES = (
    ({}, []),
    ({"a": {"b"}, "b": {"c"}, "c": set()}, []),
    ({"a": {"a"}}, [["a"]]),
    ({"a": {"b"}, "b": {"a"}}, [["a", "b"]]),
    ({"a": {"b"}, "b": {"c"}, "c": {"a"}, "d": {"a"}, "e": {"f"}, "f": {"e"}}, [["a", "b", "c"], ["e", "f"]]),
)
IMPORTS = (
    ("import os\nfrom json import loads\n", set()),
    ("from . import a, b\n", {"a", "b"}),
    ("from .a import x\nfrom .b.c import y\n", {"a", "b"}),
    ("from quor_gjf.a import x\nimport quor_gjf.b\nfrom quor_gjf import c\n", {"a", "b", "c"}),
    ("from other import a\nimport other.b\n", set()),
    ("def f():\n    from .late import x\n", {"late"}),
    ("import typing\nif typing.TYPE_CHECKING:\n    from .a import A\n", {"a"}),
)
LENGTHS = (
    (cpp_functions, "int f() {\n    return 1;\n}\n", [("f", 1, 3)]),
    (cpp_functions, "namespace {\n\nint f() { return 1; }\n\nint g(int a,\n      int b) {\n    return a;\n}\n}\n", [("g", 5, 4)]),
    (cpp_functions, "struct A {\n    A() : x(1) {\n        ++x;\n    }\n};\n", [("A", 2, 3)]),
    (cpp_functions, "int f();\nint x = f();\nconst int t[] = {\n    f(),\n};\n", []),
    (cpp_functions, "int f() {\n    if (x()) {\n        y();\n    }\n    return 1;\n}\n", [("f", 1, 6)]),
    (python_functions, "def f():\n    return 1\n", [("f", 1, 2)]),
    (python_functions, "class A:\n    async def f(self,\n        x):\n        \"\"\"B.\n\n        C.\"\"\"\n        return 1\n", [("f", 2, 3)]),
)


def wrong_circles():
    """The cases of circles, of imports and of folders that come out otherwise than they should."""
    yield from (f"circles of {uses}" for uses, expected in CIRCLES if circles(uses) != expected)
    yield from (f"imports of {text!r}" for text, expected in IMPORTS if set(imported_modules(text, "quor_gjf")) != expected)
    yield from (f"lengths of {text!r}" for measure, text, expected in LENGTHS if list(measure(text)) != expected)
    with tempfile.TemporaryDirectory() as folder:
        for name, text in (("a.hpp", '#include "b.hpp"\n'), ("b.hpp", "\n"), ("b.cpp", '#include "b.hpp"\n#include "a.hpp"\n'),
                           ("a.py", "from .b import x\n"), ("b.py", "from . import a\n")):
            Path(folder, name).write_text(text, encoding="utf-8")
        tool, package = tool_uses(folder), package_uses(folder)
        if circles(tool) != [["a", "b"]] or circles(package) != [["a", "b"]]:
            yield f"circles in folders: {tool} {package}"
        if len(list(circle_problems(tool, package))) != 2 or list(circle_problems({"a": {"b"}}, {"a": {"b"}})):
            yield "problems of circles"


def main():
    failures = [name for name, (path, text) in BAD.items() if not list(problems(path, text, PUBLIC, REACHES))]
    failures += [name for name, (path, text) in FINE.items() if list(problems(path, text, PUBLIC, REACHES))]
    failures += wrong_circles()
    print("\n".join(f"wrong about: {name}" for name in failures) or f"{len(BAD)} bad and {len(FINE)} good samples told apart")
    return 1 if failures else 0


if __name__ == "__main__":
    sys.exit(main())
