"""The Japanese conversions beside two converters that others wrote, iconv and nkf.

iconv goes by way of Unicode and knows assigned cells alone; nkf, told to keep to the arithmetic, knows
all 8,836 of them.
"""

import subprocess
import unicodedata

import pytest

from conftest import run_text_converter
from windows_programs import TIME_LIMIT

CELLS = [(row, cell) for row in range(0x21, 0x7F) for cell in range(0x21, 0x7F)]
JIS_PAIRS = [bytes(pair) for pair in CELLS]
EUC_PAIRS = [bytes((row | 0x80, cell | 0x80)) for row, cell in CELLS]
HALF_WIDTH = [bytes((byte,)) for byte in range(0xA1, 0xE0)]

# Assigned cells of JIS X 0208, by its 1990 edition.
ASSIGNED = 6879


def framed(pair: bytes) -> bytes:
    return b"\x1b$B" + pair + b"\x1b(B"


def nkf(options: list[str], texts: list[bytes]) -> list[bytes]:
    """Each text converted as a line of its own."""
    # -x keeps half-width katakana, -m0 leaves encoded-words alone; the last two keep nkf from going
    # over to the makers' extensions.
    command = ["nkf", "-x", "-m0", "--no-cp932", "--no-best-fit-chars", *options]
    done = subprocess.run(command, input=b"\n".join(texts) + b"\n", capture_output=True, check=True,
                          timeout=TIME_LIMIT)
    return done.stdout.removesuffix(b"\n").split(b"\n")


def iconv(source: str, target: str, text: bytes) -> bytes | None:
    """The text converted by the C library, or nothing where it rejects it."""
    done = subprocess.run(["iconv", "-f", source, "-t", target], input=text, capture_output=True,
                          timeout=TIME_LIMIT)
    return done.stdout if done.returncode == 0 else None


def assigned(source: str, texts: list[bytes]) -> list[bool]:
    """Which of the texts the C library knows. It drops the others from a line that is else empty."""
    done = subprocess.run(["iconv", "-c", "-f", source, "-t", "UTF-8"],
                          input=b"\n".join(texts) + b"\n", capture_output=True, timeout=TIME_LIMIT)
    return [line != b"" for line in done.stdout.removesuffix(b"\n").split(b"\n")]


@pytest.fixture(scope="module")
def shift_jis_pairs():
    return run_text_converter("euc-jp-to-shift-jis", EUC_PAIRS)


def test_all_cells_from_euc_jp_are_those_of_nkf(shift_jis_pairs):
    assert len(CELLS) == 8836
    assert shift_jis_pairs == nkf(["-E", "-s"], EUC_PAIRS)


def test_all_cells_from_jis_are_those_of_nkf(shift_jis_pairs):
    converted = run_text_converter("jis-to-shift-jis", [framed(pair) for pair in JIS_PAIRS])
    assert converted == shift_jis_pairs
    assert converted == nkf(["-J", "-s"], [framed(pair) for pair in JIS_PAIRS])


def test_all_cells_to_jis_are_those_of_nkf(shift_jis_pairs):
    converted = run_text_converter("shift-jis-to-jis", shift_jis_pairs)
    assert converted == [framed(pair) for pair in JIS_PAIRS]
    assert converted == nkf(["-S", "-j"], shift_jis_pairs)


def test_all_cells_from_euc_jp_to_jis_are_themselves():
    assert run_text_converter("euc-jp-to-jis", EUC_PAIRS) == [framed(pair) for pair in JIS_PAIRS]


def test_assigned_cells_are_those_of_iconv_both_ways(shift_jis_pairs):
    known = assigned("EUC-JP", EUC_PAIRS)
    assert sum(known) == ASSIGNED
    cells = [(euc, shift_jis) for euc, shift_jis, is_known
             in zip(EUC_PAIRS, shift_jis_pairs, known) if is_known]
    euc = b"\n".join(pair for pair, _ in cells)
    shift_jis = b"\n".join(pair for _, pair in cells)
    assert iconv("EUC-JP", "SHIFT_JIS", euc) == shift_jis
    assert iconv("SHIFT_JIS", "EUC-JP", shift_jis) == euc
    # Line by line, since iconv keeps kanji open no further than that either.
    jis = b"\n".join(framed(bytes(byte & 0x7F for byte in pair)) for pair, _ in cells)
    assert iconv("ISO-2022-JP", "SHIFT_JIS", jis) == shift_jis
    assert iconv("SHIFT_JIS", "ISO-2022-JP", shift_jis) == jis


