"""The web console of the released host, and browsers that look at it."""

import urllib.parse

import pytest
from selenium.common.exceptions import StaleElementReferenceException, WebDriverException
from selenium.webdriver.common.by import By
from selenium.webdriver.support.ui import WebDriverWait

import browser
from served_console import Console, running_console
from windows_programs import (INSTANCE_MAGICS, TIME_LIMIT, given_or_own_prefix, instance_integer, instance_text,
                              plan_item_that_is_down, wait_until, windows_path)

# A program that every Windows has and that ends at once.
PROGRAM = "C:\\windows\\system32\\hostname.exe"


def launch_program(program: str = PROGRAM, arguments: str = "%n") -> bytes:
    return INSTANCE_MAGICS["LaunchProgram"] + b"".join(map(instance_text, [program, "C:\\", arguments]))


def beeper(number: str = "5550100") -> bytes:
    texts = [number, "tone", "1", "2", "3", ""]
    return INSTANCE_MAGICS["Beeper"] + b"".join(map(instance_text, texts)) + instance_integer(0)


def pager(password: str) -> bytes:
    texts = ["5550201", password, "12345", "%n is %C", "TAP"]
    return INSTANCE_MAGICS["Pager"] + b"".join(map(instance_text, texts)) + instance_integer(0)


def popup(message: str) -> bytes:
    return INSTANCE_MAGICS["WinPopup"] + instance_text("DUTY") + instance_text(message)


@pytest.fixture(scope="session")
def wine_environment():
    with given_or_own_prefix() as environment:
        yield environment


PLAN = plan_item_that_is_down("gate")


def is_seen_down(console: Console) -> bool:
    return "tile-down" in console.request("GET", "/")[2]


@pytest.fixture(scope="session")
def started_console(wine_environment, tmp_path_factory):
    plan = tmp_path_factory.mktemp("watch") / "night.toml"
    plan.write_text(PLAN)
    folder = tmp_path_factory.mktemp("instances")
    with running_console(folder, wine_environment, "--watch", windows_path(plan)) as console:
        wait_until(lambda: is_seen_down(console))
        yield console


@pytest.fixture
def console(started_console):
    """With two instances, and a journal as other tests have left it."""
    for file in started_console.folder.iterdir():
        if file.is_file() and not file.name.startswith("notifyhost"):
            file.unlink(missing_ok=True)
    (started_console.folder / "Restart").write_bytes(launch_program())
    (started_console.folder / "Night").write_bytes(beeper())
    return started_console


@pytest.fixture(scope="session")
def scripted(tmp_path_factory):
    with browser.chromium(tmp_path_factory.mktemp("chromium")) as driver:
        yield driver


@pytest.fixture(scope="session")
def scriptless(tmp_path_factory):
    with browser.chromium(tmp_path_factory.mktemp("chromium"), has_scripts=False) as driver:
        yield driver


WIDTHS = {"narrow": 360, "wide": 1280, "wall": 2560}


def set_width(driver, width: str, theme: str = "light") -> None:
    driver.execute_cdp_cmd("Emulation.setDeviceMetricsOverride",
                           {"width": WIDTHS[width], "height": 900, "deviceScaleFactor": 1,
                            "mobile": width == "narrow"})
    # A page that is open changes its colours at once: what is looked at is not something between them.
    driver.execute_cdp_cmd("Emulation.setEmulatedMedia",
                           {"features": [{"name": "prefers-color-scheme", "value": theme},
                                         {"name": "prefers-reduced-motion", "value": "reduce"}]})


class Person:
    """Who sits before a browser: does things by what the page says."""

    def __init__(self, driver, console: Console):
        self.driver = driver
        self.console = console

    def open(self, path: str) -> None:
        self.driver.get(self.console.url(path))

    def field(self, label: str):
        return self.driver.find_element(
            By.XPATH, f"//label[starts-with(normalize-space(.), '{label}')]"
                      "/descendant-or-self::*[self::input or self::select]"
                      f" | //*[@id=//label[starts-with(normalize-space(.), '{label}')]/@for]")

    def enter(self, label: str, text: str) -> None:
        field = self.field(label)
        field.clear()
        field.send_keys(text)

    def press(self, name: str) -> None:
        """A button or a link, and waits for the page that follows."""
        before = self.driver.find_element(By.TAG_NAME, "html")
        self._control(name).click()
        self.wait(lambda: is_stale(before))
        # The page before may have gone for a while when the one that follows is there.
        self.wait(lambda: self.text)

    def enter_frame(self) -> None:
        """Looks at the page inside of the page. For the driver the one that was there before may stay there for
        good, so that each that follows is entered anew."""
        self.driver.switch_to.default_content()
        self.driver.switch_to.frame(0)

    def press_in_frame(self, name: str, told: str) -> None:
        """A button of the page inside, and waits until that says so."""
        self._control(name).click()
        self.wait(lambda: self.enter_frame() or told in self.text)

    def wait(self, condition):
        def result_now(_):
            try:
                return condition()
            except WebDriverException as problem:
                if is_of_a_page_that_went(problem):
                    return None
                raise
        return WebDriverWait(self.driver, TIME_LIMIT, poll_frequency=0.05).until(result_now)

    def _control(self, name: str):
        return self.driver.find_element(
            By.XPATH, f"//button[normalize-space(.)='{name}'] | //a[normalize-space(.)='{name}']"
                      f" | //input[@type='submit' or @type='SUBMIT'][@value='{name}']")

    @property
    def heading(self) -> str:
        return self.driver.find_element(By.TAG_NAME, "h1").text

    @property
    def text(self) -> str:
        return self.driver.find_element(By.TAG_NAME, "body").text

    @property
    def path(self) -> str:
        return urllib.parse.urlsplit(self.driver.current_url).path


def is_of_a_page_that_went(problem: WebDriverException) -> bool:
    """What is looked at may be replaced meanwhile by what has come, also while the driver is about to look."""
    return (isinstance(problem, StaleElementReferenceException)
            or "Node with given id does not belong to the document" in str(problem))


def is_stale(element) -> bool:
    try:
        element.is_enabled()
        return False
    except Exception:  # noqa: the page that it was on has gone
        return True


@pytest.fixture(params=["scripts", "no scripts"])
def driver(request):
    """A browser with scripts, and one without."""
    driver = request.getfixturevalue("scripted" if request.param == "scripts" else "scriptless")
    set_width(driver, "wide")
    return driver


@pytest.fixture
def person(driver, console):
    return Person(driver, console)
