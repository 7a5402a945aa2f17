#include <windows.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <objbase.h>
#include <oleauto.h>

#include <array>
#include <filesystem>
#include <stdexcept>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

#include "tests/module/expected_classes.h"
#include "tests/module/loaded_module.h"
#include "tests/module/own_bits.h"
#include "tests/module/registry_tree.h"
#include "tests/module/scratch_directory.h"
#include "tests/module/utf8_text.h"

namespace brantel {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Not;
using ::testing::SizeIs;
using ::testing::UnorderedElementsAreArray;
using ::testing::ValuesIn;

// HRESULT_FROM_WIN32(ERROR_CHILD_MUST_BE_VOLATILE): what keys below a volatile key are refused
// with.
constexpr auto kMustBeVolatile = static_cast<HRESULT>(0x800703FD);
constexpr auto kLibraryNotRegistered = static_cast<HRESULT>(0x8002801D);

const std::wstring kLibraryKey = L"TypeLib\\{5625C924-5719-DA0E-EE98-237AC5FB0A3C}";

// The keys of one class; <module> stands for the module's full path.
struct ExpectedKeys {
  std::string_view prog_id;
  std::string_view version_independent_prog_id;
  std::string_view clsid;
};

constexpr std::array<ExpectedKeys, kExpectedClasses.size()> kExpectedKeys = {{
    {R"(@ = 'SMTPMail Class'
CLSID
  @ = '{4D03ADA6-067C-79C7-B3CD-B7D9C4293BF5}'
)",
     R"(@ = 'SMTPMail Class'
CLSID
  @ = '{4D03ADA6-067C-79C7-B3CD-B7D9C4293BF5}'
CurVer
  @ = 'Brantel_Notifications.SMTPMail.1'
)",
     R"(@ = 'SMTPMail Class'
InprocServer32
  @ = '<module>'
  ThreadingModel = 'Apartment'
ProgID
  @ = 'Brantel_Notifications.SMTPMail.1'
Programmable
TypeLib
  @ = '{5625C924-5719-DA0E-EE98-237AC5FB0A3C}'
VersionIndependentProgID
  @ = 'Brantel_Notifications.SMTPMail'
)"},
    {R"(@ = 'Sound Class'
CLSID
  @ = '{A93D5106-D415-9AE1-2956-2D685A03A67B}'
)",
     R"(@ = 'Sound Class'
CLSID
  @ = '{A93D5106-D415-9AE1-2956-2D685A03A67B}'
CurVer
  @ = 'Brantel_Notifications.Sound.1'
)",
     R"(@ = 'Sound Class'
InprocServer32
  @ = '<module>'
  ThreadingModel = 'Apartment'
ProgID
  @ = 'Brantel_Notifications.Sound.1'
TypeLib
  @ = '{5625C924-5719-DA0E-EE98-237AC5FB0A3C}'
VersionIndependentProgID
  @ = 'Brantel_Notifications.Sound'
)"},
    {R"(@ = 'WinPopup Class'
CLSID
  @ = '{B28A7D4D-B389-C787-CCC0-A0F773C8FC73}'
)",
     R"(@ = 'WinPopup Class'
CLSID
  @ = '{B28A7D4D-B389-C787-CCC0-A0F773C8FC73}'
CurVer
  @ = 'Brantel_Notifications.WinPopup.1'
)",
     R"(@ = 'WinPopup Class'
InprocServer32
  @ = '<module>'
  ThreadingModel = 'Apartment'
ProgID
  @ = 'Brantel_Notifications.WinPopup.1'
TypeLib
  @ = '{5625C924-5719-DA0E-EE98-237AC5FB0A3C}'
VersionIndependentProgID
  @ = 'Brantel_Notifications.WinPopup'
)"},
    {R"(@ = 'LaunchProgram Class'
CLSID
  @ = '{313E5016-EB2E-F2DD-BDB6-184EFE00A5D3}'
)",
     R"(@ = 'LaunchProgram Class'
CLSID
  @ = '{313E5016-EB2E-F2DD-BDB6-184EFE00A5D3}'
CurVer
  @ = 'Brantel_Notifications.LaunchProgram.1'
)",
     R"(@ = 'LaunchProgram Class'
