"""Mail servers on port 25 of a loopback address that are no real ones: a sink, and one that records."""

import contextlib
import json
import os
import pathlib
import queue
import subprocess
import sys
import threading

from sim.mail_server import POSTFIX, PRIVILEGED, TIME_LIMIT, running

SMTP_SINK = f"{POSTFIX}/usr/sbin/smtp-sink"


def own_address() -> str:
    """A loopback address that no other run of the tests uses at the same time."""
    return f"127.25.{os.getpid() >> 8 & 255}.{os.getpid() & 255 or 1}"


class Sink:
    """Postfix's smtp-sink, which accepts everything and forgets it."""

    def __init__(self, address: str, log: pathlib.Path):
        self.address = address
        self.log = log

    @contextlib.contextmanager
    def running(self):
        with self.log.open("wb") as log:
            # -v tells of each command that comes.
            with running([SMTP_SINK, "-v", "-u", "nobody", f"{self.address}:25", "100"],
                         self.address, stdout=subprocess.DEVNULL, stderr=log):
                yield self


class RecordingRelay:
    """relay_program.py in a process of its own."""

    def __init__(self, address: str, replies: dict[str, str | None] | None = None):
        self.address = address
        program = pathlib.Path(__file__).with_name("relay_program.py")
        self._process = subprocess.Popen(
            [*PRIVILEGED, sys.executable, program, address, json.dumps(replies or {})],
            stdin=subprocess.PIPE, stdout=subprocess.PIPE, text=True)
        assert self._process.stdout.readline() == "listening\n"
        self._sessions: queue.Queue[Session] = queue.Queue()
        # Read at once: a program that waits for room to tell of a connection would answer no other.
        self._reading = threading.Thread(target=self._read, daemon=True)
        self._reading.start()

    def _read(self) -> None:
        for line in self._process.stdout:
            self._sessions.put(Session(**json.loads(line)))

    def next_session(self) -> "Session":
        return self._sessions.get(timeout=TIME_LIMIT)

    def sessions_so_far(self) -> list["Session"]:
        sessions = []
        while not self._sessions.empty():
            sessions.append(self._sessions.get())
        return sessions

    def close(self) -> None:
        self._process.stdin.close()  # by which it ends
        self._process.wait(TIME_LIMIT)
        self._reading.join(TIME_LIMIT)


class Session:
    """What came over one connection."""

    def __init__(self, commands: list[str], segments: list[int], content: str, accepted: float | None, seconds: float):
        self.commands = [command.encode("latin-1") for command in commands]
        self.segments = segments  # that had come with each of the commands
        self.content = content.encode("latin-1")
        self.accepted = accepted  # when its message was, by a clock that all connections share
        self.seconds = seconds

    def header(self, name: bytes) -> bytes:
        head = self.content.partition(b"\r\n\r\n")[0]
        lines = [line for line in head.split(b"\r\n") if line.startswith(name + b": ")]
        assert len(lines) == 1
        return lines[0].removeprefix(name + b": ")

    @property
    def body(self) -> bytes:
        return self.content.partition(b"\r\n\r\n")[2]
