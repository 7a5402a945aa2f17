#include "tests/unit/web/browser_form.h"

#include <algorithm>
#include <array>
#include <stdexcept>
#include <utility>

namespace brantel {
namespace {

bool IsSpace(char c) {
  return c == ' ' || (c >= '\t' && c <= '\r');
}

bool IsUnreserved(char c) {
  return (c >= '0' && c <= '9') || (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || c == '*' ||
         c == '-' || c == '.' || c == '_';
}

std::string Lower(std::string_view text) {
  std::string lower(text);
  for (char& c : lower) {
    if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
  }
  return lower;
}

std::string UrlEncoded(std::string_view text) {
  constexpr std::string_view kDigits = "0123456789ABCDEF";
  std::string encoded;
  for (const char c : text) {
    if (c == ' ') {
      encoded += '+';
    } else if (IsUnreserved(c)) {
      encoded += c;
    } else {
      const auto byte = static_cast<unsigned char>(c);
      encoded += {'%', kDigits[byte >> 4U], kDigits[byte & 0xFU]};
    }
  }
  return encoded;
}

std::string WithoutEntities(std::string_view html) {
  constexpr std::array<std::pair<std::string_view, char>, 4> kEntities = {
      {{"&lt;", '<'}, {"&gt;", '>'}, {"&quot;", '"'}, {"&amp;", '&'}}};
  std::string text;
  while (!html.empty()) {
    const auto* const entity = std::ranges::find_if(
        kEntities, [&](const auto& candidate) { return html.starts_with(candidate.first); });
    const bool found = entity != kEntities.end();
    text += found ? entity->second : html.front();
    html.remove_prefix(found ? entity->first.size() : 1);
  }
  return text;
}

struct Tag {
  std::string name;  // in lower case, like the names of the attributes
  std::map<std::string, std::string> attributes;

  [[nodiscard]] bool Has(const std::string& attribute) const {
    return attributes.contains(attribute);
  }
  [[nodiscard]] std::string Value(const std::string& attribute) const {
    const auto found = attributes.find(attribute);
    return found == attributes.end() ? "" : found->second;
  }
};

class PageReader {
 public:
  explicit PageReader(std::string_view page) : rest_(page) {}

  // Goes behind the next tag; false at the end of the page.
  bool ReadTag(Tag& tag) {
    const std::size_t start = rest_.find('<');
    if (start == std::string_view::npos) return false;
    rest_.remove_prefix(start + 1);
    tag = {.name = Lower(TakeUntil([](char c) { return IsSpace(c) || c == '>'; })),
           .attributes = {}};
    while (SkipSpace(), !rest_.empty() && rest_.front() != '>')
      ReadAttribute(tag);
    Skip();
    return true;
  }

  // The text up to the next tag of this name.
  std::string TextUntil(std::string_view end) {
    const std::size_t length = Lower(rest_).find(end);
    const std::string_view text = rest_.substr(0, length);
    rest_.remove_prefix(text.size());
    return WithoutEntities(text);
  }

 private:
  void Skip() { rest_.remove_prefix(std::min<std::size_t>(1, rest_.size())); }
  void SkipSpace() {
    TakeUntil([](char c) { return !IsSpace(c); });
  }

  template <typename IsEnd>
  std::string_view TakeUntil(IsEnd is_end) {
    const auto end = std::ranges::find_if(rest_, is_end);
    const std::string_view taken = rest_.substr(0, static_cast<std::size_t>(end - rest_.begin()));
    rest_.remove_prefix(taken.size());
    return taken;
  }

  void ReadAttribute(Tag& tag) {
    std::string name = Lower(TakeUntil([](char c) { return IsSpace(c) || c == '>' || c == '='; }));
    std::string value;
    if (!rest_.empty() && rest_.front() == '=') {
      Skip();
      value = ReadValue();
    }
    // Where a name comes twice the first one counts.
    tag.attributes.emplace(std::move(name), std::move(value));
  }

  std::string ReadValue() {
    if (rest_.empty() || rest_.front() != '"') {
      return WithoutEntities(TakeUntil([](char c) { return IsSpace(c) || c == '>'; }));
    }
    Skip();
    std::string value = WithoutEntities(TakeUntil([](char c) { return c == '"'; }));
    Skip();
    return value;
  }

  std::string_view rest_;
};

// An input of one line holds no line breaks.
std::string OneLine(std::string text) {
  std::erase_if(text, [](char c) { return c == '\r' || c == '\n'; });
  return text;
}

// In a text area every line break is posted as CR LF, and the first one of the page's is dropped.
std::string Lines(std::string_view text) {
  std::string lines;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const bool breaks = text[i] == '\r' || text[i] == '\n';
    if (text.substr(i).starts_with("\r\n")) ++i;
    if (breaks && i < 2 && lines.empty()) continue;
    lines += breaks ? "\r\n" : std::string(1, text[i]);
  }
  return lines;
}

bool IsPosted(const Tag& tag) {
  if (tag.Value("name").empty() || tag.Has("disabled")) return false;
  return Lower(tag.Value("type")) != "radio" || tag.Has("checked");
}

}  // namespace

std::string PostedForm(std::string_view page, const std::map<std::string, std::string>& typed) {
  PageReader reader(page);
  Tag tag;
  do {
    if (!reader.ReadTag(tag)) throw std::runtime_error("the page has no form");
  } while (tag.name != "form");

  std::string post;
  while (reader.ReadTag(tag) && tag.name != "/form") {
    std::string value;
    if (tag.name == "input") {
      value = OneLine(tag.Value("value"));
    } else if (tag.name == "textarea") {
      value = Lines(reader.TextUntil("</textarea>"));
    } else {
      continue;
    }
    if (!IsPosted(tag)) continue;
    const std::string name = tag.Value("name");
    if (value.empty() && typed.contains(name)) value = typed.at(name);
    post += (post.empty() ? "" : "&") + UrlEncoded(name) + "=" + UrlEncoded(value);
  }
  return post;
}

}  // namespace brantel
