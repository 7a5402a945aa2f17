"""The sounds that the demo plays, known again from what was played of them."""

import subprocess
import wave

from windows_programs import ROOT, TIME_LIMIT


def run(*arguments) -> str:
    return subprocess.run(["/usr/bin/python3", ROOT / "sim" / "telephone_sounds.py", *arguments],
                          capture_output=True, text=True, check=True, timeout=TIME_LIMIT).stdout


def test_sounds_are_known_again(tmp_path):
    run("make", tmp_path)
    with wave.open(str(tmp_path / "router7.wav"), "rb") as file:
        samples = file.readframes(file.getnframes())
    played = {"whole": samples, "cut": samples[:44100], "late": b"\0" * 400 + samples + b"\0" * 7,
              "silent": b"\0" * 400, "other": b"\1\2\3\4" * 44100}
    for name, content in played.items():
        (tmp_path / name).write_bytes(content)
    assert run("tell", tmp_path, *(tmp_path / name for name in played)) == (
        "router7.wav     0.8 s, to its end\n"
        "router7.wav     0.2 s, and was cut short\n"
        "router7.wav     0.8 s, to its end\n"
        "unknown         1.0 s\n")
