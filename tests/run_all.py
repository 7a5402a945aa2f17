"""Builds the presets, runs the test suites, and adds up what they report."""

import argparse
import contextlib
import os
import pathlib
import shutil
import subprocess
import sys
import tempfile
import time
import xml.etree.ElementTree as ElementTree
from dataclasses import dataclass, field

ROOT = pathlib.Path(__file__).resolve().parent.parent
BUILD = ROOT / "build"
WINE = str(ROOT / "tools" / "wine")
MODULE = ROOT / "out" / "win32" / "Brantel_Notifications.dll"


@dataclass
class Suite:
    name: str
    command: list[str]  # RESULTS stands for the file into which the suite writes its JUnit report
    presets: list[str]
    timeout: int  # seconds; far above what the suite needs, so that a hang ends
    environment: dict[str, str] = field(default_factory=dict)
    wine: bool = False


def gtest(program: pathlib.Path) -> list[str]:
    return [str(program), "--gtest_output=xml:RESULTS", "--gtest_brief=1"]


def wine_gtest(program: pathlib.Path) -> list[str]:
    return [WINE, *gtest(program)]


def windows_path(path: pathlib.Path) -> str:
    return "Z:" + str(path).replace("/", "\\")


def pytest(folder: str) -> list[str]:
    return ["/usr/bin/python3", "-m", "pytest", "-q", "-p", "no:cacheprovider",
            "--junit-xml=RESULTS", str(ROOT / folder)]


SUITES = [
    Suite("lint", [str(ROOT / "tools" / "lint"), "RESULTS"], ["sanitize", "win32"], 1500),
    Suite("unit", gtest(BUILD / "native/tests/unit/unit_tests"), ["native"], 120),
    Suite("unit-sanitize", gtest(BUILD / "sanitize/tests/unit/unit_tests"), ["sanitize"], 300),
    Suite("fuzz", ["/usr/bin/python3", str(ROOT / "fuzz/run.py"), str(BUILD / "fuzz"), "RESULTS"],
          ["fuzz"], 900),
    Suite("web", pytest("tests/web"), ["native"], 600),
    Suite("paging", pytest("tests/paging"), ["native"], 300),
    Suite("unit-windows", wine_gtest(BUILD / "win32-tests/tests/unit/unit_tests.exe"),
          ["win32-tests"], 300, wine=True),
    Suite("module", wine_gtest(BUILD / "win32-tests/tests/module/module_tests.exe"),
          ["win32", "win32-tests"], 600, {"BRANTEL_MODULE": windows_path(MODULE)}, wine=True),
    Suite("mail", pytest("tests/mail"), ["native", "win32", "win32-tests"], 900, wine=True),
    Suite("host", pytest("tests/host"), ["win32"], 600, wine=True),
    Suite("desktop", pytest("tests/desktop"), ["win32", "win32-tests"], 600,
          {"BRANTEL_MODULE": windows_path(MODULE)}, wine=True),
    Suite("voice", pytest("tests/voice"), ["win32", "win32-tests"], 600,
          {"BRANTEL_MODULE": windows_path(MODULE)}, wine=True),
    Suite("modem", pytest("tests/modem"), ["win32", "sim"], 600, wine=True),
    Suite("popup", pytest("tests/popup"), ["win32", "win32-tests"], 900, wine=True),
]


def build(presets: list[str]) -> bool:
    return all(subprocess.run([str(ROOT / "tools/lib/build_preset"), preset]).returncode == 0
               for preset in presets)


