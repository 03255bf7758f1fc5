#!/usr/bin/env python3
"""Draws a drawing of another program on paper and measures what came of it, with other programs: lengths in PDF and SVG,
colours at their places, words where they stand, the paper that was chosen.

  plans.py PROGRAM"""
import os
import pathlib
import re
import subprocess
import sys
import tempfile
import xml.etree.ElementTree

import ezdxf
from ezdxf.enums import TextEntityAlignment

program = pathlib.Path(sys.argv[1]).resolve()
X, Y = 652000.0, 6862000.0  # places of the drawing are told from here, in metres
DPMM = 10


def check(good, what):
    if not good:
        sys.exit("plans.py: " + what)


def call(status, *arguments):
    done = subprocess.run([str(program), *map(str, arguments)], stdout=subprocess.PIPE, stderr=subprocess.STDOUT)
    text = done.stdout.decode()
    check(done.returncode == status, f"{' '.join(map(str, arguments))}: status {done.returncode}, not {status}\n{text}")
    return text


def drawing():
    document = ezdxf.new("R2010", setup=True)
    space = document.modelspace()
    layers = document.layers
    layers.add("ROUGE", color=1)
    layers.add("BLEU", color=5, lineweight=100)
    layers.add("GELE", color=3).freeze()
    layers.add("ÉTEINT", color=3).off()

    def at(x, y):
        return (X + x, Y + y)

    space.add_line(at(0, 0), at(100, 0), dxfattribs={"layer": "BLEU"})
    space.add_line(at(0, 0), at(0, 100), dxfattribs={"layer": "BLEU"})
    for layer in ("GELE", "ÉTEINT", "Defpoints"):
        space.add_line(at(-50, 20), at(150, 20), dxfattribs={"layer": layer})
    inner = document.blocks.new("CARRE")
    square = [(0, 0), (8, 0), (0, 8), (8, 8)]
    inner.add_solid(square, dxfattribs={"layer": "0"})  # by the layer of its reference
    inner.add_solid([(x + 10, y) for x, y in square], dxfattribs={"layer": "0", "color": 0})  # by its block
    inner.add_solid([(x + 20, y) for x, y in square], dxfattribs={"layer": "BLEU"})
    inner.add_solid([(x + 30, y) for x, y in square], dxfattribs={"layer": "GELE"})
    outer = document.blocks.new("DEUX")
    outer.add_blockref("CARRE", (0, 0), dxfattribs={"color": 0})
    space.add_blockref("DEUX", at(10, 40), dxfattribs={"layer": "ROUGE", "color": 3})
    space.add_blockref("CARRE", at(10, 60), dxfattribs={"layer": "ROUGE", "column_count": 2, "column_spacing": 45})
    hatch = space.add_hatch(dxfattribs={"true_color": 0x00AA55})
    hatch.paths.add_polyline_path([at(60, 10), at(90, 10), at(90, 30), at(60, 30)], is_closed=True)
    hatch.paths.add_polyline_path([at(70, 15), at(80, 15), at(80, 25), at(70, 25)], is_closed=True)
    space.add_text("Bâtiment <A> & B", height=3).set_placement(at(10, 85))
    space.add_text("debout", height=3, rotation=90).set_placement(at(95, 40))
    space.add_text("droite", height=2).set_placement(at(90, 90), align=TextEntityAlignment.BOTTOM_RIGHT)
    document.saveas("dessin.dxf")


def pixels(file):
    """The page as rows of (red, green, blue), ten to a millimetre."""
    subprocess.run(["pdftoppm", "-r", str(25.4 * DPMM), "-singlefile", file, "page"], check=True)
    data = pathlib.Path("page.ppm").read_bytes()
    head = re.match(rb"P6\s+(\d+)\s+(\d+)\s+255\s", data)
    width, height = int(head[1]), int(head[2])
    body = data[head.end():]
    return width, height, lambda x, y: tuple(body[3 * (y * width + x):][:3])


