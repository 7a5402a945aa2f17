"""Where a file is for Windows programs: tools/wine tells people, and the tests work it out as it does."""

import subprocess

import pytest

from windows_programs import TIME_LIMIT, WINE, windows_path


@pytest.mark.parametrize("path, told", [("/", "Z:\\"), ("/media/störung ☎/a b", "Z:\\media\\störung ☎\\a b"),
                                        ("//media/./sound//", "Z:\\media\\sound"), ("/media/../tmp", "Z:\\media\\..\\tmp")])
def test_a_windows_path_starts_with_the_drive_of_the_root_folder(path, told):
    assert windows_path(path) == told_by_wine(path) == told


@pytest.mark.parametrize("path", [".", "night", "./night/", "../night"])
def test_a_relative_path_is_completed(path, tmp_path, monkeypatch):
    monkeypatch.chdir(tmp_path)
    assert windows_path(path) == told_by_wine(path)
    assert windows_path(path).startswith(windows_path(tmp_path))


def told_by_wine(path: str) -> str:
    return subprocess.run([WINE, "--path", path], capture_output=True, text=True, check=True,
                          timeout=TIME_LIMIT).stdout.rstrip("\n")
