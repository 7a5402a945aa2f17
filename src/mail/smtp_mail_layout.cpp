#include "mail/smtp_mail_layout.h"

#include <array>

#include "framework/string_table.h"

namespace brantel {
namespace {

// The dialog asks more of the gateway and the addresses than that they are there, in an order of
// its own, so it checks them itself.
constexpr std::array<InstanceField, 5> kFields = {{
    {.name = "gateway",
     .form = SameRowOnBothPages(
         FormInput::kSingleLine, "gateway",
         "<TR><TD>Mail Gateway (IP):</TD><TD><input type=text size=17 maxlength=29 "
         "name=gateway value=\"%s\"></TD></TR>\r\n"),
     .control = {.kind = ControlKind::kEdit, .id = 202, .longest = 512}},
    {.name = "to",
     .form =
         SameRowOnBothPages(FormInput::kSingleLine, "to",
                            "<TR><TD>To:</TD><TD><input type=text size=40 maxlength=255 name=to "
                            "value=\"%s\"></TD></TR>\r\n"),
     .control = {ControlKind::kEdit, 205}},
    {.name = "from",
     .form = SameRowOnBothPages(
         FormInput::kSingleLine, "from",
         "<TR><TD>From:</TD><TD><input type=text size=40 maxlength=255 name=from "
         "value=\"%s\"></TD></TR>\r\n"),
     .control = {ControlKind::kEdit, 204}},
    {.name = "subject",
     .form = SameRowOnBothPages(FormInput::kSingleLine, "subject",
                                "<TR><TD>Subject:</TD><TD><input type=text size=40 maxlength=255 "
                                "name=subject value=\"%s\"></TD></TR>\r\n"),
     .control = {ControlKind::kEdit, 206}},
    {.name = "message",
     .form = SameRowOnBothPages(FormInput::kMultiLine, "message",
                                "<tr><td>Message:</td><td><textarea cols=40 rows=8 "
                                "name=message>%s</textarea></td></tr>\r\n"),
     .control = {ControlKind::kEdit, 201}},
}};

}  // namespace

constinit const InstanceLayout kSmtpMailLayout = {
    .class_name = "SMTPMail",
    .magic = ParseGuid("D6DD268C-A32B-EF86-2683-A7DA9410F949"),
    .fields = kFields,
    .text_reader = TextReader::kChunked,
    .short_file = ShortFile::kRefused,
    .default_name_id = text_id::kDefaultSmtpMail,
    .load_failure_end = "\r\n",
};

// One title for both pages, and not that of the dialogs.
constinit const WebFormSpec kSmtpMailWebForm = {
    .layout = kSmtpMailLayout,
    .add_title_id = text_id::kSmtpMailPage,
    .edit_title_id = text_id::kSmtpMailPage,
    .add_name_size = "17",
};

}  // namespace brantel
