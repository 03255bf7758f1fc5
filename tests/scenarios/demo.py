#!/usr/bin/env python3
"""Runs scripts/demo with a program that is built already, then what the demo proposes at its end.

  demo.py PROGRAM"""
import os
import pathlib
import re
import subprocess
import sys
import tempfile

ROOT = pathlib.Path(__file__).resolve().parent.parent.parent


def run(arguments, environment, typed=b""):
    done = subprocess.run(arguments, cwd=ROOT, env=environment, input=typed, stdout=subprocess.PIPE,
                          stderr=subprocess.STDOUT, timeout=300)
    output = done.stdout.decode("utf-8")
    if done.returncode:
        sys.exit(f"{arguments}: status {done.returncode}\n{output}")
    return output


with tempfile.TemporaryDirectory() as folder:
    environment = dict(os.environ, HOME=folder, VELTORA_INSTALLATION=folder + "/i")
    output = run([str(ROOT / "scripts/demo"), sys.argv[1], folder + "/out"], environment)
    head, _, proposed = output.partition("À essayer maintenant :\n")
    commands = re.findall(r"^ {7}(\S.*)$", proposed, re.M)
    numbers = re.findall(r"^  (\d)\. ", proposed, re.M)
    report = re.search(r"\S+/rapport\.html$", proposed, re.M)
    window = pathlib.Path(sys.argv[1] + "-fenetre").exists()
    if (numbers != list("12345" if window else "1234") or len(commands) != (4 if window else 3) or not report
            or not pathlib.Path(report[0]).is_file()):
        sys.exit("the demo does not end with what to try:\n" + output)
    if "Station" not in head:
        sys.exit("no coordinates:\n" + output)
    if "CORRPOLFERMEE" not in run(commands[0].split(), environment, b"AIDE\nQUIT\n"):
        sys.exit("AIDE tells nothing")
    if ";" not in run(commands[1].split(), environment):
        sys.exit("no points in the drawing")
    if "mm, au 1/" not in run(commands[2].split(), environment):
        sys.exit("no paper and scale told")
    if window:
        drawing = ["--commande", "LIST", "--commande", "TOUT", "--commande", ""]
        listed = run(commands[3].split() + drawing, dict(environment, QT_QPA_PLATFORM="offscreen"))
        if "au total" not in listed :
            sys.exit("the window program does not list the drawing:\n" + listed)
    if not (ROOT / commands[2].split()[-1]).read_bytes().startswith(b"%PDF"):
        sys.exit("the plan is no PDF")
