"""doctor: what it says of broken configurations, in few runs, since one looks at a whole directory."""

import json
import socket
import threading

import pytest

from windows_programs import INSTANCE_MAGICS, TIME_LIMIT, instance_integer, instance_text, windows_path

FIELDS = {
    "SMTPMail": ["192.0.2.25", "a@example.com", "host@example.com", "%n", "%C\r\n"],
    "Sound": ["C:\\doctor\\alarm.wav", 0],
    "WinPopup": ["OPERATOR", "%C"],
    "LaunchProgram": ["C:\\windows\\system32\\cmd.exe", "C:\\windows", "/c exit"],
    "Beeper": ["5551234", "ATDT%s,,,,%s#", "1", "2", "3", "", 0],
    "Pager": ["5551234", "", "0071", "%C", "TAP", 0],
    "Voice": ["5551234", "C:\\doctor\\alarm.wav", 1, 5, "", "", "", ""],
}

# Instances with one field changed: class, field's place, value, and the rule that this breaks.
BROKEN = [
    ("SMTPMail", 0, "", "mail-gateway"),
    ("SMTPMail", 0, "mail.example.com", "mail-gateway-address"),
    ("SMTPMail", 0, "1.2.3", "mail-gateway-form"),
    ("SMTPMail", 1, "", "mail-to"),
    ("SMTPMail", 1, "a@b," + "c" * 511, "mail-to-length"),
    ("SMTPMail", 1, "a@b;c@d", "mail-to-separator"),
    ("SMTPMail", 1, "a@b,,c@d", "mail-to-empty"),
    ("SMTPMail", 1, "a@b,root", "mail-to-at"),
    ("SMTPMail", 2, "", "mail-from"),
    ("SMTPMail", 2, "host", "mail-from-at"),
    ("SMTPMail", 3, "a\r\nb", "mail-subject-line"),
    ("SMTPMail", 4, "a\r\n.\r\nb", "mail-message-full-stop"),
    ("SMTPMail", 4, "a\nb", "mail-message-line-end"),
    ("SMTPMail", 4, "%x", "unknown-variable"),
    ("Sound", 0, "", "sound-wave"),
    ("Sound", 0, "C:\\doctor\\nothing.wav", "sound-wave-file"),
    ("Sound", 0, "C:\\doctor", "sound-wave-file"),
    ("Sound", 0, "C:\\doctor\\notes.wav", "sound-wave-form"),
    ("Sound", 0, "\\\\server\\alarm.wav", "sound-wave-remote"),
    ("WinPopup", 0, "", "popup-destination"),
    ("WinPopup", 0, "%n", "variable-stays"),
    ("WinPopup", 1, "", "popup-message"),
    ("WinPopup", 1, "x" * 1025, "popup-message-length"),
    ("LaunchProgram", 0, "", "program"),
    ("LaunchProgram", 0, "C:\\doctor\\nothing.exe", "program-file"),
    ("LaunchProgram", 0, "C:\\doctor\\a b.exe", "program-other"),
    ("LaunchProgram", 0, "cmd", "program-folder"),
    ("LaunchProgram", 1, "C:\\doctor\\alarm.wav", "program-working-path"),
    ("LaunchProgram", 1, "", "program-working-path-missing"),
    ("Beeper", 0, "", "beeper-number"),
    ("Beeper", 0, "call", "beeper-number-digits"),
    ("Beeper", 0, "555;H", "beeper-number-command"),
    ("Beeper", 2, "", "beeper-code"),
    ("Beeper", 3, "down!_", "beeper-code-characters"),
    ("Pager", 0, "55", "pager-number-length"),
    ("Pager", 2, "7", "pager-id-length"),
    ("Pager", 2, "smith", "pager-id-digits"),
    ("Pager", 3, "", "pager-message"),
    ("Pager", 3, "f\xfcr", "pager-message-characters"),
    ("Pager", 4, "UCP", "pager-protocol"),
    ("Pager", 4, "tap", "pager-protocol"),
    ("Pager", 4, "", "pager-protocol-missing"),
    ("Voice", 0, "", "voice-number"),
    ("Voice", 1, "C:\\doctor\\nothing.wav", "voice-repeat-file"),
    ("Voice", 2, -1, "voice-count"),
    ("Voice", 3, 12, "voice-button"),
    ("Voice", 4, "C:\\doctor\\notes.wav", "voice-item-down-form"),
]


