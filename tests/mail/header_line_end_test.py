"""Where a header is so long that an encoded-word finds no room in it: the rest of its text is dropped,
deliberately with its line end, and what follows goes on in the same line."""

import pytest

BODY = b"The disk is full.\r\n"


def sent(mailer, relay, **fields) -> bytes:
    outcome = mailer.send(gateway=relay.address, message=BODY, **fields)
    assert outcome.exit_code == 0, outcome.output
    return relay.next_session().content


@pytest.mark.parametrize("plain, end", [
    (482, b" =?ISO-8859-1?Q??=nd\r\n\r\n"),
    (483, b""),
    (484, b""),
])
def test_subject(mailer, relay, plain, end):
    subject = b"s" * plain
    content = sent(mailer, relay, subject=subject + b"\xe4nd")
    assert content.endswith(b"\r\nSubject: " + subject + end + BODY)


@pytest.mark.parametrize("plain, end", [(487, b" =?ISO-8859-1?Q??=@x\r\n"), (488, b"")])
def test_recipients(mailer, relay, plain, end):
    to = b"a" * plain
    content = sent(mailer, relay, to=to + b"\xe4@x")
    assert b"\r\nTo: " + to + end + b"Mime-Version: 1.0\r\n" in content


@pytest.mark.parametrize("kanji, end", [(234, b"\r\n\r\n"), (235, b"\r\n\r"), (237, b"\r"), (238, b"")])
def test_subject_that_is_converted_with_its_line_end(mailer, relay, kanji, end):
    content = sent(mailer, relay, locale="ja_JP.UTF-8", subject="漢".encode("cp932") * kanji)
    # The message loses its last three bytes.
    assert content.endswith(b"\r\nSubject:  =?ISO-2022-JP?Q?=1B$B" + b"4A" * 25 + b"?=" +
                            b"4A" * (kanji - 25) + b"\x1b(B" + end + BODY[:-3])
