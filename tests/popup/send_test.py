"""What the messenger library gets of an alert."""

import shutil
import socket

import pytest

from conftest import STAND_INS, TCPIP_KEY
from windows_programs import HOST, windows_path

PARAMETERS = "server (null), sender (null), answer 0, {} bytes"


def expected_buffer(text: str, encoding: str) -> bytes:
    """1,024 characters in UTF-16 at most, and zeros up to two bytes for each byte of the text."""
    return text[:1024].encode("utf-16-le").ljust(2 * len(text.encode(encoding)), b"\0")


def send_text(office, locale: str, encoding: str, text: str):
    outcome = office.send(b"pc9", text.encode(encoding), LC_ALL=locale)
    assert outcome.exit_code == 0, outcome.output
    [popup] = outcome.popups
    return popup


@pytest.mark.parametrize("locale, encoding, text", [
    ("C.UTF-8", "cp1252", "router7 is down"),
    ("C.UTF-8", "cp1252", "Kühlung: 5 €, „Störung“"),
    ("pl_PL.UTF-8", "cp1250", "Sieć padła"),
    ("ru_RU.UTF-8", "cp1251", "Сбой сети"),
    ("el_GR.UTF-8", "cp1253", "βλάβη δικτύου"),
    ("he_IL.UTF-8", "cp1255", "תקלה ברשת"),
    ("ja_JP.UTF-8", "cp932", "ルータ7が停止 down"),
    ("ko_KR.UTF-8", "cp949", "장애 router7"),
])
def test_the_message_is_sent_in_utf16_with_two_bytes_for_each_of_its_bytes(office, locale, encoding,
                                                                           text):
    popup = send_text(office, locale, encoding, text)
    assert popup.destination == "pc9"
    assert popup.parameters == PARAMETERS.format(2 * len(text.encode(encoding)))
    assert popup.buffer == expected_buffer(text, encoding)


@pytest.mark.parametrize("length", [1, 1023, 1024, 1025, 5000])
@pytest.mark.parametrize("locale, encoding, letters", [
    ("C.UTF-8", "cp1252", "abcdefg"),
    ("C.UTF-8", "cp1252", "ä€ö"),
    ("ja_JP.UTF-8", "cp932", "電話網"),
    ("ja_JP.UTF-8", "cp932", "a電ｱ"),
])
def test_1024_characters_of_a_message_are_sent(office, length, locale, encoding, letters):
    text = (letters * length)[:length]
    popup = send_text(office, locale, encoding, text)
    assert popup.parameters == PARAMETERS.format(2 * len(text.encode(encoding)))
    assert popup.buffer == expected_buffer(text, encoding)


def test_the_host_expands_the_message_and_not_the_destination(office):
    outcome = office.send(b"%n", b"%n is down", "--set", "n=router7")
    [popup] = outcome.popups
    assert (popup.destination, popup.buffer) == ("%n", "router7 is down".encode("utf-16-le"))


def test_the_destination_is_sent_in_utf16(office):
    [popup] = office.send("KÖLN-€".encode("cp1252"), b"x").popups
    assert popup.destination == "KÖLN-€"


# "(local)".

@pytest.mark.parametrize("destination", [b"(local)", b""])
def test_this_computer_is_known_by_its_registered_name(office, destination):
    [popup] = office.send(destination, b"x").popups
    assert popup.destination == "pc7"


@pytest.mark.parametrize("destination", ["(LOCAL)", "(Local)", "(local) ", "local", "OPS*", "pc9"])
def test_other_destinations_are_sent_as_they_stand(office, destination):
    [popup] = office.send(destination.encode(), b"x").popups
    assert popup.destination == destination


@pytest.fixture
def register_name(office):
    """A function that registers another name of this computer, or none."""
    def register(name):
        if name is None:
            office.delete(TCPIP_KEY, "Hostname")
        else:
            office.store(TCPIP_KEY, "Hostname", name)

    yield register
    office.store(TCPIP_KEY, "Hostname", "pc7")


# 255 bytes and their NUL are read of it.
@pytest.mark.parametrize("name", ["pc7.example.org", "n" * 255])
def test_the_registered_name_is_taken_whole(office, register_name, name):
    register_name(name)
    [popup] = office.send(b"(local)", b"x").popups
    assert popup.destination == name


@pytest.mark.parametrize("name", [None, "", "n" * 256])
def test_without_a_registered_name_it_is_the_one_of_the_sockets_library(office, register_name, name):
    register_name(name)
    [popup] = office.send(b"(local)", b"x").popups
    assert popup.destination == socket.gethostname().partition(".")[0]


# What the library does, and what it lacks.

