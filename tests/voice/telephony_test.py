"""Which telephony is used, and what becomes of a host where there is none that will do."""

import shutil
import subprocess

import pytest

from conftest import EXCHANGE
from windows_programs import HOST, TIME_LIMIT, WINE, windows_path

NOT_BOUND = ["notifyhost: Voice could not be initialised: 0x80004005 (E_FAIL)"]

ENTRY_POINTS = ["lineInitialize", "lineNegotiateAPIVersion", "lineGetDevCapsA", "lineOpenA",
                "lineGetIDA", "lineClose", "lineShutdown"]


def test_without_the_library_no_host_is_bound(telephone):
    telephone.machine.telephony.unlink()
    call = telephone.call()

    assert call.log() == NOT_BOUND
    assert telephone.transcript() == []


@pytest.mark.parametrize("name", ENTRY_POINTS)
def test_without_an_entry_point_no_host_is_bound(telephone, name):
    content = EXCHANGE.read_bytes()
    # Another name of the same length, with which the table of names stays in its order.
    other = name[:-1] + chr(ord(name[-1]) + 1)
    assert f"\0{name}\0".encode() in content
    telephone.machine.telephony.write_bytes(
        content.replace(f"\0{name}\0".encode(), f"\0{other}\0".encode()))
    assert telephone.call().log() == NOT_BOUND


@pytest.mark.parametrize("script", [
    "fails lineInitialize 0x80000052",
    "line media-modes 0x4",
    "line negotiation-error 0x80000042",
    "line version 0x00060000",
    "line capabilities-error 0x80000048",
    "fails lineOpen 0x80000001",
    "fails lineGetID 0x80000048",
    "fails lineClose 0x80000048",
], ids=lambda script: script.replace(" ", "_"))
def test_without_a_usable_line_no_host_is_bound(telephone, driver, script):
    telephone.script(script)
    assert driver("initialize") == "result 80004005"
    assert driver("references") == "references 0"
    assert driver("log") == "log 0"
    # Each binding tries anew.
    telephone.transcript_file.write_text("")
    assert driver("initialize") == "result 80004005"
    assert "module lineInitialize" in telephone.transcript()


@pytest.mark.parametrize("function", ["lineGetDevCaps", "lineGetID"])
def test_a_driver_that_never_has_room_enough_is_given_up(telephone, driver, function):
    telephone.script(f"never-enough {function}")
    assert driver("initialize") == "result 80004005"
    asked = [line for line in telephone.transcript() if line.startswith(f"module {function}")]
    assert 1 < len(asked) < 10
    assert telephone.transcript()[-1] == "module lineShutdown"


def test_where_no_lines_are_counted_device_0_is_used(telephone, driver):
    telephone.script("no-lines")
    assert driver("initialize") == "result 00000000"
    assert "module lineOpen 0 media modes 0x8 privileges 0x4" in telephone.transcript()


def test_a_line_that_was_found_is_not_looked_for_again(telephone, driver):
    telephone.make_wave("repeat.wav", 0.2)
    instance = windows_path(telephone.folder / telephone.store())

    assert driver("initialize") == "result 00000000"
    # One for the object and one for the log of all calls.
    assert driver("references") == "references 2"
    assert driver("send", instance) == "result 80004005"
    told = driver("log")
    assert told != "log 0"
    assert driver("shutdown") == "result 00000000"
    assert driver("references") == "references 0"

    before = telephone.transcript().count("module lineInitialize")
    assert before == 2
    assert driver("initialize") == "result 00000000"
    assert telephone.transcript().count("module lineInitialize") == before
    assert driver("send", instance) == "result 80004005"
    assert telephone.transcript().count("module lineInitialize") == before + 1
    # The host is told nothing of that call.
    assert driver("log") == told
    assert driver("references") == "references 1"
    assert driver("shutdown") == "result 00000000"
    assert driver("references") == "references 0"


@pytest.fixture
def decoys(telephone):
    """Libraries of the same name beside the host, in the current directory and on the path."""
    host_folder = telephone.folder / "host"
    host_folder.mkdir()
    path_folder = telephone.folder / "path"
    path_folder.mkdir()
    shutil.copy(HOST, host_folder)
    for folder in (host_folder, telephone.folder, path_folder):
        shutil.copy(EXCHANGE, folder / "tapi32.dll")
    environment = {**telephone.environment, "WINEPATH": windows_path(path_folder)}
    return {"host": host_folder / HOST.name, "environment": environment, "count": -1}


def test_a_library_of_the_same_name_elsewhere_is_never_loaded(telephone, decoys):
    call = telephone.call(**decoys)

    assert call.log()[-1] == "Failed: 0x80004005 (E_FAIL)"
    assert [line for line in telephone.transcript() if line.startswith("line is served by")] == [
        r"line is served by C:\windows\system32\TAPI32.DLL"]


def test_nor_where_the_system_has_none(telephone, decoys):
    telephone.machine.telephony.unlink()
    assert telephone.call(**decoys).log() == NOT_BOUND
    assert telephone.transcript() == []


def test_the_decoys_are_loaded_by_who_asks_for_the_name_alone(telephone, decoys):
    """Otherwise the two tests above would show nothing."""
    telephone.machine.telephony.unlink()
    elsewhere = telephone.folder / "elsewhere"
    elsewhere.mkdir()

    def loads(folder, environment) -> bool:
        # This program loads the library, and then misses a function in it (4), or does not load it (3).
        exit_code = subprocess.run([WINE, "regsvr32", "/s", "tapi32.dll"], env=environment,
                                   cwd=folder, capture_output=True, timeout=TIME_LIMIT).returncode
        assert exit_code in (3, 4)
        return exit_code == 4

    assert loads(telephone.folder, telephone.environment)
    assert loads(elsewhere, decoys["environment"])
    assert not loads(elsewhere, telephone.environment)
