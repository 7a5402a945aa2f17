#include "host/console/page_template.h"

#include <cstddef>
#include <stdexcept>

namespace brantel::host {
namespace {

constexpr std::string_view kTagBegin = "{{";
constexpr std::string_view kTagEnd = "}}";

// Unicode has pictures of the control characters from here on.
constexpr unsigned kControlPictures = 0x2400;
constexpr unsigned kPictureOfDelete = 0x2421;

std::string ControlPicture(char c) {
  const auto byte = static_cast<unsigned char>(c);
  const unsigned picture = byte == 0x7F ? kPictureOfDelete : kControlPictures + byte;
  return {static_cast<char>(0xE0U | (picture >> 12U)),
          static_cast<char>(0x80U | ((picture >> 6U) & 0x3FU)),
          static_cast<char>(0x80U | (picture & 0x3FU))};
}

bool IsUnshownControl(char c) {
  const auto byte = static_cast<unsigned char>(c);
  return (byte < 0x20 && c != '\n' && c != '\r' && c != '\t') || byte == 0x7F;
}

std::string_view EntityOf(char c) {
  switch (c) {
    case '<':
      return "&lt;";
    case '>':
      return "&gt;";
    case '&':
      return "&amp;";
    case '"':
      return "&quot;";
    case '\'':
      return "&#39;";
    default:
      return {};
  }
}

class TemplateFilling {
 public:
  TemplateFilling(const PageValues& values, TemplateFinder find) : find_(find) {
    scopes_.push_back(&values);
  }

  std::string Fill(std::string_view text) {
    FillIn(text);
    return std::move(filled_);
  }

 private:
  void FillIn(std::string_view text) {
    while (true) {
      const std::size_t begin = text.find(kTagBegin);
      filled_.append(text.substr(0, begin));
      if (begin == std::string_view::npos) return;
      text.remove_prefix(begin + kTagBegin.size());
      const std::size_t end = text.find(kTagEnd);
      if (end == std::string_view::npos) throw std::logic_error("a tag has no end");
      const std::string_view tag = text.substr(0, end);
      text.remove_prefix(end + kTagEnd.size());
      FillTag(tag, text);
    }
  }

  // Takes the section from the text, where the tag begins one.
  void FillTag(std::string_view tag, std::string_view& text) {
    if (tag.starts_with('#')) return FillSection(tag.substr(1), CutSection(tag.substr(1), text));
    if (tag.starts_with('^')) {
      const std::string_view section = CutSection(tag.substr(1), text);
      const auto* const items = FindItems(tag.substr(1));
      if (items == nullptr || items->empty()) FillIn(section);
    } else if (tag.starts_with('>')) {
      FillIn(find_(tag.substr(1)));
    } else {
      filled_.append(EscapeHtml(FindText(tag)));
    }
  }

  void FillSection(std::string_view name, std::string_view section) {
    const auto* const items = FindItems(name);
    if (items == nullptr) return;
    for (const PageValues& item : *items) {
      scopes_.push_back(&item);
      FillIn(section);
      scopes_.pop_back();
    }
  }

  static std::string_view CutSection(std::string_view name, std::string_view& text) {
    const std::string end = "{{/" + std::string(name) + "}}";
    const std::size_t size = text.find(end);
    if (size == std::string_view::npos) throw std::logic_error(end + " is missing");
    const std::string_view section = text.substr(0, size);
    text.remove_prefix(size + end.size());
    return section;
  }

  [[nodiscard]] const std::string& FindText(std::string_view name) const {
    // NOLINTNEXTLINE(modernize-loop-convert): clang++ 14 cannot compile the library's reverse_view
    for (auto scope = scopes_.rbegin(); scope != scopes_.rend(); ++scope) {
      if (const std::string* const text = (*scope)->FindText(name)) return *text;
    }
    throw std::logic_error("nothing is named " + std::string(name));
  }

  [[nodiscard]] const std::vector<PageValues>* FindItems(std::string_view name) const {
    // NOLINTNEXTLINE(modernize-loop-convert): clang++ 14 cannot compile the library's reverse_view
    for (auto scope = scopes_.rbegin(); scope != scopes_.rend(); ++scope) {
      if (const auto* const items = (*scope)->FindItems(name)) return items;
    }
    return nullptr;
  }

  TemplateFinder find_;
  std::vector<const PageValues*> scopes_;
  std::string filled_;
};

}  // namespace

PageValues& PageValues::Set(std::string name, std::string_view text) {
  texts_.insert_or_assign(std::move(name), std::string(text));
  return *this;
}

PageValues& PageValues::SetFlag(std::string name, bool is_set) {
  lists_.insert_or_assign(std::move(name), std::vector<PageValues>(is_set ? 1 : 0));
  return *this;
}

PageValues& PageValues::Add(const std::string& list) {
  return lists_[list].emplace_back();
}

const std::string* PageValues::FindText(std::string_view name) const {
  const auto found = texts_.find(name);
  return found == texts_.end() ? nullptr : &found->second;
}

const std::vector<PageValues>* PageValues::FindItems(std::string_view name) const {
  const auto found = lists_.find(name);
  return found == lists_.end() ? nullptr : &found->second;
}

std::string EscapeHtml(std::string_view text) {
  std::string escaped;
  escaped.reserve(text.size());
  for (const char c : text) {
    const std::string_view entity = EntityOf(c);
    if (!entity.empty()) {
      escaped += entity;
    } else if (IsUnshownControl(c)) {
      escaped += ControlPicture(c);
    } else {
      escaped += c;
    }
  }
  return escaped;
}

std::string FillTemplate(std::string_view page_template, const PageValues& values,
                         TemplateFinder find) {
  return TemplateFilling(values, find).Fill(page_template);
}

}  // namespace brantel::host
