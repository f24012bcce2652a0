"""Writes the FBX scenes that bench/compare loads, binary ones of version 7400: the same kinds as make_scenes.py."""
import array
import math
import struct
import zlib

TICKS = 46186158000  # of FBX time, in a second
LINEAR, CUBIC, BROKEN = 0x4, 0x8, 0x800 | 0x400  # flags of keys; the last: each slope for itself, given by the file


class Wide(int):
    """A whole number that the file has with 64 bits; the others have 32."""

    def __add__(self, number):
        return Wide(int(self) + number)


ROOT_ID, GEOMETRY_ID, FIRST_NODE_ID, FIRST_ANIMATION_ID = Wide(0), Wide(1), Wide(1000), Wide(10000000)


class Name(str):
    """The name of an object of a class, which the file has behind it."""

    def __new__(cls, name, of_class):
        return super().__new__(cls, name + "\0\1" + of_class)


class Writer:
    """Records one after the other; each says where it ends, so that it is filled in once its content is written."""

    def __init__(self, path):
        self.file = open(path, "wb")
        self.file.write(b"Kaydara FBX Binary  \0\x1a\0" + struct.pack("<I", 7400))

    def __enter__(self):
        return self

    def __exit__(self, *_):
        self.file.write(bytes(13))  # no footer: readers stop here
        self.file.close()

    def record(self, name, *values, content=None):
        """One record with values; `content` writes the records inside of it."""
        packed = b"".join(map(pack, values))
        begin = self.file.tell()
        head = 13 + len(name) + len(packed)
        self.file.write(struct.pack("<IIIB", begin + head, len(values), len(packed), len(name)))
        self.file.write(name.encode() + packed)
        if content:
            content()
            self.file.write(bytes(13))
            end = self.file.tell()
            self.file.seek(begin)
            self.file.write(struct.pack("<I", end))
            self.file.seek(end)

    def properties(self, *lines):
        """A Properties70 record of lines: name, type and values."""
        def write():
            for name, kind, *values in lines:
                self.record("P", name, kind, "", "A", *values)
        self.record("Properties70", content=write)

    def connect(self, source, destination, *target):
        self.record("C", "OP" if target else "OO", source, destination, *target)


def pack(value):
    """A value with its type in front of it; arrays are deflated, as exporters have them."""
    if isinstance(value, array.array):
        data = zlib.compress(value.tobytes(), 1)
        kind = {"q": "l"}.get(value.typecode, value.typecode)
        return struct.pack("<cIII", kind.encode(), len(value), 1, len(data)) + data
    if isinstance(value, str):
        return struct.pack("<cI", b"S", len(value)) + value.encode()
    if isinstance(value, float):
        return struct.pack("<cd", b"D", value)
    return struct.pack("<cq", b"L", value) if isinstance(value, Wide) else struct.pack("<ci", b"I", value)


def write_scene(path, write_objects, write_connections):
    with Writer(path) as file:
        file.record("FBXHeaderExtension", content=lambda: file.record("FBXVersion", 7400))
        file.record("GlobalSettings", content=lambda: file.properties(("UpAxis", "int", 1), ("UpAxisSign", "int", 1)))
        file.record("Objects", content=lambda: write_objects(file))
        file.record("Connections", content=lambda: write_connections(file))


def write_geometry(file, name, width, height):
    """A hilly grid of width * height quads, two triangles each; every corner has a normal and an index of coordinates."""
    columns, rows = width + 1, height + 1
    positions, normals, coordinates = array.array("d"), array.array("d"), array.array("d")
    for row in range(rows):
        for column in range(columns):
            a, b = column * 0.07, row * 0.05
            positions.extend((column * 0.1, math.sin(a) * math.cos(b), row * 0.1))
            x, z = -0.7 * math.cos(a) * math.cos(b), 0.5 * math.sin(a) * math.sin(b)
            length = math.sqrt(x * x + 1.0 + z * z)
            normals.extend((x / length, 1.0 / length, z / length))
            coordinates.extend((column / width, row / height))
    corners = array.array("i")
    for row in range(height):
        for first in range(row * columns, row * columns + width):
            corners.extend((first, first + columns, first + 1, first + 1, first + columns, first + columns + 1))
    ends = array.array("i", corners)
    ends[2::3] = array.array("i", (~corner for corner in corners[2::3]))  # the last corner of a polygon
    corner_normals = array.array("d")
    for corner in corners:
        corner_normals.extend(normals[3 * corner:3 * corner + 3])

    def layer_element(values, *arrays):
        file.record("Name", "")
        file.record("MappingInformationType", "ByPolygonVertex")
        file.record("ReferenceInformationType", "IndexToDirect" if len(arrays) > 1 else "Direct")
        for part, numbers in zip((values, values + "Index"), arrays):
            file.record(part, numbers)

    def entry(kind):
        file.record("Type", kind)
        file.record("TypedIndex", 0)

    def layers():
        for kind in "LayerElementNormal", "LayerElementUV":
            file.record("LayerElement", content=lambda: entry(kind))

    def content():
        file.record("Vertices", positions)
        file.record("PolygonVertexIndex", ends)
        file.record("LayerElementNormal", 0, content=lambda: layer_element("Normals", corner_normals))
        file.record("LayerElementUV", 0, content=lambda: layer_element("UV", coordinates, corners))
        file.record("Layer", 0, content=layers)
    file.record("Geometry", GEOMETRY_ID, Name(name, "Geometry"), "Mesh", content=content)


