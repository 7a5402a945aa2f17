#pragma once

#include <algorithm>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "win_popup/network_neighbourhood.h"

namespace brantel {

inline NetworkResource Domain(const std::string& name) {
  return {.display_type = 1, .usage = 2, .remote_name = name};
}
inline NetworkResource Server(const std::string& name) {
  return {.display_type = 2, .usage = 2, .remote_name = "\\\\" + name};
}

// A network in memory. A container is known by its remote name; "" is the network's root.
class FakeNetwork final : public NetworkNeighbourhood {
 public:
  using Answers = std::vector<std::vector<NetworkResource>>;

  // What the containers answer one time after the other.
  std::map<std::string, Answers> levels;
  std::set<std::string> closed_to_us;

  // Whether each level goes on for ever with the last of its answers, each of which counts as a
  // call "more NAME".
  bool is_endless = false;

  // "open NAME" and "close NAME", in order.
  std::vector<std::string> calls;
  // What the containers were opened by.
  std::vector<NetworkResource> opened;

  std::unique_ptr<NetworkLevel> Open(const NetworkResource* container) override {
    if (container != nullptr) opened.push_back(*container);
    const std::string name = container == nullptr ? "" : container->remote_name.value_or("");
    calls.push_back("open " + name);
    if (closed_to_us.contains(name)) return nullptr;
    return std::make_unique<Level>(*this, name);
  }

 private:
  class Level final : public NetworkLevel {
   public:
    Level(FakeNetwork& network, std::string name)
        : network_(network), name_(std::move(name)), answers_(network.levels[name_]) {
      std::ranges::reverse(answers_);
    }
    Level(const Level&) = delete;
    Level& operator=(const Level&) = delete;
    ~Level() override { network_.calls.push_back("close " + name_); }

    std::vector<NetworkResource> Next() override {
      if (answers_.empty()) return {};
      if (network_.is_endless) {
        network_.calls.push_back("more " + name_);
        if (answers_.size() == 1) return answers_.front();
      }
      auto answer = std::move(answers_.back());
      answers_.pop_back();
      return answer;
    }

   private:
    FakeNetwork& network_;
    std::string name_;
    Answers answers_;
  };
};

}  // namespace brantel
