#!/usr/bin/env python3
"""Types at the program in a pseudo terminal, where prompts with accents go through the line editor.

  terminal.py PROGRAM

The editor once crashed on the accent of a prompt in the C locale. Ctrl-C once stayed asked for: it cancelled whatever ran
next, and pressed again, even at a prompt, it ended the program. Tab completes a command whatever its case."""
import os
import pty
import select
import sys
import tempfile
import time

INTERRUPT = "\x03"
LINES = ["inconnue", "zoo\t", "É", "CORRPOLFERMEE", "Nivellement = rien", "Numéro = Élan", "Numéro ?", "[Fermer]",
         "(while T)", INTERRUPT, "(repeat 99999 (setq n 1))", INTERRUPT, INTERRUPT, "(while T (setq n 2))", INTERRUPT,
         "GERERLEVES", INTERRUPT, "(list 5", INTERRUPT, "(* n 21.5)", "QUIT"]
EXPECTED = ["Commande inconnue", "[Étendue/Centre]", "Le dessin est vide", "n'est pas un choix", "Numéro = Élan",
            "Fonction annulée", "Tables de points", "43.0"]


def read(terminal, seconds):
    text, end = b"", time.time() + seconds
    while time.time() < end:
        if not select.select([terminal], [], [], 0.05)[0]:
            continue
        try:
            text += os.read(terminal, 65536)
        except OSError:
            break
    return text


with tempfile.TemporaryDirectory() as folder:
    pid, terminal = pty.fork()
    if pid == 0:
        environment = dict(os.environ, TERM="xterm", HOME=folder, LC_ALL="C", VELTORA_INSTALLATION=folder + "/i")
        os.execve(sys.argv[1], ["veltora"], environment)
    output = read(terminal, 3)
    for line in LINES:
        os.write(terminal, (line if line == INTERRUPT else line + "\n").encode())
        output += read(terminal, 1)
    output = output.decode("utf-8", "replace")
    status = os.waitpid(pid, 0)[1]

faults = [f"missing: {text}" for text in EXPECTED if text not in output]
if status:
    faults.append(f"wait status {status}")
print("\n".join(faults) if not faults else "\n".join(faults) + "\n---- output\n" + output)
sys.exit(1 if faults else 0)
