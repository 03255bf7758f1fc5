#!/usr/bin/env python3
"""Types at the program in a pseudo terminal, where prompts with accents go through the line editor.

  terminal.py PROGRAM

Each step types a line or a key and waits for what has to come of it, in order; a step that brings nothing fails after a
while. The editor once crashed on the accent of a prompt in the C locale. Ctrl-C once stayed asked for: it cancelled
whatever ran next, and pressed again, even at a prompt, it ended the program; a message and a choice of a file did not
take it for an answer. Ctrl-C just before the wait for a key went unseen. Tab completes commands, keywords, what dialogs
name and files, blanks in their names included."""
import os
import pathlib
import pty
import re
import select
import shutil
import sys
import tempfile
import time

ROOT = pathlib.Path(__file__).resolve().parent.parent.parent
INTERRUPT = "\x03"
PATIENCE = 60
NOT_RUN = 77  # what CTest counts as skipped
COMMAND, DIALOG, FILE, ANSWER = "Commande : ", "Dialogue> ", "Fichier> ", "Réponse> "
STEPS = [
    ("", ["AIDE : les commandes", COMMAND]),
    ("inconnue\n", ["Commande inconnue", COMMAND]),
    ("aid\t\n", ["CORRPOLFERMEE", "Polygonale fermée", "LIGNE, LINE", "Tab complète", COMMAND]),
    ("?\n", ["CORRPOLFERMEE", COMMAND]),
    ("zoo\t\n", ["[Étendue/Centre]"]),
    ("É\n", ["Le dessin est vide", COMMAND]),
    ("CORRPOLFERMEE\n", [DIALOG]),
    ("Nivellement = rien\n", ["n'est pas un choix", DIALOG]),
    ("Numéro = Élan\n", [DIALOG]),
    ("Numéro ?\n", ["Numéro = Élan", DIALOG]),
    ("[calc\t\n", ["données insuffisantes", ANSWER]),
    (INTERRUPT, [DIALOG]),
    ("[cha\t\n", [FILE]),
    (INTERRUPT, [DIALOG]),
    ("[cha\t\n", [FILE]),
    ("mes \t\t\n", [DIALOG]),
    ("angles\tra\t\n", ["Angles = radians", DIALOG]),
    ("Angles = grades\n", [DIALOG]),
    ("[Calculer !]\n", ["Coordonnées finales", "Station", "[Sauvegarder]", DIALOG]),
    ("[sauv\t\n", [FILE]),
    (INTERRUPT, [DIALOG]),
    ("[Fermer]\n", [DIALOG]),
    ("[Fermer]\n", [COMMAND]),
    ('(progn (princ (strcat "tour" "ne")) (while T))\n', ["tourne"]),
    (INTERRUPT, ["Fonction annulée", COMMAND]),
    ("(repeat 99999 (setq n 1))\n", ["\n1\n", COMMAND]),
    (INTERRUPT, [COMMAND]),
    (INTERRUPT, [COMMAND]),
    ('(progn (setq n 2) (princ (strcat "en" "core")) (while T))\n', ["encore"]),
    (INTERRUPT, ["Fonction annulée", COMMAND]),
    ("GERERLEVES\n", ["Tables de points", DIALOG]),
    (INTERRUPT, [COMMAND]),
    ("(list 5\n", ["(_> "]),
    (INTERRUPT, [COMMAND]),
    ("(* n 21.5)\n", ["43.0", COMMAND]),
]


class Terminal:
    """The program's terminal: what it printed, and how far the steps have found their texts in it."""

    def __init__(self, descriptor):
        self.descriptor, self.raw, self.at = descriptor, b"", 0

    def text(self):
        # Without colours, cursor moves and the carriage returns of line ends.
        text = re.sub(r"\x1b\[[0-9;?]*[A-Za-z]|\x1b[=>]|\r", "", self.raw.decode("utf-8", "replace"))
        return re.sub(r".\x08", "", text)

    def await_text(self, wanted):
        end = time.time() + PATIENCE
        while True:
            found = self.text().find(wanted, self.at)
            if found >= 0:
                self.at = found + len(wanted)
                return True
            if time.time() > end or not self.read(end):
                return False

    def read(self, end):
        if not select.select([self.descriptor], [], [], max(0.0, end - time.time()))[0]:
            return False
        try:
            piece = os.read(self.descriptor, 65536)
        except OSError:
            return False
        self.raw += piece
        return bool(piece)


faults = []
program = os.path.abspath(sys.argv[1])
with tempfile.TemporaryDirectory() as folder:
    work = pathlib.Path(folder, "w")
    work.mkdir()
    shutil.copy(ROOT / "examples/polygonale_fermee.obs", work / "mes relevés.obs")
    try:
        pid, descriptor = pty.fork()
    except OSError as error:
        print(f"not run: this machine has no pseudo terminal ({error})")
        sys.exit(NOT_RUN)
    if pid == 0:
        os.chdir(work)
        environment = dict(os.environ, TERM="xterm", HOME=folder, LC_ALL="C", VELTORA_INSTALLATION=folder + "/i",
                           TMPDIR=folder)
        os.execve(program, ["veltora"], environment)
    terminal = Terminal(descriptor)
    for typed, expected in STEPS:
        os.write(descriptor, typed.encode())
        faults += [f"{typed!r} brings no {text!r}" for text in expected if not terminal.await_text(text)]
        if faults:
            os.kill(pid, 9)
            break
    else:
        os.write(descriptor, b"QUIT\n")
        while terminal.read(time.time() + PATIENCE):
            pass
    status = os.waitpid(pid, 0)[1]

if status:
    faults.append(f"wait status {status}")
print("\n".join(faults) + ("\n---- output\n" + terminal.text() if faults else ""))
sys.exit(1 if faults else 0)
