"""A host that is ended in a call: the modem hangs up, and the next alert gets through."""

import pytest

from conftest import DELIVERED
from windows_programs import wait_until

# What is called, and what has happened when the host is ended, by the part of the call.
PARTS = {
    "initialisation": ("5550200", "host", '"ATE0Q0V1X4\\r"'),
    "dialling": ("5550106", "line", "calls 5550106"),
    "log-in": ("5550206", "centre", 'is logged in to with password ""'),
    "transfer": ("5550212", "centre", 'does not take the page for 0041791234567: "lost"'),
    "hang-up": ("5550200", "host", '"+++"'),
}


def start_calls(switchboard):
    """The next call of each modem."""
    first = {part: switchboard.start_page("TAP", number, "lost")
             for part, (number, _, _) in PARTS.items()}
    for part, call in first.items():
        _, who, what = PARTS[part]
        wait_until(lambda: what in call.modem.said(who))
        call.process.kill()
    following = {}
    for part, call in first.items():
        wait_until(call.modem.losses_of_dtr)
        following[part] = switchboard.start_page("TAP", "5550200", "found", modem=call.modem)
    return following


@pytest.mark.parametrize("part", PARTS)
def test_next_alert_is_delivered(finished, part):
    call = finished(part)
    assert call.output().splitlines()[-1] == DELIVERED
    assert call.modem.said("centre").count('takes a page for 0041791234567: "found"') == 1


@pytest.mark.parametrize("part", ["dialling", "log-in", "transfer"])
def test_modem_hangs_up(calls, part):
    """At once, and not because the next host writes to it."""
    events = [event for _, *event in calls[part].modem.events()]
    assert events[events.index(["modem", "loses DTR"]) + 1] == ["line", "is hung up"]
