"""A command as somebody at a terminal starts and interrupts it, and what it leaves behind."""

import contextlib
import os
import pathlib
import signal
import subprocess

from windows_programs import TIME_LIMIT

# What all that it starts has in its environment, wherever it went.
MARK = "BRANTEL_STARTED_BY_TEST"


def heed_ctrl_c() -> None:
    """Which programs do not that were started in the background, nor what they start."""
    signal.signal(signal.SIGINT, signal.SIG_DFL)


class StartedCommand:
    """Under way, in a process group of its own as in a terminal, with a place of its own for temporary files. It is
    ended with the block that it is used in."""

    def __init__(self, command: list, folder: pathlib.Path):
        self._output = folder / "output"
        self.temporary = folder / "temporary"
        self.temporary.mkdir()
        self._mark = f"{MARK}={folder}"
        with self._output.open("w") as output:
            self.process = subprocess.Popen(
                command, stdin=subprocess.DEVNULL, stdout=output, stderr=subprocess.STDOUT,
                start_new_session=True, preexec_fn=heed_ctrl_c,
                env={**os.environ, "TMPDIR": str(self.temporary), MARK: str(folder)})

    def __enter__(self):
        return self

    def __exit__(self, *_) -> None:
        if self.process.poll() is None:
            self.signal(signal.SIGTERM)
            self.process.wait(TIME_LIMIT)

    def output(self) -> str:
        return self._output.read_text()

    def leftovers(self) -> list[str]:
        """Of its files; Wine leaves the folder of each of its servers."""
        return [file.name for file in self.temporary.iterdir() if not file.name.startswith("wine-")]

    def processes(self) -> list[str]:
        """The command lines of what it has started and what is still there."""
        found = []
        for process in os.listdir("/proc"):
            with contextlib.suppress(OSError):
                with open(f"/proc/{process}/environ", "rb") as environment:
                    if self._mark.encode() in environment.read().split(b"\0"):
                        with open(f"/proc/{process}/cmdline", "rb") as command:
                            found.append(command.read().decode(errors="replace").replace("\0", " "))
        return found

    def signal(self, number: signal.Signals) -> None:
        """To all that a terminal would send it to."""
        os.killpg(self.process.pid, number)
