#!/usr/bin/python3
"""check_damaged.py DXF_COPY: drawings cut off or changed at random places are refused with a message or read, and what
is read can be read again and stays the same. Never a crash."""
import os
import random
import subprocess
import sys
import tempfile

import drawings

CUTS = 20
CHANGES = 60
SEED = 20240611


def changed(lines, rng):
    lines = list(lines)
    for _ in range(rng.choice([1, 1, 3, 20])):
        at = rng.randrange(len(lines))
        kind = rng.randrange(6)
        if kind == 0:
            del lines[at]
        elif kind == 1:
            lines.insert(at, lines[rng.randrange(len(lines))])
        elif kind == 2:
            lines[at] = lines[rng.randrange(len(lines))]
        elif kind == 3:
            lines[at] = rng.choice(['', '-1', '99999999999999999999', '1e400', 'nan', 'ENDSEC', 'SEQEND', 'ENDBLK', '0', 'FFFFFFFFFFFFFFFF'])
        elif kind == 4:  # two groups change places
            other = rng.randrange(len(lines) // 2) * 2
            mine = at // 2 * 2
            lines[mine:mine + 2], lines[other:other + 2] = lines[other:other + 2], lines[mine:mine + 2]
        else:
            lines[at] = lines[at][:-1] + chr(rng.randrange(32, 500))
    return lines


def try_text(tool, text, folder, name, counts):
    first, second, third = (os.path.join(folder, n) for n in ('in.dxf', 'first.dxf', 'second.dxf'))
    with open(first, 'w', encoding='utf8', newline='\n') as out:
        out.write(text)
    if os.path.exists(second):
        os.remove(second)
    done = subprocess.run([tool, first, second], capture_output=True, text=True)
    if done.returncode == 1 and done.stderr.strip() and not os.path.exists(second):
        counts['refused'] += 1
        return []
    if done.returncode != 0:
        return ['%s: status %d %s' % (name, done.returncode, done.stderr[-300:])]
    counts['read'] += 1
    done = subprocess.run([tool, second, third], capture_output=True, text=True)
    if done.returncode != 0:
        return ['%s: its copy is refused: %s' % (name, done.stderr[-300:])]
    if open(second, 'rb').read() != open(third, 'rb').read():
        return ['%s: its copy changes when it is copied' % name]
    return []


def main(tool):
    rng = random.Random(SEED)
    text = drawings.make('R2013')
    lines = text.split('\n')
    counts = {'refused': 0, 'read': 0}
    wrong = []
    with tempfile.TemporaryDirectory() as folder:
        for i in range(1, CUTS):
            wrong += try_text(tool, text[:len(text) * i // CUTS], folder, 'cut at %d/%d' % (i, CUTS), counts)
        if counts['read']:
            wrong.append('a drawing that was cut off was read')
        for i in range(CHANGES):
            wrong += try_text(tool, '\n'.join(changed(lines, rng)), folder, 'change %d of seed %d' % (i, SEED), counts)
    print('%(read)d read, %(refused)d refused' % counts)
    for line in wrong:
        print('   ', line)
    return bool(wrong)


if __name__ == '__main__':
    sys.exit(main(sys.argv[1]))
