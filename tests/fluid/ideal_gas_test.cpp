#include "fluid/ideal_gas.hpp"

#include <gtest/gtest.h>

#include <cmath>

#include "fluid/sample_records.hpp"

namespace tessarel::fluid {
namespace {

using test::record;

TEST(Cp0, AMixtureIsTheWeightedSum) {
  for (std::size_t i = 0; i < 3; ++i) {
    const double k = static_cast<double>(i);
    record.cp0_a[i] = 30 - 25 * k, record.cp0_b[i] = 0.2 * k, record.cp0_c[i] = 1e-4 - 1e-4 * k;
    record.cp0_d[i] = -5e-8 + 3e-8 * k;
  }
  const struct {
    double (*component)(const Parameters&, int, double);
    double (*mixture)(const Parameters&, int, const double*, double);
  } members[] = {{calc_cp0, calc_cp0mix},
                 {calc_dcp0_dt, calc_dcp0mix_dt},
                 {calc_icp0_dt, calc_icp0mix_dt},
                 {calc_icp0_t_dt, calc_icp0mix_t_dt}};
  const double x[] = {0.2, 0.5, 0.3}, one[] = {1.0};
  for (const auto& m : members) {
    const double sum =
        0.2 * m.component(record, 0, 350) + 0.5 * m.component(record, 1, 350) + 0.3 * m.component(record, 2, 350);
    EXPECT_NEAR(m.mixture(record, 3, x, 350), sum, 1e-14 * std::abs(sum));
    EXPECT_EQ(m.mixture(record, 1, one, 350), m.component(record, 0, 350));
    EXPECT_EQ(m.mixture(record, 0, nullptr, 350), 0.0);
    for (const int outside : {-1, 20}) EXPECT_EQ(m.component(record, outside, 350), -8888.8);
  }
}

}  // namespace
}  // namespace tessarel::fluid
