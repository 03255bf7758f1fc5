#!/usr/bin/python3
"""check_roundtrip.py DXF_COPY: loads and saves drawings of every version with the tool and compares tag by tag.

What may differ, and nothing else:
- a value and its default: groups that say what their absence says (see DEFAULTS);
- the case of a line type's name, which is spelled as in its table;
- the number of records at the head of a table;
- the owner of attributes, vertices and sequence ends: the entity to which they belong, not its block;
- $ACADVER and $HANDSEED;
- the extents of the drawing and of its layouts, which are measured anew."""
import os
import re
import subprocess
import sys
import tempfile

import ezdxf
from ezdxf.math import BoundingBox, Vec3

import drawings
import tagfile

# Groups that a program may leave out or write: entity -> {code: default}.
DEFAULTS = {'BLOCK_RECORD': {70: 0, 280: 1, 281: 0}, 'LWPOLYLINE': {40: 0.0, 41: 0.0, 43: 0.0}, 'MTEXT': {41: 0.0, 44: 1.0, 72: 5, 73: 1}, 'VERTEX': {70: 0}}


def allowed(item, missing, added):
    for code, default in DEFAULTS.get(item.kind, {}).items():
        for counter in (missing, added):
            counter.pop((code, default), None)
    for code, name in list(missing):
        twin = next((tag for tag in added if code == 6 == tag[0] and tag[1].lower() == name.lower()), None)
        if twin:
            del missing[code, name], added[twin]
    afresh = {'TABLE': 70, 'VERTEX': 330, 'ATTRIB': 330, 'SEQEND': 330}.get(item.kind)
    extents = (14, 24, 34, 15, 25, 35) if item.kind == 'LAYOUT' else ()
    for counter in (missing, added):
        for tag in [t for t in counter if t[0] == afresh or t[0] in extents]:
            del counter[tag]


def copy(tool, source, target):
    done = subprocess.run([tool, source, target], capture_output=True, text=True)
    if done.returncode != 0:
        raise SystemExit('%s: refused: %s' % (source, done.stderr))
    return done.stdout.splitlines()


def check_extents(doc):
    """The drawing tells where its things are: what ezdxf measures lies within, and no farther than it the stored corners."""
    space = doc.modelspace()
    corners = [Vec3(doc.header[name]) for name in ('$EXTMIN', '$EXTMAX')]
    if len(space) == 0:
        return []
    wrong = []
    if [Vec3(space.dxf_layout.dxf.extmin), Vec3(space.dxf_layout.dxf.extmax)] != corners:
        wrong.append('the layout has other extents than the drawing')
    points = [p for e in space.query('LINE') for p in (e.dxf.start, e.dxf.end)] + [e.dxf.center for e in space.query('CIRCLE')]
    stored, seen = BoundingBox(corners), BoundingBox(points)
    if not all(stored.inside(p) for p in points) or (stored.extmax - seen.extmax).magnitude > 1e-6:
        wrong.append('extents %s, but things lie in %s' % (stored, seen))
    return wrong


def check(tool, source, encoding, folder):
    """Texts of what is wrong with the copy of one file."""
    first, second = os.path.join(folder, 'first.dxf'), os.path.join(folder, 'second.dxf')
    wrong = ['mended: ' + line for line in copy(tool, source, first)]
    copy(tool, first, second)
    if open(first, 'rb').read() != open(second, 'rb').read():
        wrong.append('a second copy differs from the first one')
    original, copied = tagfile.Drawing(source, encoding), tagfile.Drawing(first)
    wrong += tagfile.differences(original, copied, allowed)
    version = max(original.header['$ACADVER'][0][1], 'AC1021')
    if copied.header['$ACADVER'] != [(1, version)]:
        wrong.append('version %s' % copied.header['$ACADVER'])
    handles = copied.handles()
    if len(handles) != len(set(handles)):
        wrong.append('handles are not unique')
    if copied.header['$HANDSEED'][0][1] <= max(handles):
        wrong.append('$HANDSEED is not above all handles')
    doc = ezdxf.readfile(first)
    wrong += check_extents(doc)
    audit = doc.audit()
    wrong += ['audit: ' + e.message for e in audit.errors + audit.fixes]
    return wrong