@contextlib.contextmanager
def virtual_screen(environment: dict[str, str]):
    """Runs an X server of its own for the Windows programs, on a display number that is free."""
    reader, writer = os.pipe()
    server = subprocess.Popen(
        ["Xvfb", "-displayfd", str(writer), "-screen", "0", "1024x768x24", "-nolisten", "tcp"],
        pass_fds=[writer], stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
    os.close(writer)
    try:
        with os.fdopen(reader) as pipe:
            number = pipe.readline().strip()
        if not number:
            raise RuntimeError("Xvfb did not start")
        environment["DISPLAY"] = f":{number}"
        yield
    finally:
        server.terminate()
        server.wait()


@contextlib.contextmanager
def wine_prefix(environment: dict[str, str]):
    """Gives the suites a Wine prefix of their own: they write to its registry."""
    folder = tempfile.mkdtemp(prefix="brantel_test_")
    environment["WINEPREFIX"] = f"{folder}/prefix"
    try:
        yield
    finally:
        subprocess.run([WINE, "--server", "-k"], env=environment, stdout=subprocess.DEVNULL,
                       stderr=subprocess.DEVNULL)
        subprocess.run([WINE, "--server", "-w"], env=environment, stdout=subprocess.DEVNULL,
                       stderr=subprocess.DEVNULL)
        shutil.rmtree(folder, ignore_errors=True)


def count(report: pathlib.Path) -> tuple[int, int]:
    """Passed and failed tests of a JUnit report. A test that was skipped has not passed."""
    passed = failed = 0
    for case in ElementTree.parse(report).getroot().iter("testcase"):
        bad = any(case.find(tag) is not None for tag in ("failure", "error", "skipped"))
        failed += bad
        passed += not bad and case.get("status") != "notrun"
    return passed, failed


def run(suite: Suite, environment: dict[str, str]) -> tuple[int, int]:
    report = BUILD / "reports" / f"{suite.name}.xml"
    report.parent.mkdir(parents=True, exist_ok=True)
    report.unlink(missing_ok=True)
    command = [word.replace("RESULTS", str(report.relative_to(ROOT))) for word in suite.command]
    started = time.monotonic()
    try:
        done = subprocess.run(command, cwd=ROOT, env={**environment, **suite.environment},
                              stdin=subprocess.DEVNULL, stdout=subprocess.PIPE,
                              stderr=subprocess.STDOUT, timeout=suite.timeout)
        output, ended_well = done.stdout, done.returncode == 0
    except subprocess.TimeoutExpired as expired:
        output = (expired.stdout or b"") + f"\nno end after {suite.timeout} s\n".encode()
        ended_well = False
    try:
        passed, failed = count(report) if report.exists() else (0, 0)
    except ElementTree.ParseError as problem:
        passed = failed = 0
        output += f"\nthe report {report} cannot be read: {problem}\n".encode()
        ended_well = False
    if not ended_well and failed == 0:
        failed = 1  # it crashed, hung or reported nothing
    if ended_well and passed + failed == 0:
        failed = 1  # a suite without tests shows nothing
    seconds = time.monotonic() - started
    if failed:
        sys.stdout.write(output.decode("utf-8", "replace"))
    print(f"{suite.name}: {passed} passed, {failed} failed ({seconds:.0f} s)", flush=True)
    return passed, failed


def chosen_suites(names: list[str]) -> list[Suite]:
    unknown = set(names) - {suite.name for suite in SUITES}
    if unknown:
        sys.exit(f"no such suite: {', '.join(sorted(unknown))}; there are "
                 f"{', '.join(suite.name for suite in SUITES)}")
    return [suite for suite in SUITES if not names or suite.name in names]


def main() -> int:
    parser = argparse.ArgumentParser(prog="./test", description=__doc__)
    parser.add_argument("suites", nargs="*", metavar="SUITE",
                        help=f"one of {', '.join(suite.name for suite in SUITES)}")
    suites = chosen_suites(parser.parse_args().suites)

    presets = dict.fromkeys(preset for suite in suites for preset in suite.presets)
    if not build(list(presets)):
        print("0 passed, 1 failed")
        return 1

    environment = dict(os.environ)
    passed = failed = 0
    with contextlib.ExitStack() as stack:
        if any(suite.wine for suite in suites):
            stack.enter_context(virtual_screen(environment))
            stack.enter_context(wine_prefix(environment))
        for suite in suites:
            suite_passed, suite_failed = run(suite, environment)
            passed += suite_passed
            failed += suite_failed
    print(f"{passed} passed, {failed} failed")
    return 0 if failed == 0 else 1


if __name__ == "__main__":
    sys.exit(main())
