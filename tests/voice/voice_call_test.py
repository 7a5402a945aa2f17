"""What becomes of calls: what the called person hears, what the log shows, what the host is answered."""

import pytest

from captured_sound import FRAME, RATE
from windows_programs import wait_until, windows_path

CONNECTED = "LINECALLSTATE_CONNECTED:  The call is connected to the other end."
PROBED = ["DevNum=0", "ApiVer=2.0", "GetDevCaps:  DevNum=0 ApiVer=2.0"]
HALF_A_SECOND = RATE // 2 * FRAME
NOT_ACKNOWLEDGED = ["No button press, queuing retry", '"', "Failed: 0x80004005 (E_FAIL)"]
ACKNOWLEDGED = ["Good exit", "Delivered."]


def test_the_message_is_repeated_where_nobody_presses_the_key(telephone):
    repeat = telephone.make_wave("repeat.wav", 0.5)
    call = telephone.call(count=2)

    assert telephone.capture.sounds() == [repeat] * 3
    assert call.log() == [*PROBED, CONNECTED, *NOT_ACKNOWLEDGED]
    assert call.process.returncode == 1


def test_the_key_brings_the_messages_for_device_and_event(telephone):
    repeat = telephone.make_wave("repeat.wav", 3)
    device = telephone.make_wave("device.wav", 0.4)
    event = telephone.make_wave("item_down.wav", 0.6)
    call = telephone.start(count=2)
    wait_until(lambda: len(telephone.capture.sounds()) == 3)
    telephone.press("5")
    call.end()

    first, second, third, *messages = telephone.capture.sounds()
    assert [first, second] == [repeat, repeat]
    assert 0 < len(third) <= len(repeat) and repeat.startswith(third)
    assert messages == [device, event]
    assert call.log() == [*PROBED, CONNECTED, *ACKNOWLEDGED]
    assert call.process.returncode == 0


def test_a_key_in_the_middle_of_the_first_repetition_cuts_it_short(telephone):
    repeat = telephone.make_wave("repeat.wav", 60)
    device = telephone.make_wave("device.wav", 0.4)
    event = telephone.make_wave("service_down.wav", 0.5)
    call = telephone.start(count=5, button=11, event="service-down")
    wait_until(lambda: telephone.capture.sounds())
    telephone.press("1*5")
    wait_until(lambda: "called presses 5" in telephone.transcript())
    heard_before = telephone.capture.size(0)
    wait_until(lambda: telephone.capture.size(0) > heard_before)  # other keys change nothing
    telephone.press("#")
    heard_at_key = telephone.capture.size(0)
    call.end()

    cut, *messages = telephone.capture.sounds()
    assert 0 < len(cut) < len(repeat) and repeat.startswith(cut)
    assert len(cut) - heard_at_key <= HALF_A_SECOND
    assert messages == [event, device]  # for a service that went down in the other order
    assert call.process.returncode == 0


def test_a_negative_count_plays_nothing(telephone):
    telephone.make_wave("repeat.wav", 0.2)
    call = telephone.call(count=-1)

    assert telephone.capture.sounds() == []
    assert call.log() == [*PROBED, CONNECTED, *NOT_ACKNOWLEDGED]


def test_a_sound_of_a_single_sample_does_not_hold_up_the_call(telephone):
    telephone.make_wave("repeat.wav", 1 / 44100)
    call = telephone.call(count=2)

    assert call.log() == [*PROBED, CONNECTED, *NOT_ACKNOWLEDGED]


def test_any_key_will_do_for_button_99(telephone):
    telephone.make_wave("repeat.wav", 60)
    event = telephone.make_wave("item_up.wav", 0.3)
    device = telephone.make_wave("device.wav", 0.3)
    call = telephone.start(button=99, event="item-up")
    wait_until(lambda: telephone.capture.sounds())
    telephone.press("A*")
    call.end()

    assert telephone.capture.sounds()[1:] == [device, event]


def test_the_sound_of_the_device_is_found_by_its_name(telephone):
    telephone.make_wave("repeat.wav", 60)
    event = telephone.make_wave("item_down.wav", 0.3)
    router = telephone.make_wave("router7.wav", 0.3)
    common = telephone.make_wave("ahost.wav", 0.3)

    for name, message, sound in (("router7.example", "[auto]", router), ("router8", "", common)):
        for played in telephone.folder.glob("played*"):
            played.unlink()
        call = telephone.start(button=99, device_message=message, device_name=name)
        wait_until(lambda: telephone.capture.sounds())
        telephone.press("1")
        assert call.end().process.returncode == 0
        assert telephone.capture.sounds()[1:] == [sound, event]


