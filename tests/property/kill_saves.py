"""Kills a program that saves in a loop, 200 times at random moments: the file must be one of its two texts, whole.

Usage: kill_saves.py SAVE_REPEATEDLY
"""
import collections
import pathlib
import random
import subprocess
import sys
import tempfile
import time

KILLS = 200
ATOMS = 300


def expected_text(element, atoms):
    line = f"{element:<40}    0.000000    0.000000    0.000000       \n"
    return f"# hf/sto-3g \n\n{element}\n\n0 1\n{line * atoms}".rstrip("\n") + "\n\n\n"


def main():
    texts = {expected_text("He", ATOMS): "first", expected_text("Ne", 2 * ATOMS): "second"}
    seen = collections.Counter()
    with tempfile.TemporaryDirectory() as folder:
        path = pathlib.Path(folder) / "job.gjf"
        for kill in range(KILLS):
            with subprocess.Popen([sys.argv[1], str(path), str(ATOMS)], stdout=subprocess.PIPE) as process:
                process.stdout.readline()
                time.sleep(random.uniform(0, 0.02))
                process.kill()
            text = path.read_text(encoding="utf-8")
            if text not in texts:
                print(f"kill {kill}: the file holds neither text but {len(text)} characters")
                return 1
            seen[texts[text]] += 1
    print(f"{KILLS} kills: {dict(seen)}")
    if len(seen) != 2:
        print("the kills never met both texts: nothing was shown")
        return 1
    return 0


if __name__ == "__main__":
    sys.exit(main())
