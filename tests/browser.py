"""Chromium for tests that look at web pages. It speaks with this computer alone."""

import contextlib

from selenium import webdriver
from selenium.webdriver.chrome.service import Service

from windows_programs import TIME_LIMIT


@contextlib.contextmanager
def chromium(folder, has_scripts: bool = True):
    """A browser that keeps what it keeps in the folder."""
    options = webdriver.ChromeOptions()
    options.binary_location = "/usr/bin/chromium"
    for argument in ("--headless", "--no-sandbox", "--disable-gpu", "--disable-quic", "--no-first-run",
                     "--disable-background-networking", "--disable-component-update",
                     "--disable-sync", "--no-proxy-server",
                     "--host-resolver-rules=MAP * ~NOTFOUND, EXCLUDE 127.0.0.1",
                     "--window-size=900,700", f"--user-data-dir={folder}"):
        options.add_argument(argument)
    if not has_scripts:
        options.add_experimental_option("prefs", {"profile.managed_default_content_settings.javascript": 2})
    driver = webdriver.Chrome(service=Service("/usr/bin/chromedriver"), options=options)
    try:
        driver.set_page_load_timeout(TIME_LIMIT)
        yield driver
    finally:
        driver.quit()