@pytest.mark.parametrize("status", [2273, 2138, 5, 1])
def test_a_refusal_fails_without_a_line(office, status):
    outcome = office.send(b"pc9", b"x", MESSENGER_ANSWER=str(status))
    assert outcome.exit_code != 0
    assert len(outcome.popups) == 1
    assert "0x80004005 (E_FAIL)" in outcome.output
    assert len(outcome.output.splitlines()) == 1


@pytest.mark.parametrize("missing", ["NetServerEnum", "NetMessageNameEnum"])
def test_entries_for_other_uses_may_be_missing(office, missing):
    office.install(f"without_{missing}")
    outcome = office.send(b"pc9", b"x")
    assert outcome.exit_code == 0
    assert len(outcome.popups) == 1


@pytest.mark.parametrize("missing", ["NetMessageBufferSend", "NetApiBufferFree", "NetWkstaGetInfo"])
def test_without_an_entry_that_sending_needs_nothing_is_sent_and_that_succeeds(office, missing):
    office.install(f"without_{missing}")
    outcome = office.send(b"pc9", b"x")
    assert outcome.exit_code == 0
    assert [line.partition(" ")[0] for line in outcome.report] == ["loaded", "unloaded"]


def test_without_the_library_nothing_is_sent_and_that_succeeds(office):
    (office.system_directory / "netapi32.dll").unlink()
    outcome = office.send(b"pc9", b"x")
    assert outcome.exit_code == 0
    assert outcome.report == []


# The library comes from the system's directory.

@pytest.fixture
def decoys(office, tmp_path):
    """Copies of the library beside the host, in the current directory and in one of the PATH."""
    for place in ("host", "current", "path"):
        (tmp_path / place).mkdir()
        for name in ("netapi32.dll", "svrapi.dll"):
            shutil.copy(STAND_INS / "whole" / "netapi32.dll", tmp_path / place / name)
    shutil.copy(HOST, tmp_path / "host")
    return {"host": tmp_path / "host" / HOST.name, "cwd": tmp_path / "current",
            "WINEPATH": windows_path(tmp_path / "path")}


def test_a_library_of_that_name_elsewhere_is_not_loaded(office, decoys):
    outcome = office.send(b"pc9", b"x", **decoys)
    assert outcome.exit_code == 0
    assert len(outcome.popups) == 1
    assert [line for line in outcome.report if "loaded" in line] == [
        r"loaded C:\windows\system32\netapi32.dll", r"unloaded C:\windows\system32\netapi32.dll"]


def test_a_library_of_that_name_elsewhere_is_not_loaded_where_the_system_has_none(office, decoys):
    (office.system_directory / "netapi32.dll").unlink()
    outcome = office.send(b"pc9", b"x", **decoys)
    assert outcome.exit_code == 0
    assert outcome.report == []


@pytest.mark.parametrize("place", ["current", "path"])
def test_the_decoys_would_be_loaded_by_their_name_alone(office, decoys, tmp_path, place):
    (office.system_directory / "netapi32.dll").unlink()
    for other in {"current", "path"} - {place}:
        (tmp_path / other / "netapi32.dll").unlink()
    report = tmp_path / "report"
    office.wine("rundll32", "netapi32.dll,NoSuchEntry", cwd=decoys["cwd"],
                WINEPATH=decoys["WINEPATH"], MESSENGER_REPORT=windows_path(report))
    assert report.read_text().splitlines()[0].endswith(rf"\{place}\netapi32.dll")


# The family of Windows.

def test_on_the_windows_95_family_nothing_is_sent_and_that_succeeds(office, windows_95):
    outcome = office.send(b"pc9", b"x", host=windows_95(HOST))
    assert outcome.exit_code == 0
    assert outcome.report == [r"loaded C:\windows\system32\svrapi.dll",
                              r"unloaded C:\windows\system32\svrapi.dll"]


# What a preview says of a pop-up.

@pytest.mark.parametrize("locale, destination, message", [
    ("C.UTF-8", b"OPS", b"%n is down"),
    ("C.UTF-8", b"(local)", "K\u00fchlung: 5 \u20ac".encode("cp1252")),
    ("C.UTF-8", b"pc9", b"%n" * 200),
    ("ja_JP.UTF-8", b"pc9", "\u96fb\u8a71 %n down".encode("cp932")),
])
def test_a_preview_is_what_the_messenger_service_gets(office, locale, destination, message):
    variables = ("--set", "n=router7")
    [part] = office.preview(destination, message, *variables, LC_ALL=locale)
    [popup] = office.send(destination, message, *variables, LC_ALL=locale).popups
    assert part.bytes == popup.buffer
    assert part.words.startswith(f"for {popup.destination}; ")


def test_a_preview_asks_no_messenger_service(office):
    report = office.folder / "report"
    report.unlink(missing_ok=True)
    office.preview(b"OPS", b"router7 is down", MESSENGER_REPORT=windows_path(report))
    assert not report.exists()
