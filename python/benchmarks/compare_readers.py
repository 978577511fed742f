"""Compares the time to read job files with other Python readers, in one run on the same files.

Each reader is asked for elements and positions as an array. Times are the best of several rounds, in milliseconds a file. A reader that
is not installed, or does not read the files, is left out with the reason.
"""
import pathlib
import platform
import sys
import tempfile
import time

import numpy as np

import quor_gjf as gjf

SIZES = (30, 300, 3000, 20000)


def job_text(count):
    """A job of `count` atoms. All elements have an even number of electrons, since one reader checks the multiplicity."""
    rng = np.random.default_rng(count)
    symbols = np.resize(["C", "O", "Si", "C", "S", "O"], count)
    rows = "".join(f"{symbol:<2} {x:14.8f} {y:14.8f} {z:14.8f}\n" for symbol, (x, y, z) in zip(symbols, rng.uniform(-40, 40, (count, 3))))
    return f"%chk=job.chk\n%mem=8GB\n%nproc=8\n#p b3lyp/6-31g(d) opt=(ts,calcfc) freq\n\nA job of {count} atoms\n\n0 1\n{rows}\n"


def ours(path):
    job = gjf.read(path)
    return job.symbols, job.positions


def ase_reader():
    from ase.io import read

    def read_ase(path):
        atoms = read(path, format="gaussian-in")
        return atoms.get_chemical_symbols(), atoms.positions
    return read_ase


def pymatgen_reader():
    from pymatgen.io.gaussian import GaussianInput

    def read_pymatgen(path):
        molecule = GaussianInput.from_file(path).molecule
        return [site.specie.symbol for site in molecule], molecule.cart_coords
    return read_pymatgen


def best_time(read, path, rounds, seconds):
    best = float("inf")
    deadline = time.perf_counter() + seconds
    for turn in range(rounds):
        begin = time.perf_counter()
        read(path)
        best = min(best, time.perf_counter() - begin)
        if turn >= 2 and time.perf_counter() > deadline:
            break
    return best


def readers():
    yield "quor_gjf", ours
    for name, make in (("ASE", ase_reader), ("pymatgen", pymatgen_reader)):
        try:
            yield name, make()
        except Exception as error:  # noqa: BLE001 - whatever keeps it from being imported
            print(f"{name} is left out: {type(error).__name__}: {error}", file=sys.stderr)


def main():
    all_readers = dict(readers())
    print(f"Python {platform.python_version()}, best times in milliseconds a file")
    print("| atoms | " + " | ".join(all_readers) + " | " + " | ".join(f"{name} / quor_gjf" for name in list(all_readers)[1:]) + " |")
    print("|---" * (2 * len(all_readers)) + "|")
    with tempfile.TemporaryDirectory() as folder:
        for count in SIZES:
            path = str(pathlib.Path(folder) / f"{count}.gjf")
            pathlib.Path(path).write_text(job_text(count))
            symbols, positions = ours(path)
            times = []
            for name, read in all_readers.items():
                other_symbols, other_positions = read(path)
                assert list(other_symbols) == symbols and np.allclose(other_positions, positions), f"{name} reads something else"
                times.append(1000 * best_time(read, path, 300, 20))
            ratios = [f"{value / times[0]:.0f}×" for value in times[1:]]
            print(f"| {count} | " + " | ".join(f"{value:.3f}" for value in times) + " | " + " | ".join(ratios) + " |", flush=True)


if __name__ == "__main__":
    main()
