// Building an edit page of 5 KB with eight escaped values, beside the copies alone and ctemplate.
#include <benchmark/benchmark.h>

#include "bench/edit_page.h"

namespace brantel {
namespace {

void BuildPage(benchmark::State& state) {
  const EditPage page;
  for (auto _ : state) {
    benchmark::DoNotOptimize(page.Build());
  }
}
BENCHMARK(BuildPage);

void BareFloor(benchmark::State& state) {
  const EditPage page;
  for (auto _ : state) {
    benchmark::DoNotOptimize(page.CopyBare());
  }
}
BENCHMARK(BareFloor);

void ExpandByCtemplate(benchmark::State& state) {
  const EditPage page;
  for (auto _ : state) {
    benchmark::DoNotOptimize(page.ExpandTemplate());
  }
}
BENCHMARK(ExpandByCtemplate);

}  // namespace
}  // namespace brantel
