#!/usr/bin/python3
"""compare_ezdxf.py BENCH_DXF [N...]: reading and writing drawings of N point blocks (default 1000 10000) with this
program and with ezdxf on the same files, side by side."""
import os
import resource
import subprocess
import sys
import tempfile
import time

import ezdxf

INSERT = ('  0\nINSERT\n  5\n%X\n330\n%s\n100\nAcDbEntity\n  8\n0\n100\nAcDbBlockReference\n 66\n1\n  2\nborne\n'
          ' 10\n%.16g\n 20\n%.16g\n 30\n0.0\n1001\nACAD\n1070\n1\n')
ATTRIB = ('  0\nATTRIB\n  5\n%X\n330\n%X\n100\nAcDbEntity\n  8\n0\n100\nAcDbText\n 10\n%.16g\n 20\n%.16g\n 30\n0.0\n'
          ' 40\n1.0\n  1\n%s\n100\nAcDbAttribute\n  2\n%s\n 70\n0\n')
SEQEND = '  0\nSEQEND\n  5\n%X\n330\n%X\n100\nAcDbEntity\n  8\n0\n'


def make(count, path):
    """A drawing of `count` references with four attributes each."""
    doc = ezdxf.new('R2018')
    block = doc.blocks.new('borne')
    block.add_circle((0, 0), .25)
    doc.saveas(path)
    text = open(path, encoding='utf8').read()
    owner = doc.modelspace().layout_key
    handle = 0x100000
    at = text.index('  2\nENTITIES\n') + len('  2\nENTITIES\n')
    with open(path, 'w', encoding='utf8', newline='\n') as out:
        seed = text.index('$HANDSEED\n  5\n') + len('$HANDSEED\n  5\n')
        out.write(text[:seed] + '%X' % (handle + 6 * count + 1) + text[text.index('\n', seed):at])
        for i in range(count):
            x, y = 650000 + i % 1000 * 1.37, 6860000 + i // 1000 * 2.11
            out.write(INSERT % (handle, owner, x, y))
            for k, tag in enumerate(('CODE', 'NUMPT', 'Z', 'OBS')):
                out.write(ATTRIB % (handle + 1 + k, handle, x, y + k, '%s %d' % (tag, i), tag))
            out.write(SEQEND % (handle + 5, handle))
            handle += 6
        out.write(text[at:])


def ezdxf_times(path):
    start = time.process_time()
    doc = ezdxf.readfile(path)
    read = time.process_time() - start
    start = time.process_time()
    doc.saveas(path + '.copie')
    return read, time.process_time() - start, resource.getrusage(resource.RUSAGE_SELF).ru_maxrss / 1024


def main(bench, counts):
    print('%-10s %10s %10s %10s' % ('program', 'read s', 'write s', 'peak MB'))
    with tempfile.TemporaryDirectory() as folder:
        for count in counts:
            path = os.path.join(folder, '%d.dxf' % count)
            make(count, path)
            row = subprocess.run([bench, path], capture_output=True, text=True, check=True).stdout.splitlines()[1].split()
            own = float(row[2]), float(row[3]), float(row[6])
            other = ezdxf_times(path)
            print('%d blocks, %.1f MB' % (count, os.path.getsize(path) / 1e6))
            print('%-10s %10.3f %10.3f %10.1f' % (('veltora',) + own))
            print('%-10s %10.3f %10.3f %10.1f' % (('ezdxf',) + other))
            print('%-10s %10.1f %10.1f' % ('times', other[0] / own[0], other[1] / own[1]))


if __name__ == '__main__':
    main(sys.argv[1], [int(n) for n in sys.argv[2:]] or [1000, 10000])
