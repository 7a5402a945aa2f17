#include "host/text/nearest_name.h"

#include <gtest/gtest.h>

#include <array>
#include <string>
#include <string_view>

namespace brantel::host {
namespace {

constexpr std::array<std::string_view, 5> kKnownNames = {"send", "set", "settings", "show",
                                                         "wave filename"};

TEST(NearestName, IsTheOneWithTheLeastDifference) {
  for (const auto& [given, nearest] : std::initializer_list<std::pair<const char*, const char*>>{
           {"sned", "send"},
           {"sen", "send"},
           {"SEND", "send"},
           {"seting", "settings"},
           {"sett", "set"},
           {"sho", "show"},
           {"wave-file-name", "wave filename"},
           {"frobnicate", ""},
           {"x", ""},
           {"", ""}}) {
    EXPECT_EQ(NearestName(given, kKnownNames), nearest) << given;
  }
}

TEST(NearestName, IsNotLookedForInLongTexts) {
  EXPECT_EQ(NearestName(std::string(100'000, 's'), kKnownNames), "");
}

TEST(UnknownName, SuggestsANameOrTellsWhichThereAre) {
  EXPECT_EQ(UnknownName("sned", "a command", "commands", kKnownNames),
            "'sned' is not a command; did you mean 'send'?");
  EXPECT_EQ(UnknownName("frobnicate", "a command", "commands", kKnownNames),
            "'frobnicate' is not a command; the commands are send, set, settings, show and wave "
            "filename");
}

}  // namespace
}  // namespace brantel::host
