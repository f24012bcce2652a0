"""The triangles of the samples, compared with those that another reader finds: pycollada, where it is installed."""
import unittest

import qdsg
from qdsg_testing import TestCase, walk
from test_samples import SAMPLES, read, sample_files

try:
    import collada
    import numpy
except ImportError:
    collada = None

# Relative to the size of the scene; the other reader multiplies single floats too.
TOLERANCE = 1e-4
# What only one of the two reads; and it takes the axes of a lookat for its columns, where they are rows.
NOT_SHARED = (b"<polygons", b"<tristrips", b"<trifans", b"<instance_controller", b"<lookat")
# Kinds of primitives, in our order.
KINDS = (collada.polylist.BoundPolylist, collada.triangleset.BoundTriangleSet) if collada else ()


def our_triangles(root):
    """The corners of all triangles in world space, an array of shape (triangles, 3, 3)."""
    found = [numpy.zeros((0, 3, 3))]
    for node in walk(root):
        matrix = numpy.array(node.world_transform.matrix)
        for binding in node.geom_bindings:
            if isinstance(binding.geometry, qdsg.GeomTriangles):
                vertices = numpy.array(binding.vertices).dot(matrix[:3, :3]) + matrix[3, :3]
                found.append(vertices[numpy.array(list(binding.geometry))])
    return numpy.concatenate(found)


def their_triangles(path):
    """The same from the other reader; None for a scene with anything that one of the two does not read."""
    if any(element in read(path) for element in NOT_SHARED):
        return None
    document = collada.Collada(path, ignore=[collada.common.DaeError])
    if document.errors or document.scene is None:
        return None
    found = [numpy.zeros((0, 3, 3))]
    for geometry in document.scene.objects("geometry"):
        # As we have them: in the order of the materials that the instance binds, then in that of the kinds.
        symbols = list(geometry.materialnodebysymbol)
        primitives = [(symbols.index(primitive.original.material) if primitive.original.material in symbols
                       else len(symbols), KINDS.index(type(primitive)), primitive)
                      for primitive in geometry.primitives() if isinstance(primitive, KINDS)]
        for _, kind, primitive in sorted(primitives, key=lambda entry: entry[:2]):
            triangles = primitive if kind else primitive.triangleset()
            found.append(triangles.vertex[triangles.vertex_index])
    return numpy.concatenate(found)


@unittest.skipUnless(collada and list(sample_files("dae")), "pycollada, numpy or the samples are missing")
class TrianglesOfAnotherReaderTest(TestCase):
    def test_positions_agree(self):
        compared = 0
        for path in sample_files("dae", "blender/dae"):
            try:
                theirs = their_triangles(path)
                root = qdsg.load(path)
            except Exception:  # pylint: disable=broad-except
                continue  # what one of the two refuses cannot be compared
            if theirs is None or not len(theirs):
                continue
            ours = our_triangles(root)
            self.assertEqual(ours.shape, theirs.shape, path)
            size = abs(theirs).max() or 1.0
            self.assertLess(abs(ours - theirs).max() / size, TOLERANCE, path)
            compared += 1
        self.assertGreaterEqual(compared, 10, "scenes that both readers load, below " + SAMPLES)
