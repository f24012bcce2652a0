"""Runs the unittest files of a folder under the running interpreter (2.7 or 3).

The last line says "N passed, N failed, N skipped", which scripts/test adds up.
"""
import sys
import unittest


def main():
    tests = unittest.defaultTestLoader.discover(sys.argv[1])
    result = unittest.TextTestRunner(stream=sys.stdout, verbosity=1).run(tests)
    # Several failed subtests count as the one test that they belong to.
    broken = result.failures + result.errors + [(test, "") for test in result.unexpectedSuccesses]
    failed = len(set(getattr(test, "test_case", test).id() for test, _ in broken))
    skipped = len(result.skipped)
    # A fault outside of a test (in setUpClass, say) is a failure without a test of its own.
    passed = max(0, result.testsRun - failed - skipped)
    sys.stdout.flush()
    print("%d passed, %d failed, %d skipped" % (passed, failed, skipped))
    return 1 if failed or not result.testsRun else 0


sys.exit(main())
