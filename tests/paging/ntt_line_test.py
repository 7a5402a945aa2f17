"""The messages of NTT's lines beside Python's own converters."""

import pytest

from conftest import Page, build_pages

PREFIX = b"8000C00000********,10000,"
LONGEST_MESSAGE = 100

# Each long enough to be told from the other encodings, some of them beyond the limit.
TEXTS = [
    "監視対象がダウンしました。",
    "router7 がダウン",
    "復旧しました：メールサーバー",
    "一二三四五六七八九十" * 6,
    "x" + "一二三四五六七八九十" * 6,
    "〜ＡＢＣαβγ ダウン",
]


def message_of(line: bytes) -> bytes:
    assert line.startswith(PREFIX) and line.endswith(b"\r")
    pager_id, password, rest = line[len(PREFIX):-1].split(b",", 2)
    assert (pager_id, password) == (b"0312345678AAAAA", b"0007")
    message = rest[3:]
    assert rest[:3] == b"%03d" % len(message)
    return message


def cut(text: str) -> bytes:
    """As many whole characters as there is room for."""
    while len(text.encode("shift_jis")) > LONGEST_MESSAGE:
        text = text[:-1]
    return text.encode("shift_jis")


@pytest.mark.parametrize("encoding", ["euc_jp", "shift_jis", "iso2022_jp"])
def test_messages_are_those_of_python(encoding):
    pages = [Page(b"03-1234-5678", text.encode(encoding), b"7") for text in TEXTS]
    assert [message_of(line) for line in build_pages("NTT", pages)] == [cut(text) for text in TEXTS]
