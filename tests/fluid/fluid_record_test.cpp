// Good and bad fluid records through the parser, from memory: the forms that a file and the database may have.
#include "fluid/fluid_record.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <sstream>
#include <string>
#include <vector>

#include "fluid/sample_records.hpp"
#include "platform/byte_source.hpp"

namespace tessarel::fluid {
namespace {

using test::record;

using test::association;
using test::head;
using test::polar;

std::string read_file(const std::string& text, int place = 0) {
  platform::MemoryBytes bytes(text);
  FileRows rows(bytes);
  return std::string(read_fluid_record(rows, place, "file", record, test::sources.text).text());
}

std::string read_database(const std::string& text, int place = 0) {
  static platform::FluidData data;
  int count = 0;
  std::istringstream stream(text);
  for (std::string line; count < 255 && std::getline(stream, line); ++count)
    data[static_cast<std::size_t>(count)].assign(line);
  DatabaseRows rows(data, count);
  return std::string(read_fluid_record(rows, place, "file", record, test::sources.text).text());
}

std::string replaced(std::string text, const std::string& from, const std::string& to) {
  for (std::size_t at = 0; (at = text.find(from, at)) != std::string::npos; at += to.size())
    text.replace(at, from.size(), to);
  return text;
}

const std::string sample = head() + association + polar + "eof\n";

/// What the sample gives, for comparisons.
std::string sample_values() {
  EXPECT_EQ(read_file(sample), "No errors");
  return test::all_values(0);
}

TEST(FluidRecord, ValuesOfACompleteRecord) {
  for (auto read : {read_file, read_database}) {
    record = Parameters{};
    ASSERT_EQ(read(sample, 3), "No errors");
    const Parameters& r = record;
    EXPECT_EQ(r.compname[3].trimmed(), "sample");
    const auto types = static_cast<double>(r.nhb_typ[3]), sites = static_cast<double>(r.nhb_no[3][0]);
    const std::vector<double> values{r.tmin[3],      r.tmax[3],   r.molmas[3],  r.omega[3],  r.mseg[3],
                                     r.sigma[3],     r.epsil[3],  r.parat[3],   r.cp0_a[3],  r.cp0_b[3],
                                     r.cp0_c[3],     r.cp0_d[3],  r.delhf0[3],  types,       sites,
                                     r.kap_hb[3][3], r.dipole[3], r.quapole[3], r.polariz[3]};
    EXPECT_EQ(values, (std::vector<double>{200, 600.5, 44.1, 0.15, 2, 3.6, 208, 0.12, 10, 0.02, 30e-6, -40e-9, -1e5, 2,
                                           1, 0.03, 1.5, 4.25, 2.5}));
    EXPECT_EQ(r.eps_hb[3][3][0][1], 2500.5);
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

TEST(FluidRecord, AcceptedForms) {
  const std::string expected = sample_values(), text = head() + association + polar + "eof";  // no line end
  const auto check = [&](auto read, const std::string& form) {
    EXPECT_EQ(read(form, 0), "No errors") << form.substr(0, 400);
    EXPECT_EQ(test::all_values(0), expected) << form.substr(0, 400);
  };
  const auto check_both = [&](const std::string& form) { check(read_file, form), check(read_database, form); };
  check_both(replaced(replaced(text, "dipolar", "DiPoLaR"), "eof", "EOF"));
  for (const char* keyword : {"quadrupolar   ", "quadrupolar\t"}) check_both(replaced(text, "quadrupolar", keyword));
  check_both(replaced(text, "dipolar\n", "dipolar" + std::string(25, ' ') + "! behind column 32\n"));
  check_both(replaced(text, "44.1", "\t44.1\tg/mol"));
  check_both(head() + polar + association + "eof");
  check_both(text + "\ntext behind eof\n");
  check(read_file, replaced(text, "\n\n", "\n"));
  for (const char* ends : {"\n\n \t\n", "\r\n"}) check(read_file, replaced(text, "\n", ends));
  check(read_file, "\xEF\xBB\xBF" + text);
  check(read_file, replaced(text, "44.1", std::string("44.1 \0\0", 7)));
  // The database skips separators unread, and a blank row in place of a keyword moves on by two rows.
  check(read_database, replaced(text, "\n\n", "\nanything\n"));
  check(read_database, head() + "\nunread\n" + association + polar + "eof");
  // A file may not hold text there, and the database may not leave blank rows out.
  EXPECT_NE(read_file(replaced(text, "sample\n\n", "sample\nanything\n")), "No errors");
  EXPECT_NE(read_database(replaced(text, "\n\n", "\n")), "No errors");
}

TEST(FluidRecord, DamageIsReportedWithTheNameInsideTheRecord) {
  // What may stand behind the head: no eof, blocks without values or with others than they take, no keyword.
  std::vector<std::string> bad;
  for (const char* tail : {"", polar.c_str(), "dipolar\n", "dipolar\n\n", "dipolar\neof\n", "unknown\neof\n",
                           " dipolar\n1.5\n\neof\n", "dipolar 1.5\n\neof\n"})
    bad.push_back(head() + tail);
  for (const char* block : {"6\n1\n1\n1\n1\n1\n1\n", "-1\n0.1\n\n", "1\n-1\n0.1\n\n", "1\n1001\n0.1\n\n",
                            "1\n2147483648\n0.1\n\n", "1.0\n1\n0.1\n\n", "2\n1\n1\nnan\n0.1\n\n", "2\n1\n1\n2500\n\n"})
    bad.push_back(head() + "associating\n" + block + "eof\n");
  for (const char* value : {"1e999", "inf", "\xEF\xBB\xBF 44.1"})
    bad.push_back(replaced(head(), "44.1", value) + "eof\n");
  // No number in each row of values in turn.
  for (std::size_t row = 0, end = 0; (end = sample.find('\n', row)) != std::string::npos; row = end + 1)
    if (sample[row] == '-' || std::isdigit(sample[row]) != 0)
      bad.push_back(sample.substr(0, row) + "abc" + sample.substr(end));
  bad.push_back(replaced(head(), "-40\n", "") + "eof\n");  // a row too few
  for (const std::string& rest :
       {std::string(5000, '\0'), std::string(200000, '\n'), std::string("\n200\n\xFF\xFE\x80\n")})
    bad.push_back("sample\n" + rest);
  // Every cut behind the name.
  for (std::size_t length = 6; length < sample.size() - 1; ++length) bad.push_back(sample.substr(0, length));
  for (auto read : {read_file, read_database}) {
    for (const std::string& text : bad) {
      EXPECT_EQ(read(text, 0), "Unexpected data in fluid data file \"sample.saf\"...") << text.substr(0, 200);
      EXPECT_TRUE(record.nhb_typ[0] >= 0 && record.nhb_typ[0] <= max_sites);
    }
    EXPECT_EQ(read("", 0), "Unexpected data in fluid data file \"file.saf\"...");
    EXPECT_EQ(read("sam", 0), "Unexpected data in fluid data file \"sam.saf\"...");
  }
  EXPECT_EQ(read_file("\n\n"), "Unexpected data in fluid data file \".saf\"...");
}

TEST(FluidRecord, NumbersThatMeanNoFluidAreReportedWithTheirRow) {
  struct {
    const char *from, *to, *where;
  } const cases[] = {
      {"44.1", "44,1", "6: decimal comma"},
      {"44.1", "0.0441", "6: molar mass below 1 g/mol"},
      {"200\n", "601\n", "4: highest temperature below the lowest"},
      {"200\n", "0\n", "3: value not above 0"},
      {"2.0\n", "0\n", "8: value not above 0"},
      {"3.6\n", "-3.6\n", "9: value not above 0"},
      {"208.0", "-208", "10: value not above 0"},
      {"0.03", "-0.03", "23: value below 0"},
      {"-1.0D5", "-1,0D5", "16: decimal comma"},
  };
  for (const auto& [from, to, where] : cases) {
    const std::string expected = std::string("Unexpected data in fluid data file \"file.saf\", row ") + where + "...";
    for (auto read : {read_file, read_database}) EXPECT_EQ(read(replaced(sample, from, to), 0), expected);
  }
  EXPECT_EQ(read_file(replaced(sample, "44.1", "44.1, g/mol")), "No errors");
}

TEST(FluidRecord, AnEarlierComponentLeavesNothingBehind) {
  sample_values();
  record.parat[0] = record.saftpar[0] = 7;
  ASSERT_EQ(read_file(head("plain") + "eof"), "No errors");
  EXPECT_EQ(record.nhb_typ[0], 0);
  EXPECT_EQ(record.dipole[0] + record.quapole[0] + record.polariz[0], 0);
  EXPECT_EQ(record.parat[0], 0.12);
  EXPECT_EQ(record.saftpar[0], 0);
}

TEST(FluidRecord, NamesAreCutAt32CharactersAndLowerCaseTouchesLettersOnly) {
  const std::string letters = "abcdefghijklmnopqrstuvwxyz0123456789";
  ASSERT_EQ(read_file(head(letters) + "eof"), "No errors");
  EXPECT_EQ(record.compname[0].view(), letters.substr(0, 32));
  EXPECT_EQ(tolower_tessarel("AZ az@[`{09\xC4").trimmed(), "az az@[`{09\xC4");
}

}  // namespace
}  // namespace tessarel::fluid
