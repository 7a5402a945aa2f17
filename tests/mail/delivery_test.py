"""Delivery through the real module into a real mail server's mailboxes, read by Python's MIME parser."""

import datetime
import email
import email.policy
import email.utils

import pytest

from sim.mail_server import MailServer

pytestmark = pytest.mark.usefixtures("mail_server")


class Mailbox:
    """A mailbox of the server, of which each message is handed out once."""

    def __init__(self, server: MailServer, name: str):
        self._server = server
        self._name = name
        self._taken = 0

    def take(self) -> email.message.EmailMessage:
        self._taken += 1
        raw = self._server.wait_for_mail(self._name, self._taken)[self._taken - 1]
        return email.message_from_bytes(raw, policy=email.policy.default)


@pytest.fixture(scope="module")
def ann(mail_server):
    return Mailbox(mail_server, "ann")


@pytest.fixture(scope="module")
def bob(mail_server):
    return Mailbox(mail_server, "bob")


def test_a_message_arrives_with_its_headers_and_its_body(mailer, mail_server, ann):
    before = datetime.datetime.now(datetime.timezone.utc)
    outcome = mailer.send(gateway=mail_server.address, sender=b"Night Watch <ops@example.org>",
                          subject=b"Disk full", message=b"The disk is full.\r\nPlease act.\r\n")
    assert outcome.exit_code == 0, outcome.output

    message = ann.take()
    assert message["From"] == "Night Watch <ops@example.org>"
    assert message["Return-Path"] == "<ops@example.org>"
    assert message["To"] == "ann@example.org"
    assert message["Subject"] == "Disk full"
    assert message["Mime-Version"] == "1.0"
    assert message.get_content_type() == "text/plain"
    assert message.get_content_charset() == "us-ascii"
    assert message.get_content().rstrip("\n") == "The disk is full.\nPlease act."
    assert not message.defects
    sent = email.utils.parsedate_to_datetime(message["Date"])
    assert datetime.timedelta(seconds=-2) < sent - before < datetime.timedelta(minutes=2)


def test_everybody_on_the_list_gets_the_message(mailer, mail_server, ann, bob):
    outcome = mailer.send(gateway=mail_server.address, to=b"ann@example.org, bob@example.org",
                          subject=b"Both of you")
    assert outcome.exit_code == 0, outcome.output
    for mailbox in (ann, bob):
        message = mailbox.take()
        assert message["Subject"] == "Both of you"
        assert message["To"] == "ann@example.org, bob@example.org"


def test_the_host_fills_in_sender_subject_and_message(mailer, mail_server, ann):
    outcome = mailer.send("--set", "n=router7", gateway=mail_server.address,
                          sender=b"%n <ops@example.org>", subject=b"%n is down",
                          message=b"Look after %n.\r\n")
    assert outcome.exit_code == 0, outcome.output
    message = ann.take()
    assert message["From"] == "router7 <ops@example.org>"
    assert message["Subject"] == "router7 is down"
    assert message.get_content().rstrip("\n") == "Look after router7."


def test_without_a_subject_the_messages_first_line_stands_for_it(mailer, mail_server, ann):
    outcome = mailer.send(gateway=mail_server.address, subject=b"",
                          message=b"Router down\r\nsince noon\r\n")
    assert outcome.exit_code == 0, outcome.output
    message = ann.take()
    assert message["Subject"] == "Router down"
    assert message.get_content().rstrip("\n") == "Router down\nsince noon"


def test_an_accented_subject_is_decoded(mailer, mail_server, ann):
    outcome = mailer.send(gateway=mail_server.address, subject="Störung".encode("cp1252"))
    assert outcome.exit_code == 0, outcome.output
    # The blank before the encoded-word is sent, and readers show it.
    assert ann.take()["Subject"] == "St örung"


def test_a_long_message_arrives_whole(mailer, mail_server, ann):
    lines = [f"line {number} ".ljust(70, "x") for number in range(1000)]
    outcome = mailer.send(gateway=mail_server.address,
                          message="\r\n".join(lines).encode() + b"\r\n")
    assert outcome.exit_code == 0, outcome.output[:2000]
    assert ann.take().get_content().rstrip("\n").splitlines() == lines


def test_an_unknown_recipient_is_told_from_other_failures(mailer, mail_server, ann, bob):
    outcome = mailer.send(gateway=mail_server.address, to=b"nobody@example.org")
    assert outcome.exit_code == 1
    assert b"550 5.1.1 <nobody@example.org>" in outcome.output
    assert b"0x80140001" in outcome.output


def test_one_unknown_recipient_does_not_keep_the_message_from_others(mailer, mail_server, ann):
    outcome = mailer.send(gateway=mail_server.address, to=b"nobody@example.org, ann@example.org",
                          subject=b"For ann alone")
    assert outcome.exit_code == 0, outcome.output
    assert ann.take()["Subject"] == "For ann alone"


def test_a_relay_that_is_not_there_is_a_failure(mailer, mail_server):
    # The address before the server's own: nobody listens there.
    first, _, last = mail_server.address.rpartition(".")
    outcome = mailer.send(gateway=f"{first}.{(int(last) + 254) % 256}")
    assert outcome.exit_code == 1
    assert b"failed to connect to gatehost" in outcome.output
    assert b"0x80004005" in outcome.output


def test_the_log_holds_the_whole_dialogue(mailer, mail_server, ann):
    outcome = mailer.send(gateway=mail_server.address, subject=b"Logged")
    assert ann.take()["Subject"] == "Logged"
    lines = outcome.output.replace(b"\r\n", b"\n").split(b"\n")
    assert lines[0] == f"sending msg via {mail_server.address} to ann@example.org".encode()
    assert lines[1].startswith(b"220 relay.example.org ESMTP")
    assert lines[2].startswith(b"HELO ")
    assert b"MAIL From:ops@example.org" in lines
    assert b"RCPT To:<ann@example.org>" in lines
    assert b"Subject: Logged" in lines
    assert b"QUIT" in lines
    assert lines[-2] == b"Delivered."
