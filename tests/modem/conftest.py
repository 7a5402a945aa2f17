"""Calls beepers and paging centres through the real module, on real pseudo-terminals with a simulated
modem behind each.

Everything runs in a Wine prefix of the suite's own: which port leads where is read when its server
starts. A call takes as long as its waits, so the calls of several tests go on at the same time, each
on a port of its own.
"""

import ast
import concurrent.futures
import itertools
import os
import pathlib
import pty
import re
import subprocess
from dataclasses import dataclass, field

import pytest

from windows_programs import (HOST, INSTANCE_MAGICS, MODULE, REG, ROOT, TIME_LIMIT, WINE, PreviewPart,
                              WinePrefix, instance_integer, instance_text, log_and_result, preview, wait_until,
                              wine_prefix)

MODEMSIM = ROOT / "build" / "sanitize" / "sim" / "modemsim"

BEEPER_MAGIC = INSTANCE_MAGICS["Beeper"]
PAGER_MAGIC = INSTANCE_MAGICS["Pager"]
SETTINGS_KEY = r"HKEY_LOCAL_MACHINE\SOFTWARE\Brantel\Vantrel\notification"

DELIVERED = "Delivered."
FAILED = "Failed: 0x80004005 (E_FAIL)"

# What is sent in a row, to pagers with and without letters.
TEXTS_IN_A_ROW = [f"alert {number} of 10" for number in range(1, 11)]
DIGITS_IN_A_ROW = [str(number) for number in range(71, 81)]

# The ports that lead to a modem when a test connects one. Behind them come those of the machine; COM77 is
# none.
PORTS = range(1, 60)


class Modem:
    """A simulated modem. Its transcript is a line for each event: the time, who, what."""

    def __init__(self, link: pathlib.Path, *options: str):
        self.link = link
        self.com_port = link.name.replace("port", "COM")
        self.transcript_file = link.with_name(f"{link.name}.transcript")
        with self.transcript_file.open("w") as output:
            self.process = subprocess.Popen([MODEMSIM, "--link", link, *options],
                                            stdin=subprocess.DEVNULL, stdout=output,
                                            stderr=subprocess.STDOUT)
        wait_until(lambda: "modem  is at" in self.transcript_file.read_text())

    def events(self) -> list[tuple[float, str, str]]:
        events = []
        for line in self.transcript_file.read_text().splitlines():
            moment, who, what = line.split(maxsplit=2)
            events.append((float(moment), who, what))
        return events

    def said(self, who: str) -> list[str]:
        return [what for _, speaker, what in self.events() if speaker == who]

    def received(self) -> bytes:
        """All that hosts have sent. Transcripts show bytes as Python does."""
        return b"".join(map(ast.literal_eval, ("b" + said for said in self.said("host"))))

    def losses_of_dtr(self) -> int:
        """How often a host that had sent something has closed the port."""
        return self.said("modem").count("loses DTR")

    def time_of(self, who: str, what: str) -> float:
        return next(moment for moment, *event in self.events() if event == [who, what])

    def end(self) -> None:
        self.process.terminate()
        self.process.wait(TIME_LIMIT)


@dataclass
class Call:
    """A run of the host that sends one alert, under way or over. Line ends are as they came."""
    process: subprocess.Popen
    output_file: pathlib.Path
    modem: Modem | None
    instance: pathlib.Path
    options: tuple[str, ...]

    def output(self) -> str:
        return log_and_result(self.output_file.read_text())

    def told(self) -> list[str]:
        """What send has told beside the log: its phases and its verdict, without the times."""
        lines = self.output_file.read_text().splitlines()
        phases = [match[1] for line in lines if (match := re.fullmatch(r" +[0-9]+\.[0-9] s  (\S.*)", line))]
        return [*phases, re.sub(r"; [0-9]+\.[0-9] s(?=$|;)", "", lines[-1])]

    def end(self) -> "Call":
        self.process.wait(TIME_LIMIT)
        return self

    def log(self) -> list[str]:
        """The log from the first line behind those that say what is sent."""
        return self.output().partition("Sending...\n")[2].splitlines()


