// Hosts in other languages call by position in the table of methods, so the positions are checked
// from outside the C++ type system: tables are read and written as arrays of plain functions.
#include <windows.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <oleauto.h>

#include <array>
#include <filesystem>
#include <string>
#include <vector>

#include "system/windows/bstr_win32.h"
#include "tests/module/dialog_session.h"
#include "tests/module/expected_classes.h"
#include "tests/module/instance_bytes.h"
#include "tests/module/loaded_module.h"
#include "tests/module/recording_host.h"
#include "tests/module/scratch_directory.h"
#include "tests/module/utf8_text.h"

namespace brantel {
namespace {

using ::testing::ElementsAre;

struct RawObject {
  void* const* slots;
};

// Calls the method at this position of the object's table, counted from 0 for QueryInterface.
template <typename... Arguments>
HRESULT CallSlot(IUnknown* object, std::size_t slot, Arguments... arguments) {
  using Method = HRESULT(STDMETHODCALLTYPE*)(void*, Arguments...);
  const auto* raw = reinterpret_cast<const RawObject*>(object);
  return reinterpret_cast<Method>(raw->slots[slot])(object, arguments...);
}

// For a dialog, whose thread makes the call.
template <std::size_t kSlot>
HRESULT CallConfigSlot(INotifierConfig& config, BSTR directory, BSTR* name) {
  return CallSlot(&config, kSlot, directory, name);
}

TEST(SlotOrder, OfINotifierIsInitializeShutdownSend) {
  const LoadedModule module;
  RecordingHost host;
  const auto notifier = module.Create<IUnknown>(kLaunchProgram, kNotifierIid);
  const Bstr missing(L"Z:\\no such folder\\no such file");

  EXPECT_EQ(CallSlot(notifier.get(), 3, static_cast<IUnknown*>(&host)), S_OK);
  EXPECT_EQ(host.references(), 2);
  EXPECT_EQ(CallSlot(notifier.get(), 5, missing.get()), E_FAIL);
  EXPECT_EQ(host.log_calls.size(), 3U);
  EXPECT_EQ(CallSlot(notifier.get(), 4), S_OK);
  EXPECT_EQ(host.references(), 1);
}

TEST(SlotOrder, OfINotifierConfigIsAddInstanceEditInstanceGetImageResource) {
  const LoadedModule module;
  const ScratchDirectory scratch;
  const auto title_of_dialog_by = [&](DialogRequest::Method method) {
    static_cast<void>(scratch.Write(L"night", InstanceBytes({"program", "folder", ""})));
    const DialogSession session(module, {.notifier_class = kLaunchProgram,
                                         .directory = scratch.path().wstring(),
                                         .edited = L"night",
                                         .method = method});
    return WindowText(session.dialog());
  };
  EXPECT_EQ(title_of_dialog_by(CallConfigSlot<3>), "Add Launch Program Instance");
  EXPECT_EQ(title_of_dialog_by(CallConfigSlot<4>), "Edit Launch Program Instance");

  const auto config = module.Create<IUnknown>(kLaunchProgram, kNotifierConfigIid);
  HMODULE image_module = nullptr;
  UINT32 image_id = 0;
  EXPECT_EQ(CallSlot(config.get(), 5, &image_module, &image_id), S_OK);
  EXPECT_EQ(image_module, module.handle());
  EXPECT_EQ(image_id, 209U);
}

TEST(SlotOrder, OfINotifierWebConfigIsGetAddPageGetEditPageSubmitForm) {
  const LoadedModule module;
  const ScratchDirectory scratch;
  const auto web = module.Create<IUnknown>(kBeeper, kNotifierWebConfigIid);
  const Bstr folder(scratch.path().wstring());
  const Bstr instance((scratch.path() / L"night").wstring());
  const Bstr form(L"origname=night&beepernumber=5550100");
  Bstr add_page;
  Bstr edit_page;

  EXPECT_EQ(CallSlot(web.get(), 5, folder.get(), form.get()), S_OK);
  EXPECT_TRUE(std::filesystem::exists(scratch.path() / L"night"));
  EXPECT_EQ(CallSlot(web.get(), 3, folder.get(), add_page.in_out()), S_OK);
  EXPECT_EQ(CallSlot(web.get(), 4, instance.get(), edit_page.in_out()), S_OK);
  // A page for new instances knows nothing of this one.
  EXPECT_EQ(add_page.view().find(L"5550100"), std::wstring_view::npos);
  EXPECT_NE(edit_page.view().find(L"5550100"), std::wstring_view::npos);
}

TEST(SlotOrder, OfISupportErrorInfoHasItsOneMethodAfterIUnknown) {
  const LoadedModule module;
  const auto support = module.Create<IUnknown>(kLaunchProgram, kSupportErrorInfoIid);
  const IID notifier = ToGuid(kNotifierIid);
  const IID web = ToGuid(kNotifierWebConfigIid);

  EXPECT_EQ(CallSlot(support.get(), 3, &notifier), S_OK);
  EXPECT_EQ(CallSlot(support.get(), 3, &web), S_FALSE);
}

constexpr UINT32 kNoKindOfEvent = 0;

// A host as a C program would write it, with methods of its own behind the three.
struct PlainHost {
  void* const* slots;
  std::vector<std::string> calls;
  std::wstring logged;
  LONG references = 1;
};

HRESULT STDMETHODCALLTYPE PlainQueryInterface(PlainHost* host, const IID* iid, void** object) {
  host->calls.emplace_back("QueryInterface");
  *object = nullptr;
  if (*iid != ToGuid(kNotifierHostIid)) return E_NOINTERFACE;
  *object = host;
  ++host->references;
  return S_OK;
}

ULONG STDMETHODCALLTYPE PlainAddRef(PlainHost* host) {
  return static_cast<ULONG>(++host->references);
}

ULONG STDMETHODCALLTYPE PlainRelease(PlainHost* host) {
  return static_cast<ULONG>(--host->references);
}

HRESULT STDMETHODCALLTYPE PlainExpandMessage(PlainHost* host, BSTR* text) {
  host->calls.push_back("ExpandMessage " + ToUtf8(Bstr::ViewOf(*text)));
  return E_ACCESSDENIED;
}

HRESULT STDMETHODCALLTYPE PlainLogMessage(PlainHost* host, UINT32 level, BSTR text) {
  host->calls.push_back("LogMessage " + std::to_string(level));
  host->logged += Bstr::ViewOf(text);
  return S_OK;
}

HRESULT STDMETHODCALLTYPE PlainGetAlertTrigger(PlainHost* host, UINT32* flags) {
  host->calls.emplace_back("GetAlertTrigger");
  *flags = kNoKindOfEvent;
  return S_OK;
}

HRESULT STDMETHODCALLTYPE PlainMethodOfItsOwn(PlainHost* host) {
  host->calls.emplace_back("a method of the host's own");
  return S_OK;
}

template <typename Function>
void* Slot(Function* function) {
  return reinterpret_cast<void*>(function);
}

class PlainHostTest : public ::testing::Test {
 protected:
  [[nodiscard]] IUnknown* host_object() { return reinterpret_cast<IUnknown*>(&host_); }

