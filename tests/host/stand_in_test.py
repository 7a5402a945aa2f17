"""send against the stand-in module: what the host does with each answer, and in which order."""

import pytest

from windows_programs import TIME_LIMIT, log_and_result, wait_until, windows_path

# The calls of one alert, in order. The host may be held by one reference of its own in the end.
CALLS = ["loaded", "DllGetClassObject", "CreateInstance", "factory released", "Initialize", "Send",
         "Shutdown", "references to the host: 1", "notifier released", "DllCanUnloadNow", "unloaded"]


RECIPIENT_REFUSED = "Failed: 0x80140001 (SMTPMAIL_E_RECIPIENT_REFUSED)\n"


@pytest.fixture
def send(notifyhost, stand_in):
    return lambda *arguments, **environment: notifyhost(
        "send", "--module", stand_in.file, *arguments, **stand_in.environment, **environment)


def test_negative_result_is_a_failure(send, stand_in):
    outcome = send("SMTPMail", "x")
    assert (outcome.exit_code, outcome.log_and_result, outcome.errors) == (1, RECIPIENT_REFUSED, "")
    assert stand_in.trace() == CALLS


def test_every_other_result_is_delivery(send, stand_in):
    outcome = send("Sound", "")
    assert (outcome.exit_code, outcome.errors) == (0, "")
    assert outcome.log_and_result == "[]\nDelivered: 0x00000002\n"
    assert stand_in.trace() == CALLS


@pytest.mark.parametrize("file, argument", [
    ("C:\\Instances\\Nacht ☎.ins", "C:\\Instances\\Nacht ☎.ins"),
    ("C:\\Instances\\..\\Nacht.ins", "C:\\Nacht.ins"),
    ("C:/Instances/Nacht.ins", "C:\\Instances\\Nacht.ins"),
    ("C:\\Instances\\*.ins", "C:\\Instances\\*.ins"),
    ("C:\\%n\\%%", "C:\\%n\\%%"),
])
def test_instance_is_named_by_its_full_path(send, file, argument):
    assert send("Sound", file, "--set", "n=1").log_and_result == f"[{argument}]\nDelivered: 0x00000002\n"


def test_log_is_fit_for_a_terminal(send):
    outcome = send("WinPopup", "x")
    assert (outcome.exit_code, outcome.errors) == (0, "")
    assert outcome.log_and_result == ("AT&F\n"
                                      "\n"
                                      "OK\n"
                                      "ID=<1B>[2J\n"
                                      "<06><1B>d<15> café ☎\n"
                                      "Delivered.\n")


@pytest.mark.parametrize("options, expanded", [
    ([], "%n|%C|%|%"),
    (["--set", "n=Zürich ☎ \U0001F4DF", "--set", "C=%n%%"], "Zürich ☎ \U0001F4DF|%n%%|%|%"),
    (["--set", "n="], "|%C|%|%"),
    (["--set", "N=1", "--set", "c=2"], "%n|%C|%|%"),
])
def test_variables_are_expanded(send, options, expanded):
    outcome = send("LaunchProgram", "x", *options)
    assert (outcome.exit_code, outcome.errors) == (0, "")
    assert outcome.log_and_result == f"{expanded}\n[]\nDelivered.\n"


@pytest.mark.parametrize("options, answer", [
    ([], "trigger 0x00000002"),
    (["--event", "item-up"], "trigger 0x00000001"),
    (["--event", "item-down"], "trigger 0x00000002"),
    (["--event", "service-up"], "trigger 0x00000004"),
    (["--event", "service-down"], "trigger 0x00000008"),
    (["--event", "trap"], "trigger 0x00000010"),
    (["--event", "0"], "trigger 0x00000000"),
    (["--event", "20"], "trigger 0x00000014"),
    (["--event", "0xfffffffe"], "trigger 0xFFFFFFFE"),
    (["--event", "4294967295"], "trigger 0xFFFFFFFF"),
    (["--event", "none"], "no trigger: 0x80004005"),
])
def test_event_is_answered(send, options, answer):
    outcome = send("Beeper", "x", *options)
    assert (outcome.exit_code, outcome.log_and_result, outcome.errors) == (0, f"{answer}\nDelivered.\n", "")


def test_module_in_use_is_not_unloaded(send, stand_in):
    assert send("Pager", "x").log_and_result == "Delivered.\n"
    assert stand_in.trace() == CALLS[:-1]


def test_wrong_calls_are_refused(send):
    outcome = send("Voice", "x")
    assert outcome.exit_code == 0
    assert outcome.log_and_result == ("other interface: 0x80004002\n"
                                      "null interface: 0x80004003\n"
                                      "null text: 0x80004003\n"
                                      "null trigger: 0x80004003\n"
                                      "null log: 0x00000000\n"
                                      "Delivered.\n")


@pytest.mark.parametrize("failing, calls", [
    ("DllGetClassObject", ["loaded", "DllGetClassObject", "DllCanUnloadNow", "unloaded"]),
    ("CreateInstance", ["loaded", "DllGetClassObject", "CreateInstance", "factory released",
                        "DllCanUnloadNow", "unloaded"]),
])
def test_notifier_that_cannot_be_created(send, stand_in, failing, calls):
    outcome = send("Sound", "x", STAND_IN_FAILS=failing)
    assert (outcome.exit_code, outcome.output) == (1, "")
    assert outcome.errors == ("notifyhost: no Sound notifier could be created: "
                              "0x80070005 (E_ACCESSDENIED)\n")
    assert stand_in.trace() == calls


def test_notifier_that_cannot_be_initialised(send, stand_in):
    outcome = send("Sound", "x", STAND_IN_FAILS="Initialize")
    assert (outcome.exit_code, outcome.output) == (1, "")
    assert outcome.errors == ("notifyhost: Sound could not be initialised: "
                              "0x80070005 (E_ACCESSDENIED)\n")
    assert stand_in.trace() == ["loaded", "DllGetClassObject", "CreateInstance", "factory released",
                                "Initialize", "notifier released", "DllCanUnloadNow", "unloaded"]


def test_log_is_printed_as_it_comes(notifyhost, stand_in, tmp_path):
    awaited = tmp_path / "send_may_end"
    printed = tmp_path / "printed"
    with printed.open("wb") as output:
        running = notifyhost.start(
            "send", "--module", stand_in.file, "WinPopup", "x", output=output,
            STAND_IN_WAIT_FOR=windows_path(awaited), **stand_in.environment)
    with running:
        wait_until(lambda: "caf\u00e9 \u260e".encode() in printed.read_bytes())
        assert running.poll() is None
        awaited.touch()
        assert running.wait(TIME_LIMIT) == 0
    assert log_and_result(printed.read_text()).endswith("caf\u00e9 \u260e\nDelivered.\n")
