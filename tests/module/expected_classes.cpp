#include "tests/module/expected_classes.h"

#include <objbase.h>

#include <stdexcept>

namespace brantel {

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
