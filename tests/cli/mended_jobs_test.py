"""Faults that a seeded script makes of clean jobs, and what the fixes make of them: the clean job again, or nothing; never a third.

A fault is determined where the faulty text alone tells the clean one: DETERMINED lists these kinds, each with its reason. Of the others
several clean jobs could be meant, so most are only found. Every code comes at least twice; what checks.md calls wrong and right, and
the faults of the checker's table, are looked at too.

Usage: mended_jobs_test.py TOOL SOURCE WORK_FOLDER
"""
import difflib
import json
import os
import pathlib
import random
import re
import shutil
import subprocess
import sys
from collections import Counter, defaultdict

SEED = 20
ATTEMPTS = 6  # of each kind, in clean jobs that are chosen anew
LEAST_DETERMINED = 0.9
LEAST_OF_ALL = 0.4
MOST_IN_PART = 0.01

WATER = "0 1\nO   0.000000   0.000000   0.117300\nH   0.000000   0.757200  -0.469200\nH   0.000000  -0.757200  -0.469200\n"


def job(head, molecule=WATER, *sections):
    return head + "\n\nA clean job\n\n" + molecule + "\n" + "".join(section + "\n\n" for section in sections)


# Beside the clean jobs of the checker's tables.
JOBS = [
    job("%mem=800MB\n# m062x/def2tzvp opt=(tight,noeigentest,ts,calcfc) freq scrf=(smd,solvent=dichloromethane)"),
    job("# pbepbe/def2svp scf=(tight,maxcycles=200) nosymmetry"),
    job("%mem=1536MB\n# pbe1pbe/def2tzvp opt=calcfc integral=ultrafine"),
    job("# wb97xd/6-311+g(d,p) td=(nstates=10,root=2) scf=xqc"),
    job("# hseh1pbe/6-31g(d) opt scrf=(solvent=acetonitrile)"),
    job("# b3lyp/6-31g(d) empiricaldispersion=gd3 opt"),
    job("# b3lyp/6-31g(d) empiricaldispersion=gd3bj freq"),
    job("# pm6 opt"),
    job("# pm7 freq"),
    job("#p am1 opt=tight", "0 1\nC 0.0 0.0 0.67\nC 0.0 0.0 -0.67\nH 0.0 0.92 1.24\nH 0.0 -0.92 1.24\nH 0.0 0.92 -1.24\nH 0.0 -0.92 -1.24\n"),
    job("# hf/gen", WATER, "O H 0\ndef2tzvp\n****"),
    job("# b3lyp/gen opt", WATER, "O H -Cl 0\ndef2svp\n****"),
    job("# hf/gen", WATER, "-Fe 0\nLANL2DZ\n****\nO H 0\n6-31G\n****"),
    job("# hf/6-31g(d) freq", "0 1\nO 0.0 0.0 0.1173\nH(Iso=2) 0.0 0.7572 -0.4692\nH 0.0 -0.7572 -0.4692\n"),
    job("# hf/6-31g(d)", "0 1\nH 0.0 0.0 0.0\nH(Iso=3) 0.0 0.0 0.74\n"),
    job("# hf/6-31g(d) units=au", "0 1\nO 0.0 0.0 0.2217\nH 0.0 1.4309 -0.8867\nH 0.0 -1.4309 -0.8867\n"),
    job("# b3lyp/6-31g(d) opt units=au", "0 1\nC 0.0 0.0 1.26\nC 0.0 0.0 -1.26\nH 0.0 1.744 2.339\nH 0.0 -1.744 2.339\nH 0.0 1.744 -2.339\nH 0.0 -1.744 -2.339\n"),
    job("# hf/6-31g(d) pop=nboread", WATER, "$NBO BNDIDX\n$END"),
    job("# hf/6-31g(d) scrf=(pcm,read)", WATER, "epsinf=1.8"),
]


