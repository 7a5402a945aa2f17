#pragma once

#include <cstddef>
#include <span>
#include <string_view>

#include "description/class_description.h"

namespace brantel::host {

enum class Need {
  kNeeded,  // without it no alert of the instance comes to anything
  kOptional,
};

// Whether the host fills in its variables before the text is used.
enum class Filling { kAsItIs, kFilledIn };

enum class Secrecy { kOpen, kSecret };

// What a person has to know of one field of a class's instances.
struct FieldGuide {
  const ClassDescription* notifier_class;
  std::size_t field;
  Need need;
  Filling filling;
  std::string_view values;    // what it may hold
  std::string_view standard;  // what an empty field, or 0, comes to
  std::string_view meaning;
  Secrecy secrecy = Secrecy::kOpen;
};

// Of every field of every class.
std::span<const FieldGuide> FieldGuides();

const FieldGuide& GuideOf(const ClassDescription& notifier_class, std::size_t field);

// What is shown in the place of a secret.
inline constexpr std::string_view kHiddenSecret = "********";

// The names by which pages are sent.
std::span<const std::string_view> PagerProtocolNames();

}  // namespace brantel::host
