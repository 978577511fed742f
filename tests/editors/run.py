#!/usr/bin/env python3
"""What the language server does in real editors, as a table of feature and client: run.py TOOL SOURCE WORK [CLIENT...].

Each client is started, used as people use it, and ended. Where a client is not installed, that is said. Fails when a client that is there does
not show what it should; a feature that a client lacks has a dash."""

import os
import pathlib
import shutil
import subprocess
import sys

import neovim_client

HERE = pathlib.Path(__file__).resolve().parent
EMACS_PACKAGES = pathlib.Path("/usr/share/emacs/site-lisp/elpa")


def rows_of(command):
    """The lines FEATURE: ok (or what was seen instead) that a client's script prints."""
    ended = subprocess.run(command, capture_output=True, text=True, check=False, timeout=900)
    rows = [tuple(line.split(": ", 1)) for line in ended.stdout.splitlines() if ": " in line]
    if ended.returncode != 0 or not rows:
        rows.append(("end", f"exit code {ended.returncode}: {ended.stderr[-300:]}"))
    yield from ((feature, "" if seen == "ok" else seen) for feature, seen in rows)


def neovim(tool, source, work):
    if shutil.which("nvim"):
        yield from neovim_client.features(source, tool, work, (HERE / "water.com").read_text())


def emacs(tool, source, work):
    if shutil.which("emacs") and list(EMACS_PACKAGES.glob("eglot-*")):
        shutil.copy(HERE / "water.com", work)
        paths = [part for folder in [*EMACS_PACKAGES.iterdir(), source / "editors/emacs"] for part in ("-L", folder)]
        yield from rows_of(["emacs", "--batch", "-Q", *paths, "-l", HERE / "emacs_client.el", tool, work / "water.com"])


def workbench(tool, source, work):
    server = source / "build/editors/node_modules/code-server/out/node/entry.js"
    extension = source / "editors/vscode"
    vsix = extension / "dist/quor-gjf.vsix"
    if server.exists() and vsix.exists() and shutil.which("chromium") and shutil.which("node"):
        picture = [os.environ["QUOR_GJF_PICTURE"]] if os.environ.get("QUOR_GJF_PICTURE") and tool != "-" else []
        client = [HERE / "vscode_client.js", extension / "node_modules", server, vsix]
        yield from rows_of(["node", *client, tool, work, HERE / "water.com", *picture])


def web(tool, source, work):
    del tool
    yield from workbench("-", source, work)


CLIENTS = {"neovim": neovim, "emacs": emacs, "vscode": workbench, "web": web}


def main():
    tool, source, work = sys.argv[1], pathlib.Path(sys.argv[2]).resolve(), pathlib.Path(sys.argv[3]).resolve()
    chosen = sys.argv[4:] or list(CLIENTS)
    seen, faults = {}, []
    for name in chosen:
        folder = work / name
        shutil.rmtree(folder, ignore_errors=True)
        folder.mkdir(parents=True)
        rows = dict(CLIENTS[name](tool, source, folder))
        if not rows:
            print(f"{name} is left out: it is not installed")
        for feature, fault in rows.items():
            seen.setdefault(feature, {})[name] = "no" if fault else "yes"
            if fault:
                faults.append(f"{name}: {feature}: {fault}")
    print("\n| | " + " | ".join(chosen) + " |\n|---" + "|---" * len(chosen) + "|")
    for feature, clients in seen.items():
        print(f"| {feature} | " + " | ".join(clients.get(name, "–") for name in chosen) + " |")
    print("\n".join(faults))
    return bool(faults)


if __name__ == "__main__":
    sys.exit(main())
