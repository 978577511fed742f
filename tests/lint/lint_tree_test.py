"""Shows that each check of lint_tree.py finds a bad sample and passes a good one."""
import sys

from lint_tree import GJF, problems

PUBLIC = {"gjf/gjf.hpp"}
GOOD = "// Does one thing.\n"

BAD = {
    "a room to the right": (GJF + "core/text/a.cpp", GOOD + "#include <gjf/core/schema/b.hpp>\n"),
    "a room that is a stranger": (GJF + "core/check/a.cpp", GOOD + "#include <gjf/core/editor/b.hpp>\n"),
    "the C interface from inside": (GJF + "core/editor/a.cpp", GOOD + "#include <gjf/c_api/quor_g16_gjf.h>\n"),
    "yaml-cpp elsewhere": (GJF + "core/schema/a.cpp", GOOD + "#include <yaml-cpp/yaml.h>\n"),
    "a private header in the tool": ("cli/a.cpp", GOOD + "#include <gjf/core/text/text.hpp>\n"),
    "no role line": ("src/core/fs/a.cpp", "#include <string>\n"),
    "too long": ("tests/a.cpp", GOOD + "int x;\n" * 700),
    "a locale's tolower": ("src/core/fs/a.cpp", GOOD + "auto c = std::tolower('A');\n"),
}
FINE = {
    "a room to the left": (GJF + "core/editor/a.cpp", GOOD + "#include <gjf/core/job/b.hpp>\n"),
    "its own room": (GJF + "core/editor/a.cpp", GOOD + '#include "gjf/core/editor/b.hpp"\n'),
    "yaml-cpp in its place": (GJF + "core/schema/schema_document.cpp", GOOD + "#include <yaml-cpp/eventhandler.h>\n"),
    "a public header in the tool": ("cli/a.cpp", GOOD + "#include <gjf/gjf.hpp>\n"),
    "a test of private parts": ("tests/unit/text/a.cpp", GOOD + "#include <gjf/core/text/text.hpp>\n"),
}


def main():
    failures = [name for name, (path, text) in BAD.items() if not list(problems(path, text, PUBLIC))]
    failures += [name for name, (path, text) in FINE.items() if list(problems(path, text, PUBLIC))]
    print("\n".join(f"wrong about: {name}" for name in failures) or f"{len(BAD)} bad and {len(FINE)} good samples told apart")
    return 1 if failures else 0


if __name__ == "__main__":
    sys.exit(main())
