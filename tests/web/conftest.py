"""Shows the real pages of the web forms in a real browser.

The pages come from web_forms_program of the sanitize build, and a web server on the loopback interface
gives them to the browser and keeps what it posts. The browser talks to nobody else.
"""

import http.server
import os
import pathlib
import struct
import subprocess
import threading
from dataclasses import dataclass

import pytest

import browser
from windows_programs import TIME_LIMIT

ROOT = pathlib.Path(__file__).resolve().parent.parent.parent
BUILD = pathlib.Path(os.environ.get("WEB_FORMS_BUILD_DIR", ROOT / "build" / "sanitize"))
PROGRAM = BUILD / "tests" / "web" / "web_forms_program"

# The pages are in the system's code page: here that of western Europe.
CHARSET = "windows-1252"


@dataclass(frozen=True)
class Row:
    """A row of a form as an operator sees it, and the place of its value in the instance file."""
    label: str
    name: str
    field: int
    tag: str = "input"


@dataclass(frozen=True)
class FormClass:
    name: str
    magic: bytes
    text_count: int
    rows: tuple[Row, ...]
    profile: bytes = b""  # what the file holds behind its texts
    longest_value: int = 1022
    protocol_field: int | None = None

    def instance(self, values: dict[str, bytes], protocol: bytes = b"") -> bytes:
        """The instance file with these values, by the names of the form's fields."""
        texts = [b""] * self.text_count
        for row in self.rows:
            texts[row.field] = values.get(row.name, b"")
        if self.protocol_field is not None:
            texts[self.protocol_field] = protocol
        return self.magic + b"".join(
            struct.pack("<I", len(text) + 1) + text + b"\0" for text in texts) + self.profile


CLASSES = [
    FormClass("Beeper", bytes.fromhex("81F446E5 3D98 7E5A 610BE80BF158F22E"), 6,
              (Row("Beeper Number:", "beepernumber", 0), Row("Up Code:", "upcode", 2),
               Row("Down Code:", "downcode", 3), Row("SNMP Trap Code:", "trapcode", 4)),
              profile=bytes(4)),
    FormClass("Pager", bytes.fromhex("0D5405CF 4F53 4B16 BD02D12A35BF0840"), 5,
              (Row("Pager Number:", "pagernumber", 0), Row("Terminal Password:", "password", 1),
               Row("PagerID:", "pagerid", 2), Row("Message:", "message", 3)),
              profile=bytes(4), protocol_field=4),
    FormClass("SMTPMail", bytes.fromhex("8C26DDD6 2BA3 86EF 2683A7DA9410F949"), 5,
              (Row("Mail Gateway (IP):", "gateway", 0), Row("To:", "to", 1), Row("From:", "from", 2),
               Row("Subject:", "subject", 3), Row("Message:", "message", 4, "textarea")),
              longest_value=100000),
    FormClass("WinPopup", bytes.fromhex("292C768B 2E0B 589C 6C925C2A021AFB08"), 2,
              (Row("Destination:", "destination", 0), Row("Message:", "message", 1)),
              longest_value=100000),
]


def run_forms(*arguments: str | bytes, instance: bytes = b"") -> bytes:
    return subprocess.run([PROGRAM, *arguments], input=instance, stdout=subprocess.PIPE, check=True,
                          timeout=TIME_LIMIT).stdout


def shown(value: bytes) -> str:
    """The characters that a browser makes of a value: every byte is one."""
    return "".join(bytes([byte]).decode(CHARSET) if byte not in (0x81, 0x8D, 0x8F, 0x90, 0x9D)
                   else chr(byte) for byte in value)


class HostServer(http.server.ThreadingHTTPServer):
    """Stands for the host's web server."""

    def __init__(self):
        super().__init__(("127.0.0.1", 0), Handler)
        self.page = b""
        self.posted: list[tuple[str, str]] = []  # path and body

    @property
    def address(self) -> str:
        return f"http://127.0.0.1:{self.server_port}/"


class Handler(http.server.BaseHTTPRequestHandler):
    server: HostServer

    def do_GET(self):
        self.answer(self.server.page)

    def do_POST(self):
        body = self.rfile.read(int(self.headers["Content-Length"])).decode("ascii")
        self.server.posted.append((self.path, body))
        self.answer(b"saved")

    def answer(self, content: bytes):
        self.send_response(200)
        self.send_header("Content-Type", f"text/html; charset={CHARSET}")
        self.send_header("Content-Length", str(len(content)))
        self.end_headers()
        self.wfile.write(content)

    def log_message(self, *_):
        pass


@pytest.fixture(scope="session")
def server():
    server = HostServer()
    thread = threading.Thread(target=server.serve_forever)
    thread.start()
    yield server
    server.shutdown()
    thread.join()
    server.server_close()


@pytest.fixture(scope="session")
def chromium(tmp_path_factory):
    with browser.chromium(tmp_path_factory.mktemp("chromium")) as driver:
        yield driver


@pytest.fixture(scope="session")
def show(chromium, server):
    """Shows a page and gives the browser that shows it."""

    def show(page: bytes):
        server.page = page
        server.posted.clear()
        chromium.get(server.address)
        return chromium

    return show
