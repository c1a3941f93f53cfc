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

}  // namespace
