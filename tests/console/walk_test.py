"""People walk the console in Chromium, with scripts and without."""

import json
import time

import pytest
from selenium.webdriver.common.action_chains import ActionChains
from selenium.webdriver.common.by import By
from selenium.webdriver.common.keys import Keys

from conftest import PLAN, PROGRAM, WIDTHS, Person, is_seen_down, launch_program, pager, set_width
from served_console import running_console
from windows_programs import INSTANCE_MAGICS, ROOT, instance_integer, instance_text, wait_until, windows_path


def content(console, name: str) -> bytes:
    return (console.folder / name).read_bytes()


def entries(console) -> list[dict]:
    file = console.folder / "notifyhost.journal"
    return [json.loads(line) for line in file.read_text().splitlines()] if file.exists() else []


@pytest.mark.parametrize("width", WIDTHS)
def test_adds_an_instance_by_the_consoles_form(person, console, width):
    set_width(person.driver, width)
    person.open("/instances")
    person.press("LaunchProgram")
    person.enter("Name", "Lamp & bell")
    person.enter("Program filename", PROGRAM)
    person.enter("Working path", "C:\\")
    person.enter("Program arguments", "\"%n\" é")
    person.press("Save")
    assert person.heading == "Lamp & bell"
    assert "Saved." in person.text
    assert content(console, "Lamp & bell") == launch_program(PROGRAM, "\"%n\" é")


def test_says_what_keeps_an_instance_from_being_saved(person, console):
    person.open("/add/LaunchProgram/form")
    person.enter("Name", "night")
    person.enter("Program filename", PROGRAM)
    person.press("Save")
    assert "Instance name already exists.  Please choose another name" in \
        person.driver.find_element(By.CSS_SELECTOR, "[role=alert]").get_attribute("textContent")
    assert person.field("Program filename").get_property("value") == PROGRAM
    assert sorted(file.name for file in console.folder.iterdir() if "notifyhost" not in file.name) == [
        "Night", "Restart"]


def test_adds_an_instance_by_the_modules_page(person, console):
    person.open("/add/SMTPMail")
    person.enter_frame()
    for name, value in [("instancename", "Mail room"), ("gateway", "192.0.2.1"), ("to", "ops@example.com"),
                        ("from", "net@example.com"), ("subject", "%n 100% <up>"), ("message", "one\ntwo = 2")]:
        field = person.driver.find_element(By.NAME, name)
        field.clear()
        field.send_keys(value)
    person.press_in_frame("Submit", "The instance is saved.")
    person.driver.find_element(By.LINK_TEXT, "Show the instance").click()
    person.driver.switch_to.default_content()
    person.wait(lambda: person.path == "/instances/Mail%20room")
    assert content(console, "Mail room") == INSTANCE_MAGICS["SMTPMail"] + b"".join(map(instance_text, [
        "192.0.2.1", "ops@example.com", "net@example.com", "%n 100% <up>", "one\r\ntwo = 2"]))


def test_edits_an_instance_by_the_modules_page(person, console):
    person.open("/instances/Night")
    person.press("Edit")
    person.enter_frame()
    field = person.driver.find_element(By.NAME, "beepernumber")
    assert field.get_property("value") == "5550100"
    field.clear()
    field.send_keys("555 0199")
    person.press_in_frame("Submit", "The instance is saved.")
    person.driver.switch_to.default_content()
    texts = ["555 0199", "tone", "1", "2", "3", ""]
    assert content(console, "Night") == INSTANCE_MAGICS["Beeper"] + b"".join(map(instance_text, texts)) + instance_integer(0)


@pytest.mark.parametrize("button, heading", [("Notifications", "Instances"), ("Top view", "Overview")])
def test_the_modules_ways_out_lead_to_the_console(person, button, heading):
    person.open("/add/Beeper")
    person.enter_frame()
    person.press_in_frame(button, f"Show the {heading.lower()}")
    person.driver.find_element(By.CSS_SELECTOR, "a[target=_top]").click()
    person.driver.switch_to.default_content()
    person.wait(lambda: person.heading == heading)


def test_the_modules_help_link_opens_the_help_of_the_class(person):
    person.open("/add/Beeper")
    person.enter_frame()
    person.driver.find_element(By.LINK_TEXT, "Help").click()
    person.wait(lambda: len(person.driver.window_handles) == 2)
    first, second = person.driver.window_handles
    person.driver.switch_to.window(second)
    try:
        person.wait(lambda: person.driver.find_elements(By.TAG_NAME, "dl"))
        assert person.heading == "Beeper"
        assert "the telephone number of the beeper" in person.text
    finally:
        person.driver.close()
        person.driver.switch_to.window(first)


def test_edits_an_instance_with_a_password_without_showing_it(person, console):
    (console.folder / "Centre").write_bytes(pager("s3cret word"))
    person.open("/instances/Centre")
    assert "s3cret" not in person.driver.page_source
    person.press("Edit")
    assert "s3cret" not in person.driver.page_source
    person.enter("Pager number", "5550299")
    person.press("Save")
    assert person.heading == "Centre"
    assert content(console, "Centre") == pager("s3cret word").replace(b"5550201", b"5550299")


