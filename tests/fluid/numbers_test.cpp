#include "fluid/numbers.hpp"

#include <gtest/gtest.h>

#include <cmath>
#include <string>

namespace tessarel::fluid_module {
namespace {

TEST(Numbers, ListDirectedReals) {
  const struct {
    const char* row;
    double value;
  } good[] = {
      {"1.5", 1.5},          {"  1.5", 1.5},
      {"\t1.5\tK", 1.5},     {"1.5e3", 1500},
      {"1.5D3", 1500},       {"1.5d+03", 1500},
      {"1.5Q-1", 0.15},      {"1.5+3", 1500},
      {"1.5-3", 0.0015},     {"+7", 7},
      {"-.5", -0.5},         {"5.", 5},
      {"1.5, comment", 1.5}, {"1.5 ! comment", 1.5},
      {"1.5/", 1.5},         {"1.5,", 1.5},
      {"-0", -0.0},          {"0.1", 0.1},
      {"1e-5", 1e-5},        {"000000012", 12},
      {"1.5 2.5", 1.5},      {"4.9e-324", 5e-324},
      {"1E308", 1e308},
  };
  for (const auto& c : good) {
    double value = NAN;
    EXPECT_TRUE(read_real(c.row, value)) << c.row;
    EXPECT_EQ(value, c.value) << c.row;
  }
  for (const char* row : {"",     "   ", "abc",  "x1.5",     "1.5x", "1.5!",    "--1",           "+-1",
                          ".",    "-",   "+.",   "e5",       "1e",   "1e+",     "1.2.3",         "1.5e3.0",
                          "nan",  "NaN", "inf",  "Infinity", "-inf", "1e309",   "1e99999999999", "1e100000",
                          ",1.5", "/",   "0x10", "1.5e 3",   "\x01", "1.5\x01", "'1.5'"}) {
    double value = 42;
    EXPECT_FALSE(read_real(row, value)) << row;
    EXPECT_EQ(value, 42) << row;
  }
  double value = 42;
  EXPECT_FALSE(read_real(std::string_view("1.5\0", 4), value));
  EXPECT_TRUE(read_real(std::string(5000, '0') + "1" + std::string(3000, ' ') + "x", value));
  EXPECT_EQ(value, 1);
}

TEST(Numbers, Integers) {
  const struct {
    const char* row;
    std::int32_t value;
  } good[] = {{"2", 2}, {" +2 sites", 2}, {"-7,", -7}, {"2147483647", 2147483647}, {"002", 2}};
  for (const auto& c : good) {
    std::int32_t value = 0;
    EXPECT_TRUE(read_integer(c.row, value)) << c.row;
    EXPECT_EQ(value, c.value);
  }
  for (const char* row : {"", "2.0", "2x", "1e1", "2147483648", "99999999999999999999", "--2", "-", "+-2"}) {
    std::int32_t value = 42;
    EXPECT_FALSE(read_integer(row, value)) << row;
    EXPECT_EQ(value, 42);
  }
}

TEST(Numbers, FixedFieldsHaveImpliedDecimals) {
  const struct {
    const char* field;
    double value;
  } good[] = {
      {"    0.0220", 0.022},
      {"0.022     ", 0.022},
      {"  1111.0  ", 1111},
      {"    1111  ", 0.01111},
      {"     12345", 0.12345},
      {"          ", 0},
      {"", 0},
      {" - 0 . 5  ", -0.5},
      {"  1.5E-2  ", 0.015},
      {"     12E3 ", 0.12},
      {"-0.374083 ", -0.374083},
  };
  for (const auto& c : good) {
    double value = NAN;
    EXPECT_TRUE(read_fixed(c.field, 5, value)) << c.field;
    EXPECT_EQ(value, c.value) << c.field;
  }
  for (const char* field : {"0.1x", "abc", "0.1,", "nan", "inf", "1.0 ! a"}) {
    double value = 42;
    EXPECT_FALSE(read_fixed(field, 5, value)) << field;
  }
}

}  // namespace
}  // namespace tessarel::fluid_module
