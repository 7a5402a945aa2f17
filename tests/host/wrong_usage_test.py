"""Wrong command lines: exit code 2, and a message on standard error that names the argument."""

import pytest

from conftest import CLASS_NAMES
from windows_programs import windows_path

COMMANDS = ("the commands are classes, register, unregister, send, add, edit, instances, show, new "
            "and fields")
EVENTS = ("it takes item-up, item-down, service-up, service-down, trap, none, "
          "or a number from 0 to 0xFFFFFFFF")
FORM = "is not of the form LETTER=VALUE"

# Arguments, the message, and the command whose help is pointed out.
WRONG_USAGES = [
    ([], f"COMMAND is missing; {COMMANDS}", ""),
    (["frobnicate"], f"'frobnicate' is not a command; {COMMANDS}", ""),
    (["SEND", "Sound", "x"], f"'SEND' is not a command; {COMMANDS}", ""),
    ([""], f"'' is not a command; {COMMANDS}", ""),
    (["/?"], f"'/?' is not a command; {COMMANDS}", ""),
    (["*"], f"'*' is not a command; {COMMANDS}", ""),
    (["störung☎"], f"'störung☎' is not a command; {COMMANDS}", ""),
    (["--frobnicate"], "'--frobnicate' is not an option of notifyhost", ""),
    (["--module"], "--module needs a value", ""),
    (["--module", "a.dll"], f"COMMAND is missing; {COMMANDS}", ""),
    (["--module=", "classes"], "--module= needs a value", ""),
    (["frobnicate", "classes"], "'frobnicate' is out of place in notifyhost classes [OPTIONS]",
     "classes "),
    (["--set", "n=1", "send", "Sound", "x"],
     "'--set' is out of place in notifyhost send [OPTIONS] CLASS FILE", "send "),
    (["classes", "x"], "'x' is not an argument of classes", "classes "),
    (["classes", "register"], "'register' is not an argument of classes", "classes "),
    (["classes", "--event", "trap"], "'--event' is not an option of classes", "classes "),
    (["register", "a.dll"], "'a.dll' is not an argument of register", "register "),
    (["register", "--force"], "'--force' is not an option of register", "register "),
    (["register", "--module"], "--module needs a value", "register "),
    (["unregister", ""], "'' is not an argument of unregister", "unregister "),
    (["unregister", "--module", ""], "--module: the file name is empty", "unregister "),
    (["classes", "--module", "a", "--module", "b"], "--module is given more than once", "classes "),
    (["--module", "a", "classes", "--module", "b"], "--module is given more than once", "classes "),
    (["send"], "CLASS is missing", "send "),
    (["send", "Sound"], "FILE is missing", "send "),
    (["send", "--event", "trap", "Sound"], "FILE is missing", "send "),
    (["send", "Sound", "x", "y z"], "'y z' is not an argument of send", "send "),
    (["send", "Sound", "-x"], "'-x' is not an option of send", "send "),
    (["send", "Sound", "x", "--verbose"], "'--verbose' is not an option of send", "send "),
    (["send", "Sound", "x", "--event"], "--event needs a value", "send "),
    (["send", "Sound", "x", "--event", ""], f"--event: '' is not an event; {EVENTS}", "send "),
    (["send", "Sound", "x", "--event", "down"], f"--event: 'down' is not an event; {EVENTS}",
     "send "),
    (["send", "Sound", "x", "--event", "Trap"], f"--event: 'Trap' is not an event; {EVENTS}",
     "send "),
    (["send", "Sound", "x", "--event", "-1"], f"--event: '-1' is not an event; {EVENTS}", "send "),
    (["send", "Sound", "x", "--event", "4294967296"],
     f"--event: '4294967296' is not an event; {EVENTS}", "send "),
    (["send", "Sound", "x", "--event", "0x100000000"],
     f"--event: '0x100000000' is not an event; {EVENTS}", "send "),
    (["send", "Sound", "x", "--event", "0x"], f"--event: '0x' is not an event; {EVENTS}", "send "),
    (["send", "Sound", "x", "--event", "1", "--event", "2"], "--event is given more than once",
     "send "),
    (["send", "Sound", "x", "--set"], "--set needs a value", "send "),
    (["send", "Sound", "x", "--set", ""], f"--set: '' {FORM}", "send "),
    (["send", "Sound", "x", "--set", "n"], f"--set: 'n' {FORM}", "send "),
    (["send", "Sound", "x", "--set", "=1"], f"--set: '=1' {FORM}", "send "),
    (["send", "Sound", "x", "--set", "node=1"], f"--set: 'node=1' {FORM}", "send "),
    (["send", "Sound", "x", "--set", "%n=1"], f"--set: '%n=1' {FORM}", "send "),
    (["send", "Sound", "x", "--set", "ü=1"], f"--set: 'ü=1' {FORM}", "send "),
    (["send", "Sound", "x", "--set", "n=1", "--set", "7=1"], f"--set: '7=1' {FORM}", "send "),
    (["add", "Sound"], "DIR is missing", "add "),
    (["add", "Sound", ""], "DIR: the name is empty", "add "),
    (["edit", "Sound", "."], "NAME is missing", "edit "),
    (["edit", "Sound", ".", "x", "--event", "trap"], "'--event' is not an option of edit", "edit "),
    (["instances"], "DIR is missing", "instances "),
    (["instances", ".", "*"], "'*' is not an argument of instances", "instances "),
    (["instances", ".", "--module", "a.dll"], "'--module' is not an option of instances",
     "instances "),
    (["show", "--json"], "FILE is missing", "show "),
    (["show", ""], "FILE: the name is empty", "show "),
    (["show", "x", "--json=1"], "--json takes no value", ""),
    (["--module", "a.dll", "show", "x"], "'--module' is not an option of show", "show "),
    (["new", "Sound"], "FILE is missing", "new "),
    (["new", "Sound", "x", "ü☎"], "'ü☎' is not of the form FIELD=VALUE", "new "),
    (["new", "Sound", "x", "=1"], "'=1' is not of the form FIELD=VALUE", "new "),
    (["new", "Sound", "x", "--wave=1"], "'--wave=1' is not an option of new", "new "),
    (["fields", "Sound", "wave"], "'wave' is not an argument of fields", "fields "),
]