def replace(pattern, by):
    """A fault: one match of a pattern, chosen at random, is replaced."""

    def make(text, choose):
        found = list(re.finditer(pattern, text, re.MULTILINE))
        if not found:
            return None
        match = choose.choice(found)
        return text[: match.start()] + match.expand(by) + text[match.end() :]

    return make


def replace_all(pattern, by):
    return lambda text, choose: re.sub(pattern, by, text, flags=re.MULTILINE)


def route_of(text):
    match = re.search(r"^#.*\n(?:.+\n)*", text, re.MULTILINE)
    return match.start(), match.end()


def swap(pattern):
    """A fault: two neighbouring letters of one word of the head change places."""

    def make(text, choose):
        end = route_of(text)[1]
        words = list(re.finditer(pattern, text[:end], re.MULTILINE))
        if not words:
            return None
        word = choose.choice(words)
        places = [i for i in range(1, len(word[0]) - 1) if word[0][i] != word[0][i + 1]]
        at = choose.choice(places)
        swapped = word[0][:at] + word[0][at + 1] + word[0][at] + word[0][at + 2 :]
        return text[: word.start()] + swapped + text[word.end() :]

    return make


def add_to_route(words):
    def make(text, choose):
        end = route_of(text)[1]
        return text[: end - 1] + " " + words + text[end - 1 :]

    return make


def on(words, make):
    """The fault in those jobs alone whose text has some words."""
    return lambda text, choose: make(text, choose) if re.search(words, text, re.MULTILINE) else None


def with_count(text, choose):
    """The two lines of an .xyz file above the atoms."""
    atoms = re.search(r"(?<=^0 1\n)((?:[A-Z][a-z]? .*\n)+)\n", text, re.MULTILINE)
    return atoms and text[: atoms.start()] + f"{atoms[1].count(chr(10))}\nfrom a file\n" + text[atoms.start() :]


def with_atomic_numbers(text, choose):
    numbers = {"H": 1, "C": 6, "N": 7, "O": 8}
    atoms = replace_all(r"^([HCNO])(?=(?: +-?\d\.\d+){3}$)", lambda match: f"{match[1]} {numbers[match[1]]} ")
    return atoms(text, choose)


def drop_last_row_of_bonds(text, choose):
    return re.sub(r"\n\d+\n\n\Z", "\n\n", text) if "geom=connectivity" in text else None


