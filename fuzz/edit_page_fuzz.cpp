// Pages that show instance files: whatever a file holds and whatever it is called, its values stay
// where they belong on the edit page, and the add page, which takes them as they are, ends.
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "fuzz/fuzz_input.h"
#include "fuzz/page_markup.h"
#include "module/class_descriptions.h"
#include "tests/unit/instance/fake_instance_files.h"
#include "tests/unit/text/few_code_pages.h"
#include "text/double_byte_text.h"
#include "web/web_forms.h"

// A byte for the class and the code page, the instance's name, and what its file has behind the
// magic.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace brantel;
  const std::string bytes(data, data + size);
  FuzzInput input(bytes);
  const std::uint8_t choice = input.Byte();
  const CodePage* code_page = &kCodePage1252;
  if (choice >= 0x80) code_page = &kCodePage932;
  const auto classes = ClassDescriptions();
  const ClassDescription& description = *classes[choice % 0x80 % classes.size()];
  if (!description.web_form) return 0;
  // The system never gives half a character in a name.
  const std::string_view name = WithoutTornCharacter(input.Field(), *code_page);

  const auto magic = GuidBytes(description.instances.magic);
  std::string content(magic.begin(), magic.end());
  content += input.Take(size);
  FakeInstanceFiles files;
  files.files["dir\\Default"] = content;
  WebForms forms(files, description, *code_page);
  Require(forms.AddPage("dir", nullptr).view().ends_with("</HTML>"));
  const auto page = forms.EditPage({u"dir\\Default", "dir\\Default"}, name, nullptr);
  Require(page.has_value() == DecodeInstance(description.instances, content).has_value());
  if (page) Require(HasMarkupOfEditPage(page->view(), description, *code_page));
  return 0;
}
