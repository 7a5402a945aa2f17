"""notifyhost serve DIR --watch FILE: a watch and its console in one process."""

import json
import socket

from served_console import Console, running_console
from watch_test import PLAN
from windows_programs import wait_until, windows_path


def serving(watcher):
    return running_console(watcher.folder, watcher.environment, "--watch", windows_path(watcher.plan))


def wait_for_page(console: Console, words: str) -> None:
    wait_until(lambda: words in console.request("GET", "/")[2])


def acknowledged_by(watcher) -> str:
    return json.loads(watcher("--status", "--json").stdout.splitlines()[0])["acknowledged_by"]


def test_board_shows_what_is_told_and_takes_an_acknowledgement(watcher, relay, service):
    watcher.store_mail("Duty Mail", relay.address)
    watcher.write(PLAN.format(port=service.port, more='repeat = "2s"'))
    service.open()
    with serving(watcher) as console:
        wait_for_page(console, "tile-up")
        service.close()
        assert relay.next().startswith("down web at 20")
        wait_for_page(console, "tile-down")
        assert relay.next().startswith("down web at 20")
        assert console.post("/acknowledge", item="web", by="Ann")[1]["Location"] == "/"
        assert console.post("/acknowledge", item="web", by="Bob")[0] == 409
        wait_for_page(console, "acknowledged by Ann")
        relay.taken()
        # One may have been under way.
        assert len(relay.taken_until_quiet(4, most=1)) <= 1
        service.open()
        assert relay.next().startswith("up web at 20")
        wait_for_page(console, "tile-up")
        assert watcher.interrupt(console.process) == 0
    assert watcher.records("note")[-1]["words"].startswith("the watch ends")


def test_acknowledgement_outlives_a_kill(watcher, relay, service):
    watcher.store_mail("Duty Mail", relay.address)
    watcher.write(PLAN.format(port=service.port, more='repeat = "2s"'))
    with serving(watcher) as console:
        relay.next()
        assert console.post("/acknowledge", item="web", by="Ann")[0] == 303
        console.process.kill()
        console.process.wait()
    assert acknowledged_by(watcher) == "Ann"
    relay.taken()
    begun = len(watcher.records("note"))
    running = watcher.start()
    wait_until(lambda: len(watcher.records("note")) > begun)
    # What was under way at the kill may come once more.
    assert len(relay.taken_until_quiet(4, most=1)) <= 1
    assert acknowledged_by(watcher) == "Ann"
    assert watcher.interrupt(running) == 0


def check_that_it_watches(watcher, relay, running, reason: str) -> None:
    """Although there is no console, which it says while it watches."""
    def warnings() -> list[str]:
        return [line for line in watcher.told.splitlines()
                if line.startswith("notifyhost: warning: there is no console, and the watch goes on: ")]
    wait_until(warnings)
    assert relay.next().startswith("down web at 20")
    assert [reason in warning for warning in warnings()] == [True]
    assert watcher.interrupt(running) == 1


def test_console_without_a_port_ends_no_watch(watcher, relay, service):
    watcher.store_mail("Duty Mail", relay.address)
    watcher.write(PLAN.format(port=service.port, more=""))
    with socket.socket() as taken:
        taken.bind(("127.0.0.1", 0))
        taken.listen()
        port = str(taken.getsockname()[1])
        check_that_it_watches(watcher, relay, watcher.serve("--port", port), port)


def test_console_that_fails_ends_no_watch(watcher, relay, service):
    watcher.store_mail("Duty Mail", relay.address)
    watcher.write(PLAN.format(port=service.port, more=""))
    folder = watcher.folder / "日本"
    folder.mkdir()
    check_that_it_watches(watcher, relay, watcher.serve("--port", "0", folder=folder), "the system's code page lacks")
