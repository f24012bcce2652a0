"""Writes the COLLADA scenes that bench/compare loads: a mesh of any size, scenes of many nodes, animations."""
import math

HEAD = """<?xml version="1.0" encoding="utf-8"?>
<COLLADA xmlns="http://www.collada.org/2005/11/COLLADASchema" version="1.4.1">
<asset><created>2020-01-01T00:00:00</created><modified>2020-01-01T00:00:00</modified><up_axis>Y_UP</up_axis></asset>
"""
TAIL = '<scene><instance_visual_scene url="#scene"/></scene>\n</COLLADA>\n'


def write_source(file, name, params, count, values, param_type="float"):
    """One <source>; `values` yields its numbers, already as text, a group for each value."""
    width = 16 if param_type == "float4x4" else len(params)
    file.write('<source id="%s"><float_array id="%s-array" count="%d">' % (name, name, count * width))
    for value in values:
        file.write(value + " ")
    file.write('</float_array><technique_common><accessor source="#%s-array" count="%d" stride="%d">'
               % (name, count, width))
    for param in params:
        file.write('<param name="%s" type="%s"/>' % (param, param_type))
    file.write("</accessor></technique_common></source>\n")


def write_geometry(file, name, width, height):
    """A hilly grid of width * height quads, two triangles each, whose corners share positions, normals and coordinates."""
    columns, rows = width + 1, height + 1
    grid = [(column, row) for row in range(rows) for column in range(columns)]

    def position(column, row):
        return "%.6f %.6f %.6f" % (column * 0.1, math.sin(column * 0.07) * math.cos(row * 0.05), row * 0.1)

    def normal(column, row):
        x = -0.7 * math.cos(column * 0.07) * math.cos(row * 0.05)
        z = 0.5 * math.sin(column * 0.07) * math.sin(row * 0.05)
        length = math.sqrt(x * x + 1.0 + z * z)
        return "%.6f %.6f %.6f" % (x / length, 1.0 / length, z / length)

    file.write('<geometry id="%s"><mesh>\n' % name)
    write_source(file, name + "-pos", "XYZ", len(grid), (position(*point) for point in grid))
    write_source(file, name + "-nrm", "XYZ", len(grid), (normal(*point) for point in grid))
    write_source(file, name + "-tex", "ST", len(grid), ("%.6f %.6f" % (c / width, r / height) for c, r in grid))
    file.write('<vertices id="%s-vtx"><input semantic="POSITION" source="#%s-pos"/></vertices>\n' % (name, name))
    file.write('<triangles count="%d" material="mat">' % (2 * width * height))
    for offset, (semantic, source) in enumerate((("VERTEX", "vtx"), ("NORMAL", "nrm"), ("TEXCOORD", "tex"))):
        file.write('<input semantic="%s" source="#%s-%s" offset="%d"/>' % (semantic, name, source, offset))
    file.write("<p>")
    for row in range(height):
        for column in range(width):
            first = row * columns + column
            for corner in (first, first + columns, first + 1, first + 1, first + columns, first + columns + 1):
                file.write("%d %d %d " % (corner, corner, corner))
    file.write("</p></triangles>\n</mesh></geometry>\n")


def open_node(file, index):
    """The beginning of a node: a matrix or a translation and a rotation, and a mesh on every tenth."""
    file.write('<node id="node%d" name="Node %d">' % (index, index))
    x, y, z = (index * 37 % 1000) * 0.01, (index * 91 % 1000) * 0.01, (index * 13 % 1000) * 0.01
    if index % 2:
        file.write("<matrix>1 0 0 %.4f 0 0.8 -0.6 %.4f 0 0.6 0.8 %.4f 0 0 0 1</matrix>" % (x, y, z))
    else:
        file.write('<translate sid="t">%.4f %.4f %.4f</translate><rotate sid="r">0 1 0 %d</rotate>'
                   % (x, y, z, index % 360))
    if index % 10 == 0:
        file.write('<instance_geometry url="#block"/>')


def write_tree(file, count, fan):
    """Nodes numbered from 0, of which node n has the children fan * n + 1 and on."""
    waiting = [(0, False)]
    while waiting:
        index, done = waiting.pop()
        if done:
            file.write("</node>\n")
            continue
        open_node(file, index)
        waiting.append((index, True))
        children = range(fan * index + 1, min(fan * index + fan + 1, count))
        waiting.extend((child, False) for child in reversed(children))


