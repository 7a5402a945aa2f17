"""classes, register and unregister."""

import json
import pathlib
import shutil

import pytest

from conftest import CLASS_NAMES, CLASSES, Notifyhost
from windows_programs import BITS, MODULE, VERSION, windows_path


def class_table(module: str, registered: str) -> str:
    """The table in which every class has the same registration."""
    columns = "{:13}  {:37}  {:38}  {:19}  {}\n"
    rows = [(name, f"Brantel_Notifications.{name}.1", clsid, f"{name} Class", registered)
            for name, clsid in CLASSES]
    heading = ("Class", "ProgID", "CLSID", "Description", "Registered")
    return f"Classes of {module}\n\n" + "".join(columns.format(*row) for row in [heading, *rows])


def test_classes_of_the_module_beside_the_host(notifyhost):
    outcome = notifyhost("classes")
    assert (outcome.exit_code, outcome.errors) == (0, "")
    assert outcome.output == class_table(windows_path(MODULE), "no")


def test_register_and_unregister(notifyhost):
    module = windows_path(MODULE)
    # Twice: it does not mind what is done already.
    for _ in range(2):
        outcome = notifyhost("register")
        assert (outcome.exit_code, outcome.errors) == (0, "")
        assert outcome.output == f"Registered {module}\nwith the classes {CLASS_NAMES}.\n"
        assert notifyhost("classes").output == class_table(module, "yes")
    outcome = notifyhost("unregister")
    assert (outcome.exit_code, outcome.errors) == (0, "")
    assert outcome.output == f"Unregistered {module}\nwith the classes {CLASS_NAMES}.\n"
    assert notifyhost("classes").output == class_table(module, "no")
    outcome = notifyhost("unregister")
    assert (outcome.exit_code, outcome.output, outcome.errors) == (3, "Nothing is registered.\n", "")


def test_module_in_another_place(notifyhost, tmp_path):
    """A named module is registered by its full path, and told apart from the one beside the host."""
    folder = tmp_path / "Überwachung 電話"
    folder.mkdir()
    copy = pathlib.Path(shutil.copy(MODULE, folder / "Copy.dll"))
    full_path = windows_path(copy)
    relative_path = "Überwachung 電話\\Copy.dll"

    outcome = notifyhost("--module", relative_path, "register")
    assert (outcome.exit_code, outcome.errors) == (0, "")
    assert outcome.output == f"Registered {full_path}\nwith the classes {CLASS_NAMES}.\n"
    assert notifyhost("classes", "--module", relative_path).output == class_table(full_path, "yes")
    assert notifyhost("classes").output == class_table(windows_path(MODULE), f"as {full_path}")
    outcome = notifyhost("unregister")
    assert (outcome.exit_code, outcome.output) == (1, "")
    assert outcome.errors == (f"notifyhost: another copy is registered, {full_path}; "
                              "--force takes that out, too\n")
    own, other = map(json.loads, notifyhost("status", "--json").output.splitlines())
    assert (own["file"], own["version"], own["bits"]) == (windows_path(MODULE), VERSION + ".0", BITS)
    assert (other["file"], other["classes"], other["state"]) == (full_path, 7, "another copy")
    copy.unlink()
    other = json.loads(notifyhost("status", "--json").output.splitlines()[1])
    assert (other["there"], other["state"]) == (False, "stale: the file is not there")

    outcome = notifyhost("unregister", "--force")
    assert (outcome.exit_code, outcome.errors) == (0, "")
    assert outcome.output.endswith(f"The registration was that of {full_path}.\n")
    assert notifyhost("classes").output == class_table(windows_path(MODULE), "no")


def test_host_in_a_folder_of_another_script(wine_environment, tmp_path):
    folder = tmp_path / "電話"
    folder.mkdir()
    for file in (MODULE, MODULE.with_name("notifyhost.exe")):
        shutil.copy(file, folder)
    host = Notifyhost(folder / "notifyhost.exe", tmp_path, wine_environment)
    outcome = host("classes")
    assert (outcome.exit_code, outcome.errors) == (0, "")
    assert outcome.output == class_table(windows_path(folder / MODULE.name), "no")


@pytest.mark.parametrize("command", [["classes"], ["register"], ["unregister"]], ids=" ".join)
class TestWithoutTheModule:
    def test_none_beside_the_host(self, lone_host, tmp_path, command):
        outcome = lone_host(*command)
        missing = windows_path(tmp_path / "lone" / MODULE.name)
        assert (outcome.exit_code, outcome.output) == (1, "")
        assert outcome.errors == f"notifyhost: there is no module file {missing}\n"

    def test_none_where_it_is_said_to_be(self, notifyhost, tmp_path, command):
        outcome = notifyhost(*command, "--module", "nowhere/☎.dll")
        missing = windows_path(tmp_path / "nowhere" / "☎.dll")
        assert (outcome.exit_code, outcome.output) == (1, "")
        assert outcome.errors == f"notifyhost: there is no module file {missing}\n"

    @pytest.mark.parametrize("content", [b"", b"no program", b"MZ" + bytes(200)])
    def test_another_file(self, notifyhost, tmp_path, command, content):
        other = tmp_path / "other.dll"
        other.write_bytes(content)
        outcome = notifyhost(*command, "--module", "other.dll")
        assert (outcome.exit_code, outcome.output) == (1, "")
        assert outcome.errors == (f"notifyhost: {windows_path(other)} "
                                  "is not a Brantel_Notifications module\n")

    def test_another_module(self, notifyhost, command):
        """Wine's standard type library is one, of other things."""
        outcome = notifyhost(*command, "--module", "C:\\windows\\system32\\stdole2.tlb")
        assert (outcome.exit_code, outcome.output) == (1, "")
        assert outcome.errors == ("notifyhost: C:\\windows\\system32\\stdole2.tlb "
                                  "is not a Brantel_Notifications module\n")


@pytest.mark.parametrize("command, export, done", [
    ("register", "DllRegisterServer", "registered"),
    ("unregister --force", "DllUnregisterServer", "unregistered"),
])
def test_failing_registration(notifyhost, stand_in, command, export, done):
    outcome = notifyhost(*command.split(), "--module", stand_in.file, STAND_IN_FAILS=export,
                         **stand_in.environment)
    assert (outcome.exit_code, outcome.output) == (1, "")
    assert outcome.errors == (f"notifyhost: {stand_in.file} could not be {done}: "
                              "0x80070005 (E_ACCESSDENIED)\n")
    assert stand_in.trace() == ["loaded", export, "DllCanUnloadNow", "unloaded"]


@pytest.mark.parametrize("command, export", [("register", "DllRegisterServer"),
                                             ("unregister --force", "DllUnregisterServer")])
def test_registration_is_left_to_the_module(notifyhost, stand_in, command, export):
    outcome = notifyhost(*command.split(), "--module", stand_in.file, **stand_in.environment)
    assert outcome.exit_code == 0
    assert stand_in.trace() == ["loaded", export, "DllCanUnloadNow", "unloaded"]


def test_classes_does_not_load_the_module(notifyhost, stand_in):
    outcome = notifyhost("classes", "--module", stand_in.file, **stand_in.environment)
    assert (outcome.exit_code, outcome.errors) == (0, "")
    assert outcome.output == class_table(stand_in.file, "no")
    assert not stand_in.trace_file.exists()


def test_status_of_nothing(notifyhost):
    outcome = notifyhost("status")
    assert (outcome.exit_code, outcome.errors) == (3, "")
    assert outcome.output.endswith("\nNothing is registered; notifyhost register does that.\n")
