"""./test, interrupted by who has typed it."""

import pathlib
import signal
import tempfile

import pytest

from started_command import StartedCommand
from windows_programs import ROOT, TIME_LIMIT, wait_until


@pytest.fixture
def tests():
    with tempfile.TemporaryDirectory() as folder, StartedCommand([ROOT / "test", "mail", "desktop"],
                                                                 pathlib.Path(folder)) as tests:
        yield tests


@pytest.mark.parametrize("number", [signal.SIGINT, signal.SIGTERM])
def test_nothing_is_left(tests, number):
    """Neither screens nor Wine's servers, nor prefixes of half a gigabyte each."""
    def servers() -> list[str]:
        assert tests.process.poll() is None, tests.output()
        return [process for process in tests.processes() if "wineserver" in process or "Xvfb" in process]
    wait_until(lambda: len(servers()) >= 4)
    assert tests.leftovers()

    tests.signal(number)
    assert tests.process.wait(TIME_LIMIT) == 1
    assert tests.output().endswith("interrupted\n") == (number == signal.SIGINT)
    assert "passed" not in tests.output() and "Traceback" not in tests.output()
    wait_until(lambda: tests.processes() == [])
    # What the last tests have written is kept, to be looked at.
    assert [name for name in tests.leftovers() if not name.startswith("pytest-of-")] == []
