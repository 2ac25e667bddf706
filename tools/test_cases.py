"""How many cases a run of ctest has passed: those of GoogleTest, of Python's unittest and of JUnit, which
print their number, and one for each other test.

usage: test_cases.py JUNIT_FILE

Prints "PASSED SKIPPED".
"""
import re
import sys
import xml.etree.ElementTree

# What the libraries print at their end. unittest counts skipped cases among those that ran.
GOOGLETEST = re.compile(r"^\[  PASSED  \] (\d+) tests?\.$", re.MULTILINE)
GOOGLETEST_SKIPPED = re.compile(r"^\[  SKIPPED \] (\d+) tests?, listed below:$", re.MULTILINE)
UNITTEST = re.compile(r"^Ran (\d+) tests? in [\d.]+s$", re.MULTILINE)
UNITTEST_SKIPPED = re.compile(r"^OK \(.*skipped=(\d+).*\)$", re.MULTILINE)
JUNIT = re.compile(r"^OK \((\d+) tests?\)$", re.MULTILINE)


def total(pattern, output):
    return sum(map(int, pattern.findall(output)))


def count(output):
    """The cases that a test passed, by its output, and those that it skipped."""
    if GOOGLETEST.search(output):
        return total(GOOGLETEST, output), total(GOOGLETEST_SKIPPED, output)
    if UNITTEST.search(output):
        skipped = total(UNITTEST_SKIPPED, output)
        return total(UNITTEST, output) - skipped, skipped
    return total(JUNIT, output) or 1, 0


def main(file):
    passed = skipped = 0
    for test in xml.etree.ElementTree.parse(file).getroot().iter("testcase"):
        if test.get("status") == "run":
            more, left_out = count(test.findtext("system-out") or "")
            passed += more
            skipped += left_out
        elif test.get("status") in ("notrun", "disabled"):
            skipped += 1
    print(passed, skipped)


if __name__ == "__main__":
    main(*sys.argv[1:])
