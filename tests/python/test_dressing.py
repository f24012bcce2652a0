"""Materials, lights and cameras of real files, beside another reader's: pycollada, where it is installed."""
import os
import unittest

import qdsg
from qdsg_testing import TestCase, walk
from test_samples import SAMPLES, read, sample_files

try:
    import collada
except ImportError:
    collada = None

SLOTS = "emission", "ambient", "diffuse", "specular"


def dressing(root):
    """The materials by name, and the lights and cameras in document order."""
    nodes = list(walk(root))
    materials = {node.material["name"]: node.material for node in nodes if node.material}
    return materials, [node.lights for node in nodes if node.lights], [n.camera for n in nodes if n.camera]


def forget_files(materials):
    """The materials as a NEST file keeps them: textures without the names of their files."""
    for material in materials.values():
        for value in material.values():
            if isinstance(value, dict):
                value["texture"] = ""
    return materials


def base_name(path):
    return os.path.basename(path.replace("\\", "/"))


@unittest.skipUnless(os.path.isdir(os.path.join(SAMPLES, "dae")), "no samples at " + SAMPLES)
class DressingTest(TestCase):
    def loaded(self):
        for path in sample_files("dae", "blender/dae"):
            try:
                yield path, qdsg.load(path)
            except ValueError:
                pass  # another test asks why

    def test_comes_back_from_nest(self):
        name = os.path.join(self.make_folder(), "dressed.nest")
        for path, root in self.loaded():
            qdsg.save_resource_set(name, qdsg.create_resource_set_from_node(root))
            materials, lights, cameras = dressing(root)
            self.assertEqual(dressing(qdsg.load_nest(name)), (forget_files(materials), lights, cameras), path)

    @unittest.skipUnless(collada, "pycollada is missing")
    def test_materials_agree_with_another_reader(self):
        compared = 0
        for path, root in self.loaded():
            if b"2005/11/COLLADASchema" not in read(path):
                continue  # textures of 1.5 are new to the other reader
            try:
                document = collada.Collada(path, ignore=[collada.common.DaeError])
            except Exception:  # pylint: disable=broad-except
                continue
            ours = dressing(root)[0]
            theirs = {material.id: material.effect for material in document.materials}
            shared = [name for name in ours if theirs.get(name) is not None]
            for name in shared:
                self.compare(ours[name], theirs[name], path, path + ": " + name)
            compared += bool(shared)
        self.assertGreaterEqual(compared, 10)

    def compare(self, ours, theirs, path, where):
        for slot in SLOTS:
            if slot == "specular" and theirs.shadingtype not in ("phong", "blinn"):
                continue  # the other models have no highlight
            value = getattr(theirs, slot)
            if isinstance(value, collada.material.Map):
                image = base_name(value.sampler.surface.image.path)
                # The marker that stands in for a missing image has no name.
                if ours[slot]["texture"] or os.path.exists(os.path.join(os.path.dirname(path), image)):
                    self.assertEqual(base_name(ours[slot]["texture"]), image, where + " " + slot)
            elif isinstance(value, tuple):
                self.assertNearlyEqual(ours[slot][:3], value[:3], where + " " + slot)
        if isinstance(theirs.shininess, float):
            self.assertNearlyEqual([ours["shininess"]], [theirs.shininess], where)
        if isinstance(theirs.transparent, tuple) and isinstance(theirs.transparency, float):
            color, factor = theirs.transparent, theirs.transparency
            rgb_zero = theirs.opaque_mode == collada.material.OPAQUE_MODE.RGB_ZERO
            opacity = ((1 - max(color[:3])) if rgb_zero else color[3]) * factor
            self.assertNearlyEqual([ours["total_transparency"]], [opacity], where)

    def assertNearlyEqual(self, ours, theirs, where):
        for one, other in zip(ours, theirs):
            self.assertAlmostEqual(one, other, delta=1e-5 * max(1.0, abs(other)), msg=where)
