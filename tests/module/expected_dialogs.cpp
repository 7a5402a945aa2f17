#include "tests/module/expected_dialogs.h"

namespace brantel {
namespace {

constexpr const char* kNameMissing = "Invalid value - The 'Name' field must have a value";
constexpr const char* kFilenameMissing = "Invalid value - The 'Filename' field must have a value.";

constexpr DWORD kLabel = SS_LEFT;
constexpr DWORD kEdit = WS_TABSTOP | ES_AUTOHSCROLL;
constexpr DWORD kLinesEdit =
    WS_TABSTOP | WS_VSCROLL | ES_MULTILINE | ES_AUTOVSCROLL | ES_WANTRETURN;
constexpr DWORD kButton = WS_TABSTOP | BS_PUSHBUTTON;
constexpr DWORD kDefaultButton = WS_TABSTOP | BS_DEFPUSHBUTTON;
constexpr DWORD kCheckBox = WS_TABSTOP | BS_AUTOCHECKBOX;
constexpr DWORD kRadioButton = BS_AUTORADIOBUTTON;
constexpr DWORD kGroupBox = BS_GROUPBOX;
constexpr DWORD kDropDownList = WS_TABSTOP | CBS_DROPDOWNLIST;
constexpr DWORD kDropDownEdit = WS_TABSTOP | CBS_DROPDOWN | CBS_AUTOHSCROLL;
constexpr DWORD kPictureButton = WS_TABSTOP | BS_OWNERDRAW;

// With the NULs inside.
template <std::size_t size>
std::string Bytes(const char (&literal)[size]) {
  return {literal, size - 1};
}

}  // namespace

const ExpectedDialog& ExpectedBeeperDialog() {
  static const ExpectedDialog dialog = {
      .notifier_class = kBeeper,
      .add_title = "Add Beeper  Instance",
      .edit_title = "Edit Beeper Instance",
      .failed_edit_title = "Edit Beeper Instance",
      .default_name = L"Default Beeper",
      .controls = {{-1, "Static", "&Display name:", kLabel},
                   {223, "Edit", "", kEdit},
                   {-1, "Button", "Settings:", kGroupBox},
                   {-1, "Static", "&Beeper number:", kLabel},
                   {218, "Edit", "", kEdit},
                   {-1, "Static", "Dial &string:", kLabel},
                   // As the settings have it where nothing is set.
                   {219, "Edit", "ATDT%s,,,,%s#", kEdit},
                   {-1, "Static", "M&odem Setup:", kLabel},
                   {251, "ComboBox", "Primary", kDropDownList},
                   {228, "Button", "&Port Settings...", kButton},
                   {-1, "Button", "Signal Codes:", kGroupBox},
                   {-1, "Static", "&Up code:", kLabel},
                   {220, "Edit", "", kEdit},
                   {-1, "Static", "Down cod&e:", kLabel},
                   {221, "Edit", "", kEdit},
                   {-1, "Static", "SNMP &trap code:", kLabel},
                   {222, "Edit", "", kEdit},
                   {1, "Button", "OK", kDefaultButton},
                   {2, "Button", "Cancel", kButton},
                   {9, "Button", "Help", kButton}},
      .edits = {{223, 'd', kNameMissing, "night"},
                {218, 'b', "Invalid value - The 'Beeper Number' field must have a value.",
                 "5551234"},
                // The dial string of the selected profile, whatever is stored.
                {219, 's', "Invalid value - The 'Dialing Options' field must have a value.",
                 "ATDT%s,,,,%s#", "ATDT%s,,,,%s#"},
                {220, 'u', "Invalid value - The 'Up Code' field must have a value.", "11"},
                {221, 'e', "Invalid value - The 'Down Code' field must have a value.", "22"},
                {222, 't', "Invalid value - The 'SNMP Trap Code' field must have a value.", "33"}},
      .focus_after_name_error = 223,
      .help_context = 131197,
      .sample_file = Bytes("\x81\xF4\x46\xE5\x3D\x98\x7E\x5A\x61\x0B\xE8\x0B\xF1\x58\xF2\x2E"
                           "\x08\0\0\0"
                           "5551234\0"
                           "\x0E\0\0\0"
                           "ATDT%s,,,,%s#\0"
                           "\x03\0\0\0"
                           "11\0"
                           "\x03\0\0\0"
                           "22\0"
                           "\x03\0\0\0"
                           "33\0"
                           "\x01\0\0\0\0"
                           "\0\0\0\0"),
  };
  return dialog;
}

const ExpectedDialog& ExpectedPagerDialog() {
  static const ExpectedDialog dialog = {
      .notifier_class = kPager,
      .add_title = "Add Pager Instance",
      .edit_title = "Edit Pager Instance",
      .failed_edit_title = "Edit Pager Instance",
      .default_name = L"Default Beeper",
      .controls = {{-1, "Static", "&Display name:", kLabel},
                   {222, "Edit", "", kEdit},
                   {-1, "Static", "T&erminal number:", kLabel},
                   {218, "Edit", "", kEdit},
                   {-1, "Static", "Terminal &password:", kLabel},
                   {219, "Edit", "", kEdit},
                   {-1, "Static", "Pager &ID:", kLabel},
                   {220, "Edit", "", kEdit},
                   {-1, "Static", "&Message string:", kLabel},
                   {221, "Edit", "", kEdit},
                   {-1, "Static", "M&odem Setup:", kLabel},
                   {251, "ComboBox", "Primary", kDropDownList},
                   {234, "Button", "&Port Settings...", kButton},
                   {-1, "Button", "Protocol", kGroupBox},
                   // The Tab key stops at the checked one.
                   {231, "Button", "&TAP", WS_TABSTOP | kRadioButton},
                   {232, "Button", "&SMS-TAP", kRadioButton},
                   {233, "Button", "&NTT", kRadioButton},
                   {235, "Button", "&UCP-SMS", kRadioButton},
                   {1, "Button", "OK", kDefaultButton},
                   {2, "Button", "Cancel", kButton},
                   {9, "Button", "Help", kButton}},
      .edits = {{222, 'd', "Invalid value - The 'Display Name' field must have a value", "night"},
                {218, 'e', "Invalid value - The 'Pager Number' field must have a value.",
                 "5550200"},
                {219, 'p', nullptr, "secret"},
                {220, 'i', nullptr, "0041 79"},
                {221, 'm', nullptr, "%n is down"}},
      .focus_after_name_error = 222,
      .help_context = 131196,
      .sample_file = Bytes("\x0D\x54\x05\xCF\x4F\x53\x4B\x16\xBD\x02\xD1\x2A\x35\xBF\x08\x40"
                           "\x08\0\0\0"
                           "5550200\0"
                           "\x07\0\0\0secret\0"
                           "\x08\0\0\0"
                           "0041 79\0"
                           "\x0B\0\0\0%n is down\0"
                           "\x04\0\0\0TAP\0"
                           "\0\0\0\0"),
      .shared_access_keys = "p",
  };
  return dialog;
}

const ExpectedDialog& ExpectedSmtpMailDialog() {
  static const ExpectedDialog dialog = {
      .notifier_class = kSMTPMail,
      .add_title = "Add SMTP Instance",
      .edit_title = "Edit SMTP Instance",
      .failed_edit_title = "Edit SMTP Instance",
      .default_name = nullptr,
      .controls = {{-1, "Static", "&Display name:", kLabel},
                   {203, "Edit", "", kEdit},
                   {-1, "Static", "&Mail server:", kLabel},
                   {202, "Edit", "", kEdit},
                   {-1, "Static", "&To:", kLabel},
                   {205, "Edit", "", kEdit},
                   {-1, "Static", "&From:", kLabel},
                   {204, "Edit", "", kEdit},
                   {-1, "Static", "&Subject:", kLabel},
                   {206, "Edit", "", kEdit},
                   {201, "Edit", "", kLinesEdit},
                   {1, "Button", "OK", kDefaultButton},
                   {2, "Button", "Cancel", kButton},
                   {208, "Button", "Help", kButton}},
      .edits = {{203, 'd', kNameMissing, "night"},
                {202, 'm',
                 "Invalid value - The 'Mail Server' field must have a valid Internet Protocol (IP) "
                 "address",
                 "127.0.0.1"},
                {204, 'f', "Invalid value - The 'From' field must have a valid value",
                 "Watch <ops@%s>"},
                {205, 't', "Invalid value - The 'To' field must have a valid value",
                 "ann@b.example,bob@b.example"},
                {206, 's', nullptr, "%D is down"},
                {201, '\0', nullptr, "One\r\n\r\nTwo\r\n"}},
      .focus_after_name_error = 203,
      .help_button = 208,
      .help_context = std::nullopt,
      .load_failure_end = L"\r\n",
      .sample_file = Bytes("\x8C\x26\xDD\xD6\x2B\xA3\x86\xEF\x26\x83\xA7\xDA\x94\x10\xF9\x49"
                           "\x0A\0\0\0"
                           "127.0.0.1\0"
                           "\x1C\0\0\0"
                           "ann@b.example,bob@b.example\0"
                           "\x0F\0\0\0Watch <ops@%s>\0"
                           "\x0B\0\0\0%D is down\0"
                           "\x0D\0\0\0One\r\n\r\nTwo\r\n\0"),
  };
  return dialog;
}

const ExpectedDialog& ExpectedSoundDialog() {
  static const ExpectedDialog dialog = {
      .notifier_class = kSound,
      .add_title = "Add Sound Instance",
      .edit_title = "Edit Sound Instance",
      .failed_edit_title = "Edit Sound Instance",
      .default_name = L"Default",
      .controls = {{-1, "Static", "&Display name:", kLabel},
                   {203, "Edit", "", kEdit},
                   {-1, "Static", "&Filename:", kLabel},
                   {212, "Edit", "", kEdit},
                   {210, "Button", "Browse for file", kPictureButton},
                   {211, "Button", "Record file", kPictureButton},
                   {213, "Button", "&Continuous play", kCheckBox},
                   {1, "Button", "OK", kDefaultButton},
                   {2, "Button", "Cancel", kButton},
                   {9, "Button", "&Help", kButton}},
      .edits = {{203, 'd', kNameMissing, "night"}, {212, 'f', kFilenameMissing, "C:\\bell.wav"}},
      .focus_after_name_error = 203,
      .help_context = 131195,
      .sample_file = Bytes("\x51\x40\x6A\x5D\x08\x76\xD6\x5D\xF1\xD3\x2C\xFE\xA0\xF8\x0A\x9F"
                           "\x0C\0\0\0C:\\bell.wav\0"
                           "\0\0\0\0"),
  };
  return dialog;
}

const ExpectedDialog& ExpectedVoiceDialog() {
  static const ExpectedDialog dialog = {
      .notifier_class = kVoice,
      .add_title = "Add Voice Instance",
      .edit_title = "Edit Voice Instance",
      .failed_edit_title = "Edit Voice Instance",
      .default_name = L"Default Voice",
      .controls = {{-1, "Static", "&Display name:", kLabel},
                   {223, "Edit", "", kEdit},
                   {-1, "Static", "&Phone number:", kLabel},
                   {219, "Edit", "", kEdit},
                   {-1, "Static", "&Repeat msg:", kLabel},
                   {220, "Edit", "", kEdit},
                   {221, "Button", "Browse for repeat msg", kPictureButton},
                   {235, "Button", "Record repeat msg", kPictureButton},
                   {-1, "Static", "&Count:", kLabel},
                   {229, "Edit", "0", kEdit},
                   {-1, "Static", "&Button:", kLabel},
                   {230, "Edit", "0", kEdit},
                   {-1, "Static", "Item &down:", kLabel},
                   {231, "Edit", "", kEdit},
                   {222, "Button", "Browse for item down", kPictureButton},
                   {236, "Button", "Record item down", kPictureButton},
                   {-1, "Static", "Item &up:", kLabel},
                   {232, "Edit", "", kEdit},
                   {225, "Button", "Browse for item up", kPictureButton},
                   {237, "Button", "Record item up", kPictureButton},
                   {-1, "Static", "&Service down:", kLabel},
                   {233, "Edit", "", kEdit},
                   {224, "Button", "Browse for service down", kPictureButton},
                   {238, "Button", "Record service down", kPictureButton},
                   {-1, "Static", "S&ervice up:", kLabel},
                   {234, "Edit", "", kEdit},
                   {226, "Button", "Browse for service up", kPictureButton},
                   {239, "Button", "Record service up", kPictureButton},
                   {1, "Button", "OK", kDefaultButton},
                   {2, "Button", "Cancel", kButton},
                   {9, "Button", "Help", kButton}},
      // The letter of the name's leads to the item's sound first, since the name has the focus.
      .edits = {{223, '\0', kNameMissing, "night"},
                {219, 'p', "Invalid value - The 'Phone' field must have a value.", "5550100"},
                {220, 'r', nullptr, "repeat.wav"},
                {231, 'd', nullptr, "idown.wav"},
                {232, 'u', nullptr, "iup.wav"},
                {233, 's', nullptr, "sdown.wav"},
                {234, 'e', nullptr, "sup.wav"}},
      .focus_after_name_error = 223,
      .help_context = 131476,
      .sample_file = Bytes("\xF8\x22\xF8\xC4\x90\x18\xCD\x08\x68\x42\x18\x38\xA3\xA7\x8A\x26"
                           "\x08\0\0\0"
                           "5550100\0"
                           "\x0B\0\0\0repeat.wav\0"
                           "\0\0\0\0"
                           "\0\0\0\0"
                           "\x0A\0\0\0idown.wav\0"
                           "\x08\0\0\0iup.wav\0"
                           "\x0A\0\0\0sdown.wav\0"
                           "\x08\0\0\0sup.wav\0"),
      .shared_access_keys = "d",
  };
  return dialog;
}

const ExpectedDialog& ExpectedLaunchProgramDialog() {
  static const ExpectedDialog dialog = {
      .notifier_class = kLaunchProgram,
      .add_title = "Add Launch Program Instance",
      .edit_title = "Edit Launch Program Instance",
      .failed_edit_title = "",
      .default_name = L"Default Program",
      .controls = {{-1, "Static", "&Display name:", kLabel},
                   {218, "Edit", "", kEdit},
                   {-1, "Static", "&Program filename:", kLabel},
                   {219, "Edit", "", kEdit},
                   {221, "Button", "Browse for program", kPictureButton},
                   {-1, "Static", "&Working path:", kLabel},
                   {222, "Edit", "", kEdit},
                   {223, "Button", "Browse for working path", kPictureButton},
                   {-1, "Static", "Program &arguments:", kLabel},
                   {220, "Edit", "", kEdit},
                   {1, "Button", "OK", kDefaultButton},
                   {2, "Button", "Cancel", kButton},
                   {9, "Button", "&Help", kButton}},
      .edits = {{218, 'd', kNameMissing, "night"},
                {219, 'p', kFilenameMissing, "page.exe"},
                {222, 'w', "Invalid value - The 'Working Path' field must have a value.",
                 "C:\\tools"},
                {220, 'a', nullptr, "-x %n"}},
      // The dialog asks for a control that it does not have: the focus stays.
      .focus_after_name_error = 1,
      .help_context = 131199,
      .sample_file = Bytes("\x6C\x7E\xEC\xEC\x18\x8E\xA2\x4C\xC5\x6F\x53\x34\xC2\xBD\x79\x45"
                           "\x09\0\0\0page.exe\0"
                           "\x09\0\0\0C:\\tools\0"
                           "\x06\0\0\0-x %n\0"),
  };
  return dialog;
}

const ExpectedDialog& ExpectedWinPopupDialog() {
  static const ExpectedDialog dialog = {
      .notifier_class = kWinPopup,
      .add_title = "Add WinPopup Instance",
      .edit_title = "Edit WinPopup Instance",
      .failed_edit_title = "Edit WinPopup Instance",
      .default_name = L"Default WinPopup",
      .controls = {{-1, "Static", "&Display name:", kLabel},
                   {203, "Edit", "", kEdit},
                   {-1, "Static", "De&stination:", kLabel},
                   {215, "ComboBox", "", kDropDownEdit},
                   {-1, "Static", "&Message:", kLabel},
                   {201, "Edit", "", kEdit},
                   {1, "Button", "OK", kDefaultButton},
                   {2, "Button", "Cancel", kButton},
                   {9, "Button", "&Help", kButton}},
      .edits = {{203, 'd', kNameMissing, "night"},
                {215, 's', "Invalid value - The 'Destination' field must have a value.", "pc9"},
                {201, 'm', "Invalid value - The 'Message' field must have a value.", "%n is down"}},
      .focus_after_name_error = 203,
      .help_context = 0,
      .sample_file = Bytes("\x29\x2C\x76\x8B\x2E\x0B\x58\x9C\x6C\x92\x5C\x2A\x02\x1A\xFB\x08"
                           "\x04\0\0\0pc9\0"
                           "\x0B\0\0\0%n is down\0"),
  };
  return dialog;
}

std::ostream& operator<<(std::ostream& out, const ExpectedControl& control) {
  return out << control.id << ' ' << control.class_name << " '" << control.text << "' style "
             << std::hex << control.style << std::dec;
}

std::ostream& operator<<(std::ostream& out, const ExpectedDialog& expected) {
  return out << expected.notifier_class;
}

}  // namespace brantel