@dataclass
class Switchboard(WinePrefix):
    """Has ports, and what is connected to them."""
    free_ports: itertools.count = field(default_factory=lambda: itertools.count(PORTS[0]))
    free_names: itertools.count = field(default_factory=itertools.count)
    calls: list[Call] = field(default_factory=list)
    modems: list[Modem] = field(default_factory=list)

    def link(self, port: int) -> pathlib.Path:
        return self.folder / f"port{port}"

    def import_registry(self, values: dict[str, dict[str, str]]) -> None:
        lines = ["REGEDIT4"]
        for key, texts in values.items():
            lines += ["", f"[{key}]"]
            lines += ['"{}"="{}"'.format(name, text.replace("\\", "\\\\")) for name, text in texts.items()]
        file = self.folder / "values.reg"
        file.write_text("\r\n".join(lines) + "\r\n")
        self.run(REG, "import", file.name, cwd=self.folder, check=True, capture_output=True)

    def connect_modem(self, *options: str) -> tuple[int, Modem]:
        port = next(self.free_ports)
        assert port in PORTS
        return port, self.start_modem(self.link(port), *options)

    def start_modem(self, link: pathlib.Path, *options: str) -> Modem:
        modem = Modem(link, *options)
        self.modems.append(modem)
        return modem

    def start_call(self, *options: str, number="5550100", profile=0, event="item-down", text="77",
                   dial="ATDT%s", timeout="0", modem=(), com_port=None, **settings: str) -> Call:
        """Sends an alert through a modem with the options `modem`, or to a port that has none when
        `com_port` says so. Further settings by their names without "Settings_"."""
        connected = None
        if com_port is None:
            port, connected = self.connect_modem(*modem)
            com_port = f"COM{port}"
        self.store_settings("Beeper", profile,
                            {"COMPort": com_port, "DialString": dial, "Timeout": timeout, "Baud": "",
                             "ModemString": "", **settings})
        instance = self.store_beeper(number, profile)
        call = self.start_host("Beeper", instance, connected, *options, "--event", event,
                               "--set", f"C={text}")
        return wait_for_settings(call, "Sending...\n")

    def start_page(self, protocol: str, number: str, text: str, pager_id="0041791234567", password="",
                   profile=0, modem: Modem | None = None, options=(), **settings: str) -> Call:
        """Sends a page to a paging centre, through a modem of its own unless one is given. Settings by
        their names without "Settings_"."""
        if modem is None:
            _, modem = self.connect_modem()
        self.store_settings("Pager", profile, {"COMPort": modem.com_port, "Baud": "", "ModemString": "",
                                               "8N1": "", **settings})
        instance = self.store_pager(protocol, number, pager_id, password, profile)
        call = self.start_host("Pager", instance, modem, "--set", f"C={text}", *options)
        return wait_for_settings(call, "Sending message to ")

    def store_beeper(self, number: str, profile: int) -> pathlib.Path:
        return self.store_instance(BEEPER_MAGIC, [number, "unused", "111", "222", "333", "report"], profile)

    def store_pager(self, protocol: str, number: str, pager_id="0041791234567", password="",
                    profile=0) -> pathlib.Path:
        return self.store_instance(PAGER_MAGIC, [number, password, pager_id, "%C", protocol], profile)

    def store_instance(self, class_magic: bytes, texts: list[str], profile: int) -> pathlib.Path:
        path = self.folder / f"instance{next(self.free_names)}"
        path.write_bytes(class_magic + b"".join(map(instance_text, texts)) + instance_integer(profile))
        return path

    def store_settings(self, notifier_class: str, profile: int, settings: dict[str, str]) -> None:
        key = f"{SETTINGS_KEY}\\{notifier_class}" + (f"\\{profile:02}" if profile else "")
        self.import_registry({key: {f"Settings_{name}": text for name, text in settings.items()}})

    def start_host(self, notifier_class: str, instance: pathlib.Path, modem: Modem | None,
                   *options: str) -> Call:
        """What is sent is the test's own: none of it is to be made harmless."""
        output_file = self.folder / f"output{next(self.free_names)}"
        with output_file.open("w") as output:
            process = subprocess.Popen(
                [WINE, HOST, "--module", MODULE, "send", notifier_class, instance.name,
                 "--raw-values", *options],
                cwd=self.folder, env=self.environment, stdin=subprocess.DEVNULL, stdout=output,
                stderr=subprocess.STDOUT)
        call = Call(process, output_file, modem, instance, options)
        self.calls.append(call)
        return call

    def preview(self, call: Call) -> list[PreviewPart]:
        """What the host says of the same alert, by the settings as they are now."""
        return preview(call.instance.name, *call.options, environment=self.environment, folder=self.folder)

    def close(self) -> None:
        for call in self.calls:
            if call.process.poll() is None:
                call.process.kill()
            call.process.wait(TIME_LIMIT)
        for modem in self.modems:
            modem.end()


