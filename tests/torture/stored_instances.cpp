#include "tests/torture/stored_instances.h"

#include <algorithm>

#include "instance/instance_codec.h"

namespace brantel {
namespace {

std::string Encoded(const ClassDescription& description, std::string_view generation) {
  const InstanceLayout& layout = description.instances;
  Instance instance(layout.fields.size());
  for (std::size_t i = 0; i < layout.fields.size(); ++i) {
    if (layout.fields[i].kind == FieldKind::kText)
      instance.set_text(i, ValueOf(layout.fields[i], generation));
  }
  return EncodeInstance(layout, instance);
}

using Files = FakeInstanceFiles::Files;

bool Has(const Files& files, const Files::value_type& file) {
  const auto found = files.find(file.first);
  return found != files.end() && found->second == file.second;
}

}  // namespace

std::string ValueOf(const InstanceField& field, std::string_view generation) {
  std::string value = std::string(field.name).append(" of the ").append(generation);
  return value.append(" instance").append(field.control.required_text);
}

void StoreInstances(Machine& machine, const ClassDescription& description) {
  auto& files = machine.files.disk.files;
  files.clear();
  files[std::string(kDefaultPath)] = Encoded(description, "default");
  files[InstancePath()] = Encoded(description, "old");
}

std::string Saved::Judge(Result result, bool may_lose) const {
  Machine untouched;
  StoreInstances(untouched, description);
  const Files& before = untouched.files.disk.files;
  const Files& after = whole.files.disk.files;
  const Files& found = machine.files.disk.files;
  const std::string unread = WithoutTheUnshown();
  const auto is_saved = [&](const auto& file) {
    const auto saved = found.find(file.first);
    return saved != found.end() && (saved->second == file.second || saved->second == unread);
  };
  // A file that could not be read or deleted is left alone, also where its instance has got another
  // name.
  if (!Failed(result) && !std::ranges::all_of(after, is_saved)) {
    return "success, though nothing is saved";
  }
  const auto torn = std::ranges::find_if(found, [&](const auto& file) {
    return !Has(before, file) && !Has(after, file) && file.second != unread;
  });
  if (torn != found.end()) return torn->first + " is neither the old nor the new one";
  return found.size() < before.size() && !may_lose ? "the instance is lost" : "";
}

std::string Saved::WithoutTheUnshown() const {
  const InstanceLayout& layout = description.instances;
  Instance instance(layout.fields.size());
  for (std::size_t i = 0; i < layout.fields.size(); ++i) {
    const InstanceField& field = layout.fields[i];
    if (!is_shown(field)) continue;
    if (field.kind == FieldKind::kText) {
      instance.set_text(i, ValueOf(field, "new"));
    } else {
      instance.set_integer(i, kEnteredNumber);
    }
  }
  return EncodeInstance(layout, instance);
}

}  // namespace brantel
