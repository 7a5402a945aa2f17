"""Every command: the exit codes that scripts go by, and its answer for programs, one JSON object a line.
What help says of each, and which options it has, is tested natively."""

import json
import re

import pytest

DONE, FAILED, WRONG_USAGE, NOTHING_MATCHED = range(4)

# By command, in the order in which they are run: arguments, the exit code, and the names of what the first
# line tells, where one is told.
ANSWERS = {
    "classes": [("", DONE, "class progid clsid description registered")],
    "doctor": [("empty", FAILED, "kind name state findings"),
               ("nowhere", FAILED, "")],
    "instances": [("full", DONE, "name class summary fault"),
                  ("empty", NOTHING_MATCHED, ""),
                  ("nowhere", FAILED, "")],
    "show": [("full/Night", DONE, "class name fields"),
             ("full/None", FAILED, "")],
    "new": [("Sound full/New --no-check", DONE, "class file"),
            ("Sound nowhere/New --no-check", FAILED, ""),
            ("Fax full/New", WRONG_USAGE, "")],
    "set": [("full/Night --no-check", WRONG_USAGE, ""),
            ("full/None filename=x", FAILED, "")],
    "fields": [("Sound", DONE, "class field needed kind stored values default variables secret meaning"),
               ("Fax", WRONG_USAGE, "")],
    "preview": [("full/Night", DONE, "part words bytes hidden"),
                ("full/None", FAILED, "")],
    "send": [("LaunchProgram full/Night", DONE, "delivered verdict advice result seconds"),
             ("Sound full/None", FAILED, "log seconds"),
             ("Fax full/Night", WRONG_USAGE, "")],
    "test": [("LaunchProgram --no-check", FAILED, "delivered verdict advice result seconds"),
             ("Fax", WRONG_USAGE, "")],
    "history": [("full", DONE, "began command class instance event state seconds verdict result log"),
                ("empty", NOTHING_MATCHED, ""),
                ("nowhere", FAILED, "")],
    "serve": [("full --listen 0.0.0.0", WRONG_USAGE, ""),
              ("full --set-password", WRONG_USAGE, ""),
              ("full --port 0 --password-file nowhere", FAILED, ""),
              ("nowhere", FAILED, "")],
    "conformance": [("nowhere.dll", FAILED, ""),
                    ("", WRONG_USAGE, "")],
    "add": [("Fax full", WRONG_USAGE, ""),
            ("Sound nowhere", FAILED, "")],
    "edit": [("Fax full Night", WRONG_USAGE, ""),
             ("Sound nowhere Night", FAILED, "")],
    "ports": [("", DONE, "port there device state profiles")],
    "settings list": [("Beeper", DONE, "setting value origin default values meaning"),
                      ("Sound", WRONG_USAGE, "")],
    "settings get": [("Beeper COMPort", DONE, "setting value origin default values meaning"),
                     ("Beeper Fax", WRONG_USAGE, "")],
    "settings set": [("Beeper --profile 9 COMPort=COM9 --no-check", DONE, "class stored"),
                     ("Beeper COMPort=nine", WRONG_USAGE, "")],
    "settings reset": [("Beeper --profile 9", DONE, "class taken_out"),
                       ("Beeper Fax", WRONG_USAGE, "")],
    "settings import": [("Beeper nowhere.json", FAILED, "")],
    "watch": [("night.toml --status", DONE,
               "item kind device status since words hold maintenance acknowledged_by open_alerts remarks"),
              ("night.toml --check", DONE, "items alerts"),
              ("night.toml --acknowledge a", NOTHING_MATCHED, ""),
              ("night.toml --acknowledge b", WRONG_USAGE, ""),
              ("nowhere.toml", WRONG_USAGE, "")],
    "service install": [("nowhere.toml", WRONG_USAGE, "")],
    "service remove": [("", FAILED, "")],
    "service start": [("", FAILED, "")],
    "service stop": [("", FAILED, "")],
    "service run": [("nowhere.toml", FAILED, "")],
    "unregister": [("", DONE, "unregistered others"),
                   ("", NOTHING_MATCHED, "")],
    "status": [("", NOTHING_MATCHED, "role file version bits there state")],
    "register": [("", DONE, "registered"),
                 ("--module nowhere.dll", FAILED, "")],
}

# What is to be taken as it is, by other programs or by a person, has no other form for programs.
WITHOUT_JSON = {"help": "show", "completion": "bash", "settings export": "Beeper"}


@pytest.fixture
def folder(registered, demo_program):
    """With a folder of instances, with its journal, and an empty one."""
    for name in ("full", "empty"):
        (registered.folder / name).mkdir()
    demo_program.instance = registered.folder / "full" / "Night"
    demo_program.store(b"")
    (registered.folder / "night.toml").write_text(
        '[[items]]\nname = "a"\naddress = "127.0.0.1"\nprobe = "icmp"\n')
    return registered


def commands_of(notifyhost) -> set[str]:
    """As help lists them."""
    def listed(*arguments):
        commands, _, _ = notifyhost(*arguments, "--help").output.partition("\nOptions:")
        return re.findall(r"^  (\w+)  +[A-Z]", commands, re.M)

    groups = ("settings", "service")
    return {*listed(), *(f"{group} {command}" for group in groups for command in listed(group))} - {*groups}


def test_codes_and_objects(folder):
    assert commands_of(folder) == {*ANSWERS, *WITHOUT_JSON}
    seen = []
    for command, answers in ANSWERS.items():
        for arguments, code, names in answers:
            outcome = folder(*command.split(), *arguments.split(), "--json")
            lines = [json.loads(line) for line in outcome.output.splitlines()]
            seen.append((command, arguments, outcome.exit_code, " ".join(lines[0] if lines else {})))
            assert lines or outcome.errors or code == NOTHING_MATCHED, seen[-1]
    assert seen == [(command, *answer) for command, answers in ANSWERS.items() for answer in answers]


def test_texts_that_are_taken_as_they_are(lone_host):
    for command, argument in WITHOUT_JSON.items():
        outcome = lone_host(*command.split(), argument)
        assert (outcome.exit_code, outcome.errors) == (DONE, ""), command
        assert lone_host(*command.split(), argument, "--json").exit_code == WRONG_USAGE, command
