"""What the suites have in common that run Windows programs: where these are, and how they run."""

import contextlib
import json
import os
import pathlib
import re
import shutil
import subprocess
import tempfile
import time
import uuid
from dataclasses import dataclass

ROOT = pathlib.Path(__file__).resolve().parent.parent
WINE = ROOT / "tools" / "wine"
# The suites are run for 64-bit Windows where the environment says so, which tools/wine understands too.
BITS = int(os.environ.get("BRANTEL_BITS", "32"))
PRESET = f"win{BITS}"
BUILD = ROOT / "build" / PRESET
TEST_PROGRAMS = ROOT / "build" / f"{PRESET}-tests" / "tests"
RELEASE = ROOT / "out" / PRESET
TOOLCHAIN = {32: "mingw_i686.cmake", 64: "mingw_x86_64.cmake"}[BITS]
HOST = RELEASE / "notifyhost.exe"
MODULE = RELEASE / "Brantel_Notifications.dll"
VERSION = re.search(r"^project\(\w+ VERSION (\d+\.\d+\.\d+) ", (ROOT / "CMakeLists.txt").read_text(), re.M)[1]
DRIVER = TEST_PROGRAMS / "desktop" / "notifier_driver.exe"

# Named by itself alone, a program is looked for by another one, which takes longer than this does.
REG = r"C:\windows\system32\reg.exe"

# Seconds within which a program ends or does what is expected of it: far more than it takes, so that only
# a hang reaches it.
TIME_LIMIT = 600


def windows_path(path) -> str:
    """What tools/wine --path prints, without a thousand processes that do so."""
    parts = [part for part in os.path.join(os.getcwd(), path).split("/") if part not in ("", ".")]
    return "Z:\\" + "\\".join(parts)


def build_examples(folder: pathlib.Path, target: str = "all") -> tuple[pathlib.Path, pathlib.Path]:
    """The folder of what hosts of one's own are made with, as it is packed, and the one of its examples, built
    from there as anybody would: all, or the one that is needed."""
    package, programs = folder / "package", folder / "programs"
    steps = [
        ["--install", BUILD, "--component", "sdk", "--prefix", package],
        ["-S", package / "examples", "-B", programs, "-G", "Ninja",
         f"-DCMAKE_TOOLCHAIN_FILE={ROOT / 'cmake' / TOOLCHAIN}", "-DBRANTEL_THREAD_MODEL=win32",
         f"-DBrantelNotifications_DIR={package / 'lib' / 'cmake' / 'BrantelNotifications'}",
         "-DCMAKE_CXX_FLAGS=-Wall -Wextra -Werror", "-DCMAKE_C_FLAGS=-Wall -Wextra -Werror",
         "-DCMAKE_EXE_LINKER_FLAGS=-static"],
        ["--build", programs, "--target", target],
    ]
    for step in steps:
        subprocess.run(["cmake", *step], check=True, stdout=subprocess.DEVNULL, timeout=TIME_LIMIT)
    return package, programs


def wait_until(condition):
    """Waits for the condition to hold, and returns its result."""
    deadline = time.monotonic() + TIME_LIMIT
    while not (result := condition()):
        assert time.monotonic() < deadline, "it does not come about"
        time.sleep(0.01)
    return result


def environment_of_wine(**variables: str) -> dict[str, str]:
    """The surroundings in which the ANSI code page is 1252 and Wine says nothing."""
    return {**os.environ, "LC_ALL": "C.UTF-8", "WINEDEBUG": "-all", **variables}


def end_all(processes: list[subprocess.Popen]) -> None:
    """Ends those of the processes that run still, and waits for all."""
    for process in processes:
        if process.poll() is None:
            process.kill()
        process.wait(TIME_LIMIT)


def store_in_registry(environment: dict[str, str], key: str, name: str, text: str) -> None:
    subprocess.run([WINE, REG, "add", key, "/v", name, "/d", text, "/f"], env=environment,
                   stdin=subprocess.DEVNULL, capture_output=True, check=True, timeout=TIME_LIMIT)


@dataclass
class WinePrefix:
    """A Windows to itself. What tests make may lie in the folder beside the prefix."""
    folder: pathlib.Path
    environment: dict[str, str]

    @property
    def drive(self) -> pathlib.Path:
        return self.folder / "prefix" / "drive_c"

    @property
    def system_directory(self) -> pathlib.Path:
        return self.drive / "windows" / "system32"

    def put_library(self, library: pathlib.Path, name: str = "") -> None:
        """In the place of Wine's own, which is not written over: it may be one for many prefixes."""
        target = self.system_directory / (name or library.name)
        target.unlink(missing_ok=True)
        shutil.copy(library, target)

    def run(self, *command, variables: dict[str, str] | None = None, **options) -> subprocess.CompletedProcess:
        """A program to its end, with these variables in its environment."""
        return subprocess.run([WINE, *command], env={**self.environment, **(variables or {})},
                              stdin=subprocess.DEVNULL, timeout=TIME_LIMIT, **options)

    def store(self, key: str, name: str, text: str) -> None:
        store_in_registry(self.environment, key, name, text)

    def shut_down(self) -> None:
        """Ends what runs in it. All of the registry is on the disk then, and it starts anew with the next program."""
        for option in ("-k", "-w"):
            self.run("--server", option, capture_output=True)


