# Prints what a module for the running interpreter is built with, a line each: tag, include folders
# (";" between them), file suffix. CMake's own search doesn't know Python 2, so every interpreter is asked this way.
import os
import sys
import sysconfig

includes = []
for kind in ("include", "platinclude"):
    folder = sysconfig.get_path(kind)
    if folder not in includes:
        includes.append(folder)
if not os.path.isfile(os.path.join(includes[0], "Python.h")):
    sys.exit("no Python.h in " + includes[0])

print("cp%d%d%s" % (sys.version_info[0], sys.version_info[1], getattr(sys, "abiflags", "")))
print(";".join(includes))
print(sysconfig.get_config_var("EXT_SUFFIX") or sysconfig.get_config_var("SO"))
