"""What a preview says of calls through modems is what modem and far end then get."""

import pytest

from conftest import PAGER_MAGIC
from windows_programs import PreviewPart, wait_until

# The word for telephone among others, in Shift_JIS.
JAPANESE = "\u96fb\u8a71 7: \u505c\u6b62".encode("cp932")


def start_calls(switchboard):
    """Each call with its preview, which goes by the same settings: those of the next call come after."""
    def with_preview(call):
        return call, switchboard.preview(call)

    def japanese_page():
        _, modem = switchboard.connect_modem()
        switchboard.store_settings("Pager", 8, {"COMPort": modem.com_port, "8N1": "1"})
        instance = switchboard.store_instance(PAGER_MAGIC, ["5550528", "geheim", "03-1234", JAPANESE, "NTT"], 8)
        return switchboard.start_host("Pager", instance, modem)

    page = switchboard.start_page
    return {
        "Beeper": with_preview(switchboard.start_call(number="5550100", event="service-up", text="5%%\r9",
                                                      dial="ATDT%s,%s#", timeout="500", profile=9)),
        "TAP": with_preview(page("TAP", "5550201", "long " * 60, password="secret", profile=9,
                                 ModemString="ATE0Q0V1X4S7=60")),
        "SMS-TAP": with_preview(page("SMS-TAP", "5550200", "router7 is down", pager_id="0041 79", profile=10)),
        "UCP-SMS": with_preview(page("UCP-SMS", "5550400", "router7 " * 12, profile=10)),
        "NTT": with_preview(page("NTT", "5550528", "router7 is down", profile=10)),
        "NTT, Japanese": with_preview(japanese_page()),
    }


def bytes_of(parts: list[PreviewPart]) -> bytes:
    return b"".join(part.bytes for part in parts)


@pytest.mark.parametrize("name", ["Beeper", "TAP", "SMS-TAP", "UCP-SMS", "NTT", "NTT, Japanese"])
def test_a_preview_is_what_the_modem_gets(calls, name):
    call, parts = calls[name]
    call.end()
    wait_until(call.modem.losses_of_dtr)
    assert call.process.returncode == 0, call.output()
    assert bytes_of(parts) == call.modem.received()


def test_a_preview_names_the_port_with_its_settings(calls):
    call, parts = calls["Beeper"]
    assert parts[0].words == (f"{call.modem.com_port} at 300 bits per second, 8 data bits, no parity, "
                              "1 stop bit")


def test_a_preview_tells_what_of_a_page_is_left_out(calls):
    _, parts = calls["TAP"]
    [page] = [part for part in parts if part.what == "page"]
    assert page.words.endswith('; cut at 250 characters: "' + ("long " * 60)[236:] + '" left out')
    _, parts = calls["UCP-SMS"]
    [page] = [part for part in parts if part.what == "page"]
    assert page.words.endswith("; cut at 80 bytes: 16 bytes left out")


def test_a_japanese_page_stays_as_it_is(calls):
    _, parts = calls["NTT, Japanese"]
    [page] = [part for part in parts if part.what == "page"]
    assert page.bytes.endswith(JAPANESE + b"\r")
