"""Mail from systems of every language: the module under Wine with each ANSI code page, and what a relay
gets of it. Where the label fits the bytes, Python reads the subject; where it does not, the bytes are
the expectation."""

import email.header
import subprocess

import pytest

from windows_programs import TIME_LIMIT


def shown(header: bytes) -> str:
    return str(email.header.make_header(email.header.decode_header(header.decode("ascii"))))


@pytest.mark.parametrize("locale, encoding, charset, subject", [
    ("pl_PL.UTF-8", "cp1250", "ISO-8859-2", "żółć"),
    ("el_GR.UTF-8", "cp1253", "ISO-8859-7", "βλάβη δικτύου"),
    ("tr_TR.UTF-8", "cp1254", "ISO-8859-9", "şüpheli ağ"),
    ("he_IL.UTF-8", "cp1255", "ISO-8859-8", "תקלה ברשת"),
    ("ar_SA.UTF-8", "cp1256", "ISO-8859-6", "حادث"),
])
def test_subject_reads_as_it_was_written(mailer, relay, locale, encoding, charset, subject):
    text = subject.encode(encoding)
    outcome = mailer.send(locale=locale, gateway=relay.address, subject=text, message=text + b"\r\n")
    assert outcome.exit_code == 0, outcome.output
    session = relay.next_session()
    assert session.header(b"Content-Type") == f"text/plain;charset={charset}".encode()
    assert shown(session.header(b"Subject")) == subject
    assert session.body.decode(charset) == subject + "\r\n"


# Labels that do not fit the code page, and letters of others that their label has elsewhere.
@pytest.mark.parametrize("locale, encoding, charset, subject, header", [
    ("ru_RU.UTF-8", "cp1251", b"ISO-8859-5", "Сбой сети",
     b" =?ISO-8859-5?Q?=D1=E1=EE=E9_=F1=E5=F2=E8?="),
    ("lt_LT.UTF-8", "cp1257", b"ISO-8859-4", "ryšių gedimas",
     b"ry =?ISO-8859-4?Q?=F0i=F8?= gedimas"),
    ("ko_KR.UTF-8", "cp949", b"ISO-2022-JP-2", "장애",
     b" =?ISO-2022-JP-2?Q?=C0=E5=BE=D6?="),
    ("pl_PL.UTF-8", "cp1250", b"ISO-8859-2", "Sieć padła ąśź",
     b"Sie =?ISO-8859-2?Q?=E6_pad=B3a_=B9=9C=9F?="),
    ("ar_SA.UTF-8", "cp1256", b"ISO-8859-6", "عطل",
     b" =?ISO-8859-6?Q?=DA=D8=E1?="),
    ("en_US.UTF-8", "cp1252", b"us-ascii", "caf\u00e9 \u20ac5",
     b"caf =?ISO-8859-1?Q?=E9_=80?=5"),
])
def test_bytes_where_label_and_code_page_differ(mailer, relay, locale, encoding, charset, subject,
                                                header):
    text = subject.encode(encoding)
    outcome = mailer.send(locale=locale, gateway=relay.address, subject=text, message=text + b"\r\n")
    assert outcome.exit_code == 0, outcome.output
    session = relay.next_session()
    assert session.header(b"Content-Type") == b"text/plain;charset=" + charset
    assert session.header(b"Subject") == header
    assert session.body == text + b"\r\n"


def iconv(text: bytes) -> str:
    return subprocess.run(["iconv", "-f", "ISO-2022-JP", "-t", "UTF-8"], input=text,
                          capture_output=True, check=True, timeout=TIME_LIMIT).stdout.decode()


def send_japanese(mailer, relay, **fields):
    outcome = mailer.send(locale="ja_JP.UTF-8", gateway=relay.address, **fields)
    assert outcome.exit_code == 0, outcome.output
    session = relay.next_session()
    assert session.header(b"Content-Type") == b"text/plain;charset=ISO-2022-JP"
    return session


@pytest.mark.parametrize("subject", ["障害", "障害 発生", "サーバー停止", "復旧しました"])
def test_japanese_subject_reads_as_it_was_written(mailer, relay, subject):
    session = send_japanese(mailer, relay, subject=subject.encode("cp932"))
    (raw, charset), = email.header.decode_header(session.header(b"Subject").decode("ascii"))
    assert charset == "iso-2022-jp"
    assert iconv(raw) == subject


def test_japanese_body_reads_as_it_was_written_but_for_its_end(mailer, relay):
    text = "監視対象「router7」がダウンしました。\r\n至急確認してください。\r\n0123456789012345678901234567890123456789"
    session = send_japanese(mailer, relay, message=text.encode("cp932"))
    # Five runs of kanji cost six bytes each, and three find too little room behind that.
    assert iconv(session.body) == text[:-(3 * 6 + 3)]


def test_japanese_body_with_half_width_katakana_is_widened(mailer, relay):
    text = "ｻｰﾊﾞｰ ﾀﾞｳﾝ: router7 ................"
    session = send_japanese(mailer, relay, message=text.encode("cp932"))
    # A katakana without a mark takes a byte more than before, each run six more.
    assert iconv(session.body) == "サーバー ダウン: rout"


def test_japanese_system_cuts_ascii_bodies_too(mailer, relay):
    session = send_japanese(mailer, relay, message=b"router7 is down\r\n")
    assert session.body == b"router7 is dow"


def test_japanese_subject_that_is_too_long_goes_on_unencoded(mailer, relay):
    session = send_japanese(mailer, relay, subject="漢字".encode("cp932") * 20)
    assert session.header(b"Subject") == (b" =?ISO-2022-JP?Q?=1B$B" + b"4A=3Bz" * 8 + b"4A?=" +
                                          b";z" + b"4A;z" * 11 + b"\x1b(B")
