"""The packages, as tools/package makes them, and Windows as it is before and after an installation."""

import contextlib
import os
import pathlib
import re
import subprocess
import sys
from dataclasses import dataclass

import pytest

from windows_programs import PRESET, ROOT, TIME_LIMIT, WINE, windows_path, wine_prefix

# What the system's installer notes of itself, and the system of every program that ran.
OWN_NOTES = re.compile(
    r"Software\\\\(Wow6432Node\\\\)?Microsoft\\\\Windows\\\\CurrentVersion\\\\(Installer|Uninstall)"
    r"|Software\\\\Classes\\\\Installer|Software\\\\Microsoft\\\\RPC|Software\\\\Wine|System\\\\"
    r"|Software\\\\Microsoft\\\\Windows NT|Software\\\\Microsoft\\\\Cryptography|Volatile Environment", re.I)


@dataclass
class Windows:
    """A prefix of its own."""
    folder: pathlib.Path
    environment: dict[str, str]

    @property
    def drive(self) -> pathlib.Path:
        return self.folder / "prefix" / "drive_c"

    def __call__(self, *command) -> int:
        return subprocess.run([WINE, *command], env=self.environment, stdin=subprocess.DEVNULL,
                              stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL, timeout=TIME_LIMIT).returncode

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
        return self("msiexec", *[windows_path(word) if isinstance(word, pathlib.Path) else word
                                 for word in arguments], "/qn")

    def registry(self) -> dict[str, str]:
        """The machine's and the user's keys, each with its values, in the form in which they are on the disk."""
        self.wait()
        keys = {}
        for file in ("system.reg", "user.reg"):
            text = (self.folder / "prefix" / file).read_text("utf-8", "replace")
            for name, values in re.findall(r"^\[(.*?)\] \d+\n((?:.+\n)*)", text, re.M):
                keys[name] = re.sub(r"^#time=.*\n", "", values, flags=re.M)
        return {name: values for name, values in keys.items() if not OWN_NOTES.match(name)}

    def wait(self) -> None:
        """Until the registry is on the disk."""
        subprocess.run([WINE, "--server", "-k"], env=self.environment, timeout=TIME_LIMIT)
        subprocess.run([WINE, "--server", "-w"], env=self.environment, timeout=TIME_LIMIT)

    def files(self) -> set[str]:
        """All but what the system's installer keeps for a removal."""
        names = {path.relative_to(self.drive).as_posix() for path in self.drive.rglob("*")}
        return {name for name in names if not name.startswith(("windows/Installer", "windows/temp", "users"))}


@pytest.fixture
def windows():
    with wine_prefix() as (folder, environment):
        system = Windows(folder, environment)
        assert system("hostname") == 0
        yield system


@pytest.fixture(scope="session")
def packages(tmp_path_factory) -> pathlib.Path:
    """As tools/package has them made when all is built."""
    folder = tmp_path_factory.mktemp("packages")
    subprocess.run([sys.executable, ROOT / "packaging" / "pack.py", folder, PRESET], check=True,
                   stdout=subprocess.DEVNULL, timeout=TIME_LIMIT, env={**os.environ, "LC_ALL": "C.UTF-8"})
    return folder
