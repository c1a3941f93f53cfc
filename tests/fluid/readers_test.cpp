// The two routes of the readers, on temporary fluid directories.
#include "fluid/readers.hpp"

#include <gtest/gtest.h>

#include <chrono>
#include <cmath>
#include <filesystem>
#include <limits>
#include <string>
#include <thread>

#include "fluid/sample_records.hpp"
#include "platform/sample_database.hpp"
#include "platform/temporary_directory.hpp"

namespace tessarel::fluid {
namespace {

using test::record;

using test::head;

/// Names as a host hands them over, in fields of 12 characters.
struct Names {
  std::string text;
  int n = 0;
  Names(std::initializer_list<std::string> names) : n(static_cast<int>(names.size())) {
    for (std::string name : names) name.resize(12, ' '), text += name;
  }
  [[nodiscard]] NameList list() const { return {text.data(), 12}; }
};

std::string read(const std::string& directory, const Names& names) {
  record.n = names.n;
  return std::string(readfluids_from(directory, names.list(), record, test::sources).text());
}

TEST(Readers, TheDatabaseComesFirstAndTheFileServesTheRest) {
  const test::TemporaryDirectory directory;
  test::add_record(directory.path(), "a.saf", head("from database") + "eof");
  test::add_record(directory.path(), "bad.saf", head("from database") + "nonsense");
  for (const char* name : {"a.saf", "b.saf", "bad.saf"}) directory.write(name, head("from file") + "eof");
  EXPECT_EQ(read(directory.path(), {"a", "b", "bad"}), "No errors");
  const char* origins[] = {"from database", "from file", "from file"};
  for (std::size_t i = 0; i < 3; ++i) EXPECT_EQ(record.compname[i].trimmed(), origins[i]);
  // Trailing blanks of the directory do not count.
  EXPECT_EQ(read(directory.path() + "    ", {"b"}), "No errors");
}

TEST(Readers, AChangedRecordIsReadAgain) {
  const test::TemporaryDirectory directory;
  const std::string file = directory.path() + "b.saf";
  test::add_record(directory.path(), "a.saf", head("of database") + "eof");
  directory.write("b.saf", head("of file") + "eof");
  // Records are remembered once the files have not changed for a while.
  std::this_thread::sleep_for(std::chrono::milliseconds(80));
  for (int time = 0; time < 2; ++time) {
    EXPECT_EQ(read(directory.path(), {"a", "b"}), "No errors");
    EXPECT_EQ(record.compname[0].trimmed(), "of database");
    EXPECT_EQ(record.compname[1].trimmed(), "of file");
    EXPECT_NE(test::sources.records.find("a.saf", ""), nullptr);
    EXPECT_NE(test::sources.records.find("b.saf", file.c_str()), nullptr);
    record.compname[0].assign("");
  }
  directory.write("b.saf", head("of a 2nd") + "eof");
  EXPECT_EQ(read(directory.path(), {"a", "b"}), "No errors");
  EXPECT_EQ(record.compname[1].trimmed(), "of a 2nd");
  test::run_sql(directory.path() + "fluids.db", "UPDATE record SET text = 'of changed 1' WHERE row = 1;");
  EXPECT_EQ(read(directory.path(), {"b", "a"}), "No errors");
  EXPECT_EQ(record.compname[1].trimmed(), "of changed 1");
}

TEST(Readers, StopAtTheFirstFailureAndKeepWhatWasRead) {
  const test::TemporaryDirectory directory;
  directory.write("a.saf", head("first") + "eof");
  directory.write("bad.saf", head("inside") + "dipolar");
  record.compname[2].assign("untouched");
  EXPECT_EQ(read(directory.path(), {"a", "none", "a"}),
            "Error opening fluid data file of " + directory.path() + "none.saf");
  EXPECT_EQ(record.compname[0].trimmed(), "first");
  EXPECT_EQ(record.compname[2].trimmed(), "untouched");
  EXPECT_EQ(read(directory.path(), {"bad"}), "Unexpected data in fluid data file \"inside.saf\"...");
}

TEST(Readers, OnlyRegularFilesOfTheFluidDirectoryOpen) {
  const test::TemporaryDirectory directory;
  directory.write("a.saf", head() + "eof");
  const std::string fluids = directory.path() + "fluids/";
  for (const char* name : {"dir.saf", "sub"}) std::filesystem::create_directories(fluids + name);
  for (const char* name : {"sub/a.saf", ".saf"}) std::filesystem::copy(directory.path() + "a.saf", fluids + name);
  ASSERT_EQ(std::system(("mkfifo " + fluids + "pipe.saf").c_str()), 0);
  std::filesystem::create_symlink("/dev/zero", fluids + "device.saf");
  using namespace std::string_literals;
  for (const std::string& name : {"../a"s, "sub/a"s, "sub\\a"s, "dir"s, "pipe"s, "device"s, ""s, "a\0"s})
    EXPECT_EQ(read(fluids, {name}).substr(0, 34), "Error opening fluid data file of /") << name;
  // No names at all, and a path that is too long for the library.
  record.n = 1;
  EXPECT_FALSE(ok(readfluids_from(fluids, NameList{nullptr, 5}, record, test::sources)));
  EXPECT_FALSE(ok(readfluids_from(std::string(400, 'x'), Names{"a"}.list(), record, test::sources)));
}

TEST(Readers, RefuseAPlaceOutsideTheRecord) {
  const test::TemporaryDirectory directory;
  const std::string file = directory.write("a.saf", head() + "eof");
  for (const int place : {-1, 20, 1000000, std::numeric_limits<int>::min()}) {
    EXPECT_EQ(readfluidsfile(file, place, record, test::sources.text), "Place of a component must be 1 to 20...");
    EXPECT_EQ(readfluidsdb(directory.path(), "a.saf", place, record, test::sources),
              "Place of a component must be 1 to 20...");
  }
  EXPECT_EQ(readfluidsfile(file, 19, record, test::sources.text), "No errors");
  EXPECT_EQ(readfluidsdb(directory.path(), "a.saf  ", 0, record, test::sources),
            "Error opening fluid data file of a.saf");
}

}  // namespace
}  // namespace tessarel::fluid
