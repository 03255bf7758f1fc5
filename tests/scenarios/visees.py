#!/usr/bin/env python3
"""Sights over a terrain, checked against all of its faces by another route.

  visees.py terrain.xyz     makes hilly ground there, and 1,000 points on it in visees.xyz
  visees.py ecarts.txt      compares v.csv with the 3D faces of t.dxf, and the obstacle of the scenario"""
import csv
import math
import random
import sys

X, Y, SIDE = 650000.0, 6860000.0, 300.0
STATION = (X + 151.3, Y + 148.7)
INSTRUMENT, WALL = 1.5, 4.0
OBSTACLE = ((X + 60.0, Y + 40.0), (X + 200.0, Y + 110.0))


def make():
    chance = random.Random(5)
    with open("terrain.xyz", "w") as out:
        places = [(a * SIDE, b * SIDE) for a in (0, 1) for b in (0, 1)]
        places += [(chance.uniform(0, SIDE), chance.uniform(0, SIDE)) for _ in range(400)]
        for i, (x, y) in enumerate(places):
            z = 100 + 6 * math.sin(x / 25) + 5 * math.cos(y / 31) + chance.uniform(-0.5, 0.5)
            out.write(f"T{i} {X + x:.3f} {Y + y:.3f} {z:.3f} 1\n")
    with open("visees.xyz", "w") as out:
        out.write(f"S {STATION[0]:.4f} {STATION[1]:.4f} 1e38 100\n")
        for i in range(1000):
            out.write(f"P{i} {X + chance.uniform(1, SIDE - 1):.4f} {Y + chance.uniform(1, SIDE - 1):.4f} 1e38 1\n")


def cut(face, a, b):
    """The shares of a segment that lie in a triangle, by cutting with its three sides."""
    low, high = 0.0, 1.0
    turn = math.copysign(1, cross(face[0], face[1], face[2]))
    for p, q in ((0, 1), (1, 2), (2, 0)):
        va, vb = (turn * cross(face[p], face[q], point) for point in (a, b))
        if va < 0 and vb < 0:
            return None
        if va < 0:
            low = max(low, va / (va - vb))
        if vb < 0:
            high = min(high, va / (va - vb))
    return (low, high) if low <= high else None


def cross(o, p, q):
    return (p[0] - o[0]) * (q[1] - o[1]) - (p[1] - o[1]) * (q[0] - o[0])


def height(face, point):
    whole = cross(*face)
    return sum(face[i][2] * cross(face[(i + 1) % 3], face[(i + 2) % 3], point) / whole for i in range(3))


def ground(faces, point):
    for face in faces:
        turn = math.copysign(1, cross(*face))
        if all(turn * cross(face[i], face[(i + 1) % 3], point) >= -1e-9 for i in range(3)):
            return height(face, point)
    raise ValueError(point)


def between(a, b, t):
    return (a[0] + (b[0] - a[0]) * t, a[1] + (b[1] - a[1]) * t)


def worst(faces, point, za, zb):
    length = math.dist(STATION, point)
    found = []
    for face in faces:
        shares = cut(face, STATION, point)
        if shares:
            found += [(t, height(face, between(STATION, point, t))) for t in shares]
    (p, q) = OBSTACLE
    side = [cross(p, q, STATION), cross(p, q, point)]
    t = side[0] / (side[0] - side[1])
    if side[0] * side[1] < 0 and cross(STATION, point, p) * cross(STATION, point, q) < 0:
        found.append((t, ground(faces, between(STATION, point, t)) + WALL))
    rise = max(z - (za + (zb - za) * t) for t, z in found)
    return max(0.0, rise * length / math.hypot(length, zb - za)), len(found)


def compare():
    import ezdxf

    faces = []
    for entity in ezdxf.readfile("t.dxf").modelspace().query("3DFACE"):
        faces.append([tuple(entity.dxf.get(f"vtx{i}")) for i in range(3)])
    za = ground(faces, STATION) + INSTRUMENT
    checked = {"visible": 0, "masqué": 0}
    with open("v.csv", encoding="utf-8") as lines:
        for row in csv.DictReader(lines, delimiter=";"):
            point = (float(row["X"]), float(row["Y"]))
            z = ground(faces, point)
            expected, crossings = worst(faces, point, za, z + INSTRUMENT)
            if abs(float(row["Z"]) - z) > 0.0003 or abs(float(row["Depassement"]) - expected) > 0.0005:
                sys.exit(f"{row}: expected altitude {z:.4f}, {expected:.4f} above the sight")
            checked[row["Visibilite"]] += 1
    if sum(checked.values()) != 1000 or min(checked.values()) < 100:
        sys.exit(f"{checked}")
    open(sys.argv[1], "w").write(f"{checked}\n")


make() if sys.argv[1] == "terrain.xyz" else compare()
