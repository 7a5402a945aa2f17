"""Archives that are the same, byte by byte, whenever they are made of the same files."""

import hashlib
import pathlib
import time
import zipfile


def files_of(folder: pathlib.Path) -> list[pathlib.Path]:
    """All files below it, in an order that no file system changes."""
    return sorted((path for path in folder.rglob("*") if path.is_file()),
                  key=lambda path: path.relative_to(folder).as_posix())


def pack(folder: pathlib.Path, archive: pathlib.Path, seconds: int) -> None:
    """Packs the folder into a zip archive, all of it with this time since the beginning of 1970."""
    moment = time.gmtime(max(seconds, 315532800))[:6]  # archives know no time before 1980
    with zipfile.ZipFile(archive, "w", zipfile.ZIP_DEFLATED, compresslevel=9) as packed:
        for path in files_of(folder):
            entry = zipfile.ZipInfo(path.relative_to(folder.parent).as_posix(), moment)
            entry.compress_type = zipfile.ZIP_DEFLATED
            entry.create_system = 3
            entry.external_attr = 0o100644 << 16
            packed.writestr(entry, path.read_bytes())


def write_sums(folder: pathlib.Path) -> None:
    """Writes SHA256SUMS for the files of the folder, in the form that sha256sum -c takes."""
    sums = folder / "SHA256SUMS"
    sums.unlink(missing_ok=True)
    sums.write_text("".join(f"{hashlib.sha256(path.read_bytes()).hexdigest()}  {path.name}\n"
                            for path in files_of(folder)))