def content(class_name: str, values: list) -> bytes:
    return INSTANCE_MAGICS[class_name] + b"".join(
        instance_integer(value) if isinstance(value, int) else instance_text(value) for value in values)


@pytest.fixture
def media(tmp_path):
    """A folder with waves and programs."""
    folder = tmp_path / "media"
    folder.mkdir()
    (folder / "alarm.wav").write_bytes(b"RIFF\x04\0\0\0WAVE")
    (folder / "notes.wav").write_bytes(b"notes")
    for program in ("a.exe", "a b.exe"):
        (folder / program).write_bytes(b"MZ")
    return folder


@pytest.fixture
def instances(tmp_path, media):
    """Writes instances whose paths on C:\\doctor lead to the folder of waves."""
    folder = tmp_path / "instances"
    folder.mkdir()
    there = windows_path(media)

    def write(name: str, class_name: str, values: list):
        moved = [value.replace("C:\\doctor", there) if isinstance(value, str) else value
                 for value in values]
        (folder / name).write_bytes(content(class_name, moved))
        return folder

    return write


def test_each_broken_instance_is_told_of(registered, instances):
    for i, (class_name, place, value, _) in enumerate(BROKEN):
        values = list(FIELDS[class_name])
        values[place] = value
        folder = instances(f"{i:03}", class_name, values)
    outcome = registered("doctor", str(folder), "--json")
    assert outcome.exit_code == 1
    found = {record["name"]: record for record in map(json.loads, outcome.output.splitlines())}
    for i, (class_name, _, _, rule) in enumerate(BROKEN):
        record = found[f"{i:03}"]
        assert (record["kind"], record["class"]) == ("instance", class_name)
        rules = [finding["rule"] for finding in record["findings"]]
        assert rule in rules, f"{class_name} {rule}: {rules}"
        assert record["state"] in ("warning", "failure")
        assert all(finding["complaint"] and finding["remedy"] for finding in record["findings"])
    assert {record["name"] for record in found.values() if record["kind"] == "class"} == set(FIELDS)


def test_sound_instances_are_told_of_by_a_line(registered, instances):
    for class_name in ("SMTPMail", "WinPopup", "LaunchProgram", "Sound"):
        folder = instances(class_name, class_name, FIELDS[class_name])
    (folder / "notes.txt").write_text("notes")
    outcome = registered("doctor", str(folder))
    lines = outcome.output.splitlines()
    for class_name in ("SMTPMail", "WinPopup", "LaunchProgram", "Sound"):
        assert f"ok       {class_name} ({class_name})" in lines
    assert ("warning  notes.txt: is no instance; keep nothing but instances in their directory") in lines


def test_an_instance_and_its_class(notifyhost, instances):
    folder = instances("Night", "Pager", [*FIELDS["Pager"][:4], "UCP", 0])
    outcome = notifyhost("doctor", str(folder / "Night"), "--json")
    assert outcome.exit_code == 1
    class_record, instance_record = map(json.loads, outcome.output.splitlines())
    assert (class_record["kind"], class_record["name"]) == ("class", "Pager")
    assert [finding["rule"] for finding in class_record["findings"]] == ["registered"]
    assert "pager-protocol" in [finding["rule"] for finding in instance_record["findings"]]


def test_nothing_to_look_at(registered, tmp_path):
    (tmp_path / "empty").mkdir()
    outcome = registered("doctor", "nowhere")
    assert (outcome.exit_code, outcome.output) == (1, "")
    assert outcome.errors == f"notifyhost: there is no file {windows_path(tmp_path / 'nowhere')}\n"
    # The classes have failures of their own on a computer without telephony.
    assert registered("doctor", "empty").exit_code in (1, 3)


@pytest.mark.parametrize("greeting, state", [(b"220 relay ready\r\n", "ok"), (b"554 no\r\n", "failure")])
def test_relay_is_asked_for_its_greeting(registered, instances, greeting, state):
    with socket.create_server(("127.0.0.77", 25)) as relay:
        relay.settimeout(TIME_LIMIT)

        def greet():
            connection, _ = relay.accept()
            with connection:
                connection.sendall(greeting)
                connection.recv(1)

        thread = threading.Thread(target=greet)
        thread.start()
        folder = instances("Office", "SMTPMail", ["127.0.0.77", *FIELDS["SMTPMail"][1:]])
        outcome = registered("doctor", str(folder / "Office"), "--online", "--json")
        thread.join()
    record = json.loads(outcome.output.splitlines()[-1])
    assert (record["name"], record["state"]) == ("Office", state)
