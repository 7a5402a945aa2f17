#include "win_popup/destination_search.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "tests/unit/win_popup/fake_network.h"
#include "tests/unit/win_popup/fake_network_system.h"

namespace brantel {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class DestinationSearchTest : public ::testing::Test {
 protected:
  // The names that are found, those that may be listed twice in brackets. Nobody wants more when
  // there are as many as `wanted`.
  std::vector<std::string> Find(std::size_t wanted = 1000) {
    std::vector<std::string> names;
    FindDestinations(
        *library_, network_,
        {.wants_more = [&] { return names.size() < wanted && network_.calls.size() < patience_; },
         .take =
             [&](const std::string& name, Repetition repetition) {
               EXPECT_LT(names.size(), wanted);
               names.push_back(repetition == Repetition::kListed ? "[" + name + "]" : name);
             }});
    return names;
  }

  FakeNetworkSystem system_;
  std::unique_ptr<NetworkLibrary> library_ = system_.Load("netapi32.dll");
  FakeNetwork network_;
  // After so much that the network was asked for nobody wants more.
  std::size_t patience_ = 1000;
};

TEST_F(DestinationSearchTest, FindsNothingInANetworkThatIsEmpty) {
  EXPECT_THAT(Find(), IsEmpty());
  EXPECT_THAT(network_.calls, ElementsAre("open ", "close "));
}

TEST_F(DestinationSearchTest, FindsTheNamesOfThisComputerFirst) {
  system_.message_names = {u"WATCH", u"OPERATOR"};
  network_.levels[""] = {{Server("PC7")}};
  EXPECT_THAT(Find(), ElementsAre("[WATCH]", "[OPERATOR]", "PC7"));
}

TEST_F(DestinationSearchTest, KeepsTheLowByteOfEachCharacterOfTheNames) {
  system_.message_names = {u"K\u00F6LN", u"\u0141\u20AC\uFF21"};
  EXPECT_THAT(Find(), ElementsAre("[K\xF6LN]", "[A\xAC\x21]"));
}

TEST_F(DestinationSearchTest, FindsDomainsWithAnAsteriskAndServersWithoutBackslashes) {
  network_.levels[""] = {{Domain("WORKGROUP"), Server("PC7")}};
  EXPECT_THAT(Find(), ElementsAre("WORKGROUP*", "PC7"));
}

TEST_F(DestinationSearchTest, FindsServersThatHaveNoBackslashes) {
  network_.levels[""] = {
      {{.display_type = 2, .remote_name = "PC7"}, {.display_type = 2, .remote_name = "\\PC8"}}};
  EXPECT_THAT(Find(), ElementsAre("PC7", "\\PC8"));
}

TEST_F(DestinationSearchTest, LeavesOutWhatIsNeitherDomainNorServerOrHasNoName) {
  network_.levels[""] = {{{.display_type = 0, .remote_name = "generic"},
                          {.display_type = 3, .remote_name = R"(\\PC7\share)"},
                          {.display_type = 6, .remote_name = "network"},
                          {.display_type = 1},
                          {.display_type = 2, .remote_name = ""},
                          {.display_type = 2, .remote_name = "\\\\"}}};
  EXPECT_THAT(Find(), IsEmpty());
}

TEST_F(DestinationSearchTest, GoesIntoEveryContainerBeforeItGoesOn) {
  network_.levels[""] = {{{.display_type = 6, .usage = 2, .remote_name = "Network"}}};
  network_.levels["Network"] = {{Domain("SALES"), Domain("OPS")}};
  network_.levels["SALES"] = {{Server("PC1")}};
  network_.levels["OPS"] = {{Server("PC2")}, {Server("PC3")}};
  EXPECT_THAT(Find(), ElementsAre("SALES*", "PC1", "OPS*", "PC2", "PC3"));
  EXPECT_THAT(network_.calls,
              ElementsAre("open ", "open Network", "open SALES", "open \\\\PC1", "close \\\\PC1",
                          "close SALES", "open OPS", "open \\\\PC2", "close \\\\PC2",
                          "open \\\\PC3", "close \\\\PC3", "close OPS", "close Network", "close "));
}

TEST_F(DestinationSearchTest, OpensContainersByTheirWholeDescription) {
  const NetworkResource container = {.scope = 2,
                                     .type = 1,
                                     .display_type = 1,
                                     .usage = 0x13,
                                     .local_name = "",
                                     .remote_name = "OPS",
                                     .comment = "night",
                                     .provider = "Some Network"};
  network_.levels[""] = {{container}};
  Find();
  ASSERT_EQ(network_.opened.size(), 1U);
  const NetworkResource& opened = network_.opened.front();
  EXPECT_EQ(opened.scope, 2U);
  EXPECT_EQ(opened.type, 1U);
  EXPECT_EQ(opened.display_type, 1U);
  EXPECT_EQ(opened.usage, 0x13U);
  EXPECT_EQ(opened.local_name, "");
  EXPECT_EQ(opened.comment, "night");
  EXPECT_EQ(opened.provider, "Some Network");
}

TEST_F(DestinationSearchTest, GoesIntoNothingElse) {
  network_.levels[""] = {{{.display_type = 2, .usage = 0x11, .remote_name = "\\\\PC7"}}};
  network_.levels["\\\\PC7"] = {{Server("PC8")}};
  EXPECT_THAT(Find(), ElementsAre("PC7"));
}

TEST_F(DestinationSearchTest, GoesOnBesideAContainerThatCannotBeOpened) {
  network_.levels[""] = {{Domain("SALES"), Domain("OPS")}};
  network_.levels["OPS"] = {{Server("PC2")}};
  network_.closed_to_us = {"SALES"};
  EXPECT_THAT(Find(), ElementsAre("SALES*", "OPS*", "PC2"));
}

TEST_F(DestinationSearchTest, FindsTheNamesOfThisComputerAlsoWithoutANetwork) {
  system_.message_names = {u"WATCH"};
  network_.closed_to_us = {""};
  EXPECT_THAT(Find(), ElementsAre("[WATCH]"));
}

TEST_F(DestinationSearchTest, EndsInANetworkThatContainsItself) {
  network_.levels[""] = {{Domain("LOOP")}};
  network_.levels["LOOP"] = {{Domain("LOOP")}};
  EXPECT_THAT(Find(), ElementsAre("LOOP*", "LOOP*"));
  EXPECT_THAT(network_.calls, ElementsAre("open ", "open LOOP", "close LOOP", "close "));
}

TEST_F(DestinationSearchTest, GoesIntoNoContainerThatItIsInsideOf) {
  network_.levels[""] = {{Domain("A"), Domain("B")}};
  network_.levels["A"] = {{Domain("B"), Domain("A"), Server("PC1")}};
  network_.levels["B"] = {{Domain("A"), Domain("B"), Server("PC2")}};
  EXPECT_THAT(Find(), ElementsAre("A*", "B*", "A*", "B*", "PC2", "A*", "PC1",  //
                                  "B*", "A*", "B*", "A*", "PC1", "B*", "PC2"));
}

TEST_F(DestinationSearchTest, GoesAgainIntoAContainerThatItHasLeft) {
  network_.levels[""] = {{Domain("SALES"), Domain("OPS")}};
  network_.levels["SALES"] = {{Domain("LAB")}};
  network_.levels["OPS"] = {{Domain("LAB")}};
  network_.levels["LAB"] = {{Server("PC1")}};
  EXPECT_THAT(Find(), ElementsAre("SALES*", "LAB*", "PC1", "OPS*", "LAB*", "PC1"));
}

TEST_F(DestinationSearchTest, TellsContainersApartByNameProviderAndKind) {
  NetworkResource nameless = Domain("OPS");
  nameless.remote_name.reset();
  NetworkResource of_another_network = Domain("OPS");
  of_another_network.provider = "Some Network";
  NetworkResource server = Domain("OPS");
  server.display_type = 2;
  for (const NetworkResource& inner : {nameless, of_another_network, server}) {
    network_.calls.clear();
    network_.levels[""] = {{Domain("OPS")}};
    network_.levels["OPS"] = {{inner}};
    Find();
    const auto opened = std::ranges::count_if(
        network_.calls, [](const std::string& call) { return call.starts_with("open"); });
    EXPECT_GE(opened, 3);
  }
}

TEST_F(DestinationSearchTest, EndsInANetworkThatGoesOn) {
  for (int i = 0; i < 40; ++i) {
    network_.levels[i == 0 ? "" : std::to_string(i)] = {{Domain(std::to_string(i + 1))}};
  }
  EXPECT_EQ(Find().size(), 16U);
}

TEST_F(DestinationSearchTest, EndsAtOnceWhenNobodyWantsMore) {
  system_.message_names = {u"WATCH", u"OPERATOR"};
  network_.levels[""] = {{Domain("OPS"), Domain("SALES")}, {Domain("LAB")}};
  network_.levels["OPS"] = {{Server("PC2"), Server("PC3")}};

  EXPECT_THAT(Find(1), ElementsAre("[WATCH]"));
  EXPECT_THAT(network_.calls, IsEmpty());
  EXPECT_THAT(Find(4), ElementsAre("[WATCH]", "[OPERATOR]", "OPS*", "PC2"));
  EXPECT_THAT(network_.calls, ElementsAre("open ", "open OPS", "close OPS", "close "));
}

TEST_F(DestinationSearchTest, AsksForNothingThatNobodyWants) {
  system_.message_names = {u"WATCH"};
  network_.levels[""] = {{Domain("OPS")}};
  EXPECT_THAT(Find(0), IsEmpty());
  EXPECT_THAT(network_.calls, IsEmpty());
}

// Networks and their containers that have no names to offer.
NetworkResource Container(const std::string& name) {
  return {.display_type = 6, .usage = 2, .remote_name = name};
}

TEST_F(DestinationSearchTest, EndsAlsoWhereThereAreNoNamesWhenNobodyWantsMore) {
  const std::vector<NetworkResource> all = {Container("A"), Container("B"), Container("C"),
                                            Container("D"), Container("E"), Container("F")};
  network_.levels[""] = {all};
  for (const NetworkResource& container : all) {
    network_.levels[*container.remote_name] = {all};
  }
  patience_ = 3;
  EXPECT_THAT(Find(), IsEmpty());
  EXPECT_THAT(network_.calls,
              ElementsAre("open ", "open A", "open B", "close B", "close A", "close "));
}

TEST_F(DestinationSearchTest, EndsAlsoInALevelThatNeverEndsWhenNobodyWantsMore) {
  network_.is_endless = true;
  network_.levels[""] = {{{.display_type = 3, .remote_name = R"(\\PC7\share)"}}};
  patience_ = 100;
  EXPECT_THAT(Find(), IsEmpty());
  EXPECT_EQ(network_.calls.size(), 101U);
  EXPECT_EQ(network_.calls.back(), "close ");
}

}  // namespace
}  // namespace brantel
