// Good and bad fluid records through the parser, from memory: the forms that a file and the database may have.
#include "fluid/fluid_record.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>

#include "fluid/fluid_module.hpp"
#include "fluid/sample_records.hpp"
#include "platform/byte_source.hpp"

namespace tessarel::fluid_module {
namespace {

using test::association;
using test::head;
using test::polar;

std::string read_file(const std::string& text, int place = 0) {
  platform::MemoryBytes bytes(text);
  FileRows rows(bytes);
  return std::string(read_fluid_record(rows, place, "file"));
}

std::string read_database(std::string_view text, int place = 0) {
  static sqlite::FluidData data;
  int count = 0;
  while (!text.empty() && count < 255) {
    const auto end = text.find('\n');
    data[static_cast<std::size_t>(count++)].assign(text.substr(0, end));
    text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
  }
  DatabaseRows rows(data, count);
  return std::string(read_fluid_record(rows, place, "file"));
}

std::string replaced(std::string text, const std::string& from, const std::string& to) {
  for (std::size_t at = 0; (at = text.find(from, at)) != std::string::npos; at += to.size())
    text.replace(at, from.size(), to);
  return text;
}

TEST(FluidRecord, ValuesOfACompleteRecord) {
  const std::string text = head() + association + polar + "eof\n";
  for (auto read : {+[](const std::string& t) { return read_file(t, 3); },
                    +[](const std::string& t) { return read_database(t, 3); }}) {
    record = Record{};
    ASSERT_EQ(read(text), "No errors");
    const Record& r = record;
    EXPECT_EQ(r.compname[3].trimmed(), "sample");
    EXPECT_EQ(r.tmin[3], 200);
    EXPECT_EQ(r.tmax[3], 600.5);
    EXPECT_EQ(r.molmas[3], 44.1);
    EXPECT_EQ(r.omega[3], 0.15);
    EXPECT_EQ(r.mseg[3], 2);
    EXPECT_EQ(r.sigma[3], 3.6);
    EXPECT_EQ(r.epsil[3], 208);
    EXPECT_EQ(r.parat[3], 0.12);
    EXPECT_EQ(r.cp0_a[3], 10);
    EXPECT_EQ(r.cp0_b[3], 0.02);
    EXPECT_EQ(r.cp0_c[3], 30e-6);
    EXPECT_EQ(r.cp0_d[3], -40e-9);
    EXPECT_EQ(r.delhf0[3], -1e5);
    EXPECT_EQ(r.nhb_typ[3], 2);
    EXPECT_EQ(r.nhb_no[3][0], 1);
    EXPECT_EQ(r.eps_hb[3][3][0][1], 2500.5);
    EXPECT_EQ(r.eps_hb[3][3][1][0], 2500.5);
    EXPECT_EQ(r.eps_hb[3][3][1][1], 0);
    EXPECT_EQ(r.kap_hb[3][3], 0.03);
    EXPECT_EQ(r.dipole[3], 1.5);
    EXPECT_EQ(r.quapole[3], 4.25);
    EXPECT_EQ(r.polariz[3], 2.5);
  }
}

TEST(FluidRecord, SitePairsComeInRowsOfTheUpperTriangle) {
  std::string block = "associating\n5\n1\n2\n3\n4\n5\n";
  for (const char* pair : {"12", "13", "14", "15", "23", "24", "25", "34", "35", "45"})
    block += std::string(pair) + "\n";
  ASSERT_EQ(read_file(head() + block + "0.5\n\neof"), "No errors");
  for (std::size_t a = 0; a < 5; ++a) {
    EXPECT_EQ(record.nhb_no[0][a], static_cast<std::int32_t>(a + 1));
    for (std::size_t b = 0; b < 5; ++b) {
      const auto low = static_cast<double>(std::min(a, b) + 1), high = static_cast<double>(std::max(a, b) + 1);
      EXPECT_EQ(record.eps_hb[0][0][a][b], a == b ? 0.0 : 10 * low + high);
    }
  }
  // One site type has no energy, and its volume is read all the same.
  record.eps_hb[0][0][0][0] = 99;
  ASSERT_EQ(read_file(head() + "associating\n1\n2\n0.25\neof"), "No errors");
  EXPECT_EQ(record.eps_hb[0][0][0][0], 0);
  EXPECT_EQ(record.kap_hb[0][0], 0.25);
}

TEST(FluidRecord, FormsThatBothRoutesAccept) {
  ASSERT_EQ(read_file(head() + association + polar + "eof\n"), "No errors");
  const std::string expected = test::all_values(0);
  const std::string text = head() + association + polar + "eof\n";
  const struct {
    const char* what;
    std::string text;
  } both[] = {
      {"capital keywords", replaced(replaced(text, "dipolar", "DiPoLaR"), "eof", "EOF")},
      {"blanks behind keywords", replaced(text, "quadrupolar", "quadrupolar   ")},
      {"tab behind a keyword", replaced(text, "quadrupolar", "quadrupolar\t")},
      {"comments behind column 32", replaced(text, "dipolar\n", "dipolar" + std::string(25, ' ') + "! moment\n")},
      {"comments behind values", replaced(text, "44.1", "\t44.1\tg/mol")},
      {"other order of blocks", head() + polar + association + "eof"},
      {"text behind eof", text + "anything\n"},
  };
  for (const auto& c : both) {
    EXPECT_EQ(read_file(c.text), "No errors") << c.what;
    EXPECT_EQ(test::all_values(0), expected) << c.what;
    EXPECT_EQ(read_database(c.text), "No errors") << c.what;
    EXPECT_EQ(test::all_values(0), expected) << c.what;
  }
}

TEST(FluidRecord, FormsOfAFile) {
  const std::string text = head() + association + polar + "eof\n";
  ASSERT_EQ(read_file(text), "No errors");
  const std::string expected = test::all_values(0);
  const struct {
    const char* what;
    std::string text;
  } cases[] = {
      {"no blank rows", replaced(text, "\n\n", "\n")},
      {"more blank rows", replaced(text, "\n", "\n\n \t\n")},
      {"Windows line ends", replaced(text, "\n", "\r\n")},
      {"byte-order mark", "\xEF\xBB\xBF" + text},
      {"no line end at the end", text.substr(0, text.size() - 1)},
      {"a long comment", replaced(text, "44.1", "44.1 " + std::string(300000, 'x'))},
      {"a long row of blanks", replaced(text, "44.1", std::string(10000, ' ') + "44.1")},
      {"a NUL in a comment", replaced(text, "44.1", std::string("44.1 \0\0", 7))},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(read_file(c.text), "No errors") << c.what;
    EXPECT_EQ(test::all_values(0), expected) << c.what;
  }
}

TEST(FluidRecord, TheDatabaseSkipsSeparatorsUnread) {
  const std::string text = head() + "dipolar\n1.5\n\neof\n";
  ASSERT_EQ(read_database(text), "No errors");
  const std::string expected = test::all_values(0);
  EXPECT_EQ(read_database(replaced(text, "\n\n", "\nanything\n")), "No errors");
  EXPECT_EQ(test::all_values(0), expected);
  // A blank row in place of a keyword moves on by two rows.
  EXPECT_EQ(read_database(head() + "\nunread\ndipolar\n1.5\n\neof"), "No errors");
  EXPECT_EQ(test::all_values(0), expected);
  // A file may not hold text there, and the database may not leave blank rows out.
  EXPECT_NE(read_file(replaced(text, "sample\n\n", "sample\nanything\n")), "No errors");
  EXPECT_NE(read_database(replaced(text, "\n\n", "\n")), "No errors");
}

TEST(FluidRecord, DamageIsReportedWithTheNameInsideTheRecord) {
  const std::string end = "eof\n";
  const std::string bad[] = {
      head(),                                               // no eof
      head() + polar,                                       // no eof behind a block
      head() + "dipolar\n",                                 // no value
      head() + "dipolar\n\n",                               // no value behind a blank row
      head() + "dipolar\neof\n",                            // keyword for a value
      head() + "unknown\n" + end,                           // no keyword
      head() + " dipolar\n1.5\n\n" + end,                   // leading blank
      head() + "dipolar 1.5\n\n" + end,                     // value on the keyword row
      head() + "associating\n6\n1\n1\n1\n1\n1\n1\n" + end,  // too many types
      head() + "associating\n-1\n0.1\n\n" + end,            // negative number of types
      head() + "associating\n1\n-1\n0.1\n\n" + end,         // negative number of sites
      head() + "associating\n1\n1001\n0.1\n\n" + end,
      head() + "associating\n1\n2147483648\n0.1\n\n" + end,
      head() + "associating\n1.0\n1\n0.1\n\n" + end,  // no integer
      head() + "associating\n2\n1\n1\nnan\n0.1\n\n" + end,
      head() + "associating\n2\n1\n1\n2500\n\n" + end,  // no volume
      replaced(head(), "44.1", "abc") + end,
      replaced(head(), "44.1", "1e999") + end,
      replaced(head(), "44.1", "inf") + end,
      replaced(head(), "-40\n", "") + end,  // a row too few
      replaced(head(), "44.1",
               "\xEF\xBB\xBF"
               "44.1") +
          end,  // byte-order mark inside
      "sample",
      "sample\n",
      "sample\n\n200\n",
      "sample\n" + std::string(5000, '\0'),
      "sample\n" + std::string(200000, '\n'),
      "sample\n\n200\n\xFF\xFE\x80\n",
  };
  for (const std::string& text : bad) {
    EXPECT_EQ(read_file(text), "Unexpected data in fluid data file \"sample.saf\"...") << text.substr(0, 200);
    EXPECT_EQ(read_database(text), "Unexpected data in fluid data file \"sample.saf\"...") << text.substr(0, 200);
    EXPECT_TRUE(record.nhb_typ[0] >= 0 && record.nhb_typ[0] <= max_sites);
  }
  EXPECT_EQ(read_file(""), "Unexpected data in fluid data file \"file.saf\"...");
  EXPECT_EQ(read_database(""), "Unexpected data in fluid data file \"file.saf\"...");
  EXPECT_EQ(read_file("\n\n"), "Unexpected data in fluid data file \".saf\"...");
}

TEST(FluidRecord, EveryCutOfARecordIsSafe) {
  const std::string text = head() + association + polar + "eof";
  for (std::size_t length = 0; length < text.size(); ++length) {
    EXPECT_NE(read_file(text.substr(0, length)), "No errors") << length;
    EXPECT_NE(read_database(text.substr(0, length)), "No errors") << length;
  }
}

TEST(FluidRecord, AnEarlierComponentLeavesNothingBehind) {
  ASSERT_EQ(read_file(head() + association + polar + "eof"), "No errors");
  record.parat[0] = record.saftpar[0] = 7;
  ASSERT_EQ(read_file(head("plain") + "eof"), "No errors");
  EXPECT_EQ(record.nhb_typ[0], 0);
  EXPECT_EQ(record.dipole[0] + record.quapole[0] + record.polariz[0], 0);
  EXPECT_EQ(record.parat[0], 0.12);
  EXPECT_EQ(record.saftpar[0], 0);
}

TEST(FluidRecord, NamesAreCutAt32Characters) {
  const std::string letters = "abcdefghijklmnopqrstuvwxyz0123456789";
  ASSERT_EQ(read_file(head(letters) + "eof"), "No errors");
  EXPECT_EQ(record.compname[0].view(), letters.substr(0, 32));
}

TEST(FluidRecord, LowerCaseTouchesLettersOnly) {
  EXPECT_EQ(tolower_tessarel("AZ az@[`{09\xC4").trimmed(), "az az@[`{09\xC4");
  EXPECT_EQ(tolower_tessarel(std::string(40, 'X')).view(), std::string(32, 'x'));
  EXPECT_EQ(tolower_tessarel("").view(), std::string(32, ' '));
}

}  // namespace
}  // namespace tessarel::fluid_module
