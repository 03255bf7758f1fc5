#!/usr/bin/env python3
"""Has a person at a pseudo terminal asked for what a list of coordinates leaves open.

  terminal_liste.py PROGRAM

Each row: the list, what is typed at the prompts, what must be shown in this order, the exit status, whether a drawing is written."""
import os
import pathlib
import pty
import select
import sys
import tempfile
import time

NOT_RUN = 77  # what CTest counts as skipped
OPEN = "P1;1.5;2.5;214\nP2;1.5;2.5;215\n"
CLEAR = "num;x;y\nP1;1,5;2,5\n"
ROWS = [
    ("accepted", CLEAR, [""], ["virgule décimale", "Placer ces points", "1 point placé"], 0, True),
    ("refused", CLEAR, ["non"], ["Placer ces points", "abandonné"], 1, False),
    ("answered", OPEN, ["2", "oui"],
     ["altitude ou code", "1  altitude", "2  code", "numero  x    y    code", "2 points placés"], 0, True),
    ("corrected", CLEAR, ["numero,est", "numero,y,x", "o"],
     ["colonne inconnue", "numero  y    x", "1 point placé"], 0, True),
    ("given up", OPEN, [""], ["altitude ou code", "abandonné"], 1, False),
]
PROMPTS = (b"Oui> ", b"abandonner : ")


def session(program, folder, answers):
    """What the program shows while each prompt gets the next answer, and its status."""
    try:
        pid, terminal = pty.fork()
    except OSError as error:
        print(f"not run: this machine has no pseudo terminal ({error})")
        sys.exit(NOT_RUN)
    if pid == 0:
        os.chdir(folder)
        environment = dict(os.environ, TERM="dumb", HOME=folder, VELTORA_INSTALLATION=folder + "/i")
        os.execve(program, ["veltora", "importer", "--points", "liste.csv", "--sortie", "plan.dxf"], environment)
    output, seen, end = b"", 0, time.time() + 60
    while select.select([terminal], [], [], max(0, end - time.time()))[0]:
        try:
            piece = os.read(terminal, 65536)
        except OSError:
            break
        output += piece
        if answers and any(prompt in output[seen:] for prompt in PROMPTS):
            seen = len(output)
            os.write(terminal, (answers.pop(0) + "\n").encode())
    os.close(terminal)
    return output.decode("utf-8", "replace"), os.waitstatus_to_exitcode(os.waitpid(pid, 0)[1])


faults = []
for name, text, answers, expected, status, written in ROWS:
    with tempfile.TemporaryDirectory() as folder:
        pathlib.Path(folder, "liste.csv").write_text(text, encoding="utf-8")
        output, found = session(os.path.abspath(sys.argv[1]), folder, list(answers))
        at = 0
        for wanted in expected:
            at = output.find(wanted, at)
            if at < 0:
                faults.append(f"{name}: missing in this order: {wanted}\n{output}")
                break
        if found != status or pathlib.Path(folder, "plan.dxf").exists() != written:
            faults.append(f"{name}: status {found}, expected {status}, or a drawing against expectation\n{output}")
print("\n".join(faults))
sys.exit(1 if faults else 0)
