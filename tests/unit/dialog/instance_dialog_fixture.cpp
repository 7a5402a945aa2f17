#include "tests/unit/dialog/instance_dialog_fixture.h"

#include <gmock/gmock.h>

#include <utility>

#include "description/standard_buttons.h"

namespace brantel {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

InstanceDialogCall InstanceDialogFixture::CallToEdit(const std::string& name) {
  return {"dir", InstanceArgument{std::u16string(name.begin(), name.end()), name}, &host_};
}

std::vector<std::string> InstanceDialogFixture::PressOk(InstanceDialog& dialog) {
  view_.events.clear();
  files_.calls.clear();
  dialog.Press(STANDARD_OK);
  return view_.events;
}

InstanceDialog& ClassDialogFixture::Replace(InstanceDialogCall call) {
  dialog_.reset();
  dialog_ = Make(std::move(call));
  return *dialog_;
}

void ClassDialogFixture::ExpectSaved(InstanceDialog& dialog, const std::string& file) {
  dialog.Press(STANDARD_OK);
  EXPECT_THAT(view_.events, ElementsAre("close"));
  EXPECT_EQ(files_.files["dir\\night"], file);
  view_.events.clear();
}

void ClassDialogFixture::ExpectDialog(int template_id, std::size_t pictures, int help_button,
                                      const std::string& help) {
  InstanceDialog& dialog = Add();
  EXPECT_EQ(dialog.template_id(), template_id);
  EXPECT_EQ(dialog.bitmap_buttons().size(), pictures);
  dialog.Press(help_button);
  EXPECT_THAT(view_.events, ElementsAre(help));
}

void ClassDialogFixture::ExpectMissingDefaultOnlyLogged(const std::string& title,
                                                        const std::string& default_name) {
  Add().Open();
  EXPECT_EQ(view_.title, title);
  EXPECT_THAT(host_.log,
              ElementsAre(default_name, " - Failed to load notification from disk.", "\r"));
  EXPECT_THAT(view_.events, IsEmpty());
}

void ClassDialogFixture::ExpectLoadFailureTold(const std::string& title,
                                               const std::string& log_end) {
  Edit("night").Open();
  EXPECT_EQ(view_.title, title);
  EXPECT_THAT(host_.log,
              ElementsAre("night", " - Failed to load notification from disk.", log_end));
  EXPECT_THAT(view_.events, ElementsAre("message Error loading the instance file"));
}

}  // namespace brantel
