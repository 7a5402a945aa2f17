"""The installer, made by wixl: files, and the registry entries that the module's own registration makes."""

import hashlib
import os
import pathlib
import re
import string
import struct
import subprocess
import uuid
from collections.abc import Iterator
from xml.sax.saxutils import quoteattr

from archives import files_of
from registration import Entry, class_entries, type_library_entries

TEMPLATE = pathlib.Path(__file__).with_name("installer.wxs")
# All identities follow from this one and what they stand for, so that the same release always has the same.
NAMESPACE = uuid.UUID("5BB7E0CB-6A0C-4C3E-9F36-0C4E9C6B3F55")
MODULE = "Brantel_Notifications.dll"
HOST = "notifyhost.exe"
# Of the module's type library, which both systems have in one place.
SHARED = "TypeLibrary"
# What "notifyhost service install" has made goes with its program.
SERVICE = '<ServiceControl Id="Watch" Name="notifyhost" Stop="uninstall" Remove="uninstall" Wait="yes"/>'
# Of the property set that tells what a file is.
SUMMARY_FORMAT = uuid.UUID("F29F85E0-4FF9-1068-AB91-08002B27B3D9").bytes_le
PACKAGE_CODE, MADE, SAVED = 9, 12, 13
TEXT, MOMENT = 30, 64
SECONDS_FROM_1601_TO_1970 = 11644473600


def identity(*words: str) -> str:
    return "{" + str(uuid.uuid5(NAMESPACE, " ".join(words))).upper() + "}"


def file_id(path: str) -> str:
    """A name for a file or folder of the release, as the tables of installers have them."""
    return "_" + re.sub(r"[^A-Za-z0-9_.]", "_", path)


class Installer:
    """The installer of one release, in a folder with its files, for a preset: win32 or win64."""

    def __init__(self, preset: str, version: str, files: pathlib.Path, resources: pathlib.Path):
        self._preset = preset
        self._version = version
        self._files = files
        self._resources = resources
        self._component_ids: list[str] = []

    def make(self, package: pathlib.Path, seconds: int) -> None:
        """Writes the installer, with this time since the beginning of 1970 in it."""
        source = package.with_suffix(".wxs")
        source.write_text(self._source(), "utf-8")
        architecture = {"win32": "x86", "win64": "x64"}[self._preset]
        for path in files_of(self._files):
            os.utime(path, (seconds, seconds))
        # Files are named by their way from the folder that it runs in.
        subprocess.run(["wixl", "-a", architecture, "-o", package.resolve(), source.resolve()],
                       cwd=self._files, check=True, env={**os.environ, "TZ": "UTC"})
        source.unlink()
        self._complete(package)
        nameless = with_summary(package.read_bytes(), identity(), seconds)
        package.write_bytes(with_summary(nameless, identity(hashlib.sha256(nameless).hexdigest()), seconds))

    def _identity(self, *words: str) -> str:
        return identity(self._preset, *words)

    def _source(self) -> str:
        indent = " " * 10
        directories = "\n".join([*self._directory(self._files, indent), *self._shared_component(indent)])
        return string.Template(TEMPLATE.read_text("utf-8")).substitute(
            product_code=self._identity("product", self._version), upgrade_code=self._identity("upgrade"),
            version=self._version, bits=self._preset.removeprefix("win"),
            program_files="ProgramFiles64Folder" if self._is_64_bit else "ProgramFilesFolder",
            search_64=' Win64="yes"' if self._is_64_bit else "", directories=directories,
            components="\n".join(f'      <ComponentRef Id="{name}"/>' for name in self._component_ids))

    @property
    def _is_64_bit(self) -> bool:
        return self._preset == "win64"

    def _directory(self, folder: pathlib.Path, indent: str) -> Iterator[str]:
        """The components of the folder's files, and the folders in it."""
        for path in sorted(folder.iterdir()):
            name = path.relative_to(self._files).as_posix()
            if path.is_dir():
                yield f'{indent}<Directory Id="{file_id(name)}" Name={quoteattr(path.name)}>'
                yield from self._directory(path, indent + "  ")
                yield f"{indent}</Directory>"
            else:
                yield from self._component(name, indent)

    def _component(self, file: str, indent: str) -> Iterator[str]:
        self._component_ids.append(f"Component{file_id(file)}")
        bits = ' Win64="yes"' if self._is_64_bit else ""
        yield f'{indent}<Component Id="Component{file_id(file)}" Guid="{self._identity("component", file)}"{bits}>'
        yield f'{indent}  <File Id="{file_id(file)}" KeyPath="yes" Source="{file}" Name="{pathlib.Path(file).name}"/>'
        if file == MODULE:
            yield from (indent + "  " + value for value in self._registry_values())
        if file == HOST:
            yield f"{indent}  {SERVICE}"
        yield f"{indent}</Component>"

    def _shared_component(self, indent: str) -> Iterator[str]:
        """What installers for both systems write, and what goes with the last of them."""
        self._component_ids.append(SHARED)
        _, (first, *others) = type_library_entries(self._resources, self._preset)
        yield f'{indent}<Component Id="{SHARED}" Guid="{identity("component", SHARED)}">'
        yield f"{indent}  {registry_value(first, is_key_path=True)}"
        for entry in others:
            yield f"{indent}  {registry_value(entry)}"
        yield f"{indent}</Component>"

    def _registry_values(self) -> Iterator[str]:
        yield ('<RegistryValue Root="HKLM" Key="SOFTWARE\\Brantel_Notifications" Name="InstallFolder" Type="string"'
               ' Value="[INSTALLFOLDER]"/>')
        type_library, _ = type_library_entries(self._resources, self._preset)
        for entry in [*class_entries(self._resources), *type_library]:
            yield registry_value(entry)

    def _complete(self, package: pathlib.Path) -> None:
        """Says what wixl knows no words for. A file with a version is replaced by one with a higher version alone,
        whatever its content; and an old release is removed when the new one is there, so that what both have
        stays, the service too."""
        commands = ["UPDATE `InstallExecuteSequence` SET `Sequence`=6601 WHERE `Action`='RemoveExistingProducts'"]
        for name in (MODULE, HOST):
            commands += [f"UPDATE `File` SET `Version`='{self._version}.0', `Language`='1033'"
                         f" WHERE `File`='{file_id(name)}'",
                         f"DELETE FROM `MsiFileHash` WHERE `File_`='{file_id(name)}'"]
        for command in commands:
            subprocess.run(["msibuild", package, "-q", command], check=True)


