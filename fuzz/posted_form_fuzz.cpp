// Whole forms that browsers post to each class with web forms: a form saves one instance that holds
// what it says, or touches nothing. No name leads out of the directory, and the page that shows
// what was saved has the same tags and quotes as every other.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "fuzz/fuzz_input.h"
#include "fuzz/page_markup.h"
#include "instance/instance_codec.h"
#include "module/class_descriptions.h"
#include "tests/unit/instance/fake_instance_files.h"
#include "tests/unit/text/few_code_pages.h"
#include "text/double_byte_text.h"
#include "web/form_fields.h"
#include "web/web_forms.h"

namespace brantel {
namespace {

const std::string kDirectory = "C:\\alerts";
const std::string kShown = kDirectory + "\\Day";

std::vector<const ClassDescription*> ClassesWithForms() {
  std::vector<const ClassDescription*> classes;
  std::ranges::copy_if(ClassDescriptions(), std::back_inserter(classes),
                       [](const ClassDescription* row) { return row->web_form.has_value(); });
  return classes;
}

Instance StoredInstance(const ClassDescription& description, const std::string& mark) {
  Instance instance(description.instances.fields.size());
  for (std::size_t i = 0; i < description.instances.fields.size(); ++i) {
    if (description.instances.fields[i].kind == FieldKind::kText) instance.set_text(i, mark);
  }
  if (description.profile_field) instance.set_integer(*description.profile_field, 7);
  return instance;
}

void StoreSome(FakeInstanceFiles& files, const ClassDescription& description) {
  for (const char* const name : {"Day", "Default", "Night"}) {
    files.files[kDirectory + "\\" + name] =
        EncodeInstance(description.instances, StoredInstance(description, name));
  }
}

std::vector<std::string> WrittenPaths(const FakeInstanceFiles& files) {
  constexpr std::string_view kWrite = "write ";
  std::vector<std::string> paths;
  for (const std::string& call : files.calls) {
    if (call.starts_with(kWrite)) paths.push_back(call.substr(kWrite.size()));
  }
  return paths;
}

void CheckNames(const FakeInstanceFiles& files) {
  for (const auto& [path, content] : files.files) {
    Require(path.starts_with(kDirectory + "\\"));
    Require(files.IsValidName(path.substr(kDirectory.size() + 1)));
  }
}

void CheckSavedValues(const ClassDescription& description, std::string_view form,
                      const Instance& saved) {
  const InstanceLayout& layout = description.instances;
  for (std::size_t i = 0; i < layout.fields.size(); ++i) {
    const FormRow& row = layout.fields[i].form;
    if (row.input == FormInput::kNone) continue;
    const bool has_lines = row.input == FormInput::kMultiLine;
    Require(saved.text(i) ==
            FormField(form, row.name, has_lines ? ValueEnd::kNothing : ValueEnd::kLineBreak));
  }
  // No form carries the profile: it is that of the page shown last.
  if (description.profile_field) Require(saved.integer(*description.profile_field) == 7);
}

void CheckPage(WebForms& forms, const ClassDescription& description, const CodePage& code_page,
               const std::string& path) {
  // The system never gives half a character in a name.
  const std::string_view name =
      WithoutTornCharacter(std::string_view(path).substr(kDirectory.size() + 1), code_page);
  const auto page = forms.EditPage({std::u16string(path.begin(), path.end()), path}, name, nullptr);
  Require(page.has_value());
  Require(HasMarkupOfEditPage(page->view(), description, code_page));
}

}  // namespace
}  // namespace brantel

// The first byte chooses the class and the code page; the rest is the form.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace brantel;
  static const std::vector<const ClassDescription*> kClasses = ClassesWithForms();
  if (size == 0) return 0;
  const ClassDescription& description = *kClasses[data[0] % kClasses.size()];
  const CodePage* code_page = &kCodePage1252;
  if (data[0] >= 0x80) code_page = &kCodePage932;
  const std::string form(data + 1, data + size);
  FakeInstanceFiles files;
  StoreSome(files, description);
  WebForms forms(files, description, *code_page);
  Require(forms.EditPage({std::u16string(kShown.begin(), kShown.end()), kShown}, "Day", nullptr)
              .has_value());

  const FakeInstanceFiles::Files before = files.files;
  const Result result = forms.SubmitForm(kDirectory, form);
  const std::vector<std::string> written = WrittenPaths(files);
  if (result != kOk) {
    Require(result == kFail && written.empty() && files.files == before);
    return 0;
  }
  Require(written.size() == 1 && files.files.size() <= before.size() + 1);
  CheckNames(files);
  const auto saved = DecodeInstance(description.instances, files.files.at(written.front()));
  Require(saved.has_value());
  CheckSavedValues(description, form, *saved);
  CheckPage(forms, description, *code_page, written.front());
  return 0;
}
