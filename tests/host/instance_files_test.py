"""new, show, instances and fields: instance files without a module."""

import json
import subprocess
from dataclasses import dataclass

import pytest

from windows_programs import TIME_LIMIT, WINE, wait_until, windows_path


@dataclass
class Sample:
    """An instance of a class: as new is given it, as its file holds it, and as show prints it."""
    name: str
    arguments: list[str]
    content: bytes
    fields: dict[str, str | int]
    shown: str
    summary: str


def text(value: bytes) -> bytes:
    """A text as it is stored. Only for long ones; the samples are literal."""
    return (len(value) + 1).to_bytes(4, "little") + value + b"\0"


SAMPLES = {
    "SMTPMail": Sample(
        "Büro",
        ["gateway=10.0.0.1", "TO=ä@example.com;b@example.com", "Subject=%n: 100%",
         "message=Der Router\r\n\t%n\nfällt aus"],
        bytes.fromhex("8C26DDD6 2BA3 86EF 2683A7DA9410F949")
        + b"\x09\0\0\0" b"10.0.0.1\0"
        + b"\x1C\0\0\0" b"\xe4@example.com;b@example.com\0"
        + b"\x01\0\0\0" b"\0"
        + b"\x09\0\0\0" b"%n: 100%\0"
        + b"\x1A\0\0\0" b"Der Router\r\n\t%n\nf\xe4llt aus\0",
        {"gateway": "10.0.0.1", "to": "ä@example.com;b@example.com", "from": "",
         "subject": "%n: 100%", "message": "Der Router\r\n\t%n\nfällt aus"},
        "gateway  10.0.0.1\n"
        "to       ä@example.com;b@example.com\n"
        "from\n"
        "subject  %n: 100%\n"
        "message  Der Router\n"
        "         <09>%n\n"
        "         fällt aus\n",
        "10.0.0.1, ä@example.com;b@example.com, %n: 10..."),
    "Sound": Sample(
        "Default",
        ["wave filename=C:\\Sounds\\a=b.wav", "continuous-play=1"],
        bytes.fromhex("51406A5D 0876 D65D F1D32CFEA0F80A9F")
        + b"\x12\0\0\0" b"C:\\Sounds\\a=b.wav\0" b"\x01\0\0\0",
        {"wave filename": "C:\\Sounds\\a=b.wav", "continuous play": 1},
        "wave filename    C:\\Sounds\\a=b.wav\n"
        "continuous play  1\n",
        "C:\\Sounds\\a=b.wav"),
    "WinPopup": Sample(
        "night 2.ins",
        ["destination=OPERATOR", "message= [%n],{} "],
        bytes.fromhex("292C768B 2E0B 589C 6C925C2A021AFB08")
        + b"\x09\0\0\0" b"OPERATOR\0" b"\x0A\0\0\0" b" [%n],{} \0",
        {"destination": "OPERATOR", "message": " [%n],{} "},
        "destination  OPERATOR\n"
        "message       [%n],{}\n",
        "OPERATOR,  [%n],{}"),
    "LaunchProgram": Sample(
        "Restart",
        ["program_filename=C:\\Tools\\restart.exe", "program arguments=--node \"%n\" \\"],
        bytes.fromhex("6C7EECEC 188E A24C C56F5334C2BD7945")
        + b"\x15\0\0\0" b"C:\\Tools\\restart.exe\0" b"\x01\0\0\0" b"\0"
        + b"\x0E\0\0\0" b'--node "%n" \\\0',
        {"program filename": "C:\\Tools\\restart.exe", "working path": "",
         "program arguments": '--node "%n" \\'},
        "program filename   C:\\Tools\\restart.exe\n"
        "working path\n"
        "program arguments  --node \"%n\" \\\n",
        'C:\\Tools\\restart.exe, --node "%n" \\'),
    "Beeper": Sample(
        "Night",
        ["beeper-number=5551234", "dialing options=W", "up_code=1", "Down Code=911",
         "snmp-trap-code=7", "report message=€", "settings-profile=10"],
        bytes.fromhex("81F446E5 3D98 7E5A 610BE80BF158F22E")
        + b"\x08\0\0\0" b"5551234\0" b"\x02\0\0\0" b"W\0" b"\x02\0\0\0" b"1\0" b"\x04\0\0\0" b"911\0"
        + b"\x02\0\0\0" b"7\0" b"\x02\0\0\0" b"\x80\0" b"\x0A\0\0\0",
        {"beeper number": "5551234", "dialing options": "W", "up code": "1", "down code": "911",
         "SNMP trap code": "7", "report message": "€", "settings profile": 10},
        "beeper number     5551234\n"
        "dialing options   W\n"
        "up code           1\n"
        "down code         911\n"
        "SNMP trap code    7\n"
        "report message    €\n"
        "settings profile  10\n",
        "5551234, W, 1, 911, 7, €"),
    "Pager": Sample(
        "Pager",
        ["pager number=*", "PAGER-ID=-17", "protocol=TAP"],
        bytes.fromhex("0D5405CF 4F53 4B16 BD02D12A35BF0840")
        + b"\x02\0\0\0" b"*\0" b"\x01\0\0\0" b"\0" b"\x04\0\0\0" b"-17\0" b"\x01\0\0\0" b"\0"
        + b"\x04\0\0\0" b"TAP\0" b"\0\0\0\0",
        {"pager number": "*", "terminal password": "", "pager ID": "-17", "message": "",
         "protocol": "TAP", "settings profile": 0},
        "pager number       *\n"
        "terminal password\n"
        "pager ID           -17\n"
        "message\n"
        "protocol           TAP\n"
        "settings profile   0\n",
        "*, -17, TAP"),
    "Voice": Sample(
        "Zürich",
        ["phone number=0 44 555 12 34", "count=-2", "button=2147483647",
         "item down=C:\\down.wav", "service up=up\x1b[2J.wav"],
        bytes.fromhex("F822F8C4 9018 CD08 68421838A3A78A26")
        + b"\x0F\0\0\0" b"0 44 555 12 34\0" b"\x01\0\0\0" b"\0" b"\xFE\xFF\xFF\xFF" b"\xFF\xFF\xFF\x7F"
        + b"\x0C\0\0\0" b"C:\\down.wav\0" b"\x01\0\0\0" b"\0" b"\x01\0\0\0" b"\0"
        + b"\x0B\0\0\0" b"up\x1b[2J.wav\0",
        {"phone number": "0 44 555 12 34", "repeat message": "", "count": -2, "button": 2147483647,
         "item down": "C:\\down.wav", "item up": "", "service down": "",
         "service up": "up\x1b[2J.wav"},
        "phone number    0 44 555 12 34\n"
        "repeat message\n"
        "count           -2\n"
        "button          2147483647\n"
        "item down       C:\\down.wav\n"
        "item up\n"
        "service down\n"
        "service up      up<1B>[2J.wav\n",
        "0 44 555 12 34, C:\\down.wav, up<1B>[2J.wav"),
}


