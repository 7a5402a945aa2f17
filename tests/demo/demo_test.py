"""./demo --console, as somebody meets it who types it and looks at the console."""

import contextlib
import os
import pathlib
import re
import signal
import subprocess
import tempfile
import urllib.request

import pytest

from windows_programs import ROOT, TIME_LIMIT, wait_until

# What all that it starts has in its environment, wherever it went.
MARK = "BRANTEL_DEMO_OF_TEST"


def heed_ctrl_c() -> None:
    """Which programs do not that were started in the background, nor what they start."""
    signal.signal(signal.SIGINT, signal.SIG_DFL)


class Demo:
    """The demo, under way, in a process group of its own as in a terminal."""

    def __init__(self, folder):
        self._output = folder / "output"
        self._temporary = folder / "temporary"
        self._temporary.mkdir()
        self.mark = f"{MARK}={folder}"
        with self._output.open("w") as output:
            self.process = subprocess.Popen(
                [ROOT / "demo", "--console"], stdin=subprocess.DEVNULL, stdout=output, stderr=subprocess.STDOUT,
                start_new_session=True, preexec_fn=heed_ctrl_c,
                env={**os.environ, "TMPDIR": str(self._temporary), MARK: str(folder)})

    def output(self) -> str:
        return self._output.read_text()

    def leftovers(self) -> list[str]:
        """Of its files; Wine leaves the folder of each of its servers."""
        return [file.name for file in self._temporary.iterdir() if not file.name.startswith("wine-")]

    def processes(self) -> list[str]:
        """The command lines of what it has started and what is still there."""
        found = []
        for process in os.listdir("/proc"):
            with contextlib.suppress(OSError):
                with open(f"/proc/{process}/environ", "rb") as environment:
                    if self.mark.encode() in environment.read().split(b"\0"):
                        with open(f"/proc/{process}/cmdline", "rb") as command:
                            found.append(command.read().decode(errors="replace").replace("\0", " "))
        return found

    def mail_folder(self) -> pathlib.Path:
        """Where the mail server has its files, whose processes are other users'."""
        return pathlib.Path(re.search(r"(/\S*brantel_mail_\w+)/etc", " ".join(self.processes()))[1])

    def signal(self, number: signal.Signals) -> None:
        """To all that a terminal would send it to."""
        os.killpg(self.process.pid, number)


@pytest.fixture
def demo():
    # With a short name: what instances hold is limited. Others have no access to it, as where each user has a
    # folder of his own for temporary files.
    with tempfile.TemporaryDirectory() as folder:
        demo = Demo(pathlib.Path(folder))
        yield demo
        if demo.process.poll() is None:
            demo.signal(signal.SIGTERM)
            demo.process.wait(TIME_LIMIT)


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
