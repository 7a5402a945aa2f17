#pragma once

#include <cstddef>

#include "framework/instance_layout.h"
#include "framework/web_form_spec.h"

namespace brantel {

// What a WinPopup instance holds, in file order.
namespace win_popup_field {
enum : std::size_t { kDestination, kMessage };
}  // namespace win_popup_field

extern const InstanceLayout kWinPopupLayout;
extern const WebFormSpec kWinPopupWebForm;

}  // namespace brantel
