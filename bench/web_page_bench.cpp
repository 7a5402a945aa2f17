// Building an edit page of 5 KB with eight escaped values, beside the copies alone and ctemplate,
// and a page of an instance in its file.
#include <array>
#include <memory>
#include <string>

#include "bench/edit_page.h"
#include "bench/groups.h"
#include "bench/posix_file.h"
#include "bench/sample_beeper.h"
#include "bench/temporary_file.h"
#include "web/web_page.h"

namespace brantel {
namespace {

constexpr std::string_view kName = "Night shift";

void BuildPage(benchmark::State& state) {
  const EditPage page;
  for (auto _ : state) {
    benchmark::DoNotOptimize(page.Build());
  }
}

void CopyBare(benchmark::State& state) {
  const EditPage page;
  for (auto _ : state) {
    benchmark::DoNotOptimize(page.CopyBare());
  }
}

void ExpandByCtemplate(benchmark::State& state) {
  const EditPage page;
  for (auto _ : state) {
    benchmark::DoNotOptimize(page.ExpandTemplate());
  }
}

// From its file, as a host asks for it.
void BuildStoredPage(benchmark::State& state) {
  const TemporaryFile file(sample_beeper::File());
  for (auto _ : state) {
    const auto content = std::make_unique<PosixFile>(file.path());
    const auto instance = DecodeInstance(kBeeper.instances, *content);
    benchmark::DoNotOptimize(BuildEditPage(kBeeper, kName, *instance));
  }
}

// Reads the file, and copies the page.
void CopyStoredPage(benchmark::State& state) {
  const TemporaryFile file(sample_beeper::File());
  const HtmlText page =
      BuildEditPage(kBeeper, kName, *DecodeInstance(kBeeper.instances, sample_beeper::File()));
  for (auto _ : state) {
    std::array<char, ByteCursor::kReadSize> buffer;  // NOLINT(*-member-init): filled by Read
    benchmark::DoNotOptimize(PosixFile(file.path()).Read(buffer));
    benchmark::DoNotOptimize(std::string(page.view()));
  }
}

}  // namespace

std::vector<Group> Groups() {
  return {
      {.title = "Building an edit page of 5 KB",
       .rows = {{"ours", BuildPage}, {"bare floor", CopyBare}, {"ctemplate", ExpandByCtemplate}}},
      {.title = "An edit page of a stored instance",
       .rows = {{"ours", BuildStoredPage}, {"bare floor", CopyStoredPage}},
       .timing = Timing::kProcess}};
}

}  // namespace brantel
