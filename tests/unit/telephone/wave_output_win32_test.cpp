// The system's wave output on drivers of the test's own.
#include "telephone/wave_output_win32.h"

#include <windows.h>
#include <gtest/gtest.h>
#include <mmsystem.h>

#include <array>
#include <new>

#include "telephone/event_handle.h"
#include "tests/module/import_patch.h"
#include "tests/unit/allocation_counter.h"

namespace brantel {
namespace {

// What the driver was asked for, and whom it reports to.
struct Driver {
  int opened = 0;
  int closed = 0;
  MMRESULT answer = MMSYSERR_NOERROR;
  void(CALLBACK* report)(HWAVEOUT, UINT, DWORD_PTR, DWORD_PTR, DWORD_PTR) = nullptr;
};
Driver driver;

HWAVEOUT const kDevice = reinterpret_cast<HWAVEOUT>(0x1234);

MMRESULT WINAPI OpenDevice(LPHWAVEOUT device, UINT, LPCWAVEFORMATEX, DWORD_PTR callback, DWORD_PTR,
                           DWORD flags) {
  *device = kDevice;  // also where it fails: nobody may rely on that
  if (driver.answer != MMSYSERR_NOERROR) return driver.answer;
  ++driver.opened;
  EXPECT_EQ(flags, DWORD{CALLBACK_FUNCTION});
  driver.report = reinterpret_cast<decltype(driver.report)>(callback);
  return MMSYSERR_NOERROR;
}

MMRESULT WINAPI CloseDevice(HWAVEOUT device) {
  EXPECT_EQ(device, kDevice);
  ++driver.closed;
  return MMSYSERR_NOERROR;
}

MMRESULT WINAPI PrepareHeader(HWAVEOUT, LPWAVEHDR, UINT) {
  return MMSYSERR_NOERROR;
}

class SystemWaveOutputTest : public ::testing::Test {
 protected:
  SystemWaveOutputTest() { driver = {}; }

  WaveCode Open() { return output_.Open(0, format_, device_); }

  void Report(UINT message) const {
    driver.report(kDevice, message, 0, reinterpret_cast<DWORD_PTR>(&header_), 0);
  }

  [[nodiscard]] bool IsEventSet() const {
    return WaitForSingleObject(reinterpret_cast<HANDLE>(device_->DoneEvent()), 0) == WAIT_OBJECT_0;
  }

  HMODULE const program_ = GetModuleHandleW(nullptr);
  ImportPatch open_{program_, "waveOutOpen", reinterpret_cast<void*>(&OpenDevice)};
  ImportPatch close_{program_, "waveOutClose", reinterpret_cast<void*>(&CloseDevice)};
  ImportPatch prepare_{program_, "waveOutPrepareHeader", reinterpret_cast<void*>(&PrepareHeader)};
  std::array<std::byte, sizeof(WAVEFORMATEX)> format_{};
  SystemWaveOutput output_;
  WaveHeader header_;
  std::unique_ptr<WaveDevice> device_;
};

TEST_F(SystemWaveOutputTest, LeavesNoDeviceOpenWhenMemoryRunsOut) {
  FailNextAllocation();
  EXPECT_THROW(Open(), std::bad_alloc);
  EXPECT_EQ(driver.opened, driver.closed);
  EXPECT_EQ(device_, nullptr);
}

TEST_F(SystemWaveOutputTest, ClosesTheDevice) {
  EXPECT_EQ(Open(), 0U);
  EXPECT_EQ(driver.opened, 1);
  EXPECT_EQ(driver.closed, 0);
  device_.reset();
  EXPECT_EQ(driver.closed, 1);
}

TEST_F(SystemWaveOutputTest, ClosesNothingThatCouldNotBeOpened) {
  driver.answer = MMSYSERR_ALLOCATED;
  EXPECT_EQ(Open(), WaveCode{MMSYSERR_ALLOCATED});
  EXPECT_EQ(device_, nullptr);
  EXPECT_EQ(driver.closed, 0);
}

TEST_F(SystemWaveOutputTest, SetsTheEventWhenTheDriverIsDoneAndForNothingElse) {
  Open();
  EXPECT_EQ(device_->Prepare(header_), 0U);
  for (const UINT message : {UINT{WOM_OPEN}, UINT{WOM_CLOSE}, UINT{MM_WIM_DATA}}) {
    Report(message);
    EXPECT_FALSE(device_->IsDone());
    EXPECT_FALSE(IsEventSet());
  }
  Report(WOM_DONE);
  EXPECT_TRUE(device_->IsDone());
  EXPECT_TRUE(IsEventSet());
  EXPECT_TRUE(device_->IsDone());
}

}  // namespace
}  // namespace brantel
