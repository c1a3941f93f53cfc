#include "fluid/kij.hpp"

#include <gtest/gtest.h>

#include <array>

#include "fluid/sample_records.hpp"
#include "numerics/taylor.hpp"

namespace tessarel::fluid {
namespace {

using test::record;

TEST(Kij, CodesGiveTheirCorrelation) {
  // Value and slope from 30-digit arithmetic.
  const struct {
    double code, t, value, slope;
  } cases[] = {
      {1111, 273.15, -0.1116420878, 0.000865176}, {1112, 431.7, 0.115210091, 0.00052423},
      {1113, 273.15, 0.014953059, 0.00030186},    {1114, 431.7, -0.084530557, 0.00045279},
      {1115, 273.15, -0.0917294775, 0.00045715},  {2222, 431.7, 0.1016161363, 0.000128078},
  };
  for (const auto& c : cases) {
    double value = 0, slope = 0, second = 0, third = 1;
    record.k_ij[0][0] = c.code;
    ps_calc_kij(record, 1, c.t, &value);
    calc_dkij_dt(record, 1, c.t, &slope);
    using Number = numerics::Taylor<1, 3>;
    const Number series = kij(c.code, numerics::variable<Number>(c.t));
    calc_d2kij_dt2(record, 1, c.t, &second);
    calc_d3kij_dt3(record, 1, c.t, &third);
    for (const double v : {value, numerics::derivative(series, 0)}) EXPECT_NEAR(v, c.value, 2e-16) << c.code;
    for (const double s : {slope, numerics::derivative(series, 1)}) EXPECT_NEAR(s, c.slope, 1e-18) << c.code;
    EXPECT_NEAR(numerics::derivative(series, 2), second, 1e-20);
    EXPECT_EQ(numerics::derivative(series, 3), third);
  }
}

TEST(Kij, OtherEntriesArePlainNumbers) {
  for (const double entry : {0.0, -0.1, 0.12, 999.0, 1000.0, 1110.9999, 1116.0, 1112.5, 2222.1, -1111.0}) {
    EXPECT_EQ(kij(entry, 300.0), entry);
    record.k_ij[0][0] = entry;
    double out[] = {1, 1, 1};
    calc_dkij_dt(record, 1, 300.0, &out[0]), calc_d2kij_dt2(record, 1, 300.0, &out[1]),
        calc_d3kij_dt3(record, 1, 300.0, &out[2]);
    for (const double derivative : out) EXPECT_EQ(derivative, 0.0) << entry;
  }
}

TEST(Kij, ArraysHaveTheFirstIndexFastestAndKeepToTheirSize) {
  for (std::size_t i = 0; i < 3; ++i)
    for (std::size_t j = 0; j < 3; ++j) record.k_ij[i][j] = static_cast<double>(10 * i + j);
  std::array<double, 10> out{};
  out.fill(-1);
  ps_calc_kij(record, 3, 300.0, out.data());
  EXPECT_EQ(out, (std::array<double, 10>{0, 10, 20, 1, 11, 21, 2, 12, 22, -1}));
  out.fill(-1);
  for (const int n : {0, -5, 21, 1000}) ps_calc_kij(record, n, 300.0, out.data());
  EXPECT_EQ(out[0], -1);
}

}  // namespace
}  // namespace tessarel::fluid
