"""Calls people through the real module, on a telephone exchange in the place of the system's telephony.

What the called person hears is captured behind the system's sound device. Everything runs in a Wine
prefix of the suite's own, whose telephony library is the exchange.
"""

import pathlib
import subprocess
from dataclasses import dataclass, field

import pytest

from captured_sound import Capture, make_wave, use_alsa
from windows_programs import (BUILD, HOST, INSTANCE_MAGICS, MODULE, TIME_LIMIT, WINE, PreviewPart, WinePrefix,
                              end_all, instance_integer, instance_text, log_and_result, preview, running_driver,
                              windows_path, wine_prefix)

EXCHANGE = BUILD / "sim" / "telephony" / "tapi32.dll"

VOICE_MAGIC = INSTANCE_MAGICS["Voice"]

# The system's telephony is no library of Wine's own.
OVERRIDES = "tapi32=n;mscoree,mshtml=;winemenubuilder.exe=d"


class Machine(WinePrefix):
    """Its telephony is what the test puts there."""

    @property
    def telephony(self) -> pathlib.Path:
        return self.system_directory / "tapi32.dll"


@pytest.fixture(scope="session")
def machine_of_all():
    with wine_prefix(Machine, WINEDLLOVERRIDES=OVERRIDES) as machine:
        use_alsa(machine.environment)
        yield machine


@pytest.fixture
def machine(machine_of_all):
    machine_of_all.put_library(EXCHANGE)
    return machine_of_all


@dataclass
class Call:
    """A run of the host that sends one alert, under way or over."""
    process: subprocess.Popen
    output_file: pathlib.Path

    def output(self) -> str:
        return log_and_result(self.output_file.read_text())

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
        self.capture = Capture(self.folder)
        self.environment = {
            **self.machine.environment,
            "ALSA_CONFIG_PATH": str(self.capture.configuration),
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
        return make_wave(self.folder / name, seconds)

    def store(self, *, number="5550100", repeat="repeat.wav", count=0, button=5,
              item_down="item_down.wav", item_up="item_up.wav", service_down="service_down.wav",
              service_up="service_up.wav") -> str:
        sounds = (item_down, item_up, service_down, service_up)
        (self.folder / "instance").write_bytes(
            VOICE_MAGIC + instance_text(number) + instance_text(repeat) + instance_integer(count)
            + instance_integer(button) + b"".join(map(instance_text, sounds)))
        return "instance"

    def start(self, *, event="item-down", device_message="device.wav", device_name="router7",
              host=HOST, environment=None, options=(), **fields) -> Call:
        instance = self.store(**fields)
        output_file = self.folder / "output"
        with output_file.open("w") as output:
            process = subprocess.Popen(
                [WINE, host, "--module", MODULE, "send", "Voice", instance, "--raw-values", "--event", event,
                 "--set", f"C={device_message}", "--set", f"n={device_name}", *options],
                cwd=self.folder, env=environment or self.environment, stdin=subprocess.DEVNULL,
                stdout=output, stderr=subprocess.STDOUT)
        self.running.append(process)
        return Call(process, output_file)

    def preview(self, *options: str, **fields) -> list[PreviewPart]:
        """What the host says of an alert of such an instance."""
        return preview(self.store(**fields), *options, environment=self.environment, folder=self.folder)

    def call(self, **arguments) -> Call:
        return self.start(**arguments).end()


@pytest.fixture
def telephone(machine, tmp_path):
    telephone = Telephone(machine, tmp_path)
    yield telephone
    end_all(telephone.running)


@pytest.fixture
def driver(telephone):
    with running_driver("Voice", telephone.environment, telephone.folder) as driver:
        yield driver
