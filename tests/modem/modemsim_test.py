"""The simulated modem's program, as a person or a script uses it."""

import os
import select
import signal
import subprocess
import termios
import time

import pytest

from conftest import MODEMSIM, Modem
from windows_programs import TIME_LIMIT, wait_until


def run(*arguments):
    return subprocess.run([MODEMSIM, *arguments], capture_output=True, text=True, timeout=TIME_LIMIT)


@pytest.fixture
def modem(tmp_path):
    modem = Modem(tmp_path / "modem")
    yield modem
    modem.end()


class Terminal:
    """The port as a terminal program has it."""

    def __init__(self, path):
        self.descriptor = os.open(path, os.O_RDWR | os.O_NOCTTY)

    def __enter__(self):
        return self

    def __exit__(self, *exception):
        os.close(self.descriptor)

    def set_seven_bits_and_even_parity(self) -> None:
        """As Wine sets them for a program."""
        settings = termios.tcgetattr(self.descriptor)
        settings[0] |= termios.IGNBRK | termios.INPCK
        settings[2] = settings[2] & ~termios.CSIZE | termios.CS7 | termios.PARENB | termios.CLOCAL
        termios.tcsetattr(self.descriptor, termios.TCSANOW, settings)

    def send(self, data: bytes) -> None:
        os.write(self.descriptor, data)

    def receive_until(self, end: bytes) -> bytes:
        """No byte more, so that what follows stays in the port."""
        received = b""
        deadline = time.monotonic() + TIME_LIMIT
        while not received.endswith(end):
            assert select.select([self.descriptor], [], [], deadline - time.monotonic())[0], received
            received += os.read(self.descriptor, 1)
        return received


def test_help_tells_the_numbers_and_examples():
    done = run("--help")
    assert done.returncode == 0
    assert "5550100  a numeric pager, answers after 1.5 s\n" in done.stdout
    assert "  modemsim --link /tmp/modem " in done.stdout
    assert len([line for line in done.stdout.splitlines() if line.startswith("  55501")]) == 13


@pytest.mark.parametrize("arguments", [["--answering", "never"], ["--link"], ["--nonsense"], ["more"]])
def test_wrong_usage(arguments):
    done = run(*arguments)
    assert done.returncode != 0
    assert done.stderr and not done.stdout


@pytest.mark.parametrize("arguments", [["--answering", "never"], ["--answering", "3"], ["--answering"]])
def test_wrong_answering_names_the_ways_there_are(arguments):
    done = run(*arguments)
    assert done.returncode != 0
    assert "{flood,garbage,late,none,normal}" in done.stderr


def test_answers_at_the_link(modem):
    with Terminal(modem.link) as terminal:
        terminal.send(b"ATE0\r")
        assert terminal.receive_until(b"OK\r\n") == b"ATE0\r\r\nOK\r\n"
        terminal.send(b"ATDT5550103\r")
        assert terminal.receive_until(b"E\r\n") == b"\r\nNO DIALTONE\r\n"


def test_stays_when_a_program_leaves_the_port(modem):
    for _ in range(2):
        with Terminal(modem.link) as terminal:
            terminal.send(b"ATE0\r")
            assert terminal.receive_until(b"OK\r\n").endswith(b"\r\nOK\r\n")


def test_takes_seven_bits_and_even_parity_from_each_program(modem):
    """As a port does; the C library refuses it on a pseudo-terminal where nothing else changes."""
    for _ in range(3):
        with Terminal(modem.link) as terminal:
            terminal.set_seven_bits_and_even_parity()
            terminal.send(b"ATE0\r")
            assert terminal.receive_until(b"OK\r\n").endswith(b"\r\nOK\r\n")


def test_takes_the_settings_of_a_program_that_sent_nothing(modem):
    with Terminal(modem.link) as terminal:
        terminal.set_seven_bits_and_even_parity()
    wait_until(modem.losses_of_dtr)
    with Terminal(modem.link) as terminal:
        terminal.set_seven_bits_and_even_parity()


def test_program_that_leaves_the_port_ends_its_call(modem):
    with Terminal(modem.link) as terminal:
        terminal.send(b"ATE0DT5550109\r")
        terminal.receive_until(b"CONNECT\r\n")
    wait_until(modem.losses_of_dtr)
    assert modem.said("line")[-1] == "is hung up"
    with Terminal(modem.link) as terminal:
        terminal.send(b"AT\r")
        assert terminal.receive_until(b"OK\r\n") == b"\r\nOK\r\n"


def test_what_a_program_has_not_read_is_gone_with_it(modem):
    with Terminal(modem.link) as terminal:
        terminal.send(b"ATI\r")
        terminal.receive_until(b"A")  # the rest stays
        wait_until(lambda: '"\\r\\nOK\\r\\n"' in modem.said("modem"))
    wait_until(modem.losses_of_dtr)
    with Terminal(modem.link) as terminal:
        terminal.send(b"ATE0\r")
        assert terminal.receive_until(b"OK\r\n") == b"ATE0\r\r\nOK\r\n"


def test_port_path_without_a_link():
    with subprocess.Popen([MODEMSIM], stdout=subprocess.PIPE, text=True) as process:
        try:
            path = process.stdout.readline().split("is at ")[1].rstrip("\n")
            with Terminal(path) as terminal:
                terminal.send(b"AT\r")
                assert terminal.receive_until(b"OK\r\n") == b"AT\r\r\nOK\r\n"
        finally:
            process.terminate()


@pytest.mark.parametrize("ending", [signal.SIGTERM, signal.SIGINT, signal.SIGHUP])
def test_link_goes_with_the_program(modem, ending):
    assert modem.link.is_symlink()
    modem.process.send_signal(ending)
    assert modem.process.wait(TIME_LIMIT) == 0
    assert not modem.link.is_symlink()


def test_link_goes_with_the_program_that_is_ended_as_soon_as_it_is_there(tmp_path):
    for number in range(20):
        link = tmp_path / f"modem{number}"
        with subprocess.Popen([MODEMSIM, "--link", link], stdout=subprocess.DEVNULL) as program:
            while not link.is_symlink():
                assert program.poll() is None
            program.terminate()
            assert program.wait(TIME_LIMIT) == 0
        assert not link.is_symlink()


def test_port_goes_with_the_modem_that_is_unplugged(modem):
    with Terminal(modem.link) as terminal:
        terminal.send(b"ATDT5550111\r")
        assert modem.process.wait(TIME_LIMIT) == 0
    assert not modem.link.is_symlink()
    assert modem.said("modem")[-1] == "is unplugged"


def test_old_link_is_replaced(tmp_path):
    link = tmp_path / "modem"
    link.symlink_to("/nowhere")
    modem = Modem(link)
    assert os.readlink(link).startswith("/dev/")
    modem.end()


def test_anything_else_of_the_links_name_is_left_alone(tmp_path):
    link = tmp_path / "modem"
    link.write_text("precious")
    done = run("--link", link)
    assert done.returncode == 1
    assert done.stderr.startswith("modemsim: ")
    assert link.read_text() == "precious"
