#!/usr/bin/python3
"""check_transform.py DXF_COPY: carries drawings along by a similarity with the tool, and compares every entity group by group
with what ezdxf's own transformation of the same entity gives; where ezdxf leaves groups as they are, with the rule itself."""
import math
import os
import subprocess
import sys
import tempfile

import ezdxf
from ezdxf.lldxf.tagwriter import TagCollector
from ezdxf.math import Matrix44, Vec3

TOLERANCE = 1e-9
KINDS = 'HATCH ELLIPSE SPLINE SOLID TRACE DIMENSION LEADER IMAGE WIPEOUT TOLERANCE MLINE MESH XLINE HELIX'.split()
# Groups that ezdxf does not carry, or computes anew: how they change under a factor and a turn.
LENGTH, TURN, BASE, VECTOR, UNIT, KEPT = range(6)
RULES = {'HATCH': {41: LENGTH, 49: LENGTH, 52: TURN, 53: TURN, 43: BASE, 45: VECTOR, 10: BASE},
         'LEADER': {40: LENGTH, 41: LENGTH, 211: UNIT, 212: VECTOR, 213: VECTOR}, 'DIMENSION': {42: LENGTH},
         'TOLERANCE': {11: UNIT}, 'HELIX': {42: LENGTH, 12: UNIT, 32: KEPT}, 'MLINE': {40: LENGTH, 41: LENGTH}}
NORMAL = (210, 220, 230)  # ezdxf writes what goes without saying, and leaves lengths to it


def make(version):
    doc = ezdxf.new(version, setup=True)
    space = doc.modelspace()
    space.add_ellipse((10, 20, 5), (3, 4, 0), 0.4, 0.1, 3.0)
    space.add_spline([(0, 0, 0), (10, 20, 0), (30, 10, 5), (40, 10, 0)])
    spline = space.add_open_spline([(0, 0), (1, 2), (3, 1), (4, 4), (5, 0)])
    spline.weights = [1, 2, 1, 2, 1]
    spline.dxf.start_tangent, spline.dxf.end_tangent = (1, 2, 0), (3, -1, 0)
    space.add_helix(radius=2, pitch=1, turns=3)
    space.add_solid([(0, 0), (1, 0), (0, 1), (1, 1)])
    space.add_solid([(7, 8, 9), (9, 8, 9), (7, 11, 9)], dxfattribs={'extrusion': (0, 0, -1), 'thickness': 2})
    space.add_solid([(7, 8, 9), (9, 8, 9), (7, 11, 9)], dxfattribs={'extrusion': (0.6, 0, 0.8)})
    space.add_trace([(0, 0), (1, 0), (0, 1), (1, 1)])
    space.add_xline((3, 4), (0.6, 0.8))
    for extrusion in ((0, 0, 1), (0, 0, -1)):
        hatch = space.add_hatch(color=2, dxfattribs={'extrusion': extrusion, 'elevation': (0, 0, 3)})
        hatch.set_pattern_fill('ANSI37', scale=0.5, angle=10)
        hatch.paths.add_polyline_path([(0, 0), (10, 0, .5), (10, 10)], is_closed=True)
        edges = hatch.paths.add_edge_path()
        edges.add_arc((5, 5), 1, 20, 130)
        edges.add_arc((5, 6), 2, 20, 130, ccw=False)
        edges.add_line((1, 1), (2, 2))
        edges.add_ellipse((3, 3), (2, 1), 0.5, 10, 200)
        edges.add_spline(control_points=[(0, 0), (1, 2), (3, 1), (4, 4)], degree=3, knot_values=[0, 0, 0, 0, 1, 1, 1, 1])
        edges.add_spline(fit_points=[(0, 0), (1, 2), (3, 1)], control_points=[(0, 0), (1, 2), (3, 1), (4, 4)],
                         degree=3, knot_values=[0, 0, 0, 0, 1, 1, 1, 1], start_tangent=(1, 0), end_tangent=(0, 1))
        hatch.set_seed_points([(2, 3), (4, 5)])
    space.add_linear_dim(base=(3, 2), p1=(0, 0), p2=(6, 0), angle=15).render()
    space.add_aligned_dim((0, 0), (6, 3), 2).render()
    space.add_radius_dim(center=(0, 0), radius=3, angle=45).render()
    space.add_diameter_dim(center=(0, 0), radius=3, angle=135).render()
    space.add_angular_dim_3p(base=(5, 5), center=(0, 0), p1=(4, 0), p2=(0, 4)).render()
    space.add_angular_dim_2l(base=(5, 5), line1=((0, 0), (4, 0)), line2=((0, 1), (0, 4))).render()
    space.add_ordinate_dim(feature_location=(3, 4), offset=(2, 2), dtype=1).render()
    for dimension in space.query('DIMENSION'):
        dimension.dxf.actual_measurement = 6.25
    leader = space.add_leader([(0, 0), (1, 1), (3, 1)])
    leader.dxf.text_height, leader.dxf.leader_offset_block_ref = 2.5, (1, 2, 0)
    leader.dxf.horizontal_direction = (0.6, 0.8, 0)
    space.new_entity('TOLERANCE', {'content': '0.1', 'insert': (1, 1), 'x_axis_vector': (0.6, 0.8, 0)})
    space.add_mline([(0, 0), (10, 0), (10, 10)], dxfattribs={'scale_factor': 2})
    with space.add_mesh().edit_data() as data:
        data.vertices = [(0, 0, 0), (1, 0, 0), (1, 1, 0), (0, 1, 1)]
        data.faces = [[0, 1, 2], [0, 2, 3]]
    image = doc.add_image_def('plan.png', size_in_pixel=(640, 360))
    space.add_image(image, insert=(2, 1), size_in_units=(6.4, 3.6), rotation=30)
    space.add_wipeout([(0, 0), (10, 10)])
    return doc


