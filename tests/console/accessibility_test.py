"""Every page of the console, judged by axe-core, narrow and wide, light and dark."""

import gzip
import pathlib

import pytest

from conftest import Person, pager, popup, set_width

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


@pytest.mark.parametrize("theme", ["light", "dark"])
@pytest.mark.parametrize("width", ["narrow", "wall"])
def test_axe_has_nothing_to_say(console, scripted, width, theme):
    (console.folder / "Centre").write_bytes(pager("word"))
    (console.folder / "Odd").write_bytes(b"no instance")
    (console.folder / "Popup").write_bytes(popup("x"))
    _, fields, _ = console.post("/instances/Restart/send", event="trap")
    set_width(scripted, width, theme)
    person = Person(scripted, console)
    complaints = {}
    for page in [*PAGES, fields["Location"]]:
        person.open(page)
        scripted.execute_cdp_cmd("Runtime.evaluate", {"expression": AXE})
        if found := scripted.execute_async_script(JUDGE):
            complaints[page] = found
        overflow = scripted.execute_script(
            "return document.documentElement.scrollWidth - document.documentElement.clientWidth")
        if overflow > 0:
            complaints.setdefault(page, []).append(f"{overflow} pixels too wide")
    assert complaints == {}