def paper():
    """1/1000 on A4 lying: 100 m are 100 mm, the drawing's box in the middle of the paper."""
    said = call(0, "rendre", "dessin.dxf", "plan.pdf", "--echelle", 1000, "--format", "A4-paysage")
    check("A4-paysage, 297 x 210 mm, au 1/1000" in said, said)
    info = subprocess.run(["pdfinfo", "plan.pdf"], stdout=subprocess.PIPE, check=True).stdout.decode()
    check("841.89 x 595.276" in info, info)
    width, height, pixel = pixels("plan.pdf")
    left, bottom = (297 - 100) / 2, (210 - 100) / 2

    def colour(x, y):
        return pixel(round((left + x) * DPMM), height - 1 - round((bottom + y) * DPMM))

    rows = [  # place in metres, colour there
        ((50, 0), (0, 0, 255)), ((50, 0.4), (0, 0, 255)), ((50, -0.4), (0, 0, 255)), ((50, 0.7), (255, 255, 255)),
        ((0, 50), (0, 0, 255)), ((-20, 20), (255, 255, 255)), ((-5, 20), (255, 255, 255)),
        ((14, 44), (255, 0, 0)), ((24, 44), (0, 255, 0)), ((34, 44), (0, 0, 255)), ((44, 44), (255, 255, 255)),
        ((14, 64), (255, 0, 0)), ((24, 64), (255, 0, 0)), ((59, 64), (255, 0, 0)), ((79, 64), (0, 0, 255)),
        ((65, 20), (0, 170, 85)), ((75, 20), (255, 255, 255)), ((89.8, 29.8), (0, 170, 85)), ((90.2, 30.2), (255, 255, 255)),
    ]
    for place, wanted in rows:
        check(max(abs(a - b) for a, b in zip(colour(*place), wanted)) <= 2, f"{place}: {colour(*place)}, not {wanted}")
    # The ends of both axes, 0.5 mm of round cap beyond them.
    dark = [x for x in range(width) if sum(pixel(x, height - 1 - round(bottom * DPMM))) < 600]
    check(abs((dark[-1] - dark[0] + 1) / DPMM - 101) <= 0.15, f"horizontal: {dark[0]} to {dark[-1]}")
    dark = [y for y in range(height) if sum(pixel(round(left * DPMM), y)) < 600]
    check(abs((dark[-1] - dark[0] + 1) / DPMM - 101) <= 0.15, f"vertical: {dark[0]} to {dark[-1]}")


def words():
    boxes = subprocess.run(["pdftotext", "-bbox", "plan.pdf", "-"], stdout=subprocess.PIPE, check=True).stdout.decode()
    found = {m[5]: [float(m[i]) * 25.4 / 72 for i in range(1, 5)]
             for m in re.finditer(r'xMin="(.*?)" yMin="(.*?)" xMax="(.*?)" yMax="(.*?)">(.*?)</word>', boxes)}
    left, top = (297 - 100) / 2, 210 - (210 - 100) / 2
    check("Bâtiment" in found and "&lt;A&gt;" in found and "&amp;" in found, str(found))
    check(abs(found["Bâtiment"][0] - (left + 10)) < 0.3, f"Bâtiment: {found['Bâtiment']}")
    check(abs(found["droite"][2] - (left + 90)) < 0.3, f"droite: {found['droite']}")
    upright = found["debout"]
    check(upright[3] - upright[1] > 2 * (upright[2] - upright[0]) and abs(upright[3] - (top - 40)) < 0.3, str(upright))


