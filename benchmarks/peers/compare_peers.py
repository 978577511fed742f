"""Times other programs' readers on the files that our library is timed on, in one run, and prints the ratios.

Usage: compare_peers.py BUILD [--seconds S] [--json] [--picture SVG]

Each is asked to read a file into its own kind of molecule; Open Babel reads Gaussian's Z-matrices alone, cclib outputs alone.
Ours is the benchmark read_file of library_benchmark: file to job model. Times are processor times, the best of several. Each reader
must find the number of atoms that are there, and the last atom's place where the file has Cartesian coordinates. What is not installed, or
does not read a file, is left out with the reason.
"""
import argparse
import contextlib
import importlib.metadata
import io
import json
import pathlib
import subprocess
import sys
import time
import warnings

HERE = pathlib.Path(__file__).resolve().parent
sys.path[:0] = [str(HERE), str(HERE.parent)]
import picture  # noqa: E402
import right_answers  # noqa: E402
import starting  # noqa: E402

FILES = ("small", "medium", "large", "oniom_large", "zmatrix", "gen")


def ase_reader():
    from ase.io import read

    def read_ase(path):
        atoms = read(path, format="gaussian-in")
        return len(atoms), atoms.positions[-1]
    return read_ase


def pymatgen_reader():
    from pymatgen.io.gaussian import GaussianInput

    def read_pymatgen(path):
        molecule = GaussianInput.from_file(path).molecule
        return len(molecule), molecule[-1].coords
    return read_pymatgen


def iodata_reader():
    from iodata import load_one
    from iodata.utils import angstrom

    def read_iodata(path):
        molecule = load_one(path, fmt="gaussianinput")
        return molecule.natom, molecule.atcoords[-1] / angstrom
    return read_iodata


def cclib_reader():
    import logging

    import cclib

    def read_cclib(path):
        with contextlib.redirect_stdout(io.StringIO()), contextlib.redirect_stderr(io.StringIO()):
            found = cclib.io.ccread(path, loglevel=logging.CRITICAL)
        if found is None:
            raise ValueError("is no output")
        return found.natom, found.atomcoords[-1][-1]
    return read_cclib


def open_babel_reader():
    from openbabel import openbabel
    openbabel.obErrorLog.SetOutputLevel(0)

    def read_open_babel(path):
        conversion = openbabel.OBConversion()
        conversion.SetInFormat("gzmat")
        molecule = openbabel.OBMol()
        if not conversion.ReadFile(molecule, path):
            raise ValueError("not read")
        atom = molecule.GetAtom(molecule.NumAtoms())
        return molecule.NumAtoms(), (atom.x(), atom.y(), atom.z()) if atom else None
    return read_open_babel


def python_package_reader():
    import quor_gjf

    def read_quor_gjf(path):
        job = quor_gjf.read(path)
        positions = job.positions
        return len(positions) - job.symbols.count("Tv"), positions[-1]
    return read_quor_gjf


PEERS = {"quor_gjf (Python)": python_package_reader, "ASE": ase_reader, "pymatgen": pymatgen_reader, "iodata": iodata_reader,
         "cclib": cclib_reader, "Open Babel": open_babel_reader}
DISTRIBUTIONS = {"ASE": "ase", "pymatgen": "pymatgen", "iodata": "qc-iodata", "cclib": "cclib"}
OTHERS = tuple(PEERS)[1:]


def readers(complain):
    found = {}
    for name, make in PEERS.items():
        try:
            found[name] = make()
        except Exception as error:  # noqa: BLE001 - whatever keeps it from being imported
            complain(f"{name} is left out: {type(error).__name__}: {error}")
    return found


def versions(names):
    """The other readers with their versions."""
    def version(name):
        if name in DISTRIBUTIONS:
            return importlib.metadata.version(DISTRIBUTIONS[name])
        from openbabel import openbabel
        return openbabel.OBReleaseVersion()
    return ", ".join(f"{name} {version(name)}" for name in names if name in OTHERS)


def molecule_lines(path):
    lines = path.read_text(encoding="ascii").split("\n")
    begin = lines.index("", lines.index("") + 1) + 2
    return lines[begin:lines.index("", begin)]


def expected(path):
    """The number of atoms, and the last one's place or, of a Z-matrix, None."""
    lines = molecule_lines(path)
    numbers = [field for field in lines[-1].split() if field.count(".") == 1 and "-" not in field[1:]]
    return len(lines), [float(number) for number in numbers[:3]] if len(numbers) >= 3 else None


def difference(found, wanted):
    count, place = found
    if count != wanted[0]:
        return f"finds {count} atoms of {wanted[0]}"
    if wanted[1] is not None and any(abs(a - b) > 1e-6 for a, b in zip(place, wanted[1])):
        return f"finds the last atom elsewhere, at {list(place)}"
    return None


