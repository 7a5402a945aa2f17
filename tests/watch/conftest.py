"""Runs notifyhost watch over services of this computer, with mails to a relay on a loopback address.

WINEPREFIX, when set, is the prefix to use; otherwise the tests make one and remove it.
"""

import json
import pathlib
import socket
import subprocess
import sys
import threading
import time
from dataclasses import dataclass, field

import pytest

from windows_programs import (HOST, INSTANCE_MAGICS, MODULE, ROOT, TIME_LIMIT, WINE, end_all, given_or_own_prefix,
                              instance_integer, instance_text, wait_until, windows_path)

sys.path.insert(0, str(ROOT))

import mail_servers  # noqa: E402: what it needs stands in the folder above

SMTP_MAIL_MAGIC = INSTANCE_MAGICS["SMTPMail"]


@pytest.fixture(scope="session")
def wine_environment():
    with given_or_own_prefix() as environment:
        yield environment


class Relay:
    """A mail relay, and the subjects of the mails that it was sent, in their order."""

    def __init__(self, address: str):
        self.address = address
        self._relay = mail_servers.RecordingRelay(address)

    def next(self) -> str:
        while not (session := self._relay.next_session()).content:
            continue
        return session.header(b"Subject").decode()

    def taken(self) -> list[str]:
        """In the order in which they were, also where a process that is stuck keeps its connection."""
        # One without a mail is of a watch that was killed.
        sessions = [session for session in self._relay.sessions_so_far() if session.content]
        sessions.sort(key=lambda session: session.accepted)
        return [session.header(b"Subject").decode() for session in sessions]

    def rest(self) -> list[str]:
        """What came until now, also over connections that have not ended."""
        self.close()
        return self.taken()

    def taken_until_quiet(self, seconds: float, most: int) -> list[str]:
        """What comes until nothing has come for so long, or more than the most have."""
        subjects = self.taken()
        while len(subjects) <= most:
            time.sleep(seconds)
            if not (more := self.taken()):
                break
            subjects += more
        return subjects

    def close(self) -> None:
        self._relay.close()


@pytest.fixture(scope="session")
def address():
    return mail_servers.own_address()


@pytest.fixture
def relay(address):
    relay = Relay(address)
    yield relay
    relay.close()


class Service:
    """A port of this computer that is open or closed."""

    def __init__(self):
        with socket.socket() as found:
            found.bind(("127.0.0.1", 0))
            self.port = found.getsockname()[1]
        self._listener: socket.socket | None = None

    @property
    def is_open(self) -> bool:
        return self._listener is not None

    def open(self) -> None:
        if self.is_open:
            return
        listener = socket.socket()
        listener.setsockopt(socket.SOL_SOCKET, socket.SO_REUSEADDR, 1)
        listener.bind(("127.0.0.1", self.port))
        listener.listen(1024)
        self._listener = listener
        threading.Thread(target=self._serve, args=(listener,), daemon=True).start()

    @staticmethod
    def _serve(listener: socket.socket) -> None:
        while True:
            try:
                listener.accept()[0].close()
            except OSError:
                return

    def close(self) -> None:
        if self._listener:
            self._listener.shutdown(socket.SHUT_RDWR)
            self._listener.close()
        self._listener = None


@pytest.fixture
def service():
    service = Service()
    yield service
    service.close()


@dataclass
class Watcher:
    """A folder with a plan and instances, and runs of notifyhost over it."""
    folder: pathlib.Path
    environment: dict[str, str]
    running: list[subprocess.Popen] = field(default_factory=list)

    @property
    def plan(self) -> pathlib.Path:
        return self.folder / "night.toml"

    @property
    def journal(self) -> pathlib.Path:
        return self.folder / "night.toml.journal"

    def write(self, text: str) -> None:
        self.plan.write_text(text)

    def store_mail(self, name: str, gateway: str) -> None:
        texts = (gateway.encode(), b"ann@example.org", b"ops@example.org", b"%u %n at %t", b"%w\r\n")
        (self.folder / name).write_bytes(SMTP_MAIL_MAGIC + b"".join(map(instance_text, texts)))

    def store_beeper(self, name: str) -> None:
        texts = ("5550100", "ATDT", "1", "2", "3", "")
        (self.folder / name).write_bytes(
            INSTANCE_MAGICS["Beeper"] + b"".join(map(instance_text, texts)) + instance_integer(0))

    def command(self, *arguments: str) -> list[str]:
        return [WINE, HOST, "watch", windows_path(self.plan), "--module", windows_path(MODULE), *arguments]

    def __call__(self, *arguments: str) -> subprocess.CompletedProcess:
        return self._run(self.command(*arguments))

    def run(self, *arguments: str) -> subprocess.CompletedProcess:
        return self._run([WINE, HOST, *arguments])

    def _run(self, command: list) -> subprocess.CompletedProcess:
        return subprocess.run(command, env=self.environment, cwd=self.folder,
                              stdin=subprocess.DEVNULL, capture_output=True, text=True, timeout=TIME_LIMIT)

    def start(self, *arguments: str) -> subprocess.Popen:
        return self._start(self.command(*arguments))

    def serve(self, *options: str, folder: pathlib.Path | None = None) -> subprocess.Popen:
        """With a console of a folder of instances, the plan's when no other is given."""
        return self._start([WINE, HOST, "serve", windows_path(folder or self.folder), "--watch",
                            windows_path(self.plan), "--module", windows_path(MODULE), *options])

    def _start(self, command: list) -> subprocess.Popen:
        with (self.folder / "told").open("ab") as told:
            process = subprocess.Popen(command, env=self.environment, cwd=self.folder,
                                       stdin=subprocess.DEVNULL, stdout=told, stderr=subprocess.STDOUT)
        self.running.append(process)
        return process

    @property
    def told(self) -> str:
        return (self.folder / "told").read_text()

    def records(self, what: str | None = None) -> list[dict]:
        """The whole lines of the journal, of this kind or of any."""
        records = []
        for line in self.journal.read_text().splitlines() if self.journal.exists() else []:
            try:
                records.append(json.loads(line))
            except json.JSONDecodeError:  # cut off by a kill
                continue
        return [record for record in records if what in (None, record["what"])]

    def wait_for(self, what: str, **particulars) -> dict:
        def found():
            return next((record for record in reversed(self.records(what))
                         if particulars.items() <= record.items()), None)
        return wait_until(found)

    def interrupt(self, process: subprocess.Popen) -> int:
        process.send_signal(2)
        return process.wait(TIME_LIMIT)


@pytest.fixture
def watcher(wine_environment, tmp_path):
    watcher = Watcher(tmp_path, wine_environment)
    yield watcher
    end_all(watcher.running)
