"""Tests of the other suites, with the module and the host for 64-bit Windows: what can differ with the bits, each
class's alerts by their real ways, and the host's commands. With WIN64_TESTS=all those suites as they are, and the
tests of the module and of its rooms that are programs of Windows themselves."""

import contextlib
import os
import subprocess
import sys

import pytest

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
    "package": ["installer_test.py::test_files_and_registry_of_an_installation"],
    "watch": ["watch_test.py::test_fall_and_return_are_told", "watch_test.py::test_echo_requests"],
}
IN_FULL = {suite: ["."] for suite in [*CHOSEN, "desktop"]}
# Programs for Windows that are tests themselves.
PROGRAMS = {"module": "module/module_tests.exe", "unit": "unit/unit_tests.exe"}
# These mostly wait for real time.
WAITING = ("voice", "modem")

RUNS_ALL = os.environ.get("WIN64_TESTS") == "all"
SUITES = IN_FULL | PROGRAMS if RUNS_ALL else CHOSEN
MODULE = ROOT / "out" / "win64" / "Brantel_Notifications.dll"


class Run:
    """A run of a program of tests under way, and what it tells."""

    def __init__(self, command: list, folder, environment: dict[str, str]):
        self.told = folder / "told"
        with self.told.open("w") as told:
            self.process = subprocess.Popen(command, cwd=ROOT, env=environment, stdin=subprocess.DEVNULL,
                                            stdout=told, stderr=subprocess.STDOUT)

    def check(self) -> None:
        assert self.process.wait() == 0, self.told.read_text(errors="replace")


def command_of(suite: str) -> list:
    if suite in PROGRAMS:
        return [WINE, ROOT / "build" / "win64-tests" / "tests" / PROGRAMS[suite], "--gtest_brief=1"]
    return [sys.executable, "-m", "pytest", "-q", "-p", "no:cacheprovider",
            *(ROOT / "tests" / suite / test for test in SUITES[suite])]


@contextlib.contextmanager
def running(suite: str):
    with wine_prefix(BRANTEL_BITS="64", BRANTEL_MODULE=windows_path(MODULE)) as (folder, environment):
        run = Run(command_of(suite), folder, environment)
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
def test_suite(waiting, suite):
    with running(suite) as run:
        run.check()


@pytest.mark.parametrize("suite", WAITING)
def test_suite_that_waits(waiting, suite):
    waiting[suite].check()
