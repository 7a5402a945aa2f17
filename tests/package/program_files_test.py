"""The files of a release as they stand: their sizes, what they import, and how they are protected."""

import subprocess

import pytest

from program_file import program_file
from windows_programs import BITS, HOST, MODULE

# Of the system. The module of any host may import no others; the host asks more of it.
# The common dialogs (comdlg32.dll) are loaded when one is shown: they would double the time that a process takes to start.
LIBRARIES = {"advapi32.dll", "gdi32.dll", "kernel32.dll", "mpr.dll", "msvcrt.dll", "ole32.dll", "oleaut32.dll",
             "shell32.dll", "shlwapi.dll", "user32.dll", "winmm.dll", "wsock32.dll"}
LIBRARIES_OF_HOST = LIBRARIES | {"iphlpapi.dll", "version.dll", "ws2_32.dll"}

# Of the header: where the file is loaded is chosen anew each time, anywhere in 64 bits; data is never run.
HIGH_ENTROPY_VA, DYNAMIC_BASE, NX_COMPAT = 0x20, 0x40, 0x100
RELOCATIONS = 5  # data directory

each_file = pytest.mark.parametrize("file", [MODULE, HOST], ids=lambda file: file.name)


@each_file
def test_it_can_be_loaded_anywhere_and_its_data_is_never_run(file):
    program = program_file(file)
    expected = DYNAMIC_BASE | NX_COMPAT | (HIGH_ENTROPY_VA if BITS == 64 else 0)
    assert program.characteristics & expected == expected
    # Without these it would be loaded where it says itself, whatever its header promises.
    assert program.directories[RELOCATIONS][1] > 0


@each_file
def test_it_imports_system_libraries_alone(file):
    imported = {name.lower() for name in program_file(file).imports()}
    assert "kernel32.dll" in imported
    assert imported - (LIBRARIES if file == MODULE else LIBRARIES_OF_HOST) == set()


def compiler_version() -> int:
    told = subprocess.run(["i686-w64-mingw32-g++-win32", "-dumpversion"], capture_output=True, text=True, check=True)
    return int(told.stdout.partition("-")[0].partition(".")[0])


def test_the_module_is_small():
    # The standard library of GCC 14 takes more room than that of GCC 12, with which the release is made.
    most = 512 if BITS == 64 or compiler_version() >= 14 else 448
    assert MODULE.stat().st_size <= most * 1024
