"""How a script of tests counts and ends: with one line "N passed, M failed", which ./test reads."""

import sys
import unittest


class Checks:
    """Counts single checks and prints those that fail."""

    def __init__(self):
        self.passed = 0
        self.failed = 0

    def true(self, what_is_wrong_otherwise, condition):
        if condition:
            self.passed += 1
        else:
            self.fail(what_is_wrong_otherwise)

    def equal(self, what, found, wanted):
        self.true(f"{what}: found {found!r}, expected {wanted!r}", found == wanted)

    def fail(self, what_is_wrong):
        self.failed += 1
        print(f"FAILED: {what_is_wrong}")

    def finish(self):
        """Prints the line; the result is the script's exit code. To have checked nothing is a failure."""
        print(f"{self.passed} passed, {self.failed} failed")
        return 1 if self.failed or not self.passed else 0


def run_tests():
    """Runs the test cases of the script that was started, and ends it."""
    outcome = unittest.main(argv=sys.argv[:1], exit=False).result
    failed = len(outcome.failures) + len(outcome.errors)
    print(f"{outcome.testsRun - len(outcome.skipped) - failed} passed, {failed} failed")
    sys.exit(not outcome.wasSuccessful())
