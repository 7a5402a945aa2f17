// The main function of all programs of benchmarks. Rows are named "group/row". Where the
// environment has BENCH_ROUNDS, each row does its task so many times, for instruments that count.
#include <cstdlib>
#include <string>

#include "bench/groups.h"

namespace brantel {
namespace {

void SetTiming(benchmark::internal::Benchmark& row, Timing timing) {
  if (timing == Timing::kProcess) row.MeasureProcessCPUTime();
  if (timing == Timing::kOwn) row.UseManualTime();
}

void Register(const Group& group) {
  const char* const rounds = std::getenv("BENCH_ROUNDS");  // NOLINT(*-mt-unsafe): the only thread
  for (const Row& row : group.rows) {
    auto* const registered =
        benchmark::RegisterBenchmark((group.title + "/" + row.name).c_str(), row.run);
    SetTiming(*registered, group.timing);
    if (rounds != nullptr) registered->Iterations(std::stoll(rounds));
  }
}

}  // namespace
}  // namespace brantel

int main(int argc, char** argv) {
  for (const brantel::Group& group : brantel::Groups())
    brantel::Register(group);
  benchmark::Initialize(&argc, argv);
  benchmark::RunSpecifiedBenchmarks();
}
