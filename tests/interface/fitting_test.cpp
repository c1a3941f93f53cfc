// Changing parameters of the selection, and the entries that regression programs call.
#include "common/test_fluid.hpp"
#include "interface/host.hpp"
#include "tessarel/routines.h"

namespace {

using tessarel::testing::Values;
using Field = std::array<char, 120>;

std::string text(const Field& field) {
  return host::text(field.data(), field.size());
}
/// The message of a call that ends in a text field.
template <class Entry, class... Arguments>
std::string call(Entry entry, const Arguments&... arguments) {
  Field field{};
  entry(arguments..., field.data(), field.size());
  return text(field);
}
double get(const std::string& key, std::int32_t i = 1, const std::string& expected = "No errors") {
  Field field{};
  double value = 0;
  tessarel_getparameter(key.data(), &i, &value, field.data(), key.size(), field.size());
  EXPECT_EQ(text(field), expected) << key;
  return value;
}
std::string set(const std::string& key, std::int32_t i, double value) {
  Field field{};
  tessarel_setparameter(key.data(), &i, &value, field.data(), key.size(), field.size());
  return text(field);
}
std::string set_kij(std::int32_t i, std::int32_t j, double kij) {
  return call(tessarel_setkij, &i, &j, &kij);
}

const std::vector<std::string> plain = {"omega",   "mseg",   "sigma", "epsil", "dipole", "quapole",
                                        "polariz", "molmas", "tmin",  "tmax",  "parat",  "saftpar",
                                        "cp0_a",   "cp0_b",  "cp0_c", "cp0_d", "delhf0"};
const std::vector<std::string> bonds = {"eps_hb", "kap_hb"};

/// Critical point, range, and a dense and a dilute state with all their properties.
Values picture(const Values& z) {
  Values all(5);
  tessarel_fluidinfo(z.data(), &all[0], &all[1], &all[2], &all[3], &all[4], nullptr, nullptr, nullptr, nullptr,
                     nullptr);
  for (const char* spec : {"TP Lph", "TP Vph"}) {
    const host::Call state = host::at_tp(spec, 400, 20e5, 3);
    EXPECT_EQ(state.err, "No errors");
    all.insert(all.end(), {state.v, state.h, state.s, state.cv, state.dpdv});
    all.insert(all.end(), state.lnphi.begin(), state.lnphi.begin() + static_cast<std::ptrdiff_t>(z.size()));
  }
  return all;
}

/// One fluid becomes another when it is given that fluid's parameters, in all that follows from them.
TEST(Parameters, MakeOneFluidAnother) {
  const struct {
    std::vector<std::string> from, to;
    Values z;
    std::int32_t place;
    bool associating;
  } cases[] = {{{"propane"}, {"n-pentane"}, {1}, 1, false},
               {{"propane"}, {"acetone"}, {1}, 1, false},
               {{"acetone"}, {"carbon dioxide"}, {1}, 1, false},
               {{"methanol"}, {"1-butanol"}, {1}, 1, true},
               {{"ethanol", "propane", "methanol"}, {"ethanol", "propane", "1-propanol"}, {0.3, 0.3, 0.4}, 3, true}};
  for (const auto& c : cases) {
    SCOPED_TRACE(c.to[static_cast<std::size_t>(c.place - 1)]);
    std::vector<std::string> keys = plain;
    if (c.associating) keys.insert(keys.end(), bonds.begin(), bonds.end());
    ASSERT_EQ(host::select(c.to, c.z), "No errors");
    const auto n = static_cast<std::int32_t>(c.z.size());
    for (std::int32_t i = 2; i <= n; ++i) set_kij(1, i, 0.01 * i);
    set_kij(2, n, 0.05);
    Values values;
    for (const std::string& key : keys) values.push_back(get(key, c.place));
    const Values expected = picture(c.z);
    ASSERT_EQ(host::select(c.from, c.z), "No errors");
    EXPECT_NE(picture(c.z), expected);
    for (std::int32_t i = 2; i <= n; ++i) set_kij(1, i, 0.01 * i);
    set_kij(2, n, 0.05);
    for (std::size_t k = 0; k < keys.size(); ++k) EXPECT_EQ(set(keys[k], c.place, values[k]), "No errors") << keys[k];
    EXPECT_EQ(picture(c.z), expected);
  }
}

TEST(Parameters, RefuseAndChangeNothing) {
  ASSERT_EQ(host::select({"methanol", "propane"}, {0.5, 0.5}), "No errors");
  const Values before = picture({0.5, 0.5});
  const std::string bad = "TESSAREL error: parameters must be finite numbers, sizes and energies positive...";
  EXPECT_EQ(get("Mseg", 1, "TESSAREL parameter Mseg not available..."), -8888.8);
  for (const std::int32_t i : {0, 3, -5}) {
    EXPECT_EQ(get("mseg", i, "TESSAREL error: no such component..."), -8888.8);
    EXPECT_EQ(set_kij(i, 1, 0), "TESSAREL error: no such component...");
  }
  EXPECT_EQ(set("nothing", 1, 1), "TESSAREL parameter nothing not available...");
  EXPECT_EQ(set("kap_hb", 2, 0.01), "TESSAREL error: the component has no association sites of two types...");
  for (const char* key : {"mseg", "sigma", "epsil", "molmas"})
    for (const double odd : {0.0, -1.0, HUGE_VAL, std::nan("")}) EXPECT_EQ(set(key, 1, odd), bad) << key << odd;
  EXPECT_EQ(set("eps_hb", 1, -1), bad);
  EXPECT_EQ(set("dipole", 1, std::nan("")), bad);
  EXPECT_EQ(set_kij(1, 2, HUGE_VAL), bad);
  EXPECT_EQ(set_kij(2, 2, 0), "TESSAREL error: an interaction parameter belongs to two different components...");
  EXPECT_EQ(picture({0.5, 0.5}), before);
  EXPECT_EQ(get("eps_hb", 2), 0);
}

/// A trial with the fluid's own parameters is the fluid; another trial is the fluid with those parameters set; and
/// back.
TEST(Fitting, SaturatedLiquidOfTrialParameters) {
  const struct {
    const char* fluid;
    double t;
    std::vector<std::string> extra;
  } cases[] = {{"propane", 300, {}},
               {"methanol", 330, {"eps_hb", "kap_hb"}},
               {"acetone", 320, {"dipole"}},
               {"carbon dioxide", 250, {"quapole"}}};
  for (const auto& c : cases) {
    SCOPED_TRACE(c.fluid);
    ASSERT_EQ(host::select({c.fluid}, {1}), "No errors");
    Values own = {get("mseg"), get("sigma"), get("epsil")};
    for (const std::string& key : c.extra) own.push_back(get(key));
    const auto trial = [&](const Values& v) {
      std::array<double, 2> r{};
      const std::string err = c.extra.empty() ? call(tessarel_prho_mset, &v[0], &v[1], &v[2], &c.t, &r[0], &r[1])
                              : c.extra.size() == 2
                                  ? call(tessarel_prho_mseekt, &v[0], &v[1], &v[2], &v[3], &v[4], &c.t, &r[0], &r[1])
                                  : call(tessarel_prho_msemut, &v[0], &v[1], &v[2], &v[3], &c.t, &r[0], &r[1]);
      EXPECT_EQ(err, "No errors");
      return r;
    };
    const auto of_fluid = [&] {
      std::array<double, 2> r{};
      double v = 0;
      const std::int32_t liquid = 1;
      EXPECT_EQ(call(tessarel_calc_psat, &c.t, &r[0]), "No errors");
      call(tessarel_calc_v, &c.t, &r[0], &liquid, &v);
      r[1] = 1 / v;
      return r;
    };
    const auto expected = of_fluid();
    EXPECT_EQ(trial(own), expected);
    Values other = own;
    for (double& value : other) value *= 1.01;
    if (c.extra.size() == 1) {
      other[3] = 0;  // without its moment, and with it again
      EXPECT_NE(trial(other), expected);
      other[3] = 1.01 * own[3];
    }
    const auto with_trial = trial(other);
    EXPECT_EQ(trial(own), expected);
    EXPECT_EQ(trial(own), expected);
    set("mseg", 1, other[0]), set("sigma", 1, other[1]), set("epsil", 1, other[2]);
    for (std::size_t k = 0; k < c.extra.size(); ++k) set(c.extra[k], 1, other[3 + k]);
    // The way of the iteration depends on the critical point, which the fitting entries leave alone.
    for (std::size_t k = 0; k < 2; ++k) EXPECT_NEAR(with_trial[k], of_fluid()[k], 1e-9 * with_trial[k]);
  }
}

/// A bubble or dew point with k_ij is one for the flash too: next to it, on the inner side, one phase is the feed.
TEST(Fitting, PhaseEquilibriaOfATrialInteraction) {
  ASSERT_EQ(host::select({"methane", "n-butane"}, {0.3, 0.7}), "No errors");
  Values pressures;
  for (const double kij : {0.0, 0.03, -0.02}) {
    for (const double q : {0.0, 1.0}) {
      double t = 300, p = 0, back = 0;
      EXPECT_EQ(call(tessarel_p_kij, &kij, &t, &q, &p), "No errors");
      EXPECT_EQ(call(tessarel_t_kij, &kij, &p, &q, &back), "No errors");
      EXPECT_NEAR(back, t, 1e-8);
      pressures.push_back(p);
      std::array<double, 2> x{}, y{};
      const double inside = p * (q == 0 ? 1 - 1e-5 : 1 + 1e-5), outside = p * (q == 0 ? 1.5 : 0.5);
      EXPECT_EQ(call(tessarel_xy_kij, &kij, &inside, &t, x.data(), y.data()), "No errors");
      EXPECT_NEAR(q == 0 ? x[0] : y[0], 0.3, 1e-4);
      EXPECT_GT(y[0] - x[0], 0.1);
      EXPECT_EQ(call(tessarel_xy_kij, &kij, &outside, &t, x.data(), y.data()), "No errors");
      EXPECT_EQ(q == 0 ? x[0] : y[0], 0.3);
      EXPECT_EQ(q == 0 ? y[0] : x[0], 0.0);
    }
    const double half = 0.5, t = 300;
    double p = 17;
    EXPECT_EQ(call(tessarel_p_kij, &kij, &t, &half, &p), "No errors");
    EXPECT_EQ(p, 17);
  }
  // Molecules that like each other less boil at a higher pressure.
  EXPECT_LT(1.02 * pressures[0], pressures[2]);
  EXPECT_GT(0.98 * pressures[0], pressures[4]);
}

/// Residual values are the properties less those of the ideal gas, from the general flash.
TEST(Fitting, ResidualPropertiesOfAParameterTable) {
  const struct {
    std::vector<std::string> names;
    Values z;
    double t, p;
    bool two_phases;
  } cases[] = {{{"propane"}, {1}, 300, 20e5, false},
               {{"methane", "n-butane"}, {0.5, 0.5}, 300, 40e5, true},
               {{"methane", "n-butane"}, {0.5, 0.5}, 300, 2e5, false},
               {{"methanol", "acetone", "carbon dioxide"}, {0.3, 0.3, 0.4}, 320, 10e5, true}};
  for (const auto& c : cases) {
    SCOPED_TRACE(c.names.back());
    ASSERT_EQ(host::select(c.names, c.z), "No errors");
    const std::size_t n = c.z.size();
    const auto count = static_cast<std::int32_t>(n), by_tp = std::int32_t{1};
    Values par;
    for (const char* key : {"molmas", "mseg", "sigma", "epsil", "eps_hb", "kap_hb", "dipole", "quapole", "polariz"})
      for (std::int32_t i = 1; i <= count; ++i) par.push_back(get(key, i));
    double t = 0, p = 0, v = 0, u = 0, h = 0, s = 0, q = 0, h_res = 0, s_res = 0;
    std::array<double, 20> x{}, y{};
    call(tessarel_calc_ab_flash, &by_tp, &c.p, &c.t, &t, &p, &v, &u, &h, &s, &q, x.data(), y.data());
    EXPECT_EQ(q > 0 && q < 1, c.two_phases);
    constexpr double r = 8.31441;
    double formation = 0, mixing = 0;
    for (std::size_t i = 0; i < n; ++i) {
      formation += c.z[i] * get("delhf0", static_cast<std::int32_t>(i) + 1);
      if (q < 1) mixing += (1 - q) * x[i] * std::log(x[i]);
      if (q > 0) mixing += q * y[i] * std::log(y[i]);
    }
    const double h_ideal = tessarel_calc_icp0mix_dt(&count, c.z.data(), &c.t) + formation;
    const double s_ideal = tessarel_calc_icp0mix_t_dt(&count, c.z.data(), &c.t) - r * (std::log(c.p / 1e5) + mixing);
    // From a table with other values first.
    Values other = par;
    other[n] *= 1.1;
    other[4 * n] = 0;
    EXPECT_EQ(call(tessarel_hsxy_mp, &c.t, &c.p, other.data(), &h_res, &s_res, x.data(), y.data()), "No errors");
    EXPECT_GT(std::abs(h_res - (h - h_ideal)), 1);
    EXPECT_EQ(host::parameters().nhb_typ[0], 0);
    EXPECT_EQ(call(tessarel_hsxy_mp, &c.t, &c.p, par.data(), &h_res, &s_res, x.data(), y.data()), "No errors");
    EXPECT_NEAR(h_res, h - h_ideal, 1e-9 * std::abs(h));
    EXPECT_NEAR(s_res, s - s_ideal, 1e-9 * std::abs(s) + 1e-9);
  }
}

TEST(Fitting, OddNumbersAreRefused) {
  ASSERT_EQ(host::select({"methane", "n-butane"}, {0.5, 0.5}), "No errors");
  const Values before = picture({0.5, 0.5});
  const double one = 1, t = 300, p = 40e5;
  double a = 0, b = 0;
  Values par = {16, 58, 1, 2.3, 3.7, 3.7, 150, 222, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0};
  for (const double odd : {0.0, -1.0, HUGE_VAL, std::nan("")}) {
    EXPECT_NE(call(tessarel_prho_mset, &odd, &one, &one, &t, &a, &b), "No errors");
    EXPECT_NE(call(tessarel_prho_mset, &one, &odd, &one, &t, &a, &b), "No errors");
    EXPECT_NE(call(tessarel_prho_mset, &one, &one, &odd, &t, &a, &b), "No errors");
    EXPECT_NE(call(tessarel_prho_mset, &one, &one, &one, &odd, &a, &b), "No errors");
    EXPECT_NE(call(tessarel_xy_kij, &one, &odd, &t, &a, &b), "No errors");
    EXPECT_NE(call(tessarel_p_kij, &one, &odd, &one, &b), "No errors");
    EXPECT_NE(call(tessarel_t_kij, &one, &odd, &one, &b), "No errors");
    par[2] = odd;
    EXPECT_NE(call(tessarel_hsxy_mp, &t, &p, par.data(), &a, &b, &a, &b), "No errors");
    tessarel_calc_hs_res(&odd, &p, &one, &a, &b);
    EXPECT_TRUE(std::isnan(a));
  }
  for (const double odd : {HUGE_VAL, std::nan("")}) {
    EXPECT_NE(call(tessarel_prho_mseekt, &one, &one, &one, &one, &odd, &t, &a, &b), "No errors");
    EXPECT_NE(call(tessarel_p_kij, &odd, &t, &one, &b), "No errors");
  }
  EXPECT_EQ(picture({0.5, 0.5}), before);
  // Any size ends.
  for (const double size : {1e-300, 1e-10, 1e10, 1e300}) {
    EXPECT_FALSE(call(tessarel_prho_mset, &size, &size, &size, &t, &a, &b).empty());
    EXPECT_FALSE(call(tessarel_p_kij, &size, &t, &one, &b).empty());
  }
  ASSERT_EQ(host::select({"propane"}, {1}), "No errors");
  const std::string mixture = "TESSAREL error: an interaction parameter needs a mixture...";
  EXPECT_EQ(call(tessarel_xy_kij, &one, &p, &t, &a, &b), "TESSAREL error: a mixture of two components is needed...");
  EXPECT_EQ(call(tessarel_p_kij, &one, &t, &one, &b), mixture);
  // A bond of no energy is no bond.
  ASSERT_EQ(host::select({"methanol"}, {1}), "No errors");
  const double none = 0, m = 1.5255, sigma = 3.23, epsil = 230;
  EXPECT_EQ(call(tessarel_prho_mseekt, &m, &sigma, &epsil, &none, &none, &t, &a, &b), "No errors");
  double c = 0, d = 0;
  ASSERT_EQ(host::select({"propane"}, {1}), "No errors");
  EXPECT_EQ(call(tessarel_prho_mset, &m, &sigma, &epsil, &t, &c, &d), "No errors");
  EXPECT_NEAR(b, d, 1e-9 * d);
}

}  // namespace
