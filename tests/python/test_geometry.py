"""Geometry bindings, the three kinds of geometry that Python sees, and their iterators."""
import ctypes
import gc
import sys

import qdsg
from qdsg_testing import (COLOR, NORMAL, POSITION, TEXCOORD, TWO_BOXES, CapturedLog, EmptyWrapper, NestFile, TestCase,
                          walk)


def bindings_of(root, name):
    return next(node for node in walk(root) if node.global_name == name).geom_bindings


def recorded_count(iterator):
    """The count that an iterator took when it began: it follows the header, a pointer and the next index."""
    return ctypes.c_int32.from_address(id(iterator) + object.__basicsize__ + ctypes.sizeof(ctypes.c_void_p) + 4)


class LoadedGeometryTest(TestCase):
    def test_triangles_of_the_crate(self):
        root = qdsg.load(TWO_BOXES)
        (binding,) = bindings_of(root, "Crate")
        # Each corner of a face has a position, normal and so on of its own, and two triangles share two corners.
        self.assertEqual((len(binding.vertices), len(list(binding.geometry))), (24, 12))
        self.assertEqual(binding.vertices[:4], [(1, -1, -1), (1, 1, -1), (1, 1, 1), (1, -1, 1)])
        self.assertEqual(binding.normals[:5], [(1, 0, 0)] * 4 + [(-1, 0, 0)])
        # The second coordinate counts from the other edge.
        self.assertEqual(binding.texcoords[:4], [(0, 1), (1, 1), (1, 0.25), (0, 0.25)])
        self.assertEqual(binding.colors[3:5], [(1, 0, 0, 1), (0, 0.5, 1, 0.25)])
        self.assertEqual(list(binding.geometry)[:3], [(0, 1, 2), (0, 2, 3), (4, 5, 6)])
        self.assertEqual(repr(binding), "<qdsg.SGGeomBinding>")
        self.assertEqual(repr(binding.geometry), "<qdsg.GeomTriangles with 12 triangles>")
        self.assertIsNot(binding.geometry, binding.geometry)

    def test_lines_and_quads_of_the_lid(self):
        lines, quads = bindings_of(qdsg.load(TWO_BOXES), "Lid")
        self.assertIsNone(lines.geometry)  # lines have no type in Python
        self.assertEqual(lines.vertices, [(-1, -1, -1), (1, 1, 1), (1, -1, -1), (-1, 1, 1)])
        self.assertIsNone(lines.normals)
        self.assertIsNone(quads.texcoords)
        self.assertIsNone(quads.colors)
        self.assertEqual(list(quads.geometry)[:2], [(0, 1, 2), (0, 2, 3)])

    def test_parts_outlive_the_scene(self):
        root = qdsg.load(TWO_BOXES)
        (binding,) = bindings_of(root, "Crate")
        iterator = iter(binding.geometry)
        del root, binding
        gc.collect()
        self.assertEqual(len(list(iterator)), 12)


