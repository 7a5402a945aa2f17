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

#include "framework/web_forms.h"
#include "mail/smtp_mail_layout.h"
#include "modem/beeper_layout.h"
#include "modem/pager_layout.h"
#include "popup/win_popup_layout.h"
#include "tests/unit/framework/fake_instance_files.h"

namespace brantel {
namespace {

const std::string kDirectory = "C:\\alerts";
const std::string kNight = kDirectory + "\\Night";

bool NoLeadByte(char) {
  return false;
}

const WebFormSpec* FindSpec(std::string_view class_name) {
  for (const WebFormSpec* spec :
       {&kBeeperWebForm, &kPagerWebForm, &kSmtpMailWebForm, &kWinPopupWebForm}) {
    if (spec->layout.class_name == class_name) return spec;
  }
  return nullptr;
}

bool Print(const std::optional<HtmlText>& page) {
  if (page) std::cout << page->view();
  return page.has_value();
}

bool Run(const WebFormSpec& spec, std::string_view action, const std::string& argument) {
  FakeInstanceFiles files;
  const std::string file(std::istreambuf_iterator<char>(std::cin), {});
  if (!file.empty()) files.files = {{kDirectory + "\\Default", file}, {kNight, file}};
  WebForms forms(files, spec, NoLeadByte);
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
  const brantel::WebFormSpec* const spec = brantel::FindSpec(arguments[1]);
  if (spec == nullptr) return EXIT_FAILURE;
  const std::string argument = arguments.size() > 3 ? arguments[3] : "";
  return brantel::Run(*spec, arguments[2], argument) ? EXIT_SUCCESS : EXIT_FAILURE;
}
