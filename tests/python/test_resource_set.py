"""Resource sets."""
import qdsg
from qdsg_testing import TWO_BOXES, EmptyWrapper, TestCase, walk


class ResourceSetTest(TestCase):
    def test_scene_graph_is_a_copy(self):
        resource_set = qdsg.load_resource_set(TWO_BOXES)
        self.assertEqual(repr(resource_set), "<qdsg.SGResourceSet>")
        first, second = resource_set.scene_graph, resource_set.scene_graph
        self.assertIsNot(first, second)
        names = [(node.global_name, node.local_name, node.world_transform.matrix) for node in walk(first)]
        self.assertEqual(names, [(node.global_name, node.local_name, node.world_transform.matrix)
                                 for node in walk(qdsg.load(TWO_BOXES))])
        first.children[0].global_name = "changed"
        self.assertEqual([node.global_name for node in walk(second)], [name for name, _, _ in names])

    def test_set_of_a_node_holds_that_node(self):
        root = qdsg.load(TWO_BOXES)
        resource_set = qdsg.create_resource_set_from_node(root)
        root.local_name = "later"
        self.assertEqual(resource_set.scene_graph.local_name, "later")

    def test_rename_node(self):
        resource_set = qdsg.load_resource_set(TWO_BOXES)
        self.assertIsNone(resource_set.rename_node("Lid", "Top"))
        self.assertIsNone(resource_set.rename_node("Crate", "Box"))
        names = {(node.global_name, node.local_name) for node in walk(resource_set.scene_graph)}
        # A local name of its own stays; one that was the global name goes with it.
        self.assertTrue({("Top", "lid"), ("Box", "Box")} <= names, names)
        self.assert_raises_text(ValueError, "Failed to rename animation.", resource_set.rename_node, "Lid", "x")
        for arguments in (), ("Top",), ("Top", 1), (None, "x"), ("Top", "x", "y"):
            self.assert_raises_text(ValueError, "Failed to parse arguments.", resource_set.rename_node, *arguments)

    def test_animations(self):
        resource_set = qdsg.load_resource_set(TWO_BOXES)
        self.assertEqual(resource_set.animations, [])
        self.assertIsNot(resource_set.animations, resource_set.animations)

    def test_empty_wrapper(self):
        resource_set = qdsg.load_resource_set(TWO_BOXES)
        with EmptyWrapper(resource_set):
            for attribute in "scene_graph", "animations":
                self.assert_raises_text(ValueError, "Had NULL resource set", getattr, resource_set, attribute)
            self.assert_raises_text(ValueError, "Had NULL resource set", resource_set.rename_node, "a", "b")
