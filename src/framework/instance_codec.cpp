#include "framework/instance_codec.h"

#include <algorithm>
#include <array>

namespace brantel {
namespace {

// The limited reader's buffer held this many bytes with the NUL, and files are still judged by it.
constexpr std::uint32_t kTextCapacity = 1024;

// Reads forward through a file that may end anywhere.
class FileCursor {
 public:
  explicit FileCursor(std::string_view file) : rest_(file) {}

  [[nodiscard]] bool AtEnd() const { return rest_.empty(); }

  // True once a read wanted more bytes than were left.
  [[nodiscard]] bool RanShort() const { return ran_short_; }

  std::string_view Take(std::size_t count) {
    ran_short_ = ran_short_ || count > rest_.size();
    const std::string_view taken = rest_.substr(0, count);
    rest_.remove_prefix(taken.size());
    return taken;
  }

  // Bytes beyond the end count as 0.
  std::uint32_t TakeNumber() {
    std::uint32_t number = 0;
    unsigned shift = 0;
    for (const char byte : Take(4)) {
      number |= static_cast<std::uint32_t>(static_cast<std::uint8_t>(byte)) << shift;
      shift += 8;
    }
    return number;
  }

  std::string TakeText(std::uint32_t length) {
    const std::string_view bytes = Take(length);
    return std::string(bytes.substr(0, bytes.find('\0')));
  }

 private:
  std::string_view rest_;
  bool ran_short_ = false;
};

// False when the text's stored length makes the file unreadable.
bool ReadText(const InstanceLayout& layout, const InstanceField& field, FileCursor& cursor,
              std::string& text) {
  std::uint32_t length = cursor.TakeNumber();
  if (layout.text_reader == TextReader::kLimited && length >= kTextCapacity) {
    if (field.presence == FieldPresence::kMandatory) return false;
    length = kTextCapacity - 1;
  }
  text = cursor.TakeText(length);
  return true;
}

std::int32_t ReadInteger(const InstanceField& field, FileCursor& cursor) {
  const auto value = static_cast<std::int32_t>(cursor.TakeNumber());
  return value >= field.minimum && value <= field.maximum ? value : 0;
}

void AppendNumber(std::string& file, std::uint32_t number) {
  for (unsigned shift = 0; shift < 32; shift += 8) {
    file.push_back(static_cast<char>(static_cast<std::uint8_t>(number >> shift)));
  }
}

void AppendText(std::string& file, std::string_view text) {
  text = text.substr(0, text.find('\0'));
  AppendNumber(file, static_cast<std::uint32_t>(text.size() + 1));
  file.append(text);
  file.push_back('\0');
}

}  // namespace

bool HasMagic(const InstanceLayout& layout, std::string_view file) {
  const auto magic = GuidBytes(layout.magic);
  return std::ranges::equal(file.substr(0, magic.size()), magic, {},
                            [](char byte) { return static_cast<std::uint8_t>(byte); });
}

std::optional<Instance> DecodeInstance(const InstanceLayout& layout, std::string_view file) {
  if (!HasMagic(layout, file)) return std::nullopt;
  FileCursor cursor(file.substr(sizeof layout.magic));

  Instance instance(layout.fields.size());
  for (std::size_t i = 0; i < layout.fields.size(); ++i) {
    const InstanceField& field = layout.fields[i];
    if (field.presence == FieldPresence::kOptional && cursor.AtEnd()) continue;
    if (field.kind == FieldKind::kInteger) {
      instance.set_integer(i, ReadInteger(field, cursor));
      continue;
    }
    std::string text;
    if (!ReadText(layout, field, cursor, text)) return std::nullopt;
    instance.set_text(i, std::move(text));
  }
  if (layout.short_file == ShortFile::kRefused && cursor.RanShort()) return std::nullopt;
  return instance;
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
