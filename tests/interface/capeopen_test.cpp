// Process-simulator derivatives: of v, h and s against differences along the fractions, of ln phi against the
// fugacity routines.
#include <cmath>

#include "common/test_fluid.hpp"
#include "eos/caloric.hpp"
#include "eos/density.hpp"
#include "eos/fugacity.hpp"
#include "interface/host.hpp"

namespace tessarel::testing {
namespace {

TEST(Capeopen, DerivativesByComposition) {
  const struct {
    std::vector<std::string> names;
    Values x;
    double t, p;
  } cases[] = {{{"propane", "n-hexane"}, {0.4, 0.6}, 300, 2e6},
               {{"water", "methanol"}, {0.3, 0.7}, 330, 1e6},
               {{"acetone", "carbon dioxide", "methanol"}, {0.5, 0.2, 0.3}, 310, 5e6}};
  for (const auto& c : cases) {
    ASSERT_EQ(host::select(c.names, c.x), "No errors");
    const std::size_t n = c.x.size();
    const int count = static_cast<int>(n);
    const auto eos = current().eos();
    /// v, h, s of the liquid-like root at fractions taken as they are.
    const auto properties_at = [&](const Values& x) {
      std::array<double, 3> r{};
      double u = 0;
      EXPECT_EQ(calc_v(eos, count, x.data(), c.t, c.p, 1, r[0]), no_errors);
      calc_hsu(eos, count, x.data(), c.t, c.p, r[0], r[1], r[2], u);
      return r;
    };
    const auto base = properties_at(c.x);
    Values dv(2 + 2 * n, -1), dh = dv, ds = dv, dg = dv, dlnphi(n * (2 + 2 * n)), expected = dlnphi;
    std::string err(40, ' ');
    tessarel_capeopenderiv(&c.t, &c.p, &base[0], dv.data(), dh.data(), ds.data(), dg.data(), dlnphi.data(), err.data(),
                           err.size());
    EXPECT_EQ(trimmed(err), "No errors");
    double* to = expected.data();
    calc_lnphi_tpxn(eos, count, c.x.data(), c.t, c.p, fluid::avogadro_factor / base[0], to, to + n, to + 2 * n,
                    to + 2 * n + n * n);
    EXPECT_EQ(dlnphi, expected);
    const auto near = [&](double value, double difference, double scale, const char* what) {
      EXPECT_NEAR(value, difference, 2e-6 * std::max(std::abs(difference), scale)) << what << " " << c.names[0];
    };
    for (std::size_t k = 0; k < n; ++k) {
      const double h = 1e-4;
      Values up = c.x, down = c.x;
      up[k] += h;
      down[k] -= h;
      const auto a = properties_at(up), b = properties_at(down);
      const double mixing = fluid::gas_constant * (std::log(c.x[k]) + 1.0);  // not part of ds
      const double s_k = (a[2] - b[2]) / (2 * h) + mixing, h_k = (a[1] - b[1]) / (2 * h);
      near(dv[2 + k], (a[0] - b[0]) / (2 * h), base[0], "dv");
      near(dh[2 + k], h_k, std::abs(base[1]), "dh");
      near(ds[2 + k], s_k, 100, "ds");
      near(dg[2 + k], h_k - c.t * s_k, std::abs(base[1]), "dg");
    }
    for (const Values& of : {dv, dh, ds, dg}) {
      EXPECT_TRUE(of[0] == -1 && of[1] == -1);  // the places of the T and P derivatives are left alone
      // By mole numbers: the other amounts stay, the fractions follow.
      double mean = 0;
      for (std::size_t k = 0; k < n; ++k) mean += c.x[k] * of[2 + k];
      for (std::size_t k = 0; k < n; ++k) EXPECT_NEAR(of[2 + n + k], of[2 + k] - mean, 1e-11 * std::abs(mean));
    }
  }
}

TEST(Capeopen, PureFluidHasNoMoleNumberDerivatives) {
  ASSERT_EQ(host::select({"propane"}, {1.0}), "No errors");
  const double t = 300, p = 1e5;
  double v = 0;
  calc_v(current().eos(), 1, current().z.data(), t, p, 2, v);
  double dv[4], dh[4], ds[4], dg[4], dlnphi[4];
  char err[20];
  tessarel_capeopenderiv(&t, &p, &v, dv, dh, ds, dg, dlnphi, err, sizeof err);
  for (const double* of : {dv, dh, ds, dg}) EXPECT_EQ(of[3], 0.0);
  EXPECT_EQ(dlnphi[3], 0.0);
}

}  // namespace
}  // namespace tessarel::testing