InprocServer32
  @ = '<module>'
  ThreadingModel = 'Apartment'
ProgID
  @ = 'Brantel_Notifications.LaunchProgram.1'
TypeLib
  @ = '{5625C924-5719-DA0E-EE98-237AC5FB0A3C}'
VersionIndependentProgID
  @ = 'Brantel_Notifications.LaunchProgram'
)"},
    {R"(@ = 'Beeper Class'
CLSID
  @ = '{E0F08BCF-0BD9-3D64-842A-2FCEAE91F17E}'
)",
     R"(@ = 'Beeper Class'
CLSID
  @ = '{E0F08BCF-0BD9-3D64-842A-2FCEAE91F17E}'
CurVer
  @ = 'Brantel_Notifications.Beeper.1'
)",
     R"(@ = 'Beeper Class'
InprocServer32
  @ = '<module>'
  ThreadingModel = 'Apartment'
ProgID
  @ = 'Brantel_Notifications.Beeper.1'
TypeLib
  @ = '{5625C924-5719-DA0E-EE98-237AC5FB0A3C}'
VersionIndependentProgID
  @ = 'Brantel_Notifications.Beeper'
)"},
    {R"(@ = 'Pager Class'
CLSID
  @ = '{2669D42E-142D-8B34-EAC1-28B07EB3EABA}'
)",
     R"(@ = 'Pager Class'
CLSID
  @ = '{2669D42E-142D-8B34-EAC1-28B07EB3EABA}'
CurVer
  @ = 'Brantel_Notifications.Pager.1'
)",
     R"(@ = 'Pager Class'
InprocServer32
  @ = '<module>'
  ThreadingModel = 'Apartment'
ProgID
  @ = 'Brantel_Notifications.Pager.1'
TypeLib
  @ = '{5625C924-5719-DA0E-EE98-237AC5FB0A3C}'
VersionIndependentProgID
  @ = 'Brantel_Notifications.Pager'
)"},
    {R"(@ = 'Voice Class'
CLSID
  @ = '{DEE8A963-837B-D33C-C75D-B637B7CCFCA2}'
)",
     R"(@ = 'Voice Class'
CLSID
  @ = '{DEE8A963-837B-D33C-C75D-B637B7CCFCA2}'
CurVer
  @ = 'Brantel_Notifications.Voice.1'
)",
     R"(@ = 'Voice Class'
InprocServer32
  @ = '<module>'
  ThreadingModel = 'Apartment'
ProgID
  @ = 'Brantel_Notifications.Voice.1'
TypeLib
  @ = '{5625C924-5719-DA0E-EE98-237AC5FB0A3C}'
VersionIndependentProgID
  @ = 'Brantel_Notifications.Voice'
)"},
}};

constexpr std::string_view kNoKey = "(no key)";

std::string WithModulePath(std::string_view expected, const std::wstring& module_file) {
  constexpr std::string_view kPlaceholder = "<module>";
  std::string text(expected);
  return text.replace(text.find(kPlaceholder), kPlaceholder.size(), ToUtf8(module_file));
}

std::wstring ClsidKey(const ExpectedClass& expected) {
  return std::wstring(L"CLSID\\") + expected.clsid;
}

std::vector<std::wstring> KeysOf(const ExpectedClass& expected) {
  return {expected.prog_id, expected.version_independent_prog_id, ClsidKey(expected)};
}

void ExpectRegistered(std::size_t row, const std::wstring& module_file) {
  const ExpectedClass& expected = kExpectedClasses.at(row);
  const ExpectedKeys& keys = kExpectedKeys.at(row);
  EXPECT_EQ(DumpTree(HKEY_CLASSES_ROOT, expected.prog_id), keys.prog_id);
  EXPECT_EQ(DumpTree(HKEY_CLASSES_ROOT, expected.version_independent_prog_id),
            keys.version_independent_prog_id);
  EXPECT_EQ(DumpTree(HKEY_CLASSES_ROOT, ClsidKey(expected)),
            WithModulePath(keys.clsid, module_file));
}

void ExpectAllRegistered(const std::wstring& module_file) {
  for (std::size_t row = 0; row < kExpectedClasses.size(); ++row) {
    ExpectRegistered(row, module_file);
  }
}