def svg():
    call(0, "rendre", "dessin.dxf", "plan.svg", "--echelle", 500, "--format", "A3-paysage")
    root = xml.etree.ElementTree.parse("plan.svg").getroot()
    check(root.get("width") == "420.000mm" and root.get("viewBox") == "0 0 420.000 297.000", str(root.attrib))
    name = "{http://www.w3.org/2000/svg}"
    layers = {g.get("data-calque"): g for g in root.iter(name + "g") if g.get("data-calque")}
    check(set(layers) == {"0", "ROUGE", "BLEU"}, str(set(layers)))
    line = re.findall(r"[-\d.]+", next(layers["BLEU"].iter(name + "path")).get("d"))
    check([float(v) for v in line[:4]] == [110, 248.5, 310, 248.5], str(line))
    check({t.text for t in root.iter(name + "text")} == {"Bâtiment <A> & B", "debout", "droite"}, "texts")
    for t in root.iter(name + "text"):
        if t.text == "debout":
            matrix = [float(v) for v in re.findall(r"[-\d.]+", t.get("transform"))]
            capital = 1493 / 2048  # of the font's size
            check(abs(matrix[1] * capital + 6) < 0.01 and abs(matrix[2] * capital - 6) < 0.01, str(matrix))


def choices():
    """Papers, scales, windows, layers: what is chosen and what is told."""
    rows = [
        (["--echelle", 200], "A1-portrait, 594 x 840 mm, au 1/200"),
        (["--echelle", 100], "Papier, 1020 x 1020 mm, au 1/100"),
        ([], "A4-portrait, 210 x 297 mm, au 1/1000"),
        (["--format", "A0-paysage"], "A0-paysage, 1188 x 840 mm, au 1/200"),
        (["--fenetre", f"{X + 60},{Y + 10},{X + 90},{Y + 30}"], "A4-paysage, 297 x 210 mm, au 1/200"),
    ]
    for arguments, wanted in rows:
        said = call(0, "rendre", "dessin.dxf", "choix.png", "--ppp", 20, *arguments)
        check(wanted in said, f"{arguments}: {said}")
    said = call(3, "rendre", "dessin.dxf", "grand.svg", "--echelle", 100, "--format", "A4-paysage")
    check("dépasse le papier au 1/100 : il y entre au 1/1000" in said, said)
    refused = [
        (["plan.dwf"], "les plans s'écrivent en .pdf, .svg ou .png"),
        (["plan.pdf", "--calque", "ROUGES"], "n'a pas de calque « ROUGES »"),
        (["plan.pdf", "--fenetre", "1,1,1,5"], "la fenêtre n'a pas d'étendue"),
        (["plan.pdf", "--calque", "GELE"], "le dessin ne montre rien"),
        (["plan.pdf", "--echelle", "0.01"], "le dessin demande un papier de"),
        (["plan.png", "--ppp", "2400"], "plus de 100 millions de points"),
        (["absent/plan.svg"], "absent"),
    ]
    for arguments, wanted in refused:
        said = call(1, "rendre", "dessin.dxf", *arguments)
        check(wanted in said, f"{arguments}: {said}")
    before = pathlib.Path("dessin.dxf").read_bytes()
    call(2, "rendre", "dessin.dxf", "dessin.dxf")
    check(pathlib.Path("dessin.dxf").read_bytes() == before, "the drawing was written over")
    call(0, "rendre", "dessin.dxf", "un.pdf", "--calques", "bleu,0", "--fond", "noir", "--monochrome", "--echelle", 1000,
         "--format", "A4-paysage", "--fenetre", f"{X},{Y},{X + 50},{Y + 50}")
    width, height, pixel = pixels("un.pdf")
    middle = (round(148.5 * DPMM), height - 1 - round(80 * DPMM))  # the window's lower side, in the middle of the paper
    check(pixel(*middle) == (255, 255, 255), f"white on black: {pixel(*middle)}")
    check(pixel(round(195 * DPMM), middle[1]) == (0, 0, 0), "the line goes on beyond the window")
    check(pixel(10, 10) == (0, 0, 0), "the paper is black")


with tempfile.TemporaryDirectory(prefix="veltora-plans-") as folder:
    os.chdir(folder)
    os.environ.update(HOME=folder, VELTORA_INSTALLATION=folder + "/installation")
    drawing()
    paper()
    words()
    svg()
    choices()