def best_time(read, path, seconds):
    best = float("inf")
    deadline = time.perf_counter() + seconds
    while best == float("inf") or time.perf_counter() < deadline:
        begin = time.process_time()
        read(path)
        best = min(best, time.process_time() - begin)
    return best


def time_peer(read, path, seconds):
    """The best time, or the reason why there is none."""
    try:
        wrong = difference(read(str(path)), expected(path))
        return wrong or best_time(read, str(path), seconds)
    except Exception as error:  # noqa: BLE001 - each reader fails in its own way
        return f"{type(error).__name__}: {str(error)[:60]}"


def our_times(build):
    """Seconds to read each file, the best of several runs of the benchmark."""
    command = [str(build / "benchmarks/library_benchmark"), f"--benchmark_filter=^read_file/({'|'.join(FILES)})$", "--benchmark_format=json",
               "--benchmark_repetitions=5", "--benchmark_min_time=0.1", "--benchmark_enable_random_interleaving=true"]
    output = subprocess.run(command, capture_output=True, text=True, check=True).stdout
    times = {}
    for run in json.loads(output)["benchmarks"]:
        if run["run_type"] == "iteration":
            name = run["run_name"].split("/")[1]
            times[name] = min(times.get(name, float("inf")), 1e-6 * run["cpu_time"])
    return times


def compare(build, seconds, peers):
    """For each file its size, our time, and for each reader its time or the reason why there is none."""
    ours = our_times(build)
    table = {}
    for name in FILES:
        path = build / "inputs" / f"{name}.gjf"
        times = {peer: time_peer(read, path, seconds) for peer, read in peers.items()}
        table[name] = {"bytes": path.stat().st_size, "ours": ours[name], "peers": times}
    return table


def compare_in_own_python(build, seconds):
    """What `compare` gives, from the Python that has the peers: that of `make bench-peers` where it was made."""
    own = build / "peers/bin/python"
    command = [str(own) if own.exists() else sys.executable, str(HERE / "compare_peers.py"), str(build), "--seconds", str(seconds), "--json"]
    return json.loads(subprocess.run(command, stdout=subprocess.PIPE, text=True, check=True).stdout)


def cell(row, peer):
    value = row["peers"][peer]
    if isinstance(value, str):
        return "-"
    return f"{1000 * value:.2f} ms, {row['bytes'] / value / 1e6:.2f} MB/s, {value / row['ours']:.0f}×"


def print_table(table):
    peers = list(next(iter(table.values()))["peers"])
    print("Time, speed, and how many times ours, which is the library reading from the file:\n")
    print("| file | ours | " + " | ".join(peers) + " |\n|---|---|" + "---|" * len(peers))
    for name, row in table.items():
        ours = f"{1000 * row['ours']:.3f} ms, {row['bytes'] / row['ours'] / 1e6:.0f} MB/s"
        print(f"| {name} | {ours} | " + " | ".join(cell(row, peer) for peer in peers) + " |")
    reasons = [f"{peer}, {name}: {value}" for name, row in table.items() for peer, value in row["peers"].items() if isinstance(value, str)]
    print("\nNot read:\n" + "\n".join(f"- {reason}" for reason in reasons) if reasons else "")


def print_answers(peers, path):
    real = right_answers.real_files()
    files = right_answers.examples() + real
    what = f"{len(files) - len(real)} examples" + (f" and {len(real)} real files" if real else "")
    results = right_answers.ask(peers, files)
    print("\n".join(right_answers.lines(results, what)))
    for name, row in results.items():
        print(f"\n{name} does not read right:\n" + "\n".join(f"- {each}" for each in row["wrong"]) if row["wrong"] else "")
    if path:
        path.write_text(picture.picture(results, what, versions(peers)), encoding="utf-8")


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("build", type=pathlib.Path)
    parser.add_argument("--seconds", type=float, default=3.0, help="for each reader and file")
    parser.add_argument("--json", action="store_true", help="print the times alone, as JSON")
    parser.add_argument("--picture", type=pathlib.Path, help="draw what is read right")
    arguments = parser.parse_args()
    warnings.simplefilter("ignore")
    sys.path[:0] = [str(folder) for folder in [starting.installed_package(arguments.build)] if folder]
    peers = readers(lambda text: print(text, file=sys.stderr))
    if arguments.json:
        print(json.dumps(compare(arguments.build, arguments.seconds, peers)))
        return
    print_answers(peers, arguments.picture)
    print_table(compare(arguments.build, arguments.seconds, peers))


if __name__ == "__main__":
    main()