@pytest.mark.parametrize("class_name", SAMPLES)
def test_new_instance_is_shown_as_it_was_given(lone_host, tmp_path, class_name):
    sample = SAMPLES[class_name]
    file = tmp_path / sample.name
    outcome = lone_host("new", "--no-check", class_name, sample.name, *sample.arguments)
    assert (outcome.exit_code, outcome.errors) == (0, "")
    assert outcome.output == f"Wrote the {class_name} instance {windows_path(file)}.\n"
    assert file.read_bytes() == sample.content

    outcome = lone_host("show", sample.name)
    assert (outcome.exit_code, outcome.errors) == (0, "")
    assert outcome.output == f"Instance {sample.name} of {class_name}\n\n{sample.shown}"

    outcome = lone_host("show", str(file), "--json")
    assert (outcome.exit_code, outcome.errors) == (0, "")
    shown = json.loads(outcome.output)
    assert shown == {"class": class_name, "name": sample.name, "fields": sample.fields}
    assert list(shown["fields"]) == list(sample.fields)


def test_module_reads_what_new_writes(registered, demo_program):
    arguments = ["program filename=" + windows_path(demo_program.program),
                 "working path=" + windows_path(demo_program.folder), "program-arguments=für %n"]
    assert registered("new", "LaunchProgram", "Alarm", *arguments).exit_code == 0
    outcome = registered("send", "LaunchProgram", "Alarm", "--set", "n=7",
                         **demo_program.environment)
    assert (outcome.exit_code, outcome.log_and_result, outcome.errors) == (0, "Delivered.\n", "")
    program = windows_path(demo_program.program).encode("cp1252")
    assert demo_program.read_report()[0] == program + b" f\xfcr 7"


