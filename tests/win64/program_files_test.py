"""The files of a release as they stand: their sizes, what they import, and how they are protected."""

import importlib.machinery
import importlib.util
import subprocess

import pytest

from windows_programs import ROOT

MODULES = [ROOT / "out" / f"win{bits}" / "Brantel_Notifications.dll" for bits in (32, 64)]
FILES = [*MODULES, *(module.with_name("notifyhost.exe") for module in MODULES)]

# Of the system. The module of any host may import no others; the host asks more of it.
LIBRARIES = {"advapi32.dll", "comctl32.dll", "comdlg32.dll", "gdi32.dll", "kernel32.dll", "mpr.dll", "msvcrt.dll",
             "ole32.dll", "oleaut32.dll", "shell32.dll", "shlwapi.dll", "user32.dll", "winmm.dll", "wsock32.dll"}
LIBRARIES_OF_HOST = LIBRARIES | {"iphlpapi.dll", "version.dll", "ws2_32.dll"}

# Of the header: where the file is loaded is chosen anew each time, anywhere in 64 bits; data is never run.
HIGH_ENTROPY_VA, DYNAMIC_BASE, NX_COMPAT = 0x20, 0x40, 0x100
RELOCATIONS = 5  # data directory


def load_tool(name: str):
    loader = importlib.machinery.SourceFileLoader(name, str(ROOT / "tools" / name))
    tool = importlib.util.module_from_spec(importlib.util.spec_from_loader(name, loader))
    loader.exec_module(tool)
    return tool


compare_release = load_tool("compare_release")


def library(file):
    return compare_release.Library(file.read_bytes())


def id_of(file) -> str:
    return f"{file.parent.name}-{file.name}"


@pytest.mark.parametrize("file", FILES, ids=id_of)
def test_it_can_be_loaded_anywhere_and_its_data_is_never_run(file):
    program = library(file)
    expected = DYNAMIC_BASE | NX_COMPAT | (HIGH_ENTROPY_VA if file.parent.name == "win64" else 0)
    assert program.characteristics & expected == expected
    # Without these it would be loaded where it says itself, whatever its header promises.
    assert program.directories[RELOCATIONS][1] > 0


@pytest.mark.parametrize("file", FILES, ids=id_of)
def test_it_imports_system_libraries_alone(file):
    imported = {name.lower() for name in library(file).imports()}
    assert "kernel32.dll" in imported
    assert imported - (LIBRARIES if file in MODULES else LIBRARIES_OF_HOST) == set()


def compiler_version() -> int:
    told = subprocess.run(["i686-w64-mingw32-g++-win32", "-dumpversion"], capture_output=True, text=True, check=True)
    return int(told.stdout.partition("-")[0].partition(".")[0])


@pytest.mark.parametrize("module", MODULES, ids=id_of)
def test_the_module_is_small(module):
    # The standard library of GCC 14 takes more room than that of GCC 12, with which the release is made.
    most = 512 if module.parent.name == "win64" or compiler_version() >= 14 else 448
    assert module.stat().st_size <= most * 1024


def test_both_modules_export_and_hold_the_same():
    """Registry scripts, dialogs, texts, icons and bitmaps; a type library says for which system it is."""
    small, large = map(library, MODULES)
    assert small.exports() == large.exports()
    assert sorted(name.split()[0] for name in large.exports().values()) == [
        "DllCanUnloadNow", "DllGetClassObject", "DllRegisterServer", "DllUnregisterServer"]
    one, other = small.resources(), large.resources()
    differing = [key for key in {**one, **other} if one.get(key) != other.get(key)]
    assert differing == ["resource 'TYPELIB' 1 language 0x0409"]
