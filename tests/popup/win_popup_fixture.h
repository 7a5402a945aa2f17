#pragma once

#include <string>
#include <vector>

#include "tests/module/dialog_fixture.h"
#include "tests/popup/stand_ins.h"

namespace brantel {

inline constexpr int kMessageEdit = 201;
inline constexpr int kNameEdit = 203;
inline constexpr int kDestinationBox = 215;

// An operator before the dialog, in a network that the test makes.
class WinPopupFixture : public DialogFixture {
 protected:
  WinPopupFixture() : DialogFixture(ExpectedWinPopupDialog()) {
    stand_ins_.SetMessageNames(L"WATCH");
    stand_ins_.SetNetwork(L"");
  }

  void TearDown() override {
    session_.reset();
    stand_ins_.OpenGate();
    AwaitEndOfSearch();
  }

  // The items of the list, in their order.
  [[nodiscard]] std::vector<std::string> Destinations() const {
    HWND box = session_->Control(kDestinationBox);
    std::vector<std::string> items;
    const LRESULT count = SendMessageA(box, CB_GETCOUNT, 0, 0);
    for (LRESULT i = 0; i < count; ++i) {
      const auto item = static_cast<WPARAM>(i);
      std::string text(static_cast<std::size_t>(SendMessageA(box, CB_GETLBTEXTLEN, item, 0)) + 1,
                       '\0');
      SendMessageA(box, CB_GETLBTEXT, item, reinterpret_cast<LPARAM>(text.data()));
      text.pop_back();
      items.push_back(text);
    }
    return items;
  }

  void AwaitDestinations(std::size_t count) const {
    AwaitThat([&] { return Destinations().size() >= count; }, "the destinations do not appear");
  }

  // Waits until the list has the item, the last of the network.
  void AwaitDestination(const std::string& item) const {
    AwaitThat(
        [&] {
          const auto items = Destinations();
          return !items.empty() && items.back() == item;
        },
        "the destination does not appear");
  }

  // Waits until nobody holds the library any more, neither a dialog nor a search.
  void AwaitEndOfSearch() const {
    AwaitThat(
        [&] {
          const auto report = stand_ins_.Report();
          return !report.empty() && report.back().starts_with("unloaded");
        },
        "the search does not end");
  }

  StandIns stand_ins_;
};

}  // namespace brantel
