#include "framework/instance_codec.h"

#include <algorithm>
#include <array>

#include "framework/text_end.h"

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

  std::string TakeText(std::uint32_t length) { return std::string(UpToNul(Take(length))); }

 private:
  std::string_view rest_;
  bool ran_short_ = false;
};

bool IsTooLong(const InstanceLayout& layout, std::uint32_t stored_length) {
  return layout.text_reader == TextReader::kLimited && stored_length >= kTextCapacity;
}

std::int32_t ReadInteger(const InstanceField& field, FileCursor& cursor) {
  const auto value = static_cast<std::int32_t>(cursor.TakeNumber());
  return value >= field.minimum && value <= field.maximum ? value : 0;
}

// Reads a file that has the layout's magic, once.
class FileReader {
 public:
  FileReader(const InstanceLayout& layout, std::string_view file)
      : layout_(layout), cursor_(file.substr(sizeof layout.magic)) {}

  std::optional<Instance> Read() {
    Instance instance(layout_.fields.size());
    for (std::size_t i = 0; i < layout_.fields.size(); ++i) {
      if (!ReadField(i, instance)) return std::nullopt;
      if (cursor_.RanShort()) NoteFlaw(FileFlaw::kEndsEarly, i);
    }
    if (layout_.short_file == ShortFile::kRefused && cursor_.RanShort()) return std::nullopt;
    return instance;
  }

  // The first that Read came upon.
  [[nodiscard]] std::optional<FlawedField> flaw() const { return flaw_; }

 private:
  // False when the field makes the file unreadable.
  bool ReadField(std::size_t index, Instance& instance) {
    const InstanceField& field = layout_.fields[index];
    if (field.presence == FieldPresence::kOptional && cursor_.AtEnd()) return true;
    if (field.kind == FieldKind::kInteger) {
      instance.set_integer(index, ReadInteger(field, cursor_));
      return true;
    }
    std::uint32_t length = cursor_.TakeNumber();
    if (IsTooLong(layout_, length)) {
      NoteFlaw(FileFlaw::kTextTooLong, index);
      if (field.presence == FieldPresence::kMandatory) return false;
      length = kTextCapacity - 1;
    }
    instance.set_text(index, cursor_.TakeText(length));
    return true;
  }

  void NoteFlaw(FileFlaw flaw, std::size_t field) {
    if (!flaw_) flaw_ = {flaw, field};
  }

  const InstanceLayout& layout_;
  FileCursor cursor_;
  std::optional<FlawedField> flaw_;
};

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

bool HasMagic(const InstanceLayout& layout, std::string_view file) {
  const auto magic = GuidBytes(layout.magic);
  return std::ranges::equal(file.substr(0, magic.size()), magic, {},
                            [](char byte) { return static_cast<std::uint8_t>(byte); });
}

std::optional<Instance> DecodeInstance(const InstanceLayout& layout, std::string_view file) {
  if (!HasMagic(layout, file)) return std::nullopt;
  return FileReader(layout, file).Read();
}

std::optional<FlawedField> FindFlaw(const InstanceLayout& layout, std::string_view file) {
  if (!HasMagic(layout, file)) return std::nullopt;
  FileReader reader(layout, file);
  static_cast<void>(reader.Read());
  return reader.flaw();
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
