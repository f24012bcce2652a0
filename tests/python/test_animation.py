"""Animations: their members, poses before and after saving and optimising, and those of a resource set."""
import math
import os
import re

import qdsg
from qdsg_testing import DATA, CapturedLog, EmptyWrapper, TestCase, walk

MOVING_BOX = os.path.join(DATA, "moving_box.dae")
CHANNELS = ["box/move", "box/spin.ANGLE", "box/matrix", "lid/seen", "fx/common/paint.G"]
# Time, where the box is then, how far it is turned about Z, whether its lid is seen and how green it is.
POSES = [(1.5, (7.5, 3, 4.5), 67.5, False, 1), (-1, (0, 0, 1), 0, True, 0), (1, (6, 2, 4), 45, False, 1),
         (99, (9, 4, 5), 90, False, 1), (0, (0, 0, 1), 0, True, 0)]


class AnimationTest(TestCase):
    def setUp(self):
        self.resource_set = qdsg.load_resource_set(MOVING_BOX)
        self.slide, self.turning, self.default = self.resource_set.animations

    def check_pose(self, root, place, angle, seen, green):
        box = root.children[0]
        angle = math.radians(angle)
        for got, expected in ((box.world_transform.transform_point((0, 0, 0)), place),
                              (box.world_transform.transform_dir((1, 0, 0)), (math.cos(angle), math.sin(angle), 0))):
            for one, two in zip(got, expected):
                self.assertAlmostEqual(one, two, 5)
        self.assertEqual([node.visible for node in walk(root) if node.global_name == "lid"], [seen])
        self.assertEqual([node.material["diffuse"][1] for node in walk(root) if node.material], [green])

    def save_and_load(self, root, animations=()):
        resource_set = qdsg.create_resource_set_from_node(root)
        for animation in animations:
            resource_set.add_animation(animation)
        path = os.path.join(self.make_folder(), "saved.nest")
        qdsg.save_resource_set(path, resource_set)
        with open(path, "rb") as saved:
            return qdsg.load_nest(path), saved.read()

    @staticmethod
    def transforms_of(node):
        """The kinds and names of the transforms at and below a node."""
        with CapturedLog() as log:
            node.output_debug_info()
        return re.findall(r"CSGXFrm_(\w+): \w+ Name: '(\w*)'", "\n".join(log.lines))

    def test_members(self):
        self.assertEqual(repr(self.slide), "<qdsg.SGAnimation>")
        for animation, name, begin, end, channels in ((self.slide, "slide", 0, 2, CHANNELS),
                                                      (self.turning, "turning", 0.5, 2, CHANNELS[1:2]),
                                                      (self.default, "", 0, 2, CHANNELS)):
            self.assertEqual((animation.name, animation.begin_time, animation.end_time), (name, begin, end))
            self.assertEqual(animation.channels, channels)
        for arguments, name in (((0.25, 0.5), "slide"), ((1, 1, "still"), "still")):
            part = self.slide.slice(*arguments)
            self.assertEqual((part.begin_time, part.end_time, part.name), arguments[:2] + (name,))
        with CapturedLog() as log:
            self.assert_raises_text(ValueError, "Failed to slice animation.", self.slide.slice, 2, 1)
        self.assertEqual(log.messages("PySGAnimation_slice"), [("ERROR", "pNewAnim is NULL")])

    def test_poses(self):
        plain, optimized = self.resource_set.scene_graph, self.resource_set.scene_graph
        optimized.optimize_transforms(self.resource_set)
        self.assertEqual(self.transforms_of(optimized), [("List", ""), ("LookAt", "look"), ("Transform3", "matrix"),
                                                         ("Translate", "move"), ("Rotate", "spin")])
        again, saved = self.save_and_load(optimized, self.resource_set.animations)
        self.assertEqual([saved.count(name.encode()) for name in CHANNELS], [1] * len(CHANNELS))
        for time, place, angle, seen, green in POSES:
            for root in plain, optimized, again:
                self.assertIsNone(self.default.pose(root, time))
                self.check_pose(root, place, angle, seen, green)
        self.slide.pose(plain, 1.5)
        self.check_pose(self.save_and_load(plain)[0], *POSES[0][1:])  # a pose is saved as it stands

    def test_removed_channels_free_their_transforms(self):
        root, part = self.resource_set.scene_graph, self.default.slice(0.25, 0.5)
        for name in "box/matrix", "lid/seen", "none":
            self.assertIsNone(self.slide.remove_channel(name))
        self.assertEqual(self.slide.channels, CHANNELS[:2] + CHANNELS[4:])
        self.assertEqual(part.channels, CHANNELS)  # a slice has a list of its own
        resource_set = qdsg.create_resource_set_from_node(root)
        resource_set.add_animation(self.slide)
        root.optimize_transforms(resource_set)
        self.assertEqual([name for _, name in self.transforms_of(root)], ["", "look", "move", "spin"])
        resource_set.clear_animations()
        root.optimize_transforms(resource_set)
        self.assertEqual(self.transforms_of(root), [("Transform3", "")])

    def test_animations_of_a_set(self):
        def names(of=self.resource_set):
            return [animation.name for animation in of.animations]

        self.assertIsNone(self.resource_set.rename_animation("slide", "walk"))
        self.assertIsNone(self.resource_set.rename_animation("walk", "walk"))
        for old, new in ("slide", "run"), ("walk", "turning"):
            self.assert_raises_text(ValueError, "Failed to rename animation.", self.resource_set.rename_animation, old,
                                    new)
        with CapturedLog() as log:
            self.assert_raises_text(ValueError, "Duplicate animation name 'walk'", self.resource_set.add_animation,
                                    self.slide.slice(0, 1))
        self.assertEqual(log.messages("PySGResourceSet_add_animation"), [
            ("ERROR", "Tried to add animation 'walk' but there was already an animation with that name.")])
        with CapturedLog() as log:
            subset = self.resource_set.create_animations_subset()
        self.assertEqual(log.messages("PySGResourceSet_create_animations_subset"),
                         [("INFO", ("adding animation " + name).strip()) for name in ("walk", "turning", "")])
        self.assert_raises_text(ValueError, "Had NULL scene graph", getattr, subset, "scene_graph")
        self.assertIsNone(subset.add_animation(self.slide.slice(0, 1, "more")))
        self.assertIsNone(self.resource_set.clear_animations())
        self.assertEqual((names(), names(subset)), ([], ["walk", "turning", "", "more"]))

    def test_errors(self):
        root = self.resource_set.scene_graph
        text = "Failed to parse arguments."
        for method, arguments in ((self.slide.pose, (root,)), (self.slide.pose, (None, 1)),
                                  (self.slide.slice, (1,)), (self.slide.slice, (1, 2, 3)),
                                  (self.slide.remove_channel, (1,)), (self.resource_set.add_animation, (root,)),
                                  (self.resource_set.rename_animation, (1, 2))):
            self.assert_raises_text(ValueError, text, method, *arguments)
        for arguments in (), ("slide",):
            self.assert_raises_text(ValueError, "Expecting oldName, newName", self.resource_set.rename_animation,
                                    *arguments)
        # What can be posed is posed.
        lid = next(node for node in walk(root) if node.global_name == "lid")
        self.assert_raises_text(ValueError, "Failed to pose every channel of animation 'slide'.", self.slide.pose, lid, 1)
        self.assertFalse(lid.visible)
        with EmptyWrapper(self.slide):
            for name in "name", "begin_time", "end_time", "channels":
                self.assert_raises_text(ValueError, "Had NULL animation", getattr, self.slide, name)
            for method in self.slide.pose, self.slide.slice, self.slide.remove_channel:
                self.assert_raises_text(Exception, "Had NULL internal SG node.", method)
            self.assert_raises_text(ValueError, "Had NULL animation.", self.resource_set.add_animation, self.slide)
        with EmptyWrapper(self.resource_set):
            for name in "create_animations_subset", "add_animation", "rename_animation", "clear_animations":
                self.assert_raises_text(ValueError, "Had NULL resource set", getattr(self.resource_set, name))
