#pragma once

#include <windows.h>

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "tests/module/import_patch.h"

namespace brantel {

// What a modem and the centres of all protocols say to what they are sent.
std::string AnswerOfCentres(const std::string& sent);

// A modem on each of the machine's serial ports, for the module alone and while this lives; and no
// time passes for the module meanwhile. There can be one at a time.
class StandInModem {
 public:
  explicit StandInModem(HMODULE module);
  StandInModem(const StandInModem&) = delete;
  StandInModem& operator=(const StandInModem&) = delete;
  ~StandInModem();

  // What the modem answers to a read, by what was written last.
  std::function<std::string(const std::string&)> answer_to;

  // What it was sent.
  std::vector<std::string> written;

  // Handles of ports that are open.
  std::vector<HANDLE> ports;

 private:
  ImportPatch open_;
  ImportPatch close_;
  ImportPatch get_control_;
  ImportPatch set_control_;
  ImportPatch get_timeouts_;
  ImportPatch set_timeouts_;
  ImportPatch read_;
  ImportPatch write_;
  ImportPatch flush_;
  ImportPatch sleep_;
};

}  // namespace brantel
