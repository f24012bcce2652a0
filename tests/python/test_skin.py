"""Skinned characters: their vertices before and after all that can be done to a scene, skeletons and parts."""
import gc
import json
import os
import unittest

import qdsg
from qdsg_testing import DATA, TWO_BOXES, CapturedLog, TestCase, count_live_objects, walk
from test_samples import SAMPLES, sample_files

BENDING_BAR = os.path.join(DATA, "bending_bar.dae")
TOLERANCE = 1e-4  # of a model's size


def skinned_nodes(root):
    return [node for node in walk(root) if any(binding.skinned_vertices for binding in node.geom_bindings)]


def deformed(root):
    """The deformed vertices of every binding by its node's name."""
    return {(node.global_name, n): binding.skinned_vertices for node in skinned_nodes(root)
            for n, binding in enumerate(node.geom_bindings)}


def worst_distance(some, others):
    """Between vertices of the same number, relative to the size of what they make up."""
    size = max(max(vertex[n] for vertex in others) - min(vertex[n] for vertex in others) for n in range(3))
    return max(abs(one - two) for vertex, other in zip(some, others) for one, two in zip(vertex, other)) / size


def save_and_load(folder, resource_set):
    path = os.path.join(folder, "saved.nest")
    qdsg.save_resource_set(path, resource_set)
    return qdsg.load_nest(path)


def posed(root, animation, count=5):
    """The deformed vertices at so many times over the whole animation; at rest without one."""
    if animation is None:
        return [deformed(root)]
    poses = []
    for n in range(count):
        animation.pose(root, animation.begin_time + (animation.end_time - animation.begin_time) * n / (count - 1))
        poses.append(deformed(root))
    return poses


