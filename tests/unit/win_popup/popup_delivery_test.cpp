#include "win_popup/popup_delivery.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

#include "tests/unit/system/fake_machine_name.h"
#include "tests/unit/text/few_code_pages.h"
#include "tests/unit/win_popup/fake_network_system.h"

namespace brantel {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

using SentMessage = FakeNetworkSystem::SentMessage;

// "(local)".

class ResolveDestinationTest : public ::testing::Test {
 protected:
  FakeMachineName machine_;
};

TEST_F(ResolveDestinationTest, TakesThisComputersRegisteredName) {
  machine_.host_name = "pc7";
  machine_.domain = "example.org";
  machine_.sockets_host_name = "other";
  EXPECT_EQ(ResolveDestination(machine_, "(local)"), "pc7");
  EXPECT_EQ(ResolveDestination(machine_, ""), "pc7");
  EXPECT_THAT(machine_.calls, ElementsAre("Hostname 256", "Hostname 256"));
}

TEST_F(ResolveDestinationTest, TakesTheRegisteredNameAsItStands) {
  machine_.host_name = "pc7.example.org";
  EXPECT_EQ(ResolveDestination(machine_, "(local)"), "pc7.example.org");
}

TEST_F(ResolveDestinationTest, TakesTheNameOfTheSocketsLibraryWhereNoneIsRegistered) {
  machine_.sockets_host_name = "pc7";
  for (const auto& registered : {std::optional<std::string>(), std::optional<std::string>("")}) {
    machine_.host_name = registered;
    machine_.calls.clear();
    EXPECT_EQ(ResolveDestination(machine_, "(local)"), "pc7");
    EXPECT_EQ(ResolveDestination(machine_, ""), "pc7");
    EXPECT_THAT(machine_.calls, ElementsAre("Hostname 256", "sockets", "Hostname 256", "sockets"));
  }
}

TEST_F(ResolveDestinationTest, CutsTheNameOfTheSocketsLibraryAtItsFirstDot) {
  machine_.host_name.reset();
  machine_.sockets_host_name = "pc7.example.org";
  EXPECT_EQ(ResolveDestination(machine_, "(local)"), "pc7");
}

TEST_F(ResolveDestinationTest, LeavesTheDestinationWhenThisComputerHasNoName) {
  machine_.host_name.reset();
  for (const auto& name : {std::optional<std::string>(), std::optional<std::string>(""),
                           std::optional<std::string>(".example.org")}) {
    machine_.sockets_host_name = name;
    EXPECT_EQ(ResolveDestination(machine_, "(local)"), "(local)");
    EXPECT_EQ(ResolveDestination(machine_, ""), "");
  }
}

TEST_F(ResolveDestinationTest, LeavesEveryOtherDestination) {
  for (const char* destination : {"(LOCAL)", "(Local)", "(local) ", " (local)", "local", "(local",
                                  "pc9", "PC9", "WORKGROUP*", "*"}) {
    EXPECT_EQ(ResolveDestination(machine_, destination), destination);
  }
  EXPECT_THAT(machine_.calls, IsEmpty());
}

// The buffer. Its length in bytes is twice that of the u16string.

TEST(MessageBuffer, HasTwoBytesForEachByteOfSingleByteText) {
  EXPECT_EQ(MessageBuffer(kCodePage1252, "router7 is down"), u"router7 is down");
  EXPECT_EQ(MessageBuffer(kCodePage1252, "\x80 5, K\xF6ln"), u"\u20AC 5, K\u00F6ln");
  EXPECT_EQ(MessageBuffer(kCodePage1252, ""), u"");
}

TEST(MessageBuffer, IsFilledUpWithZerosBehindDoubleByteText) {
  using namespace std::string_literals;
  EXPECT_EQ(MessageBuffer(kCodePage932, "tel \x93\x64\x98\x62!"), u"tel \u96FB\u8A71!\0\0"s);
}

std::u16string Zeros(std::size_t count) {
  std::u16string zeros(count, u'\0');
  return zeros;
}

TEST(MessageBuffer, HoldsAtMost1024Characters) {
  for (const std::size_t length : {1023U, 1024U}) {
    EXPECT_EQ(MessageBuffer(kCodePage1252, std::string(length, 'x')), std::u16string(length, u'x'));
  }
  EXPECT_EQ(MessageBuffer(kCodePage1252, std::string(1025, 'x')),
            std::u16string(1024, u'x') + Zeros(1));
  EXPECT_EQ(MessageBuffer(kCodePage1252, std::string(1023, 'x') + "yz" + std::string(3975, 'z')),
            std::u16string(1023, u'x') + u'y' + Zeros(3976));
}

TEST(MessageBuffer, CountsCharactersAndNotBytesOfDoubleByteText) {
  std::string message;
  for (int i = 0; i < 1024; ++i)
    message += "\x93\x64";
  EXPECT_EQ(MessageBuffer(kCodePage932, message), std::u16string(1024, u'\u96FB') + Zeros(1024));
  EXPECT_EQ(MessageBuffer(kCodePage932, message + "\x98\x62"),
            std::u16string(1024, u'\u96FB') + Zeros(1026));
}

// Delivery.

class DeliverPopupTest : public ::testing::Test {
 protected:
  bool Deliver(std::string_view destination, std::string_view message) {
    return DeliverPopup({machine_, kCodePage1252}, network_, destination, message);
  }

