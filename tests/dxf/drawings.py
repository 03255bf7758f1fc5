"""Drawings made with ezdxf for the checks: every version, every kind of entity that ezdxf can make, extended data,
extension dictionaries, reactors, groups, and things that no program knows."""
import io
import math

import ezdxf
from ezdxf.math import Vec3

VERSIONS = ['R2000', 'R2004', 'R2007', 'R2010', 'R2013', 'R2018']
SOLID_DATA = ['400 3 1 0', '14 Veltora tests 8 none 24 none', '1 9.9999999999999995e-007 1e-010', 'fin']


def _simple(space):
    space.add_line((0, 0), (650000.123456789, 6860000.987654321, 12.5), dxfattribs={'layer': 'Réseau', 'color': 3})
    space.add_point((1, 2, 3), dxfattribs={'layer': 'Points', 'true_color': 0x123456})
    space.add_circle((5, 5), 2.5, dxfattribs={'linetype': 'DASHED', 'ltscale': 2.0, 'lineweight': 35})
    space.add_arc((5, 5), 2.5, 30, 120, dxfattribs={'thickness': 1.5, 'extrusion': (0, 0, -1)})
    space.add_ellipse((1, 1), (3, 0), 0.4, 0.1, 3.0)
    space.add_text('Borne n°12 – été ^J', dxfattribs={'height': 2.5, 'rotation': 33.3, 'style': 'Etroit'})
    space.add_text('centré', dxfattribs={'height': 1}).set_placement((4, 4), align=ezdxf.enums.TextEntityAlignment.MIDDLE_CENTER)
    space.add_mtext('Ligne 1\\PLigne {\\C1;rouge}\\P' + 'très long ' * 60, dxfattribs={'char_height': 0.7, 'width': 40})
    space.add_lwpolyline([(0, 0, .1, .2, .5), (10, 0, 0, 0, -.3), (10, 10, 0, 0, 0)], close=True, dxfattribs={'elevation': 7})
    space.add_polyline2d([(0, 0, 0, 0, 1), (3, 0, .5, .5, 0)], format='xyseb', close=True)
    space.add_polyline3d([(0, 0, 0), (1, 1, 1), (2, 0, 5)])
    space.add_solid([(0, 0), (1, 0), (0, 1), (1, 1)])
    space.add_trace([(0, 0), (1, 0), (0, 1), (1, 1)])
    space.add_3dface([(0, 0, 0), (1, 0, 0), (1, 1, 1), (0, 1, 0)])
    space.add_ray((0, 0), (1, 0))
    space.add_xline((0, 0), (0.6, 0.8))
    space.add_shape('ZIG', (1, 1), 2.0)


def _meshes(space):
    mesh = space.add_polymesh((3, 3))
    for m in range(3):
        for n in range(3):
            mesh.set_mesh_vertex((m, n), (m, n, m * n))
    face = space.add_polyface()
    face.append_face([(0, 0, 0), (1, 0, 0), (1, 1, 0)])
    with space.add_mesh().edit_data() as data:
        data.vertices = [(0, 0, 0), (1, 0, 0), (1, 1, 0), (0, 1, 1)]
        data.faces = [[0, 1, 2], [0, 2, 3]]


def _curves(space):
    space.add_spline([(0, 0, 0), (10, 20, 0), (30, 10, 5), (40, 10, 0)])
    spline = space.add_open_spline([(0, 0), (1, 2), (3, 1), (4, 4), (5, 0)])
    spline.weights = [1, 2, 1, 2, 1]
    space.add_helix(radius=2, pitch=1, turns=3)
    hatch = space.add_hatch(color=2)
    hatch.paths.add_polyline_path([(0, 0), (10, 0, .5), (10, 10)], is_closed=True)
    edges = hatch.paths.add_edge_path()
    edges.add_arc((5, 5), 1, 0, 360)
    edges.add_line((1, 1), (2, 2))
    pattern = space.add_hatch()
    pattern.set_pattern_fill('ANSI31', scale=0.5)
    pattern.paths.add_polyline_path([(0, 0), (4, 0), (4, 4), (0, 4)])


