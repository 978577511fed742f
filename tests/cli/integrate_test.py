"""Runs the recipes of docs/integrate.md, and the hooks for pre-commit in a fresh repository.

What is not installed (pre-commit, git, vim, emacs) is left out, and said; the pattern of Emacs is tried in any case.

Usage: integrate_test.py TOOL SOURCE WORK_FOLDER
"""
import json
import os
import pathlib
import re
import shutil
import subprocess
import sys

GOOD = "# hf/sto-3g\n\nt\n\n0 1\nHe 0.0 0.0 0.0\n\n"
BAD = GOOD.replace("0 1", "0 2")
ALIGNED = GOOD.replace("He 0.0 0.0 0.0", " He  0.0  0.0  0.0")
FIXABLE = ALIGNED.rstrip("\n") + "\n"
WARNED = GOOD + "left\nover\n\n"
WANTED = [("bad.gjf", 5, 1, "error"), ("warned.gjf", 8, 1, "warning")]


# Checks a file as M-x does, and goes to the first finding; prints where point is then, and of which type the finding is.
VISIT = """
(defun visit (name)
  (find-file name)
  (quor-gjf-check)
  (while (get-buffer-process "*compilation*") (accept-process-output nil 0.1))
  (let ((type (with-current-buffer "*compilation*"
                (compilation--ensure-parse (point-max))
                (goto-char (point-min))
                (compilation--message->type (compilation-next-error 1)))))
    (next-error 1 t)
    (princ (format "%s:%d:%d:%d\\n" (file-name-nondirectory buffer-file-name) (line-number-at-pos) (current-column) type))))
"""


class Place:
    """A folder with jobs, and the tool on the path."""

    def __init__(self, tool, folder):
        self.folder = folder
        shutil.rmtree(folder, ignore_errors=True)
        self.bin = folder / "bin"
        self.bin.mkdir(parents=True)
        self.jobs = folder / "jobs"
        self.write("jobs/.quor-gjf", "")
        for name, text in (("good.gjf", GOOD), ("bad.gjf", BAD), ("warned.gjf", WARNED)):
            self.write("jobs/" + name, text)
        self.environment = {**os.environ, "PATH": f"{self.bin}:{tool.parent}:{os.environ['PATH']}", "HOME": str(folder),
                            "GIT_CONFIG_GLOBAL": "/dev/null", "GIT_AUTHOR_NAME": "a", "GIT_AUTHOR_EMAIL": "a@b",
                            "GIT_COMMITTER_NAME": "a", "GIT_COMMITTER_EMAIL": "a@b", "PRE_COMMIT_HOME": str(folder / "cache")}

    def write(self, name, text, mode=0o644):
        path = self.folder / name
        path.parent.mkdir(parents=True, exist_ok=True)
        path.write_text(text, encoding="utf-8")
        path.chmod(mode)

    def run(self, *command, cwd=None):
        result = subprocess.run(command, cwd=cwd or self.jobs, env=self.environment, capture_output=True, text=True, check=False)
        return result.returncode, result.stdout, result.stderr


def recipes(source):
    text = (source / "docs/integrate.md").read_text(encoding="utf-8")
    return {name: body for name, body in re.findall(r"^```\w+ ([\w-]+)\n(.*?)^```$", text, re.MULTILINE | re.DOTALL)}


def configuration(source, place):
    text = (source / "docs/integrate.md").read_text(encoding="utf-8")
    body = re.search(r"^```toml\n(.*?)^```$", text, re.MULTILINE | re.DOTALL).group(1)
    place.write("configured/.quor-gjf", body)
    place.write("configured/a.gjf", "%mem=65GB\n" + GOOD)
    code, out, err = place.run("quor-gjf", "check", "--output-format", "gcc", "a.gjf", cwd=place.folder / "configured")
    assert code == 1 and "GJF-X001" in out and "GJF-X004" in out and not err, (code, out, err)
    return "configuration"


def slurm(recipe, place):
    place.write("bin/gsub", recipe, 0o755)
    place.write("bin/sbatch", '#!/bin/bash\nprintf "%s|" "$@"\n', 0o755)
    assert place.run("gsub", "good.gjf", "-n4") == (0, "--job-name=good|-n4|--wrap=g16 'good.gjf'|", "")
    for name in ("bad.gjf", "missing.gjf"):
        code, out, err = place.run("gsub", name)
        assert code == 1 and "--wrap" not in out and err.endswith(f"gsub: {name} is not sent\n"), (code, out, err)
    return "Slurm"


def workflow(recipe, place):
    commands = re.findall(r"- run: (.*)", recipe)
    assert len(commands) == 1
    code, out, _ = place.run("bash", "-c", commands[0])
    assert code == 1 and [line.split(",")[0] for line in out.splitlines()] == ["::error file=./bad.gjf", "::warning file=./warned.gjf"], out
    return "workflow"


def lines_of_gcc(place):
    return place.run("quor-gjf", "check", "--quiet", "--output-format", "gcc", "good.gjf", "bad.gjf", "warned.gjf")[1]


