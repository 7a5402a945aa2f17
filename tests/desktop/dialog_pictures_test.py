"""The pictures of the dialogs in the documentation, made here and held against the dialogs as they are.

Each picture says which Wine drew it. Another one has other frames and letters: there a dialog is only seen to
be shown whole and at about the same size.

With BRANTEL_UPDATE_PICTURES set the pictures are made anew, and the tests fail: they have compared nothing.
./test keeps that from them; behind tools/build this sets it, with FOLDER anywhere:

    BRANTEL_UPDATE_PICTURES=1 WINEPREFIX=FOLDER BRANTEL_MODULE="$(tools/wine --path out/win32/*.dll)" \\
        xvfb-run -a -s "-screen 0 1024x768x24" python3 -m pytest tests/desktop/dialog_pictures_test.py
"""

import os
import pathlib
import re
import subprocess
import time
from dataclasses import dataclass
from io import BytesIO

import pytest
from PIL import Image, ImageChops, PngImagePlugin

from conftest import (beeper_instance, launch_program_instance, pager_instance, smtp_mail_instance,
                      sound_instance, voice_instance, win_popup_instance)
from windows_programs import ROOT, TIME_LIMIT, WINE, windows_path

PICTURES = ROOT / "docs" / "pictures"


@dataclass
class Shown:
    notifier_class: str
    instance: str
    content: bytes
    button: int | None = None  # opens the dialog to show over that of the instance


DUTY_PHONE = pager_instance("5550200", "secret", "0041 79 123 45 67", "%n: %C", "SMS-TAP", profile=1)
DUTY_PAGER = beeper_instance("5550100", "ATDT%s,,,,%s#", "1", "2", "3", profile=1)
SHOWN = {
    "smtp_mail_dialog.png": Shown(
        "SMTPMail", "Mail to the operators",
        smtp_mail_instance("192.0.2.25", "ann@example.com, bob@example.com",
                           "Network watch <watch@example.com>", "%D is down",
                           "%D has not answered since %T.\r\n\r\nThe network watch\r\n")),
    "sound_dialog.png": Shown("Sound", "Siren",
                              sound_instance(r"C:\Sounds\siren.wav", b"\1\0\0\0")),
    "launch_program_dialog.png": Shown(
        "LaunchProgram", "Page the duty officer",
        launch_program_instance(r"C:\Tools\page.exe", r"C:\Tools", "--duty %n")),
    "beeper_dialog.png": Shown("Beeper", "Duty officer", DUTY_PAGER),
    "beeper_settings_dialog.png": Shown("Beeper", "Duty officer", DUTY_PAGER, button=228),
    "pager_dialog.png": Shown("Pager", "Duty officer", DUTY_PHONE),
    "pager_settings_dialog.png": Shown("Pager", "Duty officer", DUTY_PHONE, button=234),
    "voice_dialog.png": Shown(
        "Voice", "Call the duty officer",
        voice_instance("5550100", r"C:\Sounds\repeat.wav", 4, 99, r"C:\Sounds\item_down.wav",
                       r"C:\Sounds\item_up.wav", r"C:\Sounds\service_down.wav",
                       r"C:\Sounds\service_up.wav")),
    "win_popup_dialog.png": Shown("WinPopup", "Tell the night watch",
                                  win_popup_instance("WATCH", "%n is down: %C")),
}

# Width and height of an edit's caret, which blinks: all that may differ lies in so small a place.
CARET = (2, 16)
# Between a dialog of one Wine and the same of another, in width or height.
MOST_DIFFERING_LENGTH = 10

# Wine's own network library has the messenger service's entry points, and a program that calls one ends.
WITHOUT_NETWORK_LIBRARY = {"WINEDLLOVERRIDES": "netapi32,mscoree,mshtml=;winemenubuilder.exe=d"}


def photograph(area: str, environment: dict[str, str]) -> Image.Image:
    taken = subprocess.run(["import", "-window", "root", "-crop", area, "+repage", "png:-"],
                           env=environment, stdout=subprocess.PIPE, check=True, timeout=TIME_LIMIT)
    return Image.open(BytesIO(taken.stdout)).convert("RGB")


def colours(picture: Image.Image) -> int:
    return len(picture.getcolors(picture.width * picture.height))


def photograph_when_still(area: str, environment: dict[str, str]) -> Image.Image:
    """A picture that is the same as the one taken after it, so that nothing is only half drawn."""
    deadline = time.monotonic() + TIME_LIMIT
    before = photograph(area, environment)
    while time.monotonic() < deadline:
        after = photograph(area, environment)
        if colours(after) > 4 and ImageChops.difference(before, after).getbbox() is None:
            return after
        before = after
    raise AssertionError("the screen does not come to rest")


def differs_by_a_caret_at_most(one: Image.Image, other: Image.Image) -> bool:
    place = ImageChops.difference(one, other).getbbox()
    if place is None:
        return True
    left, top, right, bottom = place
    return right - left <= CARET[0] and bottom - top <= CARET[1]


def wine_version(environment: dict[str, str]) -> str:
    told = subprocess.run([WINE, "--version"], env=environment, capture_output=True, text=True, check=True,
                          timeout=TIME_LIMIT)
    return re.match(r"wine-[\d.]+", told.stdout)[0]


def save_small(picture: Image.Image, file: pathlib.Path, drawn_by: str) -> None:
    file.parent.mkdir(parents=True, exist_ok=True)
    texts = PngImagePlugin.PngInfo()
    texts.add_text("Software", drawn_by)
    picture.quantize(min(256, colours(picture)), dither=Image.Dither.NONE).save(
        file, optimize=True, pnginfo=texts)


def expect_same(kept: Image.Image, picture: Image.Image, drawn_by: str) -> None:
    if kept.info["Software"] != drawn_by:
        assert kept.size == pytest.approx(picture.size, abs=MOST_DIFFERING_LENGTH)
        return
    assert kept.size == picture.size
    assert differs_by_a_caret_at_most(kept.convert("RGB"), picture)


@pytest.mark.parametrize("file_name", SHOWN)
def test_the_documentation_shows_the_dialog(file_name, start_driver, wine_environment, tmp_path):
    shown = SHOWN[file_name]
    (tmp_path / shown.instance).write_bytes(shown.content)
    driver = start_driver(shown.notifier_class, **WITHOUT_NETWORK_LIBRARY)
    answer = driver("edit", windows_path(tmp_path), shown.instance)
    if shown.button is not None:
        answer = driver("press", shown.button)
    word, left, top, width, height = answer.split()
    assert word == "shown"

    picture = photograph_when_still(f"{width}x{height}+{left}+{top}", wine_environment)
    if shown.button is not None:
        assert driver("close") == "closed"
    assert driver("cancel") == "result 80004005"

    assert picture.size == (int(width), int(height))
    drawn_by = wine_version(wine_environment)
    if "BRANTEL_UPDATE_PICTURES" in os.environ:
        save_small(picture, PICTURES / file_name, drawn_by)
        pytest.fail("made anew; look at it, and run the test without BRANTEL_UPDATE_PICTURES")
    with Image.open(PICTURES / file_name) as kept:
        expect_same(kept, picture, drawn_by)
