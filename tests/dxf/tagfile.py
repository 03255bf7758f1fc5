"""Tags of a drawing file, read without any drawing library, and their comparison."""
from collections import Counter

REAL = [(10, 59), (110, 149), (210, 239), (460, 469), (1010, 1059)]
INTEGER = [(60, 99), (160, 179), (270, 299), (370, 389), (400, 409), (420, 429), (440, 459), (1060, 1071)]
HANDLE = [(5, 5), (105, 105), (320, 369), (390, 399), (480, 481), (1005, 1005)]


def inside(code, ranges):
    return any(first <= code <= last for first, last in ranges)


def value_of(code, text):
    """A value in the form in which two files are compared."""
    if inside(code, REAL):
        return float(text)
    if inside(code, INTEGER):
        return int(text)
    if inside(code, HANDLE):
        return int(text, 16) if text.strip() else 0
    return text


def read_tags(path, encoding):
    with open(path, encoding=encoding, newline=None) as stream:
        lines = stream.read().split('\n')
    return [(int(lines[i]), lines[i + 1]) for i in range(0, len(lines) - 1, 2)]


class Item:
    """A group of code 0 and what stands behind it."""

    def __init__(self, kind):
        self.kind = kind
        self.tags = []

    @property
    def handle(self):
        wanted = 105 if self.kind == 'DIMSTYLE' else 5
        return next((int(v, 16) for c, v in self.tags if c == wanted), None)

    def __str__(self):
        return '%s(%s)' % (self.kind, '%X' % self.handle if self.handle else '-')


class Drawing:
    """comments, header {name: tags}, sections [(name, [items])]"""

    def __init__(self, path, encoding='utf8'):
        self.comments, self.header, self.sections = [], {}, []
        item = None
        for code, value in read_tags(path, encoding):
            if code == 0 and value == 'SECTION':
                item = Item('SECTION')
                self.sections.append([None, [item]])
            elif code == 0:
                item = Item(value)
                self.sections[-1][1].append(item)
            elif item is None:
                self.comments.append((code, value))
            else:
                item.tags.append((code, value))
        for section in self.sections:
            section[0] = section[1][0].tags[0][1]
        name = None
        for code, value in self.items('HEADER')[0].tags[1:]:
            if code == 9:
                name = value if value != '$CUSTOMPROPERTYTAG' else value + str(len(self.header))
                self.header[name] = []
            else:
                self.header[name].append((code, value_of(code, value)))

    def items(self, section):
        return next((items for name, items in self.sections if name == section), [])

    def handles(self):
        return [item.handle for name, items in self.sections if name in ('TABLES', 'BLOCKS', 'ENTITIES', 'OBJECTS')
                for item in items if item.handle]


def counted(item):
    return Counter((code, value_of(code, value)) for code, value in item.tags)


def differences(original, copy, allowed):
    """Texts of all differences. `allowed(item, missing, added)` removes from both counters what may differ."""
    found = []
    if original.comments != copy.comments:
        found.append('comments %s became %s' % (original.comments, copy.comments))
    if [s[0] for s in original.sections] != [s[0] for s in copy.sections]:
        found.append('sections %s became %s' % ([s[0] for s in original.sections], [s[0] for s in copy.sections]))
    if list(original.header) != list(copy.header):
        found.append('header variables %s became %s' % (list(original.header), list(copy.header)))
    for name, value in original.header.items():
        if name not in ('$ACADVER', '$HANDSEED', '$EXTMIN', '$EXTMAX') and copy.header.get(name) != value:
            found.append('%s %s became %s' % (name, value, copy.header.get(name)))
    for name, items in original.sections:
        if name == 'HEADER':
            continue
        others = copy.items(name)
        if [(i.kind, i.handle) for i in items] != [(i.kind, i.handle) for i in others]:
            old, new = [str(i) for i in items], [str(i) for i in others]
            at = next((k for k, (a, b) in enumerate(zip(old, new)) if a != b), min(len(old), len(new)))
            found.append('section %s: order differs at item %d, %s became %s' % (name, at, old[at:at + 3], new[at:at + 3]))
            continue
        for item, other in zip(items, others):
            missing, added = counted(item) - counted(other), counted(other) - counted(item)
            allowed(item, missing, added)
            if missing or added:
                found.append('%s: lost %s, new %s' % (item, dict(missing), dict(added)))
    return found