def mesh(path, triangles):
    """A scene of one node with one mesh of about so many triangles."""
    width = max(1, int(math.sqrt(triangles / 2)))
    height = max(1, triangles // 2 // width)
    with open(path, "w") as file:
        file.write(HEAD + "<library_geometries>\n")
        write_geometry(file, "grid", width, height)
        file.write('</library_geometries>\n<library_visual_scenes><visual_scene id="scene">'
                   '<node id="ground"><instance_geometry url="#grid"/></node>'
                   "</visual_scene></library_visual_scenes>\n" + TAIL)


def nodes(path, count, nested):
    """A scene of `count` nodes, as a tree or all beside each other."""
    with open(path, "w") as file:
        file.write(HEAD + "<library_geometries>\n")
        write_geometry(file, "block", 2, 2)
        file.write('</library_geometries>\n<library_visual_scenes><visual_scene id="scene">\n')
        if nested:
            write_tree(file, count, 4)
        else:
            for index in range(count):
                open_node(file, index)
                file.write("</node>\n")
        file.write("</visual_scene></library_visual_scenes>\n" + TAIL)


def write_channel(file, index, keys):
    """The <animation> of one channel: a baked matrix, the three floats of a translation, or a Bezier angle, in turn."""
    name = "anim%d" % index
    target, params, param_type = ((("transform", ["TRANSFORM"], "float4x4"), ("t", "XYZ", "float"),
                                   ("r.ANGLE", ["ANGLE"], "float"))[index % 3])

    def value(key):
        phase = 0.01 * key + index
        if index % 3 == 0:
            sine, cosine = math.sin(phase), math.cos(phase)
            return "%.6f %.6f 0 %.6f %.6f %.6f 0 1 0 0 1 2 0 0 0 1" % (cosine, -sine, sine, sine, cosine)
        if index % 3 == 1:
            return "%.6f %.6f 3" % (math.sin(phase), math.cos(phase))
        return "%.6f" % (90 * math.sin(phase))

    file.write('<animation id="%s">' % name)
    write_source(file, name + "-in", ["TIME"], keys, ("%.6f" % (key / 30) for key in range(keys)))
    write_source(file, name + "-out", params, keys, map(value, range(keys)), param_type)
    inputs = [("INPUT", "in"), ("OUTPUT", "out"), ("INTERPOLATION", "type")]
    if index % 3 == 2:
        for tangent, side in ("tin", -1), ("tout", 1):
            write_source(file, "%s-%s" % (name, tangent), "XY", keys,
                         ("%.6f %s" % ((key + side / 3) / 30, value(key + side / 3)) for key in range(keys)))
        inputs += [("IN_TANGENT", "tin"), ("OUT_TANGENT", "tout")]
    file.write('<source id="%s-type"><Name_array id="%s-type-array" count="%d">' % (name, name, keys))
    file.write(("BEZIER " if index % 3 == 2 else "LINEAR ") * keys)
    file.write('</Name_array><technique_common><accessor source="#%s-type-array" count="%d" stride="1">'
               '<param name="INTERPOLATION" type="name"/></accessor></technique_common></source>\n' % (name, keys))
    file.write('<sampler id="%s-sampler">' % name)
    for semantic, source in inputs:
        file.write('<input semantic="%s" source="#%s-%s"/>' % (semantic, name, source))
    file.write('</sampler><channel source="#%s-sampler" target="node%d/%s"/></animation>\n' % (name, index, target))


def animation(path, channels, keys):
    """A scene of as many nodes as channels, each animated by one of `keys` keys."""
    with open(path, "w") as file:
        file.write(HEAD + "<library_animations>\n")
        for index in range(channels):
            write_channel(file, index, keys)
        file.write('</library_animations>\n<library_visual_scenes><visual_scene id="scene">\n')
        for index in range(channels):
            transforms = '<matrix sid="transform">1 0 0 0 0 1 0 0 0 0 1 0 0 0 0 1</matrix>' if index % 3 == 0 else \
                '<translate sid="t">0 0 0</translate><rotate sid="r">0 1 0 0</rotate>'
            file.write('<node id="node%d" name="Node %d">%s</node>\n' % (index, index, transforms))
        file.write("</visual_scene></library_visual_scenes>\n" + TAIL)
