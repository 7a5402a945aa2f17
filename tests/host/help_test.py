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
  --raw-values          Put values of --set in as they are. Otherwise control
                        characters become blanks, a Beeper gets digits alone,
                        Voice nothing that makes a path, and a line of a lone
                        full stop does not end a mail
  --timeout SECONDS     End the alert when it has taken so many seconds, hang
                        up, and leave the port free. Without it: none, and a
                        busy number is dialled for ever. Ctrl-C does the same
  --timestamps          Begin each line of the log with the seconds since the
                        start
  --journal FILE        The journal of alerts. Without it:
                        notifyhost.journal in the directory of the instances,
                        or in the working directory where there is none
  --event-log           Also put what became of the alert into the event log
                        of Windows
  --show-secrets        Show passwords, which are hidden otherwise
  --json                Tell it as JSON for programs, an object a line, with
                        texts as they are
  --log-file FILE       Also write what is told to this file, with the time
                        before each line. One beyond a megabyte is put aside
  --module FILE         Load this module file, registered or not. Without
                        it, send, add and edit go by the registered classes,
                        and what is about the module takes the one beside
                        notifyhost

Examples:
  notifyhost send LaunchProgram C:\\Instances\\Restart.ins
  notifyhost send Beeper Night.ins --event service-up
  notifyhost send SMTPMail Office.ins --event trap --set n=Router --set C=17
  notifyhost send Sound "" --module Brantel_Notifications.dll
"""


NEW_HELP = """\
Write an instance without a dialog

Usage: notifyhost new [OPTIONS] CLASS FILE [FIELDS ...]

Arguments:
  CLASS                 Notifier class; notifyhost classes lists them
  FILE                  Instance file to write. Its name is the instance's,
                        without an extension
  FIELDS ...            FIELD=VALUE for each field that is not to be empty
                        or 0; notifyhost fields lists the fields of a class.
                        In a field's name letter case does not matter, and -
                        or _ may stand for blanks. Values are stored as they
                        are, line breaks too

Options:
  -h,--help             Show this help
  --force               Replace the file if it exists, whatever it holds
  --no-check            Write values also with which no alert would come to
                        anything
  --json                Tell it as JSON for programs, an object a line, with
                        texts as they are
  --log-file FILE       Also write what is told to this file, with the time
                        before each line. One beyond a megabyte is put aside

Examples:
  notifyhost new Beeper Night "beeper number=5551234" down-code=911
  notifyhost new Sound Default wave_filename=C:\\alarm.wav --force
"""


@pytest.mark.parametrize("arguments", [["--help"], ["-h"], ["--help", "--module", "nowhere.dll"]])
def test_help_lists_the_commands(lone_host, arguments):
    outcome = lone_host(*arguments)
    assert (outcome.exit_code, outcome.errors) == (0, "")
    assert outcome.output.startswith(
        "notifyhost, the reference host of the Brantel_Notifications module\n\n"
        "Usage: notifyhost [OPTIONS] COMMAND [ARGUMENTS]\n")
    for command in ("classes", "register", "unregister", "send", "add", "edit", "instances", "show",
                    "new", "fields", "status", "doctor", "set", "ports", "settings", "help", "test",
                    "history", "preview", "completion"):
        assert f"\n  {command}  " in outcome.output
    assert ("\nExit codes: 0 delivered or done, 1 failed, 2 wrong usage or invalid values,\n"
            "3 nothing matched\n") in outcome.output
    assert "\nExamples:\n  notifyhost register\n" in outcome.output


@pytest.mark.parametrize("command, arguments", [
    ("unregister", ""), ("edit", " CLASS DIR NAME"), ("doctor", " [PATH]"), ("preview", " FILE"),
    ("settings set", " CLASS [SETTINGS ...]"), ("test", " CLASS [FIELDS ...]"), ("history", " [DIR]"),
])
def test_each_command_has_help(lone_host, command, arguments):
    outcome = lone_host(*command.split(), "--help")
    assert (outcome.exit_code, outcome.errors) == (0, "")
    assert f"\nUsage: notifyhost {command} [OPTIONS]{arguments}\n" in outcome.output
    assert f"\nExamples:\n  notifyhost {command}" in outcome.output


@pytest.mark.parametrize("command, text", [("send", SEND_HELP), ("new", NEW_HELP)])
def test_whole_help(lone_host, command, text):
    outcome = lone_host(command, "--help")
    # Some releases of CLI11 leave one line free above the examples, others two.
    output = outcome.output.replace("\n\n\n", "\n\n")
    assert (outcome.exit_code, output, outcome.errors) == (0, text, "")
