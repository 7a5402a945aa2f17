"""notifyhost watch: what it tells people of services that die and return, and what is left when it is killed."""

import dataclasses
import json
import os
import pathlib
import random
import re
import subprocess
import tempfile
import time

import pytest

from conftest import Relay
from windows_programs import MODULE, TIME_LIMIT, WINE, wait_until, windows_path

KILLS = int(os.environ.get("WATCH_KILLS", "10"))

PLAN = """
[defaults]
interval = "1s"
timeout = "500ms"
down_after = 2
up_after = 2
alerts = ["night"]

[[items]]
name = "web"
kind = "service"
address = "127.0.0.1"
probe = "tcp"
port = {port}

[[alerts]]
name = "night"
instances = ["Duty Mail"]
retry = "1s"
{more}
"""


def test_wrong_plan_is_refused_with_all_that_is_wrong(watcher):
    watcher.write('[[items]]\nname = "web"\nprobe = "tpc"\ninterval = "0s"\n')
    outcome = watcher()
    assert outcome.returncode == 2
    lines = outcome.stderr.splitlines()
    assert [line.partition("night.toml: ")[2] for line in lines[:2]] == [
        "line 3: items.web.probe: must be one of tcp, http and icmp; it is 'tpc'",
        'line 4: items.web.interval: must be 1 s to 1 d, written as "90s", "5m", "2h" or "1d"; it is \'0s\'']
    assert lines[2:] == ["notifyhost: the plan is wrong"]


def test_check_looks_at_the_instances(watcher, address):
    watcher.write(PLAN.format(port=1, more=""))
    outcome = watcher("--check")
    assert outcome.returncode == 1
    assert "Duty Mail" in outcome.stdout
    watcher.store_mail("Duty Mail", address)
    assert "1 items, 1 alerts\n" in watcher("--check").stdout
    watcher.store_beeper("Night")
    watcher.write(PLAN.format(port=1, more="").replace('"Duty Mail"', '"Duty Mail", "Night"'))
    assert "code has no digits, so that Night (Beeper) does not say which item it is" in watcher("--check").stdout
    assert not watcher.journal.exists()


def test_fall_and_return_are_told(watcher, relay, service):
    watcher.store_mail("Duty Mail", relay.address)
    watcher.write(PLAN.format(port=service.port, more=""))
    service.open()
    running = watcher.start()
    watcher.wait_for("status", status="up")
    service.close()
    assert relay.next().startswith("down web at 20")
    service.open()
    assert relay.next().startswith("up web at 20")
    watcher.wait_for("end", end="delivered", decision=3)
    status = [json.loads(line) for line in watcher("--status", "--json").stdout.splitlines()]
    assert [(item["item"], item["status"]) for item in status] == [("web", "up")]
    assert watcher.interrupt(running) == 0
    assert "web is down: connection refused" in watcher.told
    assert "web is up: the connection was made" in watcher.told
    history = [json.loads(line) for line in
               (watcher.folder / "notifyhost.journal").read_text().splitlines()]
    assert {entry["decision"] for entry in history} == {"night.toml#2", "night.toml#3"}
    assert relay.taken() == []


def test_alert_that_fails_is_told_later_with_its_first_details(watcher, address, service):
    watcher.store_mail("Duty Mail", address)  # nobody listens there
    watcher.write(PLAN.format(port=service.port, more=""))
    watcher.start()
    watcher.wait_for("end", end="failed")
    fell = watcher.records("status")[0]["time"]
    relay = Relay(address)
    try:
        assert relay.next() == f"down web at {fell[:10]} {fell[11:19]}"
    finally:
        relay.close()


def test_acknowledgement_ends_repeats(watcher, relay, service):
    watcher.store_mail("Duty Mail", relay.address)
    watcher.write(PLAN.format(port=service.port, more='repeat = "2s"'))
    running = watcher.start()
    assert watcher("--acknowledge", "mail").returncode == 2
    for _ in range(3):
        relay.next()
    outcome = watcher("--acknowledge", "web", "--by", "Ann")
    assert (outcome.returncode, outcome.stdout) == (0, "web is acknowledged\n")
    assert watcher("--acknowledge", "web").returncode == 3
    relay.taken()
    # One may have been under way, and one decided before the watch has read the acknowledgement.
    assert len(relay.taken_until_quiet(5, most=2)) <= 2
    assert watcher.interrupt(running) == 0
    assert "web: acknowledged by Ann" in watcher.told


