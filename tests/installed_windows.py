"""The packages, as tools/package makes them, and Windows as it is before and after an installation."""

import contextlib
import os
import pathlib
import re
import subprocess
import sys
import time

from windows_programs import ROOT, TIME_LIMIT, WINE, WinePrefix, windows_path

# What the system's installer notes of itself, and the system of every program that ran.
OWN_NOTES = re.compile(
    r"Software\\\\(Wow6432Node\\\\)?Microsoft\\\\Windows\\\\CurrentVersion\\\\(Installer|Uninstall)"
    r"|Software\\\\Classes\\\\Installer|Software\\\\Microsoft\\\\RPC|Software\\\\Wine|System\\\\"
    r"|Software\\\\Microsoft\\\\Windows NT|Software\\\\Microsoft\\\\Cryptography|Volatile Environment", re.I)


class Windows(WinePrefix):
    """Its programs say nothing."""
    seconds_of_msiexec = 0.0  # the last time

    def __call__(self, *command) -> int:
        return self.run(*command, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL).returncode

    @contextlib.contextmanager
    def started(self, *command):
        """The running program, which is ended at the end."""
        with subprocess.Popen([WINE, *command], env=self.environment, stdin=subprocess.DEVNULL,
                              stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL) as process:
            try:
                yield process
            finally:
                process.kill()

    def msiexec(self, *arguments) -> int:
        """Its exit code, of which a Unix system keeps the lower eight bits."""
        words = [windows_path(word) if isinstance(word, pathlib.Path) else word for word in arguments]
        self("hostname")  # so that the time is not that of the system's start
        started = time.monotonic()
        exit_code = self("msiexec", *words, "/qn")
        self.seconds_of_msiexec = time.monotonic() - started
        return exit_code

    def registry(self) -> dict[str, str]:
        """The machine's and the user's keys, each with its values, in the form in which they are on the disk."""
        self.shut_down()
        keys = {}
        for file in ("system.reg", "user.reg"):
            text = (self.folder / "prefix" / file).read_text("utf-8", "replace")
            for name, values in re.findall(r"^\[(.*?)\] \d+\n((?:.+\n)*)", text, re.M):
                keys[name] = re.sub(r"^#time=.*\n", "", values, flags=re.M)
        return {name: values for name, values in keys.items() if not OWN_NOTES.match(name)}

    def files(self) -> set[str]:
        """All but what the system's installer keeps for a removal."""
        names = {path.relative_to(self.drive).as_posix() for path in self.drive.rglob("*")}
        return {name for name in names if not name.startswith(("windows/Installer", "windows/temp", "users"))}


def make_packages(folder: pathlib.Path, *presets: str) -> pathlib.Path:
    """As tools/package has them made when all is built."""
    subprocess.run([sys.executable, ROOT / "packaging" / "pack.py", folder, *presets], check=True,
                   stdout=subprocess.DEVNULL, timeout=TIME_LIMIT, env={**os.environ, "LC_ALL": "C.UTF-8"})
    return folder
