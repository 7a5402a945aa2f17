"""Builds what the test suites need, runs them side by side, and adds up what they report."""

import argparse
import contextlib
import os
import pathlib
import re
import shutil
import signal
import subprocess
import sys
import tempfile
import threading
import time
import xml.etree.ElementTree as ElementTree
from collections.abc import Sequence
from dataclasses import dataclass, field

ROOT = pathlib.Path(__file__).resolve().parent.parent
BUILD = ROOT / "build"
# What tests look for that can try more than they usually do.
THOROUGH = "BRANTEL_THOROUGH"
WINE = str(ROOT / "tools" / "wine")
PYTHON = "/usr/bin/python3"
MODULE = ROOT / "out" / "win32" / "Brantel_Notifications.dll"
USABLE_PROCESSORS = sorted(os.sched_getaffinity(0))
PROCESSORS = len(USABLE_PROCESSORS)
HALF_THE_PROCESSORS = max(1, PROCESSORS // 2)
# What a suite has to put away that is interrupted: servers, registrations, a Wine prefix.
SECONDS_TO_END = 20


@dataclass(frozen=True)
class Step:
    """Something that has to be done before suites can be run."""
    name: str
    command: tuple[str, ...]
    can_be_ended: bool = True


def build(preset: str, *targets: str) -> Step:
    """A preset, or some of its targets."""
    return Step(preset, (str(ROOT / "tools" / "lib" / "build_preset"), preset, *targets))


SETUP = str(ROOT / "tools" / "setup")
# An installation is not to be left half made, and sudo may ask for a password.
PACKAGES = Step("the installation of packages", (SETUP, "test-packages"), can_be_ended=False)
WINE_PREFIX = Step("the set-up of Wine", (SETUP, "test"), can_be_ended=False)
LINT_SETUP = Step("the installation of packages for the lint", (SETUP, "lint"), can_be_ended=False)
BENCH_SETUP = Step("the installation of packages for the benchmarks", (SETUP, "bench"), can_be_ended=False)
WIN64_SETUP = Step("the set-up for 64-bit Windows", (SETUP, "win64"), can_be_ended=False)
WIN64_TESTS_SETUP = Step("the set-up for 64-bit Windows and its tests", (SETUP, "win64-tests"), can_be_ended=False)
# For this the machine is set up already when this program starts.
RELEASE = build("win32")
# First what the suites need that mostly wait, so that they wait while the rest is built.
SIMULATOR = build("sim", "modemsim")
FAR_ENDS = build("sanitize", "modemsim", "text_converter")
DRIVERS = build("win32-tests", "notifier_driver", "mail_series", "popup_tests")
WINDOWS_TESTS = build("win32-tests")
SOAK = build("win32-tests", "soak_tests")
WINDOWS_UNIT_TESTS = build("win32-tests", "unit_tests")
SANITIZED = build("sanitize")
NATIVE = build("native")
RELEASE_64 = build("win64")
WINDOWS_TESTS_64 = build("win64-tests", "all", "unit_tests")
BUILDS = [RELEASE, SIMULATOR, FAR_ENDS, DRIVERS, WIN64_SETUP, RELEASE_64, WINDOWS_TESTS, SOAK, WINDOWS_UNIT_TESTS,
          SANITIZED, NATIVE, LINT_SETUP, BENCH_SETUP, WIN64_TESTS_SETUP, WINDOWS_TESTS_64]


@dataclass(frozen=True)
class Suite:
    name: str
    shows: str
    command: list[str]  # RESULTS stands for the file into which the suite writes its JUnit report
    builds: list[Step]
    least: int  # tests: with fewer, some have got lost
    seconds: int  # far above what the suite needs on a slow and busy machine, so that only a hang ends
    busy: float = 1  # processors that it keeps busy
    environment: dict[str, str] = field(default_factory=dict)
    wine: bool = False
    # Windows programs and Wine's server wake one another all the time, which takes up to twice as long, and twice as
    # much of the processors, where each wakes on another one. Not with --thorough, for what threads do only on two.
    on_one_processor: bool = False
    for_maintainers: bool = False
    is_thorough: bool = False  # so that it is run with --thorough, too

    @property
    def steps(self) -> list[Step]:
        return [PACKAGES, *([WINE_PREFIX] if self.wine else []), *self.builds]

    def narrowed(self, name: str) -> list[str]:
        """The command that runs the tests of that name alone; none where that cannot be said."""
        if "pytest" in self.command:
            return [*self.command, "-k", name]
        if any(word.startswith("--gtest_output") for word in self.command):
            return [*self.command, f"--gtest_filter=*{name}*"]
        return []


def gtest(program: str) -> list[str]:
    return [str(BUILD / program), "--gtest_output=xml:RESULTS", "--gtest_brief=1"]


def wine_gtest(program: str) -> list[str]:
    return [WINE, *gtest(program)]


def pytest(folder: str | pathlib.Path) -> list[str]:
    return [PYTHON, "-m", "pytest", "-q", "-p", "no:cacheprovider", "--junit-xml=RESULTS",
            str(ROOT / "tests" / folder)]


def fuzz(seconds: int, processors: int, *fresh: str) -> list[str]:
    """So many seconds for all targets together, and so many new inputs for each, if there is such a number."""
    return [PYTHON, str(ROOT / "fuzz" / "run.py"), "RESULTS", str(seconds), str(processors), *fresh]


PICTURES = ROOT / "tests" / "console" / "pictures_test.py"
MODULE_VARIABLE = {"BRANTEL_MODULE": "Z:" + str(MODULE).replace("/", "\\")}

# The longest first; those that mostly wait for real time, and beside the others, before them.
SUITES = [
    Suite("voice", "calls people on a simulated telephone exchange", pytest("voice"),
          [RELEASE, DRIVERS], 35, 1800, 0.2, MODULE_VARIABLE, wine=True, on_one_processor=True),
    Suite("modem", "calls beepers and paging centres through simulated modems", pytest("modem"),
          [RELEASE, FAR_ENDS], 60, 1800, 0.2, wine=True, on_one_processor=True),
    Suite("host", "runs notifyhost, the reference host, as a person would", pytest("host"),
          [RELEASE], 60, 1800, 0.8, wine=True, on_one_processor=True),
    Suite("console", "walks the web console in a real browser, with scripts and without",
          [*pytest("console"), f"--ignore={PICTURES}"], [RELEASE], 65, 1800, 0.6, wine=True),
    Suite("watch", "watches services that die and return, is killed, and runs as a service", pytest("watch"),
          [RELEASE], 16, 1800, 0.2, wine=True, on_one_processor=True),
    Suite("mail", "sends mail through real mail servers on a loopback address", pytest("mail"),
          [RELEASE, FAR_ENDS, DRIVERS], 100, 1800, 0.5, wine=True, on_one_processor=True),
    Suite("popup", "sends pop-ups through a simulated messenger service", pytest("popup"),
          [RELEASE, DRIVERS], 60, 1800, 0.5, wine=True, on_one_processor=True),
    Suite("package", "installs, upgrades, repairs and removes the release, and looks into its archives",
          pytest("package"), [RELEASE], 23, 1800, 0.7, wine=True, on_one_processor=True),
    Suite("desktop", "looks at the dialogs and listens to the sounds", pytest("desktop"),
          [RELEASE, DRIVERS], 20, 1800, 0.6, MODULE_VARIABLE, wine=True, on_one_processor=True),
    Suite("module", "drives the released module through its exports and interfaces alone",
          wine_gtest("win32-tests/tests/module/module_tests.exe"), [RELEASE, WINDOWS_TESTS], 1100, 1800, 0.8,
          environment=MODULE_VARIABLE, wine=True, on_one_processor=True),
    Suite("unit", "tests each room with clang++ under the address and undefined-behaviour sanitizers",
          gtest("sanitize/tests/unit/unit_tests"), [SANITIZED], 2000, 1200, 0.8),
    Suite("web", "shows the web forms in a real browser", pytest("web"), [SANITIZED], 5, 1800),
    Suite("torture", "has every allocation and every call on the system fail in turn, and cuts every session",
          gtest("sanitize/tests/torture/torture_tests"), [SANITIZED], 174, 1200),
    Suite("fuzz", "feeds hostile bytes to what parses bytes from outside, five hundred new inputs each",
          fuzz(20, HALF_THE_PROCESSORS, "500"), [SANITIZED], 34, 1200, HALF_THE_PROCESSORS),
    Suite("paging", "has the pages for paging centres taken apart by other programs", pytest("paging"),
          [SANITIZED], 5, 1200),
    Suite("shells", "tests what the module's rooms have for Windows alone",
          wine_gtest("win32-tests/tests/unit/shell_tests.exe"), [WINDOWS_TESTS], 90, 1200, wine=True,
          on_one_processor=True),
    Suite("demo", "runs the demo, looks at its console, and ends it", pytest("demo"), [RELEASE, SIMULATOR], 1, 1800,
          0.7, wine=True, for_maintainers=True, is_thorough=True),
    Suite("runner", "interrupts ./test, of which nothing is left then", pytest("runner"),
          [RELEASE, FAR_ENDS, DRIVERS], 2, 1800, 0.5, for_maintainers=True, is_thorough=True),
    Suite("bench", "runs benchmarks, once around", pytest("bench"), [RELEASE, DRIVERS, BENCH_SETUP], 2, 1800,
          for_maintainers=True, is_thorough=True),
    Suite("win64", "tries module and host for 64-bit Windows: what can differ from those for 32 bits", pytest("win64"),
          [RELEASE, FAR_ENDS, WIN64_SETUP, RELEASE_64], 32, 1800, 0.6, wine=True, for_maintainers=True,
          is_thorough=True),
    Suite("soak", "sends alerts and opens dialogs by the thousand, then sends from 16 threads for ten minutes",
          wine_gtest("win32-tests/tests/soak/soak_tests.exe"), [RELEASE, SOAK], 19, 7200,
          PROCESSORS, MODULE_VARIABLE, wine=True, for_maintainers=True),
    Suite("pictures", "takes a picture of each page of the console, and looks whether it is as light or dark as asked",
          pytest(PICTURES), [RELEASE], 1, 1800, 0.7, wine=True, for_maintainers=True, is_thorough=True),
    Suite("crowd", "has fifty clients ask the web console a thousand times each",
          [*pytest("console"), "-k", "fifty_clients"], [RELEASE], 1, 3600, PROCESSORS,
          {"CONSOLE_REQUESTS": "1000"}, wine=True, for_maintainers=True),
    Suite("kills", "kills a watch two hundred times", [*pytest("watch"), "-k", "kill"], [RELEASE], 1, 7200, 0.5,
          {"WATCH_KILLS": "200"}, wine=True, for_maintainers=True),
    Suite("send-kills", "kills two hundred sends", [*pytest("host"), "-k", "killed_sends"], [RELEASE], 1, 3600, 0.5,
          {"SEND_KILLS": "200"}, wine=True, for_maintainers=True),
    Suite("unit-windows", "tests each portable room, built for Windows",
          wine_gtest("win32-tests/tests/unit/unit_tests.exe"), [WINDOWS_UNIT_TESTS], 2650, 1200, wine=True,
          for_maintainers=True, is_thorough=True),
    Suite("win64-all", "runs the suites for Windows against module and host for 64-bit Windows", pytest("win64"),
          [RELEASE, FAR_ENDS, WIN64_SETUP, RELEASE_64, WIN64_TESTS_SETUP, WINDOWS_TESTS_64], 36, 7200,
          environment={"WIN64_TESTS": "all"}, wine=True, for_maintainers=True),
    Suite("lint", "checks the form of sources and scripts, as far as that is quickly done",
          [PYTHON, str(ROOT / "tools" / "lint"), "--quick", "RESULTS"], [LINT_SETUP], 3, 600, for_maintainers=True),
    Suite("native", "tests each room with g++, each source compiled alone",
          gtest("native/tests/unit/unit_tests"), [NATIVE], 2000, 1200, for_maintainers=True, is_thorough=True),
    Suite("tidy", "checks the form of all sources, by clang-tidy too",
          [PYTHON, str(ROOT / "tools" / "lint"), "RESULTS"], [LINT_SETUP, BENCH_SETUP], 500, 9600, PROCESSORS,
          for_maintainers=True, is_thorough=True),
    Suite("long-fuzz", "does for five minutes what fuzz does for a moment", fuzz(300, PROCESSORS),
          [SANITIZED], 34, 3600, PROCESSORS, for_maintainers=True, is_thorough=True),
]


@contextlib.contextmanager
def virtual_screen(environment: dict[str, str]):
    """Runs an X server for Windows programs, on a display number that is free."""
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
    """A Wine prefix: suites write to its registry."""
    folder = tempfile.mkdtemp(prefix="brantel_test_")
    environment["WINEPREFIX"] = f"{folder}/prefix"
    try:
        yield
    finally:
        for option in ("-k", "-w"):
            subprocess.run([WINE, "--server", option], env=environment, stdout=subprocess.DEVNULL,
                           stderr=subprocess.DEVNULL)
        shutil.rmtree(folder, ignore_errors=True)


@dataclass
class Result:
    passed: int = 0
    failed: list[str] = field(default_factory=list)  # their names, empty for the suite itself
    told: list[str] = field(default_factory=list)  # by tests, of what they have done
    output: str = ""


def read_report(report: pathlib.Path, result: Result) -> None:
    """A test that was skipped has not passed."""
    for case in ElementTree.parse(report).getroot().iter("testcase"):
        result.told += [entry.get("value", "") for entry in case.iter("property") if entry.get("name") == "told"]
        if any(case.find(tag) is not None for tag in ("failure", "error", "skipped")):
            result.failed.append(test_name(case))
        elif case.get("status") != "notrun":
            result.passed += 1


def test_name(case: ElementTree.Element) -> str:
    """The name by which -k finds the test of a report."""
    name, group = case.get("name", ""), case.get("classname", "")
    if name.startswith("test_"):
        # The names of parameters may hold what pytest would take for operators.
        return name if re.fullmatch(r"[\w.\[\]-]+", name) else name.partition("[")[0]
    return f"{group}.{name}" if group else name


class Runner:
    """Takes steps and runs suites, and ends them with itself."""

    def __init__(self, name: str | None, shared_prefix: pathlib.Path):
        self._name = name
        self._shared_prefix = shared_prefix
        self._running: set[subprocess.Popen] = set()
        self.has_ended = False

    def take(self, step: Step) -> bool:
        """Whether it succeeded."""
        if self.has_ended:
            return False
        if not step.can_be_ended:
            return subprocess.run(step.command, stdin=subprocess.DEVNULL).returncode == 0
        process = self._start(step.command)
        try:
            return process.wait() == 0
        finally:
            self._running.discard(process)

    def run(self, suite: Suite) -> Result:
        with contextlib.ExitStack() as stack:
            # What a person has set for tests of other projects would change which of these are run, and
            # pictures are not to be made anew by a run that should compare them.
            environment = {variable: text for variable, text in os.environ.items()
                           if not variable.startswith(("GTEST_", "PYTEST_", "BRANTEL_UPDATE_"))}
            environment |= suite.environment
            if suite.wine:
                environment["BRANTEL_SHARED_PREFIX"] = str(self._shared_prefix)
                stack.enter_context(virtual_screen(environment))
                stack.enter_context(wine_prefix(environment))
            folder = stack.enter_context(tempfile.TemporaryDirectory(prefix="brantel_report_", dir=BUILD))
            return self._run_in(suite, environment, pathlib.Path(folder) / "report.xml")

    def _run_in(self, suite: Suite, environment: dict[str, str], report: pathlib.Path) -> Result:
        result = Result()
        # A Windows program understands a relative path.
        command = [word.replace("RESULTS", str(report.relative_to(ROOT)))
                   for word in (suite.narrowed(self._name) if self._name else suite.command)]
        process = self._start(command, env=environment, stdout=subprocess.PIPE, stderr=subprocess.STDOUT)
        complaint = ""
        try:
            output, _ = process.communicate(timeout=suite.seconds)
        except subprocess.TimeoutExpired:
            self._send(process, signal.SIGKILL)
            output, _ = process.communicate()
            complaint = f"no end after {suite.seconds} s"
        finally:
            self._running.discard(process)
        try:
            if report.exists():
                read_report(report, result)
        except ElementTree.ParseError as problem:
            complaint = complaint or f"its report cannot be read: {problem}"
        count = result.passed + len(result.failed)
        if not complaint and process.returncode != 0 and not result.failed:
            complaint = f"ended with {process.returncode}, though no test failed"
        least = 1 if self._name else suite.least
        if not complaint and count < least:
            complaint = f"{count} tests were run, and there are at least {least}"
        result.output = output.decode("utf-8", "replace")
        if complaint:
            result.failed.append("")
            result.output += f"\n{suite.name}: {complaint}\n"
        return result

    def _start(self, command: Sequence[str], **options) -> subprocess.Popen:
        """In a group of its own, to be ended with all that it starts."""
        process = subprocess.Popen(command, cwd=ROOT, stdin=subprocess.DEVNULL, process_group=0, **options)
        self._running.add(process)
        if self.has_ended:
            self._send(process, signal.SIGKILL)
        return process

    def end_all(self) -> None:
        """Interrupts what runs, for it to put away what it has made, and kills what does not end."""
        self.has_ended = True
        running = list(self._running)
        for process in running:
            self._send(process, signal.SIGINT)
        deadline = time.monotonic() + SECONDS_TO_END
        for process in running:
            try:
                process.wait(max(0, deadline - time.monotonic()))
            except subprocess.TimeoutExpired:
                self._send(process, signal.SIGKILL)

    @staticmethod
    def _send(process: subprocess.Popen, number: signal.Signals) -> None:
        with contextlib.suppress(ProcessLookupError):
            os.killpg(process.pid, number)


class Session:
    """One run of ./test: sets up and builds one thing after the other, and starts each suite as soon as what
    it needs is there and processors are free."""

    def __init__(self, suites: list[Suite], runner: Runner, is_thorough: bool):
        self._waiting = list(suites)
        self._is_thorough = is_thorough
        self._builds = [build for build in BUILDS if any(build in suite.builds for suite in suites)]
        self._needs_wine = any(suite.wine for suite in suites)
        self._done: set[Step] = set()
        self._failed: set[Step] = set()
        self._busy = 0.0
        self._busy_alone = dict.fromkeys(USABLE_PROCESSORS, 0.0)  # with suites that are kept to one
        self._changed = threading.Condition()
        self._results: dict[str, Result] = {}
        self._runner = runner

    def run(self) -> dict[str, Result]:
        builders = [threading.Thread(target=self._set_up, daemon=True),
                    threading.Thread(target=self._build_all, daemon=True)]
        for thread in builders:
            thread.start()
        suites: list[threading.Thread] = []
        try:
            with self._changed:
                while self._waiting:
                    if suite := self._startable():
                        self._waiting.remove(suite)
                        suites.append(threading.Thread(target=self._run, args=(suite, self._occupy(suite)),
                                                       daemon=True))
                        suites[-1].start()
                    else:
                        self._changed.wait()
                # Not by their joins: Python takes a thread for ended whose join a signal has interrupted.
                self._changed.wait_for(lambda: len(self._results) == len(suites))
            for thread in builders:
                thread.join()
        finally:
            self._runner.end_all()
            # With them go their screens and Wine prefixes.
            for thread in suites:
                thread.join()
        return self._results

    def _startable(self) -> Suite | None:
        for suite in self._waiting:
            if self._failed.intersection(suite.steps):
                return suite
            # All of them wait at times.
            free = self._busy + suite.busy <= 2 * PROCESSORS or self._busy == 0
            if free and self._done.issuperset(suite.steps):
                return suite
        return None

    def _occupy(self, suite: Suite) -> int | None:
        """Which processor the suite is kept to."""
        self._busy += suite.busy
        if not suite.on_one_processor or self._is_thorough:
            return None
        processor = min(self._busy_alone, key=self._busy_alone.__getitem__)
        self._busy_alone[processor] += suite.busy
        return processor

    def _leave(self, suite: Suite, processor: int | None) -> None:
        self._busy -= suite.busy
        if processor is not None:
            self._busy_alone[processor] -= suite.busy

    def _take(self, step: Step) -> None:
        succeeded = self._runner.take(step)
        with self._changed:
            (self._done if succeeded else self._failed).add(step)
            self._changed.notify_all()

    def _set_up(self) -> None:
        self._take(PACKAGES)
        if self._needs_wine and self._has_packages():
            self._take(WINE_PREFIX)

    def _build_all(self) -> None:
        for build in self._builds:
            if build != RELEASE and not self._has_packages():
                return
            self._take(build)

    def _has_packages(self) -> bool:
        with self._changed:
            self._changed.wait_for(lambda: PACKAGES in self._done | self._failed)
            return PACKAGES in self._done

    def _run(self, suite: Suite, processor: int | None) -> None:
        started = time.monotonic()
        if processor is not None:
            os.sched_setaffinity(0, {processor})  # for this thread, and what it starts
        try:
            failed = [step.name for step in suite.steps if step in self._failed]
            if failed:
                result = Result(failed=[""], output=f"{suite.name}: {failed[0]} failed\n")
            else:
                result = self._runner.run(suite)
        except Exception as problem:  # whatever it is, the other suites go on
            result = Result(failed=[""], output=f"{problem}\n")
        with self._changed:
            if not self._runner.has_ended:
                self._tell(suite, result, time.monotonic() - started)
            self._results[suite.name] = result
            self._leave(suite, processor)
            self._changed.notify_all()

    @staticmethod
    def _tell(suite: Suite, result: Result, seconds: float) -> None:
        if result.failed:
            sys.stdout.write(result.output)
        print("\n  ".join([f"{suite.name}: {result.passed} passed, {len(result.failed)} failed ({seconds:.0f} s)",
                           *result.told]), flush=True)


def describe(suites: list[Suite]) -> str:
    return "\n".join(f"  {suite.name:<14}{suite.shows}" for suite in suites)


def parse_arguments() -> argparse.Namespace:
    parser = argparse.ArgumentParser(
        prog="./test", formatter_class=argparse.RawDescriptionHelpFormatter,
        description="Sets the machine up where that is not done yet, builds what the test suites need, runs\n"
                    "all of them or those named, and ends with \"N passed, N failed\".",
        epilog=f"suites:\n{describe([suite for suite in SUITES if not suite.for_maintainers])}\n\n"
               "run only when they are named:\n"
               f"{describe([suite for suite in SUITES if suite.for_maintainers])}")
    parser.add_argument("suites", nargs="*", metavar="SUITE", help="a suite to run instead of all")
    parser.add_argument("--thorough", action="store_true",
                        help=f"try more where things are tried by number or by chance, and run beside the usual suites "
                             f"{', '.join(suite.name for suite in SUITES if suite.is_thorough)}: for CI")
    parser.add_argument("-k", metavar="NAME", help="run only the tests with this in their names")
    return parser.parse_args()


def chosen_suites(names: list[str], is_thorough: bool) -> list[Suite]:
    unknown = set(names) - {suite.name for suite in SUITES}
    if unknown:
        sys.exit(f"no such suite: {', '.join(sorted(unknown))}; there are "
                 f"{', '.join(suite.name for suite in SUITES)}")
    if names:
        return [suite for suite in SUITES if suite.name in names]
    return [suite for suite in SUITES if not suite.for_maintainers or is_thorough and suite.is_thorough]


def print_failures(suites: list[Suite], results: dict[str, Result]) -> None:
    """Tells how to run what failed alone."""
    for suite in suites:
        for name in dict.fromkeys(results[suite.name].failed):
            narrowed = f" -k '{name}'" if name and suite.narrowed(name) else ""
            print(f"failed: {suite.name} {name}".rstrip() + f"; alone: ./test {suite.name}{narrowed}")


def main() -> int:
    arguments = parse_arguments()
    suites = chosen_suites(arguments.suites, arguments.thorough)
    if arguments.k and (len(suites) != 1 or not suites[0].narrowed(arguments.k)):
        sys.exit("-k goes with one suite, and not with lint, tidy or fuzz")
    if any(suite.name == "mail" for suite in suites):
        # Mail servers are started by root: now is the time to ask for a password.
        subprocess.run([SETUP, "start"])
    BUILD.mkdir(exist_ok=True)
    os.environ.pop(THOROUGH, None)
    if arguments.thorough:
        os.environ[THOROUGH] = "1"
    # Ended by a signal, the suites are ended too.
    signal.signal(signal.SIGTERM, lambda *_: sys.exit(1))
    try:
        with tempfile.TemporaryDirectory(prefix="brantel_test_", ignore_cleanup_errors=True) as folder:
            # The suites' prefixes are links to this one: half a gigabyte for all, and not for each.
            runner = Runner(arguments.k, pathlib.Path(folder) / "prefix")
            results = Session(suites, runner, arguments.thorough).run()
    except KeyboardInterrupt:
        sys.exit("interrupted")
    print_failures(suites, results)
    passed = sum(result.passed for result in results.values())
    failed = sum(len(result.failed) for result in results.values())
    print(f"{passed} passed, {failed} failed")
    return 0 if failed == 0 else 1


if __name__ == "__main__":
    sys.exit(main())
