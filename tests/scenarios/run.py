#!/usr/bin/env python3
"""Runs one scenario: the real program on scripts, in a folder of its own.

  run.py PROGRAM SCENARIO [OTHER]

With OTHER the scenario is run by both programs, each in the same folder with the same files to begin with; what they
print, their exit statuses and the files that they leave must be equal byte by byte. Nothing else is checked.

A scenario is a text file. Lines that begin with ";" are its directives, the others are the script of the run above them:

  ;copy FROM TO        copies a file of the source tree into the working folder
  ;make SCRIPT TO      runs a Python script of the source tree, which makes the file
  ;write NAME TEXT     writes a small file, with \\n for line ends and \\xNN for bytes
  ;run ARGUMENTS       starts the program with the lines that follow as its script (none: no script)
  ;= TEXT              stands in the output of that run, behind what was found before
  ;! TEXT              stands nowhere in the output of that run
  ;~ TOL WORD...       a line of the output begins with these words, each number nearer than TOL; colons do not count
  ;expect TOL FILE     each line of this file of the source tree that has no "*" in front is met so by a line of the output
  ;status N            exit status of that run, 0 unless told
  ;file NAME           exists afterwards;  ;nofile NAME  does not
  ;audit NAME          an independent reader finds no fault in this drawing
  ;count NAME TYPE N   the independent reader finds N entities of this type in its model space
  ;holds NAME TEXT     the file holds the text (Windows-1252 or UTF-8);  ;same NAME NAME  equal bytes
  ;alike NAME NAME     drawings of equal bytes but for the next free handle and that of the point tables
  ; anything else      a comment
"""
import difflib
import os
import pathlib
import re
import shlex
import shutil
import subprocess
import sys
import tempfile
import time

scenario = pathlib.Path(sys.argv[2]).resolve()
ROOT = pathlib.Path(__file__).resolve().parent.parent.parent
PYTHON = "/usr/bin/python3" if os.path.exists("/usr/bin/python3") else sys.executable
AUDIT = """
import sys, ezdxf
from ezdxf import recover
doc = ezdxf.readfile(sys.argv[1])
auditor = doc.audit()
faults = [str(e.message) for e in auditor.errors] + ["repaired: " + str(e.message) for e in auditor.fixes]
if len(sys.argv) > 2:
    found = len(doc.modelspace().query(sys.argv[2]))
    if found != int(sys.argv[3]): faults.append("%d %s, expected %s" % (found, sys.argv[2], sys.argv[3]))
print("\\n".join(faults)); sys.exit(1 if faults else 0)
"""


def fail(line, text, output=""):
    print(f"{scenario.name}:{line}: {text}")
    if output:
        print("---- output\n" + output)
    sys.exit(1)


class Run:
    def __init__(self, line, arguments):
        self.line, self.arguments, self.script, self.checks, self.status = line, arguments, [], [], 0


def parse():
    steps, run = [], None
    for number, text in enumerate(scenario.read_text(encoding="utf-8").splitlines(), 1):
        word, _, rest = text.partition(" ")
        if word == ";run":
            run = Run(number, shlex.split(rest))
            steps.append((number, "run", run))
        elif word in (";=", ";!", ";~"):
            run.checks.append((number, word, rest))
        elif word == ";expect":
            tolerance, _, name = rest.partition(" ")
            rows = [row for row in (ROOT / name).read_text(encoding="utf-8").splitlines() if row and row[0] != "*"]
            run.checks += [(number, ";~", f"{tolerance} {row}") for row in rows]
        elif word == ";status":
            run.status = int(rest)
        elif word in (";copy", ";make", ";write", ";file", ";nofile", ";audit", ";count", ";holds", ";same", ";alike"):
            steps.append((number, word[1:], rest))
        elif text.startswith(";"):
            continue
        elif run is not None:
            run.script.append(text)
        elif text.strip():
            fail(number, "a line in front of the first ;run")
    return steps


