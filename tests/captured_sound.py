"""Captures what is played, behind the system's sound device, and makes what can be told apart there."""

import pathlib
import random
import wave
from array import array

from windows_programs import store_in_registry

# A device that writes what is played into files, one for each opening of the device.
ALSA_CONFIGURATION = """
</usr/share/alsa/alsa.conf>
pcm.!default {{ type plug slave.pcm "captured" }}
pcm.captured {{ type file slave.pcm {{ type null }} file "{file}" format "raw" truncate no }}
"""

RATE = 44100
FRAME = 4  # bytes: two channels of 16 bits


def without_silence(samples: bytes) -> bytes:
    """The frames that are not zero: silence is what the sound system adds where a sound has ended, or
    where this machine was too late with more of it. The noise of the tests has no such frames."""
    frames = array("I", samples[:len(samples) - len(samples) % FRAME])
    return array("I", filter(None, frames)).tobytes()


def make_wave(file: pathlib.Path, seconds: float) -> bytes:
    """Writes a wave file of noise, for each file's name another, and returns its samples."""
    samples = random.Random(file.name).randbytes(FRAME * round(RATE * seconds))
    assert without_silence(samples) == samples
    with wave.open(str(file), "wb") as output:
        output.setnchannels(2)
        output.setsampwidth(2)
        output.setframerate(RATE)
        output.writeframes(samples)
    return samples


def use_alsa(environment: dict[str, str]) -> None:
    """Has Wine do so also where a sound server is running."""
    store_in_registry(environment, r"HKCU\Software\Wine\Drivers", "Audio", "alsa")


class Capture:
    """The samples that were played, apart for each sound, but for silence."""

    def __init__(self, folder: pathlib.Path):
        self.file = folder / "played"
        self.configuration = folder / "alsa.conf"
        self.configuration.write_text(ALSA_CONFIGURATION.format(file=self.file))

    def sounds(self) -> list[bytes]:
        files = sorted(self.file.parent.glob("played*"))
        return [samples for file in files if (samples := without_silence(file.read_bytes()))]

    def size(self, sound: int) -> int:
        sounds = self.sounds()
        return len(sounds[sound]) if sound < len(sounds) else 0