void ExpectNotRegistered(const ExpectedClass& expected) {
  for (const std::wstring& key : KeysOf(expected)) {
    EXPECT_EQ(DumpTree(HKEY_CLASSES_ROOT, key), kNoKey) << ToUtf8(key);
  }
}

void ExpectNothingRegistered() {
  for (const ExpectedClass& expected : kExpectedClasses)
    ExpectNotRegistered(expected);
  EXPECT_FALSE(KeyExists(HKEY_CLASSES_ROOT, kLibraryKey));
}

std::vector<std::wstring> NamesBelow(const std::wstring& path) {
  const OwnedKey key = OpenKey(HKEY_CLASSES_ROOT, path);
  return key ? SubkeyNames(key.get()) : std::vector<std::wstring>();
}

// Registers in a classes root of the test's own.
class Registration : public ::testing::Test {
 protected:
  PrivateClassesRoot root_;
  LoadedModule module_;
};

TEST_F(Registration, WritesTheKeysOfAllClasses) {
  ASSERT_EQ(module_.RegisterServer(), S_OK);

  ExpectAllRegistered(ModuleFile());
}

TEST_F(Registration, WritesNoOtherKeys) {
  ASSERT_EQ(module_.RegisterServer(), S_OK);

  std::vector<std::wstring> names = {L"CLSID", L"TypeLib"};
  std::vector<std::wstring> clsids;
  for (const ExpectedClass& expected : kExpectedClasses) {
    names.insert(names.end(), {expected.prog_id, expected.version_independent_prog_id});
    clsids.emplace_back(expected.clsid);
  }
  EXPECT_THAT(NamesBelow(L""), UnorderedElementsAreArray(names));
  EXPECT_THAT(NamesBelow(L"CLSID"), UnorderedElementsAreArray(clsids));
  EXPECT_THAT(NamesBelow(L"TypeLib"), ElementsAre(L"{5625C924-5719-DA0E-EE98-237AC5FB0A3C}"));
}

TEST_F(Registration, TwiceLeavesOneSetOfKeys) {
  ASSERT_EQ(module_.RegisterServer(), S_OK);
  const std::string once = DumpTree(HKEY_CLASSES_ROOT, L"");

  EXPECT_EQ(module_.RegisterServer(), S_OK);
  EXPECT_EQ(DumpTree(HKEY_CLASSES_ROOT, L""), once);
}

TEST_F(Registration, RemovesWhatElseLayBelowTheClsidKeys) {
  for (const ExpectedClass& expected : kExpectedClasses) {
    const OwnedKey key = CreateKey(HKEY_CLASSES_ROOT, ClsidKey(expected));
    SetText(key.get(), L"AppID", L"{9B0C2F51-6A4E-4D7B-8C1D-0E5F3A2B7C96}");
    SetText(CreateKey(key.get(), L"InprocServer32").get(), L"ThreadingModel", L"Both");
    SetText(CreateKey(key.get(), L"InprocServer32").get(), L"Assembly", L"stray");
    CreateKey(key.get(), L"LocalServer32\\Below\\FurtherBelow");
    CreateKey(key.get(), L"Programmable\\Stray");
  }

  ASSERT_EQ(module_.RegisterServer(), S_OK);
  ExpectAllRegistered(ModuleFile());
}

TEST_F(Registration, CorrectsWhatTheKeysHeld) {
  for (const ExpectedClass& expected : kExpectedClasses) {
    for (const std::wstring& path : KeysOf(expected)) {
      SetText(CreateKey(HKEY_CLASSES_ROOT, path).get(), nullptr, L"something else");
    }
    SetText(CreateKey(HKEY_CLASSES_ROOT, std::wstring(expected.prog_id) + L"\\CLSID").get(),
            nullptr, L"{9B0C2F51-6A4E-4D7B-8C1D-0E5F3A2B7C96}");
  }

  ASSERT_EQ(module_.RegisterServer(), S_OK);
  ExpectAllRegistered(ModuleFile());
}

TEST_F(Registration, CreatesTheClsidKeyWhereThereIsNone) {
  DeleteTree(HKEY_CLASSES_ROOT, L"CLSID");

  ASSERT_EQ(module_.RegisterServer(), S_OK);
  ExpectAllRegistered(ModuleFile());
}