def test_longest_texts_of_new(lone_host, tmp_path):
    """In characters of three bytes in UTF-8 and one in the code page."""
    assert lone_host("new", "Sound", "Default", "--no-check", "wave filename=" + "€" * 1022).exit_code == 0
    assert (tmp_path / "Default").read_bytes()[16:] == text(b"\x80" * 1022) + bytes(4)
    assert lone_host("new", "WinPopup", "x", "--no-check", "message=" + "€" * 5000).exit_code == 0
    assert (tmp_path / "x").read_bytes()[16:] == text(b"") + text(b"\x80" * 5000)


def test_text_of_another_code_page(lone_host, tmp_path):
    """A double-byte character may end with a byte that looks like a backslash, as these two do."""
    outcome = lone_host("new", "Beeper", "表", "--no-check", "beeper number=ソ", LC_ALL="ja_JP.UTF-8")
    assert (outcome.exit_code, outcome.errors) == (0, "")
    assert (tmp_path / "表").read_bytes()[16:23] == b"\x03\0\0\0\x83\x5C\0"
    shown = json.loads(lone_host("show", "表", "--json", LC_ALL="ja_JP.UTF-8").output)
    assert (shown["name"], shown["fields"]["beeper number"]) == ("表", "ソ")
    outcome = lone_host("new", "Beeper", "x", "beeper number=ü", LC_ALL="ja_JP.UTF-8")
    assert outcome.exit_code == 2


def test_new_replaces_a_file_by_force_alone(lone_host, tmp_path):
    file = tmp_path / "Default"
    file.write_bytes(b"something else, and longer than the instance that takes its place later")
    before = file.read_bytes()
    outcome = lone_host("new", "Sound", "Default")
    assert (outcome.exit_code, outcome.output) == (1, "")
    assert outcome.errors == f"notifyhost: {windows_path(file)} exists; --force replaces it\n"
    assert file.read_bytes() == before

    outcome = lone_host("new", "--force", "--no-check", "Sound", "Default")
    assert (outcome.exit_code, outcome.errors) == (0, "")
    assert file.read_bytes() == SAMPLES["Sound"].content[:16] + b"\x01\0\0\0\0" + b"\0\0\0\0"


def test_new_where_no_file_can_be(lone_host, tmp_path):
    (tmp_path / "folder").mkdir()
    outcome = lone_host("new", "Sound", "folder", "--force")
    assert (outcome.exit_code, outcome.output) == (1, "")
    assert outcome.errors == f"notifyhost: {windows_path(tmp_path / 'folder')} is a directory\n"
    outcome = lone_host("new", "--no-check", "Sound", "nowhere/x")
    assert (outcome.exit_code, outcome.output) == (1, "")
    assert outcome.errors.startswith(f"notifyhost: {windows_path(tmp_path / 'nowhere' / 'x')} "
                                     "cannot be written: error 3, ")
    assert [path.name for path in tmp_path.iterdir() if path.name != "lone"] == ["folder"]


BEEPER = SAMPLES["Beeper"].content
MAIL = SAMPLES["SMTPMail"].content

