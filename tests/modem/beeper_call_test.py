"""Beeper calls in real time, through the real module."""

import pytest

from conftest import DELIVERED, FAILED
from windows_programs import wait_until, windows_path

# The rates that a pseudo-terminal can be set to, by the setting that selects each. Of the tenth rate,
# 14400, terminals know nothing.
RATES = {"0": 300, "1": 1200, "2": 2400, "3": 4800, "4": 9600, "6": 19200, "7": 38400, "8": 57600,
         "9": 115200, "100": 1200, "300": 300, "2400": 2400, "-1": 1200, "fast": 300, "": 300}


def start_calls(switchboard):
    calls = {
        "whole": switchboard.start_call(dial="ATDT%s,%s#", timeout="2000", Baud="9600"),
        "default": switchboard.start_call(number="5550112", dial="", timeout="", text=""),
        "trap": switchboard.start_call("--set", "R=r", event="trap", text="50%%", timeout="2500",
                                       dial="ATDT%s,%s#", profile=7),
        "second command": switchboard.start_call(text="7\r\nATH1\r7\x7F", dial="ATDT%s,%s#", timeout="2000"),
        "no event": switchboard.start_call(event="none", text="unused", dial="%s%s"),
        "busy": switchboard.start_call(number="5550101", timeout="1500"),
        "none": switchboard.start_call(modem=["--answering", "none"]),
        "late": switchboard.start_call(modem=["--answering", "late"]),
        "garbage": switchboard.start_call(modem=["--answering", "garbage"]),
        "flood": switchboard.start_call(modem=["--answering", "flood"]),
        "echo": switchboard.start_call(modem=["--echo-stuck"]),
        "numbers": switchboard.start_call(ModemString="ATE0V0"),
        "unplugged": switchboard.start_call(number="5550111", timeout="1500"),
        "vanishing": switchboard.start_call(modem=["--answering", "none"]),
    }
    vanishing = calls["vanishing"]
    wait_until(lambda: vanishing.modem.said("host"))
    vanishing.modem.process.kill()
    for setting in RATES:
        calls[f"rate {setting}"] = switchboard.start_call(modem=["--answering", "none"], Baud=setting)
    return calls


def test_whole_session(finished):
    call = finished("whole")
    assert call.output() == (
        "SendBeeperMessage:\n"
        "Beep Number:5550100\n"
        "Modem String:\n"
        "ATE0Q0V1X4\n"
        "Dial String:\n"
        "ATDT%s,%s#\n"
        "Complete Message:\n"
        "22277\n"
        "Sending...\n"
        'sending "ATE0Q0V1X4\n'
        '"\n'
        "waiting for completion\n"
        'returned "ATE0Q0V1X4\n'
        "\n"
        "OK\n"
        '"\n'
        "ATDT5550100,22277#\n"
        "\n"
        "Delaying\n"
        'sending "+++"\n'
        'sending "ATH0\n'
        '"\n'
        "waiting for completion\n"
        'returned "\n'
        "NO CARRIER\n"
        "\n"
        "OK\n"
        '"\n'
        "success\n"
        "Delivered.\n")
    assert call.process.returncode == 0


def test_whole_session_at_the_modem(finished):
    modem = finished("whole").modem
    assert modem.said("port") == ["is set to 9600 bit/s 8N1"]
    assert modem.said("host") == ['"ATE0Q0V1X4\\r"', '"ATDT5550100,22277#\\r"', '"+++"', '"ATH0\\r"']
    assert modem.said("pager") == ["shows 22277"]


def test_whole_session_takes_its_time(finished):
    """Never less than was to be waited, to the millisecond on the clock of the unit tests. Here a line is stamped when
    the simulator comes to read it, which on a busy machine can be late at the beginning of a wait."""
    late = 0.1
    modem = finished("whole").modem
    initialised = modem.time_of("host", '"ATE0Q0V1X4\\r"')
    dialled = modem.time_of("host", '"ATDT5550100,22277#\\r"')
    escaped = modem.time_of("host", '"+++"')
    hung_up = modem.time_of("host", '"ATH0\\r"')
    assert dialled - initialised >= 2 - late  # the read's time-out
    assert escaped - dialled >= 5 - late  # one comma, one second more, and the time-out setting
    assert hung_up - escaped >= 1 - late
    assert hung_up - initialised >= 8 - late


def test_default_settings_reach_a_pager_that_answers_slowly(finished):
    """The four commas of the default dial string are eight seconds."""
    call = finished("default")
    assert call.modem.said("host")[1] == '"ATDT5550112,,,,222#\\r"'
    assert call.modem.said("pager") == ["shows 222"]
    assert call.process.returncode == 0


def test_settings_of_a_profile_and_a_trap(finished):
    call = finished("trap")
    # "%" is no key of a telephone.
    assert call.modem.said("host")[1] == '"ATDT5550100,33350%#\\r"'
    assert call.modem.said("pager") == ["shows 33350"]


