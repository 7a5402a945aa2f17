"""Mail servers on port 25 of a loopback address that are no real ones: a sink, and one that records."""

import contextlib
import json
import os
import pathlib
import subprocess
import sys

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

    def next_session(self) -> "Session":
        return Session(**json.loads(self._process.stdout.readline()))

    def close(self):
        self._process.stdin.close()  # by which it ends
        self._process.wait(TIME_LIMIT)


class Session:
    """What came over one connection."""

    def __init__(self, commands: list[str], segments: list[int], content: str, seconds: float):
        self.commands = [command.encode("latin-1") for command in commands]
        self.segments = segments  # that had come with each of the commands
        self.content = content.encode("latin-1")
        self.seconds = seconds

    def header(self, name: bytes) -> bytes:
        head = self.content.partition(b"\r\n\r\n")[0]
        lines = [line for line in head.split(b"\r\n") if line.startswith(name + b": ")]
        assert len(lines) == 1
        return lines[0].removeprefix(name + b": ")

    @property
    def body(self) -> bytes:
        return self.content.partition(b"\r\n\r\n")[2]
