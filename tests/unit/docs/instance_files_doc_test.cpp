// docs/instance_files.md is made from the tables that read and write the files, so that it cannot
// say anything else.
#include <gtest/gtest.h>

#include <limits>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

#include "instance/instance_codec.h"
#include "module/class_descriptions.h"
#include "tests/unit/made_file.h"

namespace brantel {
namespace {

constexpr const char* kDocument = "docs/instance_files.md";

constexpr std::string_view kIntroduction = R"(# Instance files

An instance is a named configuration of a notifier class, kept in a file of its own. The file's name is
the instance's name, without an extension; its directory belongs to the host, which names it on every
call. An instance named "Default" prefills new ones of its class, and is an ordinary instance otherwise.

All numbers are little-endian. Text is in the system's ANSI code page.

```
file    = magic { field }
magic   = 16 bytes: the class's own GUID, its first three groups little-endian
field   = text | integer
text    = length bytes       a 32-bit length that counts the NUL, and as many bytes, the last of them NUL
integer = 32-bit number      bare, without a length
```

An empty text is stored as the bytes `01 00 00 00 00`.

Reading: a file that is missing, that somebody writes at the moment, or that begins with another class's
magic is refused. The magic is looked at before anything else, and the rest is read no further than the
last field, so neither the size of a foreign file nor what follows an instance costs anything. A text ends
at its first NUL. Most classes refuse a mandatory text with a stored length of 1024 or more, and cut an
optional one to 1023 bytes; the classes that read any length are marked. Where a file ends early its
missing fields are empty or 0, since older versions wrote fewer of them; the classes that refuse such a
file are marked. An integer outside its range reads as 0. An instance that finds no memory is not loaded
either; every failed load is told to the host that is bound.

Writing: nobody else may have the file open, and what it held before is replaced as a whole. While
somebody reads it, it cannot be written and stays as it is. Nothing is tried twice.

Names: an instance cannot have a name that leads elsewhere or that no file has: an empty one, one with
`\ / : * ? " < > |` or a control character, one of more than 255 UTF-16 units, one that ends with a dot or
a blank, or a device, whatever extension follows: `CON`, `PRN`, `AUX`, `NUL`, `CONIN$`, `CONOUT$`, `CLOCK$`,
and `COM` or `LPT` with a digit from 1 to 9 or a superscript 1, 2 or 3. The file system says which names
mean one file: "night" and "NIGHT" do, "Strasse" and "Straße" do not. A dialog refuses a name under which
another file stands, whatever that holds. Also the file of the instance that it edits counts as another
one if it could not be loaded and does not begin with the class's magic. A rename that changes letter case
alone renames the file, and the dialogs answer the name that the file then has.

Renaming: a dialog writes the new file before it deletes the old one, so that there is always one. The web
forms delete first; all that needs memory is done before that. Where both names mean one file nothing is
deleted, and the file gets its new name when its content is saved.

This page is made from the tables in `src/*/*_description.cpp`; `tests/unit/docs` compares it.
)";

std::string Hex(std::size_t value, std::size_t digits) {
  std::string text;
  for (std::size_t i = 0; i < digits; ++i) {
    text.insert(text.begin(), "0123456789ABCDEF"[value >> (4 * i) & 15]);
  }
  return text;
}

std::string GuidText(const Guid& guid) {
  std::string text = "{" + Hex(guid.data1, 8) + "-" + Hex(guid.data2, 4) + "-" + Hex(guid.data3, 4);
  for (std::size_t i = 0; i < guid.data4.size(); ++i) {
    text += (i == 0 || i == 2 ? "-" : "") + Hex(guid.data4[i], 2);
  }
  return text + "}";
}

std::string RangeOf(const InstanceField& field) {
  if (field.kind == FieldKind::kText) return "";
  if (field.minimum == std::numeric_limits<std::int32_t>::min()) return "any";
  return std::to_string(field.minimum) + " to " + std::to_string(field.maximum);
}

std::string FieldTable(const InstanceLayout& layout) {
  std::ostringstream table;
  table << "| # | Field | Kind | In every file | Range |\n|---|---|---|---|---|\n";
  int number = 0;
  for (const InstanceField& field : layout.fields) {
    table << "| " << ++number << " | " << field.name << " | "
          << (field.kind == FieldKind::kText ? "text" : "integer") << " | "
          << (field.presence == FieldPresence::kMandatory ? "yes" : "no") << " | " << RangeOf(field)
          << " |\n";
  }
  return table.str();
}

// Values that show where each field stands.
Instance SampleOf(const InstanceLayout& layout) {
  Instance instance(layout.fields.size());
  for (std::size_t i = 0; i < layout.fields.size(); ++i) {
    instance.set_text(i, "<" + std::string(layout.fields[i].name) + ">");
    instance.set_integer(i, 1);
  }
  return instance;
}

std::string HexDump(std::string_view bytes) {
  constexpr std::size_t kRow = 16;
  std::string dump;
  for (std::size_t start = 0; start < bytes.size(); start += kRow) {
    dump += Hex(start, 4) + " ";
    std::string characters;
    for (std::size_t i = start; i < start + kRow; ++i) {
      if (i >= bytes.size()) {
        dump += "   ";
        continue;
      }
      const auto byte = static_cast<unsigned char>(bytes[i]);
      dump += " " + Hex(byte, 2);
      characters += byte >= 0x20 && byte < 0x7F ? bytes[i] : '.';
    }
    dump += "  " + characters + "\n";
  }
  return dump;
}

std::string SectionOf(const InstanceLayout& layout) {
  std::string section =
      "\n## " + std::string(layout.class_name) + "\n\nMagic `" + GuidText(layout.magic) + "`.";
  if (layout.text_reader == TextReader::kChunked) section += " Reads texts of any length.";
  if (layout.short_file == ShortFile::kRefused) section += " Refuses a file that ends early.";
  section += "\n\n" + FieldTable(layout) +
             "\nA file in which every text is its field's name and every " + "integer 1:\n\n```\n" +
             HexDump(EncodeInstance(layout, SampleOf(layout))) + "```\n";
  return section;
}

std::string MakeDocument() {
  std::string document(kIntroduction);
  for (const ClassDescription* notifier_class : ClassDescriptions()) {
    const InstanceLayout* const layout = &notifier_class->instances;
    document += SectionOf(*layout);
  }
  return document;
}

TEST(InstanceFilesDocument, SaysWhatTheTablesSay) {
  ExpectMadeFile(kDocument, MakeDocument());
}

}  // namespace
}  // namespace brantel