def numbers(entity):
    """The groups of an entity, points coordinate by coordinate."""
    groups = []
    for tag in TagCollector.dxftags(entity):
        if hasattr(tag.value, '__len__') and not isinstance(tag.value, (str, bytes)):
            groups += [(tag.code + 10 * i, float(x)) for i, x in enumerate(tag.value)]
        else:
            groups.append((tag.code, tag.value))
    x, y, z = (sum(value for code, value in groups if code == wanted) for wanted in NORMAL)
    length = math.hypot(x, y, z) or 1
    if z > 0 and math.hypot(x, y) < 1e-12:
        return [group for group in groups if group[0] not in NORMAL]
    return [(code, value / length if code in NORMAL else value) for code, value in groups]


class Similarity:
    def __init__(self, a, b, dx, dy):
        self.a, self.b, self.dx, self.dy = a, b, dx, dy
        self.factor, self.turn = math.hypot(a, b), math.degrees(math.atan2(b, a))
        self.matrix = Matrix44([a, b, 0, 0, -b, a, 0, 0, 0, 0, self.factor, 0, dx, dy, 0, 1])

    def rule(self, rule, x, y, flipped):
        """What one or two numbers become in the plane, which may look down."""
        if rule == KEPT:
            return x, y
        if rule == LENGTH:
            return x * self.factor, y
        if rule == TURN:
            return x + (-self.turn if flipped else self.turn), y
        b = -self.b if flipped else self.b
        size = self.factor if rule == UNIT else 1
        mapped = (x * self.a - y * b) / size, (x * b + y * self.a) / size
        if rule == BASE:
            mapped = mapped[0] + (-self.dx if flipped else self.dx), mapped[1] + self.dy
        return mapped


def by_rule(before, wanted, kind, similarity):
    """The groups that ezdxf gives, with those of the rules in their place."""
    rules = RULES.get(kind, {})
    flipped = any(code == 230 and value < 0 for code, value in before)
    angular = kind == 'DIMENSION' and any(code == 70 and value & 7 in (2, 5, 6) for code, value in before)
    wanted, front = list(wanted), True
    for i, (code, value) in enumerate(before[:len(wanted)]):
        front = front and code != 75
        rule = rules.get(code)
        if rule is None or (kind == 'HATCH' and front) or (angular and code == 42):
            continue
        two = rule in (BASE, VECTOR, UNIT)
        mapped = similarity.rule(rule, value, before[i + 1][1] if two else 0.0, flipped and kind == 'HATCH')
        wanted[i] = code, mapped[0]
        if two:
            wanted[i + 1] = before[i + 1][0], mapped[1]
    return wanted


def differences(kind, wanted, got, size):
    if kind.endswith(('MTEXT', 'INSERT')):  # in pictures; written in another manner
        wanted, got = ([group for group in groups if group[0] in (10, 20, 30)] for groups in (wanted, got))
    if len(wanted) != len(got):
        return ['%s: %d groups instead of %d' % (kind, len(got), len(wanted))]
    wrong = []
    for (code, expected), (other, value) in zip(wanted, got):
        same = code == other
        if isinstance(expected, float) and isinstance(value, float):
            turned = 50 <= code <= 53 and abs(math.remainder(expected - value, 360)) <= TOLERANCE * 360
            same = same and (turned or abs(expected - value) <= TOLERANCE * size)
        else:
            same = same and expected == value
        if not same:
            wrong.append('%s: group %d is %r instead of %r' % (kind, code, value, expected))
    return wrong


def parts(entity):
    """The entity, and what its picture is made of."""
    yield entity
    if entity.dxftype() == 'DIMENSION':
        yield from entity.doc.blocks.get(entity.dxf.geometry)


def check(tool, version, similarity, folder):
    source, target = os.path.join(folder, 'source.dxf'), os.path.join(folder, 'target.dxf')
    make(version).saveas(source)
    numbers_given = [repr(x) for x in (similarity.a, similarity.b, similarity.dx, similarity.dy)]
    done = subprocess.run([tool, source, target] + numbers_given, capture_output=True, text=True)
    if done.returncode != 0:
        return ['refused: ' + done.stderr]
    before, wanted, got = (ezdxf.readfile(path) for path in (source, source, target))
    errors = got.audit().errors
    wrong = ['audit: ' + error.message for error in errors]
    size = max(1.0, abs(similarity.dx), abs(similarity.dy))
    seen = set()
    for entity in wanted.modelspace():
        kind = entity.dxftype()
        seen.add(kind)
        entity.transform(similarity.matrix)
        originals, moved = (list(parts(doc.entitydb[entity.dxf.handle])) for doc in (before, got))
        for original, expected, actual in zip(originals, parts(entity), moved):
            kind = original.dxftype()
            groups = by_rule(numbers(original), numbers(expected), kind, similarity)
            wrong += differences('%s %s' % (version, kind), groups, numbers(actual), size)
    return wrong + ['nothing of kind %s' % kind for kind in KINDS if kind not in seen]


def main(tool):
    wrong = []
    similarities = [Similarity(1, 0, 650000.25, 6860000.5), Similarity(0.6, 0.8, 100, -50),
                    Similarity(1.2, -1.6, 650000, 6860000), Similarity(0.9998, 0.0002, 12.5, 7)]
    with tempfile.TemporaryDirectory() as folder:
        for version in ('R2000', 'R2013'):
            for similarity in similarities:
                wrong += check(tool, version, similarity, folder)
    print('\n'.join(wrong) or 'every entity is where it belongs')
    return 1 if wrong else 0


if __name__ == '__main__':
    sys.exit(main(sys.argv[1]))
