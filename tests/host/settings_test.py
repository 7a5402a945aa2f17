"""settings and ports: what is kept in the registry."""

import json

import pytest


@pytest.fixture
def settings(released_host):
    run = lambda *arguments: released_host("settings", *arguments)
    yield run
    run("reset", "Pager", "--profile", "7")


def test_settings_are_stored_and_taken_out(settings):
    outcome = settings("set", "Pager", "--profile", "7", "com_port=x")
    assert outcome.exit_code == 2
    outcome = settings("set", "Pager", "Settings_COMPort=COM77", "baud=9600", "--profile", "7")
    assert outcome.exit_code == 2
    assert "Settings_COMPort 'COM77' is a port that this computer does not have; " in outcome.errors
    outcome = settings("set", "Pager", "comport=COM77", "baud=9600", "--profile", "7", "--no-check")
    assert (outcome.exit_code, outcome.errors) == (0, "")
    assert outcome.output == "Stored 2 settings of Pager, profile 7.\n"

    outcome = settings("get", "Pager", "baud", "--profile", "7")
    assert (outcome.exit_code, outcome.output) == (0, "9600\n")
    assert settings("get", "Pager", "ModemString", "--profile", "7").output == "ATE0Q0V1X4\n"
    listed = [json.loads(line)
              for line in settings("list", "Pager", "--profile", "7", "--json").output.splitlines()]
    assert [(row["setting"], row["value"], row["origin"]) for row in listed] == [
        ("Settings_COMPort", "COM77", "registry"), ("Settings_Baud", "9600", "registry"),
        ("Settings_ModemString", "ATE0Q0V1X4", "default"), ("Settings_8N1", "0", "default")]

    outcome = settings("reset", "Pager", "--profile", "7")
    assert (outcome.exit_code, outcome.output) == (0, "Took 2 settings of Pager, profile 7 out.\n")
    assert settings("reset", "Pager", "--profile", "7").exit_code == 3


def test_export_is_imported(settings, tmp_path):
    assert settings("set", "Pager", "8N1=1", "--profile", "7").exit_code == 0
    exported = settings("export", "Pager", "--profile", "7")
    assert json.loads(exported.output) == {"class": "Pager", "settings": {"Settings_8N1": "1"}}
    (tmp_path / "pager.json").write_text(exported.output)
    assert settings("reset", "Pager", "--profile", "7").exit_code == 0
    outcome = settings("import", "Pager", "pager.json", "--profile", "7")
    assert (outcome.exit_code, outcome.errors) == (0, "")
    assert settings("export", "Pager", "--profile", "7").output == exported.output
    outcome = settings("import", "Beeper", "pager.json")
    assert outcome.exit_code == 2
    assert outcome.errors.startswith("notifyhost: FILE: is not of Beeper; ")


def test_class_without_settings(settings):
    outcome = settings("list", "Sound")
    assert (outcome.exit_code, outcome.output) == (2, "")
    assert outcome.errors == ("notifyhost: CLASS: Sound has no settings; those that have are SMTPMail, "
                              "Beeper and Pager\n")


def test_ports_name_the_profiles_that_use_them(released_host):
    outcome = released_host("ports", "--json")
    rows = {row["port"]: row for row in map(json.loads, outcome.output.splitlines())}
    assert outcome.exit_code == (0 if any(row["there"] for row in rows.values()) else 3)
    # The default of both classes.
    assert rows["COM1"]["profiles"] == "Beeper 0, Pager 0"
