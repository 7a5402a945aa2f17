"""Messages from many threads of one process at once, to a relay that sends lines too early."""

import json
import subprocess
import tempfile

import pytest

import mail_servers
from conftest import MAIL_SERIES
from timeout_setting import TimeoutSetting
from windows_programs import MODULE, WINE, windows_path

COUNT, THREADS = 100, 16

# What the module receives at a time.
RECEIVE = 82


def with_early_lines(reply: str, code: int) -> list[str]:
    """The reply and, received with it, the beginning of the next one: lines with which no reply ends, so
    that whichever session reads them goes well. Many short ones and few long ones, in turn."""
    room = RECEIVE - len(reply + "\r\n")
    return ["\r\n".join([reply] + [f"{code}-" + "e" * length] * (room // (length + 6)))
            for length in range(room - 5)]


@pytest.fixture
def patience(wine_environment):
    """Time for a relay that does not get a processor for a while."""
    setting = TimeoutSetting(wine_environment)
    setting.store("300000")
    yield
    setting.remove()


@pytest.fixture(scope="module")
def early_relay(address):
    replies = {word: with_early_lines("250 ok", 250) for word in ("HELO", "MAIL", "RCPT", ".")}
    replies["QUIT"] = with_early_lines("221 bye", 220)
    relay = mail_servers.RecordingRelay(address, replies)
    yield relay
    relay.close()


@pytest.mark.usefixtures("patience")
def test_all_messages_of_all_threads_are_delivered(mailer, early_relay, wine_environment):
    instance = mailer.store(gateway=early_relay.address, sender=b"ops@%s")
    with tempfile.TemporaryFile() as output:
        subprocess.run([WINE, MAIL_SERIES, windows_path(instance), str(COUNT), str(THREADS)],
                       check=True, env={**wine_environment, "BRANTEL_MODULE": windows_path(MODULE)},
                       stdin=subprocess.DEVNULL, stdout=output, timeout=600)
        output.seek(0)
        series = json.load(output)
    assert series["delivered"] == COUNT * THREADS
    # What a session left behind, another one has read.
    assert series["early_lines"] > 0

    sessions = [early_relay.next_session() for _ in range(COUNT * THREADS)]
    name = sessions[0].commands[0].removeprefix(b"HELO ")
    assert name
    for session in sessions:
        assert session.commands == [b"HELO " + name, b"MAIL From:ops@" + name,
                                    b"RCPT To:<ann@example.org>", b"DATA", b"QUIT"]
        assert session.header(b"Subject") == b"Disk full"
        assert session.body == b"The disk is full.\r\n"
