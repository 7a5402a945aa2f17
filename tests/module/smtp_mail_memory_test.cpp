// What needs sockets, where memory runs out: at each place in turn a call fails there, and gives
// back what it had taken from the system by then.
#include <windows.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <limits>

#include "system/windows/bstr_win32.h"
#include "tests/module/expected_classes.h"
#include "tests/module/import_patch.h"
#include "tests/module/instance_bytes.h"
#include "tests/module/loaded_module.h"
#include "tests/module/process_level.h"
#include "tests/module/recording_host.h"
#include "tests/module/scratch_directory.h"
#include "tests/module/sockets_work.h"

namespace brantel {
namespace {

constexpr int kNever = std::numeric_limits<int>::max();

// How many allocations the module has before the one that fails.
int allocations_left = kNever;

void* AllocateUnlessItIsTheOne(std::size_t size) {
  // NOLINTNEXTLINE(*-no-malloc): of the heap to which the module gives it back
  return allocations_left-- == 0 ? nullptr : std::malloc(size);
}

class SocketsWithoutMemory : public ::testing::TestWithParam<ExpectedClass> {
 protected:
  // Whether the call still came to the allocation that fails.
  template <typename Call>
  bool FailsAt(int allocation, Call call) {
    allocations_left = allocation;
    call();
    const bool has_failed = allocations_left < 0;
    allocations_left = kNever;
    return has_failed;
  }

  LoadedModule module_;
  RecordingHost host_;
  ComPointer<INotifier> notifier_ = module_.CreateNotifier(GetParam());
  ImportPatch allocations_{module_.handle(), "malloc",
                           reinterpret_cast<void*>(AllocateUnlessItIsTheOne)};
};

class BindingWithoutMemory : public SocketsWithoutMemory {};

INSTANTIATE_TEST_SUITE_P(Classes, BindingWithoutMemory, ::testing::Values(kSMTPMail, kWinPopup),
                         NameOfClass);

TEST_P(BindingWithoutMemory, LeavesTheSocketsLibraryAsItWas) {
  HRESULT result = S_OK;
  int failures = 0;
  while (FailsAt(failures, [&] { result = notifier_->Initialize(&host_); })) {
    ++failures;
    ASSERT_EQ(result, E_FAIL);
    EXPECT_FALSE(SocketsWork());
    EXPECT_EQ(host_.references(), 1);
  }
  EXPECT_GT(failures, 0);
  EXPECT_EQ(result, S_OK);
  EXPECT_TRUE(SocketsWork());
  EXPECT_EQ(notifier_->Shutdown(), S_OK);
  EXPECT_FALSE(SocketsWork());
}

class MailWithoutMemory : public SocketsWithoutMemory {};

INSTANTIATE_TEST_SUITE_P(Classes, MailWithoutMemory, ::testing::Values(kSMTPMail), NameOfClass);

TEST_P(MailWithoutMemory, LeavesNoHandleBehind) {
  // Nobody listens there.
  const std::string bytes = std::string(
                                "\x8C\x26\xDD\xD6\x2B\xA3\x86\xEF"
                                "\x26\x83\xA7\xDA\x94\x10\xF9\x49",
                                16) +
                            TextField("127.26.1.1") + TextField("ann@example.org") +
                            TextField("ops@example.org") + TextField("Disk full") +
                            TextField("It is.\r\n");
  const ScratchDirectory scratch;
  const Bstr instance(scratch.Write(L"alert", bytes).wstring());
  ASSERT_EQ(notifier_->Initialize(&host_), S_OK);
  ASSERT_EQ(notifier_->Send(instance.get()), E_FAIL);
  ASSERT_EQ(host_.log_calls.back().text, L"failed to connect to gatehost\r\n");

  // What is opened once stays open: for the first exception too.
  const auto send = [&] { notifier_->Send(instance.get()); };
  ASSERT_TRUE(FailsAt(0, send));
  const std::size_t handles = OpenHandles().size();
  int failures = 0;
  while (FailsAt(failures, send)) {
    EXPECT_EQ(OpenHandles().size(), handles) << "at allocation " << failures;
    ++failures;
  }
  EXPECT_GT(failures, 0);
  EXPECT_EQ(notifier_->Shutdown(), S_OK);
}

}  // namespace
}  // namespace brantel