def test_changed_plan_is_taken(watcher, address, service):
    watcher.store_mail("Duty Mail", address)
    watcher.write(PLAN.format(port=service.port, more=""))
    service.open()
    running = watcher.start()
    watcher.wait_for("status", item="web", status="up")
    watcher.write("nonsense")
    wait_until(lambda: "the changed plan is wrong, and the old one counts:\n" in watcher.told)
    watcher.write(PLAN.format(port=service.port, more="").replace('"web"', '"shop"'))
    watcher.wait_for("status", item="shop", status="up")
    watcher.wait_for("forgotten", item="web")
    assert watcher.interrupt(running) == 0


def test_two_watches_do_not_share_a_journal(watcher, address, service):
    watcher.store_mail("Duty Mail", address)
    watcher.write(PLAN.format(port=service.port, more=""))
    running = watcher.start()
    watcher.wait_for("note")
    outcome = watcher()
    assert outcome.returncode == 1
    assert "another watch has the journal" in outcome.stderr
    assert watcher.interrupt(running) == 0


def test_journal_that_cannot_be_read_is_not_taken_for_an_empty_one(watcher, address):
    watcher.store_mail("Duty Mail", address)
    watcher.write(PLAN.format(port=1, more=""))
    watcher.journal.mkdir()
    for arguments in (("--status",), ("--acknowledge", "web"), ()):
        outcome = watcher(*arguments)
        assert (outcome.returncode, outcome.stdout) == (1, "")
        assert f"notifyhost: the journal {windows_path(watcher.journal)} cannot be read: " in outcome.stderr


def test_journal_that_is_being_replaced_is_waited_for(watcher):
    watcher.write(PLAN.format(port=1, more=""))
    replacement = watcher.folder / (watcher.journal.name + ".new")
    replacement.write_text(json.dumps({
        "time": "2026-01-02T03:04:05.000+00:00", "what": "status", "item": "web", "status": "down",
        "words": "no answer", "incident": 1, "decisions": []}) + "\n")
    status = watcher.start("--status", "--json")
    time.sleep(0.5)
    replacement.rename(watcher.journal)
    assert status.wait(TIME_LIMIT) == 0
    assert json.loads(watcher.told.splitlines()[0])["status"] == "down"


def test_echo_requests(watcher, address):
    watcher.store_mail("Duty Mail", address)
    watcher.write(PLAN.format(port=1, more="").replace('probe = "tcp"\nport = 1\n', 'probe = "icmp"\n'))
    watcher.start()
    assert watcher.wait_for("status", item="web")["words"] == "it answers the echo request"


def test_killed_watches_lose_nothing_and_say_what_they_may_have_doubled(watcher, relay, service):
    seed = random.randrange(2**32)
    print("seed", seed)
    chance = random.Random(seed)
    watcher.store_mail("Duty Mail", relay.address)
    watcher.write(PLAN.format(port=service.port, more=""))
    is_open = False
    for _ in range(KILLS):
        process = watcher.start()
        end = time.monotonic() + chance.uniform(0, 6)
        while time.monotonic() < end:
            time.sleep(chance.uniform(0, 2))
            (service.close if is_open else service.open)()
            is_open = not is_open
        process.kill()
        process.wait()
    service.close()
    begun = len(watcher.records("note"))
    running = watcher.start()
    wait_until(lambda: len(watcher.records("note")) > begun)

    def last_status():
        return next((record["status"] for record in reversed(watcher.records("status"))), None)
    wait_until(lambda: last_status() == "down")
    service.open()

    def all_is_told():
        records = watcher.records()
        decided = [decision["decision"] for record in records for decision in record.get("decisions", [])]
        ended = {record["decision"] for record in records
                 if record["what"] == "end" and record["end"] == "delivered"}
        return last_status() == "up" and set(decided) == ended
    wait_until(all_is_told)
    assert watcher.interrupt(running) == 0

    records = watcher.records()
    decisions = {decision["decision"]: decision for record in records
                 for decision in record.get("decisions", [])}
    doubled = sum(record["what"] == "attempt" and record["may_be_doubled"] for record in records)

    def subject(decision):
        letters = dict(variable.split("=", 1) for variable in decision["variables"])
        return f"{letters['u']} {letters['n']} at {letters['t']}"
    expected = [subject(decision) for _, decision in sorted(decisions.items())]
    mails = relay.rest()
    print(len(decisions), "decisions,", len(mails), "mails,", doubled, "may be doubled")
    assert set(mails) == set(expected)
    assert len(expected) <= len(mails) <= len(expected) + doubled
    events = [mail.split()[0] for mail in mails]
    # What may be doubled comes right behind itself.
    assert all(mail == before or event != earlier
               for mail, before, event, earlier in zip(mails[1:], mails, events[1:], events))


