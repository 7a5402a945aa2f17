"""What the module does for 32-bit and for 64-bit hosts is the same: what it stores, and each reads what the other
has stored; what it shows; what it registers and holds. And a sound, which other suites play by a program of tests
alone."""

import json
from dataclasses import dataclass

import pytest

from captured_sound import Capture, make_wave, use_alsa
from program_file import program_file
from windows_programs import INSTANCE_MAGICS, instance_integer, instance_text, windows_path


@dataclass
class NotifierClass:
    clsid: str
    dialog: str       # the title of its dialog that edits an instance
    instance: bytes   # one that its dialog saves as it is
    form: str = ""    # what its web form posts, if it has one


CLASSES = {
    "SMTPMail": NotifierClass(
        "{4D03ADA6-067C-79C7-B3CD-B7D9C4293BF5}", "Edit SMTP Instance",
        INSTANCE_MAGICS["SMTPMail"] + b"".join(map(
            instance_text, ["192.0.2.25", "ann@example.com", "ops@example.com", "%n: 100%", "é\r\n\tis down"])),
        "gateway=192.0.2.1&to=a+1&from=nobody&subject=&message=b%20c"),
    "Sound": NotifierClass(
        "{A93D5106-D415-9AE1-2956-2D685A03A67B}", "Edit Sound Instance",
        INSTANCE_MAGICS["Sound"] + instance_text("C:\\bell.wav") + instance_integer(1)),
    "WinPopup": NotifierClass(
        "{B28A7D4D-B389-C787-CCC0-A0F773C8FC73}", "Edit WinPopup Instance",
        INSTANCE_MAGICS["WinPopup"] + instance_text("PC7") + instance_text("%n é"),
        "destination=PC9&message=one+%25n"),
    "LaunchProgram": NotifierClass(
        "{313E5016-EB2E-F2DD-BDB6-184EFE00A5D3}", "Edit Launch Program Instance",
        INSTANCE_MAGICS["LaunchProgram"] + b"".join(map(
            instance_text, ["C:\\restart.exe", "C:\\", '--node "%n"']))),
    "Beeper": NotifierClass(
        "{E0F08BCF-0BD9-3D64-842A-2FCEAE91F17E}", "Edit Beeper Instance",
        INSTANCE_MAGICS["Beeper"]
        + b"".join(map(instance_text, ["5550100", "ATDT%s,,,,%s#", "11", "12", "13", "%C"])) + instance_integer(0),
        "beepernumber=5550101&upcode=1&downcode=2&trapcode=3&reportmessage=%25C"),
    "Pager": NotifierClass(
        "{2669D42E-142D-8B34-EAC1-28B07EB3EABA}", "Edit Pager Instance",
        INSTANCE_MAGICS["Pager"]
        + b"".join(map(instance_text, ["5550200", "secret", "12345", "%n: %C", "TAP"])) + instance_integer(0),
        "pagernumber=5550201&password=&pagerid=17&message=%25C&protocol=UCP-SMS"),
    "Voice": NotifierClass(
        "{DEE8A963-837B-D33C-C75D-B637B7CCFCA2}", "Edit Voice Instance",
        INSTANCE_MAGICS["Voice"] + b"".join(map(instance_text, ["5550100", "C:\\again.wav"]))
        + instance_integer(3) + instance_integer(5)
        + b"".join(map(instance_text, [f"C:\\{name}.wav" for name in ("down", "up", "service_down", "service_up")]))),
}
LIBID = "{5625C924-5719-DA0E-EE98-237AC5FB0A3C}"
WITH_WEB_FORMS = [name for name, described in CLASSES.items() if described.form]


@pytest.fixture
def instance(request, tmp_path):
    file = tmp_path / "Night"
    file.write_bytes(CLASSES[request.param].instance)
    return request.param, file


@pytest.mark.parametrize("instance", CLASSES, indirect=True)
def test_the_host_shows_and_writes_the_same(sides, tmp_path, instance):
    name, file = instance
    shown = {bits: side.notifyhost("show", file.name, "--json", "--show-secrets", folder=tmp_path) for bits, side in sides.items()}
    assert shown[32] == shown[64]
    fields = [f"{field}={value}" for field, value in json.loads(shown[64])["fields"].items()]
    for bits, side in sides.items():
        side.notifyhost("new", "--no-check", name, f"from{bits}", *fields, folder=tmp_path)
        assert (tmp_path / f"from{bits}").read_bytes() == file.read_bytes()


