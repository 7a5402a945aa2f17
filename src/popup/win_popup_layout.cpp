#include "popup/win_popup_layout.h"

#include <array>

#include "framework/string_table.h"

namespace brantel {
namespace {

constexpr std::array<InstanceField, 2> kFields = {{
    {.name = "destination",
     .form =
         SameRowOnBothPages(FormInput::kSingleLine, "destination",
                            "<TR><TD>Destination:</TD><TD><input type=text size=17 maxlength=29 "
                            "name=destination value=\"%s\"></TD></TR>\r\n"),
     .control = {ControlKind::kEdit, 215, text_id::kDestinationMissing}},
    {.name = "message",
     .form = SameRowOnBothPages(FormInput::kSingleLine, "message",
                                "<TR><TD>Message:</TD><TD><input type=text size=40 maxlength=255 "
                                "name=message value=\"%s\"></TD></TR>\r\n"),
     .control = {ControlKind::kEdit, 201, text_id::kMessageMissing}},
}};

}  // namespace

constinit const InstanceLayout kWinPopupLayout = {
    .class_name = "WinPopup",
    .magic = ParseGuid("8B762C29-0B2E-9C58-6C92-5C2A021AFB08"),
    .fields = kFields,
    .text_reader = TextReader::kChunked,
    .default_name_id = text_id::kDefaultWinPopup,
    .load_failure_end = "\r\n",
};

constinit const WebFormSpec kWinPopupWebForm = {
    .layout = kWinPopupLayout,
    .add_title_id = text_id::kAddWinPopup,
    .edit_title_id = text_id::kEditWinPopup,
};

}  // namespace brantel