@pytest.mark.parametrize("arguments, message, command", WRONG_USAGES,
                         ids=[" ".join(usage[0]) or "nothing" for usage in WRONG_USAGES])
def test_wrong_usage_names_the_argument(notifyhost, arguments, message, command):
    outcome = notifyhost(*arguments)
    assert outcome.exit_code == 2
    assert outcome.errors == f"notifyhost: {message}\nRun notifyhost {command}--help for help.\n"
    assert outcome.output == ""


def unknown_class(class_name: str) -> str:
    return f"notifyhost: CLASS: '{class_name}' is not a notifier class; the classes are {CLASS_NAMES}\n"


@pytest.mark.parametrize("class_name", ["Fax", "", "Beeper.1", "Zürich☎"])
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
    (["Sound", "x", "wave=1"],
     "'wave' is not a field of Sound; the fields are wave filename, continuous play"),
    (["Beeper", "x", "up-code=1", "Up Code=2"], "up code is given more than once"),
    (["Beeper", "x", "settings profile=11"],
     "settings profile: '11' is not a number from 0 to 10"),
    (["Sound", "x", "continuous_play=yes"],
     "continuous play: 'yes' is not a number from -2147483648 to 2147483647"),
    (["Pager", "x", "pager-id=" + "ü" * 1023],
     "pager ID: the text is longer than 1022 bytes, so that Pager could not read it"),
    (["WinPopup", "x", "message=für 電話"],
     "message: the text has characters that the system's code page lacks"),
    # A likeness is not the character: a full-width digit, which the code page would make a 1.
    (["Beeper", "x", "beeper number=１"],
     "beeper number: the text has characters that the system's code page lacks"),
    (["Beeper", "nul"], "FILE: 'nul' cannot be the name of an instance"),
    (["Beeper", "C:\\x."], "FILE: 'x.' cannot be the name of an instance"),
    (["Beeper", "x/.."], "FILE: '..' cannot be the name of an instance"),
]


@pytest.mark.parametrize("arguments, message", WRONG_FIELDS,
                         ids=[" ".join(usage[0])[:40] for usage in WRONG_FIELDS])
def test_new_names_the_wrong_field(notifyhost, tmp_path, arguments, message):
    outcome = notifyhost("new", *arguments)
    assert (outcome.exit_code, outcome.output, outcome.errors) == (2, "", f"notifyhost: {message}\n")
    assert not any(tmp_path.iterdir())


def test_file_outside_the_code_page(notifyhost, tmp_path):
    outcome = notifyhost("new", "Beeper", "☎")
    assert (outcome.exit_code, outcome.output) == (2, "")
    assert outcome.errors == (f"notifyhost: FILE: {windows_path(tmp_path / '☎')} has characters "
                              "that the system's code page lacks\n")
    assert not any(tmp_path.iterdir())
