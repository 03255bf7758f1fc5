"""Drawings that together show every kind of look, each on a layout of its own of 120 x 90 mm, and faults to be planted
into them."""
import ezdxf
from ezdxf.enums import TextEntityAlignment as Align

WIDTH, HEIGHT = 120, 90
DASHES = {"TIRETS": [6.0, 4.0, -2.0], "AXE": [10.0, 6.0, -1.5, 1.0, -1.5], "POINTS": [2.0, 0.0, -2.0]}


def paper():
    document = ezdxf.new("R2010")
    for name, pattern in DASHES.items():
        document.linetypes.add(name, pattern)
    document.styles.add("DEJAVU", font="DejaVuSans.ttf")
    document.layers.add("ROUGE", color=1, lineweight=50)
    document.layers.add("BLEU", color=5, linetype="TIRETS")
    document.layers.add("CACHE", color=3).off()
    layout = document.layouts.new("Image")
    layout.page_setup(size=(WIDTH, HEIGHT), margins=(0, 0, 0, 0), units="mm")
    return document, layout


def traits():
    """Lines, weights, line types, arcs, curves, wide polylines, points."""
    document, space = paper()
    for i, weight in enumerate((0, 13, 25, 50, 100, 200)):
        space.add_line((5, 85 - 4 * i), (40, 85 - 4 * i), dxfattribs={"lineweight": weight, "color": i + 1})
    for i, name in enumerate(DASHES):
        space.add_line((46, 85 - 4 * i), (115, 85 - 4 * i), dxfattribs={"linetype": name, "lineweight": 35})
    space.add_line((46, 73), (115, 73), dxfattribs={"linetype": "TIRETS", "ltscale": 0.5})
    space.add_line((46, 69), (115, 69), dxfattribs={"layer": "ROUGE"})
    space.add_line((46, 65), (115, 65), dxfattribs={"layer": "BLEU"})
    space.add_line((46, 60), (115, 60), dxfattribs={"layer": "CACHE"})
    space.add_circle((17, 45), 11, dxfattribs={"color": 3})
    space.add_arc((17, 45), 8, 30, 200, dxfattribs={"lineweight": 70})
    space.add_ellipse((48, 45), (14, 5), 0.4, dxfattribs={"color": 6})
    space.add_ellipse((48, 45), (7, 0), 0.5, 0.5, 4.0, dxfattribs={"color": 30})
    space.add_spline([(70, 36), (80, 56), (92, 34), (104, 54), (114, 40)], dxfattribs={"color": 5})
    space.add_lwpolyline([(6, 8, 0, 0, 0), (30, 8, 0, 0, 0.6), (30, 24, 0, 0, 0), (6, 24, 0, 0, -0.4)], close=True)
    space.add_lwpolyline([(42, 8, 3, 3, 0), (60, 8, 3, 0, 0), (60, 26, 0, 2, 0.5), (44, 26, 2, 2, 0)],
                         dxfattribs={"color": 140})
    space.add_lwpolyline([(70, 10), (82, 26), (94, 10)], dxfattribs={"linetype": "AXE", "color": 1, "flags": 128})
    document.header["$PDMODE"], document.header["$PDSIZE"] = 35, 4
    space.add_point((102, 12))
    space.add_point((110, 20), dxfattribs={"color": 1})
    space.add_lwpolyline([(98, 24), (116, 24), (116, 30)], dxfattribs={"true_color": 0x9060C0, "lineweight": 100})
    return document


