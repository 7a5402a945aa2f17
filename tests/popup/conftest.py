"""Sends pop-ups through the real module to a messenger library that stands in for the system's.

Everything runs in a Wine prefix of the suite's own: the library takes the place of Wine's, and what the
system says of itself is changed. DISPLAY names a screen for the dialogs, as ./test provides one.
"""

import pathlib
import shutil
import subprocess
from dataclasses import dataclass

import pytest

from windows_programs import (BUILD, HOST, INSTANCE_MAGICS, MODULE, REG, TEST_PROGRAMS, PreviewPart,
                              WinePrefix, instance_text, preview, windows_path, wine_prefix)

STAND_INS = BUILD / "sim" / "messenger"
DIALOG_TESTS = TEST_PROGRAMS / "popup" / "popup_tests.exe"

MAGIC = INSTANCE_MAGICS["WinPopup"]

TCPIP_KEY = r"HKLM\SYSTEM\CurrentControlSet\Services\Tcpip\Parameters"
SERVICE_KEY = r"HKLM\System\CurrentControlSet\Services\Neighbourhood\NetworkProvider"
ORDER_KEY = r"HKLM\System\CurrentControlSet\Control\NetworkProvider\Order"


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


class Office(WinePrefix):
    """Has the stand-ins in place."""

    def wine(self, *arguments, cwd=None, **variables) -> subprocess.CompletedProcess:
        return self.run(*arguments, cwd=cwd or self.folder, variables=variables, stdout=subprocess.PIPE,
                        stderr=subprocess.STDOUT, text=True)

    def delete(self, key: str, name: str) -> None:
        assert self.wine(REG, "delete", key, "/v", name, "/f").returncode == 0

    def install(self, variant: str, name: str = "netapi32.dll") -> None:
        self.put_library(STAND_INS / variant / "netapi32.dll", name)

    def store_instance(self, destination: bytes, message: bytes) -> pathlib.Path:
        instance = self.folder / "instance"
        instance.write_bytes(MAGIC + instance_text(destination) + instance_text(message))
        return instance

    def preview(self, destination: bytes, message: bytes, *options: str, **environment) -> list[PreviewPart]:
        """What the host says of such an alert."""
        return preview(windows_path(self.store_instance(destination, message)), *options,
                       environment={**self.environment, **environment})

    def send(self, destination: bytes, message: bytes, *options: str, host=HOST, cwd=None,
             **environment) -> Outcome:
        """Sends an alert with the instance's fields as these bytes."""
        instance, report = self.store_instance(destination, message), self.folder / "report"
        report.unlink(missing_ok=True)
        done = self.wine(host, "--module", MODULE, "send", "WinPopup", "--raw-values", windows_path(instance),
                         *options, cwd=cwd, MESSENGER_REPORT=windows_path(report), **environment)
        lines = report.read_text().splitlines() if report.exists() else []
        return Outcome(done.returncode, done.stdout, lines)


@pytest.fixture(scope="session")
def made_office():
    overrides = "netapi32,svrapi=n;mscoree,mshtml=;winemenubuilder.exe=d"
    with wine_prefix(Office, WINEDLLOVERRIDES=overrides) as office:
        office.store(ORDER_KEY, "ProviderOrder", "Neighbourhood")
        office.store(SERVICE_KEY, "Name", "Simulated Network")
        office.store(SERVICE_KEY, "ProviderPath", r"C:\windows\system32\neighbourhood.dll")
        office.put_library(STAND_INS / "neighbourhood.dll")
        office.store(TCPIP_KEY, "Hostname", "pc7")
        yield office


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
