"""./demo --console, as somebody meets it who types it and looks at the console."""

import pathlib
import re
import signal
import tempfile
import urllib.request

import pytest

from started_command import StartedCommand
from windows_programs import ROOT, TIME_LIMIT, wait_until

class Demo(StartedCommand):
    def mail_folder(self) -> pathlib.Path:
        """Where the mail server has its files, whose processes are other users'."""
        return pathlib.Path(re.search(r"(/\S*brantel_mail_\w+)/etc", " ".join(self.processes()))[1])


@pytest.fixture
def demo():
    # With a short name: what instances hold is limited. Others have no access to it, as where each user has a
    # folder of his own for temporary files.
    with tempfile.TemporaryDirectory() as folder, Demo([ROOT / "demo", "--console"], pathlib.Path(folder)) as demo:
        yield demo


def test_console_answers_and_everything_ends_with_ctrl_c(demo):
    def address():
        assert demo.process.poll() is None, demo.output()
        return re.search(r"^The console is at (http://127\.0\.0\.1:\d+/);", demo.output(), re.MULTILINE)
    url = wait_until(address)[1]

    def page() -> str:
        with urllib.request.urlopen(url, timeout=TIME_LIMIT) as answer:
            assert answer.status == 200
            return answer.read().decode()
    wait_until(lambda: "tile-up" in page())
    assert "<strong>router7</strong>" in page()
    assert page().count('<li class="tile tile-delivered') == 7, demo.output()
    assert demo.processes() and demo.leftovers()
    mail_folder = demo.mail_folder()
    assert mail_folder.exists()

    demo.signal(signal.SIGINT)
    assert demo.process.wait(TIME_LIMIT) == 130
    assert "the watch ends" in demo.output()
    wait_until(lambda: demo.processes() == [])
    assert demo.leftovers() == []
    assert not mail_folder.exists()
