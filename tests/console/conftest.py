"""The web console of the released host, and browsers that look at it."""

import contextlib
import http.client
import json
import pathlib
import re
import subprocess
import urllib.parse
from dataclasses import dataclass

import pytest
from selenium.common.exceptions import StaleElementReferenceException
from selenium.webdriver.common.by import By
from selenium.webdriver.support.ui import WebDriverWait

import browser
from windows_programs import (HOST, MODULE, TIME_LIMIT, WINE, given_or_own_prefix, instance_integer,
                              instance_text, magic, windows_path)

MAGICS = {
    "SMTPMail": magic("D6DD268C-A32B-EF86-2683-A7DA9410F949"),
    "Sound": magic("5D6A4051-7608-5DD6-F1D3-2CFEA0F80A9F"),
    "WinPopup": magic("8B762C29-0B2E-9C58-6C92-5C2A021AFB08"),
    "LaunchProgram": magic("ECEC7E6C-8E18-4CA2-C56F-5334C2BD7945"),
    "Beeper": magic("E546F481-983D-5A7E-610B-E80BF158F22E"),
    "Pager": magic("CF05540D-534F-164B-BD02-D12A35BF0840"),
    "Voice": magic("C4F822F8-1890-08CD-6842-1838A3A78A26"),
}
# A program that every Windows has and that ends at once.
PROGRAM = "C:\\windows\\system32\\hostname.exe"


def launch_program(program: str = PROGRAM, arguments: str = "%n") -> bytes:
    return MAGICS["LaunchProgram"] + b"".join(map(instance_text, [program, "C:\\", arguments]))


def beeper(number: str = "5550100") -> bytes:
    texts = [number, "tone", "1", "2", "3", ""]
    return MAGICS["Beeper"] + b"".join(map(instance_text, texts)) + instance_integer(0)


def pager(password: str) -> bytes:
    texts = ["5550201", password, "12345", "%n is %C", "TAP"]
    return MAGICS["Pager"] + b"".join(map(instance_text, texts)) + instance_integer(0)


def popup(message: str) -> bytes:
    return MAGICS["WinPopup"] + instance_text("DUTY") + instance_text(message)


@dataclass
class Console:
    """A console that runs, and the folder whose instances it shows."""
    address: str
    folder: pathlib.Path
    process: subprocess.Popen

    @property
    def authority(self) -> str:
        return urllib.parse.urlsplit(self.address).netloc

    def url(self, path: str) -> str:
        return urllib.parse.urljoin(self.address, path)

    def request(self, method: str, path: str, body: str | None = None, **fields: str):
        """Status, fields and body of the answer. Fields are those of the request, with _ for -."""
        connection = http.client.HTTPConnection(self.authority, timeout=TIME_LIMIT)
        try:
            connection.request(method, path, body, {name.replace("_", "-"): text for name, text in fields.items()})
            answer = connection.getresponse()
            return answer.status, dict(answer.getheaders()), answer.read().decode()
        finally:
            connection.close()

    def token(self) -> str:
        name = next(iter(sorted(file.name for file in self.folder.iterdir() if file.is_file())))
        _, _, page = self.request("GET", "/instances/" + urllib.parse.quote(name))
        return re.search(r'name="token" value="(\w+)"', page)[1]

    def post(self, path: str, **values: str):
        """As a form of the console's would."""
        form = urllib.parse.urlencode({"token": self.token(), **values})
        return self.request("POST", path, form, Origin=self.address.rstrip("/"),
                            Content_Type="application/x-www-form-urlencoded")


@pytest.fixture(scope="session")
def wine_environment():
    with given_or_own_prefix() as environment:
        yield environment


@contextlib.contextmanager
def running_console(folder, environment, *options: str, shown_as: str = ""):
    """Of the folder, which Windows may know by a name that is to be seen."""
    process = subprocess.Popen(
        [WINE, HOST, "serve", shown_as or windows_path(folder), "--port", "0", "--module", windows_path(MODULE), "--json",
         *options],
        env=environment, stdin=subprocess.DEVNULL, stdout=subprocess.PIPE, text=True)
    try:
        yield Console(json.loads(process.stdout.readline())["address"], folder, process)
    finally:
        process.kill()
        process.wait()


@pytest.fixture(scope="session")
def started_console(wine_environment, tmp_path_factory):
    folder = tmp_path_factory.mktemp("instances")
    with running_console(folder, wine_environment) as console:
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
    driver.execute_cdp_cmd("Emulation.setEmulatedMedia",
                           {"features": [{"name": "prefers-color-scheme", "value": theme}]})


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
        element = self.driver.find_element(
            By.XPATH, f"//button[normalize-space(.)='{name}'] | //a[normalize-space(.)='{name}']"
                      f" | //input[@type='submit' or @type='SUBMIT'][@value='{name}']")
        element.click()
        self.wait(lambda: is_stale(before))
        # The page before may have gone for a while when the one that follows is there.
        self.wait(lambda: self.text)

    def wait(self, condition):
        # What is looked at may be replaced meanwhile by what has come.
        return WebDriverWait(self.driver, TIME_LIMIT, poll_frequency=0.05,
                             ignored_exceptions=[StaleElementReferenceException]).until(lambda _: condition())

    @property
    def heading(self) -> str:
        return self.driver.find_element(By.TAG_NAME, "h1").text

    @property
    def text(self) -> str:
        return self.driver.find_element(By.TAG_NAME, "body").text

    @property
    def path(self) -> str:
        return urllib.parse.urlsplit(self.driver.current_url).path


def is_stale(element) -> bool:
    try:
        element.is_enabled()
        return False
    except Exception:  # noqa: the page that it was on has gone
        return True


@pytest.fixture(params=["scripts", "no scripts"])
def person(request, console):
    """Somebody with scripts, and somebody without."""
    driver = request.getfixturevalue("scripted" if request.param == "scripts" else "scriptless")
    set_width(driver, "wide")
    return Person(driver, console)
