"""Converts one scene file to a NEST file and says what was written; the second half of scripts/convert."""
import os
import sys
import time

import qdsg


def count_nodes(root):
    """Counts the nodes of a scene without recursion: scenes may be deeper than Python's stack."""
    count = 0
    waiting = [root]
    while waiting:
        count += 1
        waiting.extend(waiting.pop().children)
    return count


def convert(source, target):
    begin = time.time()
    scene = qdsg.load_resource_set(source)
    loaded = time.time()
    qdsg.save_resource_set(target, scene)
    saved = time.time()
    print("%s: %d bytes, %d nodes, %d animations (loaded in %.3f s, saved in %.3f s)"
          % (target, os.path.getsize(target), count_nodes(scene.scene_graph), len(scene.animations), loaded - begin,
             saved - loaded))


def main():
    source, target = sys.argv[1:]
    qdsg.set_log_level(4)  # faults and notices, not progress
    try:
        convert(source, target)
    except (ValueError, MemoryError, EnvironmentError, SystemError) as error:
        # What the library logged about the cause stands above this line.
        sys.stdout.flush()
        sys.exit("convert: %s" % (error or type(error).__name__))


main()
