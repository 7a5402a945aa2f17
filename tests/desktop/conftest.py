"""Sees and hears what notifiers do, from outside Windows.

DISPLAY and WINEPREFIX name a screen and a prefix for the tests alone, as ./test provides them.
"""

import contextlib
import os

import pytest

from windows_programs import (Driver, environment_of_wine, instance_integer, instance_text, magic,
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
    return magic("5D6A4051-7608-5DD6-F1D3-2CFEA0F80A9F") + instance_text(wave_file) + number


def smtp_mail_instance(gateway: str, to: str, sender: str, subject: str, message: str) -> bytes:
    return (magic("D6DD268C-A32B-EF86-2683-A7DA9410F949")
            + b"".join(map(instance_text, (gateway, to, sender, subject, message))))


def launch_program_instance(program: str, directory: str, arguments: str) -> bytes:
    return (magic("ECEC7E6C-8E18-4CA2-C56F-5334C2BD7945")
            + b"".join(map(instance_text, (program, directory, arguments))))


def beeper_instance(number: str, dialing_options: str, up: str, down: str, trap: str,
                    profile: int) -> bytes:
    """The file of a Beeper instance without a report message."""
    texts = (number, dialing_options, up, down, trap, "")
    return (magic("E546F481-983D-5A7E-610B-E80BF158F22E")
            + b"".join(map(instance_text, texts)) + instance_integer(profile))


def pager_instance(number: str, password: str, pager_id: str, message: str, protocol: str,
                   profile: int) -> bytes:
    texts = (number, password, pager_id, message, protocol)
    return (magic("CF05540D-534F-164B-BD02-D12A35BF0840")
            + b"".join(map(instance_text, texts)) + instance_integer(profile))


def voice_instance(number: str, repeat: str, count: int, button: int, *messages: str) -> bytes:
    return (magic("C4F822F8-1890-08CD-6842-1838A3A78A26")
            + b"".join(map(instance_text, (number, repeat)))
            + instance_integer(count) + instance_integer(button)
            + b"".join(map(instance_text, messages)))


def win_popup_instance(destination: str, message: str) -> bytes:
    return (magic("8B762C29-0B2E-9C58-6C92-5C2A021AFB08")
            + instance_text(destination) + instance_text(message))
