#pragma once

#include <cstddef>
#include <string>
#include <utility>
#include <vector>

namespace brantel::host {

// Whom a mail is for, and what the relay has said to each.
class RecipientTally {
 public:
  // The next recipient, of whom the relay has said nothing yet.
  void Name(std::string address) { recipients_.push_back({std::move(address)}); }
  // What it has said of that one.
  void Accept();
  void Refuse(std::string reply);

  [[nodiscard]] std::size_t size() const { return recipients_.size(); }
  [[nodiscard]] bool HasAccepted() const;

  // In clauses, of whom it has said something else than yes.
  [[nodiscard]] std::vector<std::string> Remarks() const;

 private:
  struct Recipient {
    std::string address;
    bool is_accepted = false;
    std::string refusal{};  // empty: the relay has not answered
  };

  [[nodiscard]] std::string Clause(std::size_t count, const std::string& what) const;

  std::vector<Recipient> recipients_;
};

// The clauses with something between them.
std::string Join(const std::vector<std::string>& clauses, const std::string& separator);

}  // namespace brantel::host
