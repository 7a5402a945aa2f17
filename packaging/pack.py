"""pack.py FOLDER PRESET...: makes the packages of what these presets have built, win32 and the like, and their
sums, in the folder."""

import pathlib
import re
import shutil
import subprocess
import sys

from archives import files_of, pack, write_sums
from installer import HOST, MODULE, Installer
from notices import make_notices

ROOT = pathlib.Path(__file__).resolve().parent.parent


def version() -> str:
    return re.search(r"^project\(\w+ VERSION (\S+) ", (ROOT / "CMakeLists.txt").read_text(), re.M)[1]


def commit_time() -> int:
    """Packages have the time of the commit, so that the same one gives the same packages."""
    told = subprocess.run(["git", "-C", ROOT, "log", "-1", "--format=%ct"], capture_output=True, text=True)
    return int(told.stdout) if told.returncode == 0 else 0


def put_together(preset: str, folder: pathlib.Path) -> None:
    """Everything that a preset's release has but the symbols."""
    build = ROOT / "build" / preset
    subprocess.run(["cmake", "--install", build, "--component", "sdk", "--prefix", folder], check=True,
                   stdout=subprocess.DEVNULL)
    for file in (ROOT / "out" / preset / MODULE, ROOT / "out" / preset / HOST, ROOT / "README.md",
                 ROOT / "CHANGELOG.md"):
        shutil.copy(file, folder)
    shutil.copytree(ROOT / "docs", folder / "docs")
    (folder / "NOTICES.txt").write_text(make_notices(build), "utf-8")


def put_symbols_together(preset: str, folder: pathlib.Path) -> None:
    folder.mkdir()
    for file in (MODULE, HOST):
        shutil.copy(ROOT / "out" / preset / f"{file}.debug", folder)


def make_packages(preset: str, packages: pathlib.Path) -> None:
    name = f"Brantel_Notifications-{version()}-{preset}"
    work = packages / "work"
    put_together(preset, work / name)
    put_symbols_together(preset, work / f"{name}-symbols")
    for folder in sorted(work.iterdir()):
        pack(folder, packages / f"{folder.name}.zip", commit_time())
    Installer(preset, version(), work / name, ROOT / "build" / preset / "resources").make(
        packages / f"{name}.msi", commit_time())
    shutil.rmtree(work)


def main() -> None:
    packages, *presets = sys.argv[1:]
    folder = pathlib.Path(packages)
    shutil.rmtree(folder, ignore_errors=True)
    folder.mkdir(parents=True)
    for preset in presets:
        make_packages(preset, folder)
    write_sums(folder)
    for path in files_of(folder):
        print(f"{path.stat().st_size:9}  {path}")


main()
