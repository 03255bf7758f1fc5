#!/usr/bin/env python3
"""Draws a drawing of another program on paper and measures what came of it, with other programs: lengths in PDF and SVG,
colours at their places, words where they stand, the paper that was chosen.

  plans.py PROGRAM"""
import json
import os
import pathlib
import re
import subprocess
import sys
import tempfile
import xml.etree.ElementTree

import ezdxf
from ezdxf.enums import TextEntityAlignment

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parent.parent / "support"))
import png

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
    layers.add("ÉCRAN").dxf.plot = 0
    for layer in ("GELE", "ÉTEINT", "Defpoints", "ÉCRAN"):
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


def pdf_layers():
    """Layers as readers show them: their list, and what is left on the page when one of them is off."""
    subprocess.run(["qpdf", "--check", "plan.pdf"], stdout=subprocess.DEVNULL, check=True)
    objects = json.loads(subprocess.run(["qpdf", "--json=2", "plan.pdf"], stdout=subprocess.PIPE, check=True).stdout)["qpdf"][1]
    groups = {name[4:]: o["value"]["/Name"][2:] for name, o in objects.items()
              if isinstance(o.get("value"), dict) and o["value"].get("/Type") == "/OCG"}
    check(sorted(groups.values()) == ["0", "BLEU", "ROUGE"], str(groups))
    root = objects["obj:" + objects["trailer"]["value"]["/Root"]]["value"]
    shown = root["/OCProperties"]["/D"]
    check([groups[o] for o in shown["/Order"]] == ["0", "BLEU", "ROUGE"], str(shown))
    fonts = subprocess.run(["pdffonts", "plan.pdf"], stdout=subprocess.PIPE, check=True).stdout.decode()
    check(re.search(r"CID TrueType +Identity-H +yes yes yes", fonts), fonts)
    check(pathlib.Path("plan.pdf").stat().st_size < 30000, "the whole font is in the file")
    off = next(o for o, name in groups.items() if name == "BLEU")
    subprocess.run(["qpdf", "--qdf", "--object-streams=disable", "plan.pdf", "clair.pdf"], check=True)
    clear = pathlib.Path("clair.pdf").read_bytes()
    number = re.search(rb"(\d+) 0 obj\n<<\n  /Name \(BLEU\)", clear)[1]
    pathlib.Path("eteint.pdf").write_bytes(clear.replace(b"/BaseState /ON", b"/OFF [ " + number + b" 0 R ]"))
    subprocess.run(["qpdf", "eteint.pdf", "sans.pdf"], stderr=subprocess.DEVNULL)  # mends the places of the objects
    _, height, pixel = pixels("sans.pdf")
    left, bottom = (297 - 100) / 2, (210 - 100) / 2
    for place, wanted in [((50, 0), (255, 255, 255)), ((34, 44), (255, 255, 255)), ((14, 44), (255, 0, 0)),
                          ((65, 20), (0, 170, 85))]:
        found = pixel(round((left + place[0]) * DPMM), height - 1 - round((bottom + place[1]) * DPMM))
        check(max(abs(a - b) for a, b in zip(found, wanted)) <= 2, f"{off} off, {place}: {found}, not {wanted}")


def svg():
    call(0, "rendre", "dessin.dxf", "plan.svg", "--echelle", 500, "--format", "A3-paysage")
    root = xml.etree.ElementTree.parse("plan.svg").getroot()
    check(root.get("width") == "420.000mm" and root.get("viewBox") == "0 0 420.000 297.000", str(root.attrib))
    name = "{http://www.w3.org/2000/svg}"
    groups = [g for g in root.iter(name + "g") if g.get("data-calque")]
    layers = {g.get("data-calque"): g for g in reversed(groups)}
    check(set(layers) == {"0", "ROUGE", "BLEU"}, str(set(layers)))
    check(len({g.get("id") for g in groups}) == len(groups) > 3, "groups of layers in the order of drawing")
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