def test_event_text_gives_the_modem_no_second_command(finished):
    call = finished("second command")
    assert "Complete Message:\n2227\nATH1\n7" in call.output()
    assert call.modem.said("host") == ['"ATE0Q0V1X4\\r"', '"ATDT5550100,2227ATH17#\\r"', '"+++"', '"ATH0\\r"']
    assert call.modem.said("pager") == ["shows 222717"]


def test_report_message_without_an_event(finished):
    call = finished("no event")
    assert "Complete Message:\nreport\nSending...\n" in call.output()
    assert call.modem.said("host")[1] == '"5550100report\\r"'


def test_busy_number_counts_as_called(finished):
    """The modem says so too late for anybody to read it before the hang-up."""
    call = finished("busy")
    assert 'returned "' in call.log() and "BUSY" in call.log()
    assert call.log()[-2:] == ["success", DELIVERED]


def test_modem_that_does_not_answer(finished):
    call = finished("none")
    assert call.log() == ['sending "ATE0Q0V1X4', '"', "waiting for completion", 'returned ""',
                          "Looking for OK", 'returned ""', "Trying again for OK", 'sending "AT', '"',
                          "waiting for completion", 'returned ""',
                          'Failed to receive OK from modem. ""', FAILED]
    assert call.modem.said("host") == ['"ATE0Q0V1X4\\r"', '"AT\\r"']
    assert call.process.returncode == 1


def test_modem_that_answers_late(finished):
    call = finished("late")
    assert call.log()[3:9] == ['returned "ATE0Q0V1X4', '"', "Looking for OK", 'returned "', "OK", '"']
    assert call.log()[-1] == DELIVERED


def test_modem_at_another_speed(finished):
    call = finished("garbage")
    assert "Looking for OK" in call.log() and "Trying again for OK" in call.log()
    assert call.log()[-1] == FAILED


def test_modem_that_does_not_stop(finished):
    """Each read takes a hundred bytes, and what they log ends there."""
    log = finished("flood").log()
    assert log[3:6] == ['returned "ATE0Q0V1X4', "U" * 89 + '"', "Looking for OK"]
    assert log[6] == 'returned "' + "U" * 100 + '"'
    assert log[-2:] == ['Failed to receive OK from modem. "' + "U" * 100 + '"', FAILED]


def test_modem_that_goes_on_echoing(finished):
    call = finished("echo")
    assert call.log()[-2:] == ["success", DELIVERED]


def test_modem_that_answers_in_numbers(finished):
    """A number is no OK."""
    call = finished("numbers")
    assert call.log()[-3:] == ['Failed to receive OK from modem. "0', '"', FAILED]
    assert call.modem.said("host") == ['"ATE0V0\\r"', '"AT\\r"']


def test_port_that_vanishes_after_dialling(finished):
    """The pager was called before that."""
    call = finished("unplugged")
    write_errors = [line for line in call.log() if line.startswith("comm write error ")]
    assert len(write_errors) == 2
    assert call.log()[-2:] == ["success", DELIVERED]
    assert call.modem.process.wait() == 0


def test_port_that_vanishes_during_the_initialisation(finished):
    call = finished("vanishing")
    assert any(line.startswith(("comm write error ", "comm read error ")) for line in call.log())
    assert not any("ATDT5550100" in line for line in call.log())
    assert call.log()[-1] == FAILED


def test_port_that_came_back(switchboard, finished):
    """After a call on it that failed, a port works as before."""
    link = finished("vanishing").modem.link
    modem = switchboard.start_modem(link)
    com_port = link.name.replace("port", "COM")
    call = switchboard.start_call(com_port=com_port, dial="ATDT%s,%s#", timeout="2000").end()
    assert call.log()[-1] == DELIVERED
    assert modem.said("pager") == ["shows 22277"]


def test_port_above_nine(finished):
    """Its plain name would be a file's."""
    call = finished("rate 2400")
    assert int(call.modem.link.name.removeprefix("port")) > 9
    assert call.modem.said("host") == ['"ATE0Q0V1X4\\r"', '"AT\\r"']


@pytest.mark.parametrize("setting", RATES)
def test_rate(finished, setting):
    call = finished(f"rate {setting}")
    assert call.modem.said("port") == [f"is set to {RATES[setting]} bit/s 8N1"]


@pytest.mark.parametrize("com_port", ["COM77", "COM", "COM0", "COM4294967295", "LPT1", "com1"])
def test_port_that_does_not_exist(switchboard, com_port):
    call = switchboard.start_call(com_port=com_port).end()
    assert call.log() == ["open error 2", FAILED]
    assert call.process.returncode == 1


def test_regular_file_of_a_ports_name_is_no_port(switchboard):
    """In the working directory, where the name would be looked for."""
    for name in ("COM0", "COM77"):
        (switchboard.folder / name).write_text("a file")
        call = switchboard.start_call(com_port=name).end()
        assert call.log() == ["open error 2", FAILED]
        assert (switchboard.folder / name).read_text() == "a file"


def test_missing_instance(switchboard):
    missing = switchboard.folder / "missing"
    call = switchboard.start_host("Beeper", missing, None).end()
    assert call.output() == (f"{windows_path(missing)} - Failed to load notification from disk.\n"
                             f"{FAILED}\n")
    assert call.process.returncode == 1
