#pragma once

#include <filesystem>
#include <span>
#include <string>

#include "tests/module/expected_classes.h"
#include "tests/module/scratch_directory.h"

namespace brantel {

// An alert of a class, or of one of its protocols.
struct SampleAlert {
  const char* name;
  const ExpectedClass& notifier_class;
  // Of the instance.
  std::string fields;
  // What the far end has of it in the end, with "%n" and "%C" as in the host's texts; all of it, or
  // with something around.
  std::string delivery;
  bool uses_modem = false;

  // What a host fills in for "%C", given what it fills in for "%n".
  [[nodiscard]] std::string EventOf(const std::string& name_of_item) const;
  [[nodiscard]] std::string DeliveryOf(const std::string& name_of_item) const;
};

std::span<const SampleAlert> SampleAlerts();

inline std::ostream& operator<<(std::ostream& out, const SampleAlert& alert) {
  return out << alert.name;
}

// The instances of all sample alerts, and the sounds that the call plays. The current folder is
// where these are meanwhile.
class SampleInstances {
 public:
  SampleInstances();
  SampleInstances(const SampleInstances&) = delete;
  SampleInstances& operator=(const SampleInstances&) = delete;
  ~SampleInstances();

  [[nodiscard]] std::wstring PathOf(const SampleAlert& alert) const;
  [[nodiscard]] const std::filesystem::path& folder() const { return scratch_.path(); }

 private:
  ScratchDirectory scratch_;
  const std::filesystem::path before_;
};

}  // namespace brantel
