// Web pages, and the forms that come back.
#include "instance/instance_codec.h"
#include "module/class_descriptions.h"
#include "system/exception_guard.h"
#include "tests/torture/scenario.h"
#include "tests/torture/stored_instances.h"
#include "web/web_forms.h"
#include "web/web_page.h"

namespace brantel {
namespace {

class FormScenario : public Scenario {
 public:
  FormScenario(const char* what, const ClassDescription& description)
      : Scenario(what + std::string(description.instances.class_name)), description_(description) {}

  void Begin(Machine& machine) const override {
    machine.BeginAlert();
    StoreInstances(machine, description_);
    machine.page.clear();
  }

  Result Run(Machine& machine) const override {
    return GuardExceptions([&] {
      WebForms forms(machine.files, description_, kCodePage1252);
      return RunForms(machine, forms);
    });
  }

 protected:
  [[nodiscard]] const ClassDescription& description() const { return description_; }

  virtual Result RunForms(Machine& machine, WebForms& forms) const = 0;

  static Result Keep(Machine& machine, const HtmlText& page) {
    const std::u16string converted(page.view().begin(), page.view().end());
    const MemoryOfOthers others;
    machine.page = page.view();
    return kOk;
  }

 private:
  const ClassDescription& description_;
};

// The page of the add form. Without its prefilled values, it says why in the log.
class AddPage final : public FormScenario {
 public:
  explicit AddPage(const ClassDescription& description) : FormScenario("add_page_", description) {}

  Result RunForms(Machine& machine, WebForms& forms) const override {
    return Keep(machine, forms.AddPage(std::string(kDirectory), machine.host.get()));
  }

  [[nodiscard]] std::string Judge(const Machine& machine, Result result,
                                  const Machine& whole) const override {
    if (Failed(result) || machine.page == whole.page) return {};
    const Instance nothing(description().instances.fields.size());
    if (machine.page != BuildAddPage(description(), nothing).view()) return "the page is not whole";
    return machine.host_object.log.empty() && machine.faults.failures() != 0
               ? "the log does not say why the page is empty"
               : "";
  }
};

class EditPage final : public FormScenario {
 public:
  explicit EditPage(const ClassDescription& description)
      : FormScenario("edit_page_", description) {}

  Result RunForms(Machine& machine, WebForms& forms) const override {
    const std::string path = InstancePath();
    const auto page = forms.EditPage({std::u16string(path.begin(), path.end()), path},
                                     kInstanceName, machine.host.get());
    return page ? Keep(machine, *page) : kFail;
  }

  [[nodiscard]] std::string Judge(const Machine& machine, Result result,
                                  const Machine& whole) const override {
    return Failed(result) || machine.page == whole.page ? "" : "the page is not whole";
  }
};

// A posted form. `names` says of which instance, and under which name it is to be saved.
class PostedForm final : public FormScenario {
 public:
  PostedForm(const char* what, const ClassDescription& description, std::string names,
             bool deletes_first)
      : FormScenario(what, description), names_(std::move(names)), deletes_first_(deletes_first) {}

  Result RunForms(Machine& /*machine*/, WebForms& forms) const override {
    std::string form = names_;
    for (const InstanceField& field : description().instances.fields) {
      if (field.form.input == FormInput::kNone) continue;
      form.append("&").append(field.form.name).append("=").append(ValueOf(field, "new"));
    }
    return forms.SubmitForm(std::string(kDirectory), form);
  }

  [[nodiscard]] std::string Judge(const Machine& machine, Result result,
                                  const Machine& whole) const override {
    const bool may_lose = deletes_first_ && machine.faults.failures() != 0;
    return Saved{machine, whole, description(),
                 [](const InstanceField& field) { return field.form.input != FormInput::kNone; }}
        .Judge(result, may_lose);
  }

 private:
  std::string names_;
  // Deliberately the file of an old name is deleted before the new one is written: the one that
  // cannot be written then is lost.
  bool deletes_first_;
};

}  // namespace

void AddForms(std::vector<std::unique_ptr<Scenario>>& scenarios) {
  const std::string name(kInstanceName);
  for (const ClassDescription* const description : ClassDescriptions()) {
    if (!description->web_form) continue;
    scenarios.push_back(std::make_unique<AddPage>(*description));
    scenarios.push_back(std::make_unique<EditPage>(*description));
    const auto add = [&](const char* what, const std::string& names, bool deletes_first) {
      scenarios.push_back(std::make_unique<PostedForm>(what, *description, names, deletes_first));
    };
    add("add_form_", "origname=&instancename=an instance with a new name", false);
    add("edit_form_", "origname=" + name, false);
    add("rename_form_", "origname=an instance with a new name/" + name, true);
  }
}

}  // namespace brantel
