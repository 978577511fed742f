"""Shows that the tools of benchmarks/ judge as they should: what is slower fails, what reads something else is not timed.

Usage: benchmark_tools_test.py SOURCE_FOLDER
"""
import hashlib
import pathlib
import re
import sys
import tempfile
from xml.etree import ElementTree

SOURCE = pathlib.Path(sys.argv[1])
sys.dont_write_bytecode = True
sys.path[:0] = [str(SOURCE / "benchmarks"), str(SOURCE / "benchmarks/peers")]
import compare_peers  # noqa: E402
import instructions  # noqa: E402
import make_inputs  # noqa: E402
import picture  # noqa: E402
import report  # noqa: E402
import right_answers  # noqa: E402

# {recorded, counted, fails, first word said}
COUNTS = [(1000, 1000, False, "as"), (1000, 1030, False, "as"), (1000, 1031, True, "MORE"), (1000, 2000, True, "MORE"), (1000, 971, False, "as"),
          (1000, 969, False, "less:")]
# {value, most, least, verdict}
LIMITS = [(3.0, 3.0, None, "met"), (3.01, 3.0, None, "MISSED"), (15.0, None, 15.0, "met"), (14.9, None, 15.0, "MISSED"), (None, None, 15.0, "not measured"),
          (None, 3.0, None, "not measured"), (9.0, None, None, ""), (0.0, 3.0, None, "met"), (0.0, None, 1.0, "MISSED")]
# {what a reader found, whether that is what stands there}
FOUND = [((2, (0.5, -1.25, 3.0)), True), ((1, (0.5, -1.25, 3.0)), False), ((2, (0.5, -1.25, 3.1)), False), ((3, None), False)]
JOB = "# hf\n\ntitle\n\n0 1\nH-H1-0.5 -1 0.0 0.0 0.0 L\nH-H1-0.5 -1 0.5 -1.25 3.0 L H-HC-0.1 1\n\n"


def failures():
    for before, now, fails, word in COUNTS:
        text, failed = instructions.verdict(before, now)
        if (failed, text.split(" ")[0]) != (fails, word):
            yield f"{before} -> {now}: {text}, {failed}"
    for value, most, least, wanted in LIMITS:
        if report.Table.verdict(value, most, least) != wanted:
            yield f"{value} within {most}, {least}: {report.Table.verdict(value, most, least)}"
    with tempfile.TemporaryDirectory() as folder:
        path = pathlib.Path(folder) / "job.gjf"
        path.write_text(JOB, encoding="ascii")
        for found, same in FOUND:
            if (compare_peers.difference(found, compare_peers.expected(path)) is None) != same:
                yield f"{found} was taken for {'something else' if same else 'the job'}"
    # The inputs are what the recorded counts were made with.
    texts = make_inputs.cartesian(30) + make_inputs.oniom(500) + make_inputs.zmatrix(20) + make_inputs.gen(3) + make_inputs.jobs(12)
    digest = hashlib.sha256(texts.encode("ascii")).hexdigest()
    if digest != "0e4f5022ad5244b2ffa0a84777e95d066938099bc26df84fe4094c66e773e531":
        yield f"the inputs have changed: {digest}; renew the record of instructions"
    routes = make_inputs.ROUTES.read_text(encoding="ascii").splitlines()
    if (len(routes), len(set(routes)), len(routes[-1].split())) != (200, 200, 25):
        yield "routes.txt does not hold 200 routes, each once, the last of 25 words"


def refuse(path):
    raise ValueError("not read")


# {a reader, how many of files with 1 and 2 atoms it reads right}
READERS = {"quor_gjf (Python)": (lambda path: (int(path), None), 2), "one atom": (lambda path: (1, None), 1), "none": (refuse, 0),
           "leaves": (lambda path: sys.exit("no"), 0), "no pair": (lambda path: 1, 0)}


def failures_of_pictures():
    results = right_answers.ask({name: read for name, (read, _) in READERS.items()}, [(pathlib.Path("1"), 1), (pathlib.Path("2"), 2)])
    for name, (_, right) in READERS.items():
        row = results[name]
        if (row["right"], len(row["wrong"]), row["files"]) != (right, 2 - right, 2):
            yield f"{name}: {row}"
    svg = ElementTree.fromstring(picture.picture(results, "<2> files", "A & B 1.0"))
    widths = [float(bar.get("width")) for bar in svg.iter("{http://www.w3.org/2000/svg}rect") if bar.get("class") in ("bar", "own")]
    if widths != [picture.BAR, picture.BAR / 2, 0, 0, 0]:
        yield f"the bars are {widths} wide"
    # Each example that holds atoms is asked for, but those set aside.
    asked = {path.name for path, _ in right_answers.examples()}
    jobs = {path.name for path in (SOURCE / "examples/jobs").iterdir() if path.suffix in (".gjf", ".com")}
    without_atoms = {"ethanol_checkpoint_dihedral.gjf", "old_checkpoint_readfc.gjf"}
    if asked != jobs - right_answers.SET_ASIDE - without_atoms:
        yield f"not asked for: {sorted(jobs - asked)}"
    # The text of README.md for those who do not see the picture says what it says.
    drawn = ElementTree.parse(SOURCE / "docs/readers.svg").find("{http://www.w3.org/2000/svg}desc").text
    shown = re.search(r"!\[([^\]]*)\]\(docs/readers\.svg\)", (SOURCE / "README.md").read_text(encoding="utf-8"))
    if shown is None or " ".join(shown[1].split()) != drawn:
        yield f"README.md shows no picture of which it says: {drawn}"


def main():
    found = [*failures(), *failures_of_pictures()]
    print("\n".join(found) or "nothing found")
    return 1 if found else 0


if __name__ == "__main__":
    sys.exit(main())
