"""completion: what bash makes of the script, and what PowerShell is given."""

import subprocess

import pytest

from conftest import CLASS_NAMES

# In single quotes nothing of it is expanded.
COMPLETE = """
source ./script
COMP_WORDS=("$@") COMP_CWORD=$(($# - 1))
_notifyhost
printf '%s\\n' "${COMPREPLY[@]}"
"""


@pytest.fixture
def complete(lone_host, tmp_path):
    """What bash offers for the last of these words."""
    outcome = lone_host("completion", "bash")
    assert (outcome.exit_code, outcome.errors) == (0, "")
    (tmp_path / "script").write_text(outcome.output)

    def run(*words):
        done = subprocess.run(["bash", "-c", COMPLETE, "bash", "notifyhost", *words], cwd=tmp_path,
                              capture_output=True, text=True, check=True)
        assert done.stderr == ""
        return done.stdout.split()

    return run


@pytest.mark.parametrize("words, offered", [
    (["sen"], ["send"]),
    (["se"], ["send", "serve", "set", "settings", "service"]),
    (["frobnicate"], []),
    (["settings", "e"], ["export"]),
    (["settings", "set", "--p"], ["--profile"]),
    (["send", "W"], ["WinPopup"]),
    (["send", "Beeper", "Night", "--e"], ["--event", "--event-log"]),
    (["send", "Beeper", "x y", "--timeo"], ["--timeout"]),
    (["history", "--f"], ["--failed", "--follow"]),
    (["show", ""], ["--help", "--show-secrets", "--json", "--log-file"]),
    (["completion", ""], ["--help"]),
])
def test_bash_completes(complete, words, offered):
    assert complete(*words) == offered


def test_bash_completes_every_class(complete):
    offered = complete("fields", "")
    assert [word for word in offered if not word.startswith("-")] == CLASS_NAMES.split(", ")


def test_powershell_is_given_the_same_words(lone_host):
    """It is not run: these machines have none."""
    script = lone_host("completion", "powershell").output
    assert "Register-ArgumentCompleter -Native -CommandName notifyhost, notifyhost.exe" in script
    assert "    'settings export *' { 'Beeper " not in script
    assert "    'history *' { '--help --failed --since --follow --journal --json --log-file'; break }\n" in script
    assert script.count("{") == script.count("}")
    # The widest pattern stands last.
    assert script.index("'settings set *'") < script.index("'settings *'") < script.index("'*'")


def test_shell_that_is_not_known(lone_host):
    outcome = lone_host("completion", "cmd.exe")
    assert (outcome.exit_code, outcome.output) == (2, "")
    assert outcome.errors == (
        "notifyhost: SHELL: 'cmd.exe' is not a shell that completes; the shells are bash and powershell\n"
        "Run notifyhost completion --help for help.\n")
