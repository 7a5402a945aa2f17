#pragma once

#include <cstddef>

#include "framework/instance_layout.h"
#include "framework/web_form_spec.h"

namespace brantel {

// What a Pager instance holds, in file order.
namespace pager_field {
enum : std::size_t {
  kPagerNumber,
  kTerminalPassword,
  kPagerId,
  kMessage,
  kProtocol,
  kSettingsProfile,
};
}  // namespace pager_field

extern const InstanceLayout kPagerLayout;
extern const WebFormSpec kPagerWebForm;

}  // namespace brantel
