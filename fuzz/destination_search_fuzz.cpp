// A network that answers the search for destinations as it likes: the search ends, closes every
// level that it has opened, goes no deeper than it may, asks nothing more when nobody wants more,
// and finds only what messages can be sent to.
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "fuzz/fuzz_input.h"
#include "win_popup/destination_search.h"

namespace brantel {
namespace {

constexpr int kDeepestLevel = 16;

// Who wants the first so many names.
class Seeker {
 public:
  explicit Seeker(int wanted) : left_(wanted) {}

  [[nodiscard]] DestinationSeeker seeker() {
    return {.wants_more = [this] { return left_ > 0; },
            .take =
                [this](const std::string& name, Repetition repetition) {
                  Require(left_-- > 0);
                  if (repetition == Repetition::kListed) return;
                  Require(!name.empty());
                }};
  }

  [[nodiscard]] bool wants_more() const { return left_ > 0; }

 private:
  int left_;
};

class Network final : public NetworkLibrary, public NetworkNeighbourhood {
 public:
  Network(FuzzInput& input, const Seeker& seeker) : input_(input), seeker_(seeker) {}

  [[nodiscard]] bool Has(NetworkEntry) const override { return true; }
  bool SendMessageBuffer(const std::u16string&, std::u16string_view) override { return true; }
  std::vector<std::u16string> MessageNames() override {
    std::vector<std::u16string> names(input_.Byte() % 4);
    for (std::u16string& name : names) {
      for (const char c : input_.Field())
        name += static_cast<char16_t>(0x3000 + c);
    }
    return names;
  }

  std::unique_ptr<NetworkLevel> Open(const NetworkResource* container) override {
    Require(seeker_.wants_more() && depth_ < kDeepestLevel);
    Require((container == nullptr) == (depth_ == 0));
    if (input_.NextIs(0xFF)) return nullptr;
    return std::make_unique<Level>(*this);
  }

  [[nodiscard]] int depth() const { return depth_; }

 private:
  class Level final : public NetworkLevel {
   public:
    explicit Level(Network& network) : network_(network) { ++network_.depth_; }
    Level(const Level&) = delete;
    Level& operator=(const Level&) = delete;
    ~Level() override { --network_.depth_; }

    std::vector<NetworkResource> Next() override {
      Require(network_.seeker_.wants_more());
      std::vector<NetworkResource> resources(network_.input_.Byte() % 4);
      for (NetworkResource& resource : resources)
        resource = network_.MakeResource();
      return resources;
    }

   private:
    Network& network_;
  };

  NetworkResource MakeResource() {
    const std::uint8_t kind = input_.Byte();
    NetworkResource resource{.display_type = kind % 4U, .usage = kind / 4U % 4U};
    if (kind < 0x80) resource.remote_name = input_.Field();
    if (kind % 0x20 < 0x10) resource.provider = input_.Field();
    return resource;
  }

  FuzzInput& input_;
  const Seeker& seeker_;
  int depth_ = 0;
};

}  // namespace
}  // namespace brantel

// A byte for how many names are wanted, and what the network answers.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace brantel;
  const std::string bytes(data, data + size);
  FuzzInput input(bytes);
  Seeker seeker(input.Byte());
  Network network(input, seeker);
  FindDestinations(network, network, seeker.seeker());
  Require(network.depth() == 0);
  return 0;
}
