#include "beeper/beeper_description.h"

#include <array>

#include "beeper/beeper_ids.h"
#include "description/settings_profile.h"
#include "text/string_table.h"

namespace brantel {
namespace {

// The tabs, blanks and letter case of the rows differ from field to field and from page to page.
constexpr auto kFields = FieldsInFileOrder<beeper_field::kFieldCount>({
    {.index = beeper_field::kBeeperNumber,
     .name = "beeper number",
     .form = {FormInput::kSingleLine, "beepernumber",
              "<TR><TD>Beeper Number:</TD>\t<TD><input size=40 maxlength=255 name=beepernumber "
              "value=\"%s\"></TD></TR>",
              "<tr><td>Beeper Number:</td><td><input type=TEXT size=40 maxlength=255 "
              "name=beepernumber value=\"%s\"></td></tr>\r\n"},
     .control = {ControlKind::kEdit, BEEPER_NUMBER, text_id::kBeeperNumberMissing}},
    {.index = beeper_field::kDialingOptions,
     .name = "dialing options",
     .control = {ControlKind::kEdit, BEEPER_DIALING_OPTIONS, text_id::kDialingOptionsMissing}},
    {.index = beeper_field::kUpCode,
     .name = "up code",
     .form = {FormInput::kSingleLine, "upcode",
              "<TR><TD>Up Code:</TD><TD><input size=40 maxlength=255\t\t\tname=upcode   "
              "value=\"%s\"></TD></TR>",
              "<tr><td>Up Code:</td><td><input type=TEXT size=40 maxlength=255 name=upcode "
              "value=\"%s\"></td></tr>\r\n"},
     .control = {ControlKind::kEdit, BEEPER_UP_CODE, text_id::kUpCodeMissing}},
    {.index = beeper_field::kDownCode,
     .name = "down code",
     .form = {FormInput::kSingleLine, "downcode",
              "<TR><TD>Down Code:</TD><TD><input size=40 maxlength=255\t\t\tname=downcode "
              "value=\"%s\"></TD></TR>",
              "<tr><td>Down Code:</td><td><input type=TEXT size=40 maxlength=255 name=downcode "
              "value=\"%s\"></td></tr>\r\n"},
     .control = {ControlKind::kEdit, BEEPER_DOWN_CODE, text_id::kDownCodeMissing}},
    {.index = beeper_field::kTrapCode,
     .name = "SNMP trap code",
     .form = {FormInput::kSingleLine, "trapcode",
              "<TR><TD>SNMP Trap Code:</TD><TD><INPUT size=40 maxLength=255\tname=trapcode "
              "value=\"%s\"> </TD></TR>",
              "<tr><td>SNMP Trap Code:</td><td><input type=TEXT size=40 maxlength=255 "
              "name=trapcode value=\"%s\"></td></tr>\r\n"},
     .control = {ControlKind::kEdit, BEEPER_TRAP_CODE, text_id::kTrapCodeMissing}},
    {.index = beeper_field::kReportMessage,
     .name = "report message",
     .presence = FieldPresence::kOptional,
     .form = {.input = FormInput::kUnshown, .name = "reportmessage"}},
    {.index = beeper_field::kSettingsProfile,
     .name = "settings profile",
     .kind = FieldKind::kInteger,
     .presence = FieldPresence::kOptional,
     .minimum = kFirstSettingsProfile,
     .maximum = kLastSettingsProfile,
     .control = {ControlKind::kList, BEEPER_MODEM_SETUP}},
});

constexpr auto kSettings = SettingsInOrder<beeper_setting::kSettingCount>({
    {beeper_setting::kComPort, "Settings_COMPort", "COM1"},
    {beeper_setting::kBaud, "Settings_Baud", "300"},
    {beeper_setting::kDialString, "Settings_DialString", "ATDT%s,,,,%s#"},
    {beeper_setting::kModemString, "Settings_ModemString", "ATE0Q0V1X4"},
    {beeper_setting::kTimeout, "Settings_Timeout", "5"},
});

}  // namespace

constinit const ClassDescription kBeeper = {
    .clsid = ParseGuid(BEEPER_CLSID),
    .registry_script_id = BEEPER_REGISTRY_SCRIPT,
    .icon_id = BEEPER_ICON,
    .instances = {.class_name = "Beeper",
                  .magic = ParseGuid("E546F481-983D-5A7E-610B-E80BF158F22E"),
                  .fields = kFields,
                  .default_name_id = text_id::kDefaultBeeper},
    .dialog = {.template_id = BEEPER_DIALOG,
               .add_title_id = text_id::kAddBeeper,
               .edit_title_id = text_id::kEditBeeper,
               .name_control = BEEPER_NAME,
               .name_error_focus = BEEPER_NAME,
               .help_context = 131197},
    .web_form = WebFormDescription{.add_title_id = text_id::kAddBeeper,
                                   .edit_title_id = text_id::kEditBeeper},
    .profile_field = beeper_field::kSettingsProfile,
    .settings = {text_id::kBeeperSettingsKey, kSettings},
};

}  // namespace brantel