@pytest.mark.parametrize("instance", CLASSES, indirect=True)
def test_the_dialog_saves_what_that_of_the_other_has_saved(sides, copy, instance):
    name, file = instance
    stored = CLASSES[name].instance
    for first, second in ((32, 64), (64, 32)):
        saved = copy(file, f"from_{first}")
        for bits in (first, second):
            sides[bits].save_in_dialog(name, CLASSES[name].dialog, saved)
            assert saved.read_bytes() == stored, bits


@pytest.mark.parametrize("instance", WITH_WEB_FORMS, indirect=True)
def test_the_web_forms_show_and_save_the_same(sides, tmp_path, instance):
    name, file = instance
    clsid = CLASSES[name].clsid
    for bits, side in sides.items():
        side.web_forms(clsid, "submit", tmp_path, f"instancename=from{bits}&origname=&{CLASSES[name].form}")
    assert (tmp_path / "from32").read_bytes() == (tmp_path / "from64").read_bytes()
    assert (tmp_path / "from32").read_bytes() != CLASSES[name].instance
    (tmp_path / "Default").write_bytes(CLASSES[name].instance)
    for action, path in (("add", tmp_path), ("edit", file), ("edit", tmp_path / "from32")):
        pages = {bits: side.web_forms(clsid, action, path) for bits, side in sides.items()}
        assert pages[32] == pages[64]
        assert b"</html>" in pages[64].lower()


def registered(side, folder) -> list[str]:
    """The keys that are about the module, with what stands in them and without the module's folder. 64-bit systems
    show some a second time."""
    side.told("reg", "export", r"HKLM\Software\Classes", "classes.reg", "/y", folder=folder)
    keys = (folder / "classes.reg").read_text("utf-16").split("\n\n")
    names = ["Brantel_Notifications", *(described.clsid for described in CLASSES.values()), LIBID]
    module_folder = windows_path(side.module.parent).replace("\\", r"\\")
    return [key.replace(module_folder, "<folder>") for key in keys
            if any(name in key for name in names) and r"\Wow6432Node\TypeLib" not in key]


def test_the_same_is_registered(sides, tmp_path):
    told = {}
    for bits, side in sides.items():
        side.notifyhost("register", folder=tmp_path)
        told[bits] = registered(side, tmp_path)
    assert sum(r'"<folder>\\Brantel_Notifications.dll"' in key for key in told[64]) == len(CLASSES) + 1
    # Each in the part of a type library's key that is for programs of its kind.
    assert [key.replace(r"\win64]", r"\win32]") for key in told[64]] == told[32]
    assert [key.partition("]")[0].rpartition("\\")[2] for key in told[64] if r"\win" in key] == ["win64"]


def test_both_modules_export_and_hold_the_same(sides):
    """Registry scripts, dialogs, texts, icons and bitmaps; a type library says for which system it is."""
    small, large = (program_file(sides[bits].module) for bits in (32, 64))
    assert small.exports() == large.exports()
    assert sorted(name.split()[0] for name in large.exports().values()) == [
        "DllCanUnloadNow", "DllGetClassObject", "DllRegisterServer", "DllUnregisterServer"]
    one, other = small.resources(), large.resources()
    differing = [key for key in {**one, **other} if one.get(key) != other.get(key)]
    assert differing == ["resource 'TYPELIB' 1 language 0x0409"]


def test_settings_are_carried_over(sides, tmp_path):
    sides[32].notifyhost("settings", "set", "Beeper", "--no-check", "comport=COM3", "dialstring=ATDT%s;%s",
                         folder=tmp_path)
    exported = sides[32].notifyhost("settings", "export", "Beeper", folder=tmp_path)
    assert "COM3" in exported
    (tmp_path / "beeper.json").write_text(exported)
    sides[64].notifyhost("settings", "import", "Beeper", "--no-check", "beeper.json", folder=tmp_path)
    assert sides[64].notifyhost("settings", "export", "Beeper", folder=tmp_path) == exported
    stored = sides[64].told("reg", "query", r"HKLM\SOFTWARE\Brantel\Vantrel\notification\Beeper", "/v",
                            "Settings_COMPort")
    assert b"COM3" in stored


def test_a_sound_is_played(sides, tmp_path):
    samples = make_wave(tmp_path / "bell.wav", 0.25)
    (tmp_path / "Bell").write_bytes(CLASSES["Sound"].instance[:16] + instance_text(windows_path(tmp_path / "bell.wav"))
                                    + instance_integer(0))
    capture = Capture(tmp_path)
    side = sides[64]
    use_alsa(side.environment)
    told = side.notifyhost("--module", side.module, "send", "Sound", "Bell", folder=tmp_path,
                           ALSA_CONFIG_PATH=str(capture.configuration))
    assert told.splitlines()[-1].startswith("The system has played the sound")
    assert capture.sounds() == [samples]
