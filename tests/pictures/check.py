#!/usr/bin/env python3
"""Renders the drawings of dessins.py and compares them with the stored pictures; then plants faults into the drawings, each of
which the comparison must notice.

  check.py PROGRAM                compares
  check.py PROGRAM --make FOLDER  writes drawings and pictures into a folder, to be looked at before they are stored"""
import os
import pathlib
import subprocess
import sys
import tempfile

HERE = pathlib.Path(__file__).resolve().parent
sys.path[:0] = [str(HERE), str(HERE.parent / "support")]
import dessins
import png

DOTS = 100            # an inch
NEAR = 0.25           # of the full range: what the mean of 3 x 3 pixels may differ by
MOST_IN_ALL = 0.0005  # share of pixels that may differ by more
TILE, MOST_IN_TILE = 24, 12  # and their number in a square of this side: a fault is a matter of one place


def render(program, document, name):
    document.saveas(name + ".dxf")
    done = subprocess.run([program, "rendre", name + ".dxf", name + ".png", "--planche", "Image", "--ppp", str(DOTS)],
                          stdout=subprocess.PIPE, stderr=subprocess.STDOUT)
    if done.returncode != 0:
        sys.exit(f"{name}: status {done.returncode}\n{done.stdout.decode()}")
    return png.read(name + ".png")


def differences(one, other):
    """The pixels whose surroundings of 3 x 3 differ in their mean; None for pictures of unlike sizes."""
    if one[:2] != other[:2]:
        return None
    width, height, a, b = *one, other[2]
    change = {(x, y): [p - q for p, q in zip(a[y][x], b[y][x])] for y in range(height) if a[y] != b[y]
              for x in range(width) if a[y][x] != b[y][x]}
    touched = {(x + i, y + j) for x, y in change for i in (-1, 0, 1) for j in (-1, 0, 1)}
    none = (0, 0, 0)

    def mean(x, y, channel):
        return abs(sum(change.get((x + i, y + j), none)[channel] for i in (-1, 0, 1) for j in (-1, 0, 1))) / 9

    return [at for at in touched if max(mean(*at, channel) for channel in range(3)) > NEAR * 255]


def fault(one, other):
    """Where the pictures differ, in words; nothing when they are alike."""
    found = differences(one, other)
    if found is None:
        return f"size {one[:2]}, not {other[:2]}"
    tiles = {}
    for x, y in found:
        tiles.setdefault((x // TILE, y // TILE), []).append((x, y))
    worst = max(tiles.values(), key=len, default=[])
    if len(found) <= MOST_IN_ALL * one[0] * one[1] and len(worst) <= MOST_IN_TILE:
        return ""
    mm = 25.4 / DOTS
    x, y = worst[0]
    return f"{len(found)} pixels differ, {len(worst)} of them about {x * mm:.0f} mm from the left, {y * mm:.0f} mm from above"


def main(program, make=None):
    for name, draw in dessins.DRAWINGS.items():
        picture = render(program, draw(), name)
        if make:  # six steps a channel: 216 colours, some KB
            png.write(make / (name + ".png"), [[tuple(51 * round(v / 51) for v in dot) for dot in row] for row in picture[2]])
            continue
        stored = png.read(HERE / (name + ".png"))
        found = fault(picture, stored)
        if found:
            sys.exit(f"{name}: {found}")
        for drawing, plant in dessins.FAULTS:
            if drawing != name:
                continue
            document = draw()
            plant(document)
            if not fault(render(program, document, plant.__name__), stored):
                sys.exit(f"{name}: the fault {plant.__name__} is not noticed")


program = str(pathlib.Path(sys.argv[1]).resolve())
with tempfile.TemporaryDirectory(prefix="veltora-images-") as folder:
    make = pathlib.Path(sys.argv[3]).resolve() if len(sys.argv) > 3 and sys.argv[2] == "--make" else None
    os.chdir(make or folder)
    os.environ.update(HOME=folder, VELTORA_INSTALLATION=folder + "/installation")
    main(program, make)
