#pragma once

#include <array>
#include <string>

#include "beeper/beeper_description.h"
#include "instance/instance_codec.h"

namespace brantel::sample_beeper {

inline constexpr std::array<const char*, 6> kTexts = {
    "+1 202 555 0123",
    "ATDT%s,,,,%s#",
    "1001",
    "1002",
    "1003",
    "%n went down at %t, last seen answering at %l; see the operator's handbook, page 12"};

inline std::string File() {
  Instance instance(kBeeper.instances.fields.size());
  for (std::size_t i = 0; i < kTexts.size(); ++i)
    instance.set_text(i, kTexts.at(i));
  instance.set_integer(beeper_field::kSettingsProfile, 2);
  return EncodeInstance(kBeeper.instances, instance);
}

}  // namespace brantel::sample_beeper
