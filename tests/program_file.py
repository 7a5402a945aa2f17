"""A program or library of Windows as it is on the disk."""

import importlib.machinery
import importlib.util

from windows_programs import ROOT


def load_tool(name: str):
    loader = importlib.machinery.SourceFileLoader(name, str(ROOT / "tools" / name))
    tool = importlib.util.module_from_spec(importlib.util.spec_from_loader(name, loader))
    loader.exec_module(tool)
    return tool


compare_release = load_tool("compare_release")


def program_file(path):
    return compare_release.Library(path.read_bytes())
