"""Files of real tools, where the collection of samples is there: beside the checkout, or where QDSG_SAMPLES says."""
import gc
import json
import os
import re
import unittest

import qdsg
from qdsg_testing import CapturedLog, TestCase, count_live_objects, walk

TOP = os.path.dirname(os.path.dirname(os.path.dirname(os.path.abspath(__file__))))
SAMPLES = os.environ.get("QDSG_SAMPLES") or os.path.join(os.path.dirname(TOP), "shared", "samples")

# Relative to the largest number of a matrix or a mesh.
TOLERANCE = 1e-5

# Components of animation cannot say a mirrored or sheared transform: the exporter lost it.
LOST_IN_EXPORT = {"hierarchy3_decomposed": {"MirrorD", "ParentInverse"}}


def sample_files(*folders, **options):
    """The samples in some folders, `ending` with ".dae" unless another is given."""
    for folder in folders:
        for place, _, names in sorted(os.walk(os.path.join(SAMPLES, *folder.split("/")))):
            for name in sorted(names):
                if name.endswith(options.get("ending", ".dae")):
                    yield os.path.join(place, name)


def all_samples():
    return list(sample_files("dae", "blender/dae")) + list(sample_files("fbx", "blender/fbx", ending=".fbx"))


def multiply(one, two):
    return [[sum(row[k] * two[k][n] for k in range(4)) for n in range(4)] for row in one]


def exported_name(node):
    """What the exporter has made of a node's name; as a `str` of either Python."""
    name = re.sub(r"\W", "_", node["name"], flags=re.UNICODE)
    return name.encode("utf-8") if str is bytes else name


def read(path):
    with open(path, "rb") as file:
        return file.read()


@unittest.skipUnless(os.path.isdir(os.path.join(SAMPLES, "dae")), "no samples at " + SAMPLES)
class EverySampleTest(TestCase):
    def test_loads_or_names_the_fault(self):
        refused = 0
        paths = all_samples()
        for path in paths:
            with CapturedLog(1) as log:
                try:
                    root = qdsg.load(path)
                except ValueError:
                    root = None
            if root is None:
                refused += 1
                faults = [text for _, _, text in log.messages() if not text.startswith("Failed to load")]
                self.assertTrue(faults, path)
        self.assertLess(refused, len(paths) // 10)

    def test_round_trips_are_equal_and_leave_nothing(self):
        folder = self.make_folder()
        first, second = os.path.join(folder, "1.nest"), os.path.join(folder, "2.nest")
        gc.collect()
        before = count_live_objects()
        for path in all_samples():
            try:
                root = qdsg.load(path)
            except ValueError:
                continue
            qdsg.save_resource_set(first, qdsg.create_resource_set_from_node(root))
            again = qdsg.load_nest(first)
            qdsg.save_resource_set(second, qdsg.create_resource_set_from_node(again))
            self.assertTrue(read(first) == read(second), path)
            self.assertEqual(self.describe(root), self.describe(again), path)
        del root, again
        gc.collect()
        self.assertEqual(count_live_objects(), before)

    @staticmethod
    def describe(root):
        """What Python sees of a scene; numbers as text, so that one that is none equals itself."""
        return [(node.global_name, node.local_name, len(node.children), node.visible, repr(node.world_transform.matrix),
                 [(repr(binding.vertices), repr(binding.normals), repr(binding.texcoords), repr(binding.colors),
                   list(binding.geometry or ())) for binding in node.geom_bindings]) for node in walk(root)]


class TruthChecks(TestCase):
    """Scenes for which the program that exported them has said what is in them."""

    def check_matrix(self, node, expected, what, tolerance=TOLERANCE):
        self.assertIsNotNone(node, what)
        expected = [number for column in zip(*expected) for number in column]
        loaded = [number for row in node.world_transform.matrix for number in row]
        worst = max(abs(one - two) for one, two in zip(loaded, expected))
        self.assertLessEqual(worst, tolerance * max(map(abs, expected)), what)

    def check_mesh(self, node, expected, what):
        # A mesh of several materials stands in a child for each.
        parts = [node] + [child for child in node.children if child.global_name.startswith(node.global_name + "/")]
        bindings = [binding for part in parts for binding in part.geom_bindings]
        self.assertEqual(sum(len(list(binding.geometry or ())) for binding in bindings),
                         expected["triangle_count"], what)
        loaded = sorted({vertex for binding in bindings for vertex in binding.vertices})
        used = set(map(tuple, expected["positions"]))
        if "polygons" in expected:
            used = {tuple(expected["positions"][n]) for polygon in expected["polygons"] for n in polygon}
        elif not expected["triangle_count"]:  # a curve
            return
        size = max(abs(number) for vertex in used for number in vertex)
        # Both ways: nothing is missing, and nothing is there that should not be.
        for some, others in (loaded, used), (used, loaded):
            for vertex in some:
                self.assertLessEqual(min(max(abs(one - two) for one, two in zip(vertex, other)) for other in others),
                                     TOLERANCE * size, what)


@unittest.skipUnless(os.path.isdir(os.path.join(SAMPLES, "blender", "truth")), "no samples at " + SAMPLES)
class TruthTest(TruthChecks):
    def test_against_truth(self):
        matrices = meshes = 0
        for path in sample_files("blender/dae"):
            name = os.path.basename(path)[:-len(".dae")]
            truth = os.path.join(SAMPLES, "blender", "truth", re.sub("_(decomposed|triangulated|asmesh)$", "", name))
            if name == "nurbs" or not os.path.exists(truth + ".json"):  # that one was exported without its surfaces
                continue
            with open(truth + ".json") as file:
                truth = json.load(file)
            nodes = {node.global_name: node for node in walk(qdsg.load(path))}
            for expected in truth["nodes"]:
                node = nodes.get(exported_name(expected))
                if expected["name"] not in LOST_IN_EXPORT.get(name, ()):
                    self.check_matrix(node, self.world_at_the_end(truth, expected), (name, expected["name"]))
                    matrices += 1
            for expected in truth["meshes"]:
                for node in truth["nodes"]:
                    if node.get("data") == expected["name"]:
                        self.check_mesh(nodes[exported_name(node)], expected, (name, node["name"]))
                        meshes += 1
        self.assertGreater(min(matrices, meshes), 40)

    def test_posed_against_truth(self):
        matrices = 0
        saved = os.path.join(self.make_folder(), "moving.nest")
        for path in sample_files("blender/dae"):
            name = os.path.basename(path)[:-len(".dae")]
            truth = os.path.join(SAMPLES, "blender", "truth", re.sub("_decomposed$", "", name)) + ".json"
            loaded = qdsg.load_resource_set(path)
            if not loaded.animations or not os.path.exists(truth):
                continue
            with open(truth) as file:
                truth = json.load(file)["animations"][0]  # the exporter knows one timeline
            qdsg.save_resource_set(saved, loaded)
            for root in loaded.scene_graph, qdsg.load_nest(saved):
                nodes = {node.global_name: node for node in walk(root)}
                for n, time in enumerate(truth["times_s"]):
                    loaded.animations[0].pose(root, time)
                    for key, worlds in truth["world"].items():
                        self.check_matrix(nodes.get(exported_name({"name": key})), worlds[n], (name, key, time),
                                          tolerance=1e-4)
                        matrices += 1
        self.assertGreater(matrices, 100)

    @staticmethod
    def world_at_the_end(truth, node):
        """The static pose of an animated file is its last frame."""
        for animation in truth["animations"]:
            if node["name"] in animation.get("world", {}):
                return animation["world"][node["name"]][-1]
        return node["matrix_world"]