  FakeMachineName machine_;
  FakeNetworkSystem system_;
  NetworkApi network_{system_};
};

TEST_F(DeliverPopupTest, HandsNameAndMessageToTheMessengerService) {
  EXPECT_TRUE(Deliver("K\xF6ln", "\x80 is down"));
  EXPECT_THAT(system_.sent, ElementsAre(SentMessage{u"K\u00F6ln", u"\u20AC is down"}));
}

TEST_F(DeliverPopupTest, SendsToTheResolvedName) {
  EXPECT_TRUE(Deliver("(local)", "x"));
  EXPECT_TRUE(Deliver("", "x"));
  EXPECT_TRUE(Deliver("(LOCAL)", "x"));
  EXPECT_THAT(system_.sent, ElementsAre(SentMessage{u"watch", u"x"}, SentMessage{u"watch", u"x"},
                                        SentMessage{u"(LOCAL)", u"x"}));
}

TEST_F(DeliverPopupTest, SendsAlsoNothing) {
  EXPECT_TRUE(Deliver("pc9", ""));
  EXPECT_THAT(system_.sent, ElementsAre(SentMessage{u"pc9", u""}));
}

TEST_F(DeliverPopupTest, HandsOverAtMost1024CharactersOfTheName) {
  EXPECT_TRUE(Deliver(std::string(1025, 'n'), "x"));
  EXPECT_EQ(system_.sent.at(0).name, std::u16string(1024, u'n'));
}

TEST_F(DeliverPopupTest, FailsWhenTheMessengerServiceRefuses) {
  system_.sends = false;
  EXPECT_FALSE(Deliver("pc9", "x"));
}

TEST_F(DeliverPopupTest, SucceedsWithoutSendingOnTheWindows95Family) {
  system_.family = WindowsFamily::kWindows95;
  EXPECT_TRUE(Deliver("pc9", "x"));
  EXPECT_THAT(system_.calls, ElementsAre("load svrapi.dll"));
  EXPECT_THAT(system_.sent, IsEmpty());
}

TEST_F(DeliverPopupTest, SucceedsWithoutSendingWhereNothingSends) {
  system_.family = WindowsFamily::kOther;
  EXPECT_TRUE(Deliver("pc9", "x"));

  system_.family = WindowsFamily::kWindowsNt;
  system_.has_library = false;
  EXPECT_TRUE(Deliver("pc9", "x"));

  system_.has_library = true;
  system_.missing = {NetworkEntry::kApiBufferFree};
  EXPECT_TRUE(Deliver("pc9", "x"));
  system_.missing = {NetworkEntry::kMessageBufferSend};
  EXPECT_TRUE(Deliver("pc9", "x"));
  EXPECT_THAT(system_.sent, IsEmpty());
}

TEST_F(DeliverPopupTest, SendsWithoutTheEntriesThatOthersNeed) {
  system_.missing = {NetworkEntry::kServerEnum, NetworkEntry::kMessageNameEnum};
  EXPECT_TRUE(Deliver("pc9", "x"));
  EXPECT_EQ(system_.sent.size(), 1U);
}

}  // namespace
}  // namespace brantel
