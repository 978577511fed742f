"""Edits generated files: a batch in several threads gives what editing them one by one gives, only the lines that an oracle names
differ, files that refuse stay as they are, and the diffs that are shown make the new files of the old ones.

Usage: edit_files_test.py TOOL WORK_FOLDER
"""
import os
import pathlib
import random
import re
import shutil
import subprocess
import sys

FILES = 200
UNTOLD = ["--no-check"]  # what is told is the matter of transcripts
ELEMENTS = ("C", "H", "O", "N", "Cl")


def job(draw, number):
    """A job of its own kind: CRLF or LF, with connectivity or not; every eleventh is a Z-matrix, every seventeenth cannot be read."""
    if number % 17 == 0:
        return "# hf/sto-3g\n\nt\n\n0 1\nHe 0.0 0.0 0.0x\n\n"
    if number % 11 == 0:
        return "%mem=1GB\n# hf/sto-3g\n\nt\n\n0 1\nO\nH 1 r\n\nr=0.96\n\n"
    count = draw.randint(2, 40)
    connected = draw.random() < 0.5
    key = draw.choice(("%mem=", "%Mem = ", "%MEM="))
    lines = [f"{key}{draw.randint(1, 64)}GB", "# hf/sto-3g" + (" geom=connectivity" if connected else ""), "", f"job {number}", "", "0 1"]
    for _ in range(count):
        freeze = draw.choice((" ", "  ")) + "0" if draw.random() < 0.5 else ""
        place = " ".join(f"{draw.uniform(-9, 9):{draw.choice((11, 13))}.{draw.choice((6, 7))}f}" for _ in range(3))
        lines.append(draw.choice(ELEMENTS) + freeze + "  " + place + draw.choice(("", " ! here")))
    lines.append("")
    if connected:
        lines += [f" {i}" + (f" {draw.randint(i + 1, count)} 1.0" if i < count and draw.random() < 0.7 else "") for i in range(1, count + 1)]
        lines.append("")
    return draw.choice(("\n", "\r\n")).join(lines + [""])


def run(tool, work, *arguments):
    result = subprocess.run([tool, "edit", *arguments], cwd=work, capture_output=True, check=False)
    return result.returncode, result.stdout, result.stderr.decode("utf-8")


def contents(folder):
    return {p.name: p.read_bytes() for p in sorted(folder.iterdir())}


def check_lines(before, after, name):
    """Checks what `--set mem=8GB --freeze H=-1` made of a text, told without reading it as a job."""
    old_lines, new_lines = before.split(b"\n"), after.split(b"\n")
    assert len(old_lines) == len(new_lines), name
    for old, new in zip(old_lines, new_lines):
        hydrogen = re.fullmatch(rb"H(?P<code> +0)? +(?P<rest>-?\d+\..*)", old, re.DOTALL)
        if not hydrogen:
            assert new == re.sub(rb"(?i)^(%mem ?= ?)\d+GB", rb"\g<1>8GB", old), (name, old, new)
            continue
        assert re.fullmatch(rb"H +-1 +" + re.escape(hydrogen["rest"]), new), (name, old, new)
        # Columns are kept where there was a field.
        assert not hydrogen["code"] or len(new) == len(old), (name, old, new)


def apply_diffs(texts, diffs):
    """Applies unified diffs to texts by name, checking every line that they name."""
    result = dict(texts)
    for part in re.split(rb"^(?=--- )", diffs, flags=re.MULTILINE)[1:]:
        head, *body = part.split(b"\n")
        name = os.path.basename(head[4:].decode("utf-8"))
        old, new, at = texts[name].split(b"\n"), [], 0
        for line in body[1:-1]:
            place = re.match(rb"@@ -(\d+)(?:,(\d+))? ", line)
            if place:
                first = int(place[1]) - (place[2] != b"0")
                new, at = new + old[at:first], first
                continue
            if line[:1] in b" -":
                assert old[at] == line[1:], (name, at, old[at], line)
                at += 1
            new += [line[1:]] if line[:1] in b" +" else []
        result[name] = b"\n".join(new + old[at:])
    return result


def check_operations(tool, work, operations, step):
    """Returns the texts before and after and how many files failed. Every file whose number is a multiple of step is edited alone too."""
    before = contents(work / "jobs")
    code, diffs, _ = run(tool, work, "jobs", "--diff", *operations)
    assert code == 1 and contents(work / "jobs") == before, "a diff changed files"
    after = {}
    for threads in ("1", "2", "7"):
        shutil.rmtree(work / "copy", ignore_errors=True)
        shutil.copytree(work / "jobs", work / "copy")
        code, _, errors = run(tool, work, "copy", "--in-place", "-j", threads, *operations)
        found = contents(work / "copy")
        after = after or found
        assert code == 1 and found == after, f"-j {threads} gives another result"
        *messages, summary = errors.rstrip().split("\n")
        messages = [message for message in messages if message.startswith("copy/")]
        changed = sum(after[name] != text for name, text in before.items())
        assert summary == f"{FILES} files: {changed} changed, {FILES - changed - len(messages)} unchanged, {len(messages)} failed", summary
        refused = {os.path.basename(message.split(":")[0]) for message in messages}
        assert len(refused) == len(messages) and all(after[name] == before[name] for name in refused), "a file that failed has changed"
    for name in list(before)[::step]:
        code, out, _ = run(tool, work, f"jobs/{name}", *operations)
        assert (code == 1) == (name in refused) and (out or before[name]) == after[name], f"{name} alone gives another result"
    assert apply_diffs(before, diffs) == after, "the diffs tell something else"
    return before, after, len(refused)


def main():
    tool, work = sys.argv[1], pathlib.Path(sys.argv[2])
    shutil.rmtree(work, ignore_errors=True)
    (work / "jobs").mkdir(parents=True)
    (work / ".quor-gjf").touch()
    draw = random.Random(20261121)
    for number in range(FILES):
        (work / "jobs" / f"job_{number:03}.gjf").write_bytes(job(draw, number).encode())
    before, after, failed = check_operations(tool, work, ["--set", "mem=8GB", "--freeze", "H=-1", *UNTOLD], 1)
    assert failed == sum(n % 17 == 0 or n % 11 == 0 for n in range(FILES)), failed
    for name, text in after.items():
        if b"O\nH 1 r" not in text and b"0.0x" not in text:
            check_lines(before[name], text, name)
    before, after, failed = check_operations(tool, work, ["--translate", "1,0,-2.5", "--charge", "-1", "--title", "moved", "--remove-atoms",
                                                          "within 4 of 1 and not 1", *UNTOLD], 4)
    assert failed < FILES / 2 and sum(before[name] != text for name, text in after.items()) == FILES - failed, failed
    print(f"{FILES} files edited alike one by one and by 1, 2 and 7 threads, twice")


if __name__ == "__main__":
    main()
