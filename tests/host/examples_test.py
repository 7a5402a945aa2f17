"""What hosts of one's own are made with: the examples, built from what is packed, and the descriptions of the
contract."""

import re
import subprocess
import sys

import pytest

from conftest import WINE
from windows_programs import HOST, TIME_LIMIT, build_examples, windows_path

INTERFACES = ["INotifier", "INotifierConfig", "INotifierWebConfig", "INotifierHost"]


@pytest.fixture(scope="module")
def built(tmp_path_factory):
    return build_examples(tmp_path_factory.mktemp("examples"))


@pytest.fixture
def run(registered, built, demo_program):
    """Runs one of the examples."""
    def run(program, *arguments):
        with open(registered.folder / "told", "w+b") as told:
            done = subprocess.run([WINE, built[1] / f"{program}.exe", *arguments], cwd=registered.folder,
                                  env={**registered.environment, **demo_program.environment},
                                  stdin=subprocess.DEVNULL, stdout=told, stderr=told, timeout=TIME_LIMIT)
            told.seek(0)
            return done.returncode, told.read().decode().replace("\r", "")
    return run


@pytest.mark.parametrize("program, device", [("minimal_host", b"router7"), ("minimal_host_c", b"%n")])
def test_minimal_hosts(run, demo_program, program, device):
    instance = windows_path(demo_program.store(b'--device "%n"'))
    assert run(program, "LaunchProgram", instance) == (0, "\nSent: 0x00000000\n")
    command_line, _ = demo_program.read_report()
    assert command_line.endswith(b' --device "' + device + b'"')
    code, told = run(program, "LaunchProgram", "nowhere")
    assert (code, told.splitlines()[-1]) == (1, "Failed: 0x80004005")
    assert "nowhere - Failed to load notification from disk." in told
    assert run(program, "Fax", instance)[0] == 1
    assert run(program)[0] == 2


def test_minimal_host_is_minimal(built):
    assert len((built[0] / "examples" / "minimal_host.cpp").read_text().splitlines()) <= 80


def test_worker_host(run, demo_program):
    instance = windows_path(demo_program.store(b""))
    assert run("worker_host", "30", "LaunchProgram", instance) == (0, f"\n{instance}: 0x00000000\n")
    code, told = run("worker_host", "30", "LaunchProgram", "nowhere", instance)
    assert code == 1
    assert told.endswith(f"\nnowhere: 0x80004005\n\n{instance}: 0x00000000\n")
    assert run("worker_host", "soon", "LaunchProgram", instance)[0] == 2


def test_escalation(registered, built, demo_program):
    instance = windows_path(demo_program.store(b'--device "%n"'))

    def escalate(*files):
        done = subprocess.run([sys.executable, built[0] / "examples" / "escalate.py", WINE, HOST, "--",
                               "router7", *files], cwd=registered.folder, stdout=subprocess.PIPE,
                              env={**registered.environment, **demo_program.environment}, timeout=TIME_LIMIT)
        return done.returncode, done.stdout.decode()

    broken = registered.folder / "broken"
    broken.write_bytes(demo_program.instance.read_bytes().replace(b"demo_program.exe", b"none_program.exe"))
    code, told = escalate("nowhere", windows_path(broken), instance)
    assert code == 0
    assert re.fullmatch("broken: not delivered: .*\ndemo.ins: the program was started; .*\n", told)
    assert demo_program.read_report()[0].endswith(b'--device "router7"')
    assert escalate("nowhere")[0] == 1


def interfaces(text: str, pattern: str) -> dict[str, list[str]]:
    """The methods of each interface in their order."""
    return {name: re.findall(r"HRESULT (?:STDMETHODCALLTYPE )?(\w+)\(", body)
            for name, body in re.findall(pattern, text, re.S) if name in INTERFACES}


def test_the_descriptions_are_of_one_contract(built):
    header = (built[0] / "include" / "brantel" / "notifier_contract.h").read_text()
    idl = (built[0] / "idl" / "notifier_contract.idl").read_text()
    in_header = interfaces(header, r"struct (\w+) : IUnknown {(.*?)\n};")
    assert list(in_header) == INTERFACES
    assert interfaces(idl, r"interface (\w+) : IUnknown\n{(.*?)\n}") == in_header
    for name in INTERFACES:
        [numbers] = re.findall(rf"IID_{name} = {{(.*?)}}}};", header, re.S)
        digits = "".join(re.findall(r"0x(\w+)", numbers)).lower()
        [uuid] = re.findall(rf"uuid\(([0-9a-f-]+)\)[^]]*\]\ninterface {name} :", idl)
        assert uuid.replace("-", "") == digits


def test_the_type_library_is_made(built):
    assert (built[0] / "idl" / "notifier_contract.tlb").read_bytes().startswith(b"MSFT")