@pytest.fixture
def folder_in_memory():
    with tempfile.TemporaryDirectory(dir="/dev/shm" if pathlib.Path("/dev/shm").is_dir() else None) as folder:
        yield pathlib.Path(folder)


def test_a_thousand_services_at_once(watcher, address, service, folder_in_memory):
    # A watch waits for its journal to be on the disk, which takes seconds where others write to that.
    watcher = dataclasses.replace(watcher, folder=folder_in_memory)
    watcher.store_mail("Duty Mail", address)
    items = "".join(f"""
[[items]]
name = "service {number}"
address = "127.0.0.1"
probe = "tcp"
port = {service.port}
""" for number in range(1000))
    watcher.write(f'parallel = 1000\n[defaults]\ninterval = "1m"\ntimeout = "5s"\nup_after = 1\n{items}')
    service.open()
    running = watcher.start()

    def up():
        return len([record for record in watcher.records("status") if record["status"] == "up"]) == 1000
    wait_until(up)
    assert watcher.interrupt(running) == 0
    latest = re.search(r"the watch ends; no try was later than (\d+) ms", watcher.told)
    print(latest[0])
    assert int(latest[1]) < 6000


@pytest.fixture
def computer_that_stays_on(watcher):
    """Three seconds after the last program Wine ends, and the next one switches it on: with what starts by itself."""
    with subprocess.Popen([WINE, "cmd"], env=watcher.environment, stdin=subprocess.PIPE, stdout=subprocess.DEVNULL):
        yield


def test_service_watches_until_it_is_stopped(watcher, relay, service, computer_that_stays_on):
    watcher.store_mail("Duty Mail", relay.address)
    watcher.write(PLAN.format(port=service.port, more=""))

    def service_command(*arguments):
        return watcher.run("service", *arguments)
    assert service_command("stop").returncode == 1
    installed = service_command("install", windows_path(watcher.plan), "--module", windows_path(MODULE))
    assert (installed.returncode, installed.stderr) == (0, "")
    try:
        assert service_command("install", windows_path(watcher.plan)).returncode == 1
        for _ in range(2):
            started = service_command("start")
            assert (started.stdout, started.stderr) == ("The service notifyhost runs.\n", "")
            assert service_command("start").returncode == 1
            assert relay.next().startswith(f"{'up' if service.is_open else 'down'} web at 20")
            watcher.wait_for("end", end="delivered")
            assert service_command("stop").stdout == "The service notifyhost is stopped.\n"
            service.open()
        assert [record["words"].partition(";")[0] for record in watcher.records("note")] == [
            "the watch begins: 1 items", "the watch ends"] * 2
        assert "web is up: the connection was made" in (watcher.folder / "night.toml.log").read_text()
    finally:
        assert service_command("remove").stdout == "The service notifyhost is removed.\n"
    assert service_command("start").returncode == 1


def test_service_says_what_is_wrong_with_its_plan(watcher, address, computer_that_stays_on):
    right = PLAN.format(port=1, more="")
    watcher.write(right)
    assert watcher.run("service", "install", windows_path(watcher.plan)).returncode == 0
    try:
        watcher.write(right.replace("port", "prt"))
        started = watcher.run("service", "start")
        assert (started.returncode, started.stderr) == (1, "notifyhost: the service has ended; its log says why\n")
        log = watcher.folder / "night.toml.log"
        assert re.search(r"night\.toml: line \d+: items\.web: 'prt' is not known here; did you mean 'port'\?", log.read_text())
        watcher.write(right)
        assert watcher.run("service", "start").returncode == 0
        assert watcher.run("service", "stop").returncode == 0
    finally:
        assert watcher.run("service", "remove").returncode == 0


def test_service_is_run_by_windows_alone(watcher, address):
    watcher.write(PLAN.format(port=1, more=""))
    outcome = watcher.run("service", "run", windows_path(watcher.plan))
    assert outcome.returncode == 1
    assert outcome.stderr.startswith("notifyhost: only Windows runs a service; ")
