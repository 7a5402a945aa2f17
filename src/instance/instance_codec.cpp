#include "instance/instance_codec.h"

#include <algorithm>
#include <array>

#include "text/text_end.h"

namespace brantel {
namespace {

// The limited reader's buffer held this many bytes with the NUL, and files are still judged by it.
constexpr std::uint32_t kTextCapacity = 1024;

// Bytes beyond the end count as 0.
std::uint32_t TakeNumber(ByteCursor& cursor) {
  std::array<char, 4> bytes{};
  cursor.Take(bytes);
  std::uint32_t number = 0;
  for (std::size_t i = 0; i < bytes.size(); ++i) {
    number |= static_cast<std::uint32_t>(static_cast<std::uint8_t>(bytes[i])) << (8 * i);
  }
  return number;
}

// Up to the first NUL, and no more than is there. What follows the NUL is gone over.
std::string TakeText(ByteCursor& cursor, std::uint32_t length) {
  std::string text;
  for (bool ended = false; length != 0;) {
    const std::string_view piece = cursor.TakePiece(length);
    if (piece.empty()) break;
    length -= static_cast<std::uint32_t>(piece.size());
    if (ended) continue;
    const std::string_view before_nul = UpToNul(piece);
    text.append(before_nul);
    ended = before_nul.size() < piece.size();
  }
  return text;
}

bool IsTooLong(const InstanceLayout& layout, std::uint32_t stored_length) {
  return layout.text_reader == TextReader::kLimited && stored_length >= kTextCapacity;
}

std::int32_t TakeInteger(const InstanceField& field, ByteCursor& cursor) {
  const auto value = static_cast<std::int32_t>(TakeNumber(cursor));
  return value >= field.minimum && value <= field.maximum ? value : 0;
}

void AppendNumber(std::string& file, std::uint32_t number) {
  for (unsigned shift = 0; shift < 32; shift += 8) {
    file.push_back(static_cast<char>(static_cast<std::uint8_t>(number >> shift)));
  }
}

void AppendText(std::string& file, std::string_view text) {
  text = UpToNul(text);
  AppendNumber(file, static_cast<std::uint32_t>(text.size() + 1));
  file.append(text);
  file.push_back('\0');
}

}  // namespace

bool HasMagic(const InstanceLayout& layout, std::string_view beginning) {
  const auto magic = GuidBytes(layout.magic);
  return std::ranges::equal(beginning.substr(0, magic.size()), magic, {},
                            [](char byte) { return static_cast<std::uint8_t>(byte); });
}

InstanceReader::InstanceReader(ByteSource& file)
    : cursor_(file), magic_size_(cursor_.Take(magic_)) {}

std::optional<Instance> InstanceReader::Read(const InstanceLayout& layout) {
  if (!HasMagic(layout, magic())) return std::nullopt;
  Instance instance(layout.fields.size());
  for (std::size_t i = 0; i < layout.fields.size(); ++i) {
    if (!ReadField(layout, i, instance)) return std::nullopt;
    if (!cursor_.RanShort()) continue;
    NoteFlaw(FileFlaw::kEndsEarly, i);
    if (layout.short_file == ShortFile::kRefused) return std::nullopt;
  }
  return instance;
}

bool InstanceReader::ReadField(const InstanceLayout& layout, std::size_t index,
                               Instance& instance) {
  const InstanceField& field = layout.fields[index];
  if (field.presence == FieldPresence::kOptional && cursor_.AtEnd()) return true;
  if (field.kind == FieldKind::kInteger) {
    instance.set_integer(index, TakeInteger(field, cursor_));
    return true;
  }
  std::uint32_t length = TakeNumber(cursor_);
  if (IsTooLong(layout, length)) {
    NoteFlaw(FileFlaw::kTextTooLong, index);
    if (field.presence == FieldPresence::kMandatory) return false;
    length = kTextCapacity - 1;
  }
  instance.set_text(index, TakeText(cursor_, length));
  return true;
}

void InstanceReader::NoteFlaw(FileFlaw flaw, std::size_t field) {
  if (!flaw_) flaw_ = {flaw, field};
}

std::optional<Instance> DecodeInstance(const InstanceLayout& layout, ByteSource& file) {
  return InstanceReader(file).Read(layout);
}

std::optional<Instance> DecodeInstance(const InstanceLayout& layout, std::string_view file) {
  MemorySource source(file);
  return DecodeInstance(layout, source);
}

std::string EncodeInstance(const InstanceLayout& layout, const Instance& instance) {
  const auto magic = GuidBytes(layout.magic);
  std::string file(magic.begin(), magic.end());
  for (std::size_t i = 0; i < layout.fields.size(); ++i) {
    if (layout.fields[i].kind == FieldKind::kInteger) {
      AppendNumber(file, static_cast<std::uint32_t>(instance.integer(i)));
    } else {
      AppendText(file, instance.text(i));
    }
  }
  return file;
}

std::size_t LongestText(const InstanceLayout& layout) {
  // One byte is the NUL's, and a stored length that fills the buffer is refused.
  return layout.text_reader == TextReader::kLimited ? kTextCapacity - 2 : std::string::npos;
}

}  // namespace brantel