# Name: why the text determines the clean one, and how the fault is made.
DETERMINED = {
    "no blank line at the end": ("a job ends in one", lambda text, choose: text.rstrip("\n") + "\n"),
    "no line end at all": ("a job ends in a blank line", lambda text, choose: text.rstrip("\n")),
    "one line of another system": ("all other lines end alike", replace(r"(?<=\w)\n(?=\w)", r"\r\n")),
    "carriage returns alone": ("they end lines", lambda text, choose: text.replace("\n", "\r")),
    "byte order mark": ("it is no part of a job", lambda text, choose: "\ufeff" + text),
    "no-break space": ("it is seen as a blank", replace(r"(?<=[\w)]) (?=opt|freq|scf|scrf|td|geom|nosymm|int|pop)", "\u00a0")),
    "form feed": ("it is seen as a blank", replace(r"(?<=[\w)]) (?=opt|freq|scf|scrf|td|geom|nosymm)", "\f ")),
    "typographic minus": ("it is seen as a minus", replace(r"(?<= )-(?=\d\.\d)", "\u2212")),
    "typographic dash in a basis set": ("it is seen as a minus", replace(r"6-31", "6\u201331")),
    "dash in a method": ("one method is written so elsewhere", replace(r"m062x", "m06-2x")),
    "dash in a basis set": ("one basis set is written so elsewhere", replace(r"def2(?=tzvp|svp)", "def2-")),
    "method by its paper's name": ("one method has this name", replace(r"pbe1pbe(?=/)", "pbe0")),
    "hybrid by its paper's name": ("one method has this name", replace(r"hseh1pbe", "hse06")),
    "dispersion in the method's name": ("one keyword says it", replace(r"b3lyp(/\S+) empiricaldispersion=gd3(bj)?(?= )", r"b3lyp-d3\2\1")),
    "letters swapped in an option": ("one option is near", swap(r"(?<=[(,=])(?!(?:dichlor|aceto))[a-z]{7,}(?=[,)= \n])")),
    "letters swapped in a method": ("one method is near", swap(r"(?<= )(?:m062x|wb97xd|pbepbe|casscf)(?=[/(])")),
    "letters swapped in a Link 0 key": ("one key is near", swap(r"(?<=^%)(?:nprocshared|chk|mem)(?==)")),
    "letters swapped in a solvent": ("one solvent is near", swap(r"(?<=solvent=)(?:water|acetonitrile|dichloromethane)")),
    "abbreviated solvent": ("one solvent has this name", replace(r"dichloromethane", "dcm")),
    "solvent without its keyword": ("it is one alone", replace(r"(?<=smd,)solvent=", "")),
    "no parentheses": ("the words behind the comma are options of the keyword", replace(r"=\(((?:[a-z]+=?\w*,)+[a-z]+=?\w*)\)", r"=\1")),
    "blank for the sign of equality": ("one keyword has this option", replace(r"(?<= opt)=(?=calcfc|modredundant)", " ")),
    "option without its keyword": ("one keyword has this option", replace(r"scf=(?=xqc)", "")),
    "option twice": ("the second says nothing new", replace(r"\(((?:tight|calcfc|smd|pcm))(,[^)]*)\)", r"(\1\2,\1)")),
    "keyword twice": ("the second says nothing new", replace(r"(?<= )(freq|nosymmetry|nosymm|opt)(?=[ \n])", r"\1 \1")),
    "word at the print level": ("# takes n, p or t alone", replace(r"^# (?=pbe|pm)", "#")),
    "no keyword for connectivity": ("the rows stand below", replace(r" geom=connectivity", "")),
    "no keyword for changes of coordinates": ("the rows stand below", replace(r"=modredundant", "")),
    "keyword for bonds that are not there": ("nothing stands below", on(r"^# (?:pbepbe/def2|pm6|wb97xd|m062x)", add_to_route("geom=connectivity"))),
    "potentials unread": ("they stand below", replace(r"genecp", "gen")),
    "row of bonds less": ("the last atom has no later one", drop_last_row_of_bonds),
    "blank line before the charge": ("two blank lines say nothing more", replace(r"(?<=clean job\n)\n", "\n\n")),
    "blank line before the title": ("two blank lines say nothing more", replace(r"\n\n(?=A clean)", "\n\n\n")),
    "no blank line before the charge": ("two whole numbers are no title", replace(r"(?<=clean job\n)\n", "")),
    "blank line in the route": ("the words are of a route", replace(r"(?<=\n)(?=  scf=)", "\n")),
    "no blank line before the variables": ("a row of the molecule has no =", replace(r"\n\n(?=(?:roh|R2)=)", "\n")),
    "count of atoms above them": ("the count is theirs", with_count),
    "decimal commas": ("all numbers have them", on(r"\d\.\d{6}", replace_all(r"(?<=\d)\.(?=\d{6})", ","))),
    "letter O in a number": ("it is seen as a zero", replace(r"(?<= )0(?=\.\d{6})", "O")),
    "letter l in a number": ("it is seen as a one", replace(r"(?<=\d)1(?=\d*$)", "l")),
    "atomic numbers behind symbols": ("other programs write them there", with_atomic_numbers),
    "blank in an amount": ("a number and its unit", replace(r"(?<==\d)(?=GB)", " ")),
    "unit without its B": ("one unit begins so", replace(r"(?<==\d)GB", "G")),
    "half a unit": ("1024 of the next smaller are one", replace(r"(?<=%mem=)1536MB", "1.5GB")),
    "short separator": ("it begins like one", replace(r"--Link1--", "--Link1-")),
    "no separator": ("a head stands behind a job", replace(r"--Link1--\n(?=%chk=step.chk\n# b3lyp)", "")),
    "no blank line before the separator": ("a job ends in one", replace(r"\n\n(?=--Link1--)", "\n")),
    "list without its end": ("the route ends there", replace(r"(?<=[a-z\d])\)(?=\n\n[A-Z])", "")),
    "list without its beginning": ("it begins behind the sign of equality", replace(r"(?<==)\((?=[a-z]+,[^()]*\))", "")),
    "block of a basis set without its end": ("the next block begins there", replace(r"\*{4}\n(?=[A-Z][a-z]? 0)", "")),
    "last block without its end": ("the section ends there", replace(r"\*{4}\n(?=\n)", "")),
    "basis set of a block with a dash": ("one basis set is written so elsewhere", replace(r"^def2(?=tzvp|svp)", "def2-")),
    "element that is not there": ("a minus tells that it may be missing", replace(r"-(?=(?:Cl|Fe) )", "")),
    "NBO without its end": ("$NBO ends in $END", replace(r" ?\$END|\n\$END", "")),
    "letter twice in a keyword of the solvent": ("one keyword is near", replace(r"(?<=^eps)inf(?==)", "inff")),
    "isotope for an element": ("D and T are hydrogen", lambda text, choose: text.replace("H(Iso=2)", "D") if "Iso=2" in text else text.replace("H(Iso=3)", "T"))
    ,
    "no units": ("the distances are bohr", replace(r" units=au", "")),
    "no letter for the high layer": ("without one an atom is in it", replace(r"(?<=0\.000)  H$", "")),
    "link atom not said": ("the bond that is cut is the only one", replace(r"(?<=  L)  H  2$", "")),
}

