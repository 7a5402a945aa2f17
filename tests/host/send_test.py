"""send, through the real module."""

import pytest

from conftest import LAUNCH_PROGRAM_MAGIC, write_instance
from windows_programs import MODULE, windows_path

FAILED = "Failed: 0x80004005 (E_FAIL)\n"

# Every byte that a text may hold, but the percent signs of variables.
ALL_BYTES = bytes(byte for byte in range(1, 256) if byte != ord("%"))


@pytest.fixture(params=["registered", "by its file"])
def sender(request):
    """Sends alerts: through a registered class, or through the module file without registration."""
    if request.param == "registered":
        return request.getfixturevalue("registered")
    host = request.getfixturevalue("notifyhost")
    return lambda *arguments, **environment: host("--module", str(MODULE), *arguments, **environment)


@pytest.mark.parametrize("content", [
    None,
    b"",
    LAUNCH_PROGRAM_MAGIC[:15],
    bytes.fromhex("313E5016EB2EF2DDBDB6184EFE00A5D3") + bytes(64),
    LAUNCH_PROGRAM_MAGIC + (1024).to_bytes(4, "little") + b"x" * 1023 + b"\0",
], ids=["missing", "empty", "short", "foreign", "too long"])
def test_unreadable_instance_is_logged(sender, tmp_path, content):
    instance = tmp_path / "Nacht.ins"
    if content is not None:
        instance.write_bytes(content)
    outcome = sender("send", "LaunchProgram", "Nacht.ins")
    assert outcome.log_and_result == (f"{windows_path(instance)} - Failed to load notification from disk.\n"
                              + FAILED)
    assert (outcome.exit_code, outcome.errors) == (1, "")


def test_missing_instance_of_any_name(sender, tmp_path):
    outcome = sender("send", "LaunchProgram", "Zürich ☎ 電話.ins")
    path = windows_path(tmp_path / "Zürich ☎ 電話.ins")
    assert outcome.log_and_result == f"{path} - Failed to load notification from disk.\n" + FAILED
    assert (outcome.exit_code, outcome.errors) == (1, "")


def test_empty_file_name_stays_empty(sender):
    """LaunchProgram refuses it without a log line; a full path would be logged."""
    outcome = sender("send", "LaunchProgram", "")
    assert (outcome.exit_code, outcome.log_and_result, outcome.errors) == (1, FAILED, "")


@pytest.mark.parametrize("arguments, options, expected", [
    (b"", [], b""),
    (b"--node %n --code %C", ["--set", "n=Router 7", "--set", "C=17"], b"--node Router 7 --code 17"),
    (b"--node %n --code %C", ["--set", "n=%C"], b"--node %C --code %C"),
    (b"100%% %", [], b"100% %"),
    (b'"a b" \\"c\\" \t  d ', [], b'"a b" \\"c\\" \t  d '),
    (b"%n", ["--set", "n=Z\u00fcrich \u20ac"], b"Z\xfcrich \x80"),
    (b"%n", ["--set", 'n="quoted" back\\slash\\'], b'"quoted" back\\slash\\'),
    (b"%n", ["--set", "n=* ?.txt"], b"* ?.txt"),
    (b"x" * 1022, [], b"x" * 1022),
    (ALL_BYTES, [], ALL_BYTES),
], ids=["none", "variables", "no second expansion", "percent signs", "quotes and blanks",
        "value in the code page", "quotes in a value", "wildcards", "longest", "all bytes"])
def test_alert_starts_the_program(sender, demo_program, arguments, options, expected):
    demo_program.store(arguments)
    outcome = sender("send", "LaunchProgram", "demo.ins", *options, **demo_program.environment)
    assert (outcome.exit_code, outcome.log_and_result, outcome.errors) == (0, "Delivered.\n", "")
    command_line, directory = demo_program.read_report()
    program = windows_path(demo_program.program).encode("cp1252")
    assert command_line == program + b" " + expected
    assert directory == windows_path(demo_program.folder).encode("cp1252")


def test_send_does_not_wait_for_the_program(sender, demo_program):
    demo_program.store(b"")
    outcome = sender("send", "LaunchProgram", str(demo_program.instance),
                     DEMO_WAIT_FOR=windows_path(demo_program.awaited), **demo_program.environment)
    assert (outcome.exit_code, outcome.log_and_result, outcome.errors) == (0, "Delivered.\n", "")
    assert not demo_program.report.exists()
    demo_program.awaited.touch()
    demo_program.read_report()


def test_program_that_cannot_be_started(sender, tmp_path):
    write_instance(tmp_path / "none.ins", b"C:\\nowhere\\none.exe", b"", b"")
    outcome = sender("send", "LaunchProgram", "none.ins")
    assert (outcome.exit_code, outcome.log_and_result, outcome.errors) == (1, FAILED, "")


@pytest.mark.parametrize("class_name", ["launchprogram", "LAUNCHPROGRAM"])
def test_letter_case_of_the_class_does_not_matter(sender, demo_program, class_name):
    demo_program.store(b"")
    outcome = sender("send", class_name, "demo.ins", **demo_program.environment)
    assert (outcome.exit_code, outcome.log_and_result, outcome.errors) == (0, "Delivered.\n", "")
    demo_program.read_report()


@pytest.mark.parametrize("class_name", ["LaunchProgram", "Voice"])
def test_class_that_is_not_registered(notifyhost, class_name):
    outcome = notifyhost("send", class_name, "x")
    assert (outcome.exit_code, outcome.output) == (1, "")
    assert outcome.errors == (
        f"notifyhost: {class_name} is not registered as Brantel_Notifications.{class_name}; "
        "run notifyhost register, or name its module by --module\n")


class TestWithoutAModuleBesideTheHost:
    def test_registered_class_is_used(self, registered, lone_host, demo_program):
        demo_program.store(b"")
        outcome = lone_host("send", "LaunchProgram", "demo.ins", **demo_program.environment)
        assert (outcome.exit_code, outcome.log_and_result, outcome.errors) == (0, "Delivered.\n", "")
        demo_program.read_report()

    def test_other_class_is_not_known(self, lone_host, tmp_path):
        outcome = lone_host("send", "Fax", "x")
        assert (outcome.exit_code, outcome.output) == (2, "")
        assert outcome.errors.startswith("notifyhost: CLASS: 'Fax' is not a notifier class; ")
        assert not (tmp_path / "notifyhost.journal").exists()


@pytest.mark.parametrize("missing", ["nowhere.dll", "☎.dll"])
def test_module_file_that_is_not_there(notifyhost, tmp_path, missing):
    outcome = notifyhost("send", "LaunchProgram", "x", "--module", missing)
    assert (outcome.exit_code, outcome.output) == (1, "")
    assert outcome.errors == f"notifyhost: there is no module file {windows_path(tmp_path / missing)}\n"
