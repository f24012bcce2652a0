"""One measurement in a process of its own: child.py WHAT [ARGUMENTS]; started by bench/compare.

The last line printed is a JSON object: the seconds that the one call took (imports and preparations are not counted),
by the clock and of the processor, and the process' peak memory in KiB.
"""
import json
import os
import sys
import time

NOTHING = {"seconds": 0.0, "cpu_seconds": 0.0}, None  # of a process that is started only


def peak_kib():
    # Not ru_maxrss: that one also remembers the memory of the process which started this one.
    with open("/proc/self/status") as status:
        for line in status:
            if line.startswith("VmHWM:"):
                return int(line.split()[1])
    raise RuntimeError("the system does not tell a process' peak memory")


def timed(call, *arguments):
    begin, cpu_begin = time.perf_counter(), time.process_time()
    result = call(*arguments)
    return {"seconds": time.perf_counter() - begin, "cpu_seconds": time.process_time() - cpu_begin}, result


def plain_write(path, data):
    with open(path, "wb", buffering=0) as file:
        file.write(data)


def plain_read(path):
    with open(path, "rb", buffering=0) as file:
        return file.read()


def new_file(path):
    """The path, with what an earlier round left there cleared away: every write makes its file anew."""
    if os.path.exists(path):
        os.remove(path)
    return path


def measure(what, arguments):
    if what == "plain-write":
        target, model = arguments
        data = b"x" * os.path.getsize(model)
        return timed(plain_write, new_file(target), data)
    if what == "plain-read":
        return timed(plain_read, arguments[0])
    if what.startswith("pycollada"):
        import collada

        return timed(collada.Collada, arguments[0]) if what == "pycollada-load" else NOTHING
    import qdsg

    if what == "qdsg-load":
        return timed(qdsg.load, arguments[0])
    if what == "qdsg-load-animated":
        return timed(qdsg.load_resource_set, arguments[0])
    if what == "qdsg-read":
        return timed(qdsg.load_nest, arguments[0])
    if what == "qdsg-save":
        resource_set = qdsg.load_resource_set(arguments[0])
        return timed(qdsg.save_resource_set, new_file(arguments[1]), resource_set)
    assert what == "qdsg-idle"
    return NOTHING


times, kept = measure(sys.argv[1], sys.argv[2:])
sys.stdout.flush()
print(json.dumps({**times, "peak_kib": peak_kib()}))
sys.stdout.flush()
os._exit(0)  # nobody waits for what is only being cleared away
