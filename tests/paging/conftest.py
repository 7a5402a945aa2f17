"""Builds pages by the module's own code, for tests against what others wrote."""

import pathlib
import subprocess
from dataclasses import dataclass

ROOT = pathlib.Path(__file__).resolve().parent.parent.parent
PAGE_BUILDER = ROOT / "build" / "sanitize" / "tests" / "paging" / "page_builder"

# Seconds within which a program ends: far more than it takes, so that only a hang reaches it.
TIME_LIMIT = 600


@dataclass
class Page:
    pager_id: bytes
    message: bytes
    password: bytes = b""


def build_pages(protocol: str, pages: list[Page]) -> list[bytes]:
    lines = "".join(f"{page.pager_id.hex()},{page.message.hex()},{page.password.hex()}\n"
                    for page in pages)
    done = subprocess.run([PAGE_BUILDER, protocol], input=lines, capture_output=True, text=True,
                          check=True, timeout=TIME_LIMIT)
    built = [bytes.fromhex(line) for line in done.stdout.splitlines()]
    assert len(built) == len(pages)
    return built