# Several clean jobs could be meant.
UNDETERMINED = {
    "another multiplicity": replace(r"^0 1$", "0 2"),
    "another charge": replace(r"^0 1$", "1 1"),
    "no charge": replace(r"^0 1$", "1"),
    "an atom less": replace(r"^H .*\n", ""),
    "atom twice": replace(r"^(H .*\n)", r"\1\1"),
    "no unit of memory": replace(r"(?<=%mem=)(\d+)[GM]B", r"\g<1>00000000"),
    "two counts of processors": replace(r"^%nprocshared=.*\n", r"\g<0>%cpu=0-7\n"),
    "no title": replace(r"A clean job\n\n", ""),
    "no method": replace(r"(?<=^# )(b3lyp|hf)/", ""),
    "two methods": replace(r"(?<=^# )(b3lyp|hf)/", r"\1 mp2/"),
    "two basis sets": replace(r"/6-31g\(d\)", "/6-31g(d) 6-311g(d)"),
    "method with a basis set of its own": replace(r"(?<=^# )pm(\d)", r"pm\1/6-31g(d)"),
    "two ways to the first Hessian": replace(r"(?<=calcfc)(?=[,)])", ",calcall"),
    "two ways to go": on(r"^# (?:pbe1pbe/def2|pm6|hseh1)", add_to_route("irc=calcfc")),
    "no first Hessian": replace(r"(?<=ts),calcfc", ""),
    "path without Hessian": replace(r"(?<=irc=\()calcfc,", ""),
    "bonds that are gone": replace(r"(?<=\n\n)1 2 2.0(?:.*\n)+\n", ""),
    "changes of coordinates that are gone": replace(r"(?<=\n\n)[BD] \d.*\n(?:.+\n)*\n", ""),
    "basis set that is gone": replace(r"(?<=\n\n)[OC][A-Za-z -]* 0\n(?:.+\n)*\n", ""),
    "atom outside": replace(r"^B (\d) \d F", r"B \1 9 F"),
    "bond to an atom outside": replace(r"^2 5 1\.0 6", "2 5 1.0 9"),
    "another root": replace(r"root=2", "root=20"),
    "unknown element": replace(r"^O ", "J "),
    "no number": replace(r"(?<=\d)\.(?=7572)", ".75."),
    "coordinate less": replace(r"^(H .*) +-?[\d.]+$", r"\1"),
    "distance that is tiny": replace(r"0\.757200", "0.007572"),
    "no value of a variable": replace(r"^hoh=.*\n", ""),
    "reference to a later row": replace(r"^H 1 roh$", "H 3 roh"),
    "solvent that is none": replace(r"solvent=(?:water|acetonitrile)", "solvent=mayonnaise"),
    "option that is none": replace(r"(?<=opt=)\(", "(wubble,"),
    "keyword that is none": add_to_route("wubble"),
    "key that is none": lambda text, choose: "%wubble=1\n" + text,
    "checkpoint of nobody": on(r"^# (?:pbepbe/def2|pm6)", add_to_route("guess=read")),
    "checkpoint that is not there": on(r"^# (?:pbepbe/def2|pm6)", lambda text, _: "%oldchk=nowhere.chk\n" + text.replace("\n\n", " guess=read\n\n", 1)),
    "element without basis set": replace(r"^H 0\n(?:.+\n)*?\*{4}\n", ""),
    "fragment that is none": replace(r"(?<=^H\(Fragment=)2", "7"),
    "unknown basis set": replace(r"(?<=/)def2tzvp", "wubble2tzvp"),
    "number of ends of the scan": replace(r" S 12 10\.0", " S 12"),
}


