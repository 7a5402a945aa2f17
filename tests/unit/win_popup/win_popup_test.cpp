#include "win_popup/win_popup.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "instance/instance_codec.h"
#include "tests/unit/instance/fake_instance_files.h"
#include "tests/unit/notifier/fake_notifier_host.h"
#include "tests/unit/system/fake_machine_name.h"
#include "tests/unit/system/fake_sockets_library.h"
#include "tests/unit/text/few_code_pages.h"
#include "tests/unit/win_popup/fake_network_system.h"
#include "win_popup/win_popup_description.h"

namespace brantel {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

using SentMessage = FakeNetworkSystem::SentMessage;

constexpr Result kHostFailure = static_cast<Result>(0x80070057);

class WinPopupTest : public ::testing::Test {
 protected:
  WinPopupTest() {
    sockets_.calls = &binding_calls_;
    Store("pc9", "%n is down");
  }

  void Store(const std::string& destination, const std::string& message) {
    Instance instance(2);
    instance.set_text(win_popup_field::kDestination, destination);
    instance.set_text(win_popup_field::kMessage, message);
    files_.files["alert"] = EncodeInstance(kWinPopup.instances, instance);
  }

  Result Send() { return notifier_.Send({u"alert", "alert"}, &host_); }

  std::shared_ptr<NotifierHost> Bind(const std::shared_ptr<NotifierHost>& offered) {
    return notifier_.Initialize([&] {
      binding_calls_.emplace_back("query");
      return offered;
    });
  }