def near(words, wanted, tolerance):
    def same(word, value):
        try:
            return word == value or abs(float(word) - float(value)) < tolerance
        except ValueError:
            return False

    return len(words) >= len(wanted) and all(map(same, words, wanted))


def start(program, run, folder, environment):
    """Output and exit status of one run."""
    arguments = [str(program)] + run.arguments
    while run.script and not run.script[-1].strip():
        run.script.pop()
    if run.script:
        (folder / "scenario.scr").write_text("\n".join(run.script) + "\n", encoding="utf-8")
        arguments += ["--script", "scenario.scr"]
    done = subprocess.run(arguments, cwd=folder, env=environment, stdin=subprocess.DEVNULL, stdout=subprocess.PIPE,
                          stderr=subprocess.STDOUT, timeout=300)
    return done.stdout.decode("utf-8", "replace"), done.returncode


def execute(run, folder, environment):
    output, status = start(pathlib.Path(sys.argv[1]).resolve(), run, folder, environment)
    at = 0
    for number, kind, text in run.checks:
        if kind == ";!":
            if text in output:
                fail(number, f"the output holds: {text}", output)
            continue
        if kind == ";~":
            tolerance, *wanted = text.replace(":", " ").split()
            if not any(near(row.replace(":", " ").split(), wanted, float(tolerance)) for row in output.splitlines()):
                fail(number, f"no line of the output is near: {text}", output)
            continue
        found = output.find(text, at)
        if found < 0:
            fail(number, f"the output does not hold: {text}", output)
        at = found + len(text)
    if status != run.status:
        fail(run.line, f"exit status {status}, expected {run.status}", output)


def alike(path):
    """The bytes of a drawing without the handles that each save gives anew."""
    text = re.sub(rb"\$HANDSEED\s+5\s+[0-9A-F]+", b"", path.read_bytes())
    tables = re.search(rb"VELTORA4_VARN_DATA\s+360\s+([0-9A-F]+)\s", text)
    return re.sub(rb"(?m)^" + tables[1] + rb"\r?$", b"TABLES", text) if tables else text


def step(number, kind, rest, folder):
    if kind == "copy":
        source, target = rest.split()
        (folder / target).parent.mkdir(parents=True, exist_ok=True)
        shutil.copy(ROOT / source, folder / target)
    elif kind == "make":
        script, target = rest.split()
        done = subprocess.run([PYTHON, str(ROOT / script), target], cwd=folder, stdout=subprocess.PIPE,
                              stderr=subprocess.STDOUT)
        if done.returncode:
            fail(number, f"{script} fails", done.stdout.decode())
    elif kind == "write":
        name, _, text = rest.partition(" ")
        (folder / name).write_bytes(text.encode("utf-8").decode("unicode_escape").encode("latin-1"))
    elif kind in ("file", "nofile"):
        if (folder / rest).exists() != (kind == "file"):
            fail(number, f"{rest} {'is missing' if kind == 'file' else 'exists'}")
    elif kind in ("audit", "count"):
        words = rest.split()
        done = subprocess.run([PYTHON, "-c", AUDIT] + words, cwd=folder, stdout=subprocess.PIPE, stderr=subprocess.STDOUT)
        if done.returncode:
            fail(number, f"the independent reader complains about {words[0]}", done.stdout.decode())
    elif kind == "holds":
        name, _, text = rest.partition(" ")
        content = (folder / name).read_bytes()
        if text.encode("utf-8") not in content and text.encode("cp1252", "replace") not in content:
            fail(number, f"{name} does not hold: {text}", content.decode("cp1252", "replace")[:4000])
    elif kind == "alike":
        texts = [alike(folder / name) for name in rest.split()]
        if texts[0] != texts[1]:
            lines = [text.decode("utf-8").splitlines() for text in texts]
            fail(number, f"{rest} differ", "\n".join(list(difflib.unified_diff(*lines, lineterm=""))[:60]))
    elif kind == "same":
        a, b = rest.split()
        if (folder / a).read_bytes() != (folder / b).read_bytes():
            fail(number, f"{a} and {b} differ")


