#!/usr/bin/env python3
"""Makes a drawing with a block that has an attribute: bloc_borne.py OUT.dxf"""
import sys

import ezdxf

document = ezdxf.new("R2010")
block = document.blocks.new("BORNE")
block.add_circle((0, 0), 0.5)
block.add_attdef("MAT", (1, 0), "0", dxfattribs={"prompt": "Matricule", "height": 0.5})
document.saveas(sys.argv[1])
