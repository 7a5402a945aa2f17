#include "pager/pager_description.h"

#include <array>

#include "description/settings_profile.h"
#include "pager/pager_ids.h"
#include "text/string_table.h"

namespace brantel {
namespace {

// In the order of the protocols' names.
constexpr std::array<int, 4> kProtocolButtons = {PAGER_TAP, PAGER_SMS_TAP, PAGER_NTT,
                                                 PAGER_UCP_SMS};

constexpr auto kFields = FieldsInFileOrder<pager_field::kFieldCount>({
    {.index = pager_field::kPagerNumber,
     .name = "pager number",
     .form =
         SameRowOnBothPages(FormInput::kSingleLine, "pagernumber",
                            "<tr><td>Pager Number:</td><td><input type=TEXT size=40 maxlength=255 "
                            "name=pagernumber value=\"%s\"></td></tr>\r\n"),
     .control = {ControlKind::kEdit, PAGER_NUMBER, text_id::kPagerNumberMissing}},
    {.index = pager_field::kTerminalPassword,
     .name = "terminal password",
     .form = SameRowOnBothPages(
         FormInput::kSingleLine, "password",
         "<tr><td>Terminal Password:</td><td><input type=TEXT size=40 maxlength=255 "
         "name=password value=\"%s\"></td></tr>\r\n"),
     .control = {ControlKind::kEdit, PAGER_PASSWORD}},
    {.index = pager_field::kPagerId,
     .name = "pager ID",
     .form = SameRowOnBothPages(FormInput::kSingleLine, "pagerid",
                                "<tr><td>PagerID:</td><td><input type=TEXT size=40 maxlength=255 "
                                "name=pagerid value=\"%s\"></td></tr>\r\n"),
     .control = {ControlKind::kEdit, PAGER_ID}},
    {.index = pager_field::kMessage,
     .name = "message",
     .form = SameRowOnBothPages(FormInput::kSingleLine, "message",
                                "<tr><td>Message:</td><td><input type=TEXT size=40 maxlength=255 "
                                "name=message value=\"%s\"></td></tr>\r\n"),
     .control = {ControlKind::kEdit, PAGER_MESSAGE}},
    {.index = pager_field::kProtocol,
     .name = "protocol",
     // A text that is no protocol's name is sent as the first one, so that one is shown for it.
     .form = SameRowOnBothPages(FormInput::kChoice, "protocol",
                                "<tr><td>Protocol:</td><td>%s</td></tr>\r\n",
                                {text_id::kFirstProtocol, 4}),
     .control = {.kind = ControlKind::kChoice, .choice_buttons = kProtocolButtons}},
    {.index = pager_field::kSettingsProfile,
     .name = "settings profile",
     .kind = FieldKind::kInteger,
     .presence = FieldPresence::kOptional,
     .minimum = kFirstSettingsProfile,
     .maximum = kLastSettingsProfile,
     .control = {ControlKind::kList, PAGER_MODEM_SETUP}},
});

constexpr auto kSettings = SettingsInOrder<pager_setting::kSettingCount>({
    {pager_setting::kComPort, "Settings_COMPort", "COM1"},
    {pager_setting::kBaud, "Settings_Baud", "300"},
    {pager_setting::kModemString, "Settings_ModemString", "ATE0Q0V1X4"},
    {pager_setting::k8N1, "Settings_8N1", "0"},
});

}  // namespace

constinit const ClassDescription kPager = {
    .clsid = ParseGuid(PAGER_CLSID),
    .registry_script_id = PAGER_REGISTRY_SCRIPT,
    .icon_id = PAGER_ICON,
    .instances = {.class_name = "Pager",
                  .magic = ParseGuid("CF05540D-534F-164B-BD02-D12A35BF0840"),
                  .fields = kFields,
                  // Deliberately the Beeper's: operators search their logs for this one name.
                  .default_name_id = text_id::kDefaultBeeper},
    .dialog = {.template_id = PAGER_DIALOG,
               .add_title_id = text_id::kAddPager,
               .edit_title_id = text_id::kEditPager,
               .name_control = PAGER_NAME,
               .name_error_focus = PAGER_NAME,
               .name_missing_text_id = text_id::kDisplayNameMissing,
               .help_context = 131196},
    .web_form = WebFormDescription{.add_title_id = text_id::kAddPager,
                                   .edit_title_id = text_id::kEditPager},
    .profile_field = pager_field::kSettingsProfile,
    .settings = {text_id::kPagerSettingsKey, kSettings},
};

}  // namespace brantel
