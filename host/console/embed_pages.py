#!/usr/bin/python3
"""embed_pages.py OUTPUT FILE...: writes a C++ source that holds these files, templates (.html) and others."""

import pathlib
import sys

TYPES = {".css": "text/css; charset=utf-8", ".js": "text/javascript; charset=utf-8", ".svg": "image/svg+xml"}
DELIMITER = "FILE"
# Compilers need not take longer literals; those behind each other are one.
LONGEST_LITERAL = 16000


def literal(text: str) -> str:
    assert f"){DELIMITER}\"" not in text
    pieces = [text[i:i + LONGEST_LITERAL] for i in range(0, len(text), LONGEST_LITERAL)] or [""]
    return "\n".join(f'R"{DELIMITER}({piece}){DELIMITER}"' for piece in pieces)


def main() -> None:
    files = [pathlib.Path(name) for name in sys.argv[2:]]
    templates = [f'    {{"{file.stem}", {literal(file.read_text("utf-8"))}}},'
                 for file in files if file.suffix == ".html"]
    others = [f'    {{"{file.name}", "{TYPES[file.suffix]}", {literal(file.read_text("utf-8"))}}},'
              for file in files if file.suffix in TYPES]
    pathlib.Path(sys.argv[1]).write_text("\n".join([
        '#include "host/console/console_files.h"', "",
        "#include <array>", "#include <stdexcept>", "#include <string>", "#include <utility>", "",
        "namespace brantel::host {", "namespace {", "",
        f"constexpr std::array<std::pair<std::string_view, std::string_view>, {len(templates)}> kTemplates = {{{{",
        *templates, "}};", "",
        f"constexpr std::array<ConsoleFile, {len(others)}> kFiles = {{{{", *others, "}};", "",
        "}  // namespace", "",
        "std::string_view PageTemplate(std::string_view name) {",
        "  for (const auto& [known, content] : kTemplates) {",
        "    if (known == name) return content;", "  }",
        '  throw std::logic_error("there is no page " + std::string(name));', "}", "",
        "const ConsoleFile* FindConsoleFile(std::string_view name) {",
        "  for (const ConsoleFile& file : kFiles) {",
        "    if (file.name == name) return &file;", "  }",
        "  return nullptr;", "}", "",
        "}  // namespace brantel::host", ""]), encoding="utf-8")


main()
