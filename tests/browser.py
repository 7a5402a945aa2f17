"""Chromium for tests that look at web pages. It speaks with this computer alone."""

import contextlib
import os

from selenium import webdriver
from selenium.webdriver.chrome.service import Service

from windows_programs import TIME_LIMIT


@contextlib.contextmanager
def chromium(folder, has_scripts: bool = True):
    """A browser that keeps what it keeps in the folder."""
    options = webdriver.ChromeOptions()
    # Chromium without windows, which takes half the time. The command of that name is a script that stays.
    options.binary_location = "/usr/lib/chromium/chromium-headless-shell"
    for argument in ("--headless", "--no-sandbox", "--disable-gpu", "--disable-quic", "--no-first-run",
                     "--disable-background-networking", "--disable-component-update",
                     "--disable-sync", "--no-proxy-server",
                     "--host-resolver-rules=MAP * ~NOTFOUND, EXCLUDE 127.0.0.1",
                     "--window-size=900,700"):
        options.add_argument(argument)
    if not has_scripts:
        options.add_argument("--blink-settings=scriptEnabled=false")
    # Named as an option, a folder would be taken for one with pages of an earlier session to come.
    service = Service("/usr/bin/chromedriver", env={**os.environ, "TMPDIR": str(folder)})
    driver = webdriver.Chrome(service=service, options=options)
    try:
        driver.set_page_load_timeout(TIME_LIMIT)
        yield driver
    finally:
        driver.quit()
