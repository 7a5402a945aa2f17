"""conformance: a good host keeps all rules, and each bad one breaks the one that it is meant to."""

import json

import pytest

from conftest import BUILD
from windows_programs import MODULE, windows_path

FOLDER = BUILD / "tests" / "host" / "tried_host"
TRIED_HOST = windows_path(FOLDER / "tried_host.dll")

CHECKS = ["interface", "identity", "unknown interface", "references", "texts", "words", "old text", "log text",
          "log", "event", "no event", "worker", "end"]

# By fault: the checks that it breaks, the rule of the first of them (none for COM's), and what is seen there.
FAULTS = {
    "no interface": (["interface"], 2, "QueryInterface answers 0x80004002 (E_NOINTERFACE)"),
    "no object": (["interface"], 2, "MakeNotifierHost answers 0x8007000E (E_OUTOFMEMORY)"),
    "null object": (["interface"], 2, "MakeNotifierHost stores no object"),
    "two identities": (["identity"], None, "it has two"),
    "any interface": (["unknown interface"], None, "it answers 0x00000000 (S_OK)"),
    "pointer left alone": (["unknown interface"], None, "it does not store null"),
    "no reference for a pointer": (["references"], None, "of QueryInterface 1 become 1"),
    "words lost": (["words", "worker"], 9, "of 'Night shift' becomes ''"),
    "no BSTR": (["texts", "words", "old text", "worker"], 9, "of a null text it leaves what is no BSTR"),
    "freed text left": (["texts", "words", "old text", "worker"], 9, "of a percent sign alone it leaves a text that it has freed"),
    "old text kept": (["old text"], 9, "the process has grown by"),
    "log text freed": (["log text", "worker"], 6, "it frees the text"),
    "log text changed": (["log text", "worker"], 6, "it changes the text"),
    "line break added": (["log"], 10, "the log is another behind the first 9 characters"),
    "line breaks dropped": (["log"], 10, "the log is another behind the first 16 characters"),
    "traps forgotten": (["event", "worker"], 11, "of the word 16 it stores 0"),
    "event of nothing": (["no event", "worker"], 11, "it answers 0x00000000 (S_OK)"),
    "other apartment": (["worker"], 4, "it answers 0x8001010E"),
    "one reference too many": (["end"], None, "MakeNotifierHost gives one, and behind its Release there are 1"),
    "exception": (["texts"], 12, "an exception left the object: 0xe06d7363"),
    "thrown": (["texts"], 12, "an exception left the object: 0x"),
    "crash": (["texts"], 9, "the process ended with 0xc0000005"),
    "end of the process": (["texts"], 9, "the process ended with 0x4d"),
}


def told(outcome) -> list[dict]:
    return [json.loads(line) for line in outcome.output.splitlines()]


def broken(checks: list[dict]) -> list[str]:
    return [check["check"] for check in checks if check["state"] == "broken"]


def test_good_host(lone_host):
    outcome = lone_host("conformance", TRIED_HOST)
    assert (outcome.exit_code, outcome.errors) == (0, "")
    *lines, _, end = outcome.output.splitlines()
    assert end == "0 broken"
    assert len(lines) == len(CHECKS) and all(line.startswith("kept       ") for line in lines)
    assert "kept       rule 9: ExpandMessage frees the text that it replaces" in lines

    checks = told(lone_host("conformance", TRIED_HOST, "--json"))
    assert [check["check"] for check in checks] == CHECKS
    assert {check["state"] for check in checks} == {"kept"}


def test_own_callback(lone_host):
    """What notifyhost asks of others it does itself."""
    outcome = lone_host("conformance", windows_path(FOLDER / "own_host.dll"), "--json")
    assert {check["state"] for check in told(outcome)} == {"kept"}


@pytest.mark.parametrize("fault", FAULTS)
def test_bad_host(lone_host, fault):
    names, rule, seen = FAULTS[fault]
    outcome = lone_host("conformance", TRIED_HOST, "--json", HOST_FAULT=fault)
    assert (outcome.exit_code, outcome.errors) == (1, "")
    checks = told(outcome)
    assert broken(checks) == names
    first = next(check for check in checks if check["state"] == "broken")
    assert first["rule"] == rule
    assert seen in first["seen"]


def test_what_follows_the_end_of_the_process_is_not_tried(lone_host):
    checks = told(lone_host("conformance", TRIED_HOST, "--json", HOST_FAULT="crash"))
    states = [check["state"] for check in checks]
    assert states == ["kept"] * 4 + ["broken"] + ["not tried"] * (len(CHECKS) - 5)


def test_object_that_lives_as_long_as_its_host(lone_host):
    """It may count nothing."""
    outcome = lone_host("conformance", TRIED_HOST, "--json", HOST_FAULT="without counting")
    assert outcome.exit_code == 0
    states = {check["check"]: check["state"] for check in told(outcome)}
    assert (states["references"], states["end"]) == ("not tried", "not tried")


def test_without_a_way_to_read_the_log(lone_host):
    outcome = lone_host("conformance", windows_path(FOLDER / "tried_host_without_log.dll"), "--json")
    assert outcome.exit_code == 0
    states = {check["check"]: check["state"] for check in told(outcome)}
    assert states.pop("log") == "not tried"
    assert set(states.values()) == {"kept"}


def test_what_is_no_host(lone_host, tmp_path):
    outcome = lone_host("conformance", "nowhere.dll")
    assert (outcome.exit_code, outcome.errors) == (
        1, f"notifyhost: there is no file {windows_path(tmp_path / 'nowhere.dll')}\n")
    outcome = lone_host("conformance", windows_path(MODULE))
    assert (outcome.exit_code, outcome.errors) == (
        1, f"notifyhost: {windows_path(MODULE)} does not export MakeNotifierHost\n")
    (tmp_path / "text.dll").write_text("no library")
    outcome = lone_host("conformance", "text.dll")
    assert outcome.exit_code == 1
    assert "text.dll cannot be loaded: " in outcome.errors
