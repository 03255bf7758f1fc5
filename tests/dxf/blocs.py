#!/usr/bin/env python3
"""Makes a drawing with what EXPLODE takes apart and what it does not: blocs.py OUT.dxf"""
import sys

import ezdxf

document = ezdxf.new("R2010")
document.header["$DIMZIN"] = 8
model = document.modelspace()
for name in ("MURS", "AXES"):
    document.layers.add(name)
model.add_lwpolyline([(0, 0, 0), (10, 0, 0), (10, 10, 1), (0, 10, 0)], format="xyb", dxfattribs={"layer": "MURS", "elevation": 5})
model.add_polyline3d([(0, 0, 1), (0, 10, 2), (10, 20, 3)], close=True, dxfattribs={"layer": "AXES"})
node = document.blocks.new("NOEUD")
node.add_point((0, 0))
mixed = document.blocks.new("MIXTE", base_point=(1, 1))
mixed.add_circle((1, 1), 0.5)
mixed.add_blockref("NOEUD", (2, 2))
mixed.add_attdef("VAR", (3, 1), "defaut")
mixed.add_attdef("FIXE", (1, 5), "fixe", dxfattribs={"flags": 2})
mixed.add_attdef("CACHE", (1, 6), "cache", dxfattribs={"flags": 1})
mixed.add_lwpolyline([(0, 0), (1, 0)])
mixed.add_mtext("deux\\Plignes", dxfattribs={"insert": (0, 0), "char_height": 0.5})
whole = model.add_blockref("MIXTE", (100, 100), dxfattribs={"xscale": 2, "yscale": 2, "zscale": 2})
whole.add_attrib("VAR", "valeur", (104, 100))
whole.add_attrib("CACHE", "secret", (100, 110), dxfattribs={"flags": 1})
model.add_blockref("MIXTE", (200, 100), dxfattribs={"xscale": 2, "yscale": 1})
model.add_blockref("NOEUD", (300, 100), dxfattribs={"row_count": 2, "column_count": 3, "row_spacing": 5, "column_spacing": 5})
model.add_circle((500, 100), 3)
document.saveas(sys.argv[1])
