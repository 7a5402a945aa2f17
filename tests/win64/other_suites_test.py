"""Tests of the other suites, with the module and the host for 64-bit Windows: what can differ with the bits, each
class's alerts by their real ways, and the host's commands. With WIN64_TESTS=all those suites as they are, and the
tests of the module and of its rooms that are programs of Windows themselves. Each suite tells how many of its tests
passed."""

import contextlib
import os
import subprocess
import sys
import xml.etree.ElementTree as ElementTree

import pytest

import run_all

from windows_programs import ROOT, WINE, windows_path, wine_prefix

CHOSEN = {
    "voice": ["voice_call_test.py::test_the_message_is_repeated_where_nobody_presses_the_key",
              "voice_call_test.py::test_the_key_brings_the_messages_for_device_and_event",
              "voice_call_test.py::test_a_call_is_made_as_telephony_wants_it",
              "telephony_test.py::test_without_the_library_no_host_is_bound"],
    "modem": ["beeper_call_test.py::test_whole_session",
              "beeper_call_test.py::test_settings_of_a_profile_and_a_trap",
              "pager_call_test.py::test_tap_with_the_settings_of_alternate_2",
              "pager_call_test.py::test_sms_tap_sends_a_block_again", "pager_call_test.py::test_ucp",
              "pager_call_test.py::test_ntt"],
    "mail": ["delivery_test.py::test_a_message_arrives_with_its_headers_and_its_body",
             "delivery_test.py::test_everybody_on_the_list_gets_the_message",
             "delivery_test.py::test_an_unknown_recipient_is_told_from_other_failures"],
    "popup": ["send_test.py::test_the_message_is_sent_in_utf16_with_two_bytes_for_each_of_its_bytes",
              "send_test.py::test_the_destination_is_sent_in_utf16",
              "send_test.py::test_a_library_of_that_name_elsewhere_is_not_loaded"],
    "host": ["module_commands_test.py::test_register_and_unregister",
             "module_commands_test.py::test_module_in_another_place",
             "send_test.py::test_alert_starts_the_program",
             "every_command_test.py::test_codes_and_objects",
             "configuration_test.py::test_operator_adds_an_instance",
             "configuration_test.py::test_operator_cancels"],
    "console": ["server_test.py::test_the_modules_pages_are_those_that_the_module_gives"],
    "package": ["program_files_test.py", "installer_test.py::test_files_and_registry_of_an_installation"],
    "watch": ["watch_test.py::test_fall_and_return_are_told", "watch_test.py::test_echo_requests"],
}
IN_FULL = {suite: ["."] for suite in [*CHOSEN, "desktop"]}
# Programs for Windows that are tests themselves.
PROGRAMS = {"module": "module/module_tests.exe", "shells": "unit/shell_tests.exe",
            "unit-windows": "unit/unit_tests.exe"}
# These mostly wait for real time.
WAITING = ("voice", "modem")

RUNS_ALL = os.environ.get("WIN64_TESTS") == "all"
SUITES = IN_FULL | PROGRAMS if RUNS_ALL else CHOSEN
MODULE = ROOT / "out" / "win64" / "Brantel_Notifications.dll"


# As many of a suite's tests are there for 64 bits as for 32; of those that are chosen each is there, or it fails.
LEAST = {suite.name: suite.least if RUNS_ALL else 1 for suite in run_all.SUITES}


class Run:
    """A run of a suite under way."""

    def __init__(self, suite: str, folder, environment: dict[str, str]):
        self.suite = suite
        self.report = folder / "report.xml"
        self.output = folder / "output"
        with self.output.open("w") as output:
            self.process = subprocess.Popen(command_of(suite, self.report), cwd=ROOT, env=environment,
                                            stdin=subprocess.DEVNULL, stdout=output, stderr=subprocess.STDOUT)

    def check(self) -> str:
        """Waits for its end, and tells how many of its tests passed, which are all."""
        assert self.process.wait() == 0, self.output.read_text(errors="replace")
        result = run_all.Result()
        run_all.read_report(self.report, result)
        assert result.failed == []
        assert result.passed >= LEAST[self.suite]
        return ", ".join([f"{self.suite}: {result.passed} passed ({seconds_of(self.report):.0f} s)", *result.told])


def seconds_of(report) -> float:
    """Of all tests in it: groups of tests have times of their own."""
    return max(float(element.get("time", "0")) for element in ElementTree.parse(report).getroot().iter())


def command_of(suite: str, report) -> list:
    if suite in PROGRAMS:
        return [WINE, ROOT / "build" / "win64-tests" / "tests" / PROGRAMS[suite], "--gtest_brief=1",
                f"--gtest_output=xml:{windows_path(report)}"]
    return [sys.executable, "-m", "pytest", "-q", "-p", "no:cacheprovider", f"--junit-xml={report}",
            *(ROOT / "tests" / suite / test for test in SUITES[suite])]


@contextlib.contextmanager
def running(suite: str):
    with wine_prefix(BRANTEL_BITS="64", BRANTEL_MODULE=windows_path(MODULE)) as prefix:
        run = Run(suite, prefix.folder, prefix.environment)
        try:
            yield run
        finally:
            run.process.kill()
            run.process.wait()


@pytest.fixture(scope="module")
def waiting():
    """Those that mostly wait, beside the others."""
    with contextlib.ExitStack() as runs:
        yield {suite: runs.enter_context(running(suite)) for suite in WAITING}


@pytest.mark.parametrize("suite", [suite for suite in SUITES if suite not in WAITING])
def test_suite(waiting, suite, record_property):
    with running(suite) as run:
        record_property("told", run.check())


@pytest.mark.parametrize("suite", WAITING)
def test_suite_that_waits(waiting, suite, record_property):
    record_property("told", waiting[suite].check())
