// How long objects, their hosts and the module last: whatever a host does in its callbacks or on
// other threads, who is at work keeps what it works with.
#include <windows.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <oleauto.h>

#include <atomic>
#include <functional>
#include <string>
#include <thread>
#include <vector>

#include "system/windows/bstr_win32.h"
#include "system/windows/handle_win32.h"
#include "tests/module/expected_classes.h"
#include "tests/module/expected_dialogs.h"
#include "tests/module/import_patch.h"
#include "tests/module/instance_bytes.h"
#include "tests/module/loaded_module.h"
#include "tests/module/module_memory.h"
#include "tests/module/recording_host.h"
#include "tests/module/scratch_directory.h"

namespace brantel {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::ValuesIn;

// A host that releases its object, of which it has one reference, while a method of that runs.
class ReleasedObject {
 public:
  explicit ReleasedObject(const ExpectedClass& expected)
      : notifier_(module_.CreateNotifier(expected)) {}
  ReleasedObject(const ReleasedObject&) = delete;
  ReleasedObject& operator=(const ReleasedObject&) = delete;
  ~ReleasedObject() = default;

  [[nodiscard]] const LoadedModule& module() const { return module_; }
  // Not counted.
  [[nodiscard]] INotifier* get() const { return notifier_.get(); }

  // Another of its interfaces, not counted either: all are of the one object.
  template <typename Interface>
  [[nodiscard]] Interface* As(const wchar_t* iid) const {
    ComPointer<Interface> found;
    EXPECT_EQ(notifier_->QueryInterface(ToGuid(iid), found.put_void()), S_OK);
    return found.get();
  }

  // What the host does in its callback. The first call alone does something.
  void Release() {
    if (!notifier_) return;
    notifier_ = {};
    in_callback_ = module_.CanUnloadNow();
  }

  // After the method: the object has lasted as long as that, and no longer.
  void ExpectGoneByNow() const {
    EXPECT_EQ(in_callback_, S_FALSE);
    EXPECT_EQ(module_.CanUnloadNow(), S_OK);
  }

 private:
  LoadedModule module_;
  ComPointer<INotifier> notifier_;
  HRESULT in_callback_ = E_UNEXPECTED;
};

class ReleaseInACallback : public ::testing::TestWithParam<ExpectedClass> {
 protected:
  [[nodiscard]] Bstr Missing() const { return Bstr((scratch_.path() / L"missing").wstring()); }
  [[nodiscard]] Bstr Folder() const { return Bstr(scratch_.path().wstring()); }

  void Bind() {
    ASSERT_EQ(object_.get()->Initialize(&host_), S_OK);
    ASSERT_EQ(host_.references(), 2);
  }

  // The object has gone and has let go of the host.
  void ExpectGoneByNow() const {
    object_.ExpectGoneByNow();
    EXPECT_EQ(host_.references(), 1);
  }

