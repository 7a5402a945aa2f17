"""Pictures of every page, as people see it: on a telephone, at a desk and on a wall, light and dark.

They are left in build/console-pictures, to be looked at. With BRANTEL_UPDATE_PICTURES set, those of the
documentation are made anew from them.
"""

import base64
import io
import itertools
import os
import pathlib
import time

import pytest
from PIL import Image

from conftest import WIDTHS, Person, beeper, launch_program, pager, popup, set_width
from served_console import running_console
from windows_programs import INSTANCE_MAGICS, ROOT, instance_integer, instance_text, wait_until

PICTURES = ROOT / "build" / "console-pictures"
DOCUMENTED = {"overview_wide_light", "instance_narrow_light", "send_narrow_dark", "journal_wide_dark"}
TALLEST = 2600


def fill(console) -> dict[str, str]:
    """Makes something to look at, and gives the paths of the pages."""
    for name, content in [("Centre", pager("word")), ("Duty room", popup("%n: %C")), ("Odd", b"no instance"),
                          ("Siren", INSTANCE_MAGICS["Sound"] + instance_text("C:\\Alarms\\siren.wav") + instance_integer(1)),
                          ("Restart", launch_program()), ("Night", beeper())]:
        (console.folder / name).write_bytes(content)
    _, sent, _ = console.post("/instances/Night/send", event="item-down")
    console.post("/instances/Restart/send", event="trap")
    wait_until(lambda: "Under way" not in console.request("GET", sent["Location"])[2])
    return {"overview": "/", "instances": "/instances", "instance": "/instances/Night", "form": "/add/Voice/form",
            "framed": "/instances/Night/edit", "send": sent["Location"], "classes": "/classes", "help": "/help/Pager",
            "journal": "/journal", "message": "/nothing"}


def picture(driver, width: str) -> bytes:
    height = driver.execute_script("return Math.max(document.documentElement.scrollHeight, innerHeight)")
    clip = {"x": 0, "y": 0, "width": WIDTHS[width], "height": min(height, TALLEST), "scale": 1}
    shot = driver.execute_cdp_cmd("Page.captureScreenshot",
                                  {"format": "png", "optimizeForSpeed": True, "captureBeyondViewport": True,
                                   "clip": clip})
    return base64.b64decode(shot["data"])


def darkness(image: Image.Image) -> float:
    """Of the page's ground, from 0 to 1."""
    return 1 - sum(image.getpixel((2, 2))) / (3 * 255)


@pytest.fixture
def pictured_console(wine_environment, started_console):
    """In a folder as an operator would name it: its name is in the pictures. Where the other console runs, there
    is the drive for it."""
    folder = pathlib.Path(wine_environment["WINEPREFIX"]) / "drive_c" / "Instances"
    folder.mkdir(exist_ok=True)
    for file in folder.iterdir():
        file.unlink(missing_ok=True)
    with running_console(folder, wine_environment, shown_as="C:\\Instances") as console:
        yield console


def test_pages_are_as_light_or_dark_as_people_want_them(pictured_console, scripted):
    console = pictured_console
    PICTURES.mkdir(parents=True, exist_ok=True)
    pages = fill(console)
    person = Person(scripted, console)
    for name, path in pages.items():
        person.open(path)
        for width, theme in itertools.product(WIDTHS, ("light", "dark")):
            set_width(scripted, width, theme)
            time.sleep(0.1)  # for what is in the frame
            data = picture(scripted, width)
            (PICTURES / f"{name}_{width}_{theme}.png").write_bytes(data)
            image = Image.open(io.BytesIO(data)).convert("RGB")
            assert image.width == WIDTHS[width]
            assert (darkness(image) > 0.5) == (theme == "dark"), (name, width)
            assert len(image.getcolors(1 << 24)) > 10, (name, width)
    if "BRANTEL_UPDATE_PICTURES" in os.environ:
        for name in DOCUMENTED:
            image = Image.open(PICTURES / f"{name}.png")
            image.quantize(64).save(ROOT / "docs" / "pictures" / f"console_{name}.png", optimize=True)
        pytest.fail("made anew; look at them, and run the test without BRANTEL_UPDATE_PICTURES")
