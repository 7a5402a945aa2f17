"""What the host says became of a mail, where a real mail server has answered, or none."""

import pytest

UNKNOWN = "550 5.1.1 <nobody@example.org>: Recipient address rejected: User unknown in virt..."


@pytest.mark.parametrize("to, exit_code, verdict", [
    ("ann@example.org", 0, "The relay accepted the message"),
    ("ann@example.org, nobody@example.org", 0,
     f"The relay accepted the message; 1 of 2 recipients was refused: <nobody@example.org> ({UNKNOWN})"),
    ("nobody@example.org", 1,
     f"Not delivered: the relay refused the recipient: {UNKNOWN}; check the field 'to', and whether the "
     "relay passes mail on for this computer"),
])
def test_recipients(mailer, mail_server, to, exit_code, verdict):
    outcome = mailer.send(gateway=mail_server.address, to=to.encode())
    assert (outcome.exit_code, outcome.verdict) == (exit_code, verdict)


def test_no_relay(mailer):
    nobodys_address = "127.24.255.254"
    outcome = mailer.send(gateway=nobodys_address)
    assert outcome.exit_code == 1
    assert outcome.verdict.startswith(f"Not delivered: the relay {nobodys_address} could not be reached")
