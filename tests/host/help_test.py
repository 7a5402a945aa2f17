"""The help texts."""

import pytest

SEND_HELP = """\
Deliver an alert

Usage: notifyhost send [OPTIONS] CLASS FILE

Arguments:
  CLASS                 Notifier class; notifyhost classes lists them
  FILE                  Instance file of that class. With "" instead of one,
                        Sound ends the sound that it repeats

Options:
  -h,--help             Show this help
  --event EVENT         What happened: item-up, item-down, service-up,
                        service-down, trap, or a trigger word such as 3 or
                        0x10; none for no event. Without it: item-down
  --set LETTER=VALUE    Puts VALUE in the place of %LETTER in the alert's
                        texts; may be given for several letters. %% becomes
                        %, and variables without a value stay as they are
  --module FILE         Load this module file, registered or not. Without
                        it, send goes by the registered classes, and the
                        other commands take the module beside notifyhost

Examples:
  notifyhost send LaunchProgram C:\\Instances\\Restart.ins
  notifyhost send Beeper Night.ins --event service-up
  notifyhost send SMTPMail Office.ins --event trap --set n=Router --set C=17
  notifyhost send Sound "" --module Brantel_Notifications.dll
"""


@pytest.mark.parametrize("arguments", [["--help"], ["-h"], ["--help", "--module", "nowhere.dll"]])
def test_help_lists_the_commands(lone_host, arguments):
    outcome = lone_host(*arguments)
    assert (outcome.exit_code, outcome.errors) == (0, "")
    assert outcome.output.startswith(
        "notifyhost, the reference host of the Brantel_Notifications module\n\n"
        "Usage: notifyhost [OPTIONS] COMMAND [ARGUMENTS]\n")
    for command in ("classes", "register", "unregister", "send"):
        assert f"\n  {command}  " in outcome.output
    assert "\nExit codes: 0 delivered or done, 1 failed, 2 wrong usage\n" in outcome.output
    assert "\nExamples:\n  notifyhost register\n" in outcome.output


@pytest.mark.parametrize("command", ["classes", "register", "unregister"])
def test_each_command_has_help(lone_host, command):
    outcome = lone_host(command, "--help")
    assert (outcome.exit_code, outcome.errors) == (0, "")
    assert f"\nUsage: notifyhost {command} [OPTIONS]\n" in outcome.output
    assert f"\nExamples:\n  notifyhost {command}\n" in outcome.output


def test_help_of_send(lone_host):
    outcome = lone_host("send", "--help")
    assert (outcome.exit_code, outcome.output, outcome.errors) == (0, SEND_HELP, "")