def test_renames_copies_deletes_and_puts_back(person, console):
    stored = content(console, "Restart")
    person.open("/instances/Restart")
    person.enter("New name", "RESTART")
    person.press("Rename")
    assert person.heading == "RESTART"
    person.enter("Name of the copy", "Second")
    person.press("Copy")
    assert person.heading == "Second"
    assert content(console, "Second") == stored
    person.press("Delete Second")
    assert person.heading == "Second is deleted"
    assert not (console.folder / "Second").exists()
    person.press("Undo")
    assert person.heading == "Second"
    assert content(console, "Second") == stored
    person.press("Delete Second")
    person.press("To the instances")
    assert "Second" not in person.text
    assert list((console.folder / "notifyhost.deleted").iterdir()) == []


def test_sends_a_test_and_shows_what_became_of_it(person, console):
    person.open("/instances/Restart")
    person.enter("Name of the device", "router7")
    person.press("Send it now")
    person.wait(lambda: "The program was started" in person.text)
    assert person.heading == "Test of Restart"
    last = entries(console)[-1]
    assert (last["class"], last["event"], last["delivered"]) == ("LaunchProgram", "item-down", True)
    person.open("/instances/Restart")
    person.wait(lambda: "delivered" in person.text)


def test_a_send_that_fails_says_why(person, console):
    person.open("/instances/Night")
    person.press("Send it now")
    person.wait(lambda: person.driver.find_elements(By.CSS_SELECTOR, ".verdict .state-failed"))
    person.wait(lambda: "cannot be opened" in person.text or "opening the port" in person.text.lower())


def test_finds_alerts_in_the_journal(person, console):
    console.post("/instances/Restart/send", event="trap")
    wait_until(lambda: entries(console) and "delivered" in entries(console)[-1])
    person.open("/journal")
    person.enter("Words", "TRAP")
    person.press("Search")
    wait_until(lambda: (person.driver.refresh(), "LaunchProgram Restart, trap" in person.text)[1])
    person.driver.find_element(By.PARTIAL_LINK_TEXT, "LaunchProgram Restart, trap").click()
    person.wait(lambda: person.heading == "LaunchProgram Restart, trap")
    assert "notifyhost serve on" in person.text


def test_the_journal_is_live(console, scripted):
    person = Person(scripted, console)
    person.open("/journal")
    before = person.driver.find_element(By.CSS_SELECTOR, "#live [role=status]").text
    time.sleep(0.5)
    console.post("/instances/Restart/send", event="service-up")
    person.wait(lambda: "LaunchProgram Restart, service-up" in person.text)
    person.wait(lambda: person.driver.find_element(By.CSS_SELECTOR, "#live [role=status]").text != before)


@pytest.fixture
def watching_console(wine_environment, tmp_path):
    """Of its own, with a watch over what is down."""
    plan = tmp_path / "night.toml"
    plan.write_text(PLAN)
    (tmp_path / "instances").mkdir()
    with running_console(tmp_path / "instances", wine_environment, "--watch", windows_path(plan)) as console:
        wait_until(lambda: is_seen_down(console))
        yield console


def test_acknowledges_that_something_is_down(watching_console, driver, tmp_path):
    person = Person(driver, watching_console)
    person.open("/")
    person.press("Acknowledge")
    assert person.heading == "gate"
    person.enter("Your name", "Ann <b> & \"Bob\"")
    person.press("Acknowledge")
    assert person.heading == "Overview"
    # The watch itself says so within a second.
    wait_until(lambda: (person.driver.refresh(), "acknowledged by Ann <b> & \"Bob\"" in person.text)[1])
    assert person.driver.find_elements(By.LINK_TEXT, "Acknowledge") == []
    records = [json.loads(line) for line in (tmp_path / "night.toml.journal").read_text().splitlines()]
    assert [(record["item"], record["by"]) for record in records if record["what"] == "acknowledged"] == [
        ("gate", "Ann <b> & \"Bob\"")]
    person.open("/acknowledge?item=gate")
    assert "There is nothing to acknowledge." in person.text


CONTROLS = "[...document.querySelectorAll('a[href], button, input:not([type=hidden]), select, textarea')]"

# The place among the controls of the one that has the focus, and whether that is to be seen; nothing when none
# has it, or what is scrolled by the keyboard.
FOCUSED = f"""
const focused = document.activeElement;
const place = {CONTROLS}.indexOf(focused);
if (place < 0) return null;
const style = getComputedStyle(focused);
return [place, style.outlineStyle !== 'none' || style.boxShadow !== 'none'];
"""


@pytest.mark.parametrize("path", ["/", "/instances", "/instances/Restart", "/instances/Restart/form", "/journal",
                                  "/acknowledge?item=gate"])
