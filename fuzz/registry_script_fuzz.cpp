// Registry scripts: a bad one is refused with a line that it has, a good one registers.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "module/registry_script.h"

namespace {

class NullShell final : public brantel::RegistryShell {
 public:
  brantel::Result CreateKey(const std::string&) override { return brantel::kOk; }
  brantel::Result SetText(const std::string&, const std::string&, const std::string&) override {
    return brantel::kOk;
  }
  brantel::Result DeleteTree(const std::string&) override { return brantel::kOk; }
  brantel::Result DeleteIfWithoutSubkeys(const std::string&) override { return brantel::kOk; }
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string text(data, data + size);
  const brantel::ScriptParse parse = brantel::ParseRegistryScript(text, "C:\\module.dll");
  if (!parse.script) {
    const auto lines = std::ranges::count(text, '\n') + 1;
    if (parse.error.line < 1 || parse.error.line > lines || parse.error.message.empty())
      std::abort();
    return 0;
  }
  NullShell shell;
  if (brantel::RegisterScript(*parse.script, shell) != brantel::kOk) std::abort();
  if (brantel::UnregisterScript(*parse.script, shell) != brantel::kOk) std::abort();
  return 0;
}
