#include "tests/soak/soak.h"

#include <iostream>

#include "tests/module/test_program.h"

namespace brantel {

unsigned Setting(const wchar_t* variable, unsigned otherwise) {
  const std::wstring text = EnvironmentText(variable);
  return text.empty() ? otherwise : static_cast<unsigned>(std::stoul(text));
}

void GrowthWatch::ExpectNone(const std::string& what, const Tolerance& tolerance) const {
  const ProcessLevels after = MeasureProcess();
  std::cout << what << ": " << Compared(before_, after) << ", task memory "
            << balance_.Outstanding() << std::endl;
  EXPECT_LE(after.handles, before_.handles + tolerance.handles);
  EXPECT_LE(after.heaps.bytes, before_.heaps.bytes + tolerance.heap_bytes);
  EXPECT_LE(after.committed, before_.committed + tolerance.committed_bytes);
  EXPECT_EQ(after.gdi_objects, before_.gdi_objects);
  EXPECT_EQ(after.user_objects, before_.user_objects);
  EXPECT_EQ(balance_.Outstanding(), 0);
  EXPECT_EQ(balance_.StrayFrees(), 0);
}

}  // namespace brantel
