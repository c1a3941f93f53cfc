#include "fluid/bips.hpp"

#include <gtest/gtest.h>

#include <cstdio>
#include <memory>
#include <string>

#include "fluid/sample_records.hpp"
#include "platform/sample_database.hpp"
#include "platform/temporary_directory.hpp"

namespace tessarel::fluid {
namespace {

using test::record;

std::string row(const char* first, const char* second, const char* value) {
  char text[80];
  std::snprintf(text, sizeof text, "%-32s%-32s%10s", first, second, value);
  return text;
}

void select(std::initializer_list<const char*> names) {
  record.n = 0;
  for (auto& line : record.k_ij) line.fill(9);
  for (const char* name : names) record.compname[static_cast<std::size_t>(record.n++)].assign(name);
}

constexpr Message no_file = "Error opening mixture parameter file BIPs.mix...";
constexpr Message bad_file = "Unexpected data in mixture parameter file BIPs.mix...";

TEST(Bips, PairsAreFoundByNameInEitherOrderAndTheFirstRowCounts) {
  const test::TemporaryDirectory directory;
  const std::string file = directory.write(
      "BIPs.mix", "\xEF\xBB\xBF" + row("alpha", "beta", "0.0150") + "\r\n" + row("gamma", "alpha", "1111.0") +
                      "  ! comment\r\n\r\n" + row("beta", "alpha", "0.9") + "\r\n" + row("Beta", "gamma", "0.7") +
                      "\r\n" + row("beta", "delta", "1500") + "\r\nshort row\r\n" + row("alpha", "delta", "-0.0200"));
  select({"alpha", "beta", "gamma", "delta"});
  ASSERT_EQ(readbips_from(file, record, test::sources.bips), "No errors");
  const double expected[4][4] = {{0, 0.015, 1111, -0.02}, {0.015, 0, 0, 0.015}, {1111, 0, 0, 0}, {-0.02, 0.015, 0, 0}};
  for (std::size_t k = 0; k < 16; ++k) EXPECT_EQ(record.k_ij[k / 4][k % 4], expected[k / 4][k % 4]) << k;
  EXPECT_EQ(record.k_ij[4][0], 9) << "entries beyond n are not touched";

  // The rows of an earlier, longer table stay behind a shorter one.
  ASSERT_EQ(readbips_from(directory.write("shorter", row("alpha", "beta", "0.5")), record, test::sources.bips),
            "No errors");
  EXPECT_EQ(record.k_ij[0][1], 0.5);
  EXPECT_EQ(record.k_ij[0][2], 1111);
}

TEST(Bips, FailuresLeaveZeros) {
  const test::TemporaryDirectory directory;
  const std::string bad = directory.write("bad", row("a", "b", "0.1") + "\n" + row("a", "c", "0.1x"));
  const auto check = [](const std::string& file, Message message) {
    select({"a", "b"});
    EXPECT_EQ(readbips_from(file, record, test::sources.bips), message) << file;
    for (const std::size_t i : {0U, 1U}) EXPECT_EQ(record.k_ij[i][1], 0);
  };
  for (const std::string& file : {directory.path() + "none", directory.path(), std::string()}) check(file, no_file);
  check(bad, bad_file);
  // A pure fluid needs no table.
  select({"alpha"});
  EXPECT_EQ(readbips_from("/nowhere/BIPs.mix", record, test::sources.bips), "No errors");
  EXPECT_EQ(record.k_ij[0][0], 0);
}

TEST(Bips, ReadsNoMoreRowsThanAsked) {
  const test::TemporaryDirectory directory;
  std::string text;
  for (int i = 1; i <= 1200; ++i)
    text += row("a", std::to_string(i).c_str(), (std::to_string(i) + ".0").c_str()) + "\n";
  const std::string file = directory.write("long", text + "garbage behind the last row that counts");
  auto table = std::make_unique<BipTable>();
  for (const int rows : {0, -4}) EXPECT_EQ(readbipsfile(file, rows, *table), "No errors");
  EXPECT_EQ(readbipsfile(file, 100000, *table), "No errors");
  EXPECT_EQ(table->bip[999], 1000);
  select({"1000", "a", "1001"});
  ASSERT_EQ(readbips_from(file, record, test::sources.bips), "No errors");
  EXPECT_EQ(record.k_ij[0][1], 1000);
  EXPECT_EQ(record.k_ij[1][2], 0);
}

TEST(Bips, TheDatabaseRouteStopsAtABlankRow) {
  const test::TemporaryDirectory directory;
  test::add_record(directory.path(), "BIPs.mix",
                   row("a", "b", "0.25") + "\n" + row("c", "d", "2222.0") + "\n\n" + row("e", "f", "0.5"));
  test::add_record(directory.path(), "bad", row("a", "b", "0.25.1"));
  auto table = std::make_unique<BipTable>();
  EXPECT_EQ(readbipsdb(directory.path(), "BIPs.mix", test::connection, *table), "No errors");
  EXPECT_TRUE(table->bip[0] == 0.25 && table->bip[1] == 2222) << table->bip[0] << ' ' << table->bip[1];
  EXPECT_EQ(table->cn[1][1].trimmed(), "d");
  EXPECT_EQ(table->cn[3][0].trimmed(), "");
  EXPECT_EQ(readbipsdb(directory.path(), "none", test::connection, *table), no_file);
  EXPECT_EQ(readbipsdb(directory.path(), "bad", test::connection, *table), bad_file);
}

}  // namespace
}  // namespace tessarel::fluid
