#include "platform/fluid_database.hpp"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <string>

#include "platform/sample_database.hpp"
#include "platform/temporary_directory.hpp"

namespace tessarel::platform {
namespace {

FluidDatabase database;
FluidData rows;

int fetch(const std::string& directory, std::string_view name) {
  int status = -1;
  const int count = database.getfluid(directory, name, rows, status);
  EXPECT_EQ(status, count > 0 ? 1 : 0);
  return count;
}

TEST(FluidDatabase, DeliversTheRowsOfARecord) {
  const test::TemporaryDirectory directory;
  test::add_record(directory.path(), "a.saf", "name\n\n1.5 it''s");
  EXPECT_EQ(fetch(directory.path(), "a.saf   "), 3);
  const char* lines[] = {"name", "", "1.5 it''s"};
  for (std::size_t i = 0; i < 3; ++i) EXPECT_EQ(rows[i].trimmed(), lines[i]);
  for (const char* name : {"A.saf", "", "' OR '1'='1"}) EXPECT_EQ(fetch(directory.path(), name), 0) << name;
}

TEST(FluidDatabase, FollowsTheDirectory) {
  const test::TemporaryDirectory first, second, empty;
  test::add_record(first.path(), "a.saf", "of first");
  test::add_record(second.path(), "a.saf", "of second");
  EXPECT_EQ(fetch(first.path(), "a.saf"), 1);
  EXPECT_EQ(rows[0].trimmed(), "of first");
  std::string without_separator = second.path();
  without_separator.pop_back();
  EXPECT_EQ(fetch(without_separator, "a.saf"), 1);
  EXPECT_EQ(rows[0].trimmed(), "of second");
  EXPECT_EQ(fetch(empty.path(), "a.saf"), 0);
  // A database that appears later is found.
  test::add_record(empty.path(), "a.saf", "of third");
  EXPECT_EQ(fetch(empty.path(), "a.saf"), 1);
}

TEST(FluidDatabase, KeepsToItsRowsAndLengths) {
  const test::TemporaryDirectory directory;
  const std::string file = directory.path() + "fluids.db";
  std::string sql = test::create_table;
  for (const int row : {-1, 0, 1, 4, 255, 256, 100000})
    sql += "INSERT INTO record VALUES ('a'," + std::to_string(row) + ",'" + std::string(1000, 'x') + "');";
  sql +=
      "INSERT INTO record VALUES ('odd',1,NULL),('odd',2,7.5),('odd',2,'twice'),('odd',3,zeroblob(9)),"
      "('odd','text','x'),('odd',2.5,'x');";
  test::run_sql(file, sql);
  rows[1].assign("left by an earlier record");
  EXPECT_EQ(fetch(directory.path(), "a"), 255);
  for (const std::size_t row : {0U, 254U}) EXPECT_EQ(rows[row].trimmed(), std::string(255, 'x'));
  EXPECT_EQ(rows[1].trimmed(), "");
  EXPECT_EQ(fetch(directory.path(), "odd"), 3);
  EXPECT_EQ(rows[0].trimmed(), "");
  EXPECT_EQ(rows[1].trimmed(), "7.5");
}

TEST(FluidDatabase, DamageIsNoRecord) {
  const test::TemporaryDirectory sound;
  test::add_record(sound.path(), "a.saf", "name");
  std::ifstream stream(sound.path() + "fluids.db", std::ios::binary);
  const std::string bytes{std::istreambuf_iterator<char>(stream), {}};
  std::string scrambled = bytes;
  for (std::size_t i = 100; i < scrambled.size(); i += 3) scrambled[i] = static_cast<char>(scrambled[i] ^ 0x5a);
  for (const std::string& content : {std::string(), std::string("no database"), std::string(5000, '\0'),
                                     bytes.substr(0, bytes.size() / 2), scrambled}) {
    const test::TemporaryDirectory directory;
    directory.write("fluids.db", content);
    for (int time = 0; time < 2; ++time) EXPECT_EQ(fetch(directory.path(), "a.saf"), 0);
  }
  const test::TemporaryDirectory nested;
  std::filesystem::create_directory(nested.path() + "fluids.db");
  EXPECT_EQ(fetch(nested.path(), "a.saf"), 0);
  EXPECT_EQ(fetch(std::string("/tmp\0/x", 7), "a.saf"), 0);
  EXPECT_EQ(fetch(sound.path(), "a.saf"), 1) << "the failures before it do no harm";
}

TEST(FluidDatabase, ADatabaseWithoutEndIsGivenUp) {
  const test::TemporaryDirectory directory;
  test::run_sql(directory.path() + "fluids.db",
                "CREATE VIEW record AS WITH RECURSIVE c(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM c)"
                " SELECT 'a' AS name, i + 1000 AS row, 'x' AS text FROM c;");
  EXPECT_EQ(fetch(directory.path(), "a"), 0);
}

}  // namespace
}  // namespace tessarel::platform
