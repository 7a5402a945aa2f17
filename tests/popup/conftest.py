"""Sends pop-ups through the real module to a messenger library that stands in for the system's.

Everything runs in a Wine prefix of the suite's own: the library takes the place of Wine's, and what the
system says of itself is changed. DISPLAY names a screen for the dialogs, as ./test provides one.
"""

import os
import pathlib
import shutil
import subprocess
import tempfile
from dataclasses import dataclass

import pytest

ROOT = pathlib.Path(__file__).resolve().parent.parent.parent
HOST = ROOT / "out" / "win32" / "notifyhost.exe"
MODULE = ROOT / "out" / "win32" / "Brantel_Notifications.dll"
STAND_INS = ROOT / "build" / "win32" / "sim" / "messenger"
DIALOG_TESTS = ROOT / "build" / "win32-tests" / "tests" / "popup" / "popup_tests.exe"
WINE = ROOT / "tools" / "wine"

# Seconds within which a program ends: far more than it takes, so that only a hang reaches it.
TIME_LIMIT = 120

# WinPopup's magic, {8B762C29-0B2E-9C58-6C92-5C2A021AFB08} in its binary layout.
MAGIC = bytes.fromhex("292C768B 2E0B 589C 6C925C2A021AFB08")

TCPIP_KEY = r"HKLM\SYSTEM\CurrentControlSet\Services\Tcpip\Parameters"
SERVICE_KEY = r"HKLM\System\CurrentControlSet\Services\Neighbourhood\NetworkProvider"
ORDER_KEY = r"HKLM\System\CurrentControlSet\Control\NetworkProvider\Order"


def windows_path(path) -> str:
    return subprocess.run([WINE, "--path", path], capture_output=True, text=True, check=True,
                          timeout=TIME_LIMIT).stdout.rstrip("\n")


@dataclass
class Popup:
    """What the messenger library was given."""
    destination: str
    parameters: str
    buffer: bytes


@dataclass
class Outcome:
    exit_code: int
    output: str
    report: list[str]  # the messenger library's lines

    @property
    def popups(self) -> list[Popup]:
        found = []
        for i, line in enumerate(self.report):
            if line.startswith("message for "):
                destination = line.removeprefix("message for ").partition(":")[0]
                found.append(Popup(destination, self.report[i + 1].strip(),
                                   bytes.fromhex(self.report[i + 2])))
        return found


@dataclass
class Office:
    """A Wine prefix with the stand-ins in place, and a folder for what the tests make."""
    folder: pathlib.Path
    environment: dict[str, str]

    @property
    def system_directory(self) -> pathlib.Path:
        return self.folder / "prefix" / "drive_c" / "windows" / "system32"

    def wine(self, *arguments, cwd=None, **environment) -> subprocess.CompletedProcess:
        return subprocess.run([WINE, *arguments], env={**self.environment, **environment},
                              cwd=cwd or self.folder, stdin=subprocess.DEVNULL,
                              stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True,
                              timeout=TIME_LIMIT)

    def store(self, key: str, name: str, text: str) -> None:
        assert self.wine("reg", "add", key, "/v", name, "/d", text, "/f").returncode == 0

    def delete(self, key: str, name: str) -> None:
        assert self.wine("reg", "delete", key, "/v", name, "/f").returncode == 0

    def install(self, variant: str, name: str = "netapi32.dll") -> None:
        shutil.copy(STAND_INS / variant / "netapi32.dll", self.system_directory / name)

    def send(self, destination: bytes, message: bytes, *options: str, host=HOST, cwd=None,
             **environment) -> Outcome:
        """Sends an alert with the instance's fields as these bytes."""
        instance, report = self.folder / "instance", self.folder / "report"
        fields = b"".join((len(text) + 1).to_bytes(4, "little") + text + b"\0"
                          for text in (destination, message))
        instance.write_bytes(MAGIC + fields)
        report.unlink(missing_ok=True)
        done = self.wine(host, "--module", MODULE, "send", "WinPopup", windows_path(instance),
                         *options, cwd=cwd, MESSENGER_REPORT=windows_path(report), **environment)
        lines = report.read_text().splitlines() if report.exists() else []
        return Outcome(done.returncode, done.stdout, lines)


@pytest.fixture(scope="session")
def made_office():
    folder = pathlib.Path(tempfile.mkdtemp(prefix="popup_test_"))
    # Under this locale the ANSI code page is 1252.
    environment = {**os.environ, "LC_ALL": "C.UTF-8", "WINEDEBUG": "-all",
                   "WINEPREFIX": str(folder / "prefix"),
                   "WINEDLLOVERRIDES": "netapi32,svrapi=n;mscoree,mshtml=;winemenubuilder.exe=d"}
    office = Office(folder, environment)
    try:
        office.store(ORDER_KEY, "ProviderOrder", "Neighbourhood")
        office.store(SERVICE_KEY, "Name", "Simulated Network")
        office.store(SERVICE_KEY, "ProviderPath", r"C:\windows\system32\neighbourhood.dll")
        shutil.copy(STAND_INS / "neighbourhood.dll", office.system_directory)
        office.store(TCPIP_KEY, "Hostname", "pc7")
        yield office
    finally:
        for option in ("-k", "-w"):
            subprocess.run([WINE, "--server", option], env=environment, capture_output=True,
                           timeout=TIME_LIMIT)
        shutil.rmtree(folder, ignore_errors=True)


@pytest.fixture
def office(made_office):
    """The office with the whole messenger library."""
    made_office.install("whole")
    return made_office


@pytest.fixture
def windows_95(office, tmp_path):
    """A copy of a program for which the system is Windows 98, and the library of that family."""
    def make(program):
        copy = shutil.copy(program, tmp_path / f"{program.stem}_98.exe")
        office.store(rf"HKCU\Software\Wine\AppDefaults\{program.stem}_98.exe", "Version", "win98")
        office.install("whole", "svrapi.dll")
        return copy

    return make
