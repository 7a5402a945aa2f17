"""The installer: what it puts where, and what is left when it goes."""

import re
import shutil
import struct
import subprocess
import sys
import zipfile

import pytest

from windows_programs import BUILD, HOST, MODULE, PRESET, ROOT, VERSION, wait_until, windows_path

sys.path.insert(0, str(ROOT / "packaging"))
from installer import Installer  # noqa: E402

NAME = f"Brantel_Notifications-{VERSION}-{PRESET}"
PROGRAM_FILES = "Program Files/Brantel_Notifications"
OWN_KEY = r"Software\\Brantel_Notifications"
SETTINGS = r"HKLM\SOFTWARE\Brantel\Vantrel\notification\SMTPMail"
NEWER = "1.2.3"
SECONDS = 1700000000
# By which installations in the field are known: never to be another.
UPGRADE_CODE = {"win32": "{215525B3-76EC-5B72-903C-E06192595014}",
                "win64": "{3202ADA3-79BD-55D3-9079-9C5CE4C99136}"}[PRESET]
# 3010, of which a Unix system keeps the lower eight bits.
RESTART_NEEDED = 3010 & 255


@pytest.fixture
def unpacked(packages, tmp_path):
    """The files of the release."""
    with zipfile.ZipFile(packages / f"{NAME}.zip") as archive:
        archive.extractall(tmp_path)
    return tmp_path / NAME


@pytest.fixture
def installer(packages):
    return packages / f"{NAME}.msi"


@pytest.fixture
def newer_installer(unpacked, tmp_path):
    """Of a release with another module and host, one document more and one less."""
    files = tmp_path / "newer"
    shutil.copytree(unpacked, files)
    for name in (MODULE.name, HOST.name):
        program = (files / name).read_bytes()
        (files / name).write_bytes(program.replace(version_resource(VERSION), version_resource(NEWER)))
    (files / "docs" / "of_the_newer.md").write_text("new\n")
    (files / "docs" / "watch.md").unlink()
    (files / "README.md").write_text("newer\n")
    package = tmp_path / "newer.msi"
    Installer(PRESET, NEWER, files, BUILD / "resources").make(package, SECONDS)
    return package


def version_resource(version: str) -> bytes:
    major, minor, patch = map(int, version.split("."))
    numbers = struct.pack("<4H", minor, major, 0, patch)
    return struct.pack("<2I", 0xFEEF04BD, 0x10000) + numbers + numbers


def properties(package) -> dict[str, str]:
    told = subprocess.run(["msiinfo", "export", package, "Property"], capture_output=True, text=True, check=True)
    return dict(line.split("\t") for line in told.stdout.splitlines()[3:])


def contents(folder) -> dict[str, bytes]:
    return {path.relative_to(folder).as_posix(): path.read_bytes() for path in folder.rglob("*") if path.is_file()}


def changes(before: dict[str, str], after: dict[str, str]) -> dict[str, str]:
    """The keys that came or changed; and none has gone."""
    assert before.keys() <= after.keys()
    return {key: values for key, values in after.items() if values != before.get(key)}


def registered_by_the_module(windows, folder) -> dict[str, str]:
    """What it changes in the registry when it registers itself from there."""
    before = windows.registry()
    assert windows(folder / HOST.name, "register") == 0
    registration = changes(before, windows.registry())
    assert windows(folder / HOST.name, "unregister") == 0
    assert windows.registry() == before
    return registration


def without_end_of_folder(keys: dict[str, str]) -> dict[str, str]:
    """The system itself writes the folder of the type library without the backslash at its end, which no
    installer can leave out."""
    return {key: values.replace('\\\\"\n', '"\n') if key.endswith("HELPDIR") else values
            for key, values in keys.items()}


def test_files_and_registry_of_an_installation(windows, installer, unpacked, tell_seconds):
    folder = windows.drive / PROGRAM_FILES
    shutil.copytree(unpacked, folder)
    registration = registered_by_the_module(windows, folder)
    shutil.rmtree(folder)
    files, registry = windows.files(), windows.registry()

    assert windows.msiexec("/i", installer) == 0
    tell_seconds("installing")
    assert contents(folder) == contents(unpacked)
    added = changes(registry, windows.registry())
    assert '"InstallFolder"="C:\\\\Program Files\\\\Brantel_Notifications\\\\"' in added.pop(OWN_KEY)
    assert without_end_of_folder(added) == registration

    assert windows.msiexec("/x", installer) == 0
    tell_seconds("removing")
    assert windows.registry() == registry
    assert windows.files() == files


def test_another_folder(windows, installer, unpacked, newer_installer):
    """It is remembered: a newer release goes there, too."""
    files, registry = windows.files(), windows.registry()
    folder = windows.drive / "Alerts" / "here"
    assert windows.msiexec("/i", installer, r"INSTALLFOLDER=C:\Alerts\here") == 0
    assert contents(folder) == contents(unpacked)
    assert windows.msiexec("/i", newer_installer) == 0
    assert (folder / "README.md").read_text() == "newer\n"
    assert not (windows.drive / PROGRAM_FILES).exists()
    assert windows.msiexec("/x", newer_installer) == 0
    assert windows.files() - {"Alerts"} == files
    assert windows.registry() == registry