class SkinTest(TestCase):
    def setUp(self):
        self.whole = qdsg.load_resource_set(BENDING_BAR)
        self.name = skinned_nodes(self.whole.scene_graph)[0].global_name
        # Of this clip's channels one drives a material that has the name of one of the bar's.
        self.clip = qdsg.load_resource_set(os.path.join(DATA, "moving_box.dae")).animations[0]
        self.whole.add_animation(self.clip)

    def texts(self, function, *arguments):
        with CapturedLog() as log:
            function(*arguments)
        return [text for _, _, text in log.messages()]

    def test_skeleton(self):
        skeletons = []
        lines = self.texts(lambda: skeletons.append(self.whole.skeleton))
        self.assertEqual(lines, ["adding animation slide"])
        self.assertEqual([node for node in walk(skeletons[0].scene_graph) if node.geom_bindings or node.material], [])
        lines = self.texts(lambda: skeletons.append(self.whole.get_skeleton_ignore_geoms([self.name])))
        self.assertEqual(lines[0], "~~~~~~~~~~~~~~~~testing 2 " + self.name)
        names = [[node.global_name for node in walk(one.scene_graph)] for one in skeletons]
        self.assertEqual(names[0], names[1])
        # The geometry stands beside the skeleton in the file, and the skin with it.
        sizes = []
        for one in skeletons:
            path = os.path.join(self.make_folder(), "skeleton.nest")
            qdsg.save_resource_set(path, one)
            qdsg.load_nest(path)
            sizes.append(os.path.getsize(path))
        self.assertGreater(sizes[1], sizes[0] + 12 * len(deformed(self.whole.scene_graph)[self.name, 0]))

    def test_parts_say_what_they_do(self):
        parts = []
        lines = self.texts(lambda: parts.extend(self.whole.get_franken_parts([self.name, self.name])))
        self.assertEqual(lines, ["Getting item 0", "Pushing '%s'" % self.name, "Getting item 1",
                                 "Pushing '%s'" % self.name, "Calling GetSkinnedSubResourceSets",
                                 "-----GetFrankenResourceSet------ 0", "done?",
                                 "-----GetFrankenResourceSet------ 1", "done?"])
        self.assertEqual([repr(part) for part in parts], ["<qdsg.SGResourceSet>"] * 2)
        self.assertEqual(self.whole.get_franken_parts([]), [])
        for part, channels in ((parts[0], ["fx/common/paint.G"]), (self.whole.skeleton, [])):
            clip, = part.animations
            self.assertEqual((clip.name, clip.begin_time, clip.end_time, clip.channels), ("slide", 0, 2, channels))
            self.assertIsNone(clip.pose(part.scene_graph, 1))
        self.assertEqual(len(self.clip.channels), 5)

    def test_deformed_vertices(self):
        # The knee at (11, 0, 0) is turned by 90 degrees about Z.
        expected = {(0, 0, 0): (10, 0, 0), (0, 1, 0): (10, 1, 0), (1, 0, 0): (11, 0, 0), (1, 1, 0): (10.25, 0.25, 0),
                    (2, 0, 0): (11, 1, 0), (2, 1, 0): (11.5, 1, 0)}
        found = {}
        root = self.whole.scene_graph
        for node in skinned_nodes(root):
            for binding in node.geom_bindings:
                found.update(zip(binding.vertices, binding.skinned_vertices))
        self.assertEqual({vertex: tuple(round(number, 5) for number in to) for vertex, to in found.items()}, expected)

    def test_errors(self):
        plain = qdsg.load_resource_set(TWO_BOXES)
        empty = self.whole.create_animations_subset()
        parse = "Failed to parse arguments."
        for resource_set, method, arguments, text in (
                (plain, "get_franken_part", ("Crate",), "failed to call GetSkinnedSubResourceSet."),
                (plain, "get_franken_part", ("none",), "failed to call GetSkinnedSubResourceSet."),
                (plain, "get_franken_part", (), "Got NULL global node name."),
                (plain, "get_franken_part", (1,), parse),
                (plain, "get_franken_parts", (["Crate"],), "failed to call GetSkinnedSubResourceSets."),
                (plain, "get_franken_parts", ([""],), "Expected a string."),
                (plain, "get_franken_parts", ([1],), "Expected a string."),
                (plain, "get_franken_parts", (("Crate",),), parse),
                (plain, "get_skeleton_ignore_geoms", (["Crate"],),
                 "unable to get a skeleton from the first node in the resource set"),
                (empty, "get_skeleton_ignore_geoms", ([],), "Had NULL scene graph for this resource set"),
                (self.whole, "get_skeleton_ignore_geoms", ([1],), "Expected a string."),
                (self.whole, "get_skeleton_ignore_geoms", (["none"],), "AddTopLevelNode Failed."),
                (self.whole, "get_skeleton_ignore_geoms", (), parse)):
            self.assert_raises_text(ValueError, text, getattr(resource_set, method), *arguments)
        self.assert_raises_text(ValueError, "Had NULL scene graph for this resource set", getattr, empty, "skeleton")
        with CapturedLog(1) as log:
            self.assert_raises_text(ValueError, "Expected a string.", self.whole.get_franken_parts, [""])
            self.assert_raises_text(ValueError, "AddTopLevelNode Failed.", self.whole.get_skeleton_ignore_geoms, ["?"])
        texts = [text for _, _, text in log.messages()]
        for text in "!strNodeName.empty() is false", "~~~spAddGeom is null for ?":
            self.assertIn(text, texts)

    def test_without_a_skin(self):
        for node in walk(qdsg.load(TWO_BOXES)):
            for binding in node.geom_bindings:
                self.assertIsNone(binding.skinned_vertices)

    def test_joints_that_are_gone(self):
        root = self.whole.scene_graph
        node = skinned_nodes(root)[0]
        bindings = [node.geom_bindings[0]]
        alone = save_and_load(self.make_folder(), qdsg.create_resource_set_from_node(node))
        del root
        gc.collect()
        for binding in bindings + node.geom_bindings + alone.geom_bindings:
            self.assert_raises_text(ValueError, "The skin's joint 'root' has no node.", getattr, binding,
                                    "skinned_vertices")