@pytest.mark.parametrize("name", [r"\\?\FOLDER\router7", "//?/FOLDER/router7", r"\/?\FOLDER\router7",
                                  r"\??\FOLDER\router7", "NUL", "con.x", r"FOLDER\aux"])
def test_a_name_that_leads_elsewhere_or_to_a_device_has_no_sound(telephone, name):
    telephone.make_wave("repeat.wav", 60)
    telephone.make_wave("router7.wav", 0.3)
    event = telephone.make_wave("item_down.wav", 0.3)
    common = telephone.make_wave("ahost.wav", 0.3)
    folder = windows_path(telephone.folder)
    assert "." not in folder
    call = telephone.start(button=99, device_message="[auto]",
                           device_name=name.replace("FOLDER", folder))
    wait_until(lambda: telephone.capture.sounds())
    telephone.press("1")

    assert call.end().process.returncode == 0
    assert telephone.capture.sounds()[1:] == [common, event]


def test_a_message_that_is_no_wave_file_ends_the_call(telephone):
    (telephone.folder / "repeat.wav").write_text("no wave file")
    call = telephone.call()

    assert call.log() == [*PROBED, CONNECTED, "Failed descend type",
                          "Failed to play repeating sound", "Failed: 0x80004005 (E_FAIL)"]
    assert telephone.transcript()[-2:] == ["line the call ends", "module lineShutdown"]


def test_a_format_that_the_device_refuses_is_told_in_the_systems_words(telephone):
    telephone.make_wave("repeat.wav", 0.2)
    file = telephone.folder / "repeat.wav"
    content = bytearray(file.read_bytes())
    content[20:22] = b"\x99\x99"  # a format that nobody has
    file.write_bytes(content)
    call = telephone.call()

    *before, words, after, result = call.log()
    assert before == [*PROBED, CONNECTED]
    assert "format" in words
    assert (after, result) == ("Failed to play repeating sound", "Failed: 0x80004005 (E_FAIL)")


def test_a_call_is_made_as_telephony_wants_it(telephone):
    telephone.make_wave("repeat.wav", 0.2)
    telephone.script("line media-modes 4", "line capabilities-size 900",
                     "at 0.1 call-state connected")
    telephone.call(number="0049 5550100,,1")

    open_line = "module lineOpen 1 media modes 0x8 privileges 0x4"
    choose = ["module lineInitialize",
              "module lineNegotiateAPIVersion 0 0x10000 to 0x50000", "module lineGetDevCaps 0",
              "module lineNegotiateAPIVersion 1 0x10000 to 0x50000",
              "module lineGetDevCaps 1", "module lineGetDevCaps 1", open_line]
    assert telephone.transcript() == [
        r"line is served by C:\windows\system32\TAPI32.DLL",
        *choose, *["module lineGetID select 1 wave/out"] * 2,
        "module lineClose", "module lineShutdown",
        *choose, "module lineMakeCall 0049 5550100,,1", "line call-state connected",
        *["module lineGetID select 4 wave/out"] * 2, "module lineMonitorDigits 2",
        "module lineClose", "line the call ends", "module lineShutdown"]


def test_messages_may_also_be_sent_past_those_that_are_posted(telephone):
    telephone.make_wave("repeat.wav", 60)
    event = telephone.make_wave("item_down.wav", 0.3)
    device = telephone.make_wave("device.wav", 0.3)
    telephone.script("sends-messages", "at 0.1 call-state ringback", "at 0.5 call-state connected")
    call = telephone.start()
    wait_until(lambda: telephone.capture.sounds())
    telephone.press("5")
    call.end()

    assert telephone.capture.sounds()[1:] == [device, event]
    assert call.log()[-2:] == ACKNOWLEDGED


def test_a_call_that_waits_costs_no_processor(telephone, driver):
    def processor_times() -> list[int]:
        return [int(word) for word in driver("processor-time").split()[1:]]

    telephone.make_wave("repeat.wav", 1.5)
    telephone.script("at 1.5 call-state connected")
    instance = windows_path(telephone.folder / telephone.store())
    assert driver("initialize") == "result 00000000"
    assert driver("send", instance) == "result 80004005"  # what is done once is done then
    before = processor_times()
    assert driver("send", instance) == "result 80004005"

    # Milliseconds, of three seconds: half of them until it was connected, half while a sound played. The
    # process has the system's sound and the exchange in it. A thread that does not sleep gets more than
    # this even on a machine that has much else to do.
    whole, of_thread = (after - earlier for earlier, after in zip(before, processor_times()))
    assert whole < 300
    assert of_thread < 100


