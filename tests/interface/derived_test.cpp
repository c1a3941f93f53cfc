// Further properties of a phase: against differences of volume, enthalpy, entropy and pressure, and what is refused.
#include "common/test_fluid.hpp"
#include "interface/host.hpp"
#include "tessarel/routines.h"

namespace {

using tessarel::testing::Values;

struct Derived {
  double cp = 0, w = 0, jt = 0, kappa = 0, alpha = 0, g = 0;
  std::string err;
};
Derived derived(const Values& x, double t, double v) {
  Derived d;
  std::array<char, 120> field{};
  tessarel_derived(x.data(), &t, &v, &d.cp, &d.w, &d.jt, &d.kappa, &d.alpha, &d.g, field.data(), field.size());
  d.err = host::text(field.data(), field.size());
  return d;
}

/// Volume [m3/mol] of the selected composition; `phase` 1 liquid-like, 2 vapour-like.
double volume(double t, double p, std::int32_t phase) {
  double v = 0;
  std::array<char, 80> field{};
  tessarel_calc_v(&t, &p, &phase, &v, field.data(), field.size());
  return v;
}
double pressure(double t, double v) {
  double p = 0;
  tessarel_calc_p(&t, &v, &p);
  return p;
}
struct Caloric {
  double h, s;
};
Caloric caloric(double t, double v) {
  double h = 0, s = 0, u = 0;
  const double p = pressure(t, v);
  std::array<char, 80> field{};
  tessarel_calc_hsu(&t, &p, &v, &h, &s, &u, field.data(), field.size());
  return {h, s};
}
/// Central difference with the relative step `h`.
template <class F>
double slope(double x, double h, F&& f) {
  return (f(x * (1 + h)) - f(x * (1 - h))) / (2 * x * h);
}

const std::string unstable = "TESSAREL error: no stable single phase at this composition, temperature and volume...";

/// A state at fixed pressure depends on T by its volume at this T.
TEST(Derived, AreDifferencesOfTheProperties) {
  for (const host::Case& fluid : host::cases())
    for (const std::int32_t phase : {1, 2}) {
      SCOPED_TRACE(std::string(fluid.title) + (phase == 1 ? " liquid" : " vapour"));
      ASSERT_EQ(host::select(fluid.names, fluid.z), "No errors");
      const double t = phase == 1 ? fluid.t_liquid : fluid.t_vapour, p = phase == 1 ? fluid.p_liquid : fluid.p_vapour;
      const double v = volume(t, p, phase), h = 1e-4;
      const Derived d = derived(fluid.z, t, v);
      if (d.err == unstable) {
        std::array<double, 20> x{}, y{};
        double beta = 0;
        std::array<char, 120> field{};
        tessarel_calc_pt_flash(&t, &p, x.data(), y.data(), &beta, field.data(), field.size());
        EXPECT_EQ(host::text(field.data(), field.size()), "No errors");
        continue;
      }
      ASSERT_EQ(d.err, "No errors");
      const auto near = [](double value, double difference, double scale, const char* what) {
        EXPECT_NEAR(value, difference, 2e-6 * (std::abs(difference) + scale)) << what;
      };
      const auto by_t = [&](auto&& f) {
        return slope(t, h, [&](double hot) { return f(hot, volume(hot, p, phase)); });
      };
      const auto by_p = [&](auto&& f) {
        return slope(p, h, [&](double high) { return f(t, volume(t, high, phase)); });
      };
      const auto enthalpy = [](double a, double b) { return caloric(a, b).h; };
      near(d.cp, by_t(enthalpy), 0, "cp");
      // h of a liquid carries 1e-12 of itself over a change of 1e-4 p.
      near(d.jt * d.cp, -by_p(enthalpy), v, "Joule-Thomson");
      near(d.alpha, by_t([](double, double b) { return b; }) / v, 0, "thermal expansion");
      near(d.kappa * p, -by_p([](double, double b) { return b; }) * p / v, 1e-4, "compressibility");
      near(v, by_p([&](double a, double b) { return derived(fluid.z, a, b).g; }), 0, "dg/dp");
      near(-caloric(t, v).s, by_t([&](double a, double b) { return derived(fluid.z, a, b).g; }), 0, "dg/dT");
      // Sound travels at constant entropy: (dp/dv)_s by T and v.
      const double p_v = slope(v, h, [&](double b) { return pressure(t, b); });
      const double p_t = slope(t, h, [&](double a) { return pressure(a, v); });
      const double s_v = slope(v, h, [&](double b) { return caloric(t, b).s; });
      const double s_t = slope(t, h, [&](double a) { return caloric(a, v).s; });
      near(d.w * d.w, -v * v * (p_v - p_t * s_v / s_t) / host::molar_mass(fluid.z), 0, "speed of sound");
    }
}

const std::string mechanical = "TESSAREL error: mechanically unstable at this composition, temperature and volume...";
const std::string dense = "TESSAREL error: the volume is below that of closest packing...";

/// Both phases of an equilibrium are phases; whatever lies between them is none.
TEST(Derived, RefuseWhatLiesBetweenTwoPhases) {
  const struct {
    std::vector<std::string> names;
    Values z;
    double t, p;
  } cases[] = {{{"propane"}, {1}, 300, 0},
               {{"water"}, {1}, 300, 0},
               {{"methane", "n-butane"}, {0.5, 0.5}, 300, 40e5},
               {{"methane", "ethane", "propane", "n-butane"}, {0.4, 0.3, 0.2, 0.1}, 250, 30e5},
               {{"water", "n-hexane"}, {0.5, 0.5}, 300, 10e5},
               {{"carbon dioxide", "methanol"}, {0.5, 0.5}, 300, 20e5}};
  for (auto c : cases) {
    SCOPED_TRACE(c.names.back());
    ASSERT_EQ(host::select(c.names, c.z), "No errors");
    const auto n = static_cast<std::int32_t>(c.z.size());
    Values x = c.z, y = c.z;
    double beta = 0;
    std::array<char, 120> field{};
    if (n == 1)
      tessarel_calc_psat(&c.t, &c.p, field.data(), field.size());
    else
      tessarel_calc_pt_flash(&c.t, &c.p, x.data(), y.data(), &beta, field.data(), field.size());
    ASSERT_EQ(host::text(field.data(), field.size()), "No errors");
    const auto molar_volume = [&](const Values& of, std::int32_t phase) {
      double rho = 0;
      tessarel_calc_rho(&n, of.data(), &c.t, &c.p, &phase, &rho);
      return 6.022045e-7 / rho;
    };
    const std::int32_t either = -1, liquid = 1, vapour = 2;
    const double v_l = molar_volume(x, n == 1 ? liquid : either), v_v = molar_volume(y, n == 1 ? vapour : either);
    EXPECT_EQ(derived(x, c.t, v_l).err, "No errors");
    EXPECT_EQ(derived(y, c.t, v_v).err, "No errors");
    for (const double q : {1e-4, 0.01, 0.1, 0.3, 0.5, 0.7, 0.9, 0.99}) {
      Values z = x;
      for (std::size_t i = 0; i < z.size(); ++i) z[i] += q * (y[i] - x[i]);
      const Derived d = derived(z, c.t, v_l + q * (v_v - v_l));
      // The two liquids of water and n-hexane together are smaller than what is made of their segments.
      EXPECT_TRUE(d.err == unstable || d.err == mechanical || (d.err == dense && c.names[0] == "water")) << q << d.err;
      EXPECT_EQ(d.cp, -8888.8);
    }
    EXPECT_EQ(derived(c.z, c.t, 0.1 * v_l).err, dense);
  }
}

TEST(Derived, RefuseOddArguments) {
  ASSERT_EQ(host::select({"methane", "n-butane"}, {0.5, 0.5}), "No errors");
  const std::string fractions = "TESSAREL error: mole fractions must be none negative and sum to 1...";
  const std::string numbers = "TESSAREL error: temperature and volume must be positive finite numbers...";
  for (const double odd : {0.0, -1.0, HUGE_VAL, std::nan("")}) {
    EXPECT_EQ(derived({0.5, 0.5}, odd, 1e-3).err, numbers) << odd;
    EXPECT_EQ(derived({0.5, 0.5}, 300, odd).err, numbers) << odd;
    EXPECT_EQ(derived({0.5, odd}, 300, 1e-3).err, fractions) << odd;
  }
  for (const double t : {1e-300, 0.5, 1e6, 1e300})
    for (const double v : {1e-300, 1e-3, 1e300}) EXPECT_NE(derived({0.5, 0.5}, t, v).err, "No errors");
  const double one = 1;
  double out = 7;
  char err[80];
  tessarel_derived(&one, &one, &one, &out, &out, &out, nullptr, &out, &out, err, sizeof err);
  EXPECT_EQ(host::text(err, sizeof err), "TESSAREL error: null pointer argument...");
  EXPECT_EQ(out, 7);
}

}  // namespace