class EveryCharacterTest(TestCase):
    """Whatever is done to a skinned scene, its vertices go where those of the loaded scene go."""

    def check(self, root, animation, expected, what, subset=False):
        for poses, others in zip(posed(root, animation, len(expected)), expected):
            if not subset:
                self.assertEqual(set(poses), set(others), what)
            for key in poses:
                self.assertEqual(len(poses[key]), len(others[key]), what)
                self.assertLessEqual(worst_distance(poses[key], others[key]), TOLERANCE, (what, key))

    def check_file(self, path):
        whole = qdsg.load_resource_set(path)
        animation = (whole.animations or [None])[-1]
        names = [node.global_name for node in skinned_nodes(whole.scene_graph)]
        expected = posed(whole.scene_graph, animation)
        folder = self.make_folder()
        self.check(save_and_load(folder, whole), animation, expected, (path, "saved"))
        root = whole.scene_graph
        root.optimize_transforms(whole)
        self.check(root, animation, expected, (path, "optimized"))
        optimized = qdsg.create_resource_set_from_node(root)
        for clip in whole.animations:
            optimized.add_animation(clip)
        for source in whole, optimized:
            for name, part in zip(names, source.get_franken_parts(names)):
                own = (part.animations or [None])[-1]
                nodes = list(walk(part.scene_graph))
                self.assertEqual([clip.name for clip in part.animations], [clip.name for clip in whole.animations])
                self.assertIn(name, [node.global_name for node in skinned_nodes(part.scene_graph)])
                self.assertLessEqual(len(nodes), len(list(walk(root))))
                self.check(part.scene_graph, own, expected, (path, name), True)
                loaded = save_and_load(folder, part)
                loaded.optimize_transforms(part)
                self.check(loaded, own, expected, (path, name, "saved"), True)
                # A part is one itself.
                self.check(part.get_franken_part(name).scene_graph, own, expected, (path, name, "again"), True)
        return len(names)

    def test_small_one(self):
        self.assertGreater(self.check_file(BENDING_BAR), 0)

    @unittest.skipUnless(os.path.isdir(os.path.join(SAMPLES, "dae")), "no samples at " + SAMPLES)
    def test_samples(self):
        checked = 0
        before = None  # taken after the first file, which makes what stays, like the marker for missing images
        for path in sample_files("dae", "blender/dae"):
            with open(path, "rb") as file:
                if b"<skin" not in file.read():
                    continue
            checked += self.check_file(path) > 0
            if before is None:
                gc.collect()
                before = count_live_objects()
        self.assertGreater(checked, 8)
        gc.collect()
        self.assertEqual(count_live_objects(), before)


@unittest.skipUnless(os.path.isdir(os.path.join(SAMPLES, "blender", "truth")), "no samples at " + SAMPLES)
class SkinnedTruthTest(TestCase):
    def test_against_truth(self):
        with open(os.path.join(SAMPLES, "blender", "truth", "skinned_arm.json")) as file:
            truth = json.load(file)
        modelled = truth["meshes"][0]["positions"]
        wave = truth["animations"][0]
        folder = self.make_folder()
        for name in "skinned_arm", "skinned_arm_decomposed":
            whole = qdsg.load_resource_set(os.path.join(SAMPLES, "blender", "dae", name + ".dae"))
            part = whole.get_franken_part("ArmMesh")
            optimized = whole.scene_graph
            optimized.optimize_transforms(whole)
            # Which vertex of the truth each one is.
            vertices = skinned_nodes(optimized)[0].geom_bindings[0].vertices
            numbers = [min(range(len(modelled)), key=lambda n, one=vertex: sum(
                (a - b) ** 2 for a, b in zip(one, modelled[n]))) for vertex in vertices]
            self.assertEqual(set(numbers), set(range(len(modelled))))
            for root in (whole.scene_graph, save_and_load(folder, whole), optimized, part.scene_graph,
                         save_and_load(folder, part)):
                binding = skinned_nodes(root)[0].geom_bindings[0]
                self.assertEqual(binding.vertices, vertices)
                for n, time in enumerate(wave["times_s"]):
                    whole.animations[0].pose(root, time)
                    expected = wave["skinned_world"]["ArmMesh"][n]
                    self.assertLessEqual(worst_distance(binding.skinned_vertices, [expected[one] for one in numbers]),
                                         TOLERANCE, (name, time))
