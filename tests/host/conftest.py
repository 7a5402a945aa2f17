"""Runs notifyhost.exe as a person would, and makes what it works on.

WINEPREFIX, when set, is the prefix to use; its registration of the module is changed by the tests.
Otherwise they make one and remove it.
"""

import pathlib
import shutil
import subprocess
import tempfile
from dataclasses import dataclass

import pytest

from windows_programs import (BUILD, HOST, INSTANCE_MAGICS, TIME_LIMIT, WINE, given_or_own_prefix,
                              log_and_result, wait_until, windows_path)

DEMO_PROGRAM = BUILD / "host" / "demo_program" / "demo_program.exe"
DIALOG_OPERATOR = BUILD / "tests" / "host" / "dialog_operator" / "dialog_operator.exe"
STAND_IN_MODULE = BUILD / "tests" / "host" / "stand_in_module" / "stand_in_module.dll"

# The classes in their order, with their CLSIDs, and their names as messages list them.
CLASSES = [
    ("SMTPMail", "{4D03ADA6-067C-79C7-B3CD-B7D9C4293BF5}"),
    ("Sound", "{A93D5106-D415-9AE1-2956-2D685A03A67B}"),
    ("WinPopup", "{B28A7D4D-B389-C787-CCC0-A0F773C8FC73}"),
    ("LaunchProgram", "{313E5016-EB2E-F2DD-BDB6-184EFE00A5D3}"),
    ("Beeper", "{E0F08BCF-0BD9-3D64-842A-2FCEAE91F17E}"),
    ("Pager", "{2669D42E-142D-8B34-EAC1-28B07EB3EABA}"),
    ("Voice", "{DEE8A963-837B-D33C-C75D-B637B7CCFCA2}"),
]
CLASS_NAMES = ", ".join(name for name, _ in CLASSES)
CLASSES_IN_PROSE = " and ".join(CLASS_NAMES.rsplit(", ", 1))

LAUNCH_PROGRAM_MAGIC = INSTANCE_MAGICS["LaunchProgram"]


@dataclass
class Outcome:
    """What a run of the host left. Line ends are as they came."""
    exit_code: int
    output: str
    errors: str

    @property
    def log_and_result(self) -> str:
        """Of a send."""
        return log_and_result(self.output)


class Registration:
    """Whether the released module is registered in the prefix; None when a test may have changed it. Most
    tests take less time than to ask."""

    def __init__(self):
        self.is_there: bool | None = None

    def bring_about(self, host: "Notifyhost", is_there: bool) -> None:
        if self.is_there is not is_there:
            command = ["register"] if is_there else ["unregister", "--force"]
            assert host(*command).exit_code == 0
            self.is_there = is_there


REGISTRATION = Registration()


@dataclass
class Notifyhost:
    """The host program, in a folder and environment of its own."""
    program: pathlib.Path
    folder: pathlib.Path
    environment: dict[str, str]

    def __call__(self, *arguments, **environment) -> Outcome:
        # Into files: Wine gives the streams on to the programs that an alert starts, so that the end
        # of a pipe would come with the end of the last of those.
        with tempfile.TemporaryFile() as output, tempfile.TemporaryFile() as errors:
            with self.start(*arguments, output=output, errors=errors, **environment) as running:
                exit_code = running.wait(TIME_LIMIT)
            output.seek(0)
            errors.seek(0)
            return Outcome(exit_code, output.read().decode(), errors.read().decode())

    def start(self, *arguments, output, errors=None, **environment) -> "RunningHost":
        if not {"register", "unregister"}.isdisjoint(arguments):
            REGISTRATION.is_there = None
        return RunningHost([WINE, self.program, *arguments], cwd=self.folder,
                           env={**self.environment, **environment}, stdin=subprocess.DEVNULL,
                           stdout=output, stderr=errors or output)


class RunningHost(subprocess.Popen):
    """A run of the host that does not outlive its with block."""

    def __exit__(self, *exception):
        if self.poll() is None:
            self.kill()
        super().__exit__(*exception)


@pytest.fixture(scope="session")
def wine_environment():
    with given_or_own_prefix() as environment:
        yield environment


@pytest.fixture
def released_host(wine_environment, tmp_path):
    """The released host, with the module beside it."""
    return Notifyhost(HOST, tmp_path, wine_environment)


@pytest.fixture
def notifyhost(released_host):
    """The same with the module not registered."""
    REGISTRATION.bring_about(released_host, False)
    return released_host


@pytest.fixture
def registered(released_host):
    """The same with the module registered."""
    REGISTRATION.bring_about(released_host, True)
    return released_host


@pytest.fixture
def lone_host(wine_environment, tmp_path):
    """A copy of the host without a module beside it."""
    folder = tmp_path / "lone"
    folder.mkdir()
    return Notifyhost(shutil.copy(HOST, folder), tmp_path, wine_environment)


class DemoProgram:
    """A program for alerts to start, and its report of how it was started."""

    def __init__(self, folder: pathlib.Path):
        self.folder = folder / "started here"
        self.folder.mkdir()
        self.report = folder / "demo_report"
        self.awaited = folder / "demo_may_report"
        self.program = folder / "demo_program.exe"
        shutil.copy(DEMO_PROGRAM, self.program)
        self.instance = folder / "demo.ins"

    @property
    def environment(self) -> dict[str, str]:
        return {"DEMO_REPORT": windows_path(self.report)}

    def store(self, arguments: bytes) -> pathlib.Path:
        return write_instance(self.instance, windows_path(self.program).encode("cp1252"),
                              windows_path(self.folder).encode("cp1252"), arguments)

    def read_report(self) -> tuple[bytes, bytes]:
        """Command line and working directory, once the program has told them."""
        wait_until(self.report.exists)
        content = self.report.read_bytes()
        command_line, _, directory = content.rpartition(b"\nWorking directory: ")
        assert command_line.startswith(b"Command line: ") and directory.endswith(b"\n")
        return command_line.removeprefix(b"Command line: "), directory.removesuffix(b"\n")


@pytest.fixture
def demo_program(tmp_path):
    return DemoProgram(tmp_path)


class StandIn:
    """The stand-in module and its trace of the host's calls."""

    def __init__(self, folder: pathlib.Path):
        self.trace_file = folder / "stand_in_trace"
        self.file = windows_path(STAND_IN_MODULE)

    @property
    def environment(self) -> dict[str, str]:
        return {"STAND_IN_TRACE": windows_path(self.trace_file)}

    def trace(self) -> list[str]:
        return self.trace_file.read_text().splitlines()


@pytest.fixture
def stand_in(tmp_path):
    return StandIn(tmp_path)


def write_instance(path: pathlib.Path, *texts: bytes) -> pathlib.Path:
    """Stores a LaunchProgram instance: program filename, working path, program arguments."""
    fields = b"".join((len(text) + 1).to_bytes(4, "little") + text + b"\0" for text in texts)
    path.write_bytes(LAUNCH_PROGRAM_MAGIC + fields)
    return path
