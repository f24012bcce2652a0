"""FBX files of real tools, held against what other programs say of the same scenes."""
import json
import os
import re
import unittest

import qdsg
from qdsg_testing import TestCase, walk
from test_samples import SAMPLES, TruthChecks, multiply, sample_files

try:
    import numpy
except ImportError:
    numpy = None

# Where the authoring tools themselves have exported their scenes, at rest and at some frames, too.
FRAMES = os.path.join(SAMPLES, "fbx", "ufbx__ufbx", "data")
FRAMES_PER_SECOND = {"max": 30, "max2009": 30}
OTHER_FRAMES_PER_SECOND = 24
# What the frames show and a scene without morphs, vertex caches and subdivision does not, or what they show otherwise
# than the file has it: other normals, no faces, a single object.
NOT_COMPARED = ("blender440_shape_weight_anim", "blender_312x_vertex_crease", "maya_vertex_crease", "marvelous_quad",
                "max_cache_box", "maya_cache_sine", "maya_axes_anim_5", "maya_axes_anim_8",
                "max_geometry_transform_types", "blender_340_z_up")
# Exported from Z up to Y up and in another unit, of which ours is so many.
TURNED = {"revit_wall_square": 30.48}
OTHER_NORMALS = ("zbrush_d20",)
TOLERANCE = 1e-4  # of the scene's size


def our_corners(root):
    """Positions, normals and texture coordinates of the corners of all triangles, in the space of the root."""
    found = []
    for node in walk(root):
        matrix = numpy.array(node.world_transform.matrix)
        for binding in node.geom_bindings:
            corners = numpy.array(list(binding.geometry)).reshape(-1)
            skinned = binding.skinned_vertices
            positions = numpy.array(skinned or binding.vertices)
            if not skinned:
                positions = positions.dot(matrix[:3, :3]) + matrix[3, :3]
            normals = None
            if binding.normals and not skinned:
                normals = unit(numpy.array(binding.normals).dot(numpy.linalg.inv(matrix[:3, :3]).T))[corners]
            texcoords = numpy.array(binding.texcoords)[corners][:, :2] if binding.texcoords else None
            found.append((positions[corners], normals, texcoords))
    return [None if any(part[n] is None for part in found) else numpy.concatenate([part[n] for part in found])
            for n in range(3)]


def unit(vectors):
    return vectors / numpy.maximum(numpy.linalg.norm(vectors, axis=1, keepdims=True), 1e-30)


def their_corners(path):
    """The same of an .obj file; None for what is not in it, or is said there to be wrong."""
    values = {"v": [], "vt": [], "vn": []}
    corners = []
    wrong = set()
    with open(path, "rb") as file:
        for line in file.read().decode("latin-1").splitlines():
            words = line.split()
            if line.startswith("# ufbx:bad_"):
                wrong.add({"bad_normals": "vn", "bad_uvs": "vt"}.get(line[len("# ufbx:"):].strip()))
            elif words and words[0] in values:
                values[words[0]].append([float(word) for word in words[1:4]])
            elif words and words[0] == "f":
                corners.extend((word + "//").split("/")[:3] for word in words[1:])
    columns = {}
    for n, kind in enumerate(("v", "vt", "vn")):
        if values[kind] and kind not in wrong and all(corner[n] for corner in corners):
            indices = numpy.array([int(corner[n]) for corner in corners])
            columns[kind] = numpy.array(values[kind])[numpy.where(indices > 0, indices - 1, indices)]
    normals, texcoords = columns.get("vn"), columns.get("vt")
    return [columns["v"], None if normals is None else unit(normals), None if texcoords is None else texcoords[:, :2]]


