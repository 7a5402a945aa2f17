"""UCP frames, taken apart by Wireshark's dissector."""

import random
import re
import subprocess
import xml.etree.ElementTree as ElementTree
from dataclasses import dataclass

import pytest

from conftest import TIME_LIMIT, Page, build_pages

PORT = 5000
LONGEST_MESSAGE = 80
EVERY_BYTE = bytes(range(256))


@dataclass
class Dissected:
    info: str  # the line that stands for the packet in a list
    fields: dict[str, list[bytes]]  # of the protocol, by their names: the bytes of the frame


def tshark(capture, *options: str) -> str:
    done = subprocess.run(["tshark", "-r", capture, "-d", f"tcp.port=={PORT},ucp", *options],
                          capture_output=True, check=True, timeout=TIME_LIMIT)
    # What it shows of a text can be no text; the tests go by the bytes, which it writes in digits.
    return re.sub("[\x00-\x08\x0b\x0c\x0e-\x1f]", "?", done.stdout.decode("utf-8", "replace"))


def dissect(frames: list[bytes], folder) -> list[Dissected]:
    """Each frame as the only content of a packet."""
    dump = folder / "frames.txt"
    dump.write_text("".join(f"000000 {frame.hex(' ')}\n" for frame in frames))
    capture = folder / "frames.pcap"
    subprocess.run(["text2pcap", "-q", "-T", f"40000,{PORT}", dump, capture], check=True,
                   capture_output=True, timeout=TIME_LIMIT)
    infos = tshark(capture, "-T", "fields", "-e", "_ws.col.Info").splitlines()
    packets = ElementTree.fromstring(tshark(capture, "-T", "pdml")).findall("packet")
    assert len(infos) == len(packets) == len(frames)
    return [Dissected(info, ucp_fields(packet)) for info, packet in zip(infos, packets)]


def ucp_fields(packet) -> dict[str, list[bytes]]:
    fields: dict[str, list[bytes]] = {}
    for element in packet.iterfind(".//proto[@name='ucp']//field"):
        fields.setdefault(element.get("name"), []).append(bytes.fromhex(element.get("value") or ""))
    return fields


def messages() -> list[bytes]:
    """Two of each length from 1 to 100; of all together, each byte value in many places."""
    source = random.Random(1986)
    texts = [bytes(source.choices(EVERY_BYTE, k=length)) for length in range(1, 101)]
    # The second ones go through the byte values in turn.
    running = EVERY_BYTE * 20
    start = 0
    for length in range(1, 101):
        texts.append(running[start:start + length])
        start += length
    return texts


MESSAGES = messages()
PAGER_IDS = [b"0041791234567", b"+41 79 123 45 67", b"123", b"9" * 16]
PAGES = [Page(PAGER_IDS[number % len(PAGER_IDS)], text) for number, text in enumerate(MESSAGES)]


def address(page: Page) -> bytes:
    return bytes(byte for byte in page.pager_id if byte in b"0123456789")


@pytest.fixture(scope="module")
def frames():
    return build_pages("UCP-SMS", PAGES)


@pytest.fixture(scope="module")
def dissected(frames, tmp_path_factory):
    return dissect(frames, tmp_path_factory.mktemp("ucp"))


def test_the_messages_are_of_all_lengths_and_hold_all_bytes():
    assert len(MESSAGES) == 200
    assert sorted(map(len, MESSAGES)) == sorted([*range(1, 101)] * 2)
    assert set(b"".join(text[:LONGEST_MESSAGE] for text in MESSAGES)) == set(EVERY_BYTE)


def test_operation_and_reference_are_found(dissected):
    for number, frame in enumerate(dissected):
        assert frame.info == "Call input (multiple address) (Operation)"
        assert frame.fields["ucp.hdr.OT"] == [b"02"]
        assert frame.fields["ucp.hdr.O_R"] == [b"O"]
        assert frame.fields["ucp.hdr.TRN"] == [b"%02d" % (number % 100)]


def test_one_address_is_found(dissected):
    for page, frame in zip(PAGES, dissected):
        assert frame.fields["ucp.parm.NPL"] == [b"1"]
        assert frame.fields["ucp.parm.AdC"] == [address(page)]
        assert "ucp.parm.OAdC" not in frame.fields
        assert "ucp.parm.OAC" not in frame.fields


def test_text_is_found(dissected):
    for page, frame in zip(PAGES, dissected):
        assert frame.fields["ucp.parm.MT"] == [b"3"]
        (digits,) = frame.fields["ucp.parm.AMsg"]
        assert digits == page.message[:LONGEST_MESSAGE].hex().upper().encode()


def test_no_checksum_is_invalid(dissected):
    assert [frame.info for frame in dissected if "[checksum invalid]" in frame.info] == []


def test_the_dissector_tells_a_wrong_checksum(frames, tmp_path):
    spoilt = [frame[:-3] + (b"00" if frame[-3:-1] != b"00" else b"01") + frame[-1:]
              for frame in frames[:20]]
    assert all("[checksum invalid]" in frame.info for frame in dissect(spoilt, tmp_path))


# The dissector does not look at it.
def test_length_counts_from_the_reference_through_the_checksum(frames):
    for frame in frames:
        assert frame[:1] == b"\x02" and frame[-1:] == b"\x03"
        reference, length, *_ = frame[1:-1].split(b"/")
        assert len(reference) == 2
        assert length == b"%05d" % (len(frame) - 2)


def test_checksum_is_the_sums_low_byte(frames):
    for frame in frames:
        assert frame[-3:-1] == b"%02X" % (sum(frame[1:-3]) % 256)


def test_worked_example(tmp_path):
    example = Page(b"0041791234567", b"Hi")
    frame = build_pages("UCP-SMS", [example] * 8)[7]
    assert frame == b"\x0207/00041/O/02/1/0041791234567///3/4869/C3\x03"
    (dissected,) = dissect([frame], tmp_path)
    assert dissected.info == "Call input (multiple address) (Operation)"
