#include "smtp_mail/smtp_mail_description.h"

#include <array>

#include "smtp_mail/smtp_mail_ids.h"
#include "text/string_table.h"

namespace brantel {
namespace {

// The dialog checks the sender before the recipients. What it asks of the gateway is its own.
constexpr auto kFields = FieldsInFileOrder<smtp_mail_field::kFieldCount>({
    {.index = smtp_mail_field::kGateway,
     .name = "gateway",
     .form = SameRowOnBothPages(
         FormInput::kSingleLine, "gateway",
         "<TR><TD>Mail Gateway (IP):</TD><TD><input type=text size=17 maxlength=29 "
         "name=gateway value=\"%s\"></TD></TR>\r\n"),
     .control = {.kind = ControlKind::kEdit,
                 .id = SMTP_MAIL_GATEWAY,
                 .missing_text_id = text_id::kGatewayInvalid,
                 .longest = 512}},
    {.index = smtp_mail_field::kTo,
     .name = "to",
     .form =
         SameRowOnBothPages(FormInput::kSingleLine, "to",
                            "<TR><TD>To:</TD><TD><input type=text size=40 maxlength=255 name=to "
                            "value=\"%s\"></TD></TR>\r\n"),
     .control = {.kind = ControlKind::kEdit,
                 .id = SMTP_MAIL_TO,
                 .missing_text_id = text_id::kRecipientsInvalid,
                 .required_text = "@",
                 .check_place = smtp_mail_field::kFrom}},
    {.index = smtp_mail_field::kFrom,
     .name = "from",
     .form = SameRowOnBothPages(
         FormInput::kSingleLine, "from",
         "<TR><TD>From:</TD><TD><input type=text size=40 maxlength=255 name=from "
         "value=\"%s\"></TD></TR>\r\n"),
     .control = {.kind = ControlKind::kEdit,
                 .id = SMTP_MAIL_FROM,
                 .missing_text_id = text_id::kSenderInvalid,
                 .required_text = "@",
                 .check_place = smtp_mail_field::kTo}},
    {.index = smtp_mail_field::kSubject,
     .name = "subject",
     .form = SameRowOnBothPages(FormInput::kSingleLine, "subject",
                                "<TR><TD>Subject:</TD><TD><input type=text size=40 maxlength=255 "
                                "name=subject value=\"%s\"></TD></TR>\r\n"),
     .control = {ControlKind::kEdit, SMTP_MAIL_SUBJECT}},
    {.index = smtp_mail_field::kMessage,
     .name = "message",
     .form = SameRowOnBothPages(FormInput::kMultiLine, "message",
                                "<tr><td>Message:</td><td><textarea cols=40 rows=8 "
                                "name=message>%s</textarea></td></tr>\r\n"),
     .control = {ControlKind::kEdit, SMTP_MAIL_MESSAGE}},
});

}  // namespace

constinit const ClassDescription kSMTPMail = {
    .clsid = ParseGuid(SMTP_MAIL_CLSID),
    .registry_script_id = SMTP_MAIL_REGISTRY_SCRIPT,
    .icon_id = SMTP_MAIL_ICON,
    .instances = {.class_name = "SMTPMail",
                  .magic = ParseGuid("D6DD268C-A32B-EF86-2683-A7DA9410F949"),
                  .fields = kFields,
                  .text_reader = TextReader::kChunked,
                  .short_file = ShortFile::kRefused,
                  .default_name_id = text_id::kDefaultSmtpMail,
                  .load_failure_end = "\r\n"},
    // The help file has no page of this dialog's own, so help opens at the contents.
    .dialog = {.template_id = SMTP_MAIL_DIALOG,
               .add_title_id = text_id::kAddSmtpMail,
               .edit_title_id = text_id::kEditSmtpMail,
               .name_control = SMTP_MAIL_NAME,
               .name_error_focus = SMTP_MAIL_NAME,
               .prefilled = false,
               .help_button = SMTP_MAIL_HELP},
    // One title for both pages, and not that of the dialogs.
    .web_form = WebFormDescription{.add_title_id = text_id::kSmtpMailPage,
                                   .edit_title_id = text_id::kSmtpMailPage,
                                   .add_name_size = "17"},
};

}  // namespace brantel
