#include "smtp_mail/message/recipient_list.h"

#include <algorithm>
#include <cstddef>

namespace brantel {
namespace {

constexpr std::size_t kLongestList = 511;

// The length of the part of the list that is served.
std::size_t ServedLength(std::string_view list) {
  if (list.size() <= kLongestList) return list.size();
  const std::size_t comma = list.rfind(',', kLongestList);
  return comma == std::string_view::npos ? 0 : comma;
}

std::string_view WithoutLeading(std::string_view text, std::string_view characters) {
  return text.substr(std::min(text.find_first_not_of(characters), text.size()));
}

}  // namespace

RecipientList SplitRecipients(std::string_view list) {
  RecipientList recipients;
  std::string_view served = list.substr(0, ServedLength(list));
  recipients.left_out = WithoutLeading(list.substr(served.size()), " ,");
  for (std::size_t comma = served.rfind(','); comma != std::string_view::npos;
       comma = served.rfind(',')) {
    recipients.behind_commas.push_back(WithoutLeading(served.substr(comma), " ,"));
    served = served.substr(0, comma);
  }
  recipients.first = served;
  return recipients;
}

}  // namespace brantel
