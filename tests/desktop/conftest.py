"""Sees and hears what notifiers do, from outside Windows.

DISPLAY and WINEPREFIX name a screen and a prefix for the tests alone, as ./test provides them.
"""

import contextlib
import os

import pytest

from windows_programs import (INSTANCE_MAGICS, Driver, environment_of_wine, instance_integer, instance_text,
                              running_driver)


@pytest.fixture(scope="session")
def wine_environment() -> dict[str, str]:
    missing = {"DISPLAY", "WINEPREFIX"} - os.environ.keys()
    assert not missing, f"the tests need {missing}; run ./test desktop"
    return environment_of_wine()


@pytest.fixture
def start_driver(wine_environment):
    """A function that starts the driver with a notifier of the named class."""
    with contextlib.ExitStack() as drivers:

        def start(notifier_class: str, **environment) -> Driver:
            return drivers.enter_context(
                running_driver(notifier_class, {**wine_environment, **environment}))

        yield start


def sound_instance(wave_file: str, number: bytes) -> bytes:
    """The file of a Sound instance; the number says whether the sound goes on."""
    return INSTANCE_MAGICS["Sound"] + instance_text(wave_file) + number


def smtp_mail_instance(gateway: str, to: str, sender: str, subject: str, message: str) -> bytes:
    return (INSTANCE_MAGICS["SMTPMail"]
            + b"".join(map(instance_text, (gateway, to, sender, subject, message))))


def launch_program_instance(program: str, directory: str, arguments: str) -> bytes:
    return (INSTANCE_MAGICS["LaunchProgram"]
            + b"".join(map(instance_text, (program, directory, arguments))))


def beeper_instance(number: str, dialing_options: str, up: str, down: str, trap: str,
                    profile: int) -> bytes:
    """The file of a Beeper instance without a report message."""
    texts = (number, dialing_options, up, down, trap, "")
    return (INSTANCE_MAGICS["Beeper"]
            + b"".join(map(instance_text, texts)) + instance_integer(profile))


def pager_instance(number: str, password: str, pager_id: str, message: str, protocol: str,
                   profile: int) -> bytes:
    texts = (number, password, pager_id, message, protocol)
    return (INSTANCE_MAGICS["Pager"]
            + b"".join(map(instance_text, texts)) + instance_integer(profile))


def voice_instance(number: str, repeat: str, count: int, button: int, *messages: str) -> bytes:
    return (INSTANCE_MAGICS["Voice"]
            + b"".join(map(instance_text, (number, repeat)))
            + instance_integer(count) + instance_integer(button)
            + b"".join(map(instance_text, messages)))


def win_popup_instance(destination: str, message: str) -> bytes:
    return (INSTANCE_MAGICS["WinPopup"]
            + instance_text(destination) + instance_text(message))
