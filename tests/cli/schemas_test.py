"""Holds the JSON Schemas of docs/schemas closed: what the tool prints has no key that they lack, and they have none that is never seen.

Usage: schemas_test.py TOOL SOURCE WORK_FOLDER [LIBRARY]    # with the library, requests too, which the tool has no command for
"""
import ctypes
import json
import os
import pathlib
import shlex
import shutil
import subprocess
import sys

TYPES = {"string": str, "integer": int, "number": (int, float), "boolean": bool, "array": list, "object": dict}
SPOILT = ("# hf/sto-3g opt=clacfc opt=(ts,tight)\n\nt\n\n0 1\nO 0 0 0\nH 0 0 1\nH 0 0 1\n\n"
          "--Link1--\n# hf/gen\n\nt\n\n0 1\nO 0 0 0x\n\n")
# Outputs in miniature: an optimization within a scan that ran out of steps, with all that may be told of one, and one that breaks off.
HEAD = (" Entering Link 1 = /g16/l1.exe PID= 1.\n Gaussian 16:  ES64L-G16RevC.01  3-Jul-2019\n %chk=a.chk\n %mem=1GB\n %nprocshared=4\n"
        " -----\n # opt\n -----\n -----\n title\n -----\n Charge =  0 Multiplicity = 1 in supermolecule\n"
        " 7 basis functions, 21 primitive gaussians\n 5 alpha electrons 5 beta electrons\n")
GEOMETRY = " Input orientation:\n -----------\n Center\n Number\n -----------\n 1 8 0 0.0 0.0 0.{}\n -----------\n"
FORCES = ("".join([" Item               Value     Threshold  Converged?\n", " Maximum Force            0.01 0.1 NO\n", " RMS     Force            0.01 0.1 NO\n",
                   " Maximum Displacement     0.01 0.1 NO\n", " RMS     Displacement     0.01 0.1 NO\n"]))
STEP = GEOMETRY + " SCF Done:  E(RHF) =  -75.{}     A.U. after    8 cycles\n Step number {} out of a maximum of 2 on scan point 1 out of 3\n" + FORCES
STOPPED = (HEAD + STEP.format(1, 5, 1) + STEP.format(2, 4, 2) + " Optimization stopped.\n    -- Number of steps exceeded\n" + GEOMETRY.format(2) +
           " Frequencies --   -20.0   10.0\n" + FORCES + " Point Number:  1     Path Number: 1\n Use %mem=11MW to provide\n"
           " Error termination via Lnk1e in /g16/l9999.exe at\n Job cpu time: 0 days 0 hours 0 minutes 1.5 seconds.\n"
           " Elapsed time: 0 days 0 hours 0 minutes 1.5 seconds.\n")
CHECKPOINT = ("title\nFOpt      RHF                           STO-3G\n" + "Charge".ljust(43) + "I                0\n" +
              "Multiplicity".ljust(43) + "I                1\n" + "Job Status".ljust(43) + "I                3\n" +
              "Atomic numbers".ljust(43) + "I   N=           1\n           8\n" +
              "Current cartesian coordinates".ljust(43) + "R   N=           3\n  0.00000000E+00  0.00000000E+00  0.00000000E+00\n")
FILES = {
    "a.log": STOPPED,
    "a.chk": "",
    "cut.log": HEAD,
    "slurm-1.out": "g16 cut.gjf\n*** JOB 1 CANCELLED AT 2024-03-14T22:23:40 DUE TO TIME LIMIT ***\n",
    "young.log": HEAD,
    "m.fchk": CHECKPOINT,
    "spoilt.gjf": SPOILT,
    "rows.gjf": "%mem=1GB\n# hf/sto-3g opt=modredundant\n\nt\n\n0 1\nO\nH 1 r\nH 1 r 2 a\n\nr=0.9\n\na=104\n\nB 1 2 F\n\n",
    "wide.gjf": "%nproc=2\n# hf/sto-3g\n\nt\n\n0 1\nO(Iso=18,ResName=WAT,ResNum=1,Fragment=1) 0 0 0\nH 0 0 1\nH 0 1 0\n\n",
    "named.gjf": "# hf/gen\n\nt\n\n0 1\nHe 0 0 0\n\n@nothing.gbs\n\n",
    "symbols.gjf": "# hf/gen extraoverlays\n\n1/38=1/1;\n\nt\n\n0 1\nHe 0 0 z\n\nz=1.0\n\n",
    "a.gjf": "%mem=1GB\n# hf/sto-3g freq\n\na\n\n0 1\nHe 0 0 0\n\n--Link1--\n# hf/sto-3g\n\nb\n\n0 1\nNe 0 0 0\n\n",
    "b.gjf": "# hf/sto-3g opt\n\nb\n\n0 1\nHe 0 0 1\n\n",
}
# scf=(qc,xqc) would be worse, and nobody knows which multiplicity or charge is meant.
DROPPED = "# hf/sto-3g scf=qc xqc\n\nt\n\n0 2\nHe 0 0 0\n\n"
REQUESTS = {
    "fix": [(text, {"unsafe-fixes": True}) for text in (SPOILT, DROPPED)],
    "edit": [(SPOILT, {"add-atom": "H 0 0 1.01", "option": "opt=(ts,calcfc,clacfc)", "allow-unknown": True, "remove-keyword": "freq"}),
             (FILES["a.gjf"], {"charge": "1", "strict": True, "job": 1}), (FILES["b.gjf"], {"add-keyword": "opt=tihgt", "allow-unknown": True})],
}
RUNS = (
    ("check", ["check --json spoilt.gjf rows.gjf"]),
    ("find", ["find --json hf ."]),
    ("diff", ["diff --json a.gjf b.gjf"]),
    ("diagnose", ["diagnose --json --steps a.log cut.log young.log m.fchk"]),
    ("select", ["outline --json --select 1-2 rows.gjf b.gjf"]),
    ("outline", ["outline --json spoilt.gjf rows.gjf symbols.gjf"]),
    ("error", ["check --json missing.gjf"]),
    ("report", ["report --json {source}/examples/jobs {source}/examples/forms wide.gjf spoilt.gjf rows.gjf named.gjf"]),
    ("complete", ["complete --json hf", "complete --json opt=calc", "complete --json scrf=solvent=wat"]),
    ("word", ["schema show --json opt", "schema show --json irc=maxpoints"]),
    ("route", ["route --json '#p ccsd(t,maxcyc=30)/6-31g*/auto//cas(2,2)/sto-3g opt=clacfc opt=tight foo geom=connectivity 6-31g'",
               "route --json 'oniom(b3lyp/6-31g*:uff) pop=f'"]),
)


