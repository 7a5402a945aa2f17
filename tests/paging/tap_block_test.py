"""TAP blocks beside published checksums and an independent computation."""

import random
import re

import pytest

from conftest import Page, build_pages

CAPACITY = {"TAP": 250, "SMS-TAP": 160}


def checksum(block: bytes) -> bytes:
    """Of the bytes from STX to ETX, digit by digit from the right as the protocol's text has it."""
    rest = sum(block)
    characters = []
    for _ in range(3):
        rest, digit = divmod(rest, 16)
        characters.append(0x30 + digit)
    return bytes(reversed(characters))


def expected_block(protocol: str, page: Page) -> bytes:
    digits = re.sub(rb"[^0-9]", b"", page.pager_id)
    if protocol == "SMS-TAP":
        digits = digits.lstrip(b"0")
    text = re.sub(rb"[^ -~]", b"", page.message.replace(b"\r", b" "))
    room = max(CAPACITY[protocol] - len(digits) - 1, 0)
    block = b"\x02" + digits + b"\r" + text[:room] + b"\r\x03"
    return block + checksum(block) + b"\r"


@pytest.mark.parametrize("pager_id, message, sum_of_it", [
    (b"123", b"ABC", b"17;"),
    (b"1", b"TEST", b"190"),
    (b"123", b"HI", b"146"),
])
def test_checksums_are_those_of_published_examples(pager_id, message, sum_of_it):
    block = b"\x02" + pager_id + b"\r" + message + b"\r\x03"
    assert checksum(block) == sum_of_it
    assert build_pages("TAP", [Page(pager_id, message)]) == [block + sum_of_it + b"\r"]


@pytest.mark.parametrize("protocol", CAPACITY)
def test_blocks_are_those_of_an_independent_computation(protocol):
    source = random.Random(1988)
    pages = []
    for length in range(1, 301):
        pager_id = bytes(source.choices(b"0123456789+- ", k=source.randrange(3, 20)))
        alphabet = source.choice([bytes(range(256)), bytes(range(0x20, 0x7F)), b"A\r\n"])
        pages.append(Page(pager_id, bytes(source.choices(alphabet, k=length))))
    assert build_pages(protocol, pages) == [expected_block(protocol, page) for page in pages]


@pytest.mark.parametrize("protocol", CAPACITY)
def test_sums_of_every_size_are_written(protocol):
    """Three characters, each of all sixteen values."""
    pages = [Page(b"1", b"y" * length) for length in range(1, 200)]
    blocks = build_pages(protocol, pages)
    assert blocks == [expected_block(protocol, page) for page in pages]
    for place in (-4, -3, -2):
        assert {block[place] for block in blocks} == set(b"0123456789:;<=>?")
