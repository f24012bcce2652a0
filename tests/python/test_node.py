"""Nodes: names, tree, identity and lifetime of wrappers, transforms."""
import gc
import sys

import qdsg
from qdsg_testing import TWO_BOXES, CapturedLog, EmptyWrapper, NestFile, TestCase, count_live_objects, walk

PYTHON_3 = sys.version_info[0] >= 3


def find(root, name):
    return next(node for node in walk(root) if node.global_name == name)


class NodeTest(TestCase):
    def setUp(self):
        self.root = qdsg.load(TWO_BOXES)
        self.crate = find(self.root, "Crate")
        self.lid = find(self.root, "Lid")

    def test_names(self):
        self.assertEqual(repr(self.crate), "<qdsg.SGNode global='Crate' local='Crate'>")
        self.assertEqual(repr(self.lid), "<qdsg.SGNode global='Lid' local='lid'>")
        self.crate.global_name = "a" * 1000
        self.crate.local_name = ""
        self.assertEqual((self.crate.global_name, self.crate.local_name), ("a" * 1000, ""))

    def test_bad_names(self):
        for attribute in "global_name", "local_name":
            for value in 5, None, b"bytes" if PYTHON_3 else u"unicode":
                self.assert_raises_text(TypeError, "Expected a string.", setattr, self.crate, attribute, value)
            self.assert_raises_text(TypeError, "Expected a string.", delattr, self.crate, attribute)
            # What a file could not keep is refused.
            self.assertRaises((TypeError, ValueError), setattr, self.crate, attribute, "a\0b")
        self.assertEqual(self.crate.global_name, "Crate")

    def test_every_byte_of_a_name_survives(self):
        folder = self.make_folder()
        for name in b"plain", u"\u00fc\u4e2d\U0001f600".encode("utf-8"), bytes(bytearray(range(1, 256))):
            made = NestFile()
            root = made.load(folder, made.add_node(name))
            text = name.decode("utf-8", "surrogateescape") if PYTHON_3 else name
            self.assertEqual((root.global_name, root.local_name), (text, text))
            self.assertEqual(repr(root), "<qdsg.SGNode global='%s' local='%s'>" % (text, text))
            root.local_name = "other"
            root.local_name = text
            path = folder + "/saved.nest"
            qdsg.save_resource_set(path, qdsg.create_resource_set_from_node(root))
            with open(path, "rb") as saved:
                self.assertEqual(saved.read().count(name), 2)

    def test_same_node_same_wrapper(self):
        self.assertIs(self.root.children[0], self.root.children[0])
        self.assertIs(self.root.children[0].parent, self.root)
        self.assertIsNone(self.root.parent)
        self.assertIsNot(self.root.children, self.root.children)
        self.assertEqual({self.crate: 1}[self.root.children[0]], 1)
        self.assertNotEqual(self.crate, self.lid)
        # A wrapper that is gone is made anew; what was set through it stays.
        self.crate.global_name = "still here"
        self.crate = self.lid = None
        gc.collect()
        self.assertEqual(find(self.root, "still here").local_name, "Crate")

    def test_child_outlives_its_root(self):
        lid, self.root = self.lid, None
        self.assertIs(lid.parent, self.crate)
        self.assertIsNone(self.crate.parent)
        self.crate = None
        self.assertIsNone(lid.parent)
        self.assertEqual(lid.local_name, "lid")
        # What it stood in moves it no more.
        self.assertEqual(lid.world_transform.matrix[3], (1, 2, 3, 1))

    def test_world_transform(self):
        crate, lid = self.crate.world_transform, self.lid.world_transform
        for transform, point, moved, turned in (
                (crate, (1, 0, 0), (10, 21, 30), (0, 1, 0)),
                # scaled (2, 0, 0), turned (0, 2, 0), moved (1, 4, 3), then as the crate
                (lid, (1, 0, 0), (6, 21, 33), (-2, 0, 0)),
                (lid, (0, 0, 1), (8, 21, 37), (0, 0, 4))):
            point, direction = transform.transform_point(point), transform.transform_dir(point)
            for result, expected in ((point, moved), (direction, turned)):
                for got, wanted in zip(result, expected):
                    self.assertAlmostEqual(got, wanted, 5)
        self.assertEqual(crate.matrix, ((0, 1, 0, 0), (-1, 0, 0, 0), (0, 0, 1, 0), (10, 20, 30, 1)))
        self.assertEqual(repr(crate), "<qdsg.Transform3>")

    def test_transform_arguments(self):
        transform = self.crate.world_transform
        for method in transform.transform_point, transform.transform_dir:
            for arguments in (), (1, 2, 3), ((1, 2),), ((1, 2, "3"),), ((1, 2, 3), 4), (None,):
                self.assert_raises_text(ValueError, "Failed to parse arguments.", method, *arguments)

    def test_optimize_transforms(self):
        before = [node.world_transform.matrix for node in walk(self.root)]
        self.assertIsNone(self.root.optimize_transforms(qdsg.create_resource_set_from_node(self.root)))
        for one, two in zip(before, (node.world_transform.matrix for node in walk(self.root))):
            for got, wanted in zip(sum(two, ()), sum(one, ())):
                self.assertAlmostEqual(got, wanted, 5)
        with CapturedLog() as log:
            for arguments in (), (None,), (self.root,):
                self.assert_raises_text(ValueError, "Failed to parse arguments.", self.root.optimize_transforms,
                                        *arguments)
        self.assertEqual(log.messages("PySGNode_optimize_transforms"), [("ERROR", "Failed to parse arguments.")] * 3)
        resource_set = qdsg.create_resource_set_from_node(self.root)
        with EmptyWrapper(resource_set), CapturedLog() as log:
            self.assert_raises_text(ValueError, "m_spResourceSet is NULL.", self.root.optimize_transforms, resource_set)
        self.assertEqual(log.messages("PySGNode_optimize_transforms"),
                         [("ERROR", "pyResourceSet->m_spResourceSet is NULL")])

    def test_empty_wrapper(self):
        lid = self.lid
        with EmptyWrapper(lid):
            self.assertEqual(repr(lid), "<qdsg.SGNode - Empty>")
            self.assertIsNone(lid.children)
            for text, attributes in (("Had NULL SG node.", ("geom_bindings", "world_transform", "visible")),
                                     ("Had NULL node.", ("global_name", "local_name"))):
                for attribute in attributes:
                    self.assert_raises_text(ValueError, text, getattr, lid, attribute)
            self.assert_raises_text(ValueError, "Had NULL node.", setattr, lid, "local_name", "x")
            for method in lid.output_debug_info, lid.output_geom_stats, lid.optimize_transforms:
                self.assert_raises_text(Exception, "Had NULL internal SG node.", method)

    def test_output_goes_to_the_log(self):
        for method, text in ((self.root.output_debug_info, "Local Name: 'lid'"),
                             (self.root.output_geom_stats, "tris=00024")):
            with CapturedLog() as log:
                self.assertIsNone(method())
            self.assertEqual({level for level, _, _ in log.messages()}, {"INFO"})
            self.assertIn(text, "\n".join(log.lines))

    def test_visible(self):
        made = NestFile()
        shown, hidden = (made.add_node(data=[made.add_render_state(flags)]) for flags in (0x3, 0x4))
        root = made.load(self.make_folder(), made.add_node(children=[shown, hidden]))
        self.assertEqual([node.visible for node in walk(root)], [True, True, False])


class DeepTreeTest(TestCase):
    def test_ten_thousand_deep(self):
        before = count_live_objects()
        made = NestFile()
        node = made.add_node(b"deepest")
        for _ in range(9999):
            node = made.add_node(b"n", children=[node])
        folder = self.make_folder()
        root = made.load(folder, node)
        nodes = list(walk(root))
        self.assertEqual(len(nodes), 10000)
        self.assertEqual(nodes[-1].world_transform.matrix[3], (0, 0, 0, 1))
        qdsg.save_resource_set(folder + "/again.nest", qdsg.create_resource_set_from_node(root))
        self.assertEqual(sum(1 for _ in walk(qdsg.load_nest(folder + "/again.nest"))), 10000)
        deepest = nodes[-1]
        del nodes, root
        gc.collect()
        self.assertIsNone(deepest.parent)
        del deepest
        self.assertEqual(count_live_objects(), before)
