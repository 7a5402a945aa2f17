#include "modem/beeper_layout.h"

#include <array>

#include "framework/settings_profile.h"
#include "framework/string_table.h"

namespace brantel {
namespace {

// The tabs, blanks and letter case of the rows differ from field to field and from page to page.
constexpr std::array<InstanceField, 7> kFields = {{
    {.name = "beeper number",
     .form = {FormInput::kSingleLine, "beepernumber",
              "<TR><TD>Beeper Number:</TD>\t<TD><input size=40 maxlength=255 name=beepernumber "
              "value=\"%s\"></TD></TR>",
              "<tr><td>Beeper Number:</td><td><input type=TEXT size=40 maxlength=255 "
              "name=beepernumber value=\"%s\"></td></tr>\r\n"},
     .control = {ControlKind::kEdit, 218, text_id::kBeeperNumberMissing}},
    {.name = "dialing options",
     .control = {ControlKind::kEdit, 219, text_id::kDialingOptionsMissing}},
    {.name = "up code",
     .form = {FormInput::kSingleLine, "upcode",
              "<TR><TD>Up Code:</TD><TD><input size=40 maxlength=255\t\t\tname=upcode   "
              "value=\"%s\"></TD></TR>",
              "<tr><td>Up Code:</td><td><input type=TEXT size=40 maxlength=255 name=upcode "
              "value=\"%s\"></td></tr>\r\n"},
     .control = {ControlKind::kEdit, 220, text_id::kUpCodeMissing}},
    {.name = "down code",
     .form = {FormInput::kSingleLine, "downcode",
              "<TR><TD>Down Code:</TD><TD><input size=40 maxlength=255\t\t\tname=downcode "
              "value=\"%s\"></TD></TR>",
              "<tr><td>Down Code:</td><td><input type=TEXT size=40 maxlength=255 name=downcode "
              "value=\"%s\"></td></tr>\r\n"},
     .control = {ControlKind::kEdit, 221, text_id::kDownCodeMissing}},
    {.name = "SNMP trap code",
     .form = {FormInput::kSingleLine, "trapcode",
              "<TR><TD>SNMP Trap Code:</TD><TD><INPUT size=40 maxLength=255\tname=trapcode "
              "value=\"%s\"> </TD></TR>",
              "<tr><td>SNMP Trap Code:</td><td><input type=TEXT size=40 maxlength=255 "
              "name=trapcode value=\"%s\"></td></tr>\r\n"},
     .control = {ControlKind::kEdit, 222, text_id::kTrapCodeMissing}},
    {.name = "report message",
     .presence = FieldPresence::kOptional,
     .form = {.input = FormInput::kUnshown, .name = "reportmessage"}},
    {.name = "settings profile",
     .kind = FieldKind::kInteger,
     .presence = FieldPresence::kOptional,
     .minimum = kFirstSettingsProfile,
     .maximum = kLastSettingsProfile,
     .control = {ControlKind::kList, 251}},
}};

}  // namespace

constinit const InstanceLayout kBeeperLayout = {
    .class_name = "Beeper",
    .magic = ParseGuid("E546F481-983D-5A7E-610B-E80BF158F22E"),
    .fields = kFields,
    .default_name_id = text_id::kDefaultBeeper,
};

constinit const WebFormSpec kBeeperWebForm = {
    .layout = kBeeperLayout,
    .add_title_id = text_id::kAddBeeper,
    .edit_title_id = text_id::kEditBeeper,
    .profile_field = beeper_field::kSettingsProfile,
};

}  // namespace brantel