  ScratchDirectory scratch_;
  RecordingHost host_;
  ReleasedObject object_{GetParam()};
};

class ReleaseInACallbackOfEveryClass : public ReleaseInACallback {};
class ReleaseInACallbackOfWebForms : public ReleaseInACallback {};

INSTANTIATE_TEST_SUITE_P(Classes, ReleaseInACallback, ValuesIn(ClassesThatBindEverywhere()),
                         NameOfClass);
INSTANTIATE_TEST_SUITE_P(Classes, ReleaseInACallbackOfEveryClass, ValuesIn(kExpectedClasses),
                         NameOfClass);
INSTANTIATE_TEST_SUITE_P(Classes, ReleaseInACallbackOfWebForms, ValuesIn(ClassesWithWebForms()),
                         NameOfClass);

TEST_P(ReleaseInACallbackOfEveryClass, LetsInitializeEnd) {
  host_.during_query = [&] { object_.Release(); };
  object_.get()->Initialize(&host_);
  ExpectGoneByNow();
}

TEST_P(ReleaseInACallback, LetsShutdownEnd) {
  Bind();
  host_.during_release = [&] { object_.Release(); };
  EXPECT_EQ(object_.get()->Shutdown(), S_OK);
  ExpectGoneByNow();
}

TEST_P(ReleaseInACallback, LetsSendEnd) {
  Bind();
  host_.during_log = [&] { object_.Release(); };
  EXPECT_EQ(object_.get()->Send(Missing().get()), E_FAIL);
  EXPECT_EQ(host_.log_calls.size(), 3U);
  ExpectGoneByNow();
}

TEST_P(ReleaseInACallbackOfWebForms, LetsGetAddPageEnd) {
  Bind();
  host_.during_log = [&] { object_.Release(); };
  Bstr page;
  auto* const web = object_.As<INotifierWebConfig>(kNotifierWebConfigIid);
  EXPECT_EQ(web->GetAddPage(Folder().get(), page.in_out()), S_OK);
  EXPECT_GT(page.view().size(), 500U);
  ExpectGoneByNow();
}

TEST_P(ReleaseInACallbackOfWebForms, LetsGetEditPageEnd) {
  Bind();
  host_.during_log = [&] { object_.Release(); };
  Bstr page;
  auto* const web = object_.As<INotifierWebConfig>(kNotifierWebConfigIid);
  EXPECT_EQ(web->GetEditPage(Missing().get(), page.in_out()), E_FAIL);
  ExpectGoneByNow();
}

// No host is called while a form is saved, but time passes: another thread may come.
std::function<void()> during_opening;

HANDLE WINAPI OpenFile(const char* path, DWORD access, DWORD share, SECURITY_ATTRIBUTES* security,
                       DWORD creation, DWORD flags, HANDLE like) {
  during_opening();
  return CreateFileA(path, access, share, security, creation, flags, like);
}

TEST_P(ReleaseInACallbackOfWebForms, LetsSubmitFormEnd) {
  Bind();
  during_opening = [&] { object_.Release(); };
  const ImportPatch patch(object_.module().handle(), "CreateFileA",
                          reinterpret_cast<void*>(&OpenFile));
  auto* const web = object_.As<INotifierWebConfig>(kNotifierWebConfigIid);
  EXPECT_EQ(web->SubmitForm(Folder().get(), Bstr(L"instancename=night&origname=").get()), S_OK);
  EXPECT_EQ(scratch_.Files().count(L"night"), 1U);
  ExpectGoneByNow();
}

// What a host does in its timer while one of its dialogs is shown.
std::function<void()> at_timer;

void CALLBACK RunAtTimer(HWND, UINT, UINT_PTR timer, DWORD) {
  KillTimer(nullptr, timer);
  at_timer();
}

BOOL CALLBACK Cancel(HWND window, LPARAM) {
  PostMessageA(window, WM_COMMAND, IDCANCEL, 0);
  return TRUE;
}

class ReleaseDuringADialog : public ReleaseInACallback {
 protected:
  ReleaseDuringADialog() {
    at_timer = [&] {
      object_.Release();
      EnumThreadWindows(GetCurrentThreadId(), Cancel, 0);
    };
    SetTimer(nullptr, 0, USER_TIMER_MINIMUM, RunAtTimer);
  }
};

// Not WinPopup, whose dialog asks the network for computers, which is not the same on all machines.
INSTANTIATE_TEST_SUITE_P(Classes, ReleaseDuringADialog,
                         ::testing::Values(kSMTPMail, kSound, kLaunchProgram, kBeeper, kPager),
                         NameOfClass);

TEST_P(ReleaseDuringADialog, LetsAddInstanceEnd) {
  Bind();
  BSTR name = nullptr;
  EXPECT_EQ(object_.As<INotifierConfig>(kNotifierConfigIid)->AddInstance(Folder().get(), &name),
            E_FAIL);
  EXPECT_EQ(name, nullptr);
  ExpectGoneByNow();
}

class ReleaseDuringAnEdit : public ReleaseDuringADialog {};
INSTANTIATE_TEST_SUITE_P(Classes, ReleaseDuringAnEdit, ::testing::Values(kLaunchProgram),
                         NameOfClass);

TEST_P(ReleaseDuringAnEdit, LetsEditInstanceEnd) {
  static_cast<void>(scratch_.Write(L"night", ExpectedLaunchProgramDialog().sample_file));
  Bind();
  Bstr name(L"night");
  EXPECT_EQ(
      object_.As<INotifierConfig>(kNotifierConfigIid)->EditInstance(Folder().get(), name.in_out()),
      E_FAIL);
  EXPECT_EQ(name.view(), L"night");
  ExpectGoneByNow();
}

// A host whose answer to being let go counts references of the object once more.
class LastRelease : public ::testing::TestWithParam<ExpectedClass> {
 protected:
  LoadedModule module_;
  RecordingHost host_;
};

INSTANTIATE_TEST_SUITE_P(Classes, LastRelease, ValuesIn(ClassesThatBindEverywhere()), NameOfClass);

TEST_P(LastRelease, IsOneWhateverTheHostCountsMeanwhile) {
  int calls = 0;
  auto notifier = module_.CreateNotifier(GetParam());
  INotifier* const dying = notifier.get();
  ASSERT_EQ(notifier->Initialize(&host_), S_OK);
  host_.during_release = [&] {
    ++calls;
    ComPointer<INotifierConfig> config;
    dying->AddRef();
    EXPECT_EQ(dying->QueryInterface(ToGuid(kNotifierConfigIid), config.put_void()), S_OK);
    dying->Release();
    EXPECT_EQ(dying->Shutdown(), S_OK);
    EXPECT_EQ(module_.CanUnloadNow(), S_FALSE);
  };

  notifier = {};
  EXPECT_EQ(calls, 1);
  EXPECT_EQ(host_.references(), 1);
  EXPECT_EQ(module_.CanUnloadNow(), S_OK);
  // A second deletion would have taken away what this one counts by.
  const auto next = module_.CreateNotifier(GetParam());
  EXPECT_EQ(module_.CanUnloadNow(), S_FALSE);
}

class NestedInitialize : public LastRelease {};
INSTANTIATE_TEST_SUITE_P(Classes, NestedInitialize, ValuesIn(ClassesThatBindEverywhere()),
                         NameOfClass);

TEST_P(NestedInitialize, BindsOnce) {
  auto notifier = module_.CreateNotifier(GetParam());
  host_.during_query = [&] {
    host_.during_query = nullptr;
    EXPECT_EQ(notifier->Initialize(&host_), S_OK);
  };
  EXPECT_EQ(notifier->Initialize(&host_), S_OK);
  EXPECT_EQ(host_.references(), 2);
  EXPECT_EQ(notifier->Shutdown(), S_OK);
  EXPECT_EQ(host_.references(), 1);
}

// Memory that runs out while an object is made or bound.
class WithoutMemory : public LastRelease {};
INSTANTIATE_TEST_SUITE_P(Classes, WithoutMemory, ValuesIn(kExpectedClasses), NameOfClass);

TEST_P(WithoutMemory, CreatesNothingAndCountsNothing) {
  const auto factory = module_.FactoryOf(GetParam());
  ModuleMemory memory(module_.handle());
  std::size_t failures = 0;
  void* object = nullptr;
  for (memory.fails_at = 0;; ++*memory.fails_at) {
    memory.allocations = 0;
    object = kLeftover;
    const HRESULT result = factory->CreateInstance(nullptr, ToGuid(kNotifierIid), &object);
    if (memory.allocations <= *memory.fails_at) break;
    EXPECT_EQ(result, E_FAIL) << *memory.fails_at;
    EXPECT_EQ(object, nullptr) << *memory.fails_at;
    EXPECT_EQ(module_.CanUnloadNow(), S_OK) << *memory.fails_at;
    ++failures;
  }
  EXPECT_GE(failures, 2U);
  const auto created = ComPointer<INotifier>::Adopt(static_cast<INotifier*>(object));
  EXPECT_EQ(module_.CanUnloadNow(), S_FALSE);
}

TEST_P(WithoutMemory, BindsNoHostAndLeavesItItsReferences) {
  const auto notifier = module_.CreateNotifier(GetParam());
  ModuleMemory memory(module_.handle());
  std::size_t failures = 0;
  for (memory.fails_at = 0;; ++*memory.fails_at) {
    memory.allocations = 0;
    const HRESULT result = notifier->Initialize(&host_);
    if (memory.allocations <= *memory.fails_at) break;
    EXPECT_EQ(result, E_FAIL) << *memory.fails_at;
    EXPECT_EQ(host_.references(), 1) << *memory.fails_at;
    ++failures;
  }
  EXPECT_GE(failures, 1U);
  EXPECT_EQ(host_.references(), GetParam().binds_everywhere ? 2 : 1);
}

TEST_P(WithoutMemory, IsNotWhatKeepsTheModuleWhileAnObjectIsMade) {
  const auto factory = module_.FactoryOf(GetParam());
  ModuleMemory memory(module_.handle());
  int busy = 0;
  memory.at_allocation = [&] {
    if (module_.CanUnloadNow() == S_FALSE) ++busy;
  };
  ComPointer<INotifier> created;
  ASSERT_EQ(factory->CreateInstance(nullptr, ToGuid(kNotifierIid), created.put_void()), S_OK);
  EXPECT_EQ(static_cast<std::size_t>(busy), memory.allocations);
}

// Two threads at one object, against the rule.

// Counts its references and what it is told, by any thread.
class SharedHost final : public INotifierHost {
 public:
  SharedHost() = default;
  SharedHost(const SharedHost&) = delete;
  SharedHost& operator=(const SharedHost&) = delete;
  ~SharedHost() = default;

