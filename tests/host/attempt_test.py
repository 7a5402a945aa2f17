"""send as a process of its own: its end by a time limit, by Ctrl-C, by a death; its JSON and its times."""

import json
import pathlib
import re
import signal

import pytest

from windows_programs import TIME_LIMIT, wait_until, windows_path


@pytest.fixture
def stand_in_send(notifyhost, stand_in):
    """Runs a command with the stand-in module."""
    def run(command, *arguments, **environment):
        return notifyhost(command, "--module", stand_in.file, *arguments, **stand_in.environment,
                          **environment)
    return run


class Waiting:
    """A send that does not come back by itself."""

    def __init__(self, notifyhost, stand_in, folder, *options):
        self.output_file = folder / "printed"
        self.awaited = folder / "send_may_end"
        with self.output_file.open("wb") as output:
            self.running = notifyhost.start(
                "send", "--module", stand_in.file, "WinPopup", "x", *options, output=output,
                STAND_IN_WAIT_FOR=windows_path(self.awaited), **stand_in.environment)
        wait_until(lambda: "caf\u00e9".encode() in self.output_file.read_bytes())

    def output(self):
        return self.output_file.read_text()


@pytest.fixture
def waiting(notifyhost, stand_in, tmp_path):
    waiting = Waiting(notifyhost, stand_in, tmp_path)
    with waiting.running:
        yield waiting


def test_time_limit_ends_a_send(stand_in_send, stand_in, tmp_path):
    # Long enough for a busy machine to have come to Send.
    outcome = stand_in_send("send", "WinPopup", "x", "--timeout", "5",
                            STAND_IN_WAIT_FOR=windows_path(tmp_path / "never"))
    assert outcome.exit_code == 1
    assert outcome.errors == ""
    assert "caf\u00e9 \u260e\n" in outcome.output
    assert outcome.output.splitlines()[-1].startswith("No result: ")
    # Ended in the middle of Send.
    assert stand_in.trace()[-1] == "Send"


def test_time_limit_that_is_not_reached_changes_nothing(stand_in_send, stand_in):
    outcome = stand_in_send("send", "Sound", "", "--timeout", "3600")
    assert outcome.exit_code == 0
    assert stand_in.trace()[-1] == "unloaded"


def test_ctrl_c_ends_a_send(waiting, stand_in):
    waiting.running.send_signal(signal.SIGINT)
    assert waiting.running.wait(TIME_LIMIT) == 1
    assert waiting.output().splitlines()[-1].startswith("No result: ")
    assert stand_in.trace()[-1] == "Send"


def test_module_that_dies_takes_the_host_not_along(stand_in_send, stand_in):
    outcome = stand_in_send("send", "WinPopup", "x", STAND_IN_DIES="1")
    assert outcome.exit_code == 1
    assert "caf\u00e9 \u260e\n" in outcome.output
    assert outcome.output.splitlines()[-1].startswith("No result: ")
    assert stand_in.trace()[-1] == "Send"


def test_alert_ends_with_its_host(waiting, notifyhost, stand_in, tmp_path):
    """Nothing goes on behind the back of whoever has ended the host, and history tells of it."""
    assert notifyhost("history").output.split("  ")[1] == "running"
    waiting.running.kill()
    wait_until(lambda: notifyhost("history").output.split("  ")[1] != "running")
    waiting.awaited.touch()
    assert notifyhost("history").output.endswith("  cut off   WinPopup x, item-down\n")
    assert stand_in.trace()[-1] == "Send"


def test_json_tells_of_every_text_and_the_end(stand_in_send):
    outcome = stand_in_send("send", "WinPopup", "x", "--json")
    records = [json.loads(line) for line in outcome.output.splitlines()]
    assert [record["log"] for record in records if "log" in record] == [
        "AT&F\r", "\r\nOK\r\n", "ID=\x1b[2J", "\r", "\n", "\x06\x1bd\x15 caf\u00e9 \u260e"]
    assert all(record["seconds"] >= 0 for record in records)
    assert records[-1]["delivered"] is True
    assert records[-1]["result"] == "0x00000000 (S_OK)"


def test_times_stand_before_each_line(stand_in_send):
    outcome = stand_in_send("send", "WinPopup", "x", "--timestamps")
    log = outcome.output.splitlines()[:-1]
    assert [re.sub(r"^ +[0-9]+\.[0-9] s    ", "T ", line) for line in log] == [
        "T AT&F", "T ", "T OK", "T ID=<1B>[2J", "T <06><1B>d<15> caf\u00e9 \u260e"]


@pytest.mark.parametrize("options, expanded", [
    ([], "a  b<|%C|%|%"),
    (["--raw-values"], "a<1B>\nb<|%C|%|%"),
])
def test_event_text_is_made_harmless(stand_in_send, options, expanded):
    outcome = stand_in_send("send", "LaunchProgram", "x", "--set", "n=a\x1b\nb<", *options)
    assert outcome.output.startswith(expanded + "\n")


class TestOfUnsavedValues:
    VALUES = ["program filename=C:\\nowhere\\a.exe", "program arguments=%n"]

    def test_leaves_nothing(self, stand_in_send, notifyhost, wine_environment):
        outcome = stand_in_send("test", "LaunchProgram", *self.VALUES, "--no-check", "--set", "n=7")
        assert (outcome.exit_code, outcome.errors) == (0, "")
        assert outcome.output.startswith("7|%C|%|%\n[]\n")
        assert [file.name for file in notifyhost.folder.iterdir()
                if file.is_file() and "trace" not in file.name] == ["notifyhost.journal"]
        prefix = pathlib.Path(wine_environment["WINEPREFIX"])
        assert not list(prefix.glob("**/notifyhost-{*"))

    def test_instance_is_there_for_the_notifier(self, stand_in_send):
        """Sound logs the file that it is given."""
        outcome = stand_in_send("test", "Sound", "--no-check")
        assert re.match(r"\[C:\\.*\\notifyhost-\{[0-9A-F-]{36}\}\]\n", outcome.output)

    def test_wrong_values_are_named_and_not_tried(self, stand_in_send, stand_in, tmp_path):
        outcome = stand_in_send("test", "LaunchProgram", *self.VALUES)
        assert (outcome.exit_code, outcome.output) == (2, "")
        assert outcome.errors.startswith("notifyhost: program filename 'C:\\nowhere\\a.exe' ")
        assert outcome.errors.endswith("Nothing is sent; --no-check sends it all the same\n")
        assert not stand_in.trace_file.exists()
        assert not (tmp_path / "notifyhost.journal").exists()

    def test_field_that_is_not_there(self, stand_in_send):
        outcome = stand_in_send("test", "LaunchProgram", "program file=x")
        assert (outcome.exit_code, outcome.output) == (2, "")
        assert "did you mean 'program filename'?" in outcome.errors
