#!/usr/bin/python3
"""check_roundtrip.py DXF_COPY: loads and saves drawings of every version with the tool and compares tag by tag.

What may differ, and nothing else:
- a value and its default: groups that say what their absence says (see DEFAULTS);
- the comment and version variables of a drawing that is raised to a newer version."""
import os
import subprocess
import sys
import tempfile

import ezdxf

import drawings
import tagfile

# Groups that a program may leave out or write: entity -> {code: default}. '*' is for every entity.
DEFAULTS = {'*': {}}
LAYOUT_COUNTS = ('TABLE',)


def allowed(item, missing, added):
    for kind in ('*', item.kind):
        for code, default in DEFAULTS.get(kind, {}).items():
            for counter in (missing, added):
                counter.pop((code, default), None)
    if item.kind == 'TABLE':  # the number of records is counted afresh
        for counter in (missing, added):
            for tag in [t for t in counter if t[0] == 70]:
                del counter[tag]


def copy(tool, source, target):
    done = subprocess.run([tool, source, target], capture_output=True, text=True)
    if done.returncode != 0:
        raise SystemExit('%s: refused: %s' % (source, done.stderr))
    return done.stdout.splitlines()


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
    audit = ezdxf.readfile(first).audit()
    wrong += ['audit: ' + e.message for e in audit.errors + audit.fixes]
    return wrong


def main(tool):
    status = 0
    with tempfile.TemporaryDirectory() as folder:
        for version in drawings.VERSIONS:
            source = os.path.join(folder, version + '.dxf')
            drawings.save(version, source)
            wrong = check(tool, source, drawings.encoding(version), folder)
            print('%s: %s' % (version, 'ok' if not wrong else '%d differences' % len(wrong)))
            for text in wrong[:40]:
                print('   ', text[:300])
            status |= bool(wrong)
    return status


if __name__ == '__main__':
    sys.exit(main(sys.argv[1]))