  [[nodiscard]] LONG references() const { return references_; }
  [[nodiscard]] long told() const { return told_; }
  [[nodiscard]] bool was_told_without_reference() const { return was_told_without_reference_; }

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID, void** object) override {
    AddRef();
    *object = static_cast<INotifierHost*>(this);
    return S_OK;
  }
  ULONG STDMETHODCALLTYPE AddRef() override { return static_cast<ULONG>(++references_); }
  ULONG STDMETHODCALLTYPE Release() override { return static_cast<ULONG>(--references_); }
  HRESULT STDMETHODCALLTYPE ExpandMessage(BSTR*) override { return S_OK; }
  HRESULT STDMETHODCALLTYPE LogMessage(UINT32, BSTR) override {
    if (references_ < 2) was_told_without_reference_ = true;
    ++told_;
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE GetAlertTrigger(UINT32*) override { return E_FAIL; }

 private:
  std::atomic<LONG> references_ = 1;
  std::atomic<long> told_ = 0;
  std::atomic<bool> was_told_without_reference_ = false;
};

class OtherThread : public LastRelease {};
INSTANTIATE_TEST_SUITE_P(Classes, OtherThread, ValuesIn(ClassesThatBindEverywhere()), NameOfClass);

TEST_P(OtherThread, MayEndAndBeginBindingsWhileOneSends) {
  constexpr long kTold = 1000;
  const Bstr missing(L"Z:\\no such folder\\alert");
  SharedHost host;
  const auto notifier = module_.CreateNotifier(GetParam());
  std::atomic<bool> is_over = false;
  std::thread sender([&] {
    while (!is_over)
      notifier->Send(missing.get());
  });
  while (host.told() < kTold) {
    EXPECT_EQ(notifier->Initialize(&host), S_OK);
    SwitchToThread();
    EXPECT_EQ(notifier->Shutdown(), S_OK);
  }
  is_over = true;
  sender.join();
  EXPECT_FALSE(host.was_told_without_reference());
  EXPECT_EQ(host.references(), 1);
}

// The shortest Send of all takes its host and returns.
TEST(SendOfAnotherThread, TakesAWholeHostOrNone) {
  constexpr int kThreads = 3;
  constexpr int kBindings = 200000;
  const LoadedModule module;
  SharedHost host;
  const auto notifier = module.CreateNotifier(kLaunchProgram);
  std::atomic<bool> is_over = false;
  std::vector<std::thread> senders;
  for (int i = 0; i < kThreads; ++i) {
    senders.emplace_back([&] {
      while (!is_over)
        notifier->Send(nullptr);
    });
  }
  for (int i = 0; i < kBindings; ++i) {
    notifier->Initialize(&host);
    notifier->Shutdown();
  }
  is_over = true;
  for (std::thread& sender : senders)
    sender.join();
  EXPECT_EQ(host.references(), 1);
}

TEST(SendOfAnotherThread, KeepsItsHostUntilItReturns) {
  const ScratchDirectory scratch;
  const LoadedModule module;
  RecordingHost host;
  RecordingHost next;
  const auto notifier = module.CreateNotifier(kLaunchProgram);
  const Bstr instance(
      scratch.Write(L"night", InstanceBytes({"no such program.exe", "", "%n"})).wstring());
  const Handle asked(CreateEventW(nullptr, FALSE, FALSE, nullptr));
  const Handle answer(CreateEventW(nullptr, FALSE, FALSE, nullptr));
  host.during_expansion = [&] {
    SetEvent(asked.get());
    WaitForSingleObject(answer.get(), INFINITE);
  };
  ASSERT_EQ(notifier->Initialize(&host), S_OK);

  std::thread sender([&] { EXPECT_EQ(notifier->Send(instance.get()), E_FAIL); });
  WaitForSingleObject(asked.get(), INFINITE);
  EXPECT_EQ(notifier->Shutdown(), S_OK);
  EXPECT_EQ(host.references(), 2);
  EXPECT_EQ(notifier->Initialize(&next), S_OK);
  SetEvent(answer.get());
  sender.join();
  EXPECT_EQ(host.references(), 1);
  EXPECT_EQ(next.references(), 2);
  EXPECT_THAT(host.expand_calls, ElementsAre(ExpandCall{false, L"%n"}));
  EXPECT_THAT(next.expand_calls, IsEmpty());
}

}  // namespace
}  // namespace brantel
