#include "win_popup/win_popup_description.h"

#include <array>

#include "text/string_table.h"
#include "win_popup/win_popup_ids.h"

namespace brantel {
namespace {

constexpr auto kFields = FieldsInFileOrder<win_popup_field::kFieldCount>({
    {.index = win_popup_field::kDestination,
     .name = "destination",
     .form =
         SameRowOnBothPages(FormInput::kSingleLine, "destination",
                            "<TR><TD>Destination:</TD><TD><input type=text size=17 maxlength=29 "
                            "name=destination value=\"%s\"></TD></TR>\r\n"),
     .control = {ControlKind::kEdit, WIN_POPUP_DESTINATION, text_id::kDestinationMissing}},
    {.index = win_popup_field::kMessage,
     .name = "message",
     .form = SameRowOnBothPages(FormInput::kSingleLine, "message",
                                "<TR><TD>Message:</TD><TD><input type=text size=40 maxlength=255 "
                                "name=message value=\"%s\"></TD></TR>\r\n"),
     .control = {ControlKind::kEdit, WIN_POPUP_MESSAGE, text_id::kMessageMissing}},
});

}  // namespace

constinit const ClassDescription kWinPopup = {
    .clsid = ParseGuid(WIN_POPUP_CLSID),
    .registry_script_id = WIN_POPUP_REGISTRY_SCRIPT,
    .icon_id = WIN_POPUP_ICON,
    .instances = {.class_name = "WinPopup",
                  .magic = ParseGuid("8B762C29-0B2E-9C58-6C92-5C2A021AFB08"),
                  .fields = kFields,
                  .text_reader = TextReader::kChunked,
                  .short_file = ShortFile::kRefused,
                  .default_name_id = text_id::kDefaultWinPopup,
                  .load_failure_end = "\r\n"},
    // The help file has no page of this dialog's own, so help opens at the contents.
    .dialog = {.template_id = WIN_POPUP_DIALOG,
               .add_title_id = text_id::kAddWinPopup,
               .edit_title_id = text_id::kEditWinPopup,
               .name_control = WIN_POPUP_NAME,
               .name_error_focus = WIN_POPUP_NAME,
               .name_taken_check = NameTakenCheck::kAfterFields,
               .prefilled = false},
    .web_form = WebFormDescription{.add_title_id = text_id::kAddWinPopup,
                                   .edit_title_id = text_id::kEditWinPopup},
};

}  // namespace brantel
