#!/usr/bin/env python3
"""Types at the program in a pseudo terminal, where prompts with accents go through the line editor.

  terminal.py PROGRAM

The editor once crashed on the accent of a prompt in the C locale."""
import os
import pty
import select
import sys
import tempfile
import time

LINES = ["inconnue", "ZOOM", "É", "CORRPOLFERMEE", "Nivellement = rien", "Numéro = Élan", "Numéro ?", "[Fermer]", "QUIT"]
EXPECTED = ["Commande inconnue", "[Étendue/Centre]", "Le dessin est vide", "n'est pas un choix", "Numéro = Élan"]


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
        os.write(terminal, (line + "\n").encode())
        output += read(terminal, 1)
    output = output.decode("utf-8", "replace")
    status = os.waitpid(pid, 0)[1]

faults = [f"missing: {text}" for text in EXPECTED if text not in output]
if status:
    faults.append(f"wait status {status}")
print("\n".join(faults) if not faults else "\n".join(faults) + "\n---- output\n" + output)
sys.exit(1 if faults else 0)