def _dimensions(doc, space):
    space.add_linear_dim(base=(3, 2), p1=(0, 0), p2=(6, 0)).render()
    space.add_radius_dim(center=(0, 0), radius=3, angle=45).render()
    space.add_diameter_dim(center=(0, 0), radius=3, angle=135).render()
    space.add_angular_dim_3p(base=(5, 5), center=(0, 0), p1=(4, 0), p2=(0, 4)).render()
    space.add_leader([(0, 0), (1, 1), (3, 1)])
    space.new_entity('TOLERANCE', {'content': '{\\Fgdt;j}%%v{\\Fgdt;n}0.1', 'insert': (1, 1)})
    space.add_mline([(0, 0), (10, 0), (10, 10)], dxfattribs={'scale_factor': 2})
    if doc.dxfversion > 'AC1015':
        leader = space.add_multileader_mtext('Standard')
        leader.set_content('Bâtiment')
        leader.add_leader_line(ezdxf.render.ConnectionSide.left, [(-5, 0)])
        leader.build(insert=ezdxf.math.Vec2(5, 5))


def _references(doc, space):
    block = doc.blocks.new('Borne', base_point=(1, 1, 0))
    block.add_circle((0, 0), .5)
    block.add_attdef('NUMPT', (1, 1), text='0', dxfattribs={'height': 1, 'prompt': 'Numéro ?'})
    block.add_attdef('CODE', (1, 2), dxfattribs={'flags': 1})
    nested = doc.blocks.new('Groupe')
    nested.add_blockref('Borne', (3, 3))
    for i in range(3):
        ref = space.add_blockref('Borne', (i, 2 * i, i / 3), dxfattribs={'rotation': 12.5 * i, 'xscale': 2})
        ref.add_attrib('NUMPT', str(i), (i, i)).dxf.invisible = i % 2
        ref.add_attrib('CODE', 'é', (i, i + 1))
        ref.set_xdata('VELTORA_TEST', [(1070, i), (1000, 'donnée'), (1002, '{'), (1010, (1.5, 2.5, 3.5)), (1040, 1e-7),
                                       (1002, '}'), (1003, '0'), (1005, ref.dxf.handle), (1004, b'\x01\xff')])
    space.add_blockref('Groupe', (9, 9), dxfattribs={'row_count': 2, 'column_count': 3, 'row_spacing': 4,
                                                     'column_spacing': 5})
    image = doc.add_image_def('plan.png', size_in_pixel=(640, 360))
    space.add_image(image, insert=(2, 1), size_in_units=(6.4, 3.6))
    space.add_wipeout([(0, 0), (10, 10)])
    pdf = doc.add_underlay_def('plan.pdf', 'pdf', name='1')
    space.add_underlay(pdf, insert=(2, 2, 0), scale=(.1, .1, .1))


def _structure(doc, space):
    line = space.add_line((0, 0), (1, 0))
    other = space.add_line((1, 0), (1, 1))
    line.set_reactors([other.dxf.handle])
    dictionary = line.new_extension_dict()
    record = dictionary.dictionary.add_xrecord('DONNEES')
    record.reset([(1, 'texte'), (40, 3.25), (90, -7), (310, b'\x00\x10'), (330, other.dxf.handle), (10, (1, 2, 3)),
                  (290, 1), (160, 12345678901)])
    group = doc.groups.new('LOT1')
    group.extend([line, other])
    custom = doc.rootdict.add_new_dict('VELTORA_CONFIG')
    custom.add_xrecord('Paramètres').reset([(1, 'valeur'), (102, '{veltora'), (70, 5), (102, '}')])
    doc.layers.get('Réseau').set_xdata('VELTORA_TEST', [(1000, 'calque')])
    doc.layers.get('0').new_extension_dict().dictionary.add_xrecord('ZERO').reset([(90, 0)])
    doc.header.custom_vars.append('Commune', 'Saint-Étienne')
    doc.ucs.new('Chantier', {'origin': (1000, 2000, 0)})
    doc.views.new('Vue1')
    paper = doc.layout('Layout1')
    paper.add_viewport(center=(100, 100), size=(200, 150), view_center_point=(0, 0), view_height=100)
    paper.add_text('cartouche')
    second = doc.layouts.new('Planche 2')
    second.add_line((0, 0), (100, 100))
    second.add_viewport(center=(10, 10), size=(20, 15), view_center_point=(0, 0), view_height=10)


def _solids(doc, space):
    if doc.dxfversion >= 'AC1027':
        return
    for add in (space.add_body, space.add_region, space.add_3dsolid):
        add().sat = SOLID_DATA