TEST_F(Registration, MakesTheTypeLibraryKnown) {
  const GUID library_id = ToGuid(kExpectedLibraryId);
  ComPointer<ITypeLib> library;
  ASSERT_EQ(LoadRegTypeLib(library_id, 1, 0, LOCALE_NEUTRAL, library.put()), kLibraryNotRegistered);

  ASSERT_EQ(module_.RegisterServer(), S_OK);
  EXPECT_EQ(LoadRegTypeLib(library_id, 1, 0, LOCALE_NEUTRAL, library.put()), S_OK);
  EXPECT_EQ(library->GetTypeInfoCount(), kExpectedClasses.size());
  EXPECT_EQ(NamesBelow(kLibraryKey), std::vector<std::wstring>{L"1.0"});
  EXPECT_EQ(DumpTree(HKEY_CLASSES_ROOT, kLibraryKey + LR"(\1.0\0\)" + kSystemName),
            WithModulePath("@ = '<module>'\n", ModuleFile()));
}

TEST_F(Registration, UndoneRemovesAllKeysButTheClsidKey) {
  ASSERT_EQ(module_.RegisterServer(), S_OK);

  EXPECT_EQ(module_.UnregisterServer(), S_OK);
  ExpectNothingRegistered();
  EXPECT_TRUE(KeyExists(HKEY_CLASSES_ROOT, L"CLSID"));
  EXPECT_THAT(NamesBelow(L"CLSID"), IsEmpty());
  ComPointer<ITypeLib> library;
  EXPECT_EQ(LoadRegTypeLib(ToGuid(kExpectedLibraryId), 1, 0, LOCALE_NEUTRAL, library.put()),
            kLibraryNotRegistered);
}

TEST_F(Registration, UndoneRemovesTheClsidKeysOfTheClassesWithAllBelow) {
  ASSERT_EQ(module_.RegisterServer(), S_OK);
  for (const ExpectedClass& expected : kExpectedClasses) {
    CreateKey(HKEY_CLASSES_ROOT, ClsidKey(expected) + L"\\Stray\\Below");
    CreateKey(HKEY_CLASSES_ROOT, ClsidKey(expected) + L"\\InprocServer32\\Stray");
  }

  EXPECT_EQ(module_.UnregisterServer(), S_OK);
  ExpectNothingRegistered();
}

TEST_F(Registration, UndoneLeavesTheClassesOfOthers) {
  CreateKey(HKEY_CLASSES_ROOT, std::wstring(L"CLSID\\") + kStrangerId + L"\\InprocServer32");
  CreateKey(HKEY_CLASSES_ROOT, L"Brantel_Notifications.Telegraph.1\\CLSID");
  CreateKey(HKEY_CLASSES_ROOT, std::wstring(L"TypeLib\\") + kStrangerId + L"\\1.0");
  const std::string before = DumpTree(HKEY_CLASSES_ROOT, L"");
  ASSERT_EQ(module_.RegisterServer(), S_OK);

  EXPECT_EQ(module_.UnregisterServer(), S_OK);
  EXPECT_EQ(DumpTree(HKEY_CLASSES_ROOT, L""), before);
}

TEST_F(Registration, UndoneLeavesKeysOfOthersBelowTheProgIds) {
  const std::wstring prog_id = kLaunchProgram.prog_id;
  ASSERT_EQ(module_.RegisterServer(), S_OK);
  SetText(CreateKey(HKEY_CLASSES_ROOT, prog_id + L"\\shell").get(), nullptr, L"somebody's");

  EXPECT_EQ(module_.UnregisterServer(), S_OK);
  EXPECT_EQ(DumpTree(HKEY_CLASSES_ROOT, prog_id + L"\\shell"), "@ = 'somebody\'s'\n");
  EXPECT_EQ(NamesBelow(prog_id), std::vector<std::wstring>{L"shell"});
  EXPECT_FALSE(KeyExists(HKEY_CLASSES_ROOT, kLaunchProgram.version_independent_prog_id));
  EXPECT_FALSE(KeyExists(HKEY_CLASSES_ROOT, ClsidKey(kLaunchProgram)));
}

