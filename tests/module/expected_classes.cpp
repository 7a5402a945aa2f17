#include "tests/module/expected_classes.h"

#include <objbase.h>

#include <algorithm>
#include <iterator>
#include <stdexcept>

namespace brantel {

namespace {

std::vector<ExpectedClass> ClassesOfWhich(bool ExpectedClass::*is_so) {
  std::vector<ExpectedClass> classes;
  std::ranges::copy_if(kExpectedClasses, std::back_inserter(classes), is_so);
  return classes;
}

}  // namespace

std::vector<ExpectedClass> ClassesThatBindEverywhere() {
  return ClassesOfWhich(&ExpectedClass::binds_everywhere);
}

std::vector<ExpectedClass> ClassesWithWebForms() {
  return ClassesOfWhich(&ExpectedClass::has_web_forms);
}

std::vector<const wchar_t*> CustomInterfaces(const ExpectedClass& expected) {
  std::vector<const wchar_t*> iids = {kNotifierIid, kNotifierConfigIid};
  if (expected.has_web_forms) iids.push_back(kNotifierWebConfigIid);
  return iids;
}

std::vector<const wchar_t*> OfferedInterfaces(const ExpectedClass& expected) {
  std::vector<const wchar_t*> iids = CustomInterfaces(expected);
  iids.push_back(kUnknownIid);
  iids.push_back(kSupportErrorInfoIid);
  return iids;
}

GUID ToGuid(const wchar_t* text) {
  GUID guid{};
  if (FAILED(IIDFromString(text, &guid))) throw std::runtime_error("not the text of a GUID");
  return guid;
}

}  // namespace brantel