@contextlib.contextmanager
def wine_prefix(kind: type[WinePrefix] = WinePrefix, **variables: str):
    """A Wine prefix in a folder of its own."""
    folder = pathlib.Path(tempfile.mkdtemp(prefix="brantel_test_"))
    prefix = kind(folder, environment_of_wine(WINEPREFIX=str(folder / "prefix"), **variables))
    try:
        yield prefix
    finally:
        prefix.shut_down()
        shutil.rmtree(folder, ignore_errors=True)


@contextlib.contextmanager
def given_or_own_prefix(**variables: str):
    """The environment with the prefix that WINEPREFIX names, or else with one of its own."""
    if "WINEPREFIX" in os.environ:
        yield environment_of_wine(**variables)
    else:
        with wine_prefix(**variables) as prefix:
            yield prefix.environment


# What send tells beside the log: the phases, and at the end the verdict in words, how long it took, and what
# Send has answered, if that was not S_OK.
PHASE = re.compile(r"^ +[0-9]+\.[0-9] s  \S.*\n", re.MULTILINE)
VERDICT = re.compile(r"^.*; [0-9]+\.[0-9] s(?:; (?P<result>0x.*))?\n\Z", re.MULTILINE)


def _result_in_a_word(verdict: re.Match) -> str:
    result = verdict["result"]
    if result is None:
        return "Delivered.\n"
    return f"Failed: {result}\n" if result.startswith("0x8") else f"Delivered: {result}\n"


def log_and_result(output: str) -> str:
    """The notifier's own log of what send has told, and as its last line what Send has answered."""
    return VERDICT.sub(_result_in_a_word, PHASE.sub("", output))


def _magic(guid: str) -> bytes:
    return uuid.UUID(guid).bytes_le


# With what the instance files of each class begin.
INSTANCE_MAGICS = {
    "SMTPMail": _magic("D6DD268C-A32B-EF86-2683-A7DA9410F949"),
    "Sound": _magic("5D6A4051-7608-5DD6-F1D3-2CFEA0F80A9F"),
    "WinPopup": _magic("8B762C29-0B2E-9C58-6C92-5C2A021AFB08"),
    "LaunchProgram": _magic("ECEC7E6C-8E18-4CA2-C56F-5334C2BD7945"),
    "Beeper": _magic("E546F481-983D-5A7E-610B-E80BF158F22E"),
    "Pager": _magic("CF05540D-534F-164B-BD02-D12A35BF0840"),
    "Voice": _magic("C4F822F8-1890-08CD-6842-1838A3A78A26"),
}


def instance_text(text: str | bytes) -> bytes:
    """A text as instance files have it."""
    stored = (text if isinstance(text, bytes) else text.encode("cp1252")) + b"\0"
    return len(stored).to_bytes(4, "little") + stored


def instance_integer(number: int) -> bytes:
    """A number as instance files have it."""
    return number.to_bytes(4, "little", signed=True)


def plan_item_that_is_down(name: str) -> str:
    """A table of a plan of a watch, to which lines may be added. Nothing ever answers there."""
    return f"""
[[items]]
name = "{name}"
address = "127.0.0.1"
probe = "tcp"
port = 1
interval = "1s"
timeout = "500ms"
down_after = 1
"""


@dataclass(frozen=True)
class PreviewPart:
    """A thing that an alert would send, as the host tells of it."""
    what: str
    words: str
    bytes: bytes


def preview(instance, *options: str, environment: dict[str, str], folder=None) -> list[PreviewPart]:
    """What the host says that an alert of this instance would send, without the time that it takes."""
    done = subprocess.run([WINE, HOST, "preview", instance, *options, "--raw-values", "--json", "--show-secrets"],
                          env=environment, cwd=folder, stdin=subprocess.DEVNULL, capture_output=True,
                          timeout=TIME_LIMIT)
    assert (done.returncode, done.stderr) == (0, b"")
    parts = [json.loads(line) for line in done.stdout.decode().splitlines()]
    assert parts.pop()["part"] == "time"
    return [PreviewPart(part["part"], part["words"], bytes.fromhex(part["bytes"])) for part in parts]


@dataclass
class Driver:
    """A running notifier_driver, which holds a notifier of one class."""
    process: subprocess.Popen

    def __call__(self, *words) -> str:
        self.process.stdin.write("\t".join(map(str, words)) + "\n")
        self.process.stdin.flush()
        answer = self.process.stdout.readline().rstrip("\r\n")
        assert answer, "the driver has ended"
        return answer


@contextlib.contextmanager
def running_driver(notifier_class: str, environment: dict[str, str], folder=None):
    process = subprocess.Popen([WINE, DRIVER, notifier_class], text=True, env=environment, cwd=folder,
                               stdin=subprocess.PIPE, stdout=subprocess.PIPE)
    try:
        yield Driver(process)
        process.communicate(timeout=TIME_LIMIT)
        assert process.returncode == 0
    finally:
        process.kill()
