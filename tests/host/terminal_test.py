"""Output to a terminal, where Wine gives the host a console and not a file."""

import fcntl
import os
import pty
import re
import select
import struct
import termios

import pytest

from conftest import RunningHost
from windows_programs import TIME_LIMIT, WINE, log_and_result, windows_path

GREEN, RED = "\x1B[32m", "\x1B[31m"
COLOUR = re.compile(r"\x1B\[3[0-9]m")
# What Wine's console sends besides text: moves of the cursor, modes, the title.
ESCAPE = re.compile(r"\x1B(\[[0-9;?]*[A-Za-z]|\][^\x07]*\x07)")


def read_to_the_end(keyboard: int) -> bytes:
    """What comes from a terminal until its last program has closed it."""
    output = b""
    with open(keyboard, "rb", buffering=0) as reader:
        while select.select([reader], [], [], TIME_LIMIT)[0]:
            try:
                output += reader.read(4096)
            except OSError:
                return output
    raise TimeoutError("the host does not end")


@pytest.fixture
def run_on_terminal(notifyhost):
    """Runs the host on a terminal wide enough for its lines, and gives exit code and what it shows."""

    def run(*arguments, **environment):
        keyboard, terminal = pty.openpty()
        fcntl.ioctl(terminal, termios.TIOCSWINSZ, struct.pack("HHHH", 50, 200, 0, 0))
        with RunningHost([WINE, notifyhost.program, *arguments], cwd=notifyhost.folder,
                         env={**notifyhost.environment, "TERM": "xterm", **environment},
                         stdin=terminal, stdout=terminal, stderr=terminal) as running:
            os.close(terminal)
            output = read_to_the_end(keyboard)
            exit_code = running.wait(TIME_LIMIT)
        return exit_code, output.decode()

    return run


def plain(shown: str) -> str:
    return ESCAPE.sub("", shown).replace("\r", "")


def test_log_and_result(run_on_terminal, registered, tmp_path):
    exit_code, shown = run_on_terminal("send", "LaunchProgram", "Zürich ☎ ж.ins")
    path = windows_path(tmp_path / "Zürich ☎ ж.ins")
    assert exit_code == 1
    assert log_and_result(plain(shown)) == (f"{path} - Failed to load notification from disk.\n"
                                            "Failed: 0x80004005 (E_FAIL)\n")


def test_message_of_wrong_usage(run_on_terminal):
    exit_code, shown = run_on_terminal("störung☎")
    assert exit_code == 2
    assert plain(shown).startswith("notifyhost: 'störung☎' is not a command; ")


def test_colours(run_on_terminal, registered, demo_program):
    delivered = ["send", "LaunchProgram", windows_path(demo_program.store(b""))]
    assert f"{GREEN}The program was started" in run_on_terminal(*delivered)[1]
    failed = ["send", "LaunchProgram", "nowhere"]
    assert f"{RED}Not delivered" in run_on_terminal(*failed)[1]
    assert f"{RED}Not delivered" in run_on_terminal(*failed, NO_COLOR="")[1]


@pytest.mark.parametrize("arguments, environment", [
    ([], {"NO_COLOR": "1"}),
    (["--json"], {}),
])
def test_no_colours(run_on_terminal, registered, arguments, environment):
    _, shown = run_on_terminal("send", "LaunchProgram", "nowhere", *arguments, **environment)
    assert not COLOUR.search(shown)


def test_no_colours_in_a_file(registered):
    assert "\x1B" not in registered("send", "LaunchProgram", "nowhere").output
