#pragma once

#include <gtest/gtest.h>

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

#include "dialog/instance_dialog.h"
#include "tests/unit/dialog/fake_dialog_view.h"
#include "tests/unit/instance/fake_instance_files.h"
#include "tests/unit/notifier/fake_notifier_host.h"

namespace brantel {

// What most dialogs tell of a name that is no good.
inline const std::string kNameMissing =
    "message Invalid value - The 'Name' field must have a value";
inline const std::string kNameTaken =
    "message Instance name already exists.  Please choose another name [Invalid Instance Name]";

// Dialogs of instances over a view, files and a host in memory.
class InstanceDialogFixture : public ::testing::Test {
 protected:
  InstanceDialogCall CallToAdd() { return {.directory = "dir", .host = &host_}; }
  InstanceDialogCall CallToEdit(const std::string& name);

  // What OK leads to, and nothing that was before.
  std::vector<std::string> PressOk(InstanceDialog& dialog);

  FakeDialogView view_;
  FakeInstanceFiles files_;
  FakeNotifierHost host_;
};

// The dialog of a notifier class, of which there is one at a time.
class ClassDialogFixture : public InstanceDialogFixture {
 protected:
  void TearDown() override { dialog_.reset(); }

  virtual std::unique_ptr<InstanceDialog> Make(InstanceDialogCall call) = 0;

  InstanceDialog& Add() { return Replace(CallToAdd()); }
  InstanceDialog& Edit(const std::string& name) { return Replace(CallToEdit(name)); }

  // OK has nothing to tell, nor had anything before, and the instance "night" is this file then.
  void ExpectSaved(InstanceDialog& dialog, const std::string& file);

  // What a class's dialog is: its template, how many of its buttons have pictures, and what its
  // help button shows.
  void ExpectDialog(int template_id, std::size_t pictures, int help_button,
                    const std::string& help);

  // The name by which a missing "Default" is logged, and that it keeps nobody from adding.
  void ExpectMissingDefaultOnlyLogged(const std::string& title, const std::string& default_name);

  // An instance that cannot be loaded to be edited is logged and told.
  void ExpectLoadFailureTold(const std::string& title, const std::string& log_end = "\r");

  std::unique_ptr<InstanceDialog> dialog_;

 private:
  InstanceDialog& Replace(InstanceDialogCall call);
};

}  // namespace brantel
