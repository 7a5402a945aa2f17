"""Every page of the console, judged by axe-core, narrow and wide, light and dark."""

import gzip
import itertools
import pathlib

import pytest

from conftest import Person, pager, popup, set_width
from windows_programs import wait_until

AXE = gzip.decompress((pathlib.Path(__file__).parent / "axe.min.js.gz").read_bytes()).decode("utf-8")

PAGES = ["/", "/instances", "/instances/Restart", "/instances/Centre/form", "/add/Beeper", "/add/Voice/form",
         "/classes", "/help/Pager", "/journal", "/nothing", "/instances/Odd",
         "/acknowledge?item=gate"]

JUDGE = """
const done = arguments[arguments.length - 1];
axe.run(document, {iframes: false}).then(
    result => done(result.violations.map(v => v.id + ": " + v.nodes.map(n => n.html).join(" | "))),
    error => done([String(error)]));
"""


@pytest.mark.parametrize("page", [*PAGES, "the page of a send"])
def test_axe_has_nothing_to_say(console, scripted, page):
    (console.folder / "Centre").write_bytes(pager("word"))
    (console.folder / "Odd").write_bytes(b"no instance")
    (console.folder / "Popup").write_bytes(popup("x"))
    if page not in PAGES:
        _, fields, _ = console.post("/instances/Restart/send", event="trap")
        page = fields["Location"]
        # It comes anew when that is over.
        wait_until(lambda: "Under way" not in console.request("GET", page)[2])
    Person(scripted, console).open(page)
    scripted.execute_cdp_cmd("Runtime.evaluate", {"expression": AXE})
    complaints = []
    for width, theme in itertools.product(["narrow", "wall"], ["light", "dark"]):
        set_width(scripted, width, theme)
        complaints += [f"{width}, {theme}: {complaint}" for complaint in scripted.execute_async_script(JUDGE)]
        overflow = scripted.execute_script(
            "return document.documentElement.scrollWidth - document.documentElement.clientWidth")
        if overflow > 0:
            complaints.append(f"{width}, {theme}: {overflow} pixels too wide")
    assert complaints == []
