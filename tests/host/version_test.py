"""The release's version is written down once, and every file of the release tells it."""

import struct

import pytest

from windows_programs import HOST, MODULE, VERSION

# By which the system recognises the numbers of a file's version.
SIGNATURE = struct.pack("<I", 0xFEEF04BD)


def version_numbers(file) -> list[str]:
    """The file's version and the product's, of its one version resource."""
    before, after = file.read_bytes().split(SIGNATURE)
    words = struct.unpack_from("<4x8H", after)
    return [".".join(str(words[index]) for index in (base + 1, base, base + 3, base + 2)) for base in (0, 4)]


def version_text(file, name: str) -> str:
    """A text of the same resource: the name, padding, the text, a NUL."""
    _, found, rest = file.read_bytes().partition(name.encode("utf-16-le") + bytes(2))
    assert found
    return rest.decode("utf-16-le", "replace").lstrip("\0").partition("\0")[0]


@pytest.mark.parametrize("file", [MODULE, HOST], ids=lambda file: file.name)
def test_files_tell_it(file):
    assert version_numbers(file) == [VERSION + ".0"] * 2
    for name in ("FileVersion", "ProductVersion"):
        assert version_text(file, name) == VERSION + ".0"
    assert version_text(file, "OriginalFilename") == file.name


def test_the_host_tells_it(lone_host):
    outcome = lone_host("--version")
    assert (outcome.exit_code, outcome.output, outcome.errors) == (0, f"notifyhost {VERSION}\n", "")
