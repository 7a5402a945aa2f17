// edit_page_rounds WAY ROUNDS: makes the edit page so many times, and says how long it is. What one
// page costs is the difference between two runs by the difference of their rounds, whatever the
// start of the program costs; counted by an instrument such as callgrind.
#include <cstdlib>
#include <functional>
#include <iostream>
#include <map>
#include <string>

#include "bench/edit_page.h"

int main(int argc, char** argv) {
  using brantel::EditPage;
  const std::map<std::string, std::function<std::size_t(const EditPage&)>> ways = {
      {"builder", [](const EditPage& page) { return page.Build().view().size(); }},
      {"floor", [](const EditPage& page) { return page.CopyBare().size(); }},
      {"ctemplate", [](const EditPage& page) { return page.ExpandTemplate().size(); }},
  };
  if (argc != 3 || !ways.contains(argv[1])) {
    std::cerr << "usage: edit_page_rounds builder|floor|ctemplate ROUNDS\n";
    return 2;
  }
  const EditPage page;
  const auto& make_page = ways.at(argv[1]);
  std::size_t size = 0;
  for (int rounds = std::atoi(argv[2]); rounds > 0; --rounds)
    size = make_page(page);
  std::cout << size << "\n";
}
