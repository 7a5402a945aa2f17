"""A send that is ended by its user or by its time limit: the modem hangs up, and the port is free."""

import signal

import pytest

from conftest import DELIVERED
from windows_programs import wait_until

# Behind the log-in the centre says nothing more.
SILENT_CENTRE = "5550206"
LOGGED_IN = 'is logged in to with password ""'


def start_calls(switchboard):
    """Each modem's call that was ended, and its next one."""
    ended = {"Ctrl-C": switchboard.start_page("TAP", SILENT_CENTRE, "lost"),
             "time limit": switchboard.start_page("TAP", SILENT_CENTRE, "lost",
                                                  options=["--timeout", "20"])}
    wait_until(lambda: LOGGED_IN in ended["Ctrl-C"].modem.said("centre"))
    ended["Ctrl-C"].process.send_signal(signal.SIGINT)
    following = {}
    for end, call in ended.items():
        call.end()
        following[f"behind {end}"] = switchboard.start_page("TAP", "5550200", "found", modem=call.modem)
    return {**ended, **following}


@pytest.mark.parametrize("end, words", [
    ("Ctrl-C", "No result: it was interrupted while logging in"),
    ("time limit", "No result: the time ran out while logging in"),
])
def test_it_says_where_it_was_ended(calls, end, words):
    call = calls[end].end()
    assert call.process.returncode == 1
    assert call.told()[-1].startswith(words)


@pytest.mark.parametrize("end", ["Ctrl-C", "time limit"])
def test_modem_is_told_to_hang_up(finished, end):
    call = finished(f"behind {end}")
    events = [event for _, *event in call.modem.events()]
    assert ["line", "is hung up"] in events
    said = call.modem.said("host")
    assert said[said.index('"+++"') + 1] == '"ATH0\\r"'


@pytest.mark.parametrize("end", ["Ctrl-C", "time limit"])
def test_next_alert_is_delivered(finished, end):
    call = finished(f"behind {end}")
    assert call.output().splitlines()[-1] == DELIVERED
    assert call.modem.said("centre").count('takes a page for 0041791234567: "found"') == 1
