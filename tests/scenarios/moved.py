#!/usr/bin/env python3
"""Runs the program from an installed tree that was moved afterwards, and from a copy of the folder it is built into.

  moved.py CMAKE BUILD PROGRAM

The program was linked to the module by the build's path and loaded another copy beside itself: points were placed by one
copy and saved by the other, and two ends of one set of static objects aborted the program."""
import os
import pathlib
import shutil
import subprocess
import sys
import tempfile

cmake, build, program = sys.argv[1], pathlib.Path(sys.argv[2]), pathlib.Path(sys.argv[3]).resolve()
ROOT = pathlib.Path(__file__).resolve().parent.parent.parent


def call(*arguments, **options):
    done = subprocess.run([str(a) for a in arguments], stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True, **options)
    if done.returncode:
        sys.exit(f"{' '.join(str(a) for a in arguments)}: status {done.returncode}\n{done.stdout}")
    return done.stdout


with tempfile.TemporaryDirectory(prefix="veltora-moved-") as name:
    folder = pathlib.Path(name)
    environment = dict(os.environ, HOME=name, VELTORA_INSTALLATION=name + "/installation", LD_DEBUG="files",
                       LD_DEBUG_OUTPUT=name + "/libraries")
    call(cmake, "--install", build, "--prefix", folder / "first")
    os.rename(folder / "first", folder / "second")
    shutil.copytree(program.parent, folder / "copy", symlinks=True, ignore=lambda _, names: [
        n for n in names if n.startswith(("bench_", "fuzz_", "dxf_"))])
    shutil.copytree(ROOT / "data", folder / "share" / "veltora")
    for moved in (folder / "second" / "bin" / "veltora", folder / "copy" / "veltora"):
        call(moved, "polygonale", ROOT / "examples/polygonale_fermee.obs", "--sortie", "plan.dxf", cwd=folder, env=environment)
        listed = call(moved, "points", "plan.dxf", cwd=folder, env=environment)
        if listed.count("\n") != 9:
            sys.exit(f"{moved}: the drawing does not hold seven points\n{listed}")
    for log in folder.glob("libraries.*"):
        loaded = [line for line in log.read_text(errors="replace").splitlines() if "veltora.arx" in line and "init" in line]
        if len(loaded) != 1 or str(folder) not in loaded[0]:
            sys.exit("the module is not in the process once, from the moved tree:\n" + "\n".join(loaded))
