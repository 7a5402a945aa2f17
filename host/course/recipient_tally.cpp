#include "host/course/recipient_tally.h"

#include <algorithm>
#include <utility>

namespace brantel::host {
namespace {

// As many as are worth a line.
constexpr std::size_t kMostNamed = 3;

}  // namespace

void RecipientTally::Accept() {
  recipients_.back().is_accepted = true;
}

void RecipientTally::Refuse(std::string reply) {
  recipients_.back().refusal = std::move(reply);
}

bool RecipientTally::HasAccepted() const {
  return std::ranges::any_of(recipients_, &Recipient::is_accepted);
}

std::vector<std::string> RecipientTally::Remarks() const {
  std::vector<std::string> refusals;
  std::size_t unanswered = 0;
  for (const Recipient& recipient : recipients_) {
    if (recipient.is_accepted) continue;
    if (recipient.refusal.empty()) {
      ++unanswered;
    } else {
      refusals.push_back(recipient.address + " (" + recipient.refusal + ")");
    }
  }
  std::vector<std::string> remarks;
  if (unanswered > 0) remarks.push_back(Clause(unanswered, "not answered"));
  if (refusals.empty()) return remarks;
  const std::size_t count = refusals.size();
  if (count > kMostNamed) {
    refusals.resize(kMostNamed);
    refusals.emplace_back("...");
  }
  remarks.push_back(Clause(count, "refused: " + Join(refusals, ", ")));
  return remarks;
}

std::string RecipientTally::Clause(std::size_t count, const std::string& what) const {
  return std::to_string(count) + " of " + std::to_string(recipients_.size()) + " recipients " +
         (count == 1 ? "was " : "were ") + what;
}

std::string Join(const std::vector<std::string>& clauses, const std::string& separator) {
  std::string joined;
  for (const std::string& clause : clauses) {
    joined += (joined.empty() ? "" : separator) + clause;
  }
  return joined;
}

}  // namespace brantel::host