  const std::array<void*, 8> slots_ = {Slot(PlainQueryInterface), Slot(PlainAddRef),
                                       Slot(PlainRelease),        Slot(PlainExpandMessage),
                                       Slot(PlainLogMessage),     Slot(PlainGetAlertTrigger),
                                       Slot(PlainMethodOfItsOwn), Slot(PlainMethodOfItsOwn)};
  PlainHost host_{.slots = slots_.data(), .calls = {}, .logged = {}};
};

// The trigger decides what becomes of the alert, and the log ends with it.
TEST_F(PlainHostTest, IsCalledAtItsFirstSlotForATextItsSecondForTheLogItsThirdForTheTrigger) {
  const LoadedModule module;
  const ScratchDirectory scratch;
  const auto notifier = module.CreateNotifier(kBeeper);
  const Bstr instance(scratch
                          .Write(L"night", MagicBytes(kBeeper) + TextField("5550300") +
                                               TextField("") + TextField("1") + TextField("2") +
                                               TextField("3") + TextField("report") +
                                               LengthBytes(0))
                          .wstring());
  ASSERT_EQ(notifier->Initialize(host_object()), S_OK);

  EXPECT_EQ(notifier->Send(instance.get()), S_OK);
  EXPECT_THAT(host_.calls,
              ElementsAre("QueryInterface", "ExpandMessage %C", "GetAlertTrigger", "LogMessage 1"));
  EXPECT_EQ(host_.logged, L"Currently an unhandled alert trigger - future enhancement.\n");
  EXPECT_EQ(notifier->Shutdown(), S_OK);
}

TEST_F(PlainHostTest, IsCalledAtItsSecondSlotForLoggingAndNowhereElse) {
  const LoadedModule module;
  const auto notifier = module.CreateNotifier(kLaunchProgram);
  ASSERT_EQ(notifier->Initialize(host_object()), S_OK);

  EXPECT_EQ(notifier->Send(Bstr(L"Z:\\no such file").get()), E_FAIL);
  EXPECT_THAT(host_.calls,
              ElementsAre("QueryInterface", "LogMessage 1", "LogMessage 1", "LogMessage 1"));
  EXPECT_EQ(host_.logged, L"Z:\\no such file - Failed to load notification from disk.\r");
  EXPECT_EQ(notifier->Shutdown(), S_OK);
  EXPECT_EQ(host_.references, 1);
}

}  // namespace
}  // namespace brantel
