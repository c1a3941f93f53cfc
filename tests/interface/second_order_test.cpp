// Thermodynamic identities of the reported properties, and the second-order set against differences.
#include <gtest/gtest.h>

#include "interface/host.hpp"
#include "tessarel/routines.h"

namespace {

using host::Call;

/// Fourth-order central difference of f at x.
template <class F>
double slope(F&& f, double x) {
  const double d = 1e-3 * x;
  return (8 * (f(x + d) - f(x - d)) - (f(x + 2 * d) - f(x - 2 * d))) / (12 * d);
}

void expect_relative(double value, double expected, double tolerance, const char* what) {
  EXPECT_LE(std::abs(value - expected), tolerance * std::abs(expected))
      << what << " " << value << " instead of " << expected;
}

class SecondOrder : public testing::TestWithParam<host::Case> {
 protected:
  void SetUp() override {
    const host::Case& fluid = GetParam();
    ASSERT_EQ(host::select(fluid.names, fluid.z), "No errors");
    mass_ = host::molar_mass(fluid.z);
  }

  /// Runs `check` on the liquid-like and the vapour-like state, with the second-order set.
  template <class Check>
  void at_both_states(Check&& check) {
    const host::Case& fluid = GetParam();
    for (const bool liquid : {true, false}) {
      const char* spec = liquid ? "TP Lph" : "TP Vph";
      SCOPED_TRACE(spec);
      const Call state = liquid ? host::at_tp(spec, fluid.t_liquid, fluid.p_liquid, 1)
                                : host::at_tp(spec, fluid.t_vapour, fluid.p_vapour, 1);
      ASSERT_EQ(state.err, "No errors");
      check(spec, state, state.t + 273.15);
    }
  }

  [[nodiscard]] Call at(double t, double v, int order = 0) const { return host::at_tv(t, v * mass_, order); }

  double mass_ = 0;
};

TEST_P(SecondOrder, EnthalpyIsEnergyPlusFlowWork) {
  at_both_states([](const char*, const Call& a, double) {
    EXPECT_NEAR(a.h, a.u + a.p * 100 * a.v, 1e-9 * std::max(100.0, std::abs(a.h)));  // bar m3/kg = 100 kJ/kg
  });
}

TEST_P(SecondOrder, FirstDerivativesAgreeWithDifferences) {
  at_both_states([&](const char*, const Call& a, double t) {
    const auto u_of_t = [&](double x) { return at(x, a.v).u; };
    const auto s_of_t = [&](double x) { return at(x, a.v).s; };
    const auto s_of_v = [&](double x) { return at(t, x).s; };
    const auto p_of_t = [&](double x) { return at(x, a.v).p * 1e5; };
    const auto p_of_v = [&](double x) { return at(t, x).p * 1e5; };
    expect_relative(a.cv, slope(u_of_t, t), 1e-8, "cv");
    expect_relative(a.cv / t, slope(s_of_t, t), 1e-8, "ds/dT");
    expect_relative(a.dpdt / 1000, slope(s_of_v, a.v), 1e-8, "ds/dv, a Maxwell relation");
    expect_relative(a.dpdt, slope(p_of_t, t), 1e-8, "dp/dT");
    expect_relative(a.dpdv, slope(p_of_v, a.v), 1e-7, "dp/dv");
  });
}

TEST_P(SecondOrder, SecondDerivativesAgreeWithDifferencesOfTheFirst) {
  at_both_states([&](const char*, const Call& a, double t) {
    const auto by_t = [&](double Call::*f) { return slope([&](double x) { return at(x, a.v, 1).*f; }, t); };
    const auto by_v = [&](double Call::*f) { return slope([&](double x) { return at(t, x, 1).*f; }, a.v); };
    expect_relative(a.d2pdt2, by_t(&Call::dpdt), 1e-6, "d2p/dT2");
    expect_relative(a.d2pdtdv, by_t(&Call::dpdv), 1e-7, "d2p/dTdv");
    expect_relative(a.d2pdtdv, by_v(&Call::dpdt), 1e-7, "d2p/dvdT");
    expect_relative(a.d2pdv2, by_v(&Call::dpdv), 1e-7, "d2p/dv2");
    expect_relative(a.dcvdt, 1000 * by_t(&Call::cv), 1e-6, "dcv/dT");
    // d cv/dv = T d2p/dT2 joins the caloric and the mechanical part.
    expect_relative(t * a.d2pdt2, 1000 * by_v(&Call::cv), 1e-6, "dcv/dv");
  });
}

TEST_P(SecondOrder, HeatCapacitiesDifferByTheExpansionWork) {
  at_both_states([&](const char* spec, const Call& a, double t) {
    const double cp = slope([&](double x) { return host::at_tp(spec, x, a.p * 1e5).h; }, t);
    expect_relative(cp, a.cv + t * a.dpdt * a.dpdt / -a.dpdv / 1000, 1e-8, "cp");
  });
}

TEST_P(SecondOrder, MolarValuesAreThoseOfThePropertyCall) {
  at_both_states([&](const char*, const Call& a, double t) {
    const auto n = static_cast<std::int32_t>(GetParam().z.size());
    const double v = a.v * mass_, rho = 6.022045e-7 / v;
    double cv = 0, dpdt = 0, dpdv = 0, d2pdt2 = 0, d2pdv2 = 0, d2pdtdv = 0, dcvdt = 0;
    tessarel_calc_sectmdprop(&n, GetParam().z.data(), &t, &rho, &cv, &dpdt, &dpdv, &d2pdt2, &d2pdv2, &d2pdtdv, &dcvdt);
    expect_relative(cv / mass_ / 1000, a.cv, 1e-11, "cv");
    expect_relative(dpdt, a.dpdt, 1e-11, "dp/dT");
    expect_relative(dpdv * mass_, a.dpdv, 1e-11, "dp/dv");
    expect_relative(d2pdt2, a.d2pdt2, 1e-10, "d2p/dT2");
    expect_relative(d2pdv2 * mass_ * mass_, a.d2pdv2, 1e-11, "d2p/dv2");
    expect_relative(d2pdtdv * mass_, a.d2pdtdv, 1e-11, "d2p/dTdv");
    expect_relative(dcvdt / mass_, a.dcvdt, 1e-10, "dcv/dT");
  });
}

INSTANTIATE_TEST_SUITE_P(Fluids, SecondOrder, testing::ValuesIn(host::cases()), host::case_name);

// At low density the model is the ideal gas of the reference state: enthalpy of formation, entropy -R ln(p / 1 bar).
TEST(CaloricReference, IdealGasLimit) {
  constexpr double gas_constant = 8.31441;
  ASSERT_EQ(host::select({"propane"}, {1}), "No errors");
  double mass = host::molar_mass({1});
  const Call pure = host::at_tp("TP Vph", 298.15, 1.0);
  EXPECT_NEAR(pure.h * mass * 1000, -104390, 0.1);
  EXPECT_NEAR(pure.s * mass * 1000, gas_constant * std::log(1e5), 1e-3);

  const std::vector<double> z = {0.7, 0.3};
  ASSERT_EQ(host::select({"methane", "ethane"}, z), "No errors");
  mass = host::molar_mass(z);
  const Call mixed = host::at_tp("TP Vph", 298.15, 1.0);
  EXPECT_NEAR(mixed.s * mass * 1000, gas_constant * (std::log(1e5) - 0.7 * std::log(0.7) - 0.3 * std::log(0.3)), 1e-3);
}

}  // namespace
