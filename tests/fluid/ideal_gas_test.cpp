#include "fluid/ideal_gas.hpp"

#include <gtest/gtest.h>

#include <cmath>
#include <functional>

#include "fluid/sample_records.hpp"

namespace tessarel::fluid {
namespace {

using test::record;

/// Simpson's rule on 512 panels.
double integrate(const std::function<double(double)>& f, double from, double to) {
  const double h = (to - from) / 512;
  double sum = 0;
  for (int k = 0; k < 512; ++k) sum += f(from + k * h) + 4 * f(from + (k + 0.5) * h) + f(from + (k + 1) * h);
  return sum * h / 6;
}

class Cp0 : public testing::Test {
 protected:
  void SetUp() override {
    auto& r = record;
    const double table[3][4] = {{32.57689, -23.1598, 138.8129, -77.30696},
                                {19.38993, 98.06616, 68.3151, -64.39433},
                                {-27.67383, 434.5152, -213.3424, 16.00877}};
    for (std::size_t i = 0; i < 3; ++i) {
      r.cp0_a[i] = table[i][0], r.cp0_b[i] = table[i][1] / 1e3;
      r.cp0_c[i] = table[i][2] / 1e6, r.cp0_d[i] = table[i][3] / 1e9;
    }
  }
};

TEST_F(Cp0, IntegralsAgreeWithQuadrature) {
  for (int i = 0; i < 3; ++i) {
    for (const double t : {90.0, 250.0, 298.0, 400.0, 1000.0}) {
      const double integral = integrate([i](double s) { return calc_cp0(record, i, s); }, 298.15, t);
      const double over_t = integrate([i](double s) { return calc_cp0(record, i, s) / s; }, 298.15, t);
      EXPECT_NEAR(calc_icp0_dt(record, i, t), integral, 1e-10 * (1 + std::abs(integral)));
      EXPECT_NEAR(calc_icp0_t_dt(record, i, t), over_t, 1e-12 * (1 + std::abs(over_t)));
      const double h = 1e-3 * t;
      EXPECT_NEAR(calc_dcp0_dt(record, i, t), (calc_cp0(record, i, t + h) - calc_cp0(record, i, t - h)) / (2 * h),
                  1e-6);
    }
    EXPECT_NEAR(calc_icp0_dt(record, i, 298.15), 0.0, 1e-11);
    EXPECT_NEAR(calc_icp0_t_dt(record, i, 298.15), 0.0, 1e-14);
  }
  // Methane at 298.15 K; the tables give 35.7 J/(mol K).
  EXPECT_NEAR(calc_cp0(record, 0, 298.15), 35.7, 0.0177 * 35.7);
}

TEST_F(Cp0, AMixtureIsTheWeightedSum) {
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