def test_repair(windows, installer, unpacked, tell_seconds):
    folder = windows.drive / PROGRAM_FILES
    assert windows.msiexec("/i", installer) == 0
    registry = windows.registry()
    (folder / MODULE.name).unlink()
    (folder / "docs" / "settings.md").unlink()
    (folder / "NOTICES.txt").write_text("spoilt")
    assert windows("reg", "delete", r"HKCR\Brantel_Notifications.Sound.1", "/f") == 0
    assert windows.registry() != registry
    # What "/famus" stands for, which Wine does not know.
    assert windows.msiexec("/i", installer, "REINSTALL=ALL", "REINSTALLMODE=amus") == 0
    tell_seconds("repairing")
    assert contents(folder) == contents(unpacked)
    assert windows.registry() == registry


def settings(windows) -> str:
    return windows.registry()[r"Software\\Brantel\\Vantrel\\notification\\SMTPMail"]


def service_of(windows) -> str | None:
    """How Windows starts the service of the watch, where there is one."""
    windows.shut_down()
    text = (windows.folder / "prefix" / "system.reg").read_text("utf-8", "replace")
    keys = re.findall(r"^\[System\\\\(?:CurrentControlSet|ControlSet001)\\\\Services\\\\notifyhost\].*\n((?:.+\n)*)",
                      text, re.M)
    return keys[0] if keys else None


def test_upgrade_keeps_what_is_the_operators(windows, installer, newer_installer, tell_seconds):
    folder = windows.drive / PROGRAM_FILES
    assert windows.msiexec("/i", installer) == 0
    registry = windows.registry()
    windows.store(SETTINGS, "Settings_Timeout", "4711")
    instances = folder / "instances"
    instances.mkdir()
    assert windows(folder / HOST.name, "new", "Sound", windows_path(instances / "Bell"), "--no-check") == 0
    instance = (instances / "Bell").read_bytes()
    (instances / "night.toml").write_text('[[items]]\nname = "a"\naddress = "127.0.0.1"\nprobe = "icmp"\n')
    assert windows(folder / HOST.name, "service", "install", windows_path(instances / "night.toml")) == 0

    assert windows.msiexec("/i", newer_installer) == 0
    tell_seconds("upgrading")
    assert version_resource(NEWER) in (folder / MODULE.name).read_bytes()
    assert (folder / "README.md").read_text() == "newer\n"
    assert (folder / "docs" / "of_the_newer.md").exists()
    assert not (folder / "docs" / "watch.md").exists()
    assert (instances / "Bell").read_bytes() == instance
    assert '"Settings_Timeout"="4711"' in settings(windows)
    assert "notifyhost.exe" in service_of(windows)
    assert registry.items() <= windows.registry().items()

    # The service runs, which began with the system when that was asked for its registry. Unlike Windows, Wine does
    # not wait for its end before it removes the program.
    wait_until(lambda: windows(folder / HOST.name, "service", "stop") == 0)
    assert windows.msiexec("/x", newer_installer) == 0
    assert service_of(windows) is None
    assert (instances / "Bell").read_bytes() == instance
    assert [path.name for path in folder.iterdir()] == ["instances"]
    assert '"Settings_Timeout"="4711"' in settings(windows)
    assert OWN_KEY not in windows.registry()


def test_upgrade_while_a_host_runs(windows, installer, newer_installer, tmp_path):
    """Wine has no restart manager, so that the host goes on with its old file until the next start of Windows."""
    folder = windows.drive / PROGRAM_FILES
    assert windows.msiexec("/i", installer) == 0
    plan = tmp_path / "night.toml"
    plan.write_text('[[items]]\nname = "a"\naddress = "127.0.0.1"\nprobe = "icmp"\n')
    with windows.started(folder / HOST.name, "watch", windows_path(plan)) as host:
        wait_until((tmp_path / "night.toml.journal").exists)
        assert windows.msiexec("/i", newer_installer) == RESTART_NEEDED
        assert host.poll() is None
    windows.shut_down()
    assert windows("hostname") == 0
    assert version_resource(NEWER) in (folder / HOST.name).read_bytes()


def test_older_release_does_not_replace_a_newer_one(windows, installer, newer_installer):
    # Wine forgets the newer one when it came by an upgrade, so that this asks for no more than the refusal.
    assert windows.msiexec("/i", newer_installer) == 0
    registry, files = windows.registry(), windows.files()
    assert windows.msiexec("/i", installer) != 0
    assert version_resource(NEWER) in (windows.drive / PROGRAM_FILES / MODULE.name).read_bytes()
    assert (windows.registry(), windows.files()) == (registry, files)


def test_removal_of_what_is_not_there(windows, installer):
    registry, files = windows.registry(), windows.files()
    windows.msiexec("/x", installer)  # of which Wine says that it has succeeded
    assert (windows.registry(), windows.files()) == (registry, files)


def test_identities_follow_from_version_and_kind(installer, newer_installer):
    present, newer = properties(installer), properties(newer_installer)
    assert (present["ProductVersion"], newer["ProductVersion"]) == (VERSION, NEWER)
    assert present["UpgradeCode"] == newer["UpgradeCode"] == UPGRADE_CODE
    assert present["ProductCode"] != newer["ProductCode"]
