"""--log-file and --event-log."""

import re

TIME = re.compile(r"^\d{4}-\d\d-\d\dT\d\d:\d\d:\d\d\.\d{3}[+-]\d\d:\d\d ", re.MULTILINE)


def test_log_file_has_what_is_told(notifyhost, stand_in, tmp_path):
    outcomes = [notifyhost("send", notifier_class, "x", "--module", stand_in.file, "--log-file", "log",
                           **stand_in.environment) for notifier_class in ("WinPopup", "SMTPMail")]
    told = "".join(outcome.output for outcome in outcomes)
    logged = (tmp_path / "log").read_text()
    assert len(TIME.findall(logged)) == told.count("\n")
    assert TIME.sub("", logged) == told


def test_log_file_has_errors(notifyhost, tmp_path):
    outcome = notifyhost("show", "nowhere", "--log-file", "log")
    assert outcome.exit_code == 1
    assert TIME.sub("", (tmp_path / "log").read_text()) == outcome.errors


def test_log_file_that_cannot_be_written_holds_nothing_back(notifyhost, stand_in):
    outcome = notifyhost("send", "WinPopup", "x", "--module", stand_in.file, "--log-file",
                         "nowhere\\log", **stand_in.environment)
    assert outcome.exit_code == 0
    assert outcome.errors.count("notifyhost: warning: the log file ") == 1
    assert " cannot be written: error 3, " in outcome.errors


def test_full_log_file_is_put_aside(notifyhost, tmp_path):
    log = tmp_path / "log"
    log.write_text("x" * 1_100_000 + "\n")
    assert notifyhost("classes", "--log-file", "log").exit_code == 0
    assert (tmp_path / "log.1").stat().st_size == 1_100_001
    assert log.read_text().count("\n") == notifyhost("classes").output.count("\n")


def test_event_log_gets_the_verdict(notifyhost, stand_in):
    """Wine keeps no event log; it tells its debugging output of what it is given."""
    delivered, failed = (
        notifyhost("send", notifier_class, "Night", "--module", stand_in.file, "--event-log",
                   WINEDEBUG="trace+eventlog,warn+eventlog,err+eventlog", **stand_in.environment)
        for notifier_class in ("WinPopup", "SMTPMail"))
    assert "WinPopup Night, item-down: the messenger service took the message" in delivered.errors
    assert "SMTPMail Night, item-down: " in failed.errors
