"""Reads what `quor-gjf check --output-format` prints as other programs read it: JSON, SARIF, XML, lines of gcc, workflow commands.

With QUOR_GJF_SARIF_SCHEMA, the path of the schema of SARIF 2.1.0, and python3-jsonschema, SARIF is compared with the schema as well.

Usage: formats_test.py TOOL WORK_FOLDER
"""
import json
import os
import pathlib
import re
import shutil
import subprocess
import sys
import urllib.parse
import xml.etree.ElementTree

FORMATS = ("json", "gcc", "github", "gitlab", "sarif", "junit")
HEAD = "# hf/sto-3g{}\n\nt\n\n0 {}\nHe 0.0 0.0 0.0\n\n"
# Names and texts that one format or another takes for something else.
FILES = {
    "good.gjf": HEAD.format("", 1),
    "two words, 50% & <odd>: \"it's\".gjf": HEAD.format("", 2),
    "öß.gjf": HEAD.format("", 2),
    "twice.gjf": HEAD.format(" opt=calfc", 2) + "--Link1--\n" + HEAD.format(" opt=calfc", 2),
    "mark.gjf": "\ufeff" + HEAD.format(" opt=calfc", 1),
    "returns.gjf": HEAD.format("", 2).replace("\n", "\r\n"),
    "characters.gjf": "# hf/sto-3g\n\nt\n\n0 1\nHe 0.0 0.0 0.0 !𝛼ö\n\n# hf/sto-3g ö𝛼 opt=calfc\n",
    "wide.gjf": "# hf/sto-3g 𝛼=ö opt=calfc\n\nt\n\n0 1\nHe 0.0 0.0 0.0\n\n",
    "control.gjf": "# hf/sto-3g \x1b[31m Foo]]>=<!-- \u2028\n\nt\n\n0 1\nHe 0.0 0.0 0.0\n\n",
    "empty.gjf": "",
    "warned.gjf": HEAD.format("", 1) + "left\nover\n\n",
}
MISSING = "missing.gjf"


class Run:
    def __init__(self, tool, work, *arguments, **keywords):
        result = subprocess.run([tool, "check", *arguments], cwd=work, capture_output=True, check=False, **keywords)
        self.code, self.text, self.errors = result.returncode, result.stdout.decode("utf-8"), result.stderr.decode("utf-8")


def findings_of(text):
    return {each["file"]: each for each in map(json.loads, text.splitlines())}


def check_gcc(text, found):
    places = re.findall(r"^(.*?):(\d+):(\d+): (error|warning|note): (.*) \[(GJF-[A-Z]\d{3})\]$", text, re.MULTILINE)
    wanted = [(name, f["line"], f["column"], f["severity"], f["code"]) for name, each in found.items() for f in each.get("findings", [])]
    assert [(p[0], int(p[1]), int(p[2]), p[3], p[5]) for p in places] == wanted
    assert len(text.splitlines()) == len(wanted)


def check_github(text, found):
    lines = text.splitlines()
    assert all(re.fullmatch(r"::(error|warning|notice) file=[^:,]*(,line=\d+,col=\d+,endColumn=\d+,title=GJF-[A-Z]\d{3})?::.*", line) for line in lines), lines
    count = sum(len(each.get("findings", [])) + ("error" in each) for each in found.values())
    assert len(lines) == count
    wide = next(line for line in lines if "wide.gjf" in line and "GJF-R001" in line)
    assert ",line=1,col=21,endColumn=26," in wide, wide
    assert any(line.startswith("::error file=two words%2C 50%25 & <odd>%3A") for line in lines)
    assert any(line.startswith("::warning file=warned.gjf,line=8,col=1,endColumn=5,") for line in lines)


def check_gitlab(text, found):
    report = json.loads(text)
    marks = [each["fingerprint"] for each in report]
    assert len(set(marks)) == len(marks), "fingerprints are not unique"
    assert all(set(each) == {"description", "check_name", "fingerprint", "severity", "location"} for each in report)
    assert {each["severity"] for each in report} == {"minor", "critical"}
    assert {each["location"]["path"] for each in report} == {name for name, each in found.items() if each.get("findings", True)}
    assert all(each["location"]["lines"]["begin"] >= 1 for each in report)


def check_sarif(text, found):
    log = json.loads(text)
    assert log["version"] == "2.1.0" and len(log["runs"]) == 1
    run = log["runs"][0]
    assert run["columnKind"] == "unicodeCodePoints"
    rules = [rule["id"] for rule in run["tool"]["driver"]["rules"]]
    assert len(rules) > 60 and len(set(rules)) == len(rules)
    results = run["results"]
    assert all(result.get("ruleId", rules[0]) in rules and result["level"] in ("error", "warning", "note") for result in results)
    by_file = {}
    for result in results:
        place = result["locations"][0]["physicalLocation"]
        by_file.setdefault(urllib.parse.unquote(place["artifactLocation"]["uri"]), []).append((result, place.get("region")))
    assert set(by_file) == {name for name, each in found.items() if each.get("findings", True)}
    region = {each["ruleId"]: region for each, region in by_file["wide.gjf"]}["GJF-R001"]
    assert region == {"startLine": 1, "startColumn": 21, "endColumn": 26}, region
    result, region = by_file["mark.gjf"][-1]
    fix = result["fixes"][0]["artifactChanges"][0]["replacements"][0]
    assert fix["deletedRegion"] == {"startLine": 1, "startColumn": 17, "endLine": 1, "endColumn": 22} and region["startColumn"] == 17
    marks = [result["partialFingerprints"]["quorGjf/v1"] for result in results if "ruleId" in result]
    assert len(set(marks)) == len(marks)
    return log


