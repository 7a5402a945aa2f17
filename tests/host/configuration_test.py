"""add and edit: against the stand-in module, what the host passes and what it makes of the answers;
against the real one, that operators get their dialogs.
"""

import json
import subprocess

import pytest

from conftest import DIALOG_OPERATOR, write_instance
from windows_programs import MODULE, TIME_LIMIT, WINE, windows_path

# The calls of one dialog, in order, but the dialog's own.
CALLS_BEFORE = ["loaded", "DllGetClassObject", "CreateInstance", "factory released", "Initialize"]
CALLS_AFTER = ["Shutdown", "references to the host: 1", "notifier released", "DllCanUnloadNow",
               "unloaded"]

NO_TRIGGER = "no trigger: 0x80004005\nopen line\n"


@pytest.fixture
def configure(notifyhost, stand_in):
    return lambda *arguments, **environment: notifyhost(
        *arguments, "--module", stand_in.file, **stand_in.environment, **environment)


@pytest.fixture
def folder(tmp_path):
    path = tmp_path / "Instanzen ☎"
    path.mkdir()
    return path


def test_add(configure, stand_in, folder):
    outcome = configure("add", "Beeper", folder.name)
    assert (outcome.exit_code, outcome.errors) == (0, "")
    assert outcome.output == f"[{windows_path(folder)}][]\n{NO_TRIGGER}Added  2.\n"
    assert stand_in.trace() == [*CALLS_BEFORE, "AddInstance", *CALLS_AFTER]


def test_add_tells_programs(configure, folder):
    outcome = configure("add", "Beeper", folder.name, "--json")
    records = [json.loads(line) for line in outcome.output.splitlines()]
    assert (outcome.exit_code, outcome.errors) == (0, "")
    assert [list(record) for record in records[:-1]] == [["log"]] * (len(records) - 1)
    assert records[-1] == {"outcome": "Added", "name": " 2"}


def test_edit(configure, stand_in, folder):
    outcome = configure("edit", "sound", folder.name, "Nacht ☎")
    assert (outcome.exit_code, outcome.errors) == (0, "")
    assert outcome.output == f"[{windows_path(folder)}][Nacht ☎]\n{NO_TRIGGER}Saved Nacht ☎ 2.\n"
    assert stand_in.trace() == [*CALLS_BEFORE, "EditInstance", *CALLS_AFTER]


@pytest.mark.parametrize("name, argument", [("Instanzen ☎\\", None), ("Instanzen ☎/.", None),
                                            ("C:/", "C:\\"), ("C:\\windows\\", "C:\\windows")])
def test_directory_is_named_by_its_full_path(configure, folder, name, argument):
    outcome = configure("add", "Sound", name)
    assert outcome.output.startswith(f"[{argument or windows_path(folder)}][]\n")


@pytest.mark.parametrize("arguments", [["add", "SMTPMail", "."], ["edit", "SMTPMail", ".", "x"]],
                         ids=" ".join)
def test_cancelled(configure, arguments):
    outcome = configure(*arguments)
    assert (outcome.exit_code, outcome.errors) == (1, "")
    assert outcome.output.endswith(NO_TRIGGER + "Cancelled.\n")


def test_other_failure(configure):
    outcome = configure("add", "Sound", ".", STAND_IN_FAILS="AddInstance")
    assert (outcome.exit_code, outcome.errors) == (1, "")
    assert outcome.output.endswith(NO_TRIGGER + "Failed: 0x80070005 (E_ACCESSDENIED)\n")


def test_class_that_cannot_be_initialised_is_configured_all_the_same(configure, stand_in):
    outcome = configure("edit", "Sound", ".", "x", STAND_IN_FAILS="Initialize")
    assert (outcome.exit_code, outcome.output, outcome.errors) == (0, "Saved x 2.\n", "")
    assert stand_in.trace() == [*CALLS_BEFORE, "EditInstance", "notifier released",
                                "DllCanUnloadNow", "unloaded"]


def test_class_without_dialogs(configure, stand_in):
    outcome = configure("add", "Voice", ".")
    assert (outcome.exit_code, outcome.output) == (1, "")
    assert outcome.errors == "notifyhost: Voice has no dialogs: 0x80004002 (E_NOINTERFACE)\n"
    assert stand_in.trace()[-3:] == ["notifier released", "DllCanUnloadNow", "unloaded"]