def test_the_states_of_a_call_are_logged_and_a_connection_ends_the_wait(telephone):
    telephone.make_wave("repeat.wav", 0.2)
    telephone.script("at 0.1 call-state dialtone", "at 0.2 call-state dialing",
                     "at 0.3 call-state proceeding", "at 0.4 call-state ringback",
                     "at 0.5 device-state 0x40", "at 1 call-state connected")
    call = telephone.call()

    assert call.log() == [
        *PROBED,
        "LINECALLSTATE_DIALTONE:  The call is receiving a dial tone.",
        "LINECALLSTATE_DIALING:  The number is being dialed.",
        "LINECALLSTATE_PROCEEDING:  The number has been dialed and the call is on its way.",
        "LINECALLSTATE_RINGBACK:  The call is receiving a ringback tone.",
        "GOT LINE_LINEDEVSTATE", "GOT LINEDEVSTATE_INSERVICE",
        CONNECTED, *NOT_ACKNOWLEDGED]


def test_nothing_but_a_connection_ends_the_wait_for_it(telephone):
    repeat = telephone.make_wave("repeat.wav", 0.2)
    telephone.script("fails lineMakeCall 0x80000005 0", "at 0.1 call-state busy",
                     "at 0.2 call-state disconnected", "at 0.3 call-state idle",
                     "at 0.4 line-close", "at 0.5 reply 0 0x80000005",
                     "at 4 call-state connected")
    call = telephone.start()
    wait_until(lambda: "GOT LINE_CLOSE" in call.output())
    assert call.process.poll() is None
    call.end()

    # The call was never placed, so that it has no wave device.
    assert call.log() == [
        *PROBED,
        "LINECALLSTATE_BUSY:  The call is receiving a busy tone.",
        "LINECALLSTATE_DISCONNECTED:  The other end has left the call.",
        "LINECALLSTATE_IDLE:  There is no call on the line.",
        "GOT LINE_CLOSE", CONNECTED, "Failed to get wave device", "Failed: 0x80004005 (E_FAIL)"]
    assert telephone.times_of("line call-state connected")[0] - \
        telephone.times_of("line line-close")[0] > 3
    assert repeat not in telephone.capture.sounds()


def test_a_line_that_closes_lets_the_sound_go_on(telephone):
    repeat = telephone.make_wave("repeat.wav", 60)
    telephone.script("at 0.1 call-state connected", "at 0.5 line-close",
                     "at 0.6 call-state disconnected", "at 0.7 call-state idle")
    call = telephone.call()

    assert telephone.capture.sounds() == [repeat]
    assert call.log() == [
        *PROBED, CONNECTED, "GOT LINE_CLOSE",
        "LINECALLSTATE_DISCONNECTED:  The other end has left the call.",
        "LINECALLSTATE_IDLE:  There is no call on the line.", *NOT_ACKNOWLEDGED]


def test_a_line_that_will_not_close_is_tried_again(telephone):
    telephone.make_wave("repeat.wav", 0.2)
    telephone.script("at 0.1 call-state connected", "fails lineClose 0x80000048 4",
                     "fails lineShutdown 0x80000048 1")
    call = telephone.call(count=-1)

    # A pause of half a second, between times in whole milliseconds.
    closes = telephone.times_of("module lineClose")
    assert len(closes) == 6  # five of the search for a line, one of the call
    assert all(0.499 <= later - earlier < 20 for earlier, later in zip(closes[:4], closes[1:5]))
    shutdowns = telephone.times_of("module lineShutdown")
    assert len(shutdowns) == 3
    assert 0.499 <= shutdowns[1] - shutdowns[0] < 20
    assert call.process.returncode == 1


@pytest.mark.parametrize("event", ["item-down", "service-down"])
def test_a_preview_is_whom_the_exchange_calls_and_what_is_heard(telephone, event):
    waves = {name: telephone.make_wave(name, seconds)
             for name, seconds in {"repeat.wav": 60, "device.wav": 0.2, "item_down.wav": 0.3,
                                   "service_down.wav": 0.4}.items()}
    parts = telephone.preview("--event", event, "--set", "C=device.wav", number="0,555 0100")
    assert telephone.transcript() == []
    call = telephone.start(event=event, number="0,555 0100")
    wait_until(lambda: telephone.capture.sounds())
    telephone.press("5")
    assert call.end().process.returncode == 0

    number, repeat, *messages = (part.bytes.decode() for part in parts)
    assert any(line.endswith(f"lineMakeCall {number}") for line in telephone.transcript())
    cut, *heard = telephone.capture.sounds()
    assert cut and waves[repeat].startswith(cut)
    assert [waves[message] for message in messages] == heard
    assert [part.words for part in parts if part.what.startswith("message for")] == \
        [f"{len(sound) / (RATE * FRAME):.1f} s long" for sound in heard]