# What no edit of one job makes.
NOT_MADE = {"GJF-L010": "two files write one checkpoint", "GJF-I": "files that jobs name", "GJF-X": "rules of a site, or a comment that silences nothing"}

# All codes of the table of fixes in tests/unit/check/fix_text_test.cpp.
FIXABLE = """L001 L002 L003 L005 M001 M002 M006 M011 M013 M015 P001 R001 R002 R003 R004 R006 R008 R009 R010 R011 R012 R021 R022 S001 S002 S005
    S009 S010 S011 S016 S017 T001 T002 T003 T004 T005 T006 T007 T008 T009 T010 T013 W005""".split()


def bases(source):
    text = (source / "tests/unit/check/jobs/bases.txt").read_text(encoding="utf-8")
    return {part.split("\n", 1)[0]: part.split("\n", 1)[1] for part in text.split("=== ")[1:]}


def pairs_of_explanations(source):
    """What the explanation of each code calls wrong, and right: alone, and before another job."""
    text = (source / "resources/knowledge/checks.md").read_text(encoding="utf-8")
    jobs = re.findall(r"^(Wrong|Right):\n\n```\n(.*?)^```$", text, re.MULTILINE | re.DOTALL)
    texts = [re.sub(rb"\\x([0-9A-F]{2})", lambda code: bytes([int(code[1], 16)]), each.encode()) for _, each in jobs]
    for wrong, right in zip(texts[::2], texts[1::2]):
        for behind in (b"", b"--Link1--\n# hf/sto-3g\n\nanother\n\n0 1\nHe 0.0 0.0 0.0\n\n"):
            yield "of the explanations", right + behind, wrong + behind


class Tool:
    def __init__(self, program, work):
        self.program, self.work = program, work

    def lines(self, *arguments):
        result = subprocess.run([self.program, *arguments], cwd=self.work, capture_output=True, text=True, check=False)
        assert result.stdout, result.stderr
        return [json.loads(line) for line in result.stdout.splitlines()]

    def write(self, folder, texts):
        (self.work / folder).mkdir()
        for number, text in enumerate(texts):
            (self.work / folder / f"{number:05}.gjf").write_bytes(text if isinstance(text, bytes) else text.encode())

    def texts(self, folder):
        return [path.read_bytes() for path in sorted((self.work / folder).iterdir())]

    def readings(self, folder):
        return [without_spelling(line) for line in self.lines("report", "--json", folder)]

    def codes(self, folder):
        """The codes of each file, with their severity."""
        return [[(each["code"], each["severity"]) for each in line["findings"]] for line in self.lines("check", "--json", folder)]


