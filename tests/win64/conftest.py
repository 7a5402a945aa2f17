"""The module and its host for 32-bit and for 64-bit Windows, side by side: each in a Wine prefix of its own, on
the screen that DISPLAY names, as ./test provides one."""

import contextlib
import pathlib
import shutil
import subprocess

import pytest

from windows_programs import ROOT, TIME_LIMIT, WINE, WinePrefix, windows_path, wine_prefix


class Side(WinePrefix):
    """What was built for Windows of so many bits."""

    @property
    def bits(self) -> int:
        return int(self.environment["BRANTEL_BITS"])

    @property
    def module(self) -> pathlib.Path:
        return ROOT / "out" / f"win{self.bits}" / "Brantel_Notifications.dll"

    @property
    def host(self) -> pathlib.Path:
        return self.module.with_name("notifyhost.exe")

    @property
    def build(self) -> pathlib.Path:
        return ROOT / "build" / f"win{self.bits}"

    def told(self, *command, folder: pathlib.Path | None = None, **variables: str) -> bytes:
        """What a program that succeeds writes to its standard output."""
        return self.run(*command, cwd=folder, variables=variables, stdout=subprocess.PIPE, check=True).stdout

    def notifyhost(self, *arguments: str, folder: pathlib.Path, **variables: str) -> str:
        return self.told(self.host, *arguments, folder=folder, **variables).decode()

    def save_in_dialog(self, notifier_class: str, title: str, instance: pathlib.Path) -> None:
        """Opens the dialog of an instance, and presses OK."""
        program = self.build / "tests" / "host" / "dialog_operator" / "dialog_operator.exe"
        operator = subprocess.Popen([WINE, program, title, "1"], env=self.environment, stdin=subprocess.DEVNULL)
        told = self.notifyhost("--module", self.module, "edit", notifier_class, ".", instance.name,
                               folder=instance.parent)
        assert operator.wait(TIME_LIMIT) == 0
        assert told == f"Saved {instance.name}.\n"

    def web_forms(self, clsid: str, action: str, path: pathlib.Path, *form: str) -> bytes:
        program = self.build / "tests" / "console" / "page_teller.exe"
        return self.told(program, windows_path(self.module), clsid, action, windows_path(path), *form)


@pytest.fixture(scope="session")
def sides():
    """Both, by their bits. A messenger service stands in for the one that Wine has only in part."""
    overrides = "netapi32=n;mscoree,mshtml=;winemenubuilder.exe=d"
    with contextlib.ExitStack() as prefixes:
        sides = {}
        for bits in (32, 64):
            side = sides[bits] = prefixes.enter_context(
                wine_prefix(Side, BRANTEL_BITS=str(bits), WINEDLLOVERRIDES=overrides))
            side.told("hostname")  # makes the prefix
            side.put_library(side.build / "sim" / "messenger" / "whole" / "netapi32.dll")
        yield sides


@pytest.fixture
def copy(tmp_path):
    """Copies a file of an instance into a folder of its own, under its name."""
    def make(instance: pathlib.Path, folder: str) -> pathlib.Path:
        (tmp_path / folder).mkdir()
        return pathlib.Path(shutil.copy(instance, tmp_path / folder / instance.name))

    return make
