"""Pager calls paging centres in real time, through the real module."""

from conftest import DELIVERED, FAILED
from windows_programs import windows_path

TEXT = "router7 is down"


def start_calls(switchboard):
    page = switchboard.start_page
    return {
        "TAP": page("TAP", "5550201", TEXT, password="secret", profile=2,
                    **{"Baud": "9600", "8N1": "1", "ModemString": "ATE0Q0V1X4S7=60"}),
        "SMS-TAP": page("SMS-TAP", "5550207", TEXT, pager_id="0041 79 123"),
        "UCP-SMS": page("UCP-SMS", "5550400", TEXT, **{"Baud": "2400", "8N1": "1"}),
        "NTT": page("NTT", "5550528", TEXT, pager_id="03-1234-5678", password="7"),
        "slow": page("TAP", "5550219", TEXT),
        "no carrier": page("TAP", "5550216", TEXT),
        "busy": page("UCP-SMS", "5550406", TEXT),
        "error": page("UCP-SMS", "5550310", TEXT),
        "too slow": page("TAP", "5550222", TEXT),
        "past patience": page("TAP", "5550220", TEXT),
        "17": page("NTT", "5550603", TEXT),
    }


def announced(call, pager_id, number):
    port = call.modem.link.name.removeprefix("port")
    return f"Sending message to {pager_id} via {number} on COM{port}\n"


def initialised_and_connected(number, modem_string="ATE0Q0V1X4"):
    return (f'sending "{modem_string}\n"\n'
            "waiting for completion\n"
            f'returned "{modem_string}\n\nOK\n"\n'
            f'sending "ATDT{number}\n"\n'
            "waiting for completion\n"
            'returned "\nCONNECT\n"\n')


HUNG_UP_BY_THE_CENTRE = ('sending "+++"\n'
                         'sending "ATH0\n"\n'
                         "waiting for completion\n"
                         'returned "\nOK\n"\n')


def test_tap_with_the_settings_of_alternate_2(finished):
    call = finished("TAP")
    assert call.output() == (
        announced(call, "0041791234567", "5550201") + initialised_and_connected("5550201", "ATE0Q0V1X4S7=60") +
        'sending "\n"\n'
        'returned "ID="\n'
        'Got ID=sending "<1B>PG1********\n"\n'
        "waiting for completion\n"
        'returned "<06>\n<1B>[p\n"\n'
        "Got [p\n"
        f'sending "<02>0041791234567\n{TEXT}\n<03>86<\n"\n'
        'returned "<06>\n"\n'
        'sending "<04>\n"\n'
        "waiting for completion\n"
        'returned "<1B><04>\n\nNO CARRIER\n"\n'
        + HUNG_UP_BY_THE_CENTRE +
        f"{DELIVERED}\n")
    assert call.process.returncode == 0
    assert call.modem.said("port") == ["is set to 9600 bit/s 8N1"]
    assert f'takes a page for 0041791234567: "{TEXT}"' in call.modem.said("centre")


def test_sms_tap_sends_a_block_again(finished):
    call = finished("SMS-TAP")
    block = f'sending "<02>4179123\n{TEXT}\n<03>736\n"\n'
    assert call.output() == (
        announced(call, "0041 79 123", "5550207") + initialised_and_connected("5550207") +
        'sending "\n"\n'
        'returned "ID="\n'
        'Got ID=sending "<1B>PG1\n"\n'
        "waiting for completion\n"
        'returned "<06>\n<1B>[p\n"\n'
        "Got [p\n"
        + block +
        'returned "<15>\n"\n'
        + block +
        'returned "<06>\n"\n'
        'sending "<04>\n"\n'
        "waiting for completion\n"
        'returned "<1B><04>\n\nNO CARRIER\n"\n'
        + HUNG_UP_BY_THE_CENTRE +
        f"{DELIVERED}\n")
    assert call.modem.said("port")[0].startswith("is set to 300 bit/s ")
    assert f'takes a page for 4179123: "{TEXT}"' in call.modem.said("centre")