TEST_F(Registration, CanBeUndoneTwiceAndWhereThereIsNone) {
  const std::string before = DumpTree(HKEY_CLASSES_ROOT, L"");
  EXPECT_EQ(module_.UnregisterServer(), S_OK);
  EXPECT_EQ(DumpTree(HKEY_CLASSES_ROOT, L""), before);

  ASSERT_EQ(module_.RegisterServer(), S_OK);
  EXPECT_EQ(module_.UnregisterServer(), S_OK);
  EXPECT_EQ(module_.UnregisterServer(), S_OK);
  ExpectNothingRegistered();
}

TEST_F(Registration, CanBeUndoneWhereKeysAreMissing) {
  ASSERT_EQ(module_.RegisterServer(), S_OK);
  DeleteTree(HKEY_CLASSES_ROOT, kSMTPMail.prog_id);
  DeleteTree(HKEY_CLASSES_ROOT, ClsidKey(kBeeper) + L"\\InprocServer32");
  DeleteTree(HKEY_CLASSES_ROOT, std::wstring(kLaunchProgram.prog_id) + L"\\CLSID");
  DeleteTree(HKEY_CLASSES_ROOT, kLibraryKey);

  EXPECT_EQ(module_.UnregisterServer(), S_OK);
  ExpectNothingRegistered();
}

TEST_F(Registration, CanBeRepeatedAfterItWasUndone) {
  ASSERT_EQ(module_.RegisterServer(), S_OK);
  ASSERT_EQ(module_.UnregisterServer(), S_OK);

  EXPECT_EQ(module_.RegisterServer(), S_OK);
  ExpectAllRegistered(ModuleFile());
}

TEST_F(Registration, LeavesTheModuleFreeToBeUnloaded) {
  ASSERT_EQ(module_.RegisterServer(), S_OK);
  ASSERT_EQ(module_.UnregisterServer(), S_OK);

  EXPECT_EQ(module_.CanUnloadNow(), S_OK);
}

TEST_F(Registration, FailsWithTheFailureOfTheSystemWhenTheTypeLibraryIsRefused) {
  DeleteTree(HKEY_CLASSES_ROOT, L"TypeLib");
  CreateKey(HKEY_CLASSES_ROOT, L"TypeLib", REG_OPTION_VOLATILE);
  std::wstring path = ModuleFile();
  ComPointer<ITypeLib> library;
  ASSERT_EQ(LoadTypeLibEx(path.c_str(), REGKIND_NONE, library.put()), S_OK);
  const HRESULT refusal = RegisterTypeLib(library.get(), path.data(), nullptr);
  ASSERT_LT(refusal, 0);

  EXPECT_EQ(module_.RegisterServer(), refusal);
  ExpectAllRegistered(ModuleFile());
}

TEST_F(Registration, FailsWithTheFailureOfTheRegistryAndKeepsWhatIsWrittenByThen) {
  DeleteTree(HKEY_CLASSES_ROOT, L"CLSID");
  CreateKey(HKEY_CLASSES_ROOT, L"CLSID", REG_OPTION_VOLATILE);

  EXPECT_EQ(module_.RegisterServer(), kMustBeVolatile);
  // The first class's keys come before its key below CLSID, the other classes' after.
  EXPECT_EQ(DumpTree(HKEY_CLASSES_ROOT, kSMTPMail.prog_id), kExpectedKeys[0].prog_id);
  EXPECT_EQ(DumpTree(HKEY_CLASSES_ROOT, kSMTPMail.version_independent_prog_id),
            kExpectedKeys[0].version_independent_prog_id);
  EXPECT_THAT(NamesBelow(L"CLSID"), IsEmpty());
  for (std::size_t row = 1; row < kExpectedClasses.size(); ++row) {
    ExpectNotRegistered(kExpectedClasses.at(row));
  }
}

TEST_F(Registration, FailsWhereALaterClassIsRefused) {
  CreateKey(HKEY_CLASSES_ROOT, kLaunchProgram.prog_id, REG_OPTION_VOLATILE);

  EXPECT_EQ(module_.RegisterServer(), kMustBeVolatile);
  for (const std::size_t row : {0U, 1U, 2U})
    ExpectRegistered(row, ModuleFile());
}

