"""Runs every fuzz target of a build from its kept corpus for a bounded time.

usage: fuzz/run.py BUILD_FOLDER REPORT [SECONDS [PROCESSORS]]

Writes a JUnit report with one test for each target. What a target finds is left in build/fuzz-findings.
"""

import concurrent.futures
import os
import pathlib
import subprocess
import sys
import tempfile
import xml.etree.ElementTree as ElementTree

ROOT = pathlib.Path(__file__).resolve().parent
FINDINGS = ROOT.parent / "build" / "fuzz-findings"
DEFAULT_SECONDS = 8


def fuzz(program: pathlib.Path, seconds: int) -> str:
    """What the target says when it fails, or nothing."""
    name = program.name.removesuffix("_fuzz")
    corpus = ROOT / "corpus" / name
    if not any(corpus.iterdir()):
        return f"{corpus} is empty"
    FINDINGS.mkdir(parents=True, exist_ok=True)
    with tempfile.TemporaryDirectory() as grown:
        done = subprocess.run(
            [program, f"-max_total_time={seconds}", "-max_len=8192", "-timeout=10", "-seed=1",
             f"-artifact_prefix={FINDINGS}/{name}-", grown, corpus],
            stdout=subprocess.PIPE, stderr=subprocess.STDOUT, timeout=seconds + 120)
    output = done.stdout.decode("utf-8", "replace")
    print(f"{name}: {output.strip().splitlines()[-1]}")
    return "" if done.returncode == 0 else output


def main() -> int:
    build, report = pathlib.Path(sys.argv[1]), sys.argv[2]
    seconds = int(sys.argv[3]) if len(sys.argv) > 3 else DEFAULT_SECONDS
    processors = int(sys.argv[4]) if len(sys.argv) > 4 else os.cpu_count()
    suite = ElementTree.Element("testsuite", name="fuzz")
    programs = sorted((build / "fuzz").glob("*_fuzz"))
    with concurrent.futures.ThreadPoolExecutor(processors) as pool:
        complaints = list(pool.map(lambda program: fuzz(program, seconds), programs))
    for program, complaint in zip(programs, complaints):
        case = ElementTree.SubElement(suite, "testcase", name=program.name)
        if complaint:
            print(complaint)
            ElementTree.SubElement(case, "failure").text = "failed"
    ElementTree.ElementTree(suite).write(report)
    return 1 if any(complaints) else 0


if __name__ == "__main__":
    sys.exit(main())
