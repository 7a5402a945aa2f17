#include <gmock/gmock.h>

#include <cstdio>
#include <string_view>

#include "tests/unit/dialogue/replay.h"

int main(int argc, char** argv) {
  ::testing::InitGoogleMock(&argc, argv);
  for (int i = 1; i < argc; ++i) {
    if (argv[i] != std::string_view("--record-dialogues")) {
      std::fprintf(stderr, "unknown argument: %s\n", argv[i]);
      return 2;
    }
    brantel::RecordDialogues();
  }
  return RUN_ALL_TESTS();
}
