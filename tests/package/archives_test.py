"""The archives: what is in them, and that the same files always make the same archive."""

import os
import subprocess
import sys
import zipfile

from windows_programs import HOST, MODULE, PRESET, ROOT, VERSION

sys.path.insert(0, str(ROOT / "packaging"))
from archives import pack  # noqa: E402

NAME = f"Brantel_Notifications-{VERSION}-{PRESET}"


def members(archive) -> dict[str, bytes]:
    with zipfile.ZipFile(archive) as opened:
        return {name: opened.read(name) for name in opened.namelist()}


def test_the_release_and_its_symbols(packages):
    release, symbols = members(packages / f"{NAME}.zip"), members(packages / f"{NAME}-symbols.zip")
    for file in (MODULE, HOST):
        assert release[f"{NAME}/{file.name}"] == file.read_bytes()
        assert symbols[f"{NAME}-symbols/{file.name}.debug"] == file.with_name(file.name + ".debug").read_bytes()
    documents = {path.relative_to(ROOT).as_posix() for path in (ROOT / "docs").rglob("*") if path.is_file()}
    others = {"README.md", "CHANGELOG.md", "NOTICES.txt", "examples/minimal_host.cpp", "idl/notifier_contract.tlb",
              "include/brantel/notifier_contract.h"}
    assert {f"{NAME}/{name}" for name in documents | others} < release.keys()
    assert f"## {VERSION}\n".encode() in release[f"{NAME}/CHANGELOG.md"]


def test_sums(packages):
    listed = {line.split()[1] for line in (packages / "SHA256SUMS").read_text().splitlines()}
    assert listed == {path.name for path in packages.iterdir()} - {"SHA256SUMS"}
    assert subprocess.run(["sha256sum", "--check", "--quiet", "SHA256SUMS"], cwd=packages).returncode == 0


def test_nothing_tells_where_it_was_built(packages):
    for kind in ("", "-symbols"):
        for name, content in members(packages / f"{NAME}{kind}.zip").items():
            assert os.fsencode(ROOT) not in content, name


def test_same_files_make_the_same_archive(tmp_path):
    made = []
    for run, names in enumerate((["b", "a/c", "a b"], ["a b", "b", "a/c"])):
        folder = tmp_path / str(run) / "things"
        for name in names:
            (folder / name).parent.mkdir(parents=True, exist_ok=True)
            (folder / name).write_text(name)
            os.utime(folder / name, (run, run))
        (folder / "b").chmod(0o600 + run)
        pack(folder, tmp_path / f"{run}.zip", 1700000000)
        made.append((tmp_path / f"{run}.zip").read_bytes())
    assert made[0] == made[1]
    assert list(members(tmp_path / "0.zip")) == ["things/a b", "things/a/c", "things/b"]
