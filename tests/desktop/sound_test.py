"""What Sound plays, captured behind the system's sound device and compared with the wave file."""

import pathlib

import pytest

from captured_sound import FRAME, Capture, make_wave, use_alsa
from conftest import sound_instance
from windows_programs import preview, wait_until, windows_path

ONCE = b"\0\0\0\0"
ON_AND_ON = b"\1\0\0\0"


@pytest.fixture(scope="module")
def sound_by_alsa(wine_environment):
    use_alsa(wine_environment)


class Sounds:
    """A Sound notifier, its instances and what is heard of it."""

    def __init__(self, folder: pathlib.Path, start_driver):
        self.folder = folder
        self.capture = Capture(folder)
        self.driver = start_driver("Sound", ALSA_CONFIG_PATH=str(self.capture.configuration))

    def make_wave(self, name: str) -> bytes:
        return make_wave(self.folder / name, 0.25)

    def send(self, wave_name: str, number: bytes) -> str:
        instance = self.folder / "instance"
        instance.write_bytes(sound_instance(windows_path(self.folder / wave_name), number))
        return self.driver("send", windows_path(instance))

    def stop(self) -> str:
        return self.driver("send", "")


@pytest.fixture
def sounds(tmp_path, start_driver, sound_by_alsa):
    return Sounds(tmp_path, start_driver)


def check_loop(played: bytes, samples: bytes) -> None:
    """That it is the sound again and again. Tells where else it leaves it, and what comes there."""
    expected = (samples * (len(played) // len(samples) + 1))[:len(played)]
    if played == expected:
        return
    at = next(i for i in range(0, len(played), FRAME) if played[i:i + FRAME] != expected[i:i + FRAME])
    pytest.fail(f"{len(played)} bytes were played of a sound of {len(samples)}, and leave it behind {at}, where "
                f"what the sound has at {(2 * samples).find(played[at:at + 4 * FRAME])} follows")


def test_a_sound_has_been_played_to_its_end_when_send_returns(sounds):
    samples = sounds.make_wave("bell.wav")

    assert sounds.send("bell.wav", ONCE) == "result 00000000"
    assert sounds.capture.sounds() == [samples]


def test_sounds_follow_one_another(sounds):
    bell, siren = sounds.make_wave("bell.wav"), sounds.make_wave("siren.wav")

    for name in ("bell.wav", "siren.wav", "bell.wav"):
        assert sounds.send(name, ONCE) == "result 00000000"
    assert sounds.capture.sounds() == [bell, siren, bell]


def test_a_loop_goes_on_until_the_empty_send(sounds):
    samples = sounds.make_wave("siren.wav")

    assert sounds.send("siren.wav", ON_AND_ON) == "result 00000002"
    wait_until(lambda: sounds.capture.size(0) > 5 * len(samples))
    assert sounds.stop() == "result 00000000"
    [played] = sounds.capture.sounds()
    check_loop(played, samples)

    # Nothing of it is left beside the next sound.
    bell = sounds.make_wave("bell.wav")
    assert sounds.send("bell.wav", ONCE) == "result 00000000"
    assert sounds.capture.sounds() == [played, bell]


def test_send_returns_while_the_loop_plays(sounds):
    samples = sounds.make_wave("siren.wav")

    assert sounds.send("siren.wav", ON_AND_ON) == "result 00000002"
    at_return = sounds.capture.size(0)
    wait_until(lambda: sounds.capture.size(0) > at_return + 2 * len(samples))
    assert sounds.stop() == "result 00000000"


def test_a_second_loop_replaces_the_first(sounds):
    siren, horn = sounds.make_wave("siren.wav"), sounds.make_wave("horn.wav")

    assert sounds.send("siren.wav", ON_AND_ON) == "result 00000002"
    wait_until(lambda: sounds.capture.size(0) > 2 * len(siren))
    assert sounds.send("horn.wav", ON_AND_ON) == "result 00000002"
    wait_until(lambda: sounds.capture.size(1) > 2 * len(horn))
    size_of_first = sounds.capture.size(0)
    wait_until(lambda: sounds.capture.size(1) > 5 * len(horn))
    assert sounds.stop() == "result 00000000"
    first, second = sounds.capture.sounds()
    assert len(first) == size_of_first
    check_loop(first, siren)
    check_loop(second, horn)


def test_a_sound_played_once_ends_a_loop(sounds):
    siren, bell = sounds.make_wave("siren.wav"), sounds.make_wave("bell.wav")

    assert sounds.send("siren.wav", ON_AND_ON) == "result 00000002"
    wait_until(lambda: sounds.capture.size(0) > 2 * len(siren))
    assert sounds.send("bell.wav", ONCE) == "result 00000000"
    loop, once = sounds.capture.sounds()
    check_loop(loop, siren)
    assert once == bell
    assert sounds.stop() == "result 00000000"
    assert sounds.capture.sounds() == [loop, bell]


def test_the_empty_send_succeeds_where_nothing_plays(sounds):
    assert sounds.stop() == "result 00000000"
    assert sounds.stop() == "result 00000000"
    assert sounds.capture.sounds() == []


def test_every_number_but_zero_means_a_loop(sounds):
    samples = sounds.make_wave("siren.wav")

    assert sounds.send("siren.wav", b"\0\0\0\x80") == "result 00000002"
    wait_until(lambda: sounds.capture.size(0) > 2 * len(samples))
    assert sounds.stop() == "result 00000000"


def test_an_instance_that_ends_before_the_number_is_played_once(sounds):
    samples = sounds.make_wave("bell.wav")

    assert sounds.send("bell.wav", b"") == "result 00000000"
    assert sounds.capture.sounds() == [samples]


def test_a_file_that_is_missing_or_no_wave_fails(sounds):
    (sounds.folder / "text.wav").write_text("no wave file")

    assert sounds.send("none.wav", ONCE) == "result 80004005"
    assert sounds.send("text.wav", ONCE) == "result 80004005"
    assert sounds.capture.sounds() == []


def test_an_instance_that_cannot_be_loaded_fails_and_leaves_a_loop_alone(sounds):
    samples = sounds.make_wave("siren.wav")

    assert sounds.send("siren.wav", ON_AND_ON) == "result 00000002"
    assert sounds.driver("send", windows_path(sounds.folder / "none")) == "result 80004005"
    wait_until(lambda: sounds.capture.size(0) > 2 * len(samples))
    assert sounds.stop() == "result 00000000"


def test_a_preview_names_the_sound_and_plays_nothing(sounds, wine_environment):
    samples = sounds.make_wave("bell.wav")
    environment = {**wine_environment, "ALSA_CONFIG_PATH": str(sounds.capture.configuration)}
    assert sounds.send("bell.wav", ONCE) == "result 00000000"

    [part] = preview(windows_path(sounds.folder / "instance"), environment=environment)
    assert part.bytes.decode() == windows_path(sounds.folder / "bell.wav")
    assert part.words == "played once; 0.3 s long"
    assert sounds.capture.sounds() == [samples]
