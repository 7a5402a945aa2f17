// docs/simulators.md says of each telephone number what the telephone book says.
#include <gtest/gtest.h>

#include <string>

#include "sim/telephone_book.h"
#include "tests/unit/project_file.h"

namespace brantel::sim {
namespace {

std::string Row(std::string_view number, std::string_view description) {
  return "| " + std::string(number) + " | " + std::string(description) + " |\n";
}

TEST(SimulatorsDocument, ListsTheTelephoneBook) {
  const std::string document = ReadProjectFile("docs/simulators.md");
  std::string table = "| Number | What happens |\n|---|---|\n";
  for (const Subscriber& subscriber : TelephoneBook()) {
    table += Row(subscriber.number, subscriber.description);
  }
  table += Row("others", FindSubscriber("").description) + "\n";
  EXPECT_NE(document.find(table), std::string::npos) << table;
}

}  // namespace
}  // namespace brantel::sim
