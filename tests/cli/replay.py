"""Replays the transcripts beside this file and compares what the tool prints and how it exits.

A transcript is a list of commands, each a line that begins with "$ ", what it prints to standard output, lines that begin with "! " for
standard error, and "= N" for its exit code (0 when absent). In a command, quor-gjf is the tool. Files that a transcript needs are made by
lines "< NAME: TEXT" at its head, in which \\n is a line break. "% NAME=VALUE" sets an environment variable.

Usage: replay.py TOOL SOURCE WORK_FOLDER
"""
import os
import pathlib
import shutil
import subprocess
import sys


class Command:
    def __init__(self, line):
        self.line, self.output, self.errors, self.code = line, [], [], 0


def parse(text):
    files, variables, commands = {}, {}, []
    for line in text.split("\n"):
        if line.startswith("< "):
            name, content = line[2:].split(": ", 1)
            files[name] = content.replace("\\n", "\n").replace("\\r", "\r").replace("\\0", "\0")
        elif line.startswith("% "):
            name, value = line[2:].split("=", 1)
            variables[name] = value
        elif line.startswith("$ "):
            commands.append(Command(line[2:]))
        elif line.startswith("! "):
            commands[-1].errors.append(line[2:])
        elif line.startswith("= "):
            commands[-1].code = int(line[2:])
        elif commands:
            commands[-1].output.append(line)
    return files, variables, commands


def text_of(lines):
    return "\n".join(lines) + ("\n" if lines else "")


def differences(transcript, tool, source, work):
    files, variables, commands = parse(transcript.read_text(encoding="utf-8"))
    shutil.rmtree(work, ignore_errors=True)
    work.mkdir(parents=True)
    # So that no configuration file above the work folder has a say.
    (work / ".quor-gjf").touch()
    for name, content in files.items():
        (work / name).parent.mkdir(parents=True, exist_ok=True)
        (work / name).write_text(content, encoding="utf-8", newline="")
    environment = {**os.environ, **{k: v.replace("SOURCE", source) for k, v in variables.items()}, "PATH": f"{tool.parent}:{os.environ['PATH']}"}
    for command in commands:
        while command.output and not command.output[-1]:
            command.output.pop()
        line = command.line.replace("SOURCE", source)
        result = subprocess.run(["bash", "-c", line], cwd=work, env=environment, capture_output=True, text=True, check=False)
        # Trailing empty lines separate the commands of a transcript; they are not compared.
        found = (result.stdout.rstrip("\n"), result.stderr.rstrip("\n"), result.returncode)
        wanted = (text_of(command.output).rstrip("\n"), text_of(command.errors).rstrip("\n"), command.code)
        if found != wanted:
            yield f"{transcript.name}: $ {command.line}\n--- wanted\n{wanted}\n--- found\n{found}"


def main():
    tool, source, work = pathlib.Path(sys.argv[1]), sys.argv[2], pathlib.Path(sys.argv[3])
    transcripts = sorted(pathlib.Path(__file__).parent.glob("*.txt"))
    found = [d for t in transcripts for d in differences(t, tool, source, work / t.stem)]
    print("\n".join(found) or f"{len(transcripts)} transcripts replayed")
    return 1 if found or not transcripts else 0


if __name__ == "__main__":
    sys.exit(main())
