"""The notices of what others made: that none is left out, and that what has none is noticed."""

import re
import sys
import zipfile

import pytest

from windows_programs import PRESET, ROOT, VERSION

sys.path.insert(0, str(ROOT / "packaging"))
from notices import COMPONENTS, component_of, package_files  # noqa: E402

# What each of them asks to be told with it begins, or goes on, with these words.
DEMANDED = {
    "Boost": "Boost Software License - Version 1.0",
    "CLI11": "University of Cincinnati",
    "nlohmann/json": "Niels Lohmann",
    "toml++": "Mark Gillard",
    "GCC's libstdc++ and libgcc": "GCC RUNTIME LIBRARY EXCEPTION",
    "mingw-w64": "the mingw-w64 project",
    "Pico CSS": "Copyright (c) 2019-2024 Pico",
}


def test_all_that_is_built_in_is_named(packages):
    name = f"Brantel_Notifications-{VERSION}-{PRESET}"
    with zipfile.ZipFile(packages / f"{name}.zip") as archive:
        notices = archive.read(f"{name}/NOTICES.txt").decode()
    sections = re.split(r"\n\n(?=[^\n]+: [^\n]+\n-+\n)", notices)[1:]
    assert [section.partition(": ")[0] for section in sections] == list(DEMANDED)
    for section, words in zip(sections, DEMANDED.values()):
        assert words in section
        assert re.search(r"without\s+fee|free of charge|permitted provided|additional\s+permission", section)


def test_each_component_is_expected():
    assert {component.name for component in COMPONENTS} | {"Pico CSS"} == DEMANDED.keys()


@pytest.mark.parametrize("package", ["libc6-dev", "libz-mingw-w64-dev", "libboost1.74-doc"])
def test_what_has_no_notices(package):
    with pytest.raises(SystemExit, match=package):
        component_of(package)


def test_a_file_of_nobody(tmp_path):
    file = tmp_path / "libnobody.a"
    file.touch()
    with pytest.raises(SystemExit, match="libnobody.a"):
        package_files({str(file)})
