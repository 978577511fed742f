"""Compares what surrounds the tool with the tool: the manual page tells of every command and option, every option is completed, the bash
completion completes, docs/json.md tells every key of the JSON, and the vocabulary is looked for where README.md says.

Usage: surroundings_test.py TOOL SOURCE
"""
import json
import os
import pathlib
import re
import shutil
import subprocess
import sys
import tempfile

BASH = """
source <(quor-gjf completion bash)
complete_line() {
    COMP_LINE=$1 COMP_POINT=${#1}
    read -r -a COMP_WORDS <<< "${1//[=:]/ & }"
    [[ $1 == *" " || $1 == *= ]] && COMP_WORDS+=("")
    COMP_CWORD=$((${#COMP_WORDS[@]} - 1))
    _quor_gjf
    echo "${COMPREPLY[*]}"
}
while IFS= read -r line; do complete_line "$line"; done
"""
# What is completed, and with what. bash itself takes "=" for a break of words.
COMPLETIONS = {
    "quor-gjf ": "report check find diagnose next retry diff outline route complete edit format split join convert schema config lsp mcp completion",
    "quor-gjf c": "check complete convert config completion",
    "quor-gjf help": "",
    "quor-gjf check --fail-on=e": "error",
    "quor-gjf edit --set oldc": "oldchk=",
    "quor-gjf edit --freeze 'C or H=-1' --title x --dr": "--dry-run",
    "quor-gjf check --nothing": "",
    "quor-gjf --config x ch": "check",
    "quor-gjf schema ": "validate show words where",
    "quor-gjf check --fail-on ": "error warning note",
    "quor-gjf check --ignore GJF-W00": "GJF-W001 GJF-W002 GJF-W003 GJF-W004 GJF-W005",
    "quor-gjf check --l": "--list",
    "quor-gjf format --in": "--in-place",
    "quor-gjf edit --remove-": "--remove-keyword --remove-option --remove-atoms --remove-section",
    "quor-gjf edit --unset nprocs": "nprocshared",
    "quor-gjf edit --remove-section nb": "nbo",
    "quor-gjf report --json nosuchfile": "",
    "quor-gjf route m062": "m062x",
    "quor-gjf route hf/def2tzvpp": "hf/def2tzvpp",
    "quor-gjf route opt=calcf": "calcfc",
    "quor-gjf route 'hf opt=(calcfc,ti": "(calcfc,tight",
    "quor-gjf route nothingatall": "",
    "quor-gjf edit --method m062": "m062x",
    "quor-gjf edit --method nothingatall": "",
    "quor-gjf edit --basis def2tzvpp": "def2tzvpp",
    "quor-gjf edit --option opt=calcf": "calcfc",
    "quor-gjf edit --option scrf=solvent=wat": "water",
    "quor-gjf edit --option 'scrf=(smd,solvent=wat": "water",
    "quor-gjf edit --add-keyword scrf=solvent=toluen": "toluene",
    "quor-gjf edit --route '# hf/def2tzvpp": "hf/def2tzvpp",
    "quor-gjf edit --option opt=(maxcycles=": "",
    "quor-gjf find form": "formula formcheck",
    "quor-gjf find 'opt and mult": "multiplicity",
    "quor-gjf find 'not (elec": "(electrons",
    "quor-gjf find method=m062": "m062x",
    "quor-gjf find 'opt and basis = def2tzvpp": "def2tzvpp",
    "quor-gjf find opt=calcf": "calcfc",
    "quor-gjf find opt nosuchfile": "",
    "quor-gjf check --where 'charge = 1 and oldc": "oldchk oldconstants",
    "quor-gjf report --fields file,mult": "file,multiplicity",
    "quor-gjf report --fields nothing": "",
    "quor-gjf edit --set nprocs": "nprocshared=",
    "quor-gjf schema show calcf": "",
    "quor-gjf schema show m062": "m062x",
    "quor-gjf check --fixable GJF-L00": "GJF-L001 GJF-L002 GJF-L003 GJF-L004 GJF-L005 GJF-L006 GJF-L007 GJF-L008 GJF-L009",
    "quor-gjf check --output-format s": "sarif",
    "quor-gjf config ": "show",
}


def output_of(tool, *arguments):
    return subprocess.run([tool, *arguments], capture_output=True, text=True, check=True).stdout


def help_of(tool, *commands):
    result = subprocess.run([tool, *commands, "--help"], capture_output=True, text=True, check=True)
    names = [line.split()[0] for line in result.stdout.split("\n") if line.startswith("  ") and not line.startswith("   ")]
    options = {part for name in names if name.startswith("-") for part in name.split(",")}
    following = result.stdout.partition("\nSubcommands:\n")[2]
    return options, re.findall(r"^  (\w+)", following, re.MULTILINE)


