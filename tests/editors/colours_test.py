#!/usr/bin/env python3
"""Compares what the grammars of the editors colour with the tokens of the server: colours_test.py TOOL SOURCE WORK [EDITOR...].

At least 98 of 100 characters of Link 0, route and molecule, over the examples, and over the real files of QUOR_GJF_REAL_FILES when that is
set; and nothing of a title is coloured as anything but a title. An editor that is not there is told."""

import json
import os
import pathlib
import shutil
import subprocess
import sys

from server import Server

HERE = pathlib.Path(__file__).resolve().parent
WANTED = 0.98
LONGEST = 300  # lines of a file

# What the groups, faces and scopes of the grammars stand for; all others colour nothing that a token says.
VIM_TYPES = {
    "Separator": "macro", "Comment": "comment", "ChargeComment": "comment", "Link0Key": "property", "Link0Value": "string",
    "Head": "operator", "Method": "function", "Basis": "type", "BasisName": "type", "BasisTail": "type", "Keyword": "keyword",
    "Option": "parameter", "Value": "enumMember", "Title": "string", "Number": "number", "Label": "class", "LinkAtom": "class",
    "Layer": "enumMember", "Variable": "variable", "Assigned": "variable", "Given": "variable", "RowAtom": "number",
}  # fmt: skip


def vim_types(source, work, files, command=("vim", "-es")):
    """What Vim's syntax says of each character, asked of Vim itself."""
    script = work / "dump.vim"
    script.write_text(
        f"set nocompatible nomodeline\nset runtimepath^={source}/editors/vim\nfiletype plugin on\nsyntax on\n"
        + "".join(f"call Dump('{path}')\n" for path in files)
        + "qall!\n"
    )
    functions = work / "functions.vim"
    functions.write_text(
        "function! Dump(path)\n  execute 'edit! ' . fnameescape(a:path)\n  let lines = [&filetype]\n"
        "  for l in range(1, line('$'))\n    call add(lines, join(map(range(1, len(getline(l))),"
        " 'substitute(synIDattr(synID(l, v:val, 1), \"name\"), \"gaussian\", \"\", \"\")'), ' '))\n  endfor\n"
        f"  call writefile(lines, '{work}/vim.txt', 'a')\n  call writefile(['END'], '{work}/vim.txt', 'a')\nendfunction\n"
    )
    (work / "vim.txt").unlink(missing_ok=True)
    subprocess.run([*command, "-u", "NONE", "-i", "NONE", "-S", functions, "-S", script], stdin=subprocess.DEVNULL, check=True, timeout=600)
    for dumped in (work / "vim.txt").read_text().split("END\n")[:-1]:
        kind, *lines = dumped.split("\n")
        assert kind == "gaussian", f"Vim takes a job for {kind}"
        yield [[VIM_TYPES.get(name, "") for name in line.split(" ")] if line else [] for line in lines]


TEXTMATE_TYPES = {
    "keyword.control.separator": "macro", "comment.line.exclamation": "comment", "support.type.property-name.link0": "property",
    "string.unquoted.link0": "string", "keyword.operator.route": "operator", "entity.name.function.method": "function",
    "storage.type.basis": "type", "keyword.other.route": "keyword", "variable.parameter.option": "parameter",
    "constant.other.value": "enumMember", "string.unquoted.title": "string", "constant.numeric": "number",
    "entity.name.class.atom": "class", "constant.language.layer": "enumMember", "variable.other": "variable",
}  # fmt: skip


def textmate_types(source, work, files):
    """What the grammar of VS Code says of each character, by VS Code's own tokenizer."""
    grammar = source / "editors/vscode/syntaxes/gaussian.tmLanguage.json"
    command = ["node", HERE / "textmate.js", grammar, node_modules(source), *files]
    for line in subprocess.run(command, capture_output=True, check=True, timeout=600).stdout.splitlines():
        yield [[TEXTMATE_TYPES.get(scope.removesuffix(".gaussian"), "") for scope in scopes] for scopes in json.loads(line)]


