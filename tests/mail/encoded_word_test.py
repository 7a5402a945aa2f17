"""Encoded-words of every code page, decoded by Python's own decoder."""

import email.header
import random

import pytest

from conftest import run_text_converter

LABELS = {932: "iso-2022-jp", 949: "iso-2022-jp-2", 1250: "iso-8859-2", 1251: "iso-8859-5",
          1252: "iso-8859-1", 1253: "iso-8859-7", 1254: "iso-8859-9", 1255: "iso-8859-8",
          1256: "iso-8859-6", 1257: "iso-8859-4"}
SINGLE_BYTE = [code_page for code_page in LABELS if code_page > 1000]

# An encoded-word has room for so many hexadecimal bytes.
ROOM = 18


def encode(code_page: int, texts: list[bytes]) -> list[bytes]:
    return run_text_converter(f"header-{code_page}", texts)


def decode(header: bytes) -> list[tuple[bytes, str | None]]:
    parts = email.header.decode_header(header.decode("ascii"))
    return [(text if isinstance(text, bytes) else text.encode("ascii"), charset)
            for text, charset in parts]


@pytest.mark.parametrize("code_page", SINGLE_BYTE)
def test_every_byte_comes_back_under_its_label(code_page):
    texts = [bytes((byte,)) for byte in range(0x7F, 0x100)]
    for text, header in zip(texts, encode(code_page, texts)):
        assert decode(header)[-1] == (text, LABELS[code_page])


@pytest.mark.parametrize("code_page", [*SINGLE_BYTE, 949])
def test_runs_that_fit_come_back_whole(code_page):
    chance = random.Random(code_page)
    texts = []
    for _ in range(500):
        run = bytes(chance.choice((chance.randrange(0x7F, 0x100), chance.randrange(0x20, 0x7F)))
                    for _ in range(ROOM - 1))
        texts.append(b"\xe9" + run[:-1] + b"\xe9")
    for text, header in zip(texts, encode(code_page, texts)):
        assert decode(header) == [(text, LABELS[code_page])]


@pytest.mark.parametrize("code_page", [*SINGLE_BYTE, 949])
def test_what_is_too_long_is_cut_at_a_character(code_page):
    chance = random.Random(code_page)
    texts = [bytes(chance.randrange(0x80, 0x100) for _ in range(chance.randrange(19, 200)))
             for _ in range(500)]
    for text, header in zip(texts, encode(code_page, texts)):
        assert decode(header) == [(text[:ROOM], LABELS[code_page])]
        assert len(header) <= 75


def test_plain_text_around_the_run_stays():
    header, = encode(1252, ["Der Rechner für Müller ist aus".encode("cp1252")])
    assert header == b"Der Rechner f =?ISO-8859-1?Q?=FCr_M=FC?=ller ist aus"
    assert decode(header) == [(b"Der Rechner f ", None), ("ür Mü".encode("latin-1"), "iso-8859-1"),
                              (b"ller ist aus", None)]


# The letters of each alphabet whose bytes are the same under the label.
@pytest.mark.parametrize("code_page, text", [
    (1250, "Węzeł główny: błędy"),
    (1252, "Störung"),
    (1253, "βλάβη δικτύου"),
    (1254, "Ağ arızası"),
    (1255, "תקלה ברשת"),
    (1256, "حادث"),
])
def test_text_reads_as_it_was_written(code_page, text):
    header, = encode(code_page, [text.encode(f"cp{code_page}")])
    shown = str(email.header.make_header(email.header.decode_header(header.decode("ascii"))))
    # The blank that comes before an encoded-word is shown as well.
    assert shown.replace(" ", "") == text.replace(" ", "")


def decode_japanese(text: bytes) -> str:
    header, = encode(932, [text])
    (raw, charset), = decode(header)
    assert charset == "iso-2022-jp"
    return raw.decode("iso2022_jp")


@pytest.mark.parametrize("text", ["障害", "障害 発生", "サーバー停止", "復旧しました"])
def test_shift_jis_reads_as_it_was_written(text):
    assert decode_japanese(text.encode("cp932")) == text


def test_half_width_katakana_are_widened():
    assert decode_japanese("ﾃｽﾄ".encode("cp932")) == "テスト"


# Each has a byte that Shift_JIS has not.
@pytest.mark.parametrize("text", ["復旧しました", "障害 復旧", "復旧 確認"])
def test_euc_jp_reads_as_it_was_written(text):
    assert decode_japanese(text.encode("euc_jp")) == text


# What can be either is deliberately taken for Shift_JIS, which is what the system writes.
@pytest.mark.parametrize("text, read", [("障害", "セ羌イ"), ("サーバー停止", "・オ。シ・ミ。シト莉゜")])
def test_euc_jp_that_can_be_shift_jis_is_read_as_that(text, read):
    assert decode_japanese(text.encode("euc_jp")) == read
