"""Writes the job files that the benchmarks read. The same bytes every time, on every machine.

Usage: make_inputs.py FOLDER             the named inputs
       make_inputs.py --batch N FOLDER   N small job files, for batch commands
"""
import argparse
import pathlib

ROUTES = pathlib.Path(__file__).with_name("routes.txt")
# Routes that ask for no section behind the molecule.
PLAIN_ROUTES = ("#p b3lyp/6-31g(d) opt freq", "#p wb97xd/def2tzvp scf=tight int=ultrafine", "# hf/3-21g opt", "#p mp2/6-311++g(d,p) opt=tight",
                "#p m062x/6-31+g(d,p) opt=(calcfc,maxcycles=100) freq=noraman", "#p cam-b3lyp/6-311+g(d,p) td=(nstates=20,singlets)",
                "#p pbe1pbe/def2svp nmr=giao scrf=(smd,solvent=chloroform)", "#n ccsd(t)/cc-pvtz sp", "#p pm6 opt", "#t b3lyp/6-31g(d) pop=(full,nbo)")
# Half of the atoms are hydrogen; all others have an even number of electrons, or come in pairs.
ELEMENTS = ("C", "H", "C", "H", "O", "H", "C", "H", "N", "H", "N", "H", "C", "H", "S", "H")
# Alanine in a chain: element, type, charge, and the bonds to atoms further on in the same residue (place and order).
RESIDUE = (("N", "N", -0.4157, ((1, 1.0), (2, 1.0))), ("H", "H", 0.2719, ()), ("C", "CT", 0.0337, ((3, 1.0), (4, 1.0), (8, 1.0))),
           ("H", "H1", 0.0823, ()), ("C", "CT", -0.1825, ((5, 1.0), (6, 1.0), (7, 1.0))), ("H", "HC", 0.0603, ()), ("H", "HC", 0.0603, ()),
           ("H", "HC", 0.0603, ()), ("C", "C", 0.5973, ((9, 2.0),)), ("O", "O", -0.5679, ()))


class Numbers:
    """A stream of numbers in [-1, 1): a linear congruence, so that no library can change it."""

    def __init__(self, start):
        self.state = start

    def next(self):
        self.state = (self.state * 6364136223846793005 + 1442695040888963407) % 2**64
        return (self.state >> 11) / 2**52 - 1.0