def without_spelling(value):
    """What is compared of jobs: words, charges, atoms and sections. Line ends part no words of NBO."""
    if isinstance(value, dict):
        left_out = {"written", "route_words", "warnings", "title", "file", "unknown", "request"}
        return {key: without_spelling(item) for key, item in value.items() if key not in left_out}
    if isinstance(value, str) and value.startswith("$"):
        return " ".join(value.split())
    return [without_spelling(item) for item in value] if isinstance(value, list) else value


def made_faults(source):
    """(kind, clean, faulty) of all kinds, each several times."""
    choose = random.Random(SEED)
    clean_jobs = JOBS + list(bases(source).values())
    for kind, make in {**{kind: make for kind, (_, make) in DETERMINED.items()}, **UNDETERMINED}.items():
        fitting = [text for text in clean_jobs if make(text, random.Random(0)) not in (None, text)]
        assert fitting, f"no clean job for: {kind}"
        for _ in range(ATTEMPTS):
            clean = choose.choice(fitting)
            yield kind, clean, make(clean, choose)


def lost_lines(clean, faulty, mended):
    """The lines that fault and clean job share and the mended one lacks."""
    first, last = clean.splitlines(), faulty.splitlines()
    same = Counter()
    for block in difflib.SequenceMatcher(None, first, last, autojunk=False).get_matching_blocks():
        same.update(first[block.a : block.a + block.size])
    return same - Counter(mended.splitlines())


def told_as_wrong(codes):
    return Counter(code for code, severity in codes if severity != "note")


class Fault:
    """One fault: its texts, and what the tool reads and finds in them, each of the clean, the faulty and the mended job."""

    def __init__(self, kind, texts, readings, codes):
        self.kind = kind
        clean, faulty, mended = texts
        self.new_codes = {code for code, _ in codes[1]} - {code for code, _ in codes[0]}
        self.lost = lost_lines(clean, faulty, mended)
        still_wrong = told_as_wrong(codes[2]) - told_as_wrong(codes[0])
        if mended == faulty:
            self.outcome = "left"
        elif still_wrong:
            self.outcome = "mended in part"  # and told of
        else:
            self.outcome = "mended" if readings[2] == readings[0] else "a third job"
        diff = difflib.unified_diff(*(text.decode(errors="replace").splitlines() for text in (clean, mended)), lineterm="")
        self.difference = "\n".join(diff)


def watch(tool, source):
    """All faults, with what became of them."""
    faults = [*made_faults(source), *pairs_of_explanations(source)]
    tool.write("clean", [clean for _, clean, _ in faults])
    tool.write("faulty", [faulty for _, _, faulty in faults])
    shutil.copytree(tool.work / "faulty", tool.work / "mended")
    tool.lines("check", "--fix", "--unsafe-fixes", "--json", "mended")
    folders = ("clean", "faulty", "mended")
    columns = [zip(*(ask(folder) for folder in folders)) for ask in (tool.texts, tool.readings, tool.codes)]
    return [Fault(kind, *row) for (kind, _, _), *row in zip(faults, *columns)]


def touched_lines(text, findings):
    """The numbers of the lines, from 0, that the offered fixes change."""
    for edit in (edit for each in findings for fix in each.get("fixes", ()) for edit in fix["edits"]):
        first = text.count(b"\n", 0, edit["begin"])
        yield from range(first, first + text.count(b"\n", edit["begin"], edit["end"]) + 1)