# Cells over which converters disagree when they go by way of Unicode.
@pytest.mark.parametrize("jis, shift_jis", [
    (b"\x21\x41", b"\x81\x60"),  # wave dash
    (b"\x21\x40", b"\x81\x5f"),  # backslash
    (b"\x21\x31", b"\x81\x50"),  # overline
    (b"\x21\x3d", b"\x81\x5c"),  # dash
    (b"\x21\x42", b"\x81\x61"),  # parallel
    (b"\x21\x5d", b"\x81\x7c"),  # minus
    (b"\x21\x71", b"\x81\x91"),  # cent
    (b"\x21\x72", b"\x81\x92"),  # pound
    (b"\x22\x4c", b"\x81\xca"),  # not
])
def test_disputed_cells_keep_their_place(jis, shift_jis):
    euc = bytes(byte | 0x80 for byte in jis)
    assert run_text_converter("euc-jp-to-shift-jis", [euc]) == [shift_jis]
    assert nkf(["-E", "-s"], [euc]) == [shift_jis]
    assert run_text_converter("shift-jis-to-jis", [shift_jis]) == [framed(jis)]
    assert nkf(["-S", "-j"], [shift_jis]) == [framed(jis)]


def test_backslash_and_tilde_stay_single_bytes():
    text = b"C:\\temp ~user"
    for operation in ("euc-jp-to-shift-jis", "jis-to-shift-jis", "shift-jis-to-jis"):
        assert run_text_converter(operation, [text]) == [text]
    for options in (["-E", "-s"], ["-J", "-s"], ["-S", "-j"]):
        assert nkf(options, [text]) == [text]


def test_half_width_katakana_of_euc_jp_are_those_of_nkf():
    texts = [b"\x8e" + katakana for katakana in HALF_WIDTH]
    converted = run_text_converter("euc-jp-to-shift-jis", texts)
    assert converted == HALF_WIDTH
    assert converted == nkf(["-E", "-s"], texts)


MARKS = {"none": b"", "voiced": b"\xde", "semi-voiced": b"\xdf", "both": b"\xde\xdf"}


@pytest.mark.parametrize("mark", MARKS)
def test_half_width_katakana_widen_as_by_nkf(mark):
    texts = [katakana + MARKS[mark] for katakana in HALF_WIDTH]
    converted = run_text_converter("shift-jis-to-jis", texts)
    # Capital -X widens half-width katakana.
    assert converted == nkf(["-S", "-j", "-X"], texts)


# Characters with a mark that JIS X 0208 has not: the mark stands beside, as a sign of its own.
SEPARATE_MARKS = {0x3099: "\u309b", 0x309A: "\u309c", 0x30F7: "\u30ef\u309b",
                  0x30FA: "\u30f2\u309b"}


@pytest.mark.parametrize("mark", MARKS)
def test_half_width_katakana_widen_as_unicode_has_them(mark):
    texts = [katakana + MARKS[mark] for katakana in HALF_WIDTH]
    wide = [unicodedata.normalize("NFKC", text.decode("shift_jis")).translate(SEPARATE_MARKS)
            for text in texts]
    converted = run_text_converter("shift-jis-to-jis", texts)
    assert [text.decode("iso2022_jp") for text in converted] == wide


def test_running_text_is_that_of_iconv():
    text = ("監視対象「router7」がダウンしました。\n"
            "時刻：12月31日 23:59\nABC〜αβγ\n〆切 々 ー\n")
    euc = text.encode("euc_jp")
    shift_jis = iconv("EUC-JP", "SHIFT_JIS", euc)
    assert shift_jis is not None
    assert run_text_converter("euc-jp-to-shift-jis", [euc]) == [shift_jis]
    jis = iconv("SHIFT_JIS", "ISO-2022-JP", shift_jis)
    assert run_text_converter("shift-jis-to-jis", [shift_jis]) == [jis]
    assert run_text_converter("jis-to-shift-jis", [jis]) == [shift_jis]
