"""The pictures of the dialogs in the documentation, made here and held against the dialogs as they are.

With BRANTEL_UPDATE_PICTURES set the pictures are made anew.
"""

import os
import pathlib
import subprocess
import time
from io import BytesIO

import pytest
from PIL import Image, ImageChops

from conftest import ROOT, TIME_LIMIT, launch_program_instance, sound_instance, windows_path

PICTURES = ROOT / "docs" / "pictures"

SHOWN = {
    "Sound": ("sound_dialog.png", "Siren",
              sound_instance(r"C:\Sounds\siren.wav", b"\1\0\0\0")),
    "LaunchProgram": ("launch_program_dialog.png", "Page the duty officer",
                      launch_program_instance(r"C:\Tools\page.exe", r"C:\Tools", "--duty %n")),
}


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


def save_small(picture: Image.Image, file: pathlib.Path) -> None:
    file.parent.mkdir(parents=True, exist_ok=True)
    picture.quantize(min(256, colours(picture)), dither=Image.Dither.NONE).save(file, optimize=True)


@pytest.mark.parametrize("notifier_class", SHOWN)
def test_the_documentation_shows_the_dialog(notifier_class, start_driver, wine_environment, tmp_path):
    file_name, instance, content = SHOWN[notifier_class]
    (tmp_path / instance).write_bytes(content)
    driver = start_driver(notifier_class)
    word, left, top, width, height = driver("edit", windows_path(tmp_path), instance).split()
    assert word == "shown"

    picture = photograph_when_still(f"{width}x{height}+{left}+{top}", wine_environment)
    assert driver("cancel") == "result 80004005"

    assert picture.size == (int(width), int(height))
    if "BRANTEL_UPDATE_PICTURES" in os.environ:
        save_small(picture, PICTURES / file_name)
    with Image.open(PICTURES / file_name) as kept:
        assert kept.size == picture.size
        # The edit's caret may blink.
        difference = ImageChops.difference(kept.convert("RGB"), picture).convert("L")
        differing = sum(count for value, count in enumerate(difference.histogram()) if value > 16)
        assert differing < picture.width * picture.height / 50
