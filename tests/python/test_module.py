"""The module itself: what is in it, its functions, their errors and what they log."""
import ast
import copy
import gc
import os
import subprocess
import sys
import unittest

import qdsg
from qdsg_testing import DATA, TWO_BOXES, CapturedLog, EmptyWrapper, TestCase, count_live_objects, walk

PYTHON_3 = sys.version_info[0] >= 3

TYPES = [
    ("Node", "qdsg.SGNode", "qdsg SGNode objects"),
    ("GeomBinding", "qdsg.SGGeomBinding", "qdsg SGGeomBinding objects"),
    ("GeomTriangles", "qdsg.GeomTriangles", "qdsg GeomTriangles objects"),
    ("GeomQuads", "qdsg.GeomQuads", "qdsg GeomQuads objects"),
    ("GeomPrimList", "qdsg.GeomPrimList", "qdsg GeomPrimList objects"),
    ("Transform3", "qdsg.Transform3", "qdsg Transform3 objects"),
    ("ResourceSet", "qdsg.SGResourceSet", "qdsg SGResourceSet objects"),
    ("Animation", "qdsg.SGAnimation", "qdsg SGAnimation objects"),
]

FUNCTIONS = [
    ("load", "Load a scene graph from a file."),
    ("load_nest", "Load a nest file and get the root node."),
    ("load_resource_set", "sg_resource_set = load_resource_set(dae_filename)"),
    ("save_resource_set", "save_resource_set(binary_filename,sg_resource_set)"),
    ("create_resource_set_from_node", "create_resource_set_from_node(sgnode)"),
]


class ModuleTest(TestCase):
    def test_names_and_docstrings(self):
        for attribute, name, doc in TYPES:
            kind = getattr(qdsg, attribute)
            self.assertEqual(("%s.%s" % (kind.__module__, kind.__name__), kind.__doc__), (name, doc))
        for name, doc in FUNCTIONS:
            self.assertEqual(getattr(qdsg, name).__doc__, doc)
        self.assertIn("QD scene-graph", qdsg.__doc__)

    def test_types_are_closed(self):
        node = qdsg.load(TWO_BOXES)
        for attribute, _, _ in TYPES:
            kind = getattr(qdsg, attribute)
            self.assertRaises(TypeError, kind)
            self.assertRaises(TypeError, object.__new__, kind)
            self.assertRaises(TypeError, type, "Derived", (kind,), {})
        self.assertRaises(TypeError, copy.copy, node)
        self.assertRaises(AttributeError, setattr, node, "children", [])
        self.assertRaises(AttributeError, setattr, node, "unknown", 1)

    @unittest.skipUnless(PYTHON_3, "stubs are written for Python 3")
    def test_stubs_name_what_is_there(self):
        def names(body):
            for entry in body:
                if isinstance(entry, ast.AnnAssign):
                    yield entry.target.id, entry
                elif isinstance(entry, (ast.ClassDef, ast.FunctionDef)):
                    yield entry.name, entry

        def members(kind):
            return {name for name in vars(kind) if not name.startswith("__") or name in ("__iter__", "__version__")}

        top = os.path.dirname(os.path.dirname(os.path.dirname(os.path.abspath(__file__))))
        with open(os.path.join(top, "src", "pyqdsg", "qdsg.pyi")) as text:
            stubs = dict(names(ast.parse(text.read()).body))
        self.assertEqual(set(stubs), members(qdsg))
        for attribute, _, _ in TYPES:
            stub = stubs[attribute]
            self.assertEqual({name for name, _ in names(stub.body)}, members(getattr(qdsg, attribute)), attribute)

    def test_log_level(self):
        for level, expected in (0, set()), (1, {"ERROR"}), (7, {"ERROR", "INFO"}):
            with CapturedLog(level) as log:
                self.assertRaises(ValueError, qdsg.load, "none.dae")
                self.assertEqual(qdsg.set_log_level(level), level)
            self.assertEqual({name for name, _, _ in log.messages()}, expected)
        self.assert_raises_text(ValueError, "Failed to parse arguments.", qdsg.set_log_level, "1")