def watch_real_files(tool, folder):
    """Real job files: every line stays that no offered fix touches. Returns what is wrong."""
    paths = sorted(path for path in pathlib.Path(folder).rglob("*") if path.suffix in (".gjf", ".com"))
    assert len(paths) >= 100, folder
    tool.write("real", [path.read_bytes() for path in paths])
    shutil.copytree(tool.work / "real", tool.work / "real_mended")
    findings = [line["findings"] for line in tool.lines("check", "--json", "real")]
    tool.lines("check", "--fix", "--unsafe-fixes", "--json", "real_mended")
    changed = 0
    for path, old, new, found in zip(paths, tool.texts("real"), tool.texts("real_mended"), findings):
        lines = old.split(b"\n")
        matcher = difflib.SequenceMatcher(None, lines, new.split(b"\n"), autojunk=False)
        gone = {line for what, begin, end, _, _ in matcher.get_opcodes() if what in ("replace", "delete") for line in range(begin, end)}
        changed += old != new
        if gone - set(touched_lines(old, found)):
            yield f"{path}: changed without a fix: {[lines[line] for line in sorted(gone - set(touched_lines(old, found)))]}"
    print(f"{changed} of {len(paths)} real files mended")


def distribution(title, pairs):
    """Prints how many faults of each kind, or code, were mended."""
    table = defaultdict(Counter)
    for name, outcome in pairs:
        table[name][outcome] += 1
    print(title, *(f"  {name}: {dict(table[name])}" for name in table), sep="\n")
    return table


def share_of_mended(faults):
    return sum(fault.outcome == "mended" for fault in faults) / len(faults)


def main():
    program, source, work = sys.argv[1], pathlib.Path(sys.argv[2]), pathlib.Path(sys.argv[3])
    shutil.rmtree(work, ignore_errors=True)
    work.mkdir(parents=True)
    (work / ".quor-gjf").write_text('ignore = ["GJF-L010"]\n', encoding="utf-8")  # many of the jobs are alike
    tool = Tool(program, work)
    faults = watch(tool, source)
    distribution("kinds", ((fault.kind, fault.outcome) for fault in faults))
    codes = distribution("codes", sorted((code, fault.outcome) for fault in faults for code in fault.new_codes))
    determined = [fault for fault in faults if fault.kind in DETERMINED]
    made = [fault for fault in faults if fault.kind in DETERMINED or fault.kind in UNDETERMINED]
    print(f"{len(determined)} determined, {share_of_mended(determined):.0%} mended; {len(made)} in all, {share_of_mended(made):.0%} mended")
    wrong = [f"{fault.kind}: a third job\n{fault.difference}" for fault in faults if fault.outcome == "a third job"]
    wrong += [f"{fault.kind}: a line lost\n{fault.difference}" for fault in faults if fault.lost]
    wrong += [f"not clean: {found}" for found in tool.codes("clean")[: len(made)] if told_as_wrong(found)]
    explained = re.findall(r"^### (GJF-\w+)", (source / "resources/knowledge/checks.md").read_text(encoding="utf-8"), re.MULTILINE)
    wrong += [f"{code} comes less than twice" for code in explained if sum(codes[code].values()) < 2 and not code.startswith(tuple(NOT_MADE))]
    made_codes = Counter(code for fault in made for code in fault.new_codes)
    wrong += [f"GJF-{code} is made less than twice" for code in FIXABLE if made_codes[f"GJF-{code}"] < 2]
    in_part = sum(fault.outcome == "mended in part" for fault in faults)
    wrong += [f"{in_part} faults are mended in part"] * (in_part > MOST_IN_PART * len(faults))
    wrong += ["too few determined faults are mended"] * (share_of_mended(determined) < LEAST_DETERMINED)
    wrong += ["too few faults are mended"] * (share_of_mended(made) < LEAST_OF_ALL)
    if folder := os.environ.get("QUOR_GJF_REAL_FILES"):
        wrong += watch_real_files(tool, folder)
    print("\n".join(wrong))
    return 1 if wrong else 0


if __name__ == "__main__":
    sys.exit(main())
