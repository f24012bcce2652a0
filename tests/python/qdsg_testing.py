"""What the tests share: data, temporary folders, the log, live objects, walks, and NEST files made byte by byte."""
import ctypes
import os
import shutil
import struct
import sys
import tempfile
import unittest

import qdsg

DATA = os.path.join(os.path.dirname(os.path.dirname(os.path.abspath(__file__))), "data")
TWO_BOXES = os.path.join(DATA, "two_boxes.dae")

_library = ctypes.CDLL(qdsg.__file__)
_library.qdsg_count_live_objects.restype = ctypes.c_longlong


# A test that looks at the log turns it on for itself.
qdsg.set_log_level(0)


def count_live_objects():
    """How many blocks of memory the scenes of this process hold."""
    return _library.qdsg_count_live_objects()


def walk(root):
    """The nodes of a tree in document order, without recursion."""
    waiting = [root]
    while waiting:
        node = waiting.pop()
        yield node
        waiting.extend(reversed(node.children))


class CapturedLog(object):
    """Collects what is logged meanwhile, up to a level, from the process' standard output; `lines` has it then."""

    def __init__(self, level=7):
        self._level = level

    def __enter__(self):
        self._flush()
        self._level = qdsg.set_log_level(self._level)
        self._file = tempfile.TemporaryFile()
        self._saved = os.dup(1)
        os.dup2(self._file.fileno(), 1)
        return self

    def __exit__(self, *exception):
        self._flush()
        qdsg.set_log_level(self._level)
        os.dup2(self._saved, 1)
        os.close(self._saved)
        self._file.seek(0)
        self.lines = self._file.read().decode("utf-8", "replace").splitlines()
        self._file.close()

    @staticmethod
    def _flush():
        sys.stdout.flush()
        ctypes.CDLL(None).fflush(None)

    def messages(self, function=None):
        """Level, function and message of each line, or level and message of the lines of one function."""
        found = []
        for line in self.lines:
            # time level line function message
            _, level, _, rest = line.split(None, 3)
            name, _, message = rest.partition(" ")
            entry = (level.partition("(")[0], name, message.strip())
            if function is None:
                found.append(entry)
            elif name == function:
                found.append((entry[0], entry[2]))
        return found


class TestCase(unittest.TestCase):
    def make_folder(self):
        folder = tempfile.mkdtemp()
        self.addCleanup(shutil.rmtree, folder)
        return folder

    def assert_raises_text(self, kind, text, function, *arguments):
        """The exception's class is exactly `kind` and its text `text`."""
        try:
            function(*arguments)
        except Exception as error:  # pylint: disable=broad-except
            self.assertIs(type(error), kind, error)
            self.assertEqual(str(error), text)
        else:
            self.fail("%s was not raised" % kind.__name__)


class EmptyWrapper(object):
    """Takes the object out of a wrapper for a while: what is left is a wrapper without an object."""

    def __init__(self, wrapper):
        # The pointer follows the header that every Python object has.
        self._pointer = ctypes.c_void_p.from_address(id(wrapper) + object.__basicsize__)

    def __enter__(self):
        self._kept = self._pointer.value
        self._pointer.value = None

    def __exit__(self, *exception):
        self._pointer.value = self._kept


POSITION, NORMAL, TEXCOORD, COLOR = range(4)


class NestFile(object):
    """A NEST file put together record by record, as docs/nest-format.md has it; add_... return object numbers."""

    # type: GUID and version
    TYPES = {
        "CSGNode": (0x2B14FFFA087B3E28, 1),
        "CSGData_RenderState": (0x10CC64D588311295, 2),
        "CSGData_Geometry": (0xCAACC261C2BE3E03, 1),
        "CSGGeomList": (0x92BFEE0287497AEE, 1),
        "CSGGeomBinding": (0x6F182FE015A8FFF4, 1),
        "CSGVertexBuffer": (0x3853C0EB565ED313, 1),
        "CSGIndexBuffer": (0x42310C45A40FA9AB, 1),
        "CSGGeom_Triangles": (0x5530EEEF77F97C19, 1),
        "CSGGeom_Quads": (0x6508053ED16BCC36, 1),
        "CSGGeom_Lines": (0xCAFF0758BDE911E8, 1),
        "CSGGeom_PrimList": (0xD0E15568950A4264, 1),
    }

    def __init__(self):
        self._records = []

    def _add(self, kind, body):
        self._records.append(struct.pack("<Q", self.TYPES[kind][0]) + body)
        return len(self._records) - 1

    def add_node(self, name=b"node", data=(), children=()):
        text = struct.pack("<I", len(name)) + name
        links = struct.pack("<i%di" % len(data), len(data), *data)
        links += struct.pack("<i%di" % len(children), len(children), *children)
        return self._add("CSGNode", text + text + links)

    def add_render_state(self, flags):
        return self._add("CSGData_RenderState", struct.pack("<2I", flags, 0))

    def add_vertices(self, members, vertices):
        """Members are (kind, set, floats); each vertex is the list of all its floats."""
        body = struct.pack("<i", len(members)) + b"".join(struct.pack("<3i", *member) for member in members)
        body += struct.pack("<i", len(vertices))
        return self._add("CSGVertexBuffer", body + b"".join(struct.pack("<%df" % len(v), *v) for v in vertices))

    def add_indexed(self, kind, indices):
        buffer = self._add("CSGIndexBuffer", struct.pack("<2i%dH" % len(indices), 2, len(indices), *indices))
        return self._add(kind, struct.pack("<i", buffer))

    def add_primitives(self, primitives):
        """Each is the number of its kind and its indices."""
        body = struct.pack("<i", len(primitives))
        for kind, indices in primitives:
            body += struct.pack("<2i%di" % len(indices), kind, len(indices), *indices)
        return self._add("CSGGeom_PrimList", body)

    def add_geometry(self, *bindings):
        """The attachment of a node; bindings are pairs of geometry and vertices."""
        numbers = [self._add("CSGGeomBinding", struct.pack("<2i", *binding)) for binding in bindings]
        geoms = self._add("CSGGeomList", struct.pack("<i%di" % len(numbers), len(numbers), *numbers))
        return self._add("CSGData_Geometry", struct.pack("<i", geoms))

    def load(self, folder, top):
        """Saves the file with one top-level object, loads it and returns the root node."""
        path = os.path.join(folder, "made.nest")
        with open(path, "wb") as made:
            made.write(b"NEST" + struct.pack("<2i", 2, len(self.TYPES)))
            for guid, version in self.TYPES.values():
                made.write(struct.pack("<Qi", guid, version))
            made.write(struct.pack("<3i", 1, top, len(self._records)) + b"".join(self._records))
        return qdsg.load_nest(path)