def test_ucp(finished):
    call = finished("UCP-SMS")
    assert call.output() == (
        announced(call, "0041791234567", "5550400") +
        "Looking for OK\n"
        'sending "ATQ0V1\n"\n'
        "waiting for completion\n"
        'returned "ATQ0V1\n\nOK\n"\n'
        + initialised_and_connected("5550400") +
        'sending "<02>00/00067/O/02/1/0041791234567///3/726F757465723720697320646F776E/4F<03>"\n'
        "waiting for completion\n"
        'returned "<02>00/00032/R/02/A/0041791234567/05<03>"\n'
        'Message sent successfullysending "+++"\n'
        'sending "ATH0\n"\n'
        f"{DELIVERED}\n")
    assert call.modem.said("port") == ["is set to 2400 bit/s 8N1"]
    assert f'takes a page for 0041791234567: "{TEXT}"' in call.modem.said("centre")


def test_ntt(finished):
    call = finished("NTT")
    assert call.output() == (
        announced(call, "03-1234-5678", "5550528") + initialised_and_connected("5550528") +
        'sending "\n"\n'
        'returned "READY\n"\n'
        "READY\n"
        f'sending "8000C00000********,10000,0312345678AAAAA,********,015{TEXT}\n"\n'
        'returned "28\n"\n'
        'returned ""\n'
        "Success!!!!\n"
        'sending "+++"\n'
        'sending "ATH0\n"\n'
        "waiting for completion\n"
        'returned "\nOK\n\nOK\n"\n'
        f"{DELIVERED}\n")
    assert call.modem.said("centre")[1:3] == ['is given password "0007"',
                                              f'takes a page for 0312345678: "{TEXT}"']


def test_centre_that_takes_eight_seconds_for_each_answer(finished):
    call = finished("slow")
    assert call.output().endswith(f"{DELIVERED}\n")
    assert f'takes a page for 0041791234567: "{TEXT}"' in call.modem.said("centre")


def test_centre_that_loses_the_carrier(finished):
    call = finished("no carrier")
    assert 'returned "\nNO CARRIER\n"\n' in call.output()
    assert call.output().endswith(f"{FAILED}\n")
    assert call.process.returncode == 1


def test_centre_that_is_too_slow_is_not_logged_in_to(finished):
    call = finished("too slow")
    assert 'returned "Slow ID="\nsending "+++"\n' in call.output()
    assert call.output().endswith(f"{FAILED}\n")


def test_busy_centre_is_called_again(finished):
    call = finished("busy")
    assert "Busy\n" in call.output()
    assert call.modem.said("host").count('"ATDT5550406\\r"') == 2
    assert call.output().endswith(f"{DELIVERED}\n")


def test_centre_that_refuses_says_why(finished):
    call = finished("error")
    assert "\nEMI Error: Reverse charging not allowed\n" in call.output()
    assert call.output().endswith(f"{FAILED}\n")


def test_service_that_ends_the_call(finished):
    call = finished("17")
    assert 'returned "17\n"\nsending "+++"\n' in call.output()
    assert not any("8000C00000" in said for said in call.modem.said("host"))
    assert call.output().endswith(f"{FAILED}\n")


def test_centre_that_takes_longer_for_a_page_than_anybody_waits(finished):
    call = finished("past patience")
    assert "Got [p\n" in call.output()  # for which there is more patience
    assert (f'sending "<02>0041791234567\n{TEXT}\n<03>86<\n"\n'
            'returned ""\n'
            'sending "+++"\n') in call.output()
    assert call.output().endswith(f"Message transmission failed.\n{FAILED}\n")
    assert call.process.returncode == 1


def test_missing_instance(switchboard):
    missing = switchboard.folder / "missing"
    call = switchboard.start_host("Pager", missing, None).end()
    assert call.output() == (f"{windows_path(missing)} - Failed to load notification from disk.\n"
                             f"{FAILED}\n")
