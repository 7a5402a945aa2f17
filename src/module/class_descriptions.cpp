#include "module/class_descriptions.h"

#include <algorithm>
#include <array>

#include "instance/instance_codec.h"

namespace brantel {

#define NOTIFIER_CLASS(name, folder) extern const ClassDescription k##name;
#include "module/notifier_classes.def"
#undef NOTIFIER_CLASS

namespace {

#define NOTIFIER_CLASS(name, folder) &k##name,
constexpr std::array kClasses = {
#include "module/notifier_classes.def"
};
#undef NOTIFIER_CLASS

template <typename Predicate>
const ClassDescription* Find(Predicate matches) {
  const auto found = std::ranges::find_if(kClasses, matches, &ClassDescription::instances);
  return found == kClasses.end() ? nullptr : *found;
}

}  // namespace

std::span<const ClassDescription* const> ClassDescriptions() {
  return kClasses;
}

const ClassDescription* FindClassDescription(std::string_view class_name) {
  return Find([&](const InstanceLayout& layout) { return layout.class_name == class_name; });
}

const ClassDescription* FindClassOfFile(std::string_view beginning) {
  return Find([&](const InstanceLayout& layout) { return HasMagic(layout, beginning); });
}

}  // namespace brantel