class MadeGeometryTest(TestCase):
    KINDS = [
        ("CSGGeom_Triangles", "qdsg.GeomTriangles", "Triangles", [(0, 1, 2), (2, 1, 3)],
         "<qdsg.GeomTriangles with 2 triangles>", "<qdsg.SGGeom_Triangles - Empty>"),
        ("CSGGeom_Quads", "qdsg.GeomQuads", "Quads", [(0, 1, 2, 3), (3, 2, 1, 0)],
         "<qdsg.GeomQuads with 2 quads>", "<qdsg.SGGeom_Quads - Empty>"),
        ("CSGGeom_PrimList", "qdsg.GeomPrimList", "PrimList",
         [("triangle", (0, 1, 2)), ("quad", (0, 1, 2, 3)), ("polygon", (3, 2, 1, 0, 1))],
         "<qdsg.GeomPrimList with 3 primitives>", "<qdsg.GeomPrimList - Empty>"),
    ]

    def make_binding(self, kind, elements):
        made = NestFile()
        vertices = made.add_vertices([(POSITION, 0, 3)], [(0, 0, 0), (1, 0, 0), (0, 1, 0), (1, 1, 0)])
        if kind == "CSGGeom_PrimList":
            names = ["triangle", "quad", "polygon"]
            geometry = made.add_primitives([(names.index(name), indices) for name, indices in elements])
        else:
            geometry = made.add_indexed(kind, sum(elements, ()))
        root = made.load(self.make_folder(), made.add_node(data=[made.add_geometry((geometry, vertices))]))
        return root.geom_bindings[0]

    def test_iteration(self):
        for kind, name, noun, elements, text, empty_text in self.KINDS:
            geometry = self.make_binding(kind, elements).geometry
            self.assertEqual(repr(geometry), text)
            self.assertEqual(list(geometry), elements)
            iterator = iter(geometry)
            self.assertIs(iter(iterator), iterator)
            self.assertEqual("%s.%s" % (type(iterator).__module__, type(iterator).__name__), name + "-iterator")
            self.assertEqual([next(iterator) for _ in elements], elements)
            for _ in range(2):
                self.assertRaises(StopIteration, next, iterator)
            recorded_count(iterator).value = 100  # an iterator that has ended does not look again
            self.assertRaises(StopIteration, next, iterator)

            iterator = iter(geometry)
            next(iterator)
            recorded_count(iterator).value -= 1
            self.assert_raises_text(RuntimeError, noun + " changed size during iteration", next, iterator)
            recorded_count(iterator).value += 1
            self.assertEqual(next(iterator), elements[1])

            with CapturedLog() as log:
                self.assertIsNone(geometry.output_debug_info())
            self.assertIn(kind, "\n".join(log.lines))
            with EmptyWrapper(geometry):
                self.assertEqual(repr(geometry), empty_text)
                self.assertRaises(ValueError, iter, geometry)

    def test_no_elements(self):
        for kind in "CSGGeom_Triangles", "CSGGeom_Quads":
            self.assertEqual(list(self.make_binding(kind, [()]).geometry), [])
        self.assertEqual(list(self.make_binding("CSGGeom_PrimList", []).geometry), [])

    def test_tuples_are_used_again_unless_kept(self):
        elements = [(n % 4, (n + 1) % 4, (n + 2) % 4) for n in range(3000)]
        geometry = self.make_binding("CSGGeom_Triangles", elements).geometry
        # What is kept is never changed, whether or not the garbage collector has looked at it.
        kept = []
        for n, triangle in enumerate(geometry):
            if n % 7 == 0:
                gc.collect(0)
                kept.append((n, triangle))
        self.assertEqual([triangle for _, triangle in kept], [elements[n] for n, _ in kept])
        iterator = iter(geometry)
        first = id(next(iterator))
        self.assertEqual([id(next(iterator)) for _ in range(10)], [first] * 10)
        self.assertEqual(sys.getrefcount(next(iterator)), 2)

    def test_vertex_members(self):
        made = NestFile()
        members = [(TEXCOORD, 3, 3), (POSITION, 0, 2), (COLOR, 0, 3), (TEXCOORD, 1, 1), (NORMAL, 2, 3)]
        vertices = made.add_vertices(members, [range(12), range(100, 112)])
        bare = made.add_vertices([(TEXCOORD, 0, 2)], [(1, 2)])
        geometry = made.add_indexed("CSGGeom_Lines", (0, 1))
        nothing = made.add_indexed("CSGGeom_Lines", ())
        attachment = made.add_geometry((geometry, vertices), (nothing, bare))
        full, bare = made.load(self.make_folder(), made.add_node(data=[attachment])).geom_bindings
        # Positions are always three floats; of several sets the lowest counts.
        self.assertEqual(full.vertices, [(3, 4, 0), (103, 104, 0)])
        self.assertEqual(full.colors, [(5, 6, 7), (105, 106, 107)])
        self.assertEqual(full.texcoords, [(8,), (108,)])
        self.assertEqual(full.normals, [(9, 10, 11), (109, 110, 111)])
        self.assertEqual((bare.vertices, bare.normals, bare.texcoords), ([], None, [(1, 2)]))

    def test_empty_binding(self):
        binding = self.make_binding("CSGGeom_Triangles", [(0, 1, 2)])
        with EmptyWrapper(binding):
            self.assertEqual(repr(binding), "<qdsg.SGGeomBinding - Empty>")
            self.assertRaises(ValueError, getattr, binding, "vertices")
            self.assertRaises(ValueError, getattr, binding, "geometry")