def vim(recipe, place):
    if not shutil.which("vim") or "+quickfix" not in place.run("vim", "--version")[1]:
        return "Vim left out: it is not installed"
    place.write(".vim/compiler/quor_gjf.vim", recipe)
    script = "compiler quor_gjf | silent make! | call writefile(map(getqflist(), 'bufname(v:val.bufnr).\":\".v:val.lnum.\":\".v:val.col.\":\".v:val.type'), 'list')"
    for name, line, column, severity in WANTED:
        place.run("vim", "-N", "-u", "NONE", "-es", "--cmd", f"set rtp^={place.folder}/.vim", "-c", script, "-c", "qa!", name)
        assert (place.jobs / "list").read_text() == f"{name}:{line}:{column}:{severity[0]}\n", (place.jobs / "list").read_text()
        (place.jobs / "list").unlink()
    return "Vim"


def emacs(recipe, place):
    pattern = re.search(r"'\(quor-gjf \"(.*?)\" 1 2 3", recipe).group(1).replace("\\\\", "\\").replace("\\n", "\n")
    # The regular expressions of Emacs have their groups and choices behind backslashes.
    pattern = re.sub(r"\\([(|)])", r"\1", pattern)
    found = [(m.group(1), int(m.group(2)), int(m.group(3)), "warning" if m.group(4) else "note" if m.group(5) else "error")
             for m in re.finditer(pattern, lines_of_gcc(place), re.MULTILINE)]
    assert found == WANTED, found
    if not shutil.which("emacs"):
        return "Emacs left out: it is not installed (its pattern was tried)"
    place.write("check.el", recipe)
    place.write("visit.el", VISIT)
    for name, line, column, severity in WANTED:
        code, out, err = place.run("emacs", "--batch", "-Q", "-l", str(place.folder / "check.el"), "-l", str(place.folder / "visit.el"),
                                   "--eval", f'(visit "{name}")')
        assert code == 0 and out == f"{name}:{line}:{column - 1}:{['note', 'warning', 'error'].index(severity)}\n", (code, out, err)
    return "Emacs"


def vscode(recipe, place):
    task = json.loads(recipe)["tasks"][0]
    pattern = task["problemMatcher"]["pattern"]
    code, out, _ = place.run(task["command"], *task["args"])
    matches = [re.match(pattern["regexp"], line) for line in out.splitlines()]
    found = [(m.group(pattern["file"]), int(m.group(pattern["line"])), int(m.group(pattern["column"])), m.group(pattern["severity"])) for m in matches]
    assert code == 1 and found == [("./" + name, *rest) for name, *rest in WANTED], out
    return "VS Code"


def pre_commit(source, recipe, place):
    if not shutil.which("pre-commit") or not shutil.which("git"):
        return "pre-commit left out: apt-get install pre-commit git"
    hooks, repository = place.folder / "hooks", place.folder / "repository"
    for folder in (hooks, repository):
        folder.mkdir()
        assert place.run("git", "init", "-q", cwd=folder)[0] == 0
    shutil.copy(source / ".pre-commit-hooks.yaml", hooks)
    place.run("git", "add", ".", cwd=hooks)
    assert place.run("git", "commit", "-qm", "hooks", cwd=hooks)[0] == 0
    revision = place.run("git", "rev-parse", "HEAD", cwd=hooks)[1].strip()
    place.write("repository/.pre-commit-config.yaml", recipe.replace("URL", str(hooks)).replace("REVISION", revision))
    place.write("repository/.quor-gjf", '[files]\nexclude = ["old/**"]\n')
    place.write("repository/old/bad.gjf", BAD)
    place.write("repository/bad.inp", BAD)

    def run(name, text):
        place.write("repository/" + name, text)
        place.run("git", "add", ".", cwd=repository)
        code, out, err = place.run("pre-commit", "run", "--all-files", cwd=repository)
        return code, out + err

    code, told = run("job.gjf", GOOD)
    assert code == 1 and told.count("Passed") == 2 and (repository / "job.gjf").read_text() == ALIGNED, told
    code, told = run("job.gjf", ALIGNED)
    assert code == 0 and told.count("Passed") == 3, told
    code, told = run("job.com", BAD)
    assert code == 1 and "job.com:5: error: " in told and "old/bad.gjf" not in told and "bad.inp" not in told, told
    code, told = run("job.com", FIXABLE)
    assert code == 1 and "files were modified by this hook" in told, told
    assert (repository / "job.com").read_text() == FIXABLE + "\n"
    code, told = run("job.com", FIXABLE + "\n")
    assert code == 0, told
    return "pre-commit"


def main():
    tool, source = pathlib.Path(sys.argv[1]), pathlib.Path(sys.argv[2])
    place = Place(tool, pathlib.Path(sys.argv[3]))
    found = recipes(source)
    steps = {"slurm": slurm, "workflow": workflow, "vim": vim, "emacs": emacs, "vscode": vscode,
             "pre-commit": lambda recipe, place: pre_commit(source, recipe, place)}
    assert set(found) == set(steps), f"recipes without a test, or tests without a recipe: {set(found) ^ set(steps)}"
    print("; ".join([configuration(source, place), *(step(found[name], place) for name, step in steps.items())]))


if __name__ == "__main__":
    main()