@pytest.mark.parametrize("arguments", [["add", "Sound"], ["edit", "Sound"]], ids=" ".join)
def test_directory_that_is_not_there(configure, stand_in, tmp_path, arguments):
    (tmp_path / "file").touch()
    for missing in ("nowhere", "file"):
        outcome = configure(*arguments, missing, *["x"] * (arguments[0] == "edit"))
        assert (outcome.exit_code, outcome.output) == (1, "")
        assert outcome.errors == ("notifyhost: there is no directory "
                                  f"{windows_path(tmp_path / missing)}\n")
    assert not stand_in.trace_file.exists(), "the module was loaded"


def test_class_that_is_not_registered(notifyhost):
    outcome = notifyhost("add", "Beeper", ".")
    assert (outcome.exit_code, outcome.output) == (1, "")
    assert outcome.errors.startswith("notifyhost: Beeper is not registered as ")


# Controls of LaunchProgram's dialog, and buttons.
NAME, PROGRAM, DIRECTORY, ARGUMENTS = 218, 219, 222, 220
OK, CANCEL = 1, 2


@pytest.fixture
def answer_dialog(notifyhost):
    """Runs a command of the host while an operator answers the dialog with that title."""

    def answer(title, button, texts, *arguments):
        filled = [str(word) for control, text in texts.items() for word in (control, text)]
        operator = subprocess.Popen([WINE, DIALOG_OPERATOR, title, str(button), *filled],
                                    env=notifyhost.environment, stdin=subprocess.DEVNULL,
                                    stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        outcome = notifyhost("--module", str(MODULE), *arguments)
        assert operator.wait(TIME_LIMIT) == 0
        return outcome

    return answer


def test_operator_adds_an_instance(answer_dialog, tmp_path):
    outcome = answer_dialog("Add Launch Program Instance", OK,
                            {NAME: "Nacht 2", PROGRAM: "C:\\restart.exe", DIRECTORY: "C:\\",
                             ARGUMENTS: "%n"}, "add", "LaunchProgram", ".")
    assert (outcome.exit_code, outcome.errors) == (0, "")
    assert outcome.output == ("Default Program - Failed to load notification from disk.\n"
                              "Added Nacht 2.\n")
    expected = write_instance(tmp_path / "expected", b"C:\\restart.exe", b"C:\\", b"%n")
    assert (tmp_path / "Nacht 2").read_bytes() == expected.read_bytes()


def test_operator_adds_a_beeper(answer_dialog, tmp_path):
    number, up_code, down_code, trap_code = 218, 220, 221, 222
    outcome = answer_dialog("Add Beeper  Instance", OK,
                            {223: "Nacht", number: "5550100", up_code: "1", down_code: "2",
                             trap_code: "3"}, "add", "Beeper", ".")
    assert (outcome.exit_code, outcome.errors) == (0, "")
    assert outcome.output == ("Default Beeper - Failed to load notification from disk.\n"
                              "Added Nacht.\n")
    assert (tmp_path / "Nacht").read_bytes() == (
        bytes.fromhex("81F446E5 3D98 7E5A 610BE80BF158F22E")
        + b"\x08\0\0\0" b"5550100\0" b"\x0E\0\0\0" b"ATDT%s,,,,%s#\0"
        + b"\x02\0\0\0" b"1\0" b"\x02\0\0\0" b"2\0" b"\x02\0\0\0" b"3\0"
        + b"\x01\0\0\0" b"\0" b"\0\0\0\0")


def test_operator_renames_an_instance(answer_dialog, tmp_path):
    old = write_instance(tmp_path / "Nacht", b"C:\\restart.exe", b"C:\\", b"%n")
    before = old.read_bytes()
    outcome = answer_dialog("Edit Launch Program Instance", OK, {NAME: "Tag"},
                            "edit", "LaunchProgram", ".", "Nacht")
    assert (outcome.exit_code, outcome.output, outcome.errors) == (0, "Saved Tag.\n", "")
    assert [path.name for path in tmp_path.iterdir()] == ["Tag"]
    assert (tmp_path / "Tag").read_bytes() == before


def test_operator_cancels(answer_dialog, tmp_path):
    write_instance(tmp_path / "Default", b"C:\\restart.exe", b"C:\\", b"%n")
    outcome = answer_dialog("Add Launch Program Instance", CANCEL, {NAME: "Nacht"},
                            "add", "LaunchProgram", ".")
    assert (outcome.exit_code, outcome.output, outcome.errors) == (1, "Cancelled.\n", "")
    assert [path.name for path in tmp_path.iterdir()] == ["Default"]
