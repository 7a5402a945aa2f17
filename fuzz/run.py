"""Runs every fuzz target from its kept corpus, with other seeds each time.

usage: fuzz/run.py REPORT SECONDS PROCESSORS [FRESH]

The seconds are those of all targets together; FRESH is how many new inputs each tries at most. Writes a JUnit
report with one test for each target. What a target finds is left in build/fuzz-findings, and how to repeat it is
printed.
"""

import concurrent.futures
import functools
import random
import sys
import xml.etree.ElementTree as ElementTree

from target import Target, targets


def shares(count: int, seconds: int) -> list[int]:
    """Whole seconds, one at least. Who gets more changes from run to run."""
    each, rest = divmod(max(seconds, count), count)
    divided = [each + 1] * rest + [each] * (count - rest)
    random.shuffle(divided)
    return divided


def fuzz(target: Target, seconds: int, fresh: int | None) -> str:
    """What the target says when it fails, or nothing."""
    if not target.corpus.is_dir() or not any(target.corpus.iterdir()):
        return f"{target.corpus} is empty"
    run = target.run(seconds, fresh)
    print(f"{target.name}: {run}", flush=True)
    return run.complaint


def main() -> int:
    report, seconds, processors = sys.argv[1], int(sys.argv[2]), int(sys.argv[3])
    fresh = int(sys.argv[4]) if len(sys.argv) > 4 else None
    chosen = targets()
    if not chosen:
        sys.exit("there are no fuzz targets; tools/lib/build_preset sanitize builds them")
    with concurrent.futures.ThreadPoolExecutor(processors) as pool:
        complaints = list(pool.map(functools.partial(fuzz, fresh=fresh), chosen, shares(len(chosen), seconds)))
    suite = ElementTree.Element("testsuite", name="fuzz")
    for target, complaint in zip(chosen, complaints):
        case = ElementTree.SubElement(suite, "testcase", name=target.name)
        if complaint:
            print(complaint)
            ElementTree.SubElement(case, "failure").text = "failed"
    ElementTree.ElementTree(suite).write(report)
    return 1 if any(complaints) else 0


if __name__ == "__main__":
    sys.exit(main())
