#pragma once

#include <cstddef>
#include <memory>
#include <string_view>

namespace brantel {

// An HTML text that grows at its end.
class HtmlText {
 public:
  // A text up to the expected size takes a single allocation.
  explicit HtmlText(std::size_t expected_size)
      : text_(std::make_unique_for_overwrite<char[]>(expected_size)), capacity_(expected_size) {}

  void Append(std::string_view html);

  // Appends the text with < > " & written as entities, so that it stays text between tags and
  // inside double quotes. Every other byte is copied.
  void AppendEscaped(std::string_view text);

  // Valid until the text grows.
  [[nodiscard]] std::string_view view() const { return {text_.get(), size_}; }

 private:
  // The end of the text, behind which there is room for this many bytes.
  char* Room(std::size_t count);
  void Grow(std::size_t count);

  std::unique_ptr<char[]> text_;
  std::size_t size_ = 0;
  std::size_t capacity_;
};

}  // namespace brantel
