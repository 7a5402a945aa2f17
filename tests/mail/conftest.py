"""Sends mail through the real module, driven by notifyhost, to servers on a loopback address.

WINEPREFIX, when set, is the prefix to use; otherwise the tests make one and remove it.
"""

import pathlib
import re
import subprocess
import sys
import tempfile
from dataclasses import dataclass

import pytest

from windows_programs import (HOST, INSTANCE_MAGICS, MODULE, ROOT, TEST_PROGRAMS, TIME_LIMIT, WINE, PreviewPart,
                              given_or_own_prefix, instance_text, log_and_result, preview, windows_path)

sys.path.insert(0, str(ROOT))

import mail_servers  # noqa: E402: what it needs stands beside the tests
from sim import mail_server as real_mail_server  # noqa: E402

TEXT_CONVERTER = ROOT / "build" / "sanitize" / "tests" / "mail" / "text_converter"
MAIL_SERIES = TEST_PROGRAMS / "mail" / "mail_series.exe"

SMTP_MAIL_MAGIC = INSTANCE_MAGICS["SMTPMail"]


@pytest.fixture(scope="session")
def wine_environment():
    with given_or_own_prefix(LC_ALL="en_US.UTF-8") as environment:
        yield environment


@dataclass
class Outcome:
    exit_code: int
    output: bytes
    verdict: str = ""  # without the seconds and the result


class Mailer:
    """Sends stored instances through notifyhost."""

    def __init__(self, folder: pathlib.Path, environment: dict[str, str]):
        self._folder = folder
        self._environment = environment

    def store(self, *, gateway: str, to=b"ann@example.org", sender=b"ops@example.org",
              subject=b"Disk full", message=b"The disk is full.\r\n") -> pathlib.Path:
        """An instance file. The texts are bytes of the code page."""
        fields = (gateway.encode(), to, sender, subject, message)
        file = self._folder / "mail.ins"
        file.write_bytes(SMTP_MAIL_MAGIC + b"".join(map(instance_text, fields)))
        return file

    def preview(self, *arguments: str, locale: str | None = None, **fields) -> list[PreviewPart]:
        return preview(windows_path(self.store(**fields)), *arguments,
                       environment=self._environment_in(locale))

    def send(self, *arguments: str, locale: str | None = None, **fields) -> Outcome:
        environment = self._environment_in(locale)
        instance = self.store(**fields)
        # Into a file: Wine's own processes may keep a pipe open for a while.
        with tempfile.TemporaryFile() as output:
            done = subprocess.run(
                [WINE, HOST, "send", "SMTPMail", windows_path(instance), "--raw-values", "--module",
                 windows_path(MODULE), *arguments],
                env=environment, stdin=subprocess.DEVNULL, stdout=output,
                stderr=subprocess.STDOUT, timeout=TIME_LIMIT)
            output.seek(0)
            told = output.read().decode()
        verdict, *_ = re.split(r"; [0-9.]+ s\b", told.rstrip("\n").rpartition("\n")[2])
        return Outcome(done.returncode, log_and_result(told).encode(), verdict)

    def _environment_in(self, locale: str | None) -> dict[str, str]:
        return {**self._environment, **({"LC_ALL": locale} if locale else {})}


@pytest.fixture
def mailer(wine_environment, tmp_path):
    return Mailer(tmp_path, wine_environment)


@pytest.fixture(scope="module")
def mailer_of_module(wine_environment, tmp_path_factory):
    return Mailer(tmp_path_factory.mktemp("mail"), wine_environment)


@pytest.fixture(scope="session")
def address():
    return mail_servers.own_address()


@pytest.fixture(scope="module")
def relay(address):
    relay = mail_servers.RecordingRelay(address)
    yield relay
    relay.close()


@pytest.fixture(scope="module")
def silent_relay(address):
    relay = mail_servers.RecordingRelay(address, {"greeting": None})
    yield relay
    relay.close()


@pytest.fixture(scope="module")
def mail_server(address):
    with real_mail_server.server_folder() as folder:
        with real_mail_server.MailServer(folder, address, ["ann", "bob"]).running() as server:
            yield server


def run_text_converter(operation: str, texts: list[bytes]) -> list[bytes]:
    """What the module's own code makes of each text."""
    done = subprocess.run([TEXT_CONVERTER, operation], capture_output=True, text=True, check=True,
                          input="".join(text.hex() + "\n" for text in texts), timeout=TIME_LIMIT)
    converted = [bytes.fromhex(line) for line in done.stdout.splitlines()]
    assert len(converted) == len(texts)
    return converted
