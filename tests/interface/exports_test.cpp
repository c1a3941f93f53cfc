// The symbols of the shared library against its headers.
#include <gtest/gtest.h>

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <regex>
#include <set>
#include <sstream>

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

std::set<std::string> declared_names(const std::string& header) {
  std::ifstream file(fs::path(PROJECT_DIR) / "include/tessarel" / header);
  std::string source(std::istreambuf_iterator<char>(file), {});
  source = std::regex_replace(source, std::regex(R"(/\*([^*]|\*+[^*/])*\*+/)"), "");
  std::set<std::string> names;
  const std::regex declaration(R"(\b(tessarel_\w+)\s*\()");
  for (std::sregex_iterator it(source.begin(), source.end(), declaration), end; it != end; ++it) names.insert((*it)[1]);
  return names;
}

class Exports : public testing::Test {
 protected:
  void SetUp() override {
    if (symbols_.empty()) GTEST_SKIP() << "nm is not there or the library is not built";
  }
  std::map<std::string, std::string> symbols_ = exported_symbols();
};

TEST_F(Exports, HostEntriesStandUnderBothNames) {
  const auto names = declared_names("tessarel.h");
  ASSERT_TRUE(names.contains("tessarel_tmdprop"));
  for (const std::string& name : names) {
    ASSERT_TRUE(symbols_.contains(name)) << name;
    ASSERT_TRUE(symbols_.contains(name + "_")) << name;
    EXPECT_EQ(symbols_[name], symbols_[name + "_"]) << name;
  }
}

TEST_F(Exports, RoutinesAreAllThere) {
  for (const std::string& name : declared_names("routines.h")) EXPECT_TRUE(symbols_.contains(name)) << name;
}

TEST_F(Exports, NothingElse) {
  std::set<std::string> expected = declared_names("routines.h");
  for (const std::string& name : declared_names("tessarel.h")) {
    expected.insert(name);
    expected.insert(name + "_");
  }
  for (const auto& [name, address] : symbols_) EXPECT_TRUE(expected.contains(name)) << name << " is not declared";
}

}  // namespace
