"""Cuts the power while many files are changed in place, and looks at what the disk holds then.

Usage: power_cuts_test.py TOOL FLUSH_LIBRARY WORK_FOLDER CUTS

Each command of a row changes all files on an ext4 file system whose disk notes what is written and flushed. A cut at any write keeps what was
flushed before it and some of what was not. Then each file must be as the last command that ended left it, or as the one under way
was to leave it. The same with flushes left out must show losses: else this test would see nothing.
"""
import os
import pathlib
import random
import shutil
import subprocess
import sys
import tempfile

import noting_disk

COMMANDS = 5
FOLDERS, FILES = 3, 16
SIZE = 16 << 20
BLOCK = 4096  # what a disk writes as a whole


def job(file, command):
    """A job as command number `command` leaves it; some are longer than a block."""
    return f"%mem={command + 1}GB\n# hf/sto-3g\n\nt\n\n0 1\n" + "".join(f"He 0.0 0.0 {atom}.0\n" for atom in range(1 + file % 4 * 150)) + "\n"


def names():
    return [(f"{folder}/{file:02}.gjf", file) for folder in range(FOLDERS) for file in range(FILES)]


def new_disk(work):
    """The bytes of a file system that holds the files."""
    shutil.rmtree(work / "jobs", ignore_errors=True)
    for name, file in names():
        path = work / "jobs" / name
        path.parent.mkdir(parents=True, exist_ok=True)
        path.write_text(job(file, 0), encoding="utf-8")
    (work / "jobs/.quor-gjf").touch()
    image = work / "image"
    image.write_bytes(bytes(SIZE))
    subprocess.run(["mke2fs", "-q", "-F", "-t", "ext4", "-b", str(BLOCK), "-N", "512", "-J", "size=4", "-d", str(work / "jobs"), str(image)],
                   check=True, stdin=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
    return image.read_bytes()


def recorded(work, tool, content, environment):
    """Runs the commands; returns what the disk noted."""
    (work / "fuse").mkdir(exist_ok=True)
    (work / "ext4").mkdir(exist_ok=True)
    disk = noting_disk.NotingDisk(str(work / "fuse"), content)
    try:
        mounted = subprocess.run(["mount", "-o", "loop,noauto_da_alloc", disk.path, str(work / "ext4")], check=False, capture_output=True, text=True)
        if mounted.returncode != 0:
            raise OSError(mounted.stderr.strip())
        try:
            for command in range(1, COMMANDS + 1):
                subprocess.run([tool, "edit", "--in-place", "--set", f"mem={command + 1}GB", "."], cwd=work / "ext4", check=True,
                               capture_output=True, env={**os.environ, **environment})
                disk.note("told")
        finally:
            subprocess.run(["umount", str(work / "ext4")], check=True)
    finally:
        subprocess.run(["umount", str(work / "fuse")], check=True)
    return disk.log


def keep(content, written, share):
    """Writes to `content`; of each block with this probability."""
    for offset, data in written:
        for begin in range(0, len(data), BLOCK):
            if random.random() < share:
                content[offset + begin:offset + begin + BLOCK] = data[begin:begin + BLOCK]


def disks_after_cuts(content, log, cuts):
    """For each cut, at a write taken by chance: how many commands had ended, and what the disk holds."""
    writes = [place for place, entry in enumerate(log) if isinstance(entry, tuple)]
    chosen = set(random.sample(writes, min(cuts, len(writes))))
    durable, pending, told = bytearray(content), [], 0
    for place, entry in enumerate(log):
        if entry is noting_disk.FLUSHED:
            keep(durable, pending, 1)
            pending = []
        elif entry == "told":
            told += 1
        else:
            pending.append(entry)
        if place in chosen:
            left = bytearray(durable)
            keep(left, pending, random.choice((0, 0.2, 0.5, 0.8, 1)))
            yield told, left


def losses(work, told, content):
    """What is wrong on a disk after `told` commands had ended."""
    image, out = work / "image", work / "out"
    image.write_bytes(content)
    if subprocess.run(["e2fsck", "-fp", str(image)], check=False, capture_output=True).returncode > 1:
        return ["the file system is broken"]
    shutil.rmtree(out, ignore_errors=True)
    out.mkdir()
    subprocess.run(["debugfs", "-R", f"rdump / {out}", str(image)], check=True, capture_output=True)
    wrong = []
    for name, file in names():
        text = (out / name).read_text(encoding="utf-8") if (out / name).exists() else None
        if text not in (job(file, told), job(file, told + 1)):
            first = "missing" if text is None else "empty" if not text else text[:text.find("\n")]
            wrong.append(f"after {told} commands {name} is {first}, {len(text or '')} bytes")
    return wrong


def cut(work, tool, environment, cuts):
    """Plays cuts through; returns how many, how many of them at what a command had not flushed, and what was lost."""
    content = new_disk(work)
    log = recorded(work, tool, content, environment)
    lost, count = [], 0
    for told, left in disks_after_cuts(content, log, cuts):
        count += 1
        lost.append(losses(work, told, left))
    return count, [each for each in lost if each], log


def main():
    tool, library, place, cuts = os.path.abspath(sys.argv[1]), os.path.abspath(sys.argv[2]), sys.argv[3], int(sys.argv[4])
    missing = [name for name in ("mke2fs", "e2fsck", "debugfs", "mount") if shutil.which(name) is None]
    if missing:
        return print(f"{cuts} cuts of power were left out: there is no {missing[0]}")
    random.seed(1)
    pathlib.Path(place).mkdir(parents=True, exist_ok=True)
    with tempfile.TemporaryDirectory(dir=place) as folder:
        work = pathlib.Path(folder)
        try:
            noting_disk.own_mounts()
            count, lost, log = cut(work, tool, {}, cuts)
        except OSError as error:
            return print(f"{cuts} cuts of power were left out: {error}")
        assert count == cuts, f"{count} writes alone"
        assert not lost, f"{len(lost)} of {count} cuts lost something: {lost[0][:5]}"
        without = cut(work, tool, {"LD_PRELOAD": library, "FLUSH_MICROSECONDS": "0"}, 20)
        assert without[1], "without flushes nothing is lost either: this test sees nothing"
        flushes = sum(entry is noting_disk.FLUSHED for entry in log)
        print(f"{count} cuts at {len(log)} writes and {flushes} flushes of the disk: every file old or new; "
              f"without flushes {len(without[1])} of {without[0]} lose something")


if __name__ == "__main__":
    main()
