#include "modem/pager_layout.h"

#include <array>

#include "framework/settings_profile.h"
#include "framework/string_table.h"

namespace brantel {
namespace {

// In the order of the protocols' names.
constexpr std::array<int, 4> kProtocolButtons = {231, 232, 233, 235};

constexpr std::array<InstanceField, 6> kFields = {{
    {.name = "pager number",
     .form =
         SameRowOnBothPages(FormInput::kSingleLine, "pagernumber",
                            "<tr><td>Pager Number:</td><td><input type=TEXT size=40 maxlength=255 "
                            "name=pagernumber value=\"%s\"></td></tr>\r\n"),
     .control = {ControlKind::kEdit, 218, text_id::kPagerNumberMissing}},
    {.name = "terminal password",
     .form = SameRowOnBothPages(
         FormInput::kSingleLine, "password",
         "<tr><td>Terminal Password:</td><td><input type=TEXT size=40 maxlength=255 "
         "name=password value=\"%s\"></td></tr>\r\n"),
     .control = {ControlKind::kEdit, 219}},
    {.name = "pager ID",
     .form = SameRowOnBothPages(FormInput::kSingleLine, "pagerid",
                                "<tr><td>PagerID:</td><td><input type=TEXT size=40 maxlength=255 "
                                "name=pagerid value=\"%s\"></td></tr>\r\n"),
     .control = {ControlKind::kEdit, 220}},
    {.name = "message",
     .form = SameRowOnBothPages(FormInput::kSingleLine, "message",
                                "<tr><td>Message:</td><td><input type=TEXT size=40 maxlength=255 "
                                "name=message value=\"%s\"></td></tr>\r\n"),
     .control = {ControlKind::kEdit, 221}},
    {.name = "protocol",
     // A text that is no protocol's name is sent as the first one, so that one is shown for it.
     .form = SameRowOnBothPages(FormInput::kChoice, "protocol",
                                "<tr><td>Protocol:</td><td>%s</td></tr>\r\n",
                                {text_id::kFirstProtocol, 4}),
     .control = {.kind = ControlKind::kChoice, .choice_buttons = kProtocolButtons}},
    {.name = "settings profile",
     .kind = FieldKind::kInteger,
     .presence = FieldPresence::kOptional,
     .minimum = kFirstSettingsProfile,
     .maximum = kLastSettingsProfile,
     .control = {ControlKind::kList, 251}},
}};

}  // namespace

constinit const InstanceLayout kPagerLayout = {
    .class_name = "Pager",
    .magic = ParseGuid("CF05540D-534F-164B-BD02-D12A35BF0840"),
    .fields = kFields,
    // Deliberately the Beeper's: operators search their logs for this one name.
    .default_name_id = text_id::kDefaultBeeper,
};

constinit const WebFormSpec kPagerWebForm = {
    .layout = kPagerLayout,
    .add_title_id = text_id::kAddPager,
    .edit_title_id = text_id::kEditPager,
    .profile_field = pager_field::kSettingsProfile,
};

}  // namespace brantel
