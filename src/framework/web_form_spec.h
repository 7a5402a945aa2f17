#pragma once

#include <cstddef>
#include <optional>
#include <string_view>

#include "framework/instance_layout.h"

namespace brantel {

// What a class's web forms have of their own; the rows stand in the layout.
struct WebFormSpec {
  const InstanceLayout& layout;
  unsigned add_title_id = 0;
  unsigned edit_title_id = 0;
  std::string_view add_name_size = "40";  // of the input for the new instance's name
  // The number field that says which settings profile an instance uses. No row carries it.
  std::optional<std::size_t> profile_field{};
};

}  // namespace brantel
