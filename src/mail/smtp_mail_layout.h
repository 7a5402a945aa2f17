#pragma once

#include <cstddef>

#include "framework/instance_layout.h"
#include "framework/web_form_spec.h"

namespace brantel {

// What an SMTPMail instance holds, in file order.
namespace smtp_mail_field {
enum : std::size_t { kGateway, kTo, kFrom, kSubject, kMessage };
}  // namespace smtp_mail_field

extern const InstanceLayout kSmtpMailLayout;
extern const WebFormSpec kSmtpMailWebForm;

}  // namespace brantel