def check_junit(text, found):
    suites = xml.etree.ElementTree.fromstring(text)
    assert suites.tag == "testsuites" and [suite.get("name") for suite in suites] == list(found)
    for suite in suites:
        each = found[suite.get("name")]
        assert int(suite.get("tests")) == len(suite) == max(len(each.get("findings", [])), 1)
        assert int(suite.get("failures")) == each.get("errors", 0) == len(suite.findall("testcase/failure"))
        assert int(suite.get("errors")) == ("error" in each) == len(suite.findall("testcase/error"))


def check_schema(log):
    path = os.environ.get("QUOR_GJF_SARIF_SCHEMA", "")
    if not os.path.isfile(path):
        return "SARIF not compared with its schema: QUOR_GJF_SARIF_SCHEMA names no file"
    try:
        import jsonschema
    except ImportError:
        return "SARIF not compared with its schema: apt-get install python3-jsonschema"
    schema = json.loads(pathlib.Path(path).read_text(encoding="utf-8"))
    validator = jsonschema.validators.validator_for(schema)(schema)
    problems = [error.message for error in validator.iter_errors(log)]
    assert not problems, problems[:5]
    del log["runs"][0]["tool"]
    assert list(validator.iter_errors(log)), "the schema takes anything"
    return "SARIF as its schema has it"


def check_fingerprints(tool, work):
    """They stay when lines are put before a finding, and change with its message."""
    def marks(text):
        (work / "moved.gjf").write_text(text, encoding="utf-8")
        return [each["fingerprint"] for each in json.loads(Run(tool, work, "--output-format", "gitlab", "moved.gjf").text)]
    before = marks(HEAD.format(" opt=calfc", 1))
    assert before == marks("%mem=1GB\n" + HEAD.format(" opt=calfc", 1)) != marks(HEAD.format(" opt=clacfc", 1))
    (work / "moved.gjf").unlink()


def check_site_rules(tool, work):
    """Each rule of a site that was found stands once among the rules, whatever configuration it came from; others do not."""
    rule = "[rules.{}]\nwhen = \"hf\"\nmessage = \"no {}\"\n"
    for folder, names in (("one", ("a", "b")), ("two", ("b", "c"))):
        (work / folder).mkdir()
        (work / folder / ".quor-gjf").write_text("".join(rule.format(name, name) for name in names), encoding="utf-8")
        (work / folder / "good.gjf").write_text(HEAD.format("", 1), encoding="utf-8")
    run = json.loads(Run(tool, work, "--output-format", "sarif", "--ignore", "site:c", "one", "two", "good.gjf").text)["runs"][0]
    told = [rule for rule in run["tool"]["driver"]["rules"] if rule["id"].startswith("site:")]
    assert told == [{"id": f"site:{name}", "shortDescription": {"text": f"no {name}"}} for name in "ab"], told
    assert [result["ruleId"] for result in run["results"]] == ["site:a", "site:b", "site:b"]


def main():
    tool, work = sys.argv[1], pathlib.Path(sys.argv[2])
    shutil.rmtree(work, ignore_errors=True)
    work.mkdir(parents=True)
    (work / ".quor-gjf").touch()
    for name, text in FILES.items():
        (work / name).write_bytes(text.encode("utf-8"))
    names = [*FILES, MISSING]
    runs = {name: Run(tool, work, "--output-format", name, *names) for name in FORMATS}
    assert all(run.code == 2 for run in runs.values()), {name: run.code for name, run in runs.items()}
    found = findings_of(runs["json"].text)
    assert list(found) == names and runs["json"].text == Run(tool, work, "--json", *names).text
    for name, check in (("gcc", check_gcc), ("github", check_github), ("gitlab", check_gitlab), ("junit", check_junit)):
        check(runs[name].text, found)
    assert all("\x1b" not in run.text for run in runs.values())
    told = check_schema(check_sarif(runs["sarif"].text, found))
    check_fingerprints(tool, work)
    for name in FORMATS:  # nothing found, nothing read, and one thread or several
        check_empty = Run(tool, work, "--output-format", name, "good.gjf")
        assert check_empty.code == 0 and not check_empty.errors
        if name in ("gitlab", "sarif"):
            assert not (json.loads(check_empty.text) if name == "gitlab" else json.loads(check_empty.text)["runs"][0]["results"])
        assert Run(tool, work, "-j1", "--output-format", name, *names).text == runs[name].text == Run(tool, work, "-j5", "--output-format", name, *names).text
    assert "system-out" in Run(tool, work, "--output-format", "junit", "warned.gjf").text
    assert "failure" in Run(tool, work, "--output-format", "junit", "--fail-on", "warning", "warned.gjf").text.replace('failures="', "")
    check_site_rules(tool, work)
    print(f"{len(FORMATS)} formats of {len(names)} files; {told}")


if __name__ == "__main__":
    main()
