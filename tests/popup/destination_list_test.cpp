// How the list of destinations fills.
#include <windows.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/popup/win_popup_fixture.h"

namespace brantel {
namespace {

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Not;
using ::testing::Pair;
using ::testing::StartsWith;

class DestinationList : public WinPopupFixture {};

TEST_F(DestinationList, HasThisComputersNamesThenDomainsAndServers) {
  stand_ins_.SetMessageNames(L"WATCH,OPERATOR");
  stand_ins_.SetNetwork(L"WORKGROUP PC7 PC8;LAB;SALES PC1");
  Add();
  AwaitDestination("PC1");
  EXPECT_THAT(Destinations(), ElementsAre("WATCH", "OPERATOR", "WORKGROUP*", "PC7", "PC8", "LAB*",
                                          "SALES*", "PC1"));
}

TEST_F(DestinationList, LeavesOutWhatTheNetworkRepeats) {
  stand_ins_.SetMessageNames(L"PC7,WATCH,WATCH");
  stand_ins_.SetNetwork(L"OPS PC7 PC8 PC8 PC80 PC;OPS;LAST");
  Add();
  AwaitDestination("LAST*");
  EXPECT_THAT(Destinations(),
              ElementsAre("PC7", "WATCH", "WATCH", "OPS*", "PC8", "PC80", "PC", "LAST*"));
}

TEST_F(DestinationList, KeepsTheLowBytesOfThisComputersNames) {
  stand_ins_.SetMessageNames(L"K\u00F6LN,\u0141\u20AC");
  Add();
  AwaitDestinations(2);
  EXPECT_THAT(Destinations(), ElementsAre("K\xF6LN", "A\xAC"));
}

TEST_F(DestinationList, FillsWhileTheOperatorWorks) {
  stand_ins_.SetNetwork(L"OPS PC1 PC2");
  stand_ins_.CloseGate();
  Add();
  AwaitDestinations(1);
  EXPECT_THAT(Destinations(), ElementsAre("WATCH"));
  EXPECT_FALSE(session_->StandsStill());
  session_->SetText(kNameEdit, "night");
  session_->PressAltAnd('s');
  session_->Type("pc9");

  stand_ins_.LetThrough(1);  // the domains
  AwaitDestinations(2);
  EXPECT_THAT(Destinations(), ElementsAre("WATCH", "OPS*"));
  stand_ins_.LetThrough(1);  // the servers of the first
  AwaitDestinations(3);
  EXPECT_THAT(Destinations(), ElementsAre("WATCH", "OPS*", "PC1"));
  stand_ins_.OpenGate();
  AwaitDestinations(4);
  EXPECT_EQ(session_->Text(kDestinationBox), "pc9");
  EXPECT_EQ(session_->Focus(), kDestinationBox);

  session_->PressAltAnd('m');
  session_->Type("down");
  session_->Click(kOk);
  ExpectEnd(S_OK, L"night");
}

TEST_F(DestinationList, FillsUnderAMessageBoxToo) {
  stand_ins_.SetNetwork(L"OPS");
  stand_ins_.CloseGate();
  Add();
  session_->Click(kOk);
  ASSERT_NE(session_->popup(), nullptr);
  stand_ins_.OpenGate();
  AwaitDestinations(2);
  EXPECT_NE(session_->popup(), nullptr);
  session_->CloseMessageBox();
}

TEST_F(DestinationList, OffersItsItemsForTheInstance) {
  stand_ins_.SetNetwork(L"OPS PC7");
  Add();
  AwaitDestinations(3);
  session_->SetText(kNameEdit, "night");
  session_->SetText(kMessageEdit, "%n is down");
  session_->PressAltAnd('s');
  for (int i = 0; i < 3; ++i)
    session_->PressKey(VK_DOWN);
  EXPECT_EQ(session_->Text(kDestinationBox), "PC7");
  session_->Click(kOk);
  ExpectEnd(S_OK, L"night");
  EXPECT_EQ(scratch_.Files().at(L"night").substr(20, 3), "PC7");
}

TEST_F(DestinationList, AsksForTheNamesAsTheyAreAskedForAndFreesThem) {
  Add();
  session_->Click(kCancel);
  ExpectCancelled();
  AwaitEndOfSearch();
  EXPECT_THAT(stand_ins_.Report(),
              ElementsAre(StartsWith(R"(loaded C:\windows\system32\netapi32.dll)"),
                          "names asked for: server (null), level 0, at most 4294967295 bytes, "
                          "answer 0",
                          "buffer freed", StartsWith("unloaded")));
}

TEST_F(DestinationList, HasTheNetworkAlsoWhenThisComputersNamesAreUnknown) {
  stand_ins_.SetAnswer(2138);  // the service is not started
  stand_ins_.SetNetwork(L"OPS PC7");
  Add();
  AwaitDestinations(2);
  EXPECT_THAT(Destinations(), ElementsAre("OPS*", "PC7"));
}

TEST_F(DestinationList, IsFilledForAnInstanceThatIsEditedToo) {
  ASSERT_TRUE(std::filesystem::exists(scratch_.Write(L"night", expected_.sample_file)));
  stand_ins_.SetNetwork(L"OPS PC7");
  Edit(L"night");
  AwaitDestinations(3);
  EXPECT_EQ(session_->Text(kDestinationBox), "pc9");
}

TEST_F(DestinationList, TakesHundredsOfNames) {
  std::wstring network = L"OPS";
  std::vector<std::string> expected = {"WATCH", "OPS*"};
  for (int i = 0; i < 800; ++i) {
    network += L" COMPUTER-" + std::to_wstring(i);
    expected.push_back("COMPUTER-" + std::to_string(i));
  }
  stand_ins_.SetNetwork(network.c_str());
  Add();
  AwaitDestinations(expected.size());
  EXPECT_EQ(Destinations(), expected);
}

// Each domain would be gone through millions of times.
TEST_F(DestinationList, TakesANetworkThatContainsItself) {
  stand_ins_.SetNetwork(L"OPS *OPS *OPS *OPS *OPS PC1;LAST");
  Add();
  AwaitDestination("LAST*");
  EXPECT_THAT(Destinations(), ElementsAre("WATCH", "OPS*", "PC1", "LAST*"));
}

// Run where the system says that it is of that family.
TEST_F(DestinationList, Windows95FamilyLeavesItEmpty) {
  stand_ins_.SetNetwork(L"OPS PC7");
  Add();
  EXPECT_THAT(stand_ins_.Report(),
              ElementsAre(StartsWith(R"(loaded C:\windows\system32\svrapi.dll)")));
  EnterSamples();
  EXPECT_THAT(Destinations(), IsEmpty());
  session_->Click(kOk);
  ExpectEnd(S_OK, L"night");
  EXPECT_THAT(scratch_.Files(), ElementsAre(Pair(L"night", expected_.sample_file)));
  EXPECT_THAT(stand_ins_.Report(), Not(Contains(StartsWith("names asked for"))));
}

}  // namespace
}  // namespace brantel
