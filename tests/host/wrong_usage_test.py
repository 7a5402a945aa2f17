"""Wrong command lines: exit code 2, and a message on standard error that names the argument."""

import pytest

from conftest import CLASSES_IN_PROSE
from windows_programs import windows_path

COMMANDS = ("the commands are classes, register, unregister, status, doctor, preview, send, test, "
            "history, watch, serve, conformance, add, edit, instances, show, new, set, fields, ports, settings, service, "
            "completion and help")

# Arguments, the message, and the command whose help is pointed out. These show that arguments and messages
# come through the system as they are; tests/unit/host/command_line_test.cpp has all the others.
WRONG_USAGES = [
    ([], f"COMMAND is missing; {COMMANDS}", ""),
    ([""], f"'' is not a command; {COMMANDS}", ""),
    (["*"], f"'*' is not a command; {COMMANDS}", ""),
    (["störung☎"], f"'störung☎' is not a command; {COMMANDS}", ""),
    (["sned"], "'sned' is not a command; did you mean 'send'?", ""),
    (["--module=", "classes"], "--module= needs a value", ""),
    (["send", "Sound", "x", "y z"], "'y z' is not an argument of send", "send "),
    (["send", "Sound", "x", "--set", "ü=1"], "--set: 'ü=1' is not of the form LETTER=VALUE", "send "),
    (["new", "Sound", "x", "ü☎"], "'ü☎' is not of the form FIELD=VALUE", "new "),
    (["settings", "get", "Pager"], "NAME is missing", "settings get "),
]


@pytest.mark.parametrize("arguments, message, command", WRONG_USAGES,
                         ids=[" ".join(usage[0]) or "nothing" for usage in WRONG_USAGES])
def test_wrong_usage_names_the_argument(notifyhost, arguments, message, command):
    outcome = notifyhost(*arguments)
    assert outcome.exit_code == 2
    assert outcome.errors == f"notifyhost: {message}\nRun notifyhost {command}--help for help.\n"
    assert outcome.output == ""


def unknown_class(class_name: str) -> str:
    return f"notifyhost: CLASS: '{class_name}' is not a notifier class; the classes are {CLASSES_IN_PROSE}\n"


@pytest.mark.parametrize("class_name", ["Fax", "", "Zürich☎"])
def test_unknown_class_is_wrong_usage(notifyhost, stand_in, class_name):
    for module in ([], ["--module", stand_in.file]):
        outcome = notifyhost("send", class_name, "x", *module, **stand_in.environment)
        assert (outcome.exit_code, outcome.output, outcome.errors) == (2, "", unknown_class(class_name))
    assert not stand_in.trace_file.exists(), "the module was loaded"


@pytest.mark.parametrize("arguments", [["add", "Fax", "."], ["edit", "Fax", ".", "x"],
                                       ["new", "Fax", "x"], ["fields", "Fax"]], ids=" ".join)
def test_every_command_knows_the_classes(notifyhost, arguments):
    outcome = notifyhost(*arguments)
    assert (outcome.exit_code, outcome.output, outcome.errors) == (2, "", unknown_class("Fax"))


# Fields of new, and the message. None of them leaves a file.
WRONG_FIELDS = [
    (["Pager", "x", "pager-id=" + "ü" * 1023],
     "pager ID: the text is longer than 1022 bytes, so that Pager could not read it"),
    (["WinPopup", "x", "message=für 電話"],
     "message: the text has characters that the system's code page lacks"),
    # A likeness is not the character: a full-width digit, which the code page would make a 1.
    (["Beeper", "x", "beeper number=１"],
     "beeper number: the text has characters that the system's code page lacks"),
    (["Beeper", "nul"], "FILE: 'nul' cannot be the name of an instance"),
    (["WinPopup", "x", "mesage=1"], "'mesage' is not a field of WinPopup; did you mean 'message'?"),
    (["Pager", "x", "pager number=555", "pager id=007", "message=%C", "protocol=UCP"],
     "protocol 'UCP' is no protocol, and the page goes out by TAP, which other centres do not answer; "
     "write TAP, SMS-TAP, NTT or UCP-SMS, in capital letters\n"
     "Nothing is written; --no-check writes it all the same"),
]


@pytest.mark.parametrize("arguments, message", WRONG_FIELDS,
                         ids=[" ".join(usage[0])[:40] for usage in WRONG_FIELDS])
def test_new_names_the_wrong_field(notifyhost, tmp_path, arguments, message):
    outcome = notifyhost("new", *arguments)
    assert (outcome.exit_code, outcome.output, outcome.errors) == (2, "", f"notifyhost: {message}\n")
    assert not any(tmp_path.iterdir())


def test_file_outside_the_code_page(notifyhost, tmp_path):
    outcome = notifyhost("new", "--no-check", "Beeper", "☎")
    assert (outcome.exit_code, outcome.output) == (2, "")
    assert outcome.errors == (f"notifyhost: FILE: {windows_path(tmp_path / '☎')} has characters "
                              "that the system's code page lacks\n")
    assert not any(tmp_path.iterdir())
