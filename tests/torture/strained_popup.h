#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "tests/torture/faults.h"
#include "tests/unit/allocation_counter.h"
#include "tests/unit/win_popup/fake_network.h"
#include "win_popup/network_library.h"
#include "win_popup/network_neighbourhood.h"
#include "win_popup/worker_threads.h"

namespace brantel {

// A network library that may not load, and a messenger service that may refuse.
class StrainedNetworkSystem final : public NetworkSystem {
 public:
  explicit StrainedNetworkSystem(Faults& faults) : faults_(faults) {}

  WindowsFamily family = WindowsFamily::kWindowsNt;
  bool has_messenger = true;
  int messages = 0;
  int loaded = 0;

  WindowsFamily Family() override { return family; }

  std::unique_ptr<NetworkLibrary> Load(std::string_view name) override {
    const std::u16string path(name.begin(), name.end());
    if (faults_.Strike("load")) return nullptr;
    return std::make_unique<Library>(*this);
  }

 private:
  class Library final : public NetworkLibrary {
   public:
    explicit Library(StrainedNetworkSystem& system) : system_(system) { ++system_.loaded; }
    Library(const Library&) = delete;
    Library& operator=(const Library&) = delete;
    ~Library() override { --system_.loaded; }

    [[nodiscard]] bool Has(NetworkEntry) const override { return true; }

    bool SendMessageBuffer(const std::u16string& name, std::u16string_view) override {
      const std::string sent(name.begin(), name.end());  // in the network's own bytes
      if (system_.faults_.Strike() || !system_.has_messenger) return false;
      ++system_.messages;
      return true;
    }

    std::vector<std::u16string> MessageNames() override {
      if (system_.faults_.Strike()) return {};
      return {u"ANN-AT-THE-FRONT-DESK", u"WATCH"};
    }

   private:
    StrainedNetworkSystem& system_;
  };

  Faults& faults_;
};

// A network to look about in.
class StrainedNeighbourhood final : public NetworkNeighbourhood {
 public:
  explicit StrainedNeighbourhood(Faults& faults) : faults_(faults) {
    network.levels = {{"", {{Domain("A-DOMAIN-WITH-A-LONG-NAME")}}},
                      {"A-DOMAIN-WITH-A-LONG-NAME", {{Server("A-SERVER-WITH-A-LONG-NAME")}}}};
  }

  FakeNetwork network;
  int open_levels = 0;

  std::unique_ptr<NetworkLevel> Open(const NetworkResource* container) override {
    if (faults_.Strike()) return nullptr;
    return std::make_unique<Level>(*this, container);
  }

 private:
  class Level final : public NetworkLevel {
   public:
    Level(StrainedNeighbourhood& neighbourhood, const NetworkResource* container)
        : neighbourhood_(neighbourhood) {
      const MemoryOfOthers others;
      ++neighbourhood_.open_levels;
      level_ = neighbourhood_.network.Open(container);
    }
    Level(const Level&) = delete;
    Level& operator=(const Level&) = delete;
    ~Level() override {
      const MemoryOfOthers others;
      --neighbourhood_.open_levels;
      level_.reset();
    }

    std::vector<NetworkResource> Next() override {
      if (neighbourhood_.faults_.Strike()) return {};
      return level_->Next();
    }

   private:
    StrainedNeighbourhood& neighbourhood_;
    std::unique_ptr<NetworkLevel> level_;
  };

  Faults& faults_;
};

// Work that is done when the test lets it, and ended by what it throws.
class StrainedWorkers final : public WorkerThreads {
 public:
  void Start(std::function<void()> work) override { work_ = std::move(work); }

  void Work() {
    const auto work = std::exchange(work_, nullptr);
    try {
      if (work) work();
    } catch (const std::bad_alloc&) {
      return;
    }
  }

 private:
  std::function<void()> work_;
};

}  // namespace brantel