def positions(count):
    """Places on a shaken grid about the origin, in ångström; no two closer than 1.2."""
    numbers = Numbers(count)
    side = 1
    while side**3 < count:
        side += 1
    for i in range(count):
        yield [1.5 * (place - 0.5 * (side - 1)) + 0.15 * numbers.next() for place in (i // side**2, i // side % side, i % side)]


def head(title, route, pairs="0 1", checkpoint="job"):
    return f"%chk={checkpoint}.chk\n%mem=8GB\n%nprocshared=8\n{route}\n\n{title}\n\n{pairs}\n"


def atom_line(element, place):
    x, y, z = place
    return f" {element:<2}{x:27.8f}{y:14.8f}{z:14.8f}\n"


def cartesian_elements(count):
    elements = [ELEMENTS[i % len(ELEMENTS)] for i in range(count)]
    odd = sum(element in ("H", "N") for element in elements) % 2
    if odd:  # a singlet needs an even number of electrons
        elements[-1] = "O" if elements[-1] in ("H", "N") else "H"
    return elements


def cartesian(count, route="#p b3lyp/6-31g(d) opt freq scrf=(smd,solvent=water)", checkpoint="job"):
    atoms = zip(cartesian_elements(count), positions(count))
    return head(f"job of {count} atoms", route, checkpoint=checkpoint) + "".join(atom_line(*atom) for atom in atoms) + "\n"


def oniom(count):
    """A chain of residues. Of every fifty, five are in the high layer, with a link atom at both ends; far ones are frozen."""
    route = "#p oniom(b3lyp/6-31g(d):amber)=embedcharge geom=connectivity"
    lines = [head(f"oniom of {count} atoms", route, "0 1 0 1 0 1")]
    for i, (x, y, z) in enumerate(positions(count)):
        element, kind, charge, _ = RESIDUE[i % 10]
        turn = i // 10 % 50
        layer = "H" if 20 <= turn < 25 else "L"
        link = f" H-HC-0.1 {i + 3}" if turn == 19 and i % 10 == 8 and i + 3 <= count else f" H-H-0.1 {i - 1}" if turn == 25 and i % 10 == 0 else ""
        lines.append(f" {f'{element}-{kind}-{charge:.6f}':<18}{0 if 15 <= turn < 30 else -1:>4}{x:15.8f}{y:14.8f}{z:14.8f} {layer}{link}\n")
    lines.append("\n")
    for i in range(count):
        bonds = [(i + place - i % 10, order) for place, order in RESIDUE[i % 10][3]] + ([(i + 2, 1.0)] if i % 10 == 8 else [])
        lines.append(f" {i + 1}" + "".join(f" {other + 1} {order:.1f}" for other, order in bonds if other < count) + "\n")
    return "".join(lines) + "\n"


def zmatrix(count):
    """A stretched chain with a hydrogen at each heavy atom from the third on; all lengths, angles and dihedrals are variables."""
    numbers = Numbers(count)
    rows = []
    variables = []
    before = {1: 0, 2: 1, 3: 2}  # the heavy atom before each
    for i in range(1, count + 1):
        hydrogen = i > 3 and i % 2 == 0
        before.setdefault(i, i - 1 if hydrogen else i - 2)
        others = [before[i], before.get(before[i], 0), before.get(before.get(before[i], 0), 0)]
        names = [f"{letter}{i}" for letter, other in zip("rad", others) if other > 0]
        element = "N" if i == 1 else "H" if hydrogen else "C"  # one nitrogen: an even number of electrons
        rows.append(f" {element}" + "".join(f"{other:8}   {name:<8}" for other, name in zip(others, names)).rstrip() + "\n")
        values = (1.09 if hydrogen else 1.53, 109.5 + 2 * numbers.next(), (60 if hydrogen else 180) + 5 * numbers.next())
        variables += [f" {name:<8}{value:16.8f}\n" for name, value in zip(names, values)]
    return head(f"zmatrix of {count} rows", "#p hf/6-31g(d) opt=z-matrix") + "".join(rows) + "\n" + "".join(variables) + "\n"


def gen(count):
    """A basis block for every atom, its shells spelled out."""
    numbers = Numbers(count)
    blocks = []
    for i in range(1, count + 1):
        rows = [f"{i} 0\n"]
        for shell, primitives in (("S", 6), ("S", 3), ("P", 3), ("S", 1), ("P", 1), ("D", 1)):
            rows.append(f" {shell}   {primitives} 1.00\n")
            rows += [f"{1500.0 / 4.3**k * (1.1 + 0.1 * numbers.next()):20.10f}{0.55 + 0.4 * numbers.next():20.10f}\n" for k in range(primitives)]
        blocks.append("".join(rows) + "****\n")
    return cartesian(count, "#p b3lyp/gen opt") + "".join(blocks) + "\n"


def jobs(count):
    pieces = []
    for i in range(count):
        route = PLAIN_ROUTES[i % len(PLAIN_ROUTES)]
        if i % 5 == 4:  # a second step on the same molecule
            pieces.append(f"%chk=job{i - 1}.chk\n{route} geom=allcheck guess=read\n\n")
        else:
            pieces.append(cartesian(12 + i % 29, route, f"job{i}"))
    return "--Link1--\n".join(pieces)


def write(folder, name, text):
    folder.mkdir(parents=True, exist_ok=True)
    (folder / name).write_text(text, encoding="ascii", newline="\n")


def write_inputs(folder):
    write(folder, "small.gjf", cartesian(30))
    write(folder, "medium.gjf", cartesian(1_000))
    write(folder, "cartesian_10000.gjf", cartesian(10_000))
    write(folder, "large.gjf", cartesian(100_000))
    write(folder, "oniom_large.gjf", oniom(100_000))
    for count in (5_000, 10_000, 20_000, 200_000):
        write(folder, f"oniom_{count}.gjf", oniom(count))
    write(folder, "zmatrix.gjf", zmatrix(2_000))
    write(folder, "gen.gjf", gen(500))
    write(folder, "jobs.gjf", jobs(1_000))
    write(folder, "routes.txt", ROUTES.read_text(encoding="ascii"))


def write_batch(folder, count):
    for i in range(count):
        write(folder, f"{i:05}.gjf", cartesian(12 + i % 29, PLAIN_ROUTES[i % len(PLAIN_ROUTES)], f"job{i}"))


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("--batch", type=int, metavar="N")
    parser.add_argument("folder", type=pathlib.Path)
    arguments = parser.parse_args()
    if arguments.batch is None:
        write_inputs(arguments.folder)
    else:
        write_batch(arguments.folder, arguments.batch)


if __name__ == "__main__":
    main()
