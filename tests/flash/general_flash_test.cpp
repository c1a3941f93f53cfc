// The general flash: from the reference states back, its bound, its sensitivities.
#include "flash/general_flash.hpp"

#include "common/reference_flashes.hpp"
#include "envelope/critical_point.hpp"
#include "flash/sensitivity.hpp"

namespace tessarel::testing {
namespace {

/// p and t from each pair of the reference values; every sixth row.
TEST(GeneralFlash, ReferenceStatesFromEveryPair) {
  int row = 0;
  for_each_reference_flash([&](TestFluid& f, const ReferenceFlash& r) {
    if (row++ % 6 != 0 || r.t < 100 || r.t > 1000) return;
    const double a[] = {r.p, r.p, r.p, r.t, r.v}, b[] = {r.t, r.h, r.s, r.v, r.u};
    for (int mode = 1; mode <= 5; ++mode) {
      SCOPED_TRACE(mode);
      flash::AbResult got;
      eos::Statistics& work = f.session.work.statistics;
      const auto before = work.fugacities;
      ASSERT_EQ(flash::calc_ab_flash(f.fluid(), mode, a[mode - 1], b[mode - 1], got), no_errors);
      EXPECT_LT(work.fugacities - before, 20000);
      // The values given have ten digits: of a liquid that leaves p open, and near a boundary beta.
      const double digits = 2e-8 * std::max(1.0, r.sens);
      EXPECT_NEAR(got.t, r.t, digits * r.t);
      if (mode < 4) {
        EXPECT_NEAR(got.p, r.p, 1e-12 * r.p);
      }
      EXPECT_NEAR(got.v, r.v, 1e-6 * std::max(1.0, r.sens) * r.v);
      EXPECT_NEAR(got.h - got.u, got.p * got.v, 1e-9 * std::abs(got.h));
      if (r.phases == 2)
        EXPECT_NEAR(got.q, r.beta, digits);
      else
        EXPECT_TRUE(got.q == 0 || got.q == 1);
      if (mode > 1) continue;
      const double tolerance = 1e-9 * std::max(1.0, r.sens);
      EXPECT_NEAR(got.h, r.h, tolerance * std::abs(r.h));
      EXPECT_NEAR(got.s, r.s, tolerance * std::max(8.0, std::abs(r.s)));
      EXPECT_NEAR(got.u, r.u, tolerance * std::abs(r.u));
    }
  });
}

/// Phases and properties of four splits computed with 30 digits.
TEST(GeneralFlash, ReferenceEquilibria) {
  int values = 0;
  for (const auto& row : read_reference("equilibria.csv")) {
    if (row[0] != "flash") continue;
    SCOPED_TRACE(row[1] + " " + row[4]);
    TestFluid f(Mixture(row[1]), row[2], false);
    ASSERT_EQ(envelope::critpoint(f.eos, f.n, f.z, f.session.limits), no_errors);
    const auto given = split(row[3], ';');
    flash::AbResult got;
    ASSERT_EQ(flash::calc_ab_flash(f.fluid(), 1, std::strtod(given[1].c_str(), nullptr),
                                   std::strtod(given[0].c_str(), nullptr), got),
              no_errors);
    const std::string& name = row[4];
    const auto place = name.size() > 1 && name != "beta" ? static_cast<std::size_t>(name[1] - '1') : 0;
    const double value = name == "beta" ? got.q
                         : name == "h"  ? got.h
                         : name == "s"  ? got.s
                         : name == "v"  ? got.v
                                        : (name[0] == 'x' ? got.x : got.y)[place];
    const double expected = std::strtod(row[5].c_str(), nullptr);
    EXPECT_NEAR(value, expected, 1e-9 * std::abs(expected));
    ++values;
  }
  EXPECT_EQ(values, 34);
}

/// Outside the range of the search, and where no state has the values.
TEST(GeneralFlash, Failures) {
  const TestFluid f({"methane", "n-butane"}, {0.5, 0.5});
  const struct {
    int mode;
    double a, b;
  } cases[] = {{2, 1e6, 1e9}, {2, 1e6, -1e9}, {3, 1e6, 1e4}, {5, 1e-4, 1e9}, {4, 300, 1e-5}, {2, 3e8, 0}};
  for (const auto& c : cases) {
    flash::AbResult got;
    const Message message = flash::calc_ab_flash(f.fluid(), c.mode, c.a, c.b, got);
    EXPECT_TRUE(message.text().starts_with("Michelsen's GenFlash calculation: ")) << c.mode << message.text();
  }
}

/// Derivatives against central differences, and the sum rule of quantities per mole.
TEST(Sensitivity, DifferencesAndSumRules) {
  const struct {
    std::vector<std::string> names;
    Values z;
    double t, p;
  } cases[] = {{{"methane", "n-butane"}, {0.5, 0.5}, 300, 40e5},
               {{"methane", "ethane", "propane", "n-butane", "nitrogen np"}, {0.85, 0.07, 0.04, 0.02, 0.02}, 200, 30e5},
               {{"methane", "ethane", "propane"}, {0.8, 0.15, 0.05}, 280, 30e5},
               {{"water", "methanol"}, {0.5, 0.5}, 346, 1e5},
               {{"water", "n-hexane"}, {0.5, 0.5}, 320, 1e5},
               {{"n-hexane", "n-heptane", "acetone"}, {0.4, 0.3, 0.3}, 300, 1e5}};
  for (const auto& c : cases) {
    SCOPED_TRACE(c.names[0] + " " + c.names[1]);
    TestFluid f(c.names, c.z);
    const auto n = static_cast<std::size_t>(f.n);
    flash::Sensitivity s;
    ASSERT_EQ(flash::flash_sensitivity(f.fluid(), c.t, c.p, s), no_errors);
    const auto all = [](const flash::Sensitivity& r) { return Values{r.beta, r.v, r.h, r.s}; };
    const auto columns = [&](std::size_t k) { return Values{s.dbeta[k], s.dv[k], s.dh[k], s.ds[k]}; };
    for (std::size_t k = 0; k < n + 2; ++k) {
      flash::Sensitivity ends[2];
      const double step = k == 0 ? 1e-3 : k == 1 ? 1e-5 * c.p : 1e-5;
      for (int end = 0; end < 2; ++end) {
        const double by = end == 0 ? -step : step;
        Values z = c.z;
        if (k > 1) {
          z[k - 2] += by;
          for (double& value : z) value /= 1.0 + by;
        }
        const eos::Fluid moved{f.eos, f.n, z.data(), f.limits};
        ASSERT_EQ(flash::flash_sensitivity(moved, c.t + (k == 0 ? by : 0), c.p + (k == 1 ? by : 0), ends[end]),
                  no_errors);
      }
      const Values up = all(ends[1]), down = all(ends[0]), exact = columns(k), value = all(s);
      for (std::size_t q = 0; q < up.size(); ++q) {
        const double slope = (up[q] - down[q]) / (2 * step);
        const double scale = std::abs(slope) + 1e-4 * std::abs(value[q]) / (k == 0 ? 300.0 : k == 1 ? c.p : 1.0);
        EXPECT_NEAR(exact[q], slope, 1e-6 * scale + 1e-300) << "quantity " << q << " column " << k;
      }
    }
    for (const flash::Sensitivity::Row* row : {&s.dbeta, &s.dv, &s.dh, &s.ds}) {
      double sum = 0, size = 0;
      for (std::size_t j = 0; j < n; ++j) {
        sum += f.z[j] * (*row)[2 + j];
        size += std::abs(f.z[j] * (*row)[2 + j]);
      }
      EXPECT_NEAR(sum, 0, 1e-11 * size);
    }
    for (std::size_t i = 0; i < n; ++i) {
      double x = 0, y = 0;
      for (std::size_t j = 0; j < n; ++j) {
        x += f.z[j] * s.dx[i][2 + j];
        y += f.z[j] * s.dy[i][2 + j];
      }
      EXPECT_NEAR(x, 0, 1e-10);
      EXPECT_NEAR(y, 0, 1e-10);
    }
    // The material balance differentiated: z = (1 - beta) x + beta y.
    const auto flashed = flash::flmain(f.fluid(), c.t, c.p, false, nullptr, nullptr);
    if (!flashed.two_phases()) continue;
    for (std::size_t k = 0; k < n + 2; ++k)
      for (std::size_t i = 0; i < n; ++i) {
        const double moved = k < 2 ? 0.0 : (i == k - 2 ? 1.0 : 0.0) - f.z[i];
        EXPECT_NEAR((1 - s.beta) * s.dx[i][k] + s.beta * s.dy[i][k] + s.dbeta[k] * (flashed.y[i] - flashed.x[i]), moved,
                    1e-10);
      }
  }
}

}  // namespace
}  // namespace tessarel::testing
