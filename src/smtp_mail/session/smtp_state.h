#pragma once

#include <atomic>
#include <memory>
#include <string>
#include <string_view>

namespace brantel {

// What mail sessions leave behind for later ones of the same process. Any number of threads may use
// it at the same time.
class SmtpState {
 public:
  constexpr SmtpState() = default;
  SmtpState(const SmtpState&) = delete;
  SmtpState& operator=(const SmtpState&) = delete;
  ~SmtpState();

  // The name by which this machine introduces itself; empty until a session has found it out.
  [[nodiscard]] std::string local_mail_host_name() const;

  // Keeps the name that a session has found out, if it is one, for all later sessions: a later
  // change is not seen.
  void KeepLocalMailHostName(std::string_view name);

 private:
  friend class CarryOver;

  std::atomic<const std::string*> local_mail_host_name_ = nullptr;
  std::atomic<std::string*> carry_over_ = nullptr;
};

// What a session has received behind the end of a reply line. Deliberately the next line is read
// from it even on the next connection: a session takes for itself what is left, so that no other
// has it meanwhile, and leaves what is left then. Of sessions at the same time that leave
// something, the last one's stays.
class CarryOver {
 public:
  // The state must outlive the object.
  explicit CarryOver(SmtpState& state);
  CarryOver(const CarryOver&) = delete;
  CarryOver& operator=(const CarryOver&) = delete;
  ~CarryOver();

  [[nodiscard]] std::string& bytes() noexcept { return *bytes_; }

 private:
  SmtpState& state_;
  std::unique_ptr<std::string> bytes_;
};

}  // namespace brantel
