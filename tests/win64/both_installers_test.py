"""The installers of both kinds on one computer, which is a 64-bit Windows: neither takes anything from the other. What
cannot be seen here is what becomes of the ProgIDs, since Wine has two sets of these, and Windows has one."""

import pytest

from installed_windows import Windows, make_packages
from windows_programs import VERSION, wine_prefix

HELP_FOLDER = r"Software\\Classes\\Typelib\\{5625C924-5719-DA0E-EE98-237AC5FB0A3C}\\1.0\\HELPDIR"
# Here it is empty without the release, and goes with it.
CLASSES_OF_32_BITS = r"Software\\Classes\\Wow6432Node\\CLSID"


@pytest.fixture(scope="module")
def installers(tmp_path_factory):
    packages = make_packages(tmp_path_factory.mktemp("packages"), "win32", "win64")
    return {bits: packages / f"Brantel_Notifications-{VERSION}-win{bits}.msi" for bits in (32, 64)}


def registry_of(windows) -> dict[str, str]:
    return {key: values for key, values in windows.registry().items() if key != CLASSES_OF_32_BITS}


@pytest.mark.parametrize("stays, goes", [(32, 64), (64, 32)])
def test_what_one_leaves_to_the_other(installers, stays, goes):
    with wine_prefix(Windows, BRANTEL_BITS="64") as windows:
        assert windows("hostname") == 0
        files, registry = windows.files(), registry_of(windows)
        assert windows.msiexec("/i", installers[stays]) == 0
        files_of_one, registry_of_one = windows.files(), registry_of(windows)
        assert windows.msiexec("/i", installers[goes]) == 0
        assert files_of_one < windows.files()

        assert windows.msiexec("/x", installers[goes]) == 0
        assert windows.files() == files_of_one
        left = registry_of(windows)
        assert left.keys() == registry_of_one.keys()
        # The type library has one folder for help, which both name and nobody has.
        assert [key for key, values in left.items() if values != registry_of_one[key]] == [HELP_FOLDER]
        assert windows.msiexec("/i", installers[stays], "REINSTALL=ALL", "REINSTALLMODE=amus") == 0
        assert registry_of(windows) == registry_of_one

        assert windows.msiexec("/x", installers[stays]) == 0
        assert (windows.files(), registry_of(windows)) == (files, registry)