TEST(RegistrationWithoutRights, FailsAtOnceAndWritesNothing) {
  const PrivateClassesRoot root(REG_OPTION_VOLATILE);
  const LoadedModule module;

  EXPECT_EQ(module.RegisterServer(), kMustBeVolatile);
  EXPECT_THAT(NamesBelow(L""), ElementsAre(L"CLSID", L"TypeLib"));
  EXPECT_THAT(NamesBelow(L"CLSID"), IsEmpty());
}

// A module registers the file that it was loaded from, whatever its path is like.
struct Folder {
  const char* test_name;
  std::wstring folder_name;
};

const std::array<Folder, 6> kFolders = {{
    {"Blanks", L"with blanks"},
    {"Quotes", L"with 'quotes'"},
    {"Percents", L"100% of %MODULE%"},
    {"Braces", L"{braces} = s"},
    {"Scripts", L"\u0417\u0432\u043E\u043D\u043E\u043A \u9234"},
    {"Length", std::wstring(150, L'x')},
}};

std::string NameOfFolder(const ::testing::TestParamInfo<Folder>& folder) {
  return folder.param.test_name;
}

class RegistrationFromAnotherPlace : public ::testing::TestWithParam<Folder> {
 protected:
  ScratchDirectory scratch_;
  PrivateClassesRoot root_;
};

INSTANTIATE_TEST_SUITE_P(Folders, RegistrationFromAnotherPlace, ValuesIn(kFolders), NameOfFolder);

TEST_P(RegistrationFromAnotherPlace, WritesItsFullPath) {
  const std::filesystem::path folder = scratch_.path() / GetParam().folder_name;
  std::filesystem::create_directory(folder);
  const std::wstring file = (folder / L"Brantel_Notifications.dll").wstring();
  ASSERT_NE(CopyFileW(ModuleFile().c_str(), file.c_str(), TRUE), FALSE);
  const LoadedModule module(file);

  EXPECT_EQ(module.RegisterServer(), S_OK);
  ExpectAllRegistered(file);
  EXPECT_EQ(module.UnregisterServer(), S_OK);
  ExpectNothingRegistered();
}

// Registers on the machine itself, where other processes and the system's look-ups see it.
class RegistrationOnTheMachine : public ::testing::Test {
 protected:
  RegistrationOnTheMachine() { CoInitialize(nullptr); }
  ~RegistrationOnTheMachine() override { CoUninitialize(); }

  static std::vector<std::wstring> AllKeys() {
    std::vector<std::wstring> keys = {kLibraryKey};
    for (const ExpectedClass& expected : kExpectedClasses) {
      for (std::wstring& key : KeysOf(expected))
        keys.push_back(std::move(key));
    }
    return keys;
  }

  ClassesRootKeeper keeper_{AllKeys()};
};

TEST_F(RegistrationOnTheMachine, LetsHostsCreateObjectsByProgId) {
  ASSERT_EQ(LoadedModule().RegisterServer(), S_OK);

  for (const ExpectedClass& expected : kExpectedClasses) {
    for (const wchar_t* prog_id : {expected.prog_id, expected.version_independent_prog_id}) {
      CLSID clsid{};
      EXPECT_EQ(CLSIDFromProgID(prog_id, &clsid), S_OK) << prog_id;
      EXPECT_EQ(clsid, ToGuid(expected.clsid)) << prog_id;
      ComPointer<INotifierConfig> object;
      EXPECT_EQ(CoCreateInstance(clsid, nullptr, CLSCTX_INPROC_SERVER, ToGuid(kNotifierConfigIid),
                                 object.put_void()),
                S_OK)
          << prog_id;
      HMODULE module = nullptr;
      UINT32 id = 0;
      ASSERT_TRUE(object);
      EXPECT_EQ(object->GetImageResource(&module, &id), S_OK);
      EXPECT_EQ(id, expected.icon_id);
      EXPECT_EQ(module, GetModuleHandleW(ModuleFile().c_str()));
    }
  }
}

