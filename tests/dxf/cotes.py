#!/usr/bin/env python3
"""Makes a drawing with a group, an entity that has a dictionary, a hatch and a dimension on its own layer: cotes.py OUT.dxf"""
import sys

import ezdxf

document = ezdxf.new("R2010", setup=True)
model = document.modelspace()
document.layers.add("COTES")
a = model.add_line((0, 0), (10, 0))
b = model.add_lwpolyline([(0, 0), (10, 0), (10, 10)])
hatch = model.add_hatch(color=2)
hatch.paths.add_polyline_path([(0, 0), (10, 0), (10, 10)], is_closed=True)
document.groups.new("PAIRE").extend([a, b])
a.new_extension_dict().dictionary.add_xrecord("NOTE").reset([(1, "une note"), (330, b.dxf.handle)])
model.add_linear_dim(base=(0, 3), p1=(0, 0), p2=(10, 0), dxfattribs={"layer": "COTES"}).render()
document.saveas(sys.argv[1])
