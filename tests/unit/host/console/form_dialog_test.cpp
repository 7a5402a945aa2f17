#include "host/console/form_dialog.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "dialog/instance_dialog.h"
#include "tests/unit/dialog/fake_dialog_view.h"
#include "tests/unit/host/console/fake_console_backend.h"

namespace brantel::host {
namespace {

struct EnteredField {
  std::string name;  // as the form posts it
  std::string value;
};

struct EnteredInstance {
  const char* class_name;
  std::vector<EnteredField> fields;
};

const std::vector<EnteredInstance>& ClassesWithoutPages() {
  static const std::vector<EnteredInstance> kEntered = {
      {"Sound", {{"wave-filename", "C:\\Wav\xC3\xA9\\a & b+c.wav"}, {"continuous-play", "1"}}},
      {"LaunchProgram",
       {{"program-filename", R"("C:\Program Files\a.exe")"},
        {"working-path", "C:\\"},
        {"program-arguments", "%n=%C"}}},
      {"Voice",
       {{"phone-number", "555-0100"},
        {"repeat-message", "C:\\r.wav"},
        {"count", "3"},
        {"button", "no number"},
        {"item-down", "C:\\d.wav"},
        {"item-up", ""},
        {"service-down", "C:\\s.wav"},
        {"service-up", ""}}}};
  return kEntered;
}

FormValues PostedForm(const std::string& name, const EnteredInstance& entered) {
  std::string form = "instance-name=" + EncodePercents(name);
  for (const EnteredField& field : entered.fields)
    form += "&" + field.name + "=" + EncodePercents(field.value);
  return FormValues::Parse(form).value();
}

// What the class's dialog writes when somebody enters the same.
std::string WrittenByTheDialog(const EnteredInstance& entered, FakeConsoleBackend& backend) {
  const ClassDescription& description = *FindClassDescription(entered.class_name);
  FakeDialogView view;
  InstanceDialog dialog(description, view, backend.instance_files,
                        {.directory = FakeConsoleBackend::kFolder});
  dialog.Open();
  view.texts[description.dialog.name_control] = "ByDialog";
  for (std::size_t i = 0; i < entered.fields.size(); ++i) {
    const DialogControl& control = description.instances.fields[i].control;
    const std::string& value = entered.fields[i].value;
    if (control.kind == ControlKind::kCheckBox) {
      view.checks[control.id] = value == "1";
    } else {
      view.texts[control.id] = backend.checked_system.ToCodePage(value).value();
    }
  }
  dialog.Press(STANDARD_OK);
  return backend.ContentOf("ByDialog").value();
}

TEST(FormDialog, WritesWhatTheDialogWrites) {
  for (const EnteredInstance& entered : ClassesWithoutPages()) {
    FakeConsoleBackend backend;
    const ClassDescription& description = *FindClassDescription(entered.class_name);
    const auto outcome =
        SubmitForm(description, backend, std::nullopt, PostedForm("ByForm", entered));
    EXPECT_EQ(outcome.saved_name, "ByForm") << outcome.complaint;
    EXPECT_EQ(backend.ContentOf("ByForm"), WrittenByTheDialog(entered, backend))
        << entered.class_name;
  }
}

TEST(FormDialog, ShowsWhatItHasWritten) {
  for (const EnteredInstance& entered : ClassesWithoutPages()) {
    FakeConsoleBackend backend;
    const ClassDescription& description = *FindClassDescription(entered.class_name);
    SubmitForm(description, backend, std::nullopt, PostedForm("ByForm", entered));
    const ConsoleForm form = ShowForm(description, backend, "ByForm");
    EXPECT_EQ(form.name, "ByForm");
    ASSERT_EQ(form.controls.size(), entered.fields.size());
    for (std::size_t i = 0; i < form.controls.size(); ++i) {
      EXPECT_EQ(form.controls[i].name, entered.fields[i].name);
      const std::string& value = entered.fields[i].value;
      EXPECT_EQ(form.controls[i].value, value == "no number" ? "0" : value);
    }
  }
}

TEST(FormDialog, RefusesWhatTheDialogRefuses) {
  FakeConsoleBackend backend;
  const ClassDescription& sound = *FindClassDescription("Sound");
  backend.AddInstance("Sound", "Siren", "a");
  const auto complaint = [&](const std::string& form) {
    return SubmitForm(sound, backend, std::nullopt, FormValues::Parse(form).value()).complaint;
  };
  EXPECT_EQ(complaint("wave-filename=a"), "Invalid value - The 'Name' field must have a value");
  EXPECT_EQ(complaint("instance-name=siren&wave-filename=a"),
            "Instance name already exists.  Please choose another name");
  EXPECT_EQ(complaint("instance-name=New"),
            "Invalid value - The 'Filename' field must have a value.");
  EXPECT_EQ(complaint("instance-name=a%5Cb&wave-filename=a"), "Error saving instance file");
  EXPECT_EQ(complaint("instance-name=New&wave-filename=" + std::string(1023, 'a')),
            "Wave filename is longer than 1022 bytes.");
  EXPECT_EQ(complaint("instance-name=New&wave-filename=a%0Ab"),
            "Wave filename has to be one line.");
  EXPECT_EQ(complaint("instance-name=New&wave-filename=%E2%98%83"),
            "Wave filename has characters that the system's code page lacks.");
  EXPECT_EQ(backend.instance_files.files.size(), 1U);
}

TEST(FormDialog, RenamesWhatItEdits) {
  FakeConsoleBackend backend;
  backend.AddInstance("Sound", "Siren", "a");
  const auto outcome = SubmitForm(*FindClassDescription("Sound"), backend, "Siren",
                                  FormValues::Parse("instance-name=Horn&wave-filename=b").value());
  EXPECT_EQ(outcome.saved_name, "Horn");
  EXPECT_FALSE(backend.ContentOf("Siren"));
  EXPECT_EQ(backend.StoredAs("Sound", "Horn").text(0), "b");
}

TEST(FormDialog, OffersChoicesAlone) {
  FakeConsoleBackend backend;
  backend.AddInstance("Pager", "Centre", "12345");
  const ClassDescription& pager = *FindClassDescription("Pager");
  const ConsoleForm form = ShowForm(pager, backend, "Centre");
  EXPECT_EQ(form.controls[4].choices,
            (std::vector<std::string>{"TAP", "SMS-TAP", "NTT", "UCP-SMS"}));
  const std::string rest = "instance-name=Centre&pager-number=1&pager-ID=1&message=1";
  const auto submit = [&](const std::string& form_text) {
    return SubmitForm(pager, backend, "Centre", FormValues::Parse(form_text).value()).complaint;
  };
  EXPECT_EQ(submit(rest + "&protocol=FAX&settings-profile=0"),
            "Protocol is none of those offered.");
  EXPECT_EQ(submit(rest + "&protocol=NTT&settings-profile=11"),
            "Settings profile is none of those offered.");
  EXPECT_EQ(submit(rest + "&protocol=NTT&settings-profile=10"), "");
  EXPECT_EQ(backend.StoredAs("Pager", "Centre").text(4), "NTT");
  EXPECT_EQ(backend.StoredAs("Pager", "Centre").integer(5), 10);
}

}  // namespace
}  // namespace brantel::host