def registry_value(entry: Entry, is_key_path: bool = False) -> str:
    text = (entry.text or "").replace("%MODULE%", f"[#{file_id(MODULE)}]").replace("%FOLDER%", "[INSTALLFOLDER]")
    # The name "*" has the key itself made, and removed with all that is below it.
    name = "*" if entry.goes_with_all else entry.name
    named = f" Name={quoteattr(name)}" if name else ""
    key_path = ' KeyPath="yes"' if is_key_path else ""
    return (f'<RegistryValue Root="HKCR" Key={quoteattr(entry.key)}{named} Type="string"'
            f" Value={quoteattr(text)}{key_path}/>")


def with_summary(package: bytes, code: str, seconds: int) -> bytes:
    """The installer with this code and this time of its making, in the place of those that nobody chose."""
    begin = package.index(SUMMARY_FORMAT) - 28
    assert package.count(SUMMARY_FORMAT) == 1 and package[begin:begin + 2] == b"\xfe\xff"
    (section,) = struct.unpack_from("<I", package, begin + 44)
    (count,) = struct.unpack_from("<I", package, begin + section + 4)
    changed = bytearray(package)
    for index in range(count):
        name, offset = struct.unpack_from("<II", package, begin + section + 8 + 8 * index)
        at = begin + section + offset
        (kind,) = struct.unpack_from("<I", package, at)
        if name == PACKAGE_CODE and kind == TEXT:
            changed[at + 8:at + 8 + len(code)] = code.encode()
        elif name in (MADE, SAVED) and kind == MOMENT:
            struct.pack_into("<Q", changed, at + 4, (seconds + SECONDS_FROM_1601_TO_1970) * 10_000_000)
    return bytes(changed)
