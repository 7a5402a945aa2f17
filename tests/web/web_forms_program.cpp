// The web side of a notifier class for tests with a browser. The instance file comes on standard
// input (nothing: there is none), and what the class makes of it goes to standard output:
//   web_forms_program CLASS add          the page for a new instance, with the file as "Default"
//   web_forms_program CLASS edit NAME    the page for the file as an instance of this name
//   web_forms_program CLASS submit FORM  the file that a form for the instance "Night" leaves
#include <cstdlib>
#include <iostream>
#include <iterator>
#include <span>
#include <string>
#include <string_view>

#include "module/class_descriptions.h"
#include "tests/unit/instance/fake_instance_files.h"
#include "tests/unit/text/few_code_pages.h"
#include "web/web_forms.h"

namespace brantel {
namespace {

const std::string kDirectory = "C:\\alerts";
const std::string kNight = kDirectory + "\\Night";

bool Print(const std::optional<HtmlText>& page) {
  if (page) std::cout << page->view();
  return page.has_value();
}

bool Run(const ClassDescription& notifier_class, std::string_view action,
         const std::string& argument) {
  FakeInstanceFiles files;
  const std::string file(std::istreambuf_iterator<char>(std::cin), {});
  if (!file.empty()) files.files = {{kDirectory + "\\Default", file}, {kNight, file}};
  WebForms forms(files, notifier_class, kCodePage1252);
  if (action == "add") return Print(forms.AddPage(kDirectory, nullptr));
  if (action == "edit") return Print(forms.EditPage({{}, kNight}, argument, nullptr));
  if (action != "submit" || forms.SubmitForm(kDirectory, argument) != kOk) return false;
  std::cout << files.files[kNight];
  return true;
}

}  // namespace
}  // namespace brantel

int main(int argument_count, char** argument_texts) {
  const std::span arguments(argument_texts, static_cast<std::size_t>(argument_count));
  if (arguments.size() < 3) return EXIT_FAILURE;
  const auto* const notifier_class = brantel::FindClassDescription(arguments[1]);
  if (notifier_class == nullptr || !notifier_class->web_form) return EXIT_FAILURE;
  const std::string argument = arguments.size() > 3 ? arguments[3] : "";
  return brantel::Run(*notifier_class, arguments[2], argument) ? EXIT_SUCCESS : EXIT_FAILURE;
}