// Objects live in a single-threaded apartment, and nothing carries their interfaces into another.
TEST_F(RegistrationOnTheMachine, LetsNoMultithreadedApartmentCreateObjects) {
  ASSERT_EQ(LoadedModule().RegisterServer(), S_OK);

  std::thread([] {
    ASSERT_EQ(CoInitializeEx(nullptr, COINIT_MULTITHREADED), S_OK);
    for (const ExpectedClass& expected : kExpectedClasses) {
      ComPointer<INotifier> object;
      EXPECT_EQ(CoCreateInstance(ToGuid(expected.clsid), nullptr, CLSCTX_INPROC_SERVER,
                                 ToGuid(kNotifierIid), object.put_void()),
                E_NOINTERFACE)
          << expected.prog_id;
      EXPECT_FALSE(object);
    }
    CoUninitialize();
  }).join();
}

TEST_F(RegistrationOnTheMachine, LetsTheSystemNameTheClasses) {
  ASSERT_EQ(LoadedModule().RegisterServer(), S_OK);

  LPOLESTR prog_id = nullptr;
  ASSERT_EQ(ProgIDFromCLSID(ToGuid(kLaunchProgram.clsid), &prog_id), S_OK);
  EXPECT_EQ(std::wstring(prog_id), L"Brantel_Notifications.LaunchProgram.1");
  CoTaskMemFree(prog_id);
}

TEST_F(RegistrationOnTheMachine, UndoneLetsHostsCreateNothing) {
  const LoadedModule module;
  ASSERT_EQ(module.RegisterServer(), S_OK);
  ASSERT_EQ(module.UnregisterServer(), S_OK);

  for (const ExpectedClass& expected : kExpectedClasses) {
    ComPointer<IUnknown> object;
    EXPECT_EQ(CoCreateInstance(ToGuid(expected.clsid), nullptr, CLSCTX_INPROC_SERVER,
                               ToGuid(kUnknownIid), object.put_void()),
              REGDB_E_CLASSNOTREG)
        << expected;
  }
}

TEST_F(RegistrationOnTheMachine, UndoneLeavesTheClassesOfTheMachine) {
  const LoadedModule module;
  ASSERT_EQ(module.UnregisterServer(), S_OK);
  const std::vector<std::wstring> of_the_machine = NamesBelow(L"CLSID");
  ASSERT_THAT(of_the_machine, Not(IsEmpty()));
  ASSERT_EQ(module.RegisterServer(), S_OK);
  EXPECT_THAT(NamesBelow(L"CLSID"), SizeIs(of_the_machine.size() + kExpectedClasses.size()));

  ASSERT_EQ(module.UnregisterServer(), S_OK);
  EXPECT_EQ(NamesBelow(L"CLSID"), of_the_machine);
}

// Runs the system's registration program and returns its exit code.
DWORD RunRegsvr32(const std::wstring& arguments) {
  std::wstring command_line = L"regsvr32.exe " + arguments;
  STARTUPINFOW startup{};
  startup.cb = sizeof startup;
  PROCESS_INFORMATION process{};
  if (CreateProcessW(nullptr, command_line.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr,
                     &startup, &process) == FALSE) {
    throw std::runtime_error("regsvr32 cannot be started");
  }
  DWORD exit_code = STILL_ACTIVE;
  WaitForSingleObject(process.hProcess, INFINITE);
  GetExitCodeProcess(process.hProcess, &exit_code);
  CloseHandle(process.hThread);
  CloseHandle(process.hProcess);
  return exit_code;
}

TEST_F(RegistrationOnTheMachine, IsDoneAndUndoneByRegsvr32) {
  ASSERT_EQ(LoadedModule().UnregisterServer(), S_OK);
  const std::wstring quoted = L"\"" + ModuleFile() + L"\"";

  EXPECT_EQ(RunRegsvr32(L"/s " + quoted), 0U);
  ExpectAllRegistered(ModuleFile());
  EXPECT_TRUE(KeyExists(HKEY_CLASSES_ROOT, kLibraryKey + LR"(\1.0\0\)" + kSystemName));

  EXPECT_EQ(RunRegsvr32(L"/u /s " + quoted), 0U);
  ExpectNothingRegistered();
  EXPECT_TRUE(KeyExists(HKEY_CLASSES_ROOT, L"CLSID"));
}

}  // namespace
}  // namespace brantel
