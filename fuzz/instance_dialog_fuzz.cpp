// Dialogs that edit arbitrary files under arbitrary names: OK either saves the instance as it was
// shown, under a name in the directory, or changes no file; and it never takes a file that is
// another instance's.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "description/standard_buttons.h"
#include "dialog/instance_dialog.h"
#include "fuzz/fuzz_input.h"
#include "instance/text_choice.h"
#include "module/class_descriptions.h"
#include "tests/unit/dialog/fake_dialog_view.h"
#include "tests/unit/instance/fake_instance_files.h"

namespace brantel {
namespace {

const std::string kDirectory = "dir";
const std::string kEdited = "night";

std::string PathOf(const std::string& name) {
  return kDirectory + "\\" + name;
}

bool IsOneOf(const TextRange& choices, std::string_view text) {
  return LoadText(choices.first_id + static_cast<unsigned>(ChosenPosition(choices, text))) == text;
}

void CheckText(const InstanceLayout& layout, const InstanceField& field, const std::string& loaded,
               const std::string& saved) {
  if (field.control.kind == ControlKind::kEdit) {
    Require(saved == loaded.substr(0, std::min(field.control.longest, LongestText(layout))));
  } else if (field.control.kind == ControlKind::kChoice) {
    Require(IsOneOf(field.form.choices, saved));
    if (IsOneOf(field.form.choices, loaded)) Require(saved == loaded);
  } else {
    Require(saved == loaded);
  }
}

void CheckSaved(const InstanceLayout& layout, const Instance& loaded, const Instance& saved) {
  for (std::size_t i = 0; i < layout.fields.size(); ++i) {
    const InstanceField& field = layout.fields[i];
    if (field.kind == FieldKind::kText) {
      CheckText(layout, field, loaded.text(i), saved.text(i));
    } else if (field.control.kind == ControlKind::kCheckBox) {
      Require(saved.integer(i) == (loaded.integer(i) != 0 ? 1 : 0));
    } else {
      Require(saved.integer(i) == loaded.integer(i));
    }
  }
}

// What an operator enters who mends an instance that could not be loaded.
void FillIn(const InstanceLayout& layout, FakeDialogView& view) {
  for (const InstanceField& field : layout.fields) {
    if (field.control.kind == ControlKind::kEdit) view.SetText(field.control.id, "1@2");
  }
}

void CheckNames(const FakeInstanceFiles& files) {
  for (const auto& [path, content] : files.files) {
    Require(path.starts_with(PathOf("")) && files.IsValidName(path.substr(PathOf("").size())));
  }
}

}  // namespace
}  // namespace brantel

// A byte for the class, the name to save under, and what the edited file has behind the magic.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace brantel;
  const std::string bytes(data, data + size);
  FuzzInput input(bytes);
  const auto classes = ClassDescriptions();
  const ClassDescription& description = *classes[input.Byte() % classes.size()];
  const std::string name(input.Field());
  const auto magic = GuidBytes(description.instances.magic);
  std::string content(magic.begin(), magic.end());
  content += input.Take(size);

  FakeInstanceFiles files;
  files.files[PathOf(kEdited)] = content;
  files.files[PathOf("day")] = "somebody else's";
  const auto loaded = DecodeInstance(description.instances, content);
  const FakeInstanceFiles::Files before = files.files;
  FakeDialogView view;
  InstanceDialog dialog(description, view, files,
                        {kDirectory, InstanceArgument{u"night", kEdited}, nullptr});
  dialog.Open();
  if (!loaded) FillIn(description.instances, view);
  view.SetText(description.dialog.name_control, name);
  dialog.Press(STANDARD_OK);

  CheckNames(files);
  Require(files.files.at(PathOf("day")) == "somebody else's");
  if (!dialog.saved_name()) {
    Require(files.files == before && !view.events.empty() && view.events.back() != "close");
    return 0;
  }
  Require(view.events.back() == "close");
  // What could not be loaded stays where it is, in case somebody can mend it.
  Require(files.files.size() == before.size() ||
          (!loaded && files.files.at(PathOf(kEdited)) == content));
  const auto saved =
      DecodeInstance(description.instances, files.files.at(PathOf(*dialog.saved_name())));
  Require(saved.has_value());
  if (loaded) CheckSaved(description.instances, *loaded, *saved);
  return 0;
}
