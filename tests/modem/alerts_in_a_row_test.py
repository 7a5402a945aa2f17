"""Alert after alert through one modem, each from a host of its own, with the settings of a new machine:
seven bits and even parity at 300 bit/s for a pager.

The rows go on while the other tests run (see conftest.py), side by side, since each alert takes as long as
its waits.
"""

import pytest

from conftest import DELIVERED, DIGITS_IN_A_ROW, TEXTS_IN_A_ROW


@pytest.mark.parametrize("protocol", ["TAP", "SMS-TAP", "UCP-SMS", "NTT"])
def test_centre_takes_ten_pages(rows, protocol):
    modem, calls = rows[protocol].result()
    assert [call.output().splitlines()[-1] for call in calls] == 10 * [DELIVERED]
    taken = [what for what in modem.said("centre") if "page" in what]
    recipient = "41791234567" if protocol == "SMS-TAP" else "0041791234567"
    assert taken == [f'takes a page for {recipient}: "{text}"' for text in TEXTS_IN_A_ROW]
    assert modem.said("port")[0].startswith("is set to 300 bit/s ")


def test_pager_shows_ten_messages(rows):
    modem, calls = rows["Beeper"].result()
    assert [call.output().splitlines()[-1] for call in calls] == 10 * [DELIVERED]
    assert modem.said("pager") == [f"shows 222{digits}" for digits in DIGITS_IN_A_ROW]
    assert modem.said("port") == ["is set to 300 bit/s 8N1"]