def write_node(file, index, kind):
    x, y, z = (index * 37 % 1000) * 0.01, (index * 91 % 1000) * 0.01, (index * 13 % 1000) * 0.01
    file.record("Model", FIRST_NODE_ID + index, Name("Node %d" % index, "Model"), kind,
                content=lambda: file.properties(("Lcl Translation", "Lcl Translation", x, y, z),
                                                ("Lcl Rotation", "Lcl Rotation", 0.0, float(index % 360), 0.0)))


def mesh(path, triangles):
    """A scene of one node with one mesh of about so many triangles."""
    width = max(1, int(math.sqrt(triangles / 2)))
    height = max(1, triangles // 2 // width)

    def objects(file):
        write_geometry(file, "grid", width, height)
        write_node(file, 0, "Mesh")

    def connections(file):
        file.connect(FIRST_NODE_ID, ROOT_ID)
        file.connect(GEOMETRY_ID, FIRST_NODE_ID)
    write_scene(path, objects, connections)


def nodes(path, count, nested):
    """A scene of `count` nodes, as a tree or all beside each other, and the same small mesh on every tenth."""
    def objects(file):
        write_geometry(file, "block", 2, 2)
        for index in range(count):
            write_node(file, index, "Null" if index % 10 else "Mesh")

    def connections(file):
        for index in range(count):
            parent = FIRST_NODE_ID + (index - 1) // 4 if nested and index > 0 else ROOT_ID
            file.connect(FIRST_NODE_ID + index, parent)
            if index % 10 == 0:
                file.connect(GEOMETRY_ID, FIRST_NODE_ID + index)
    write_scene(path, objects, connections)


def write_curve(file, curve, keys):
    """Straight pieces whose keys all are alike, or bends with slopes of their own at each key, in turns of three."""
    times = array.array("q", (key * (TICKS // 30) for key in range(keys)))
    values = array.array("f", (90.0 * math.sin(0.01 * key + curve) for key in range(keys)))
    flags, numbers, counts = array.array("i", [LINEAR]), array.array("f", [0.0] * 4), array.array("i", [keys])
    if curve // 3 % 2:
        slopes = [27.0 * math.cos(0.01 * key + curve) for key in range(keys + 1)]
        flags, counts = array.array("i", [CUBIC | BROKEN]) * keys, array.array("i", [1]) * keys
        numbers = array.array("f", (n for key in range(keys) for n in (slopes[key], slopes[key + 1], 0.0, 0.0)))

    def content():
        file.record("KeyTime", times)
        file.record("KeyValueFloat", values)
        file.record("KeyAttrFlags", flags)
        file.record("KeyAttrDataFloat", numbers)
        file.record("KeyAttrRefCount", counts)
    file.record("AnimationCurve", FIRST_ANIMATION_ID + curve, Name("", "AnimCurve"), "", content=content)


def animation(path, curves, keys):
    """A scene of nodes that move and turn in turn, each by up to three of the curves, of `keys` keys."""
    stack = FIRST_ANIMATION_ID + curves
    layer, first_curve_node = stack + 1, stack + 2

    def objects(file):
        for index in range((curves + 2) // 3):
            write_node(file, index, "Null")
            file.record("AnimationCurveNode", first_curve_node + index, Name("TR"[index % 2], "AnimCurveNode"), "",
                        content=lambda: file.properties(*(("d|" + axis, "Number", 0.0) for axis in "XYZ")))
        file.record("AnimationStack", stack, Name("Take 001", "AnimStack"), "", content=lambda: file.properties(
            ("LocalStop", "KTime", Wide(keys * (TICKS // 30)))))
        file.record("AnimationLayer", layer, Name("Base", "AnimLayer"), "", content=lambda: None)
        for curve in range(curves):
            write_curve(file, curve, keys)

    def connections(file):
        file.connect(layer, stack)
        for index in range((curves + 2) // 3):
            file.connect(FIRST_NODE_ID + index, ROOT_ID)
            file.connect(first_curve_node + index, layer)
            file.connect(first_curve_node + index, FIRST_NODE_ID + index,
                         ("Lcl Translation", "Lcl Rotation")[index % 2])
        for curve in range(curves):
            file.connect(FIRST_ANIMATION_ID + curve, first_curve_node + curve // 3, "d|" + "XYZ"[curve % 3])
    write_scene(path, objects, connections)
