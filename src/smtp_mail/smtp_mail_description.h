#pragma once

#include <cstddef>

#include "description/class_description.h"

namespace brantel {

// What an SMTPMail instance holds, in file order.
namespace smtp_mail_field {
enum : std::size_t { kGateway, kTo, kFrom, kSubject, kMessage, kFieldCount };
}  // namespace smtp_mail_field

extern const ClassDescription kSMTPMail;

}  // namespace brantel