def wait_for_settings(call: Call, logged: str) -> Call:
    """Waits until a call has logged that, and so has read its settings: those of the next call can
    then be stored."""
    wait_until(lambda: logged in call.output() or call.process.poll() is not None)
    return call


def send_in_a_row(board: Switchboard, notifier_class: str, modem: Modem, instance: pathlib.Path,
                  texts: list[str], *options: str) -> tuple[Modem, list[Call]]:
    """Sends one alert after the other, until one is not delivered."""
    calls = []
    for text in texts:
        calls.append(board.start_host(notifier_class, instance, modem, "--set", f"C={text}", *options).end())
        if calls[-1].process.returncode != 0:
            break
        wait_until(lambda: modem.losses_of_dtr() == len(calls))
    return modem, calls


@pytest.fixture(scope="session")
def rows(switchboard):
    """The futures of rows of alerts, each through one modem."""
    def start(notifier_class, profile, instance, texts, *options, **settings):
        _, modem = switchboard.connect_modem()
        switchboard.store_settings(notifier_class, profile, {"COMPort": modem.com_port, **settings})
        return executor.submit(send_in_a_row, switchboard, notifier_class, modem, instance, texts, *options)

    centres = {"TAP": "5550200", "SMS-TAP": "5550200", "UCP-SMS": "5550400", "NTT": "5550610"}
    with concurrent.futures.ThreadPoolExecutor(len(centres) + 1) as executor:
        rows = {"Beeper": start("Beeper", 3, switchboard.store_beeper("5550100", 3), DIGITS_IN_A_ROW,
                                "--event", "item-down", DialString="ATDT%s,%s#", Timeout="2000")}
        for profile, (protocol, number) in enumerate(centres.items(), start=3):
            instance = switchboard.store_pager(protocol, number, profile=profile)
            rows[protocol] = start("Pager", profile, instance, TEXTS_IN_A_ROW)
        yield rows
        switchboard.close()  # or a test that failed would be waited for


@pytest.fixture(scope="session")
def calls_of_modules(request, switchboard):
    """The calls by name that each module's start_calls has started. Those of all go on at the same time,
    or the waits of one would be those of all."""
    modules = dict.fromkeys(item.module for item in request.session.items)
    return {module: module.start_calls(switchboard) for module in modules if hasattr(module, "start_calls")}


@pytest.fixture
def calls(request, calls_of_modules):
    return calls_of_modules[request.module]


@pytest.fixture
def finished(calls):
    return lambda name: calls[name].end()


def pytest_collection_modifyitems(items):
    """The tests of the rows come last, when these have gone on beside the others."""
    items.sort(key=lambda item: "rows" in item.fixturenames)


@pytest.fixture(scope="session", autouse=True)
def rows_under_way(request):
    if any("rows" in item.fixturenames for item in request.session.items):
        request.getfixturevalue("rows")


@pytest.fixture(scope="session")
def switchboard():
    with wine_prefix(Switchboard) as board:
        # Wine takes a port for one only when there is a terminal behind it as its server starts.
        placeholders = pty.openpty()
        for port in PORTS:
            board.link(port).symlink_to(os.ttyname(placeholders[1]))
        try:
            board.import_registry({r"HKEY_LOCAL_MACHINE\Software\Wine\Ports": {
                f"COM{port}": str(board.link(port)) for port in PORTS}})
            board.shut_down()
            yield board
        finally:
            board.close()
            for descriptor in placeholders:
                os.close(descriptor)
