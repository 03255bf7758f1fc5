"""A drawing for the scenario of what is hard to read or to move: dessin_difficile.py OUT.dxf. Two stray vertices, a dimension,
a hatch, a hundred million lines in blocks in blocks; a region too when the name says so."""
import sys

import ezdxf

doc = ezdxf.new('R2010', setup=True)
space = doc.modelspace()
inner = doc.blocks.new('N0')
for i in range(10):
    inner.add_line((i, 0), (i, 5))
for level in range(1, 8):
    block = doc.blocks.new('N%d' % level)
    for i in range(10):
        block.add_blockref('N%d' % (level - 1), (i * 1e-9, 0))
space.add_blockref('N7', (0, 0))
hatch = space.add_hatch()
hatch.paths.add_polyline_path([(100, 0), (110, 0), (110, 10)])
space.add_linear_dim(base=(100, 22), p1=(100, 20), p2=(106, 20)).render()
if 'region' in sys.argv[1]:
    space.add_region().sat = ['400 3 1 0', 'fin']
doc.saveas(sys.argv[1])
stray = '  0\nVERTEX\n  5\nFFF0\n  8\n0\n  0\nVERTEX\n  5\nFFF1\n  8\n0\n'
text = open(sys.argv[1], encoding='utf8').read()
at = text.index('  2\nENTITIES\n') + len('  2\nENTITIES\n')
open(sys.argv[1], 'w', encoding='utf8').write(text[:at] + stray + text[at:])
