#include "fluid/numbers.hpp"

#include <gtest/gtest.h>

#include <functional>
#include <map>
#include <string>
#include <vector>

namespace tessarel::fluid {
namespace {

/// Each good row gives its value, each bad one is refused and leaves the value as it was.
template <class Value>
void check(const std::function<bool(std::string_view, Value&)>& read, const std::map<std::string, Value>& good,
           const std::vector<std::string>& bad) {
  for (const auto& [row, expected] : good) {
    Value value = 42;
    EXPECT_TRUE(read(row, value)) << row;
    EXPECT_EQ(value, expected) << row;
  }
  for (const std::string& row : bad) {
    Value value = 42;
    EXPECT_FALSE(read(row, value)) << row;
    EXPECT_EQ(value, 42) << row;
  }
}

TEST(Numbers, ListDirectedReals) {
  std::map<std::string, double> good{{"  1.5", 1.5},    {"\t1.5\tK", 1.5}, {"1.5e3", 1500},   {"1.5D3", 1500},
                                     {"1.5d+03", 1500}, {"1.5Q-1", 0.15},  {"1.5+3", 1500},   {"1.5-3", 0.0015},
                                     {"+7", 7},         {"-.5", -0.5},     {"5.", 5},         {"1.5/", 1.5},
                                     {"1.5, K", 1.5},   {"1.5 ! K", 1.5},  {"-0", -0.0},      {"00012", 12},
                                     {"1.5 2.5", 1.5},  {"1E308", 1e308},  {"5e-324", 5e-324}};
  good[std::string(5000, '0') + "1" + std::string(3000, ' ') + "x"] = 1;
  std::vector<std::string> bad{"",     "   ", "abc",  "x1.5",     "1.5x", "1.5!",    "--1",          "+-1",
                               ".",    "-",   "+.",   "e5",       "1e",   "1e+",     "1.2.3",        "1.5e3.0",
                               "nan",  "NaN", "inf",  "Infinity", "-inf", "1e309",   "1e9999999999", "1e100000",
                               ",1.5", "/",   "0x10", "1.5e 3",   "\x01", "1.5\x01", "'1.5'"};
  bad.emplace_back("1.5\0", 4);
  check<double>(read_real, good, bad);
}

TEST(Numbers, Integers) {
  check<std::int32_t>(read_integer, {{"2", 2}, {" +2 sites", 2}, {"-7,", -7}, {"2147483647", 2147483647}, {"002", 2}},
                      {"", "2.0", "2x", "1e1", "2147483648", "99999999999999999999", "--2", "-", "+-2"});
}

TEST(Numbers, FixedFieldsHaveImpliedDecimals) {
  const std::map<std::string, double> good{{"  0.0220", 0.022},
                                           {"0.022   ", 0.022},
                                           {" 1111.0 ", 1111},
                                           {"  1111  ", 0.01111},
                                           {"   12345", 0.12345},
                                           {"        ", 0.0},
                                           {" - 0 . 5", -0.5},
                                           {" 1.5E-2 ", 0.015},
                                           {"   12E3 ", 0.12},
                                           {"-0.37408", -0.37408},
                                           {"", 0}};
  check<double>([](std::string_view field, double& value) { return read_fixed(field, 5, value); }, good,
                {"0.1x", "abc", "0.1,", "nan", "inf", "1.0 ! a"});
}

}  // namespace
}  // namespace tessarel::fluid
