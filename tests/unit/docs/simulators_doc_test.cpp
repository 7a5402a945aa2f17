// docs/simulators.md says of each telephone number what the telephone book says.
#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
#include <string>

#include "sim/telephone_book.h"

namespace brantel::sim {
namespace {

std::string Row(std::string_view number, std::string_view description) {
  return "| " + std::string(number) + " | " + std::string(description) + " |\n";
}

TEST(SimulatorsDocument, ListsTheTelephoneBook) {
  std::ifstream stream(PROJECT_DIR "/docs/simulators.md");
  const std::string document(std::istreambuf_iterator<char>(stream), {});
  std::string table = "| Number | What happens |\n|---|---|\n";
  for (const Subscriber& subscriber : TelephoneBook()) {
    table += Row(subscriber.number, subscriber.description);
  }
  table += Row("others", FindSubscriber("").description) + "\n";
  EXPECT_NE(document.find(table), std::string::npos) << table;
}

}  // namespace
}  // namespace brantel::sim