def everything(tool):
    """All commands, as in ["schema", "show"], with their options; the tool itself is []."""
    options, commands = help_of(tool)
    yield [], options
    for command in commands:
        options, below = help_of(tool, command)
        yield [command], options
        for name in below:
            yield [command, name], help_of(tool, command, name)[0]


def manual_problems(source, tool, commands):
    page = output_of(tool, "completion", "manual", source / "cli/quor-gjf.1.in")
    text = page.replace("\\-", "-").replace("\\f", " \\f").replace('"', " ")
    version = output_of(tool, "--version").strip()
    if f'"{version}"' not in page:
        yield f"the manual page is not that of {version}"
    sections = re.split(r"^\.S[SH] ", text, flags=re.MULTILINE)
    tool_options = next(s for s in sections if s.startswith("OPTIONS OF THE TOOL"))
    for command, options in commands:
        heading = "quor-gjf " + " ".join(command)
        own = [s for s in sections if re.match(rf"\s*{heading}\b", s)] if command else [tool_options]
        if not own:
            yield f"the manual page does not tell of {heading}"
        for option in sorted(options - {"-h", "--help"}):
            if not any(re.search(rf"(?<![-\w]){option}(?![-\w])", s) for s in own):
                yield f"the manual page does not tell of {heading} {option}"
    if "--help" not in tool_options:
        yield "the manual page does not tell of --help"
    if '\n.\\" options' in page:
        yield "the manual page still asks for options"
    result = subprocess.run(["groff", "-man", "-ww", "-z"], input=page, capture_output=True, text=True, check=False)
    if result.returncode != 0 or result.stderr:
        yield f"groff: {result.stderr}"


def completion_problems(tool, commands):
    for command, options in commands:
        line = " ".join(["quor-gjf", *command, "--"])
        found = {answer.split("\t")[0] for answer in output_of(tool, "completion", "words", line, "=--").split("\n")}
        yield from (f"{option} of {command} is not completed" for option in sorted(options) if option.startswith("--") and option not in found)
    for shell, check in (("bash", "-n"), ("zsh", "-n"), ("fish", "--no-execute")):
        script = output_of(tool, "completion", shell)
        if "completion words" not in script:
            yield f"{shell}: no script"
        if shutil.which(shell):  # there for those who have the shell
            with tempfile.NamedTemporaryFile("w", encoding="utf-8") as file:
                file.write(script)
                file.flush()
                result = subprocess.run([shell, check, file.name], capture_output=True, text=True, check=False)
            if result.returncode != 0 or result.stderr:
                yield f"{shell}: {result.stderr}"


def bash_problems(tool, source):
    environment = {**os.environ, "PATH": f"{tool.parent}:{os.environ['PATH']}"}
    result = subprocess.run(["bash", "-c", BASH], input="\n".join(COMPLETIONS) + "\n",
                            capture_output=True, text=True, check=False, env=environment, cwd=source / "cli")
    found = result.stdout.split("\n")[:-1]
    if len(found) != len(COMPLETIONS):
        yield f"bash: {len(found)} answers, {result.stderr}"
    for (line, wanted), words in zip(COMPLETIONS.items(), found):
        if words != wanted:
            yield f"bash completes {line!r} with {words!r}, not {wanted!r}"


def keys_of(value):
    """All keys of a JSON value; those below "parameters" are names from the job."""
    if isinstance(value, dict):
        for key, below in value.items():
            yield key
            if key != "parameters":
                yield from keys_of(below)
    elif isinstance(value, list):
        for below in value:
            yield from keys_of(below)


def json_problems(tool, source):
    text = (source / "docs/json.md").read_text(encoding="utf-8")
    jobs = source / "examples/jobs"
    route = "#p mp2(fc)/cc-pvdz/fit//td(nstates=3)hf/gen oniom(hf:uff) opt=(calcfc,maxcycles=3) Foo"
    keys = set()
    for arguments in (["report", jobs, "missing"], ["outline", jobs, jobs / "README.md"], ["check", "-"], ["route", route],
                      ["complete", "opt=(cal"], ["schema", "show", "opt"]):
        result = subprocess.run([tool, *arguments, "--json"], capture_output=True, text=True, check=False,
                                input="# hf/sto-3g opt=calfc\n\nt\n\n0 1\nHe 0.0 0.0 0.0\n\n")
        lines = result.stdout.split("\n")[:-1]
        if not lines or not all(line.startswith('{"version":1,') for line in lines):
            yield f"{arguments}: {result.stdout[:200]!r} {result.stderr}"
        for line in lines:
            keys.update(keys_of(json.loads(line)))
    yield from (f"docs/json.md does not tell of {key}" for key in sorted(keys) if f"`{key}`" not in text)
    if len(keys) < 50:
        yield f"{len(keys)} keys only: {sorted(keys)}"


