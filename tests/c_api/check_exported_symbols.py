"""Compares the C functions that the library exports with the list in the tree, and looks for symbols that are not ours or have
no version.

Usage: check_exported_symbols.py LIST HEADER LIBRARY...
"""
import re
import subprocess
import sys

OURS = re.compile(r"^(gjf_|quor_gjf_|quor::|(typeinfo|typeinfo name|vtable) for quor::)")


def exported(library, *options):
    output = subprocess.run(["nm", "-D", "--defined-only", *options, library], check=True, capture_output=True, text=True).stdout
    # A symbol of type A is the name of a version.
    return [line.split(" ", 2)[2] for line in output.splitlines() if line.split(" ", 2)[1] != "A"]


def soname(library):
    output = subprocess.run(["readelf", "-d", library], check=True, capture_output=True, text=True).stdout
    return re.search(r"\(SONAME\)\s+Library soname: \[(.+)\]", output).group(1)


def version_problems(library):
    """The soname carries the major version, and every symbol the version that belongs to it."""
    name = soname(library)
    match = re.fullmatch(r"(lib\w+)\.so\.(\d+)", name)
    if not match or not re.search(rf"/{match.group(1)}\.so", library):
        yield f"{library} has the soname {name}"
        return
    version = f"@@QUOR_GJF_{match.group(2)}"
    for symbol in exported(library):
        if not symbol.endswith(version):
            yield f"{library} exports {symbol} without the version {version[2:]}"


def without_version(symbol):
    return symbol.split("@", 1)[0]


def problems(listed, declared, libraries):
    functions = sorted(without_version(s) for s in exported(libraries[0]) if not s.startswith("_Z"))
    if functions != listed:
        yield f"exported C functions differ from the list: {sorted(set(functions) ^ set(listed))}"
    if declared != listed:
        yield f"functions declared in the header differ from the list: {sorted(set(declared) ^ set(listed))}"
    if listed != sorted(listed):
        yield "the list is not sorted"
    needed = "typeinfo for quor::input::gaussian::GJFParseException"
    if needed not in map(without_version, exported(libraries[0], "-C")):
        yield f"the library does not export {needed}: its exceptions cannot be caught"
    for library in libraries:
        yield from version_problems(library)
        symbols = exported(library, "-C")
        if not symbols:
            yield f"{library} exports nothing"
        for symbol in symbols:
            if not OURS.match(symbol):
                yield f"{library} exports {symbol}"


def main():
    with open(sys.argv[1], encoding="utf-8") as file:
        listed = file.read().split()
    with open(sys.argv[2], encoding="utf-8") as file:
        declared = sorted(re.findall(r"^QUOR_GJF_C_API [^;]*?(\w+)\(", file.read(), re.MULTILINE))
    found = list(problems(listed, declared, sys.argv[3:]))
    print("\n".join(found) or f"{len(listed)} C functions, {len(sys.argv) - 3} libraries: as listed")
    return 1 if found else 0


if __name__ == "__main__":
    sys.exit(main())
