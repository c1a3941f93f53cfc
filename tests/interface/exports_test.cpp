// The symbols of the shared library against its headers.
#include <gtest/gtest.h>

#include <cstdio>
#include <filesystem>
#include <map>
#include <set>
#include <sstream>

#include "interface/host.hpp"

namespace {

namespace fs = std::filesystem;

/// Exported symbols with their addresses, as the tool nm lists them.
std::map<std::string, std::string> exported_symbols() {
  const fs::path library = fs::read_symlink("/proc/self/exe").parent_path() / "libtessarel.so";
  std::map<std::string, std::string> symbols;
  const std::string command = "nm -D --defined-only '" + library.string() + "'";
  FILE* pipe = popen(command.c_str(), "r");
  if (pipe == nullptr) return symbols;
  std::string listing;
  for (int c = std::fgetc(pipe); c != EOF; c = std::fgetc(pipe)) listing.push_back(static_cast<char>(c));
  pclose(pipe);
  std::istringstream lines(listing);
  std::string address, kind, name;
  while (lines >> address >> kind >> name) symbols[name] = address;
  return symbols;
}

// Every routine, every host entry under both names, nothing else.
TEST(Exports, AreWhatTheHeadersDeclare) {
  auto symbols = exported_symbols();
  if (symbols.empty()) GTEST_SKIP() << "nm is not there or the library is not built";
  std::set<std::string> expected = host::declared_names("routines.h"), blocks = host::declared_names("blocks.h");
  const auto entries = host::declared_names("tessarel.h");
  ASSERT_TRUE(entries.contains("tessarel_tmdprop") && expected.contains("tessarel_calc_a") &&
              blocks.contains("tessarel_calc_gij"));
  expected.merge(blocks);
  for (const std::string& name : entries) {
    expected.insert({name, name + "_"});
    EXPECT_EQ(symbols[name], symbols[name + "_"]) << name;
  }
  std::set<std::string> found;
  for (const auto& [name, address] : symbols)
    if (!address.empty()) found.insert(name);
  EXPECT_EQ(found, expected);
}

}  // namespace
