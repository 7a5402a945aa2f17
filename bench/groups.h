#pragma once

#include <benchmark/benchmark.h>

#include <functional>
#include <string>
#include <vector>

namespace brantel {

// What a row's time is.
enum class Timing {
  kThread,   // of a processor, for the thread that does it
  kProcess,  // of a processor, for the whole process; beside it the time that passes
  kOwn,      // what the row itself tells of the processes that it starts
};

struct Row {
  std::string name;
  std::function<void(benchmark::State&)> run;
};

// Ways of doing the same. The first is this project's own.
struct Group {
  std::string title;
  std::vector<Row> rows;
  Timing timing = Timing::kThread;
};

// What a program of benchmarks measures.
std::vector<Group> Groups();

}  // namespace brantel
