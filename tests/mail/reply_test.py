"""A relay whose refusal of the recipient begins with a stray carriage return."""

import pytest

import mail_servers


@pytest.fixture(scope="module")
def refusing_relay(address):
    relay = mail_servers.RecordingRelay(address, {"RCPT": "\r550 no ann"})
    yield relay
    relay.close()


def test_the_number_of_a_reply_is_read_behind_white_space(mailer, refusing_relay):
    outcome = mailer.send(gateway=refusing_relay.address)
    assert outcome.exit_code == 1
    assert b"0x80140001" in outcome.output
    assert refusing_relay.next_session().commands[-1] == b"QUIT"