def dark_box(pdf):
    """Left, right, bottom, top of what is drawn in blue on the page, mm from its lower left corner."""
    width, height, _ = pixels(pdf)
    data = pathlib.Path("page.ppm").read_bytes()[-3 * width * height:]
    rows = [data[3 * width * y:3 * width * (y + 1)] for y in range(height)]
    inked = [(y, re.search(b"^(?:...)*?\0\0\xff", row, re.S).end() // 3 - 1,
              width - re.search(b"^(?:...)*?\xff\0\0", row[::-1], re.S).end() // 3)
             for y, row in enumerate(rows) if b"\0\0\xff" in row and re.search(b"^(?:...)*?\0\0\xff", row, re.S)]
    check(inked, f"{pdf}: nothing blue")
    ys = [y for y, _, _ in inked]
    return [min(a for _, a, _ in inked) / DPMM, (max(b for _, _, b in inked) + 1) / DPMM,
            (height - 1 - max(ys)) / DPMM, (height - min(ys)) / DPMM]


def near(found, wanted, what, slack=0.15):
    check(all(abs(a - b) <= slack for a, b in zip(found, wanted)), f"{what}: {found}, not {wanted}")


def sheets():
    """Sheets of the program on their papers: upright, turned, moved and enlarged ones; what is not there."""
    document = ezdxf.new("R2010")
    document.layers.add("BLEU", color=5, lineweight=100)
    blue = {"layer": "BLEU"}
    space = document.modelspace()
    space.add_line((X + 20, Y + 30), (X + 60, Y + 30), dxfattribs=blue)
    space.add_line((X + 1000, Y + 20), (X + 1000, Y + 60), dxfattribs=blue)  # along a lower side that points up
    document.saveas("terrain.dxf")
    call(0, "planche", "terrain.dxf", "--format", "A4-paysage", "--echelle", 500, "--point", f"{X},{Y}", "--sortie",
         "une.dxf")
    call(0, "planche", "une.dxf", "--format", "A3-portrait", "--echelle", 250, "--point", f"{X + 1030},{Y}",
         "--orientation", 100, "--sortie", "deux_planches.dxf")
    said = call(0, "rendre", "deux_planches.dxf", "p1.pdf", "--planche", 1)
    check("A4-paysage, 297 x 210 mm, au 1/500" in said, said)
    near(dark_box("p1.pdf"), [39.5, 120.5, 59.5, 60.5], "first sheet")
    said = call(0, "rendre", "deux_planches.dxf", "p2.pdf", "--planche", 2)
    check("A3-portrait, 297 x 420 mm, au 1/250" in said, said)
    near(dark_box("p2.pdf"), [79.5, 240.5, 119.5, 120.5], "turned sheet")
    info = subprocess.run(["pdfinfo", "p2.pdf"], stdout=subprocess.PIPE, check=True).stdout.decode()
    check("841.89 x 1190.55" in info, info)
    frame = [e for e in ezdxf.readfile("deux_planches.dxf").modelspace() if e.dxftype() == "LWPOLYLINE"]
    check([e.has_xdata("VELTORAPLANCHE") for e in frame] == [True, False, True, False], "marks of the papers")
    # What another program did to the papers: one enlarged, one bent; a sheet mirrored in place has its left side right.
    for name, change in [
            ("grande.dxf", lambda paper: [(X + 2 * (x - X), Y + 2 * (y - Y)) for x, y in paper]),
            ("pliee.dxf", lambda paper: [(x + (i == 2), y) for i, (x, y) in enumerate(paper)]),
            ("miroir.dxf", lambda paper: [(2 * X + 148.5 - x, y) for x, y in paper])]:
        document = ezdxf.readfile("une.dxf")
        paper = next(e for e in document.modelspace() if e.has_xdata("VELTORAPLANCHE"))
        paper.set_points(change([p[:2] for p in paper.get_points()]), format="xy")
        document.saveas(name)
    said = call(3, "rendre", "grande.dxf", "p3.pdf", "--planche", 1)
    check("au 1/1000, et non plus au 1/500" in said, said)
    near(dark_box("p3.pdf"), [19.5, 60.5, 29.5, 30.5], "enlarged sheet")
    call(0, "rendre", "miroir.dxf", "p4.pdf", "--planche", 1)
    near(dark_box("p4.pdf"), [39.5, 120.5, 59.5, 60.5], "mirrored sheet")
    for drawing, arguments, status, wanted in [
            ("pliee.dxf", ["--planche", 1], 1, "la planche 1 est déformée"),
            ("deux_planches.dxf", ["--planche", 3], 1, "pas de planche « 3 » : le dessin a 2 planches"),
            ("une.dxf", ["--planche", 0], 1, "pas de planche « 0 » : le dessin a une planche"),
            ("terrain.dxf", ["--planche", 1], 1, "le dessin n'a pas de planche de CREERPLANCHE"),
            ("une.dxf", ["--planche", "Layout1"], 1, "la présentation « Layout1 » ne montre rien"),
            ("une.dxf", ["--planche", 1, "--echelle", 200], 2, "--planche")]:
        said = call(status, "rendre", drawing, "p5.pdf", *arguments)
        check(wanted in said, f"{drawing} {arguments}: {said}")


def layouts():
    """A layout of another program: its paper, what stands on it, and model space through its openings."""
    document = ezdxf.new("R2010")
    document.layers.add("BLEU", color=5, lineweight=100)
    document.layers.add("ROUGE", color=1, lineweight=100)
    blue = {"layer": "BLEU"}
    space = document.modelspace()
    space.add_line((X, Y), (X + 100, Y), dxfattribs=blue)
    space.add_text("coupe", height=10, dxfattribs={"layer": "ROUGE"}).set_placement((X + 70, Y + 5))
    space.add_line((X + 10, Y + 20), (X + 10, Y + 60), dxfattribs={"layer": "ROUGE"})
    layout = document.layouts.new("Plan général")
    layout.page_setup(size=(420, 297), margins=(10, 15, 20, 25), units="mm")
    # 1/500 (2 units of the paper a metre), its middle 50 m right of the line's start: from 10 m left to 90 m right
    opening = layout.add_viewport(center=(150, 100), size=(160, 80), view_center_point=(X + 40, Y + 10), view_height=40)
    opening.frozen_layers = []
    turned = layout.add_viewport(center=(320, 100), size=(60, 160), view_center_point=(-Y, X + 40), view_height=80)
    turned.dxf.view_twist_angle = 90
    turned.frozen_layers = ["ROUGE"]
    layout.add_line((0, 250), (50, 250), dxfattribs=blue)
    layout.add_text("Titre", height=5).set_placement((100, 250))
    document.linetypes.add("TIRETS", [3.0, 2.0, -1.0])
    space.add_line((X, Y + 2), (X + 50, Y + 2), dxfattribs={"linetype": "TIRETS"})
    lying = document.layouts.new("Deux")  # turned a quarter: its left margin is at the sheet's bottom
    lying.page_setup(size=(210, 297), margins=(10, 15, 20, 25), units="mm", rotation=1)
    lying.add_line((0, 0), (50, 0), dxfattribs=blue)
    document.saveas("presentation.dxf")
    said = call(0, "rendre", "presentation.dxf", "l1.pdf", "--planche", "plan général")
    check("A3-paysage, 420 x 297 mm, au 1/500" in said, said)
    width, height, pixel = pixels("l1.pdf")
    left, bottom = 25, 20  # margins: top 10, right 15, bottom 20, left 25
    page = lambda x, y: pixel(round((left + x) * DPMM), height - 1 - round((bottom + y) * DPMM))
    blue, red, white = (0, 0, 255), (255, 0, 0), (255, 255, 255)
    for place, wanted in [
            ((25, 250), blue), ((60, 250), white),  # the line on the paper
            ((72, 80), blue), ((228, 80), blue), ((68, 80), white), ((232, 80), white),  # cut at the opening
            ((90, 121), red), ((90, 137), red), ((90, 141), white),  # 20 to 60 m high, the opening ends at 30 m
            ((320, 30), blue), ((320, 178), blue), ((320, 182), white)]:  # the same line upright, from 0 m on
        check(max(abs(a - b) for a, b in zip(page(*place), wanted)) <= 2, f"layout {place}: {page(*place)}, not {wanted}")
    check(not [1 for x in range(2910, 3090, 10) for y in range(1600, 1780, 10) if page(x / DPMM, y / DPMM) == red],
          "the text's layer is frozen in the second opening")
    # The text that reaches beyond the opening ends where it ends: nothing red right of it.
    check(not [x for x in range(round((left + 230.5) * DPMM), round((left + 288) * DPMM))
               if page(x / DPMM - left, 93) == red], "the text goes on beyond the opening")
    check([x for x in range(round((left + 212) * DPMM), round((left + 229) * DPMM))
           if page(x / DPMM - left, 93) == red], "the text is not drawn in the opening")
    text = subprocess.run(["pdftotext", "l1.pdf", "-"], stdout=subprocess.PIPE, check=True).stdout.decode()
    check("Titre" in text, text)
    call(0, "rendre", "presentation.dxf", "l1.svg", "--planche", "Plan général")
    check('width="160.000" height="80.000"' in pathlib.Path("l1.svg").read_text(), "clipped text in SVG")
    dashes = lambda file: set(re.findall('dasharray="(.*?)"', pathlib.Path(file).read_text()))
    check(dashes("l1.svg") == {"2.000 1.000"}, f"line types as long as on the paper: {dashes('l1.svg')}")
    document.header["$PSLTSCALE"] = 0
    document.saveas("tirets.dxf")
    call(0, "rendre", "tirets.dxf", "l4.svg", "--planche", "Plan général")
    check(dashes("l4.svg") == {"4.000 2.000"}, f"line types of the drawing: {dashes('l4.svg')}")
    said = call(0, "rendre", "presentation.dxf", "l5.pdf", "--planche", "Deux")
    check("A4-paysage, 297 x 210 mm\n" in said, said)
    near(dark_box("l5.pdf"), [19.5, 70.5, 14.5, 15.5], "turned paper")
    said = call(1, "rendre", "presentation.dxf", "l2.pdf", "--planche", 4)
    check("pas de planche de CREERPLANCHE, et des présentations : « Plan général »" in said, said)
    opening.dxf.view_direction_vector = (1, 1, 1)
    turned.dxf.flags = 0x10000
    document.saveas("biais.dxf")
    said = call(3, "rendre", "biais.dxf", "l3.pdf", "--planche", "Plan général")
    check("laissées vides : 1" in said and "contour libre manque, tracées en rectangle : 1" in said, said)


def free_outlines():
    """Openings cut out by a circle and by an arrow with an arc, in every format: what lies within shows, the rest does not,
    what is drawn behind the opening is not cut."""
    document = ezdxf.new("R2010")
    space = document.modelspace()
    field = space.add_hatch(color=1)
    field.paths.add_polyline_path([(X - 500, Y - 500), (X + 500, Y - 500), (X + 500, Y + 500), (X - 500, Y + 500)],
                                  is_closed=True)
    space.add_text("M" * 60, height=4, dxfattribs={"color": 5}).set_placement((X - 120, Y - 2))
    layout = document.layouts.new("Formes")
    layout.page_setup(size=(297, 210), margins=(0, 0, 0, 0), units="mm")
    circle = layout.add_circle((70, 100), 30, dxfattribs={"color": 3})
    # A notch in the right side, a half circle below.
    arrow = layout.add_lwpolyline([(150, 60, 1), (210, 60, 0), (210, 140, 0), (180, 100, 0), (150, 140, 0)], close=True,
                                  format="xyb", dxfattribs={"color": 3})
    for curve, center, size in ((circle, (70, 100), (60, 60)), (arrow, (180, 85), (60, 110))):
        opening = layout.add_viewport(center=center, size=size, view_center_point=(X, Y), view_height=size[1])
        opening.dxf.flags = 0x10000
        opening.dxf.clipping_boundary_handle = curve.dxf.handle
    last = layout.add_hatch(color=2)
    last.paths.add_polyline_path([(5, 5), (25, 5), (25, 25), (5, 25)], is_closed=True)
    document.saveas("formes.dxf")
    red, white = (255, 0, 0), (255, 255, 255)
    rows = [((70, 75), red), ((70, 125), red), ((50, 85), red), ((45, 75), white), ((95, 125), white), ((43, 127), white),
            ((160, 120), red), ((180, 70), red), ((180, 35), red), ((180, 110), white), ((152, 35), white), ((208, 35), white),
            ((15, 15), (255, 255, 0)), ((120, 100), white)]
    for name in ("formes.pdf", "formes.svg", "formes.png"):
        said = call(0, "rendre", "formes.dxf", name, "--planche", "Formes", "--ppp", 254)
        check("contour" not in said, said)
        page = name
        if name.endswith("svg"):
            found = xml.etree.ElementTree.parse(name).getroot()
            space_of = "{http://www.w3.org/2000/svg}"
            clips = [c[0].get("d") for c in found.iter(space_of + "clipPath") if c[0].tag == space_of + "path"]
            check(len(clips) == 2 and clips[1].count("L") > 20, str(clips))
            cut = [g for g in found.iter(space_of + "g") if (g.get("clip-path") or "").startswith("url(#fenetre")]
            check(["#ff0000" in xml.etree.ElementTree.tostring(g).decode() for g in cut] == [True, True], "reds in the openings")
            check(not any("#ffff00" in xml.etree.ElementTree.tostring(g).decode() for g in cut), "the yellow is cut")
            continue
        if name.endswith("png"):
            width, height, data = png.read(name)
            pixel = lambda x, y: data[y][x]
        else:
            width, height, pixel = pixels(page)
        for (x, y), wanted in rows:
            found = pixel(round(x * DPMM), height - 1 - round(y * DPMM))
            check(max(abs(a - b) for a, b in zip(found, wanted)) <= 2, f"{name} {x},{y}: {found}, not {wanted}")
        blue = [x for x in range(0, 1300) if pixel(x, height - 1 - round(100 * DPMM))[2] > 200 > 100 > pixel(x, height - 1 - round(100 * DPMM))[0]]
        check(blue and 395 <= min(blue) and max(blue) <= 1005, f"{name}: letters from {min(blue)} to {max(blue)}")


def bad_input():
    """What no plan should hold: the rest is drawn as ever, what was left out is said."""
    ezdxf.new("R2010").saveas("rien.dxf")
    check("le dessin ne montre rien" in call(1, "rendre", "rien.dxf", "rien.pdf"), "an empty drawing")
    document = ezdxf.new("R2010")
    document.layers.add("BLEU", color=5, lineweight=100)
    document.header["$LTSCALE"] = 0
    space = document.modelspace()
    space.add_line((X, Y), (X + 100, Y), dxfattribs={"layer": "BLEU", "linetype": "INCONNU", "ltscale": 0})
    space.add_line((1e15, -1e15), (X, 1e15))
    space.add_circle((X, Y), 1e15)
    space.add_point((1e300, 1e300))
    document.styles.add("ROMAINE", font="romaine.shx")
    for y in (30, 40):
        space.add_text("romain", height=2, dxfattribs={"style": "ROMAINE"}).set_placement((X, Y + y))
    space.add_text("0", height=0).set_placement((X, Y))
    space.add_text("grand", height=1e12).set_placement((X, Y))
    space.add_text("a" * 100000, height=2).set_placement((X, Y + 10))
    space.add_mtext("mot " * 25000, dxfattribs={"char_height": 0.5, "width": 80, "insert": (X, Y + 60)})
    space.add_mtext("{" * 5000 + "\\H1e9x;\\S/;\\C-5;fin" + "}" * 9000, dxfattribs={"char_height": 1, "insert": (X, Y - 20)})
    one, two = document.blocks.new("UN"), document.blocks.new("DEUX")
    one.add_blockref("DEUX", (1, 0))
    two.add_blockref("UN", (0, 1))
    two.add_line((0, 0), (3, 0), dxfattribs={"layer": "BLEU"})
    space.add_blockref("UN", (X + 10, Y + 20))
    space.add_blockref("UN", (X + 10, Y + 20), dxfattribs={"xscale": 0, "yscale": 0, "zscale": 0})
    space.add_blockref("UN", (X, Y), dxfattribs={"column_count": 30000, "row_count": 30000, "column_spacing": 1e-3})
    hatch = space.add_hatch()
    hatch.set_pattern_fill("LIGNES", definition=[[45, (0, 0), (1e-9, 1e-9), []]])
    hatch.paths.add_polyline_path([(X, Y), (X + 9, Y), (X + 9, Y + 9)], is_closed=True)
    document.saveas("mauvais.dxf")
    window = f"{X - 10},{Y - 50},{X + 150},{Y + 80}"
    for name in ("mauvais.pdf", "mauvais.svg", "mauvais.png"):
        said = call(3, "rendre", "mauvais.dxf", name, "--format", "A4-paysage", "--echelle", 1000, "--fenetre", window)
        for wanted in ("polices remplacées par DejaVu Sans : romaine.shx\n", "textes plus hauts que deux mètres", "blocs en plus de 100 000"):
            check(said.count(wanted) == 1, f"{name}: {said}")
    # The window's middle is that of the paper: 60 m left of it is 78.5 mm on paper; the block's line, 3 m long.
    left, right, low, high = dark_box("mauvais.pdf")
    near([left, right, low, high], [78, 179, 89.5, 110.5], "the line and the block among the rest")
    words = subprocess.run(["pdftotext", "mauvais.pdf", "-"], stdout=subprocess.PIPE, check=True).stdout.decode()
    check(words.count("mot") > 5000 and "fin" in words, f"{words.count('mot')} words")
    bad = pathlib.Path("mauvais.dxf").read_text().replace("1e+300", "nan", 1)
    pathlib.Path("nan.dxf").write_text(bad)
    said = call(1, "rendre", "nan.dxf", "nan.svg", "--fenetre", window)
    check("valeur « nan » du groupe 10 : nombre attendu" in said, said)


with tempfile.TemporaryDirectory(prefix="veltora-plans-") as folder:
    os.chdir(folder)
    os.environ.update(HOME=folder, VELTORA_INSTALLATION=folder + "/installation")
    drawing()
    paper()
    words()
    if (program.parent / "libveltora_pdf.so").exists():  # built where its libraries are
        pdf_layers()
    svg()
    choices()
    sheets()
    layouts()
    free_outlines()
    bad_input()
