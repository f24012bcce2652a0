"""Animated FBX files posed beside what the program says that exported them."""
import json
import os
import unittest

import qdsg
from qdsg_testing import walk
from test_samples import SAMPLES, TruthChecks, multiply, sample_files

TOLERANCE = 1e-4
SCENES = os.path.join(SAMPLES, "blender", "fbx")


@unittest.skipUnless(os.path.isdir(SCENES), "no samples at " + SAMPLES)
class PosedTruthTest(TruthChecks):
    def test_every_flag(self):
        """Kept keys and frames, angles and quaternions, before and after NEST."""
        saved = os.path.join(self.make_folder(), "moving.nest")
        checked = {"world": 0, "visible": 0, "skinned_world": 0}
        for name in "object_anim", "visibility_anim_curves", "skinned_arm":
            with open(os.path.join(SAMPLES, "blender", "truth", name + ".json")) as file:
                truth = json.load(file)
            for quaternions in 0, 1:
                for frames in 0, 1:
                    loaded = qdsg.load_resource_set(os.path.join(SCENES, name + ".fbx"), quaternions, frames)
                    kinds = {channel.rpartition(".")[2] for channel in loaded.animations[0].channels}
                    self.assertEqual(("QUAT" in kinds, "ANGLE" in kinds), (bool(quaternions), not quaternions))
                    qdsg.save_resource_set(saved, loaded)
                    for root in loaded.scene_graph, qdsg.load_nest(saved):
                        for expected in truth["animations"]:
                            self.check(loaded, root, truth, expected, checked)
        self.assertGreater(min(checked.values()), 30)

    def check(self, loaded, root, truth, expected, checked):
        animation = next(one for one in loaded.animations if one.name.split("|")[-1] == expected["name"])
        nodes = {node.global_name: node for node in walk(root)}
        for n, time in enumerate(expected["times_s"]):
            animation.pose(root, time)
            for key, worlds in expected["world"].items():
                world = multiply(truth["fbx_from_blender"], worlds[n])
                if "/" in key:  # the exporter turns bones to axes of their own
                    for one, row in zip(nodes[key.split("/")[-1]].world_transform.matrix[3], world):
                        self.assertLessEqual(abs(one - row[3]), TOLERANCE * 300, (key, time))  # it is 300 high
                else:
                    self.check_matrix(nodes.get(key), world, (key, time), tolerance=TOLERANCE)
                checked["world"] += 1
            for key, visible in expected["visible"].items():
                if key == "Blinker":  # the others' is lost in the export
                    self.assertEqual(nodes[key].visible, visible[n], (key, time))
                    checked["visible"] += 1
            for key, positions in expected["skinned_world"].items():
                binding = nodes[key + "/Skin"].geom_bindings[0]
                wanted = [[row[3] + sum(a * b for a, b in zip(row, one)) for row in truth["fbx_from_blender"][:3]]
                          for one in positions[n]]
                numbers = self.find_numbers(binding.vertices, truth["meshes"][0]["positions"])
                for vertex, number in zip(binding.skinned_vertices, numbers):
                    worst = max(abs(a - b) for a, b in zip(vertex, wanted[number]))
                    self.assertLessEqual(worst, TOLERANCE * 300, (expected["name"], time))
                checked["skinned_world"] += 1

    def test_flags_agree(self):
        """Kept keys, sampled angles and sampled quaternions pose every sample alike, at frames of any usual rate."""
        checked = 0
        for path in sample_files("fbx", "blender/fbx", ending=".fbx"):
            loaded = [] if "malformed" in path else [qdsg.load_resource_set(path, *flags)
                                                     for flags in ((0, 0), (0, 1), (1, 1))]
            roots = [one.scene_graph for one in loaded]
            for animations in zip(*[one.animations for one in loaded]):
                begin, end = animations[0].begin_time, animations[0].end_time
                for part in 0, 0.31, 0.77, 1:
                    time = begin + int(part * (end - begin) * 6) / 6.0
                    for animation, root in zip(animations, roots):
                        animation.pose(root, time)
                    for kept, angles, quaternions in zip(*map(walk, roots)):
                        self.check_poses(kept, (angles, quaternions), (path, kept.global_name, time))
                        checked += 1
        self.assertGreater(checked, 10000)

    def check_poses(self, kept, others, what):
        numbers = [sum(node.world_transform.matrix, ()) for node in (kept,) + others]
        size = max(1, max(map(abs, numbers[0])))
        for other in numbers[1:]:
            self.assertLessEqual(max(abs(a - b) for a, b in zip(numbers[0], other)), TOLERANCE * size, what)

    @staticmethod
    def find_numbers(vertices, modelled):
        """Which of the modelled positions each vertex is."""
        places = {tuple(round(one, 4) for one in position): n for n, position in enumerate(modelled)}
        return [places[tuple(round(one, 4) for one in vertex)] for vertex in vertices]


if __name__ == "__main__":
    unittest.main()