def editing_problems(source, commands):
    text = (source / "docs/editing.md").read_text(encoding="utf-8")
    options = next(options for command, options in commands if command == ["edit"])
    yield from (f"docs/editing.md does not tell of {option}" for option in sorted(options - {"-h", "--help", "--threads", "--output"})
                if not re.search(rf"(?<![-\w]){option}(?![-\w])", text))


# What is typed, and the options that are offered; nothing where it may mean anything.
SLIPS = {
    "edit --mult 2": "--multiplicity", "edit --meth b3lyp": "--method", "edit --in-plce": "--in-place", "edit --in_place": "--in-place",
    "edit --Method=hf": "--method", "edit -method hf": "--method", "edit --bassi=x": "--basis", "edit --add-keywrd opt": "--add-keyword",
    "edit --remove x": "--remove-keyword, --remove-option or --remove-atoms", "check --unsafe": "--unsafe-fixes", "check --ingore GJF-M": "--ignore",
    "check --outputformat gcc": "--output-format", "report --feilds charge": "--fields", "find --cont": "--count", "schema show --jsn opt": "--json",
    "check --confg x": "--config", "split --jobb 2": "--job", "format --inplace": "--in-place",
}
FAR = ["edit --spin 2", "edit --xyzzy", "edit --m 2", "edit --so", "edit --multiplying 2", "edit --basset hf", "edit --7 x", "edit -q7", "edit --memory 4GB",
       "edit ---", "check --colour-of-things", "check --verbose", "check --recursive", "check --fixx-all-of-it", "check -xyz", "report --sort charge",
       "report --tab", "find --limit 3", "find --regex", "schema show --all opt", "convert --to pdb", "split --each", "diff --brief-words", "route --explainer hf"]


def slip_problems(tool):
    assert len(FAR) > len(SLIPS)
    for line, wanted in [*SLIPS.items(), *((line, None) for line in FAR)]:
        command = [str(tool), *line.split(), "a.gjf"]
        result = subprocess.run(command, capture_output=True, text=True, check=False, cwd="/")
        told = result.stderr.split("\n")[0]
        word = next(word for word in line.split() if word.startswith("-")).split("=")[0]
        right = told == f"{word}: there is no such option; did you mean {wanted}?" if wanted else "did you mean" not in told
        if not right or result.returncode != 2 or result.stdout:
            yield f"{line}: {told!r} and {result.returncode}, not {wanted}"


def vocabulary_problems(tool, source):
    """The order in which README.md says that the vocabulary is looked for."""
    name = "gaussian_route.yaml"
    bare = {key: value for key, value in os.environ.items() if key != "QUOR_G16_ROUTE_SCHEMA_YAML"}
    with tempfile.TemporaryDirectory() as folder:
        top = pathlib.Path(folder).resolve()
        places = [top / "resources/schemas/input", top / "a/share/quorlib/schemas/input", top / "named"]
        for place in places:
            place.mkdir(parents=True)
            (place / name).write_text("states: {GCL: {entries: [{forms: [opt]}]}}\n", encoding="utf-8")
        six, seven = top / "1/2/3/4/5/6", top / "1/2/3/4/5/6/7"
        seven.mkdir(parents=True)
        for where, variable, wanted in ((top, None, places[0]), (top / "a", None, places[1]), (six, None, places[0]),
                                        (seven, None, source / "resources/schemas/input"), (top, places[2] / name, places[2])):
            environment = bare if variable is None else {**bare, "QUOR_G16_ROUTE_SCHEMA_YAML": str(variable)}
            result = subprocess.run([tool, "schema", "where"], capture_output=True, text=True, check=False, cwd=where, env=environment)
            if result.stdout.split("\n")[0] != str(wanted / name):
                yield f"in {where} with {variable}: {result.stdout!r}, not {wanted / name}"


def main():
    tool, source = pathlib.Path(sys.argv[1]), pathlib.Path(sys.argv[2])
    commands = list(everything(tool))
    found = [*manual_problems(source, tool, commands), *completion_problems(tool, commands), *bash_problems(tool, source),
             *json_problems(tool, source), *editing_problems(source, commands), *slip_problems(tool), *vocabulary_problems(tool, source.resolve())]
    print("\n".join(found) or f"{len(commands)} commands and {sum(len(o) for _, o in commands)} options told of")
    return 1 if found or len(commands) < 14 else 0


if __name__ == "__main__":
    sys.exit(main())