def worst_gap(some, others):
    """How far one of `some` is at most from the next one of `others`, in any of the numbers."""
    others = numpy.unique(others.round(7), axis=0)
    return max(numpy.abs(chunk[:, None] - others[None]).max(axis=2).min(axis=1).max()
               for chunk in numpy.array_split(some, 1 + len(some) // 500))


@unittest.skipUnless(numpy and os.path.isdir(FRAMES), "numpy or the samples are missing")
class FramesTest(TestCase):
    """Corners, one by one and both ways: nothing is missing, and nothing is there that should not be."""

    def test_what_the_authoring_tools_say(self):
        compared = {"positions": 0, "normals": 0, "texture coordinates": 0}
        for name in sorted(os.listdir(FRAMES)):
            frame_path = os.path.join(FRAMES, name)
            base, ending = os.path.splitext(name)
            if ending == ".obj" and not base.startswith(NOT_COMPARED) and "lefthanded" not in base:
                scene, frame = re.match(r"(.*?)(?:_(\d+))?$", base).groups()
                for path in self.files_of(scene):
                    ours, theirs = self.corners_at(path, scene, frame), their_corners(frame_path)
                    for kind in self.compare(ours, theirs, path, name):
                        compared[kind] += 1
        self.assertGreater(min(compared.values()), 40)

    @staticmethod
    def files_of(scene):
        """One scene is there in several versions and encodings."""
        pattern = re.compile(re.sub("_(base|spin|wiggle)$", "", scene) + r"_\d{4}_(ascii|binary)\.fbx$")
        return [path for path in sample_files("fbx/ufbx__ufbx/data", ending=".fbx")
                if pattern.match(os.path.basename(path))]

    @staticmethod
    def corners_at(path, scene, frame):
        resource_set = qdsg.load_resource_set(path)
        root = resource_set.scene_graph
        if frame and resource_set.animations:
            # Of several, the file's name says which.
            named = [animation for animation in resource_set.animations
                     if animation.name and animation.name.lower().endswith(scene.split("_")[-1])]
            rate = FRAMES_PER_SECOND.get(scene.split("_")[0], OTHER_FRAMES_PER_SECOND)
            (named or resource_set.animations)[0].pose(root, float(frame) / rate)
        positions, normals, texcoords = our_corners(root)
        if scene in TURNED:
            turn = numpy.array([[1, 0, 0], [0, 0, -1], [0, 1, 0]])
            positions, normals = positions.dot(turn) * TURNED[scene], normals.dot(turn)
        return positions, normals, texcoords

    def compare(self, ours, theirs, path, name):
        """Which kinds of numbers both have; they agree."""
        size = numpy.ptp(theirs[0], axis=0).max()
        for n, kind in enumerate(("positions", "normals", "texture coordinates")):
            if theirs[n] is None or ours[n] is None or (n == 1 and name.startswith(OTHER_NORMALS)):
                continue
            some, others = [numpy.hstack([part[0] / size] + ([part[n]] if n else [])) for part in (ours, theirs)]
            for gap in worst_gap(some, others), worst_gap(others, some):
                self.assertLess(gap, TOLERANCE, (os.path.basename(path), name, kind))
            yield kind


@unittest.skipUnless(os.path.isdir(FRAMES), "no samples at " + SAMPLES)
class VersionsTest(TestCase):
    """One scene in several versions and encodings is one scene."""

    # Said differently by the exporters: units, spot lights, colours, textures without image or in layers.
    OTHERS = ("blender_279", "max2009_blob", "max2009_cube_texture", "maya_blend_shape_cube", "maya_material_chart",
              "maya_texture_", "zbrush_d20")

    def test_versions_agree(self):
        scenes = {}
        for path in sample_files("fbx/ufbx__ufbx/data", ending=".fbx"):
            name = os.path.basename(path)
            if re.search(r"_\d{4}_(ascii|binary)\.fbx$", name) and not name.startswith(self.OTHERS):
                scenes.setdefault(re.sub(r"_\d{4}_.*", "", name), []).append(path)
        for paths in scenes.values():
            described = [self.describe(qdsg.load(path)) for path in paths]
            for path, one in zip(paths, described):
                self.assertEqual(one, described[-1], path)
        self.assertGreater(sum(map(len, scenes.values())) - len(scenes), 80)

    def describe(self, root):
        # Old versions have no names for lights and cameras.
        return [self.simplify((None if node.lights or node.camera else node.global_name, node.visible,
                               node.world_transform.matrix, node.material, node.lights, node.camera,
                               [len(binding.vertices) for binding in node.geom_bindings])) for node in walk(root)]

    def simplify(self, value):
        """Versions round differently, and the places of images differ."""
        if isinstance(value, dict):
            return {key: self.simplify(one) for key, one in value.items() if key != "name" or "diffuse" in value}
        if isinstance(value, (tuple, list)):
            return [self.simplify(one) for one in value]
        return round(value, 3) if isinstance(value, float) else re.split(r"[/\\]", str(value))[-1]


@unittest.skipUnless(os.path.isdir(os.path.join(SAMPLES, "blender", "fbx")), "no samples at " + SAMPLES)
class TruthTest(TruthChecks):
    """At rest. Scenes in FBX are turned from Z up to Y up and made a hundred times as large."""

    # Exported as it was.
    UNIT = {"hierarchy3_unitscale": 0.01}

    def test_nodes_and_meshes(self):
        checked = {"nodes": 0, "meshes": 0}
        for name, path, truth in self.scenes():
            turn = [[number * (self.UNIT.get(name, 1) if row < 3 else 1) for number in numbers]
                    for row, numbers in enumerate(truth["fbx_from_blender"])]
            nodes = {node.global_name: node for node in walk(qdsg.load(path))}
            for expected in truth["nodes"]:
                node = nodes[self.text(expected["name"])]
                # Lights and cameras stand in a child that has the axes of ours, as they were before the export.
                carriers = [child for child in node.children if child.lights or child.camera]
                self.check_matrix((carriers or [node])[0], multiply(turn, expected["matrix_world"]),
                                  (name, expected["name"]), tolerance=1e-4)
                checked["nodes"] += 1
                for mesh in truth["meshes"]:
                    if mesh["name"] == expected.get("data"):
                        self.check_mesh(node, mesh, (name, expected["name"]))
                        checked["meshes"] += 1
        self.assertGreater(min(checked.values()), 35)

    def test_materials(self):
        checked = 0
        for name, path, truth in self.scenes():
            expected = {self.text(material["name"]): material for material in truth["materials"]}
            for material in [node.material for node in walk(qdsg.load(path)) if node.material]:
                wanted = expected[material["name"]]
                self.check_slot(material["diffuse"], wanted["base_color"][:3], wanted["base_texture"], name)
                self.check_slot(material["normalMap"], (0, 0, 0), wanted["normal_texture"], name)
                self.check_slot(material["emission"], (wanted["emission"] or (0, 0, 0))[:3], None, name)
                self.assertAlmostEqual(material["total_transparency"], wanted["alpha"], 5)
                self.assertAlmostEqual(material["shininess"], (10 * (1 - wanted["roughness"])) ** 2, 4)
                checked += 1
        self.assertGreater(checked, 20)

    def check_slot(self, value, color, texture, name):
        if texture is None:
            for one, two in zip(value, color):
                self.assertAlmostEqual(one, two, 5, msg=name)
        else:
            self.assertEqual((value["texture"].split("/")[-1], value["set"]), (texture.split("/")[-1], 0), name)

    @staticmethod
    def text(name):
        return name.encode("utf-8") if str is bytes else name

    @staticmethod
    def scenes():
        for path in sample_files("blender/fbx", ending=".fbx"):
            name = os.path.basename(path)[:-len(".fbx")]
            truth = re.sub("_(embedded|unitscale)$", "", name) + ".json"
            truth = os.path.join(SAMPLES, "blender", "truth", truth)
            if os.path.exists(truth):
                with open(truth) as file:
                    yield name, path, json.load(file)