# Things of no known kind, with references to and from known ones.
UNKNOWN_ENTITY = [(0, 'VELTORA_INCONNUE'), (5, '{h1}'), (102, '{{AUTRE_PROGRAMME'), (40, '1.25'), (102, '}}'), (330, '{msp}'),
                  (100, 'AcDbEntity'), (8, 'Points'), (62, '     5'), (100, 'VeltoraInconnue'), (90, '3'),
                  (1, '  texte avec blancs  '), (340, '{h2}'), (10, '1.0'), (20, '2.0'), (30, '3.0'), (101, 'Embedded Object'),
                  (10, '4.0'), (20, '5.0'), (1001, 'VELTORA_TEST'), (1070, '  42')]
UNKNOWN_OBJECT = [(0, 'VELTORA_OBJET'), (5, '{h2}'), (330, '{root}'), (100, 'VeltoraObjet'), (300, ''), (330, '{h1}'),
                  (310, 'DEADBEEF'), (390, '0'), (70, '  1')]
UNKNOWN_SECTION = [(0, 'SECTION'), (2, 'VELTORASECTION'), (70, '1'), (0, 'FICHE'), (5, 'FFFF'), (40, '1.50'), (999, 'gardé'),
                   (0, 'FICHE'), (1, ' x '), (0, 'ENDSEC')]


def make(version):
    """Text of a drawing of this version that holds everything."""
    doc = ezdxf.new(version, setup=True)
    doc.layers.add('Réseau', color=1, linetype='DASHED')
    doc.layers.add('Points', color=2).off()
    doc.layers.add('VIEWPORTS')  # viewports name it; a reader makes it when it is missing
    doc.styles.add('Etroit', font='arial.ttf').dxf.width = 0.8
    doc.styles.add_shx('formes.shx')
    doc.appids.add('VELTORA_TEST')
    space = doc.modelspace()
    _simple(space)
    _meshes(space)
    _curves(space)
    _references(doc, space)
    _dimensions(doc, space)
    _structure(doc, space)
    _solids(doc, space)
    stream = io.StringIO()
    doc.write(stream)
    return add_unknown(stream.getvalue(), doc)


def add_unknown(text, doc):
    """Enters the things of no known kind into the text, with two handles of their own."""
    seed = int(text.split('$HANDSEED\n  5\n')[1].split('\n')[0], 16)
    names = {'h1': '%X' % seed, 'h2': '%X' % (seed + 1), 'msp': doc.modelspace().layout_key,
             'root': doc.rootdict.dxf.handle}

    def lines(tags):
        return ''.join('%3d\n%s\n' % (code, value.format(**names) if '{' in value or '}' in value else value)
                       for code, value in tags)

    text = text.replace('$HANDSEED\n  5\n%X\n' % seed, '$HANDSEED\n  5\n%X\n' % (seed + 2))
    at = text.index('  2\nENTITIES\n') + len('  2\nENTITIES\n')
    text = text[:at] + lines(UNKNOWN_ENTITY) + text[at:]
    at = text.index('  0\nENDSEC', text.index('  2\nOBJECTS\n'))
    text = text[:at] + lines(UNKNOWN_OBJECT) + text[at:]
    at = text.rindex('  0\nEOF')
    text = text[:at] + lines(UNKNOWN_SECTION) + text[at:]
    return '999\nfait pour les essais\n' + text


def make_old():
    """A drawing of the version before subclass markers."""
    doc = ezdxf.new('R12', setup=True)
    space = doc.modelspace()
    space.add_line((0, 0), (1, 1))
    space.add_text('été', dxfattribs={'height': 2})
    space.add_polyline3d([(0, 0, 0), (1, 1, 1)])
    space.add_polyline2d([(0, 0), (1, 1)])
    space.add_polyface().append_face([(0, 0, 0), (1, 0, 0), (1, 1, 0)])
    space.add_linear_dim(base=(3, 2), p1=(0, 0), p2=(6, 0), angle=10).render()
    block = doc.blocks.new('B')
    block.add_circle((0, 0), 1)
    block.add_attdef('T', (0, 0))
    space.add_blockref('B', (1, 1)).add_attrib('T', 'x', (1, 1))
    space.add_solid([(0, 0), (1, 0), (0, 1)])
    space.add_3dface([(0, 0), (1, 0), (0, 1)])
    return doc


def encoding(version):
    return 'cp1252' if version in ('R2000', 'R2004') else 'utf8'


def save(version, path):
    with open(path, 'w', encoding=encoding(version), errors='dxfreplace', newline='\n') as out:
        out.write(make(version))
