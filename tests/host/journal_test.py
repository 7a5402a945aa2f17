"""The journal: what history tells of sends, and what is left of those that were killed."""

import concurrent.futures
import json
import os
import random
import time

import pytest

from conftest import Outcome
from windows_programs import TIME_LIMIT, wait_until, windows_path

KILLS = int(os.environ.get("SEND_KILLS", "40"))


@pytest.fixture
def journal(tmp_path):
    """The entries of the journal beside the instances."""
    def read():
        return [json.loads(line) for line in (tmp_path / "notifyhost.journal").read_text().splitlines()]
    return read


@pytest.fixture
def send(notifyhost, stand_in):
    def run(*arguments, **environment) -> Outcome:
        return notifyhost("send", "--module", stand_in.file, *arguments, **stand_in.environment,
                          **environment)
    return run


def history(notifyhost, *arguments):
    outcome = notifyhost("history", "--json", *arguments)
    assert (outcome.exit_code, outcome.errors) in [(0, ""), (3, "")]
    return [json.loads(line) for line in outcome.output.splitlines()]


def test_each_send_is_noted_before_and_after(send, journal, tmp_path):
    assert send("WinPopup", "x", "--event", "trap").exit_code == 0
    begun, ended = journal()
    assert begun.items() <= ended.items()
    assert begun["class"] == "WinPopup" and begun["event"] == "trap" and begun["command"] == "send"
    assert begun["instance"] == windows_path(tmp_path / "x")
    assert "delivered" not in begun and ended["delivered"] is True
    assert ended["log"] == "AT&F\r\r\nOK\r\nID=\x1b[2J\r\n\x06\x1bd\x15 café ☎"


def test_journal_is_kept_where_it_is_asked_for(send, notifyhost, tmp_path):
    assert send("Sound", "", "--journal", "elsewhere").exit_code == 0
    assert [attempt["state"] for attempt in history(notifyhost, "--journal", "elsewhere")] == ["delivered"]
    assert not (tmp_path / "notifyhost.journal").exists()


def test_journal_that_cannot_be_written_holds_no_alert_back(send):
    outcome = send("Sound", "", "--journal", "nowhere\\journal")
    assert outcome.exit_code == 0
    assert outcome.errors.count("notifyhost: warning: the journal ") == 2
    assert " cannot be written: error 3, " in outcome.errors


def test_history_tells_of_failed_ones(send, notifyhost):
    send("WinPopup", "x")
    send("SMTPMail", "y")
    assert [attempt["class"] for attempt in history(notifyhost)] == ["WinPopup", "SMTPMail"]
    assert [attempt["class"] for attempt in history(notifyhost, "--failed")] == ["SMTPMail"]
    assert history(notifyhost, "--failed", "--since", "1d")
    assert not history(notifyhost, "--since", "2099-01-01")
    assert notifyhost("history", "--since", "2099-01-01").exit_code == 3


def test_history_without_a_journal(notifyhost):
    outcome = notifyhost("history")
    assert (outcome.exit_code, outcome.output, outcome.errors) == (3, "", "")


@pytest.mark.parametrize("arguments, message", [
    (["--since", "yesterday"], "--since: 'yesterday' is no time; it takes an age such as 90s, 30m, 12h or "
                               "7d, a day such as 2026-11-22, or a minute such as 2026-11-22T03:12"),
    (["--since", "2026-02-30"], "--since: '2026-02-30' is no time; "),
])
def test_history_of_no_time(notifyhost, arguments, message):
    outcome = notifyhost("history", *arguments)
    assert (outcome.exit_code, outcome.output) == (2, "")
    assert outcome.errors.startswith("notifyhost: " + message)


def test_history_follows(send, notifyhost, tmp_path):
    printed = tmp_path / "followed"
    with printed.open("wb") as output:
        following = notifyhost.start("history", "--follow", output=output)
    with following:
        send("WinPopup", "x")
        wait_until(lambda: b"  delivered" in printed.read_bytes())
        following.send_signal(2)
        assert following.wait(TIME_LIMIT) == 0


def test_journal_is_no_instance(send, notifyhost, tmp_path):
    send("Sound", "x")
    assert "notifyhost.journal" not in notifyhost("instances", ".").output


def test_full_journal_is_put_aside(send, notifyhost, tmp_path):
    journal = tmp_path / "notifyhost.journal"
    send("WinPopup", "first")
    line = journal.read_text().splitlines()[-1]
    entry = json.loads(line)
    with journal.open("a") as file:
        for number in range(3000):
            file.write(json.dumps({**entry, "attempt": f"filling {number}"}) + "\n")
    send("WinPopup", "last")
    assert journal.stat().st_size < 10_000
    attempts = history(notifyhost)
    assert len(attempts) == 3002
    assert attempts[0]["instance"].endswith("first") and attempts[-1]["instance"].endswith("last")


def test_line_that_was_cut_off_spoils_no_other(send, notifyhost, tmp_path):
    send("WinPopup", "first")
    journal = tmp_path / "notifyhost.journal"
    journal.write_bytes(journal.read_bytes()[:-30])
    send("WinPopup", "last")
    assert [(attempt["state"], attempt["instance"][-5:]) for attempt in history(notifyhost)] == [
        ("cut off", "first"), ("delivered", "\\last")]


def test_sends_at_the_same_time_write_whole_lines(send, journal):
    with concurrent.futures.ThreadPoolExecutor(8) as pool:
        outcomes = list(pool.map(lambda number: send("Sound", f"{number}"), range(24)))
    assert {outcome.exit_code for outcome in outcomes} == {0}
    entries = journal()
    assert len(entries) == 48
    assert sum("delivered" in entry for entry in entries) == 24


def kill_one(notifyhost, stand_in, number, delay):
    """A send that is killed after so long, if it has not ended by itself. What it has printed."""
    printed = notifyhost.folder / f"printed{number}"
    with printed.open("wb") as output:
        running = notifyhost.start("send", "--module", stand_in.file, "WinPopup", f"{number}", output=output)
    with running:
        time.sleep(delay)
        running.kill()
    return printed.read_text()


def test_killed_sends(notifyhost, stand_in):
    """Whoever was told of an end finds it in the journal, and no end is there that was not."""
    seed = random.randrange(2**32)
    print("seed", seed)
    delays = random.Random(seed)
    start = time.monotonic()
    assert notifyhost("send", "--module", stand_in.file, "WinPopup", "0").exit_code == 0
    # Four at a time take longer than one.
    longest = 4 * (time.monotonic() - start)
    with concurrent.futures.ThreadPoolExecutor(4) as pool:
        printed = list(pool.map(lambda number: kill_one(notifyhost, stand_in, number,
                                                        delays.uniform(0, longest)), range(1, KILLS + 1)))
    told = {number for number, text in enumerate(printed, 1) if "The messenger service took" in text}
    logged = {number for number, text in enumerate(printed, 1) if text}
    states = {int(attempt["instance"].rpartition("\\")[2]): attempt["state"]
              for attempt in history(notifyhost)}
    assert told <= {number for number, state in states.items() if state == "delivered"}
    assert logged <= states.keys()
    assert set(states.values()) == {"delivered", "cut off"}
