// Process-simulator derivatives against differences of v, h, s and ln phi along T, P and the fractions.
#include <cmath>

#include "common/test_fluid.hpp"
#include "eos/caloric.hpp"
#include "eos/density.hpp"
#include "eos/fugacity.hpp"
#include "interface/host.hpp"

namespace tessarel::testing {
namespace {

struct Properties {
  double v, h, s;
  Values lnphi;
};

/// The liquid-like root at (t, p) and fractions taken as they are.
Properties properties_at(double t, double p, const Values& x) {
  const auto eos = current().eos();
  const int n = static_cast<int>(x.size());
  Properties r{0, 0, 0, Values(x.size())};
  double u = 0;
  EXPECT_EQ(calc_v(eos, n, x.data(), t, p, 1, r.v), no_errors);
  calc_hsu(eos, n, x.data(), t, p, r.v, r.h, r.s, u);
  calc_lnphi_tprho(eos, n, x.data(), t, p, fluid::avogadro_factor / r.v, r.lnphi.data());
  return r;
}

struct Case {
  std::vector<std::string> names;
  Values x;
  double t, p;
};

TEST(Capeopen, AgainstDifferences) {
  const std::vector<Case> cases = {{{"propane", "n-hexane"}, {0.4, 0.6}, 300, 2e6},
                                   {{"water", "methanol"}, {0.3, 0.7}, 330, 1e6},
                                   {{"acetone", "carbon dioxide", "methanol"}, {0.5, 0.2, 0.3}, 310, 5e6}};
  for (const Case& c : cases) {
    ASSERT_EQ(host::select(c.names, c.x), "No errors");
    const std::size_t n = c.x.size();
    const Properties base = properties_at(c.t, c.p, c.x);
    Values dv(2 + 2 * n, -1), dh(2 + 2 * n, -1), ds(2 + 2 * n, -1), dg(2 + 2 * n, -1), dlnphi(n * (2 + 2 * n));
    std::string err(40, ' ');
    tessarel_capeopenderiv(&c.t, &c.p, &base.v, dv.data(), dh.data(), ds.data(), dg.data(), dlnphi.data(), err.data(),
                           err.size());
    EXPECT_EQ(trimmed(err), "No errors");
    for (const Values* of : {&dv, &dh, &ds, &dg}) {  // the places of the T and P derivatives are left alone
      EXPECT_EQ((*of)[0], -1);
      EXPECT_EQ((*of)[1], -1);
    }
    const auto near = [&](double value, double difference, double scale, const char* what) {
      EXPECT_NEAR(value, difference, 2e-6 * std::max(std::abs(difference), scale)) << what << " " << c.names[0];
    };
    for (std::size_t k = 0; k < n; ++k) {
      const double h = 1e-4;
      Values up = c.x, down = c.x;
      up[k] += h;
      down[k] -= h;
      const Properties a = properties_at(c.t, c.p, up), b = properties_at(c.t, c.p, down);
      const double mixing = fluid::gas_constant * (std::log(c.x[k]) + 1.0);  // not part of ds
      const double s_k = (a.s - b.s) / (2 * h) + mixing, h_k = (a.h - b.h) / (2 * h);
      near(dv[2 + k], (a.v - b.v) / (2 * h), base.v, "dv");
      near(dh[2 + k], h_k, std::abs(base.h), "dh");
      near(ds[2 + k], s_k, 100, "ds");
      near(dg[2 + k], h_k - c.t * s_k, std::abs(base.h), "dg");
      for (std::size_t i = 0; i < n; ++i)
        near(dlnphi[i + n * (2 + k)], (a.lnphi[i] - b.lnphi[i]) / (2 * h), 1, "dlnphi by x");
      // By mole numbers: the other amounts stay, the fractions follow.
      double projected = 0;
      for (std::size_t l = 0; l < n; ++l) projected += ((l == k ? 1.0 : 0.0) - c.x[l]) * dh[2 + l];
      EXPECT_NEAR(dh[2 + n + k], projected, 1e-9 * std::abs(base.h));
      for (double& value : up) value /= 1.0 + h;
      for (double& value : down) value /= 1.0 - h;
      const Properties more = properties_at(c.t, c.p, up), less = properties_at(c.t, c.p, down);
      near(dv[2 + n + k], (more.v - less.v) / (2 * h), base.v, "dv by n");
      for (std::size_t i = 0; i < n; ++i)
        near(dlnphi[i + n * (2 + n + k)], (more.lnphi[i] - less.lnphi[i]) / (2 * h), 1, "dlnphi by n");
    }
    const double dt = 1e-3 * c.t, dp = 1e-3 * c.p;
    const Properties hot = properties_at(c.t + dt, c.p, c.x), cold = properties_at(c.t - dt, c.p, c.x);
    const Properties high = properties_at(c.t, c.p + dp, c.x), low = properties_at(c.t, c.p - dp, c.x);
    for (std::size_t i = 0; i < n; ++i) {
      EXPECT_NEAR(dlnphi[i], (hot.lnphi[i] - cold.lnphi[i]) / (2 * dt), 2e-5 * std::abs(dlnphi[i]));
      EXPECT_NEAR(dlnphi[n + i], (high.lnphi[i] - low.lnphi[i]) / (2 * dp), 2e-5 * std::abs(dlnphi[n + i]));
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
