#pragma once

#include <algorithm>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "host/text/letter_case.h"

namespace brantel::host {

struct HttpField {
  std::string name;
  std::string value;
};

// A request whose form has been checked already: the server has read all of it.
struct HttpRequest {
  std::string method;
  std::string target;  // path and query, as sent
  std::vector<HttpField> fields{};
  std::string body{};
  std::string peer{};  // the client's address

  // The value of the field; empty where there is none, nothing where there are several, which no
  // honest client sends of the fields that are asked for here.
  [[nodiscard]] std::optional<std::string_view> Field(std::string_view name) const {
    std::optional<std::string_view> found;
    for (const HttpField& field : fields) {
      if (!EqualIgnoringCase(field.name, name)) continue;
      if (found) return std::nullopt;
      found = field.value;
    }
    return found.value_or("");
  }
};

// What a response goes on with after its body, piece by piece.
class EventStream {
 public:
  virtual ~EventStream() = default;

  // What has come since the last call, often nothing. No value: the stream has ended.
  virtual std::optional<std::string> Poll() = 0;
};

struct HttpResponse {
  unsigned status = 200;
  std::vector<HttpField> fields{};
  std::string body{};
  std::unique_ptr<EventStream> stream{};  // none: the body is all

  // The field's value, of the first of that name; empty where there is none.
  [[nodiscard]] std::string_view Field(std::string_view name) const {
    const auto found = std::ranges::find_if(
        fields, [&](const HttpField& field) { return EqualIgnoringCase(field.name, name); });
    return found == fields.end() ? std::string_view() : found->value;
  }
};

}  // namespace brantel::host
