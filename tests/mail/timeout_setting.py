"""The time-out of SMTPMail's receives, in the registry."""

import subprocess

from windows_programs import REG, TIME_LIMIT, WINE

KEY = r"HKLM\SOFTWARE\Brantel\Vantrel\notification\SMTPMail"
VALUE = "Settings_Timeout"


class TimeoutSetting:
    """The setting; the tests of the suite leave none behind."""

    def __init__(self, environment: dict[str, str]):
        self._environment = environment

    def _reg(self, *arguments: str) -> subprocess.CompletedProcess:
        return subprocess.run([WINE, REG, *arguments], env=self._environment, text=True,
                              stdin=subprocess.DEVNULL, capture_output=True, timeout=TIME_LIMIT)

    def store(self, text: str) -> None:
        assert self._reg("add", KEY, "/v", VALUE, "/t", "REG_SZ", "/d", text, "/f").returncode == 0

    def remove(self) -> None:
        self._reg("delete", KEY, "/f")

    def query(self) -> list[str]:
        """Name, type and data."""
        return self._reg("query", KEY, "/v", VALUE).stdout.split()[-3:]
