// What the documents refer to is there: the files and folders that they name, the documents and
// the sections that they lead to. And what they list is complete.
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <regex>
#include <string>
#include <vector>

#include "tests/unit/project_file.h"

namespace brantel {
namespace {

std::vector<std::string> Documents() {
  std::vector<std::string> documents = {"README.md"};
  const auto root = ProjectFile("");
  for (const auto& entry : std::filesystem::recursive_directory_iterator(root / "docs")) {
    if (entry.path().extension() == ".md")
      documents.push_back(entry.path().lexically_relative(root).generic_string());
  }
  return documents;
}

// What the pattern's first group is at each of its places in the text.
std::vector<std::string> AllOf(const std::string& text, const std::regex& pattern) {
  std::vector<std::string> found;
  for (std::sregex_iterator place(text.begin(), text.end(), pattern), end; place != end; ++place)
    found.push_back((*place)[1]);
  return found;
}

bool IsThere(const std::string& path) {
  return std::filesystem::exists(ProjectFile(path));
}

// The name by which a link leads to a heading: its letters and digits in lower case, with "-" for
// blanks.
std::string AnchorOf(const std::string& heading) {
  std::string anchor;
  for (const char c : heading) {
    if (c >= 'A' && c <= 'Z') anchor += static_cast<char>(c - 'A' + 'a');
    if ((c >= 'a' && c <= 'z') || (c >= '0' && c <= '9') || c == '-' || c == '_') anchor += c;
    if (c == ' ') anchor += '-';
  }
  return anchor;
}

bool HasSection(const std::string& document, const std::string& anchor) {
  static const std::regex kHeading("\n#+ ([^\n]+)");
  const auto headings = AllOf("\n" + ReadProjectFile(document), kHeading);
  return std::ranges::any_of(headings,
                             [&](const auto& heading) { return AnchorOf(heading) == anchor; });
}

TEST(Documents, NameFilesThatAreThere) {
  // Not in the names of examples, which docs/adding_a_class.md has, nor in patterns of names.
  static const std::regex kPath("`((?:src|host|sim|tests|tools|fuzz|bench|cmake|docs)/[\\w./-]+)`");
  std::size_t count = 0;
  for (const std::string& document : Documents()) {
    if (document == "docs/adding_a_class.md") continue;
    for (const std::string& path : AllOf(ReadProjectFile(document), kPath)) {
      ++count;
      EXPECT_TRUE(IsThere(path)) << document << " names " << path;
    }
  }
  EXPECT_GT(count, 0U);
}

TEST(Documents, LeadToDocumentsAndSectionsThatAreThere) {
  static const std::regex kLink(R"(\]\(([^):]+)\))");
  for (const std::string& document : Documents()) {
    const auto folder = std::filesystem::path(document).parent_path();
    for (const std::string& link : AllOf(ReadProjectFile(document), kLink)) {
      const std::string file = link.substr(0, link.find('#'));
      const std::string target =
          file.empty() ? document : (folder / file).lexically_normal().generic_string();
      ASSERT_TRUE(IsThere(target)) << document << " leads to " << link;
      if (link.find('#') == std::string::npos) continue;
      EXPECT_TRUE(HasSection(target, link.substr(link.find('#') + 1)))
          << document << " leads to " << link;
    }
  }
}

TEST(Documents, TellWhoWritesWhatEachFuzzTargetReads) {
  const std::string document = ReadProjectFile("docs/reliability.md");
  const auto begin = document.find("| Who writes them |");
  const std::string table = document.substr(begin, document.find("\n\n", begin) - begin);
  static const std::regex kTarget("(\\w+)_fuzz\\.cpp");
  std::size_t count = 0;
  for (const auto& entry : std::filesystem::directory_iterator(ProjectFile("fuzz"))) {
    const std::string file = entry.path().filename().string();
    std::smatch target;
    if (!std::regex_match(file, target, kTarget)) continue;
    ++count;
    EXPECT_NE(table.find("`" + target[1].str() + "`"), std::string::npos) << file;
  }
  EXPECT_GE(count, 34U);
}

}  // namespace
}  // namespace brantel