def check_new(tool, folder):
    """A new drawing is complete and stays as it is."""
    source = os.path.join(folder, 'new.dxf')
    subprocess.run([tool, source], check=True)
    return check(tool, source, 'utf8', folder)


def check_old(tool, folder):
    """A drawing without handles and markers is raised: the same entities, nothing for an auditor to mend."""
    source, target, again = (os.path.join(folder, n) for n in ('old.dxf', 'raised.dxf', 'again.dxf'))
    old = drawings.make_old()
    old.saveas(source)
    wrong = ['mended: ' + line for line in copy(tool, source, target)]
    copy(tool, target, again)
    if open(target, 'rb').read() != open(again, 'rb').read():
        wrong.append('a second copy differs from the first one')
    raised = ezdxf.readfile(target)
    if [e.dxftype() for e in raised.modelspace()] != [e.dxftype() for e in old.modelspace()]:
        wrong.append('entities %s' % [str(e) for e in raised.modelspace()])
    dimension, former = (d.modelspace().query('DIMENSION')[0].dxf for d in (raised, old))
    for name in ('geometry', 'defpoint', 'defpoint2', 'defpoint3', 'angle'):
        if dimension.get(name) != former.get(name):
            wrong.append('dimension: %s %s became %s' % (name, former.get(name), dimension.get(name)))
    audit = raised.audit()
    return wrong + ['audit: ' + e.message for e in audit.errors + audit.fixes]


def check_binary(tool, version, folder):
    """The binary form of a drawing gives the copy that its text form gives; cut anywhere, it is refused."""
    doc = drawings.make_old() if version == 'R12' else ezdxf.readfile(os.path.join(folder, version + '.dxf'))
    text, binary, first, second = (os.path.join(folder, n) for n in ('text.dxf', 'binary.dxf', 'first.dxf', 'second.dxf'))
    doc.saveas(text)
    doc.saveas(binary, fmt='bin')
    wrong = copy(tool, binary, second)
    copy(tool, text, first)
    # ezdxf writes a new identifier and the time each time.
    own = re.compile(r'(\$TDU?(?:CREATE|UPDATE)\s+40\s+)\S+|\{[0-9A-F-]{36}\}|.*@ \d{4}-.*')
    copies = [own.sub(r'\1', open(n, encoding='utf8').read()) for n in (first, second)]
    if copies[0] != copies[1]:
        wrong.append('the copy differs from that of the text')
    whole = open(binary, 'rb').read()
    for end in (21, 23, 24, 100, len(whole) // 2, len(whole) - 6):
        open(binary, 'wb').write(whole[:end])
        if subprocess.run([tool, binary, second], capture_output=True).returncode != 1:
            wrong.append('accepted when cut behind byte %d' % end)
    return wrong


def report(name, wrong):
    print('%s: %s' % (name, 'ok' if not wrong else '%d differences' % len(wrong)))
    for text in wrong[:40]:
        print('   ', text[:300])
    return bool(wrong)


def main(tool):
    with tempfile.TemporaryDirectory() as folder:
        status = report('new drawing', check_new(tool, folder))
        status |= report('R12', check_old(tool, folder))
        for version in drawings.VERSIONS:
            source = os.path.join(folder, version + '.dxf')
            drawings.save(version, source)
            wrong = check(tool, source, drawings.encoding(version), folder)
            status |= report(version, wrong)
        for version in ('R12', 'R2000', 'R2018'):
            status |= report('binary ' + version, check_binary(tool, version, folder))
    return status


if __name__ == '__main__':
    sys.exit(main(sys.argv[1]))