def problems(value, schema, place, seen):
    """What of a value a schema does not allow; notes in `seen` the keys that were there."""
    if "enum" in schema:
        if value not in schema["enum"]:
            yield f"{place}: {value!r} is none of {schema['enum']}"
        return
    names = schema["type"] if isinstance(schema["type"], list) else [schema["type"]]
    if not any(isinstance(value, TYPES[name]) and not (isinstance(value, bool) and name != "boolean") for name in names):
        yield f"{place}: {value!r} is no {' or '.join(names)}"
    elif schema["type"] == "object" and schema["additionalProperties"]:  # any keys, as of a label's parameters
        for item in value.values():
            yield from problems(item, schema["additionalProperties"], f"{place}.*", seen)
    elif schema["type"] == "array":
        for item in value:
            yield from problems(item, schema["items"], f"{place}[]", seen)
    elif schema["type"] == "object":
        assert schema["additionalProperties"] is False, place
        for key in schema["required"]:
            if key not in value:
                yield f"{place}: no {key}"
        for key, item in value.items():
            seen.add(f"{place}.{key}")
            if key in schema["properties"]:
                yield from problems(item, schema["properties"][key], f"{place}.{key}", seen)
            else:
                yield f"{place}: the schema lacks {key}"


def keys(schema, place):
    """All keys that a schema names."""
    if schema.get("type") == "array":
        yield from keys(schema["items"], f"{place}[]")
    for key, below in schema.get("properties", {}).items():
        yield f"{place}.{key}"
        yield from keys(below, f"{place}.{key}")


def request_answers(library, kind):
    """What the library answers to requests that the tool has no command for."""
    library = ctypes.CDLL(library)
    library.gjf_request.restype = ctypes.c_void_p
    library.gjf_result_text.argtypes = library.gjf_result_destroy.argtypes = [ctypes.c_void_p]
    library.gjf_result_text.restype = ctypes.c_char_p
    for text, options in REQUESTS[kind]:
        result = library.gjf_request(kind.encode(), text.encode(), ctypes.c_size_t(len(text.encode())), json.dumps(options).encode())
        yield library.gjf_result_text(result).decode()
        library.gjf_result_destroy(result)


def main():
    tool, source, work = sys.argv[1], pathlib.Path(sys.argv[2]), pathlib.Path(sys.argv[3]).resolve()
    shutil.rmtree(work, ignore_errors=True)
    work.mkdir(parents=True)
    (work / ".quor-gjf").touch()
    # A vocabulary that does not load lies on the way to the one beside the library, which every answer tells.
    broken = work / "resources/schemas/input/gaussian_route.yaml"
    broken.parent.mkdir(parents=True)
    broken.write_text("states: [1, 2\n", encoding="utf-8")
    tool, source = pathlib.Path(tool).resolve(), source.resolve()
    os.environ.pop("QUOR_G16_ROUTE_SCHEMA_YAML", None)
    os.chdir(work)
    for name, text in FILES.items():
        (work / name).write_text(text, encoding="utf-8")
    found = []
    runs = {**dict(RUNS), **(dict.fromkeys(REQUESTS, ()) if len(sys.argv) > 4 else {})}
    for kind, commands in runs.items():
        schema = json.loads((source / f"docs/schemas/{kind}.schema.json").read_text(encoding="utf-8"))
        lines, seen = list(request_answers(sys.argv[4], kind)) if kind in REQUESTS else [], set()
        for command in commands:
            result = subprocess.run([tool, *shlex.split(command.replace("{source}", str(source)))], cwd=work, capture_output=True, text=True, check=False)
            lines += result.stdout.splitlines()
            assert lines, f"{command} prints nothing: {result.stderr}"
        for line in lines:
            found += problems(json.loads(line), schema, kind, seen)
        found += [f"{key} is never seen" for key in sorted(set(keys(schema, kind)) - seen)]
    kinds = {*REQUESTS, *runs}
    found += [f"{p.name} is not tested" for p in (source / "docs/schemas").glob("*.json") if p.name.split(".")[0] not in kinds]
    print("\n".join(found) or f"{len(runs)} schemas hold")
    return 1 if found else 0


if __name__ == "__main__":
    sys.exit(main())
