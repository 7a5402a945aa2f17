"""Calls people through the real module, on a telephone exchange in the place of the system's telephony.

What the called person hears is captured behind the system's sound device. Everything runs in a Wine
prefix of the suite's own, whose telephony library is the exchange.
"""

import os
import pathlib
import random
import shutil
import subprocess
import tempfile
import time
import uuid
import wave
from array import array
from dataclasses import dataclass, field

import pytest

ROOT = pathlib.Path(__file__).resolve().parent.parent.parent
WINE = ROOT / "tools" / "wine"
HOST = ROOT / "out" / "win32" / "notifyhost.exe"
MODULE = ROOT / "out" / "win32" / "Brantel_Notifications.dll"
EXCHANGE = ROOT / "build" / "win32" / "sim" / "telephony" / "tapi32.dll"
DRIVER = ROOT / "build" / "win32-tests" / "tests" / "desktop" / "notifier_driver.exe"

# Seconds within which a call ends, or something of it is heard: far more than it takes, so that only a
# hang reaches it.
TIME_LIMIT = 120

VOICE_MAGIC = uuid.UUID("C4F822F8-1890-08CD-6842-1838A3A78A26").bytes_le

# The system's telephony is no library of Wine's own.
OVERRIDES = "tapi32=n;mscoree,mshtml=;winemenubuilder.exe=d"

# A device that writes what is played into files, one for each opening of the device.
ALSA_CONFIGURATION = """
</usr/share/alsa/alsa.conf>
pcm.!default {{ type plug slave.pcm "captured" }}
pcm.captured {{ type file slave.pcm {{ type null }} file "{file}" format "raw" truncate no }}
"""

FRAME = 4  # bytes


def without_silence(samples: bytes) -> bytes:
    """The frames that are not zero: silence is what the sound system adds where a sound has ended, or
    where this machine was too late with more of it. The noise of the tests has no such frames."""
    frames = array("I", samples[:len(samples) - len(samples) % FRAME])
    return array("I", filter(None, frames)).tobytes()


def wait_until(condition):
    deadline = time.monotonic() + TIME_LIMIT
    while not (result := condition()):
        assert time.monotonic() < deadline, "it does not come about"
        time.sleep(0.02)
    return result


def windows_path(path) -> str:
    return subprocess.run([WINE, "--path", path], capture_output=True, text=True, check=True,
                          timeout=TIME_LIMIT).stdout.rstrip("\n")


@dataclass
class Machine:
    """A Wine prefix whose telephony is what the test puts there."""
    prefix: pathlib.Path
    environment: dict[str, str]

    @property
    def telephony(self) -> pathlib.Path:
        return self.prefix / "drive_c" / "windows" / "system32" / "tapi32.dll"

    def run(self, *arguments) -> None:
        subprocess.run([WINE, *arguments], env=self.environment, check=True, capture_output=True,
                       timeout=TIME_LIMIT)


@pytest.fixture(scope="session")
def machine_of_all():
    folder = pathlib.Path(tempfile.mkdtemp(prefix="voice_test_"))
    # Under this locale the ANSI code page is 1252.
    machine = Machine(folder / "prefix", {**os.environ, "LC_ALL": "C.UTF-8", "WINEDEBUG": "-all",
                                          "WINEDLLOVERRIDES": OVERRIDES,
                                          "WINEPREFIX": str(folder / "prefix")})
    try:
        # Wine is to use ALSA also where a sound server is running.
        machine.run("reg", "add", r"HKCU\Software\Wine\Drivers", "/v", "Audio", "/d", "alsa", "/f")
        yield machine
    finally:
        for option in ("-k", "-w"):
            subprocess.run([WINE, "--server", option], env=machine.environment, capture_output=True,
                           timeout=TIME_LIMIT)
        shutil.rmtree(folder, ignore_errors=True)


@pytest.fixture
def machine(machine_of_all):
    machine_of_all.telephony.unlink(missing_ok=True)
    shutil.copy(EXCHANGE, machine_of_all.telephony)
    return machine_of_all


@dataclass
class Call:
    """A run of the host that sends one alert, under way or over."""
    process: subprocess.Popen
    output_file: pathlib.Path

    def output(self) -> str:
        return self.output_file.read_text()

    def end(self) -> "Call":
        self.process.wait(TIME_LIMIT)
        return self

    def log(self) -> list[str]:
        return self.output().splitlines()