# What a file holds, what is wrong with it, and what is shown all the same.
DAMAGED = {
    "empty": (b"", "is no instance", ""),
    "foreign": (b"notes\n" * 20, "is no instance", ""),
    "magic cut": (BEEPER[:15], "is no instance", ""),
    "mail cut": (MAIL[:-1],
                 "is refused by SMTPMail: it ends before the end of its field 'message'", ""),
    "too long": (BEEPER[:16] + text(b"1") + text(b"x" * 1023),
                 "is refused by Beeper: its field 'dialing options' is longer than 1022 bytes", ""),
    "beeper cut": (BEEPER[:16 + 12 + 3], "is damaged: it ends before the end of its field "
                   "'dialing options'",
                   "beeper number     5551234\n"
                   "dialing options\n"
                   "up code\n"
                   "down code\n"
                   "SNMP trap code\n"
                   "report message\n"
                   "settings profile  0\n"),
}


@pytest.mark.parametrize("kind", DAMAGED)
def test_show_tells_what_is_wrong_with_a_file(lone_host, tmp_path, kind):
    content, fault, shown = DAMAGED[kind]
    (tmp_path / "x").write_bytes(content)
    outcome = lone_host("show", "x")
    assert outcome.exit_code == 1
    assert outcome.errors == f"notifyhost: {windows_path(tmp_path / 'x')} {fault}\n"
    assert outcome.output == ("Instance x of Beeper\n\n" + shown if shown else "")


def test_show_without_a_file(lone_host, tmp_path):
    for name, message in [("nowhere", "there is no file {}"), ("lone", "{} is a directory")]:
        outcome = lone_host("show", name)
        assert (outcome.exit_code, outcome.output) == (1, "")
        assert outcome.errors == f"notifyhost: {message.format(windows_path(tmp_path / name))}\n"


def test_show_outside_the_code_page(lone_host, tmp_path):
    (tmp_path / "☎").write_bytes(BEEPER)
    outcome = lone_host("show", "☎")
    assert (outcome.exit_code, outcome.output) == (1, "")
    assert outcome.errors == (f"notifyhost: {windows_path(tmp_path / '☎')} has a path with "
                              "characters that the system's code page lacks\n")


def test_file_that_somebody_writes(lone_host, tmp_path, demo_program):
    """It can be neither read nor replaced, and is listed as what it is."""
    folder = tmp_path / "Instanzen"
    folder.mkdir()
    file = folder / "Nacht"
    writer = subprocess.Popen(
        [WINE, "cmd", "/c", f'{windows_path(demo_program.program)} >{file.name}'], cwd=folder,
        stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL,
        env={**lone_host.environment, **demo_program.environment,
             "DEMO_WAIT_FOR": windows_path(demo_program.awaited)})
    try:
        wait_until(file.exists)
        path = windows_path(file)
        outcome = lone_host("show", path)
        assert (outcome.exit_code, outcome.output) == (1, "")
        assert outcome.errors.startswith(f"notifyhost: {path} cannot be read: error 32, ")
        outcome = lone_host("new", "Sound", path, "--force", "--no-check")
        assert (outcome.exit_code, outcome.output) == (1, "")
        assert outcome.errors.startswith(f"notifyhost: {path} cannot be written: error 32, ")
        outcome = lone_host("instances", folder.name)
        assert (outcome.exit_code, outcome.errors) == (0, "")
        assert "\nNacht  -      cannot be read: error 32, " in outcome.output
    finally:
        demo_program.awaited.touch()
        writer.wait(TIME_LIMIT)


