#!/usr/bin/env python3
"""What holds of VS Code's extension without VS Code: extension_test.py TOOL SOURCE. Its version is the tool's, the files that it names are there,
each type of token that the server knows has a scope which the grammar uses, the matcher takes what the tool prints, and the list of packages
names no addresses."""

import json
import pathlib
import re
import subprocess
import sys

from server import Server

PLAIN = {"comment", "string"}  # have scopes in every editor


def faults(tool, source):
    folder = source / "editors/vscode"
    package = json.loads((folder / "package.json").read_text())
    contributes = package["contributes"]
    version = subprocess.run([tool, "--version"], capture_output=True, text=True, check=True).stdout.split()[-1]
    if package["version"] != version:
        yield f"the extension is {package['version']}, the tool {version}"
    named = [each["path"] for kind in ("grammars", "snippets") for each in contributes[kind]]
    named += [contributes["languages"][0]["configuration"]]
    yield from (f"{path} is not there" for path in named if not (folder / path).is_file())
    grammar = (folder / contributes["grammars"][0]["path"]).read_text()
    scopes = contributes["semanticTokenScopes"][0]["scopes"]
    with Server(tool) as server:
        yield from (f"tokens of type {kind} have no scope" for kind in server.types if kind not in scopes and kind not in PLAIN)
    yield from (f"the grammar has no {scope}" for each in scopes.values() for scope in each if f'"{scope}"' not in grammar)
    job = source / "tests/editors/water.com"
    printed = subprocess.run([tool, "check", "--quiet", "--output-format", "gcc", job], capture_output=True, text=True, check=False).stdout
    pattern = re.compile(contributes["problemMatchers"][0]["pattern"]["regexp"])
    lines = printed.splitlines()
    if not lines:
        yield "nothing is found in water.com"
    yield from (f"the problem matcher does not take: {line}" for line in lines if not pattern.match(line))
    addresses = re.findall(r'"resolved".*', (folder / "package-lock.json").read_text())
    yield from (f"package-lock.json names an address: {address}" for address in addresses)


if __name__ == "__main__":
    found = list(faults(sys.argv[1], pathlib.Path(sys.argv[2])))
    print("\n".join(found))
    sys.exit(bool(found))