def timeless(content):
    """The bytes of a file without the seconds of the clock in it, from which some identifiers are made."""
    now = time.time()
    return re.sub(rb"(?<![\d.])\d{10}(?![\d.])", lambda n: b"CLOCK" if abs(int(n[0]) - now) < 3600 else n[0], content)


def left(folder):
    """The files of a folder and what they hold; what the toolkit keeps for itself is none of the program's."""
    files = {}
    for path in sorted(folder.rglob("*")):
        name = path.relative_to(folder).as_posix()
        if path.is_file() and not name.startswith((".cache/", ".config/")):
            files.setdefault(re.sub(r"_TP\w{6}\.", "_TP.", name), []).append(timeless(path.read_bytes()))
    return {name: sorted(contents) for name, contents in files.items()}


def replay(program, folder, environment, steps, made):
    """All runs by one program; the files that are made for them are those of the first time."""
    told = []
    for number, kind, rest in steps:
        if kind == "run":
            output, status = start(program, rest, folder, environment)
            # Temporary names; the toolkit gives whole paths where a line gave the name alone.
            output = re.sub(r"_TP\w{6}\.", "_TP.", output).replace(f"{folder}/", "")
            told.append((rest.line, output, status))
        elif kind in ("copy", "write"):
            step(number, kind, rest, folder)
        elif kind == "make":
            target = folder / rest.split()[1]
            if number not in made:
                step(number, kind, rest, folder)
                made[number] = target.read_bytes()
            target.write_bytes(made[number])
    files = left(folder)
    shutil.rmtree(folder)
    folder.mkdir()
    return told, files


def compare(folder, environment):
    steps, made = parse(), {}
    told, files = replay(pathlib.Path(sys.argv[1]).resolve(), folder, environment, steps, made)
    other, otherFiles = replay(pathlib.Path(sys.argv[3]).resolve(), folder, environment, steps, made)
    for (line, output, status), (_, otherOutput, otherStatus) in zip(told, other):
        if (output, status) != (otherOutput, otherStatus):
            lines = [text.splitlines() for text in (f"{output}\nstatus {status}", f"{otherOutput}\nstatus {otherStatus}")]
            fail(line, "the outputs differ", "\n".join(list(difflib.unified_diff(*lines, lineterm=""))[:80]))
    names = [name for name in sorted(set(files) | set(otherFiles)) if files.get(name) != otherFiles.get(name)]
    if names:
        texts = [(side.get(names[0]) or [b""])[0].decode("cp1252", "replace").splitlines() for side in (files, otherFiles)]
        fail(1, "these files differ: " + ", ".join(names), "\n".join(list(difflib.unified_diff(*texts, lineterm=""))[:80]))


def main():
    with tempfile.TemporaryDirectory(prefix="veltora-scenario-") as name:
        folder = pathlib.Path(name)
        environment = dict(os.environ, HOME=name, TMPDIR=name, XDG_DATA_HOME=name + "/data", XDG_STATE_HOME=name + "/state",
                           VELTORA_INSTALLATION=name + "/installation")
        if len(sys.argv) > 3:
            work = folder / "work"
            work.mkdir()
            for key in ("HOME", "TMPDIR", "XDG_DATA_HOME", "XDG_STATE_HOME", "VELTORA_INSTALLATION"):
                environment[key] = environment[key].replace(name, str(work))
            return compare(work, environment)
        steps = parse()
        if not any(kind == "run" for _, kind, _ in steps):
            fail(1, "no ;run")
        for number, kind, rest in steps:
            if kind == "run":
                execute(rest, folder, environment)
            else:
                step(number, kind, rest, folder)


main()
