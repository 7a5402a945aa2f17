"""What a preview says of a mail is what the relay then gets."""

import re

import pytest

MAILS = {
    "plain": dict(subject=b"%n is down", message=b"Look after %n.\r\n"),
    "list": dict(to=b"ann@example.org, bob@example.org", sender=b"Night Watch <%n@example.org>"),
    "Western": dict(subject="K\u00fchlung von %n".encode("cp1252"), message="5 \u20ac\r\n".encode("cp1252")),
    "Japanese": dict(locale="ja_JP.UTF-8", subject="\u96fb\u8a71 %n".encode("cp932"),
                     message="\u505c\u6b62\r\n".encode("cp932")),
    "full stop": dict(message=b"Dear Ann,\r\n..\r\nstop.\r\n"),
    "no subject": dict(subject=b"", message=b"%n is down\r\nsince noon"),
}


def without_date(sent: bytes) -> bytes:
    """The one line that differs by its nature: both runs are at another time."""
    masked, count = re.subn(rb"(?m)^Date: [^\r]*", b"Date: now", sent)
    assert count == 1
    return masked


@pytest.mark.parametrize("name", MAILS)
def test_a_preview_is_what_the_relay_gets(mailer, relay, name):
    parts = mailer.preview("--set", "n=router7", gateway=relay.address, **MAILS[name])
    outcome = mailer.send("--set", "n=router7", gateway=relay.address, **MAILS[name])
    assert outcome.exit_code == 0, outcome.output
    session = relay.next_session()
    *commands, farewell = [command + b"\r\n" for command in session.commands]
    got = b"".join(commands) + session.content + b"\r\n.\r\n" + farewell
    assert without_date(b"".join(part.bytes for part in parts)) == without_date(got)


def test_a_preview_makes_no_connection(mailer, address):
    """Nobody listens there."""
    parts = mailer.preview(gateway=address)
    assert parts[0].what == "connection" and parts[0].words == f"to {address}, port 25"
    [recipient] = [part for part in parts if part.what == "recipient"]
    assert recipient.bytes == b"RCPT To:<ann@example.org>\r\n"
