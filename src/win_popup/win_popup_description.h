#pragma once

#include <cstddef>

#include "description/class_description.h"

namespace brantel {

// What a WinPopup instance holds, in file order.
namespace win_popup_field {
enum : std::size_t { kDestination, kMessage, kFieldCount };
}  // namespace win_popup_field

extern const ClassDescription kWinPopup;

}  // namespace brantel
