"""doctor asks modems whether they are there, and has nobody called."""

import json
import subprocess

from windows_programs import HOST, TIME_LIMIT, WINE

PROFILE = 9


def findings(switchboard, com_port: str) -> list[str]:
    """What is found of a page through the modem on that port."""
    switchboard.store_settings("Pager", PROFILE, {"COMPort": com_port})
    instance = switchboard.store_pager("TAP", "5550201", profile=PROFILE)
    outcome = subprocess.run([WINE, HOST, "doctor", instance.name, "--online", "--json"],
                             env=switchboard.environment, cwd=switchboard.folder, capture_output=True,
                             timeout=TIME_LIMIT)
    record = json.loads(outcome.stdout.splitlines()[-1])
    return [finding["rule"] for finding in record["findings"]]


def test_modem_that_answers(switchboard):
    _, modem = switchboard.connect_modem()
    assert findings(switchboard, modem.com_port) == []
    assert modem.said("host") == ['"AT\\r"']


def test_port_without_a_modem(switchboard):
    assert findings(switchboard, "COM77") == ["port-there"]
