"""telephone_sounds.py make FOLDER        writes wave files to play into a telephone call
telephone_sounds.py tell FOLDER PLAYED...   says which of them, and how much of it, was played

Each wave file is a melody of its own, by which it is known again. What was played is in raw files of the
same format, as a sound device that writes files leaves them.
"""

import array
import math
import pathlib
import sys
import wave

RATE = 44100
FRAME = 4  # two channels of 16 bits

MELODIES = {
    "repeat.wav": (440, 0, 440, 0, 440, 0),
    "router7.wav": (523, 659, 784),
    "item_down.wav": (784, 659, 523, 392),
    "item_up.wav": (392, 523, 659, 784),
}
TONE = 0.25  # seconds


def samples_of(melody) -> bytes:
    samples = array.array("h")
    for frequency in melody:
        for i in range(round(RATE * TONE)):
            # Never nothing: where a machine is late, the sound system fills in silence.
            value = round(8000 * math.sin(2 * math.pi * frequency * i / RATE)) or 1
            samples.extend((value, value))
    return samples.tobytes()


def make(folder: pathlib.Path) -> None:
    for name, melody in MELODIES.items():
        with wave.open(str(folder / name), "wb") as file:
            file.setnchannels(2)
            file.setsampwidth(2)
            file.setframerate(RATE)
            file.writeframes(samples_of(melody))


def tell(folder: pathlib.Path, played: list[str]) -> None:
    waves = {}
    for name in MELODIES:
        with wave.open(str(folder / name), "rb") as file:
            waves[name] = file.readframes(file.getnframes())
    for path in played:
        raw = pathlib.Path(path).read_bytes()
        frames = array.array("I", raw[:len(raw) - len(raw) % FRAME])
        heard = array.array("I", filter(None, frames)).tobytes()
        if not heard:
            continue
        seconds = len(heard) / FRAME / RATE
        for name, samples in waves.items():
            if samples.startswith(heard):
                whole = "to its end" if samples == heard else "and was cut short"
                print(f"{name:<14} {seconds:4.1f} s, {whole}")
                break
        else:
            print(f"unknown        {seconds:4.1f} s")


def main() -> None:
    match sys.argv[1:]:
        case ["make", folder]:
            make(pathlib.Path(folder))
        case ["tell", folder, *played]:
            tell(pathlib.Path(folder), played)
        case _:
            sys.exit(__doc__)


if __name__ == "__main__":
    main()
