"""The dialog before the stand-ins: popup_tests.exe works it and says what is wrong."""

import pytest

from conftest import DIALOG_TESTS
from windows_programs import MODULE, windows_path


@pytest.fixture
def dialog_tests(office):
    """A function that runs the tests of the dialog that the pattern selects."""
    def run(selection, program=DIALOG_TESTS):
        done = office.wine(program, "--gtest_brief=1", f"--gtest_filter={selection}",
                           BRANTEL_MODULE=windows_path(MODULE))
        assert done.returncode == 0, done.stdout
        assert "[  PASSED  ] 0 tests" not in done.stdout

    return run


@pytest.mark.parametrize("suite", ["WinPopupDialog", "DestinationList", "NetworkLibraryUse",
                                   "Unloading"])
def test_the_dialog(dialog_tests, suite):
    dialog_tests(f"{suite}.*-*.Windows95Family*")


def test_its_list_stays_empty_on_the_windows_95_family(dialog_tests, windows_95):
    dialog_tests("*.Windows95Family*", windows_95(DIALOG_TESTS))