def textes():
    """Justifications, turned, slanted and narrow letters, paragraphs."""
    document, space = paper()
    style = {"style": "DEJAVU"}
    for i, align in enumerate((Align.LEFT, Align.CENTER, Align.RIGHT, Align.TOP_LEFT, Align.MIDDLE_CENTER, Align.BOTTOM_RIGHT)):
        x, y = 12 + 32 * (i % 3), 80 - 14 * (i // 3)
        space.add_line((x - 8, y), (x + 8, y), dxfattribs={"color": 8})
        space.add_line((x, y - 4), (x, y + 4), dxfattribs={"color": 8})
        space.add_text("Hpqg", height=3.5, dxfattribs=style).set_placement((x, y), align=align)
    space.add_text("Aligné", height=3, dxfattribs=style).set_placement((8, 48), (34, 56), align=Align.ALIGNED)
    space.add_text("Ajusté", height=4, dxfattribs=style).set_placement((42, 50), (78, 50), align=Align.FIT)
    space.add_text("large", height=3.5, dxfattribs={**style, "width": 1.8, "color": 5}).set_placement((82, 52))
    space.add_text("penché", height=4, dxfattribs={**style, "oblique": 25, "color": 1}).set_placement((82, 44))
    space.add_text("debout", height=3.5, rotation=90, dxfattribs=style).set_placement((114, 58))
    space.add_text("envers", height=4, dxfattribs={**style, "text_generation_flag": 2}).set_placement((112, 38))
    space.add_text("45%%d %%c12", height=4, dxfattribs=style).set_placement((8, 38))
    frame = {"color": 8}
    space.add_lwpolyline([(6, 6), (56, 6), (56, 32), (6, 32)], close=True, dxfattribs=frame)
    space.add_mtext("Un alinéa qui se replie au bord\\P{\\C1;en rouge} et {\\H4.5;grand}",
                    dxfattribs={**style, "char_height": 3, "width": 50, "insert": (6, 32), "attachment_point": 1})
    space.add_line((60, 20), (116, 20), dxfattribs=frame)
    space.add_line((88, 8), (88, 32), dxfattribs=frame)
    space.add_mtext("milieu\\Pde deux lignes", dxfattribs={**style, "char_height": 3, "insert": (88, 20), "attachment_point": 5})
    return document


def surfaces():
    """Fills, hatches, solids, a dimension, a mask, blocks mirrored, nested, repeated."""
    document, space = paper()
    full = space.add_hatch(color=3)
    full.paths.add_polyline_path([(6, 62), (36, 62), (36, 86), (6, 86)], is_closed=True)
    full.paths.add_polyline_path([(14, 68), (28, 68), (28, 80), (14, 80)], is_closed=True)
    edge = full.paths.add_edge_path()
    edge.add_ellipse((21, 74), (5, 0), 0.6, 0, 360)
    lines = space.add_hatch(color=1)
    lines.set_pattern_fill("LIGNES", definition=[[45, (0, 0), (-1.5, 1.5), []], [0, (0, 0), (0, 4), [3, -2]]])
    lines.paths.add_polyline_path([(42, 62), (70, 62, 0.7), (70, 86), (42, 86)], is_closed=True)
    space.add_solid([(86, 64), (98, 64), (90, 84), (96, 84)], dxfattribs={"color": 4})
    part = document.blocks.new("FLECHE", base_point=(0, 0))
    part.add_solid([(8, -2), (8, 2), (14, 0), (14, 0)])
    part.add_line((0, 0), (8, 0), dxfattribs={"lineweight": 50})
    part.add_arc((0, 0), 4, 90, 180, dxfattribs={"color": 1})
    whole = document.blocks.new("PAIRE")
    whole.add_blockref("FLECHE", (0, 0), dxfattribs={"rotation": 20})
    whole.add_blockref("FLECHE", (0, 0), dxfattribs={"rotation": 110, "color": 0})
    space.add_blockref("FLECHE", (10, 50))
    space.add_blockref("FLECHE", (40, 50), dxfattribs={"xscale": -1})
    space.add_blockref("FLECHE", (50, 50), dxfattribs={"yscale": -1, "xscale": 1.5, "color": 5})
    space.add_blockref("PAIRE", (84, 42), dxfattribs={"color": 6})
    space.add_blockref("PAIRE", (112, 42), dxfattribs={"xscale": -1, "color": 3, "rotation": 10})
    space.add_blockref("FLECHE", (8, 36), dxfattribs={"column_count": 3, "column_spacing": 18, "row_count": 2, "row_spacing": -7,
                                                      "xscale": 0.7, "yscale": 0.7})
    space.add_linear_dim(base=(10, 10), p1=(10, 18), p2=(60, 18), dimstyle="EZDXF",
                         override={"dimtxsty": "DEJAVU", "dimtxt": 3, "dimasz": 2.5, "dimclrd": 5}).render()
    space.add_line((70, 26), (116, 12), dxfattribs={"color": 1, "lineweight": 100})
    mask = space.add_wipeout([(98, 8), (112, 8), (112, 24), (103, 24)])
    mask.dxf.color = 5
    document.set_wipeout_variables(frame=1)
    return document


def fenetres():
    """Model space through a rectangle, a turned one and a circle."""
    document, layout = paper()
    space = document.modelspace()
    for i in range(7):
        space.add_line((650000 + 5 * i, 6860000), (650000 + 5 * i, 6860040), dxfattribs={"color": i + 1})
        space.add_line((650000, 6860000 + 5 * i), (650040, 6860000 + 5 * i), dxfattribs={"layer": "BLEU"})
    field = space.add_hatch(color=2)
    field.paths.add_polyline_path([(650022, 6860022), (650033, 6860022), (650033, 6860033), (650022, 6860033)], is_closed=True)
    space.add_circle((650016, 6860016), 7, dxfattribs={"layer": "ROUGE"})
    middle = (650018, 6860018)
    layout.add_viewport(center=(30, 62), size=(50, 46), view_center_point=middle, view_height=46)
    turned = layout.add_viewport(center=(90, 62), size=(40, 46), view_center_point=(0, 0), view_height=60)
    turned.dxf.view_target_point = (*middle, 0)
    turned.dxf.view_twist_angle = 30
    ring = layout.add_circle((40, 19), 16, dxfattribs={"color": 4})
    round_one = layout.add_viewport(center=(40, 19), size=(32, 32), view_center_point=middle, view_height=32)
    round_one.dxf.flags = 0x10000
    round_one.dxf.clipping_boundary_handle = ring.dxf.handle
    layout.add_text("1/1000", height=4, dxfattribs={"style": "DEJAVU"}).set_placement((80, 20))
    layout.add_line((80, 17), (110, 17), dxfattribs={"lineweight": 70})
    return document


def renvois():
    """Leaders by their styles; masks without frames, one beside its border; what lies over what."""
    document, space = paper()
    own = document.dimstyles.new("RENVOI")
    own.dxf.dimasz, own.dxf.dimscale, own.dxf.dimtad, own.dxf.dimgap = 2.0, 2.0, 1, 1.0
    style = {"dimstyle": "RENVOI", "dxfattribs": {"color": 5}}
    space.add_leader([(6, 84), (22, 74), (36, 74)], **style)
    space.add_leader([(42, 84), (54, 70), (66, 84), (78, 72)], dimstyle="RENVOI", dxfattribs={"color": 3, "path_type": 1})
    space.add_leader([(84, 72), (98, 84), (112, 84)], override={"dimasz": 3.0, "dimclrd": 1}, **style)
    space.add_leader([(6, 62), (20, 52), (32, 52)], override={"dimldrblk": "DOT"}, **style)
    space.add_leader([(42, 62), (56, 52), (60, 52)], dimstyle="RENVOI",
                     dxfattribs={"annotation_type": 0, "has_hookline": 1, "text_width": 14, "has_arrowhead": 1})
    space.add_leader([(84, 62), (96, 52)], dimstyle="RENVOI", dxfattribs={"has_arrowhead": 0})
    space.add_leader([(100, 62), (106, 58), (116, 52)], **style)  # its first stretch is shorter than two heads
    wide = {"lineweight": 200}
    below = space.add_line((6, 40), (54, 12), dxfattribs={"color": 1, **wide})
    mask = space.add_wipeout([(16, 14), (44, 14), (44, 38), (16, 38)])
    above = space.add_line((6, 12), (54, 40), dxfattribs={"color": 3, **wide})
    # The red line is the oldest and lies over the mask, the green one is the youngest and lies under it.
    space.set_redraw_order([(below.dxf.handle, above.dxf.handle), (above.dxf.handle, below.dxf.handle)])
    space.add_line((60, 26), (116, 26), dxfattribs={"color": 6, **wide})
    around = space.add_wipeout([(78, 18), (98, 18), (88, 36)])
    around.dxf.clip_mode = 1
    # The mask itself reaches beyond its border.
    size = around.dxf.image_size
    around.dxf.insert = around.dxf.insert - around.dxf.u_pixel * 0.5 - around.dxf.v_pixel * 0.25
    around.dxf.u_pixel, around.dxf.v_pixel = around.dxf.u_pixel * 2, around.dxf.v_pixel * 1.5
    around.boundary_path = [(x / 2, y / 1.5) for x, y in around.boundary_path]
    document.set_wipeout_variables(frame=0)
    return document


def each(document, kind, layout="Image"):
    return (document.modelspace() if layout is None else document.layouts.get(layout)).query(kind)


def shifted(document):
    line = each(document, "LINE")[7]
    line.dxf.start, line.dxf.end = line.dxf.start + (0, 0.6, 0), line.dxf.end + (0, 0.6, 0)


def solid_line(document):
    each(document, "LINE")[6].dxf.linetype = "CONTINUOUS"


def heavier(document):
    each(document, "LINE")[2].dxf.lineweight = 50


def not_mirrored(document):
    each(document, "INSERT")[1].dxf.xscale = 1


def without_hatch(document):
    document.layouts.get("Image").delete_entity(each(document, "HATCH")[1])


def without_hole(document):
    each(document, "HATCH")[0].paths.paths.pop(1)


def without_mask(document):
    document.layouts.get("Image").delete_entity(each(document, "WIPEOUT")[0])


def moved_text(document):
    each(document, "TEXT")[1].dxf.halign = 2


def not_turned(document):
    each(document, "VIEWPORT")[-2].dxf.view_twist_angle = 0


def not_round(document):
    each(document, "VIEWPORT")[-1].dxf.flags = 0


def without_heads(document):
    each(document, "LEADER")[2].dxf.has_arrowhead = 0


def smaller_heads(document):
    document.dimstyles.get("RENVOI").dxf.dimscale = 1.5


def straight(document):
    each(document, "LEADER")[1].dxf.path_type = 0


def without_landing(document):
    each(document, "LEADER")[4].dxf.has_hookline = 0


def in_order_of_making(document):
    document.layouts.get("Image").set_redraw_order([])


def not_inverted(document):
    each(document, "WIPEOUT")[1].dxf.clip_mode = 0


def framed(document):
    document.set_wipeout_variables(frame=1)


def without_frame(document):
    document.set_wipeout_variables(frame=0)


DRAWINGS = {"traits": traits, "textes": textes, "surfaces": surfaces, "fenetres": fenetres, "renvois": renvois}
FAULTS = [("traits", shifted), ("traits", solid_line), ("traits", heavier), ("textes", moved_text), ("surfaces", not_mirrored),
          ("surfaces", without_hatch), ("surfaces", without_hole), ("surfaces", without_mask), ("surfaces", without_frame),
          ("fenetres", not_turned),
          ("fenetres", not_round), ("renvois", without_heads), ("renvois", smaller_heads), ("renvois", straight),
          ("renvois", without_landing), ("renvois", in_order_of_making), ("renvois", not_inverted), ("renvois", framed)]
