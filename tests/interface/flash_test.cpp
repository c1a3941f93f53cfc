// The flash as a host calls it: what is refused, what is left behind.
#include <limits>

#include "interface/host.hpp"
#include "tessarel/routines.h"

namespace {

struct Flash {
  std::array<double, 20> x{}, y{};
  double beta = 0;
  std::string err;

  Flash& run(double t, double p) {
    std::array<char, 120> field{};
    tessarel_calc_pt_flash(&t, &p, x.data(), y.data(), &beta, field.data(), field.size());
    err = host::text(field.data(), field.size());
    return *this;
  }
};

std::string ab_flash(std::int32_t mode, double a, double b) {
  std::array<char, 120> field{};
  double t = 0, p = 0, v = 0, u = 0, h = 0, s = 0, q = 0;
  std::array<double, 20> x{}, y{};
  tessarel_calc_ab_flash(&mode, &a, &b, &t, &p, &v, &u, &h, &s, &q, x.data(), y.data(), field.data(), field.size());
  return host::text(field.data(), field.size());
}

const std::string one_phase = "Michelsen's Flash calculation: no phase split detected...";

TEST(Flash, OddNumbersGiveATextAndTouchNothingElse) {
  constexpr double inf = std::numeric_limits<double>::infinity();
  ASSERT_EQ(host::select({"methane", "n-butane"}, {0.5, 0.5}), "No errors");
  for (const double odd : {0.0, -1.0, inf, -inf, std::nan("")}) {
    for (Flash f : {Flash().run(odd, 1e6), Flash().run(300, odd)}) {
      EXPECT_EQ(f.err, "TESSAREL error: temperature and pressure must be positive finite numbers...");
      EXPECT_EQ(f.x[0] + f.y[0] + f.beta, 0);
    }
    for (std::int32_t mode = 1; mode <= 5; ++mode)
      EXPECT_TRUE(ab_flash(mode, odd, 300).starts_with("TESSAREL error: the values given")) << mode << " " << odd;
    Flash warm;
    warm.x = {-0.5, odd < 0 || !std::isfinite(odd) ? odd : -1.0};
    warm.y = {0.5, 0.5};
    EXPECT_TRUE(warm.run(300, 40e5).err.starts_with("TESSAREL error: the compositions to start from")) << odd;
  }
  EXPECT_TRUE(ab_flash(0, 1e6, 300).starts_with("TESSAREL error: mode of the flash"));
  EXPECT_TRUE(ab_flash(6, 1e6, 300).starts_with("TESSAREL error: mode of the flash"));
  // Any size ends, in a split, one phase or a text; a negative first fraction alone asks for a start from zeros.
  for (const double t : {1e-300, 1e-3, 10.0, 1e4, 1e300})
    for (const double p : {1e-300, 1e-3, 1e9, 1e300}) {
      const Flash f = Flash().run(t, p);
      EXPECT_EQ(f.err.starts_with("TESSAREL error: temperature must be"), t < 1 || t > 1e5 || p > 1e12)
          << t << " " << p;
      for (std::int32_t mode = 1; mode <= 5; ++mode) EXPECT_FALSE(ab_flash(mode, p, t).empty());
    }
}

TEST(Flash, FractionsThatDoNotAddUpAreRefused) {
  for (const double off : {1e-7, 1e-5}) {
    ASSERT_EQ(host::select({"methane", "n-butane"}, {0.5, 0.5 + off}), "No errors");
    EXPECT_EQ(Flash().run(300, 40e5).err.starts_with("TESSAREL error: mole fractions"), off > 1e-6);
    EXPECT_EQ(ab_flash(1, 40e5, 300).starts_with("TESSAREL error: mole fractions"), off > 1e-6);
  }
}

/// After one phase: the feed and zeros where all of it was on one side.
TEST(Flash, OnePhaseLeavesTheFeedAndZeros) {
  ASSERT_EQ(host::select({"methane", "n-butane", "water"}, {0.5, 0.5, 0.0}), "No errors");
  const Flash gas = Flash().run(500, 1e5), liquid = Flash().run(150, 100e5);
  EXPECT_EQ(gas.err, one_phase);
  EXPECT_EQ(gas.beta, 1);
  EXPECT_EQ(liquid.err, one_phase);
  EXPECT_EQ(liquid.beta, 0);
  const std::array<double, 3> feed = {0.5, 0.5, 0.0}, none = {0, 0, 0};
  for (std::size_t i = 0; i < 3; ++i) {
    EXPECT_EQ(gas.y[i], feed[i]);
    EXPECT_EQ(gas.x[i], none[i]);
    EXPECT_EQ(liquid.x[i], feed[i]);
    EXPECT_EQ(liquid.y[i], none[i]);
  }
  // A component alone is one phase at any state.
  ASSERT_EQ(host::select({"methane", "n-butane"}, {0.0, 1.0}), "No errors");
  EXPECT_EQ(Flash().run(300, 1e6).err, one_phase);
  EXPECT_EQ(ab_flash(1, 1e6, 300), "No errors");
  ASSERT_EQ(host::select({"methane", "n-butane", "water"}, {0.5, 0.5, 0.0}), "No errors");
  // With a component that is absent, the split of the others.
  const Flash three = Flash().run(300, 40e5);
  ASSERT_EQ(host::select({"methane", "n-butane"}, {0.5, 0.5}), "No errors");
  const Flash two = Flash().run(300, 40e5);
  EXPECT_NEAR(three.beta, two.beta, 1e-13);
  EXPECT_EQ(three.x[2] + three.y[2], 0);
}

/// The exported steps by their definitions: also with all of the feed in one phase, which is then the feed itself.
TEST(Flash, ExportedStepsAreThoseOfTheirDefinitions) {
  ASSERT_EQ(host::select({"methane", "n-butane"}, {0.5, 0.5}), "No errors");
  const std::int32_t n = 2, phase = 0, icon = 1;
  const double z[] = {0.5, 0.5}, t = 300, p = 40;
  const auto lnphi = [&](const double* x) {
    std::array<double, 2> result{};
    std::int32_t ic = 0, ierr = 0;
    tessarel_fugacoeff(&icon, &phase, &n, x, &t, &p, result.data(), nullptr, nullptr, nullptr, &ic, &ierr);
    return result;
  };
  const auto of_feed = lnphi(z);
  const double fz[] = {std::log(0.5) + of_feed[0], std::log(0.5) + of_feed[1]};
  const double starts[][2] = {{1.5, -2.0}, {3.0, 2.0}, {-3.0, -2.0}};
  for (const auto& lnk : starts) {
    double x[2], y[2], lnk_new[2], dlnk[2], beta = 0.5, errk = 0, errmax = 0, tmx = 0, tmy = 0, gmix = 0;
    tessarel_dirsub(&n, &t, &p, x, y, z, lnk, lnk_new, &beta, dlnk, &errk, &errmax, fz, &tmx, &tmy, &gmix);
    EXPECT_EQ(beta, lnk[0] * lnk[1] < 0 ? beta : lnk[0] > 0 ? 1.0 : 0.0);
    const auto l = lnphi(x), v = lnphi(y);
    double of_x = 0, of_y = 0;
    for (std::size_t i = 0; i < 2; ++i) {
      EXPECT_NEAR(lnk_new[i], l[i] - v[i], 1e-12);
      EXPECT_NEAR(dlnk[i], lnk_new[i] - lnk[i], 1e-14);
      of_x += x[i] * (std::log(x[i]) + l[i] - fz[i]);
      of_y += y[i] * (std::log(y[i]) + v[i] - fz[i]);
    }
    EXPECT_NEAR(tmx, of_x, 1e-12);
    EXPECT_NEAR(tmy, of_y, 1e-12);
    EXPECT_NEAR(gmix, (1 - beta) * of_x + beta * of_y, 1e-12);
  }
  // The minimiser through its own entry ends where the flash does, in amounts.
  const Flash flash = Flash().run(t, p * 1e5);
  double x[] = {0.2, 0.4}, y[] = {0.3, 0.1};
  const double gibbs = 0.5 * (fz[0] + fz[1]);
  std::int32_t ifail = 7;
  tessarel_solmin(&n, &ifail, &t, &p, x, y, z, &gibbs, &phase);
  EXPECT_EQ(ifail, 0);
  EXPECT_NEAR(y[0], flash.beta * flash.y[0], 1e-11);
  EXPECT_NEAR(x[0] + y[0], 0.5, 1e-14);
  // genflash in reduced units is calc_ab_flash in SI.
  const std::int32_t by_tp = 1;
  std::int32_t icode = 7;
  double gt = 0, gp = 0, bv = 0, bl = 0, h = 0, s = 0, u = 0, v = 0;
  tessarel_genflash(&by_tp, &t, &p, &n, &gt, &gp, z, &bv, &bl, x, y, &h, &s, &u, &v, &phase, &icode);
  EXPECT_EQ(icode, 0);
  EXPECT_NEAR(bv, flash.beta, 1e-12);
  EXPECT_NEAR(bl, 1 - flash.beta, 1e-12);
  EXPECT_NEAR(h - u, gp * v, 1e-9 * std::abs(h));
}

}  // namespace
