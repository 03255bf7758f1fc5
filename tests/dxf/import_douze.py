#!/usr/bin/env python3
"""Makes a drawing of everything from which points can be imported, with a library of its own.

  import_douze.py DRAWING.dxf
"""
import sys

import ezdxf
from ezdxf.enums import TextEntityAlignment

X, Y = 650000.0, 6860000.0


def at(x, y, z=0.0):
    return (X + x, Y + y, z)


doc = ezdxf.new("R2010")
space = doc.modelspace()
space.add_polyline3d([at(0, 0, 101), at(5, 0, 102), at(5, 5, 0)])
old = doc.modelspace().add_polyline2d([(X + 10, Y), (X + 15, Y), (X + 15, Y + 5)])
for vertex in old.vertices:
    vertex.dxf.location = (vertex.dxf.location.x, vertex.dxf.location.y, 110)
old.dxf.elevation = (0, 0, 110)
old.vertices[1].dxf.flags = 16  # control vertex of a spline
space.add_point(at(20, 0, 120))
space.add_point(at(21, 0, 0))
mesh = space.add_polymesh((2, 2))
for i in range(2):
    for j in range(2):
        mesh.set_mesh_vertex((i, j), at(30 + i, j, 130))
faces = space.add_polyface()
faces.append_face([at(40, 0, 140), at(41, 0, 140), at(41, 1, 140)])
space.add_3dface([at(50, 0, 150), at(51, 0, 150), at(51, 1, 150), at(51, 1, 150)])
space.add_line(at(60, 0, 160), at(61, 0, 0))
space.add_lwpolyline([(X + 70, Y), (X + 71, Y)], dxfattribs={"elevation": 170})
space.add_lwpolyline([(X + 75, Y), (X + 76, Y)])

own = doc.blocks.new("REPERE")
own.add_circle((0, 0), 0.2)


def block(place, **attributes):
    reference = space.add_blockref("REPERE", place)
    for tag, text in attributes.items():
        reference.add_attrib(tag, text, place[:2], dxfattribs={"height": 1.0})


block(at(80, 0), NUMPT="S1", Z="180.5", CODE="3")
block(at(90, 0), MAT="R7", ALT="190.25", GENRE="12")
block(at(100, 0, 200))
space.add_text("210.75", height=1.0).set_placement(at(110, 0), align=TextEntityAlignment.LEFT)
space.add_text("rue", height=1.0).set_placement(at(111, 0))
space.add_mtext("{\\fArial|b0|i0;211.5}", dxfattribs={"insert": at(112, 0), "char_height": 1.0,
                                                      "attachment_point": 7})
doc.saveas(sys.argv[1])
