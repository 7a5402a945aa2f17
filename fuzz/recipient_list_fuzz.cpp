// Recipient lists: no address holds a comma, all stand in the list in the order in which they come,
// and nothing of the first 511 characters but commas, blanks and an address that is cut gets lost.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "fuzz/fuzz_input.h"
#include "smtp_mail/message/recipient_list.h"

namespace {

using brantel::Require;

std::string WithoutBlanksAndCommas(std::string_view text) {
  std::string kept(text);
  std::erase_if(kept, [](char c) { return c == ' ' || c == ','; });
  return kept;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string list(data, data + size);
  const brantel::RecipientList recipients = brantel::SplitRecipients(list);

  std::string together(recipients.first);
  std::size_t length = recipients.first.size();
  const std::vector<std::string_view> others(recipients.behind_commas.rbegin(),
                                             recipients.behind_commas.rend());
  for (const std::string_view address : others) {
    together += address;
    length += address.size() + 1;
  }
  Require(length <= 511);
  Require(together.find(',') == std::string::npos);
  Require(WithoutBlanksAndCommas(together + std::string(recipients.left_out)) ==
          WithoutBlanksAndCommas(list));
  if (list.size() <= 511) Require(recipients.left_out.empty());
  return 0;
}
