"""How many job files each reader reads right: the examples, and real files where QUOR_GJF_REAL_FILES names a folder of them.

Right is the number of atoms in the first job, which people counted: the test of the examples, and expected.tsv beside the real files, hold
it. Where it depends on what counts as an atom (ghosts, translation vectors), or the molecule comes from a checkpoint, a file is set aside.
"""
import os
import pathlib
import re
import time

SOURCE = pathlib.Path(__file__).resolve().parents[2]
SET_ASIDE = {"ghost_atoms.gjf", "polymer_periodic.gjf"}


def examples():
    """Paths and numbers of atoms."""
    facts = (SOURCE / "tests/report/example_reports_test.cpp").read_text(encoding="utf-8")
    counts = re.findall(r'\{"([\w.]+\.(?:gjf|com))",\s*\{\{(\d+), ', facts)
    return [(SOURCE / "examples/jobs" / name, int(count)) for name, count in counts if int(count) and name not in SET_ASIDE]


def real_files():
    folder = os.environ.get("QUOR_GJF_REAL_FILES")
    table = pathlib.Path(folder) / "expected.tsv" if folder else None
    if table is None or not table.is_file():
        return []
    rows = [line.split("\t") for line in table.read_text(encoding="utf-8").splitlines()[1:]]
    return [(table.parent / row[0], int(row[1])) for row in rows if row[1]]


def answer(read, path, atoms):
    """Processor seconds, the best of three, or why the answer is not right."""
    best = float("inf")
    try:
        for _ in range(3):
            begin = time.process_time()
            count, _ = read(str(path))
            best = min(best, time.process_time() - begin)
            if count != atoms:
                return f"finds {count} atoms of {atoms}"
    except (Exception, SystemExit) as error:  # noqa: BLE001 - each reader fails in its own way
        return f"{type(error).__name__}: {str(error)[:60]}"
    return best


def ask(readers, files):
    """For each reader how many files it reads right, its time for these, and that of the package, ours, for the same files."""
    answers = {name: [answer(read, path, atoms) for path, atoms in files] for name, read in readers.items()}
    ours = next((each for name, each in answers.items() if name.startswith("quor_gjf")), None)
    results = {}
    for name, each in answers.items():
        both = [i for i, value in enumerate(each) if isinstance(value, float) and ours and isinstance(ours[i], float)]
        results[name] = {"right": sum(isinstance(value, float) for value in each), "files": len(files),
                         "seconds": sum(each[i] for i in both), "ours": sum(ours[i] for i in both) if both else 0.0,
                         "wrong": [f"{path.name}: {value}" for (path, _), value in zip(files, each) if isinstance(value, str)]}
    return results


def lines(results, what):
    """The table, as lines of text."""
    yield f"\nRead right, of {what}, and time for these files over that of quor_gjf (Python):\n"
    yield "| reader | right | times ours |"
    yield "|---|---|---|"
    for name, row in results.items():
        yield f"| {name} | {row['right']} | " + (f"{row['seconds'] / row['ours']:.1f} |" if row["ours"] else "- |")
