"""A thousand messages or two in a row from one process into smtp-sink."""

import json
import os
import subprocess
import tempfile

import pytest

import mail_servers
from conftest import MAIL_SERIES
from windows_programs import MODULE, TIME_LIMIT, WINE, windows_path

# A single smallest heap block (8 bytes) lost in every message would add 8,000, and a heap grows by 4,096.
# (CI sends more: where levels are rough, it takes larger losses to be seen.)
COUNT = 2000 if "BRANTEL_THOROUGH" in os.environ else 1000
WARM_UP = COUNT // 10


@pytest.fixture(scope="module")
def sink(address, tmp_path_factory):
    log = tmp_path_factory.mktemp("sink") / "log"
    with mail_servers.Sink(address, log).running() as sink:
        yield sink


@pytest.fixture(scope="module")
def series(sink, mailer_of_module, wine_environment):
    """What the process reports after its messages."""
    instance = mailer_of_module.store(gateway=sink.address, to=b"ann@example.org, bob@example.org",
                                      sender=b"Ops <ops@%s>", subject=b"St\xf6rung")
    with tempfile.TemporaryFile() as output:
        subprocess.run([WINE, MAIL_SERIES, windows_path(instance), str(COUNT)], check=True,
                       env={**wine_environment, "BRANTEL_MODULE": windows_path(MODULE)},
                       stdin=subprocess.DEVNULL, stdout=output, timeout=3 * TIME_LIMIT)
        output.seek(0)
        return json.load(output)


def test_all_messages_are_delivered(series):
    assert series["warm_up"] == WARM_UP
    assert series["delivered"] == COUNT


def test_no_handle_is_left_behind(series):
    assert series["after"]["handles"] == series["before"]["handles"]


def test_no_memory_is_left_behind(series):
    assert series["after"]["bytes"] <= series["before"]["bytes"] + series["heap_growth"]


def test_the_sink_has_seen_them_all(series, sink):
    commands = sink.log.read_text(errors="replace")
    total = COUNT + WARM_UP
    assert commands.count("RCPT") >= 2 * total
    assert commands.count("QUIT") >= total
