"""What the licences of others demand of a release: the notices of all that is compiled or linked into it.

What that is, is not written down but found out: by the compiler's list of the headers that each object was
made of, and the linker's list of what it read. Each of these files has to belong to a component of the table
here, or no notices are made.
"""

import os
import pathlib
import re
import subprocess
import textwrap
from collections.abc import Callable, Iterator
from dataclasses import dataclass

ROOT = pathlib.Path(__file__).resolve().parent.parent
DOCUMENTATION = pathlib.Path("/usr/share/doc")
PICO_LICENCE = ROOT / "host" / "console" / "pages" / "pico.LICENSE"

INTRODUCTION = """\
What others made, and is part of this release
=============================================

The module Brantel_Notifications.dll and its host notifyhost.exe have code in them of the following libraries, each
with what its authors ask to be told with it. These terms are those of the libraries alone.
"""


@dataclass(frozen=True)
class Component:
    """Something of others that is part of a release."""
    name: str
    purpose: str
    packages: re.Pattern  # of Debian, in which its files lie
    words: Callable[[str, set[str]], str]  # of the package's statement and the used files


def whole_statement(statement: str, _files: set[str]) -> str:
    return statement


def licence_named(name: str) -> Callable[[str, set[str]], str]:
    """The text of one licence of a statement in Debian's form."""
    def words(statement: str, _files: set[str]) -> str:
        text = re.search(rf"^License: {re.escape(name)}\n((?: .*\n)+)", statement, re.M)[1]
        return re.sub(r"^ \.?", "", text, flags=re.M)
    return words


def runtime_of_the_compiler(statement: str, files: set[str]) -> str:
    """The licence, its exception for what is compiled, and what stands in headers that are older than both."""
    parts = [re.search(begin + r".*?" + end, statement, re.S)[0] for begin, end in (
        (r"GCC is Copyright", r"(?=On Debian)"),
        (r"GCC RUNTIME LIBRARY EXCEPTION\n", r"of the license of GCC\."))]
    comments = [comment for file in sorted(files)
                for comment in re.findall(r"/\*(.*?)\*/", pathlib.Path(file).read_text("latin-1"), re.S)
                if "Permission to use, copy, modify" in comment]
    return "\n\n".join([*parts, *sorted(set(single_notices(comments)))])


def single_notices(comments: list[str]) -> Iterator[str]:
    """The notices of all holders in these comments, each as one paragraph."""
    for comment in comments:
        words = re.sub(r"\s*\n[\s*]*", " ", comment)
        for notice in re.findall(r"Copyright \(c\).*?express or implied warranty\.", words):
            yield textwrap.fill(" ".join(notice.split()), 79)


COMPONENTS = [
    Component("Boost", "the host's web server and the probes of its watch",
              re.compile(r"libboost[\d.]+-dev"), licence_named("BSL-1.0")),
    Component("CLI11", "the host's command line", re.compile(r"libcli11-dev"), whole_statement),
    Component("nlohmann/json", "what the host tells programs", re.compile(r"nlohmann-json3-dev"), whole_statement),
    Component("toml++", "the file of what the host watches", re.compile(r"libtomlplusplus-dev"), whole_statement),
    Component("GCC's libstdc++ and libgcc", "what the compiler adds to every program",
              re.compile(r"(g\+\+|gcc)-mingw-w64-.*"), runtime_of_the_compiler),
    Component("mingw-w64", "the start of a program, and the C library's parts beside Windows' own",
              re.compile(r"mingw-w64-.*"), whole_statement),
]


def compiled_headers(build: pathlib.Path) -> set[str]:
    """The headers that the sources of the module and the host include."""
    told = subprocess.run(["ninja", "-C", build, "-t", "deps"], capture_output=True, text=True, check=True).stdout
    objects = re.findall(r"^(?:src|host)/(?!demo_program)\S+: #deps.*\n((?:    .*\n)*)", told, re.M)
    return {line.strip() for block in objects for line in block.splitlines()}


def linked_files(build: pathlib.Path) -> set[str]:
    """The libraries and objects that the linker read."""
    maps = list(build.glob("src/module/*.map")) + list(build.glob("host/*.map"))
    assert len(maps) == 2, maps
    return {path for file in maps for path in re.findall(r"^LOAD (\S.*)", file.read_text("utf-8"), re.M)}


def of_others(files: set[str], build: pathlib.Path) -> set[str]:
    """Where those really lie that are not the checkout's own. They are named by their way from the build folder,
    and the folders of headers there are links."""
    paths = {os.path.realpath(build / file) for file in files}
    return {path for path in paths if not path.startswith(f"{ROOT}/")}


def package_files(files: set[str]) -> dict[str, set[str]]:
    """The files by the package of Debian that has brought them."""
    told = subprocess.run(["dpkg-query", "-S", *sorted(files)], capture_output=True, text=True)
    if told.returncode:
        raise SystemExit(f"what is built in has an origin that is not known:\n{told.stderr}")
    packages: dict[str, set[str]] = {}
    for line in told.stdout.splitlines():
        package, _, path = line.partition(": ")
        packages.setdefault(package.partition(":")[0], set()).add(path)
    return packages


def component_of(package: str) -> Component:
    for component in COMPONENTS:
        if component.packages.fullmatch(package):
            return component
    raise SystemExit(f"the package {package} is built in, and packaging/notices.py has no notices for it")


def section(name: str, purpose: str, words: str) -> str:
    title = f"{name}: {purpose}"
    return f"{title}\n{'-' * len(title)}\n\n{words.strip()}\n"


def component_sections(packages: dict[str, set[str]]) -> list[str]:
    """One for each component that is built in, in the order of the table."""
    found: dict[str, tuple[str, set[str]]] = {}
    for package in sorted(packages):
        name = component_of(package).name
        _, files = found.get(name, (package, set()))
        found[name] = (package, files | packages[package])
    return [section(component.name, component.purpose,
                    component.words((DOCUMENTATION / found[component.name][0] / "copyright").read_text("utf-8"),
                                    found[component.name][1]))
            for component in COMPONENTS if component.name in found]


def make_notices(build: pathlib.Path) -> str:
    """The notices of the release that lies in this build folder."""
    packages = package_files(of_others(compiled_headers(build) | linked_files(build), build))
    pico = section("Pico CSS", "the looks of the host's web console", PICO_LICENCE.read_text("utf-8"))
    return "\n\n".join([INTRODUCTION, *component_sections(packages), pico])