EMACS_TYPES = {
    "separator": "macro", "comment": "comment", "link0-key": "property", "link0-value": "string", "head": "operator",
    "method": "function", "basis": "type", "keyword": "keyword", "option": "parameter", "value": "enumMember", "title": "string",
    "number": "number", "label": "class", "layer": "enumMember", "variable": "variable",
}  # fmt: skip


def emacs_types(source, work, files):
    """What font-lock says of each character, asked of Emacs."""
    del work
    command = ["emacs", "--batch", "-Q", "-L", source / "editors/emacs", "-l", "quor-gjf-mode", "-l", HERE / "faces.el", *files]
    dumped = subprocess.run(command, capture_output=True, text=True, check=True, timeout=600).stdout
    for text in dumped.split("END\n")[:-1]:
        yield [[EMACS_TYPES.get(name, "") for name in line.split(" ")] for line in text.split("\n")]


def node_modules(source):
    return pathlib.Path(os.environ.get("QUOR_GJF_NODE_MODULES", source / "editors/vscode/node_modules"))


def missing(name, source):
    """What an editor's comparison needs and is not there."""
    if name == "vscode":
        return not (node_modules(source) / "vscode-textmate").is_dir() or shutil.which("node") is None
    return shutil.which(name) is None


EDITORS = {"vim": vim_types, "emacs": emacs_types, "vscode": textmate_types}


def compare(path, wanted, parts, found, counts):
    """Counts the characters that are coloured alike, and yields what is wrong in a title."""
    lines = path.read_text("ascii").split("\n")
    for number, (line, part) in enumerate(zip(lines, parts)):
        for column, character in enumerate(line):
            if character.isspace():
                continue
            of_grammar = found[number][column] if number < len(found) and column < len(found[number]) else ""
            if part == "title" and of_grammar not in ("string", "comment"):
                yield f"{path}:{number + 1}:{column + 1}: '{character}' of a title is coloured as {of_grammar or 'nothing'}"
                break
            if part in ("link0", "route", "molecule"):
                same = wanted[number][column] == of_grammar
                counts[same] += 1
                if not same and "--verbose" in sys.argv:
                    print(f"{path.name}:{number + 1}:{column + 1}: '{character}' {wanted[number][column]} {of_grammar}: {line}")


def job_files(source):
    folders = [source / "examples/jobs", source / "examples/forms"]
    if "QUOR_GJF_REAL_FILES" in os.environ:
        folders.append(pathlib.Path(os.environ["QUOR_GJF_REAL_FILES"]))
    for folder in folders:
        for path in sorted([*folder.rglob("*.gjf"), *folder.rglob("*.com")]):
            data = path.read_bytes()
            if data.isascii() and b"\0" not in data and data.count(b"\n") < LONGEST and b"\r" not in data.replace(b"\r\n", b""):
                yield path, data.replace(b"\r\n", b"\n")


def main():
    tool, source, work = sys.argv[1], pathlib.Path(sys.argv[2]), pathlib.Path(sys.argv[3])
    editors = [name for name in sys.argv[4:] if not name.startswith("-")] or list(EDITORS)
    shutil.rmtree(work, ignore_errors=True)
    work.mkdir(parents=True)
    files = []
    for number, (path, data) in enumerate(job_files(source)):
        # Copies, with one kind of line end, named so that each has a name of its own.
        files.append(work / f"{number:03}_{path.name.replace(' ', '_')}")
        files[-1].write_bytes(data)
    with Server(tool) as server:
        described = [server.describe(path) for path in files]
    failed = False
    for name in editors:
        if missing(name, source):
            print(f"{name} is left out: it is not installed")
            continue
        counts = {True: 0, False: 0}
        faults = []
        for path, (wanted, parts), found in zip(files, described, EDITORS[name](source, work, files), strict=True):
            faults += compare(path, wanted, parts, found, counts)
        share = counts[True] / sum(counts.values())
        print(f"{name}: {100 * share:.2f} % of {sum(counts.values())} characters of {len(files)} files; {len(faults)} titles")
        print("\n".join(faults[:20]))
        failed = failed or share < WANTED or bool(faults)
    return failed


if __name__ == "__main__":
    sys.exit(main())