  std::vector<std::string> binding_calls_;
  FakeInstanceFiles files_;
  FakeSocketsLibrary sockets_;
  FakeNetworkSystem network_;
  FakeMachineName machine_;
  FakeNotifierHost host_;
  WinPopup notifier_{files_, sockets_, network_, {machine_, kCodePage1252}};
};

TEST_F(WinPopupTest, DeliversTheMessageAsTheHostExpandsIt) {
  host_.expansions = {{kOk, "router7 is down"}};
  EXPECT_EQ(Send(), kOk);
  EXPECT_THAT(host_.expanded_templates, ElementsAre("%n is down"));
  EXPECT_THAT(network_.sent, ElementsAre(SentMessage{u"pc9", u"router7 is down"}));
}

TEST_F(WinPopupTest, AsksTheHostForNothingElseAndLogsNothing) {
  EXPECT_EQ(Send(), kOk);
  EXPECT_THAT(host_.calls, ElementsAre("expand"));
}

TEST_F(WinPopupTest, DoesNotExpandTheDestination) {
  Store("%n", "down");
  EXPECT_EQ(Send(), kOk);
  EXPECT_THAT(host_.expanded_templates, ElementsAre("down"));
  EXPECT_THAT(network_.sent, ElementsAre(SentMessage{u"%n", u"down"}));
}

// An alert to nobody would count as delivered.
TEST_F(WinPopupTest, DeliversNothingFromAFileThatEndsEarly) {
  const std::string whole = files_.files["alert"];
  for (std::size_t size = 0; size < whole.size(); ++size) {
    files_.files["alert"] = whole.substr(0, size);
    host_.log.clear();
    EXPECT_EQ(Send(), kFail) << size;
    EXPECT_THAT(host_.log,
                ElementsAre("alert", " - Failed to load notification from disk.", "\r\n"));
  }
  EXPECT_THAT(network_.sent, IsEmpty());
}

TEST_F(WinPopupTest, SendsAnInstanceThatIsEmptyToThisComputer) {
  Store("", "");
  EXPECT_EQ(Send(), kOk);
  EXPECT_THAT(network_.sent, ElementsAre(SentMessage{u"watch", u""}));
}

TEST_F(WinPopupTest, TakesFieldsOfAnyLength) {
  Store("pc9", std::string(5000, 'x'));
  EXPECT_EQ(Send(), kOk);
  EXPECT_EQ(network_.sent.at(0).buffer, std::u16string(1024, u'x') + std::u16string(3976, u'\0'));
}

TEST_F(WinPopupTest, EndsATextOfTheHostAtItsFirstNul) {
  using namespace std::string_literals;
  host_.expansions = {{kOk, "down\0x"s}};
  EXPECT_EQ(Send(), kOk);
  EXPECT_THAT(network_.sent, ElementsAre(SentMessage{u"pc9", u"down"}));
}

TEST_F(WinPopupTest, FailsWithoutAHostAndLooksAtNothing) {
  EXPECT_EQ(notifier_.Send({u"alert", "alert"}, nullptr), kFail);
  EXPECT_THAT(files_.calls, IsEmpty());
  EXPECT_THAT(network_.calls, IsEmpty());
}

TEST_F(WinPopupTest, LogsAnInstanceThatCannotBeLoaded) {
  files_.files.clear();
  EXPECT_EQ(Send(), kFail);
  EXPECT_THAT(host_.log, ElementsAre("alert", " - Failed to load notification from disk.", "\r\n"));
  EXPECT_THAT(host_.expanded_templates, IsEmpty());
  EXPECT_THAT(network_.calls, IsEmpty());
}

TEST_F(WinPopupTest, RefusesTheInstanceOfAnotherClass) {
  files_.files["alert"][0] = '!';
  EXPECT_EQ(Send(), kFail);
  EXPECT_EQ(host_.log.size(), 3U);
}

TEST_F(WinPopupTest, PassesTheHostsFailureThroughAndSendsNothing) {
  host_.expansions = {{kHostFailure, ""}};
  EXPECT_EQ(Send(), kHostFailure);
  EXPECT_THAT(network_.calls, IsEmpty());
  EXPECT_THAT(host_.log, IsEmpty());
}

TEST_F(WinPopupTest, FailsWithoutALogLineWhenTheMessengerServiceRefuses) {
  network_.sends = false;
  EXPECT_EQ(Send(), kFail);
  EXPECT_THAT(host_.log, IsEmpty());
}

TEST_F(WinPopupTest, SucceedsWhereThereIsNoMessengerService) {
  network_.family = WindowsFamily::kWindows95;
  EXPECT_EQ(Send(), kOk);
  EXPECT_THAT(network_.sent, IsEmpty());
  EXPECT_THAT(host_.log, IsEmpty());
}

TEST_F(WinPopupTest, AnswersSuccessWhateverTheHostsSuccessWas) {
  host_.expansions = {{1, "down"}};
  EXPECT_EQ(Send(), kOk);
}

TEST_F(WinPopupTest, KeepsTheLibraryUntilShutdown) {
  EXPECT_EQ(Send(), kOk);
  EXPECT_EQ(Send(), kOk);
  EXPECT_THAT(network_.calls, ElementsAre("load netapi32.dll"));
  notifier_.Shutdown();
  EXPECT_THAT(network_.calls, ElementsAre("load netapi32.dll", "free"));
  EXPECT_THAT(binding_calls_, ElementsAre("stop"));
}

TEST_F(WinPopupTest, LoadsTheLibraryAnewForTheNextHost) {
  EXPECT_EQ(Send(), kOk);
  notifier_.Shutdown();
  EXPECT_EQ(Send(), kOk);
  EXPECT_THAT(network_.calls, ElementsAre("load netapi32.dll", "free", "load netapi32.dll"));
}

TEST_F(WinPopupTest, StartsTheSocketsLibraryBeforeTheHostIsAskedAndLoadsNothingYet) {
  const auto offered = std::make_shared<FakeNotifierHost>();
  EXPECT_EQ(Bind(offered), offered);
  EXPECT_THAT(binding_calls_, ElementsAre("start", "query"));
  EXPECT_THAT(network_.calls, IsEmpty());
  notifier_.Shutdown();
  EXPECT_THAT(binding_calls_, ElementsAre("start", "query", "stop"));
}

TEST_F(WinPopupTest, DoesNotAskTheHostWithoutTheSocketsLibrary) {
  sockets_.starts = false;
  EXPECT_EQ(Bind(std::make_shared<FakeNotifierHost>()), nullptr);
  EXPECT_THAT(binding_calls_, ElementsAre("start"));
}

TEST_F(WinPopupTest, StopsTheSocketsLibraryWhenThereIsNoHost) {
  EXPECT_EQ(Bind(nullptr), nullptr);
  EXPECT_THAT(binding_calls_, ElementsAre("start", "query", "stop"));
}

}  // namespace
}  // namespace brantel