def test_every_control_is_reached_by_the_keyboard(console, scripted, path):
    """By Tab alone, in the order in which they stand, and each is seen to have the focus."""
    set_width(scripted, "wide")
    Person(scripted, console).open(path)
    count = scripted.execute_script(f"return {CONTROLS}.length")
    reached = []
    for _ in range(count):
        ActionChains(scripted).send_keys(Keys.TAB).perform()
        reached.append(scripted.execute_script(FOCUSED))
    assert reached == [[place, True] for place in range(count)]


HOSTILE = (ROOT / "tests" / "hostile_texts.txt").read_text().split("\n")[:-1]
# Of all that doctor says of the values nothing is known.
ELEMENTS = "return document.querySelectorAll('*').length - document.querySelectorAll('[aria-labelledby=doctor] *').length"
SHOWN = """return [document.body.textContent, ...[...document.querySelectorAll('input, textarea')].map(field => field.value)]
    .join('\\n')"""


def journal_lines(kind: str, texts: list[str]) -> str:
    """What became of an alert for each text, which has it everywhere, and of one whose log has all of them."""
    def line(number: int, text: str, log: str) -> str:
        return json.dumps({
            "attempt": f"{kind}{number}", "began": "2026-11-22T03:12:09.123+01:00", "command": text, "class": text,
            "instance": f"C:\\x\\Mail {number}", "event": text, "machine": text, "process": 1, "delivered": False,
            "verdict": text, "result": text, "seconds": 1.5, "log": log}) + "\n"
    return "".join([*(line(number, text, text) for number, text in enumerate(texts)),
                    line(len(texts), "all", "\r\n".join(texts))])


def mail_instances(texts: list[str]) -> list[bytes]:
    """With five of the texts in each."""
    return [INSTANCE_MAGICS["SMTPMail"] + b"".join(map(instance_text, texts[first:first + 5]))
            for first in range(0, len(texts), 5)]


def pages_with(console, driver, kind: str, texts: list[str]) -> dict[str, tuple[int, str]]:
    """The pages that show the texts: how many elements they have, and the texts that are seen."""
    instances = mail_instances(texts)
    for number, content in enumerate(instances):
        (console.folder / f"Mail {number}").write_bytes(content)
    (console.folder / "notifyhost.journal").write_text(journal_lines(kind, texts))
    own = [f"/instances/Mail%20{number}{form}" for number in range(len(instances)) for form in ("", "/form")]
    # The console does not look at its journal each time.
    last = f"/journal/{kind}{len(texts)}"
    wait_until(lambda: console.request("GET", last)[0] == 200)
    shown = {}
    for page in ["/", "/instances", "/journal", "entry", *own]:
        driver.get(console.url(last if page == "entry" else page))
        shown[page] = (driver.execute_script(ELEMENTS), driver.execute_script(SHOWN))
        assert "broken" not in driver.title
    return shown


def without_control_characters(texts: list[str]) -> list[str]:
    return [text for text in texts if text.isprintable() or "\xa0" in text]


def test_forty_hostile_texts_add_nothing_to_any_page(scripted, wine_environment, tmp_path):
    assert len(HOSTILE) == 40
    with running_console(tmp_path, wine_environment) as console:
        harmless = pages_with(console, scripted, "harmless", [f"text {number}" for number in range(40)])
        hostile = pages_with(console, scripted, "hostile", HOSTILE)
    assert {page: count for page, (count, _) in hostile.items()} == {
        page: count for page, (count, _) in harmless.items()}
    for page, texts in [("/journal", HOSTILE), ("entry", HOSTILE), ("/instances", HOSTILE[:8]),
                        *((f"/instances/Mail%20{number}{form}", HOSTILE[5 * number:5 * number + 5])
                          for number in range(8) for form in ("", "/form"))]:
        for text in without_control_characters(texts):
            assert text in hostile[page][1], page


def test_hostile_words_of_a_send_stay_words(console, scripted):
    """Also where a script puts them in, as they come."""
    counts = []
    for name in ("ops", "\"><img src=x onerror=document.title='broken'></pre><b>"):
        # Nobody listens there.
        fields = ["127.9.9.9", name, "ops@example.org", "", ""]
        (console.folder / "Mail").write_bytes(INSTANCE_MAGICS["SMTPMail"] + b"".join(map(instance_text, fields)))
        person = Person(scripted, console)
        person.open("/instances/Mail")
        person.press("Send it now")
        person.wait(lambda: person.driver.find_elements(By.CSS_SELECTOR, ".verdict .state-failed"))
        counts.append(scripted.execute_script("return document.querySelectorAll('*').length"))
        assert name in scripted.find_element(By.ID, "log").text
    assert counts[0] == counts[1]
    assert "broken" not in scripted.title


def test_one_of_the_browsers_runs_no_scripts(scriptless, scripted):
    page = "data:text/html,<p id=p>off</p><script>document.getElementById('p').textContent = 'on'</script>"
    for driver, expected in [(scriptless, "off"), (scripted, "on")]:
        driver.get(page)
        assert driver.find_element(By.ID, "p").text == expected