@dataclass
class Telephone:
    """The exchange's script and transcript, the called person's keys and ears, and who calls."""
    machine: Machine
    folder: pathlib.Path
    running: list[subprocess.Popen] = field(default_factory=list)

    def __post_init__(self):
        self.keys = self.folder / "keys"
        self.keys.write_text("")
        self.transcript_file = self.folder / "transcript"
        self.transcript_file.write_text("")
        (self.folder / "alsa.conf").write_text(
            ALSA_CONFIGURATION.format(file=self.folder / "played"))
        self.environment = {
            **self.machine.environment,
            "ALSA_CONFIG_PATH": str(self.folder / "alsa.conf"),
            "TELEPHONE_EXCHANGE": windows_path(self.folder / "script"),
            "TELEPHONE_EXCHANGE_TRANSCRIPT": windows_path(self.transcript_file)}
        self.script("at 0.1 call-state connected")

    def script(self, *lines: str) -> None:
        """What the exchange does in the calls to come, beside listening for keys."""
        (self.folder / "script").write_text(
            "\n".join([*lines, f"keys {windows_path(self.keys)}", ""]))

    def press(self, keys: str) -> None:
        with self.keys.open("a") as file:
            file.write(keys)

    def transcript(self) -> list[str]:
        """What happened at the exchange, without the times."""
        return [" ".join(line.split()[1:]) for line in self.transcript_file.read_text().splitlines()]

    def times_of(self, event: str) -> list[float]:
        return [float(line.split()[0]) for line in self.transcript_file.read_text().splitlines()
                if " ".join(line.split()[1:]) == event]

    def make_wave(self, name: str, seconds: float) -> bytes:
        """Writes a wave file of noise, each name another, and returns its samples."""
        samples = random.Random(name).randbytes(FRAME * round(44100 * seconds))
        assert without_silence(samples) == samples
        with wave.open(str(self.folder / name), "wb") as file:
            file.setnchannels(2)
            file.setsampwidth(2)
            file.setframerate(44100)
            file.writeframes(samples)
        return samples

    def heard(self) -> list[bytes]:
        """The samples of each sound that was played, but for silence."""
        files = sorted(self.folder.glob("played*"))
        return [samples for file in files if (samples := without_silence(file.read_bytes()))]

    def store(self, *, number="5550100", repeat="repeat.wav", count=0, button=5,
              item_down="item_down.wav", item_up="item_up.wav", service_down="service_down.wav",
              service_up="service_up.wav") -> str:
        def text(value: str) -> bytes:
            return (len(value) + 1).to_bytes(4, "little") + value.encode() + b"\0"

        (self.folder / "instance").write_bytes(
            VOICE_MAGIC + text(number) + text(repeat) + count.to_bytes(4, "little", signed=True)
            + button.to_bytes(4, "little", signed=True)
            + b"".join(map(text, (item_down, item_up, service_down, service_up))))
        return "instance"

    def start(self, *, event="item-down", device_message="device.wav", device_name="router7",
              host=HOST, environment=None, options=(), **fields) -> Call:
        instance = self.store(**fields)
        output_file = self.folder / "output"
        with output_file.open("w") as output:
            process = subprocess.Popen(
                [WINE, host, "--module", MODULE, "send", "Voice", instance, "--event", event,
                 "--set", f"C={device_message}", "--set", f"n={device_name}", *options],
                cwd=self.folder, env=environment or self.environment, stdin=subprocess.DEVNULL,
                stdout=output, stderr=subprocess.STDOUT)
        self.running.append(process)
        return Call(process, output_file)

    def call(self, **arguments) -> Call:
        return self.start(**arguments).end()

    def close(self) -> None:
        for process in self.running:
            if process.poll() is None:
                process.kill()
            process.wait(TIME_LIMIT)


@pytest.fixture
def telephone(machine, tmp_path):
    telephone = Telephone(machine, tmp_path)
    yield telephone
    telephone.close()


@dataclass
class Driver:
    """A running notifier_driver, which holds a Voice notifier."""
    process: subprocess.Popen

    def __call__(self, *words) -> str:
        self.process.stdin.write("\t".join(map(str, words)) + "\n")
        self.process.stdin.flush()
        answer = self.process.stdout.readline().rstrip("\r\n")
        assert answer, "the driver has ended"
        return answer


@pytest.fixture
def driver(telephone):
    process = subprocess.Popen([WINE, DRIVER, "Voice"], text=True, env=telephone.environment,
                               cwd=telephone.folder, stdin=subprocess.PIPE, stdout=subprocess.PIPE)
    yield Driver(process)
    try:
        process.communicate(timeout=TIME_LIMIT)
        assert process.returncode == 0
    finally:
        process.kill()