class LoadTest(TestCase):
    def test_errors(self):
        for load in qdsg.load, qdsg.load_resource_set:
            for arguments in (), (1,), ("a\0b.dae",), ("a.dae", -1), ("a.dae", 256), ("a.dae", 0, 0, None):
                self.assert_raises_text(ValueError, "Failed to parse arguments.", load, *arguments)
            for name in "x.dae", "x.fbx", "x.DAE", "x.obj", "":
                self.assert_raises_text(ValueError, "Failed to load file %s." % name, load, name)
        for arguments in (), (1,), ("x.nest", 1):
            self.assert_raises_text(ValueError, "Failed to parse arguments.", qdsg.load_nest, *arguments)

    def test_nest_failure_is_only_logged(self):
        with CapturedLog() as log:
            self.assertRaises(SystemError, qdsg.load_nest, "none.nest")
        self.assertEqual(log.messages("qdsg_load_nest"),
                         [("ERROR", "Call spReader->LoadFile(strFilename) failed")])

    def test_loader_choice(self):
        for name, text in (("x.fbx", "Choosing FBX loader."), ("x.dae", "Choosing collada loader."),
                           ("x.fbx.obj", "Choosing collada loader."), ("x.FBX", "Choosing collada loader.")):
            with CapturedLog() as log:
                self.assertRaises(ValueError, qdsg.load, name)
            self.assertEqual(log.messages("GetLoaderForFile"), [("INFO", text)])

    def test_fbx_file_that_is_none(self):
        with CapturedLog() as log:
            self.assertRaises(ValueError, qdsg.load, "x.fbx")
        self.assertEqual([message for level, _, message in log.messages() if level == "ERROR"],
                         ["Call to FbxImporter::Initialize() failed.", "Error returned: x.fbx: No such file or directory"])

    def test_texture_pool_is_logged(self):
        name, path = ("INFO", "Using texture pool name 'p'"), ("INFO", "Using texture pool path 'd'")
        for function in "load", "load_resource_set":
            for arguments, expected in (((0, 1, "p"), [name]), ((1, 0, "p", "d"), [name, path]), ((), [])):
                with CapturedLog() as log:
                    getattr(qdsg, function)(TWO_BOXES, *arguments)
                self.assertEqual(log.messages("qdsg_" + function), expected)

    def test_file_names_of_every_kind(self):
        folder = self.make_folder()
        names = ["plain.nest", "sp ace.nest", u"\u00fc\u4e2d.nest"]
        if PYTHON_3:
            names.append(os.fsdecode(b"\xff\xfe.nest"))
        resource_set = qdsg.load_resource_set(TWO_BOXES)
        for name in names:
            path = os.path.join(folder, "deep", "er", name)
            qdsg.save_resource_set(path, resource_set)
            self.assertTrue(os.path.exists(path))
            self.assertEqual(len(list(walk(qdsg.load_nest(path)))), len(list(walk(resource_set.scene_graph))))
        if PYTHON_3:
            import pathlib
            self.assertTrue(qdsg.load(pathlib.Path(TWO_BOXES)).children)


class SaveTest(TestCase):
    def test_errors(self):
        resource_set = qdsg.load_resource_set(TWO_BOXES)
        directory = self.make_folder()
        with CapturedLog() as log:
            for arguments in (), ("x.nest",), ("x.nest", None), ("x.nest", resource_set.scene_graph), (1, resource_set):
                self.assertRaises(TypeError, qdsg.save_resource_set, *arguments)
        self.assertEqual(log.messages("qdsg_save_resource_set"), [("ERROR", "Failed to parse arguments.")] * 5)
        with CapturedLog() as log:
            self.assert_raises_text(ValueError, "Failed to write %s." % directory, qdsg.save_resource_set, directory,
                                    resource_set)
            with EmptyWrapper(resource_set):
                self.assert_raises_text(ValueError, "Got NULL resource set.", qdsg.save_resource_set, "x.nest",
                                        resource_set)
        self.assertEqual(log.messages("qdsg_save_resource_set"), [
            ("ERROR", "Call spWriter->SaveResourceSet(strFilename,pyResourceSet->m_spResourceSet.get()) failed")])

    def test_create_resource_set_errors(self):
        node = qdsg.load(TWO_BOXES)
        for arguments in (), (None,), (qdsg.load_resource_set(TWO_BOXES),), (node, node):
            self.assert_raises_text(ValueError, "Failed to parse arguments.", qdsg.create_resource_set_from_node,
                                    *arguments)
        with EmptyWrapper(node):
            self.assert_raises_text(ValueError, "Python SG Node had NULL SG Node.", qdsg.create_resource_set_from_node,
                                    node)

    def test_second_save_is_equal(self):
        folder = self.make_folder()
        first, second = (os.path.join(folder, name) for name in ("1.nest", "2.nest"))
        root = qdsg.load(TWO_BOXES)
        for node in walk(root):  # wrappers and world transforms are not saved
            node.world_transform.matrix
        qdsg.save_resource_set(first, qdsg.create_resource_set_from_node(root))
        qdsg.save_resource_set(second, qdsg.create_resource_set_from_node(qdsg.load_nest(first)))
        with open(first, "rb") as one, open(second, "rb") as two:
            self.assertEqual(one.read(), two.read())


    def test_convert_saves_the_animations_too(self):
        """The second half of scripts/convert."""
        tool = os.path.join(os.path.dirname(os.path.dirname(DATA)), "tools", "convert_scene.py")
        folder = self.make_folder()
        made, wanted = (os.path.join(folder, name) for name in ("1.nest", "2.nest"))
        for name in "moving_arm.fbx", "moving_box.dae":
            source = os.path.join(DATA, name)
            subprocess.check_output([sys.executable, tool, source, made],
                                    env=dict(os.environ, PYTHONPATH=os.path.dirname(qdsg.__file__)))
            resource_set = qdsg.load_resource_set(source)
            self.assertTrue(resource_set.animations)
            qdsg.save_resource_set(wanted, resource_set)
            with open(made, "rb") as one, open(wanted, "rb") as two:
                self.assertTrue(one.read() == two.read(), name)


class LeakTest(TestCase):
    def test_nothing_stays_behind(self):
        path = os.path.join(self.make_folder(), "boxes.nest")

        def work():
            root = qdsg.load(TWO_BOXES)
            for node in walk(root):
                node.world_transform.matrix
                for binding in node.geom_bindings:
                    next(iter(binding.geometry or [0]))
            qdsg.save_resource_set(path, qdsg.create_resource_set_from_node(root))
            kept = walk(qdsg.load_nest(path))
            next(kept)
            self.assertRaises(ValueError, qdsg.load, "none.dae")

        work()
        gc.collect()
        before = count_live_objects()
        for _ in range(1000):
            work()
        gc.collect()
        self.assertEqual(count_live_objects(), before)
        root = qdsg.load(TWO_BOXES)
        self.assertGreater(count_live_objects(), before)  # the count does see a scene
        del root