def test_instances_of_a_directory(lone_host, tmp_path):
    folder = tmp_path / "Instanzen"
    (folder / "subdirectory").mkdir(parents=True)
    (folder / "subdirectory" / "hidden").write_bytes(BEEPER)
    for sample in SAMPLES.values():
        (folder / sample.name).write_bytes(sample.content)
    (folder / "empty").touch()
    (folder / "notes.txt").write_bytes(b"notes\n" * 20)
    (folder / "☎").write_bytes(BEEPER)
    for kind in ("mail cut", "beeper cut"):
        (folder / kind).write_bytes(DAMAGED[kind][0])
    (folder / "old beeper").write_bytes(BEEPER[:-4 - 6])

    outcome = lone_host("instances", "Instanzen\\")
    assert (outcome.exit_code, outcome.errors) == (0, "")
    summaries = {name: sample.summary for name, sample in SAMPLES.items()}
    columns = "{:11}  {:13}  {}\n"
    assert outcome.output == f"Instances in {windows_path(folder)}\n\n" + "".join(
        columns.format(*row) for row in [
            ("Name", "Class", "Summary"),
            ("beeper cut", "Beeper", "5551234 (is damaged: it ends before the end of its field "
             "'dialing options')"),
            ("Büro", "SMTPMail", summaries["SMTPMail"]),
            ("Default", "Sound", summaries["Sound"]),
            ("empty", "-", "is no instance"),
            ("mail cut", "SMTPMail", "is refused by SMTPMail: it ends before the end of its field "
             "'message'"),
            ("Night", "Beeper", summaries["Beeper"]),
            ("night 2.ins", "WinPopup", summaries["WinPopup"]),
            ("notes.txt", "-", "is no instance"),
            ("old beeper", "Beeper", "5551234, W, 1, 911, 7"),
            ("Pager", "Pager", summaries["Pager"]),
            ("Restart", "LaunchProgram", summaries["LaunchProgram"]),
            ("Zürich", "Voice", summaries["Voice"]),
            ("☎", "-", "has a path with characters that the system's code page lacks"),
        ])


def test_instances_of_an_empty_directory(lone_host, tmp_path):
    (tmp_path / "empty" / "subdirectory").mkdir(parents=True)
    outcome = lone_host("instances", "empty")
    assert (outcome.exit_code, outcome.errors) == (3, "")
    assert outcome.output == f"There are no files in {windows_path(tmp_path / 'empty')}.\n"


def test_instances_of_no_directory(lone_host, tmp_path):
    (tmp_path / "file").touch()
    for name in ("nowhere", "file"):
        outcome = lone_host("instances", name)
        assert (outcome.exit_code, outcome.output) == (1, "")
        assert outcome.errors == ("notifyhost: there is no directory "
                                  f"{windows_path(tmp_path / name)}\n")


def test_fields(lone_host):
    outcome = lone_host("fields", "winpopup")
    assert (outcome.exit_code, outcome.errors) == (0, "")
    assert outcome.output == (
        "Fields of WinPopup\n"
        "\n"
        "Field        Needed  Values                                   Default  Meaning\n"
        "destination  yes     name of a computer, user or domain       none     where the message pops up\n"
        "message      yes     text, of which 1024 characters are sent  none     the message\n")


def test_set_changes_what_is_given_alone(lone_host, tmp_path):
    (tmp_path / "x").write_bytes(SAMPLES["WinPopup"].content)
    outcome = lone_host("set", "x", "Message=%C")
    assert (outcome.exit_code, outcome.errors) == (0, "")
    assert (tmp_path / "x").read_bytes()[16:] == text(b"OPERATOR") + text(b"%C")
    outcome = lone_host("set", "x", "destination=")
    assert outcome.exit_code == 2
    assert outcome.errors.startswith("notifyhost: destination is missing; ")
    assert (tmp_path / "x").read_bytes()[16:] == text(b"OPERATOR") + text(b"%C")


def test_passwords_are_hidden(lone_host, tmp_path):
    assert lone_host("new", "Pager", "x", "--no-check", "terminal password=sesame").exit_code == 0
    for arguments in (["show", "x"], ["show", "x", "--json"], ["instances", "."]):
        assert "sesame" not in lone_host(*arguments).output
        assert "********" in lone_host(*arguments).output
        assert "sesame" in lone_host(*arguments, "--show-secrets").output
