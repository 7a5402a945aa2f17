"""Sees and hears what notifiers do, from outside Windows.

DISPLAY and WINEPREFIX name a screen and a prefix for the tests alone, as ./test provides them.
"""

import os
import pathlib
import subprocess
import time
from dataclasses import dataclass

import pytest

ROOT = pathlib.Path(__file__).resolve().parent.parent.parent
WINE = ROOT / "tools" / "wine"
DRIVER = ROOT / "build" / "win32-tests" / "tests" / "desktop" / "notifier_driver.exe"

# Seconds for what takes a moment: far more than that, so that only a hang reaches it.
TIME_LIMIT = 60


def windows_path(path) -> str:
    return subprocess.run([WINE, "--path", path], capture_output=True, text=True, check=True,
                          timeout=TIME_LIMIT).stdout.rstrip("\n")


def wait_until(condition) -> None:
    deadline = time.monotonic() + TIME_LIMIT
    while not condition():
        assert time.monotonic() < deadline, "it does not come about"
        time.sleep(0.01)


@pytest.fixture(scope="session")
def wine_environment() -> dict[str, str]:
    missing = {"DISPLAY", "WINEPREFIX"} - os.environ.keys()
    assert not missing, f"the tests need {missing}; run ./test desktop"
    # Under this locale the ANSI code page is 1252.
    return {**os.environ, "LC_ALL": "C.UTF-8", "WINEDEBUG": "-all"}


@dataclass
class Driver:
    """A running notifier_driver, which holds a notifier of one class."""
    process: subprocess.Popen

    def __call__(self, *words) -> str:
        self.process.stdin.write("\t".join(map(str, words)) + "\n")
        self.process.stdin.flush()
        answer = self.process.stdout.readline().rstrip("\r\n")
        assert answer, "the driver has ended"
        return answer


@pytest.fixture
def start_driver(wine_environment):
    """A function that starts the driver with a notifier of the named class."""
    drivers = []

    def start(notifier_class: str, **environment) -> Driver:
        process = subprocess.Popen([WINE, DRIVER, notifier_class], text=True,
                                   env={**wine_environment, **environment},
                                   stdin=subprocess.PIPE, stdout=subprocess.PIPE)
        drivers.append(process)
        return Driver(process)

    yield start
    for process in drivers:
        try:
            process.communicate(timeout=TIME_LIMIT)
            assert process.returncode == 0
        finally:
            process.kill()


def instance_text(text: str) -> bytes:
    """A text as instance files have it."""
    stored = text.encode("cp1252") + b"\0"
    return len(stored).to_bytes(4, "little") + stored


def sound_instance(wave_file: str, number: bytes) -> bytes:
    """The file of a Sound instance; the number says whether the sound goes on."""
    return (bytes.fromhex("51406A5D 0876 D65D F1D32CFEA0F80A9F")
            + instance_text(wave_file) + number)


def smtp_mail_instance(gateway: str, to: str, sender: str, subject: str, message: str) -> bytes:
    return (bytes.fromhex("8C26DDD6 2BA3 86EF 2683A7DA9410F949")
            + b"".join(map(instance_text, (gateway, to, sender, subject, message))))


def launch_program_instance(program: str, directory: str, arguments: str) -> bytes:
    return (bytes.fromhex("6C7EECEC 188E A24C C56F5334C2BD7945")
            + instance_text(program) + instance_text(directory) + instance_text(arguments))


def beeper_instance(number: str, dialing_options: str, up: str, down: str, trap: str,
                    profile: int) -> bytes:
    """The file of a Beeper instance without a report message."""
    texts = (number, dialing_options, up, down, trap, "")
    return (bytes.fromhex("81F446E5 3D98 7E5A 610BE80BF158F22E")
            + b"".join(map(instance_text, texts)) + profile.to_bytes(4, "little"))


def pager_instance(number: str, password: str, pager_id: str, message: str, protocol: str,
                   profile: int) -> bytes:
    """The file of a Pager instance."""
    texts = (number, password, pager_id, message, protocol)
    return (bytes.fromhex("0D5405CF 4F53 4B16 BD02D12A35BF0840")
            + b"".join(map(instance_text, texts)) + profile.to_bytes(4, "little"))


def voice_instance(number: str, repeat: str, count: int, button: int, *messages: str) -> bytes:
    return (bytes.fromhex("F822F8C4 9018 CD08 68421838A3A78A26")
            + instance_text(number) + instance_text(repeat)
            + count.to_bytes(4, "little", signed=True) + button.to_bytes(4, "little", signed=True)
            + b"".join(map(instance_text, messages)))


def win_popup_instance(destination: str, message: str) -> bytes:
    return (bytes.fromhex("292C768B 2E0B 589C 6C925C2A021AFB08")
            + instance_text(destination) + instance_text(message))
