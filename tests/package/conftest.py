"""Windows to itself, and the packages of the release."""

import pathlib

import pytest

from installed_windows import Windows, make_packages
from windows_programs import PRESET, wine_prefix


@pytest.fixture
def windows():
    with wine_prefix(Windows) as system:
        assert system("hostname") == 0
        yield system


@pytest.fixture
def tell_seconds(windows, record_property):
    """Has the suite tell how long the installer took for what it has done."""
    return lambda what: record_property("told", f"{what}: {windows.seconds_of_msiexec:.1f} s")


@pytest.fixture(scope="session")
def packages(tmp_path_factory) -> pathlib.Path:
    return make_packages(tmp_path_factory.mktemp("packages"), PRESET)
