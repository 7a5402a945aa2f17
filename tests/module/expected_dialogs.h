#pragma once

#include <windows.h>

#include <optional>
#include <ostream>
#include <string>
#include <vector>

#include "tests/module/expected_classes.h"

namespace brantel {

// A control of a dialog, in the order of the Tab key. Labels have the number -1.
struct ExpectedControl {
  int id;
  std::string class_name;
  std::string text;
  // The kind of button or edit, and whether the Tab key stops at it.
  DWORD style;

  friend bool operator==(const ExpectedControl&, const ExpectedControl&) = default;
};

std::ostream& operator<<(std::ostream& out, const ExpectedControl& control);

// A field that is entered as text.
struct ExpectedEdit {
  int control = 0;
  char access_key = '\0';                 // NUL where there is none
  const char* missing_message = nullptr;  // null where the field may be empty
  const char* sample = nullptr;
  const char* unfilled = "";  // what it shows where there is no instance to fill it from
};

// What an operator knows a dialog by. Written out here once more, like ExpectedClass.
struct ExpectedDialog {
  const ExpectedClass& notifier_class;
  const char* add_title;
  const char* edit_title;
  // The title when the instance to edit cannot be loaded.
  const char* failed_edit_title;
  // What the log calls the instance that prefills new ones; null where none does.
  const wchar_t* default_name;
  std::vector<ExpectedControl> controls;
  std::vector<ExpectedEdit> edits;  // the name first, the others in the order of their checks
  // Where the focus is after a name error for which OK was clicked.
  int focus_after_name_error;
  int help_button = 9;
  // None where help opens at the contents.
  std::optional<unsigned long> help_context;
  // The last log line of an instance that cannot be loaded.
  const wchar_t* load_failure_end = L"\r";
  // The file of an instance whose edits hold the samples and that is else as the dialog opens
  // without any instance.
  std::string sample_file;
  // Letters that lead to one of two controls, in turn.
  std::string shared_access_keys{};
};

std::ostream& operator<<(std::ostream& out, const ExpectedDialog& expected);

const ExpectedDialog& ExpectedBeeperDialog();
const ExpectedDialog& ExpectedPagerDialog();
const ExpectedDialog& ExpectedSmtpMailDialog();
const ExpectedDialog& ExpectedSoundDialog();
const ExpectedDialog& ExpectedLaunchProgramDialog();
const ExpectedDialog& ExpectedWinPopupDialog();
const ExpectedDialog& ExpectedVoiceDialog();

}  // namespace brantel
