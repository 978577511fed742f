"""Reads long outputs that it makes, plain and by gzip: right to the end, and with memory that does not grow with them.

Usage: long_outputs_test.py TOOL WORK_FOLDER [--megabytes 200] [--seconds PLAIN GZIP]    # bounds of processor time, none unless asked for
"""
import argparse
import gzip
import json
import os
import pathlib
import resource
import subprocess
import sys

HEAD = (" Entering Link 1 = /g16/l1.exe PID= 1.\n Gaussian 16:  ES64L-G16RevC.01  3-Jul-2019\n -------------\n # opt hf/sto-3g\n -------------\n"
        " -----\n title\n -----\n Charge =  0 Multiplicity = 1\n")
ATOM = " {:6}          6           0     {:11.6f} {:11.6f} {:11.6f}\n"
ATOMS = 500
RULE = " " + "-" * 69 + "\n"
# What no reader looks at is most of an output.
BETWEEN = "".join(f"    {i:6}  C  -0.{i:06}   0.000000  -0.000123   0.104200\n" for i in range(3 * ATOMS))
LARGEST_KIB = 100 * 1024


def step(number, energy):
    table = "".join(ATOM.format(i + 1, 0.1 * i, 0.01 * number, -0.5 * i) for i in range(ATOMS))
    return ("                          Input orientation:\n" + RULE + " Center\n Number\n" + RULE + table + RULE + BETWEEN +
            f" SCF Done:  E(RHF) =  {energy:.9f}     A.U. after    8 cycles\n Step number {number:3} out of a maximum of 99999\n"
            "         Item               Value     Threshold  Converged?\n Maximum Force            0.010000     0.000450     NO \n"
            " RMS     Force            0.001000     0.000300     NO \n Maximum Displacement     0.020000     0.001800     NO \n"
            " RMS     Displacement     0.010000     0.001200     NO \n")


def make(folder, megabytes):
    """The files, and how many steps they hold. The one by gzip is of members that follow each other, as `cat` makes them."""
    folder.mkdir(parents=True, exist_ok=True)
    plain, packed = folder / "long.log", folder / "long.log.gz"
    steps, size = 0, 0
    with plain.open("w", encoding="ascii") as text, packed.open("wb") as members:
        text.write(HEAD)
        members.write(gzip.compress(HEAD.encode(), 1))
        while size < megabytes * 10**6:
            part = "".join(step(steps + i + 1, -100 - 1e-3 * (steps + i)) for i in range(20))
            steps += 20
            size += len(part)
            text.write(part)
            members.write(gzip.compress(part.encode(), 6))
        end = " Normal termination of Gaussian 16 at Thu Mar 14\n"
        text.write(end)
        members.write(gzip.compress(end.encode()))
    return plain, packed, steps


def run(tool, path):
    """What the tool tells of a file, its processor time and the most memory that it held."""
    before = resource.getrusage(resource.RUSAGE_CHILDREN)
    told = subprocess.run([tool, "diagnose", "--json", path], capture_output=True, text=True, check=True).stdout
    after = resource.getrusage(resource.RUSAGE_CHILDREN)
    return json.loads(told), after.ru_utime + after.ru_stime - before.ru_utime - before.ru_stime, after.ru_maxrss


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("tool")
    parser.add_argument("folder", type=pathlib.Path)
    parser.add_argument("--megabytes", type=int, default=200)
    parser.add_argument("--seconds", type=float, nargs=2, default=(float("inf"), float("inf")))
    wanted = parser.parse_args()
    plain, packed, steps = make(wanted.folder, wanted.megabytes)
    wrong = []
    for path, most in zip((plain, packed), wanted.seconds):
        told, seconds, memory = run(wanted.tool, path)
        print(f"{path.name}: {wanted.megabytes} MB of text in {seconds:.2f} s of processor time, at most {memory / 1024:.0f} MiB")
        if (told["termination"], told["optimization"]["steps"], told["geometry"]["best"]["step"]) != ("normal", steps, steps):
            wrong.append(f"{path.name}: {told['termination']}, {told['optimization']}, {told['geometry']}")
        if abs(told["energy"]["value"] - (-100 - 1e-3 * (steps - 1))) > 1e-8:
            wrong.append(f"{path.name}: energy {told['energy']}")
        if seconds > most:
            wrong.append(f"{path.name}: more than {most} s")
        if memory > LARGEST_KIB:
            wrong.append(f"{path.name}: memory grows with the output")
        os.remove(path)
    print("\n".join(wrong))
    return 1 if wrong else 0


if __name__ == "__main__":
    sys.exit(main())
