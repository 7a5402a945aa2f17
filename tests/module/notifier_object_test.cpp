#include <windows.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <vector>

#include "tests/module/expected_classes.h"
#include "tests/module/loaded_module.h"

namespace brantel {
namespace {

using ::testing::ValuesIn;

std::vector<const wchar_t*> InterfacesNotOffered(const ExpectedClass& expected) {
  std::vector<const wchar_t*> iids = {kNotifierHostIid,   kDispatchIid, kClassFactoryIid,
                                      kMarshalIid,        kStrangerId,  expected.clsid,
                                      expected.file_magic};
  if (!expected.has_web_forms) iids.push_back(kNotifierWebConfigIid);
  return iids;
}

class EveryNotifier : public ::testing::TestWithParam<ExpectedClass> {
 protected:
  template <typename Interface>
  [[nodiscard]] ComPointer<Interface> Create(const wchar_t* iid) const {
    return module_.Create<Interface>(GetParam(), iid);
  }

  LoadedModule module_;
};

INSTANTIATE_TEST_SUITE_P(Classes, EveryNotifier, ValuesIn(kExpectedClasses), NameOfClass);

// Reflexive, symmetric and transitive all follow when every interface leads to every other.
TEST_P(EveryNotifier, LeadsFromEveryInterfaceToEveryOther) {
  for (const wchar_t* from : OfferedInterfaces(GetParam())) {
    const auto start = Create<IUnknown>(from);
    for (const wchar_t* to : OfferedInterfaces(GetParam())) {
      ComPointer<IUnknown> reached;
      ASSERT_EQ(start->QueryInterface(ToGuid(to), reached.put_void()), S_OK) << from << to;
      ComPointer<IUnknown> back;
      ASSERT_EQ(reached->QueryInterface(ToGuid(from), back.put_void()), S_OK) << to << from;
      EXPECT_EQ(back.get(), start.get()) << from << to;
    }
  }
}

TEST_P(EveryNotifier, HasOneIdentityWhateverInterfaceIsAsked) {
  const auto object = Create<IUnknown>(kUnknownIid);
  for (const wchar_t* iid : OfferedInterfaces(GetParam())) {
    ComPointer<IUnknown> offered;
    ASSERT_EQ(object->QueryInterface(ToGuid(iid), offered.put_void()), S_OK) << iid;
    ComPointer<IUnknown> identity;
    ASSERT_EQ(offered->QueryInterface(ToGuid(kUnknownIid), identity.put_void()), S_OK) << iid;
    EXPECT_EQ(identity.get(), object.get()) << iid;
  }
}

TEST_P(EveryNotifier, HasNoOtherInterfaceAndClearsTheOutPointer) {
  for (const wchar_t* from : OfferedInterfaces(GetParam())) {
    const auto object = Create<IUnknown>(from);
    for (const wchar_t* iid : InterfacesNotOffered(GetParam())) {
      void* reached = kLeftover;
      EXPECT_EQ(object->QueryInterface(ToGuid(iid), &reached), E_NOINTERFACE) << from << iid;
      EXPECT_EQ(reached, nullptr) << from << iid;
    }
  }
}

TEST_P(EveryNotifier, RefusesANullPointerForTheInterface) {
  for (const wchar_t* from : OfferedInterfaces(GetParam())) {
    const auto object = Create<IUnknown>(from);
    EXPECT_EQ(object->QueryInterface(ToGuid(kUnknownIid), nullptr), E_POINTER) << from;
    EXPECT_EQ(object->QueryInterface(ToGuid(kStrangerId), nullptr), E_POINTER) << from;
  }
}

TEST_P(EveryNotifier, CountsReferencesOverAllInterfacesTogether) {
  const auto notifier = Create<IUnknown>(kNotifierIid);
  ComPointer<IUnknown> config;
  ASSERT_EQ(notifier->QueryInterface(ToGuid(kNotifierConfigIid), config.put_void()), S_OK);

  EXPECT_EQ(notifier->AddRef(), 3U);
  EXPECT_EQ(config->AddRef(), 4U);
  EXPECT_EQ(config->Release(), 3U);
  EXPECT_EQ(notifier->Release(), 2U);
}

TEST_P(EveryNotifier, SaysThatItsCustomInterfacesAloneSupportErrorInfo) {
  const auto object = Create<ISupportErrorInfo>(kSupportErrorInfoIid);

  for (const wchar_t* iid : CustomInterfaces(GetParam())) {
    EXPECT_EQ(object->InterfaceSupportsErrorInfo(ToGuid(iid)), S_OK) << iid;
  }
  for (const wchar_t* iid : InterfacesNotOffered(GetParam())) {
    EXPECT_EQ(object->InterfaceSupportsErrorInfo(ToGuid(iid)), S_FALSE) << iid;
  }
  EXPECT_EQ(object->InterfaceSupportsErrorInfo(ToGuid(kUnknownIid)), S_FALSE);
  EXPECT_EQ(object->InterfaceSupportsErrorInfo(ToGuid(kSupportErrorInfoIid)), S_FALSE);
}

TEST_P(EveryNotifier, NamesTheModuleAndItsIconGroup) {
  HMODULE module = nullptr;
  UINT32 id = 0;

  EXPECT_EQ(Create<INotifierConfig>(kNotifierConfigIid)->GetImageResource(&module, &id), S_OK);
  EXPECT_EQ(module, module_.handle());
  EXPECT_EQ(id, GetParam().icon_id);
}

}  // namespace
}  // namespace brantel
