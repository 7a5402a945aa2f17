"""The registry entries of the module's registration, from the scripts that are its resources.

Their form is told in src/module/registry_script.h.
"""

import pathlib
import re
from dataclasses import dataclass

TOKEN = re.compile(r"'((?:[^']|'')*)'|([{}=])|([^\s{}='][^\s{}=]*)")


@dataclass(frozen=True)
class Entry:
    """A value of a key below HKEY_CLASSES_ROOT, or without a text the key alone."""
    key: str
    name: str | None  # of the value; none for the default one
    text: str | None
    goes_with_all: bool = False  # the key: when it is removed, all that is below it goes, too


class Script:
    """One script that is read."""

    def __init__(self, text: str):
        self._tokens = [(quoted.replace("''", "'") if not sign and not word else sign or word, bool(sign))
                        for quoted, sign, word in TOKEN.findall(text)]
        self.entries: list[Entry] = []
        assert self._take() == ("HKCR", False)
        self._block("")
        assert not self._tokens

    def _take(self) -> tuple[str, bool]:
        return self._tokens.pop(0)

    def _skip(self, sign: str) -> bool:
        if self._tokens and self._tokens[0] == (sign, True):
            self._take()
            return True
        return False

    def _assigned_text(self) -> str | None:
        if not self._skip("="):
            return None
        assert self._take() == ("s", False)
        return self._take()[0]

    def _block(self, key: str) -> None:
        assert self._take() == ("{", True)
        while not self._skip("}"):
            self._entry(key)

    def _entry(self, key: str) -> None:
        word = self._take()[0]
        if word == "val":
            name = self._take()[0]
            self.entries.append(Entry(key, name, self._assigned_text()))
            return
        name = self._take()[0] if word in ("NoRemove", "ForceRemove") else word
        path = f"{key}\\{name}" if key else name
        text = self._assigned_text()
        if word == "ForceRemove":
            self.entries.append(Entry(path, None, None, goes_with_all=True))
        if text is not None:
            self.entries.append(Entry(path, None, text))
        if self._tokens[0] == ("{", True):
            self._block(path)


def class_entries(folder: pathlib.Path) -> list[Entry]:
    """Of all classes, from the folder with their scripts. %MODULE% stands in texts for the module's path."""
    return [entry for file in sorted(folder.glob("*.rgs")) for entry in Script(file.read_text("utf-8")).entries]


def type_library_entries(folder: pathlib.Path, system: str) -> tuple[list[Entry], list[Entry]]:
    """What the system writes to register the module's type library: for programs of this system, "win32" or
    "win64", and for those of both. %FOLDER% stands for the module's folder. The flag says that the library lies
    on a disk."""
    text = (folder / "type_library.idl").read_text("utf-8")
    libid, version, description = (re.search(form, text)[1] for form in (
        r"uuid\(([-0-9A-F]+)\)", r"version\(([\d.]+)\)", r'helpstring\("([^"]+)"\)'))
    key = rf"TypeLib\{{{libid}}}\{version}"
    return ([Entry(rf"{key}\0\{system}", None, "%MODULE%")],
            [Entry(key, None, description), Entry(rf"{key}\FLAGS", None, "8"),
             Entry(rf"{key}\HELPDIR", None, "%FOLDER%")])
