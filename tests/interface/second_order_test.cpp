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

Call at(double t, double v, double mass) {
  return host::at_tv(t, v * mass, 1);
}

TEST(SecondOrder, EnergiesAndHeatCapacities) {
  host::at_states(1, [](const char* spec, const Call& a, const host::Case&, double) {
    const double t = a.t + 273.15;
    EXPECT_NEAR(a.h, a.u + a.p * 100 * a.v, 1e-9 * std::max(100.0, std::abs(a.h)));  // bar m3/kg = 100 kJ/kg
    const double cp = slope([&](double x) { return host::at_tp(spec, x, a.p * 1e5).h; }, t);
    expect_relative(cp, a.cv + t * a.dpdt * a.dpdt / -a.dpdv / 1000, 1e-8, "cp");
  });
}

TEST(SecondOrder, DerivativesAgreeWithDifferences) {
  host::at_states(1, [](const char*, const Call& a, const host::Case&, double mass) {
    const double t = a.t + 273.15;
    const auto by_t = [&](double Call::*f) { return slope([&](double x) { return at(x, a.v, mass).*f; }, t); };
    const auto by_v = [&](double Call::*f) { return slope([&](double x) { return at(t, x, mass).*f; }, a.v); };
    expect_relative(a.cv, by_t(&Call::u), 1e-8, "cv");
    expect_relative(a.cv / t, by_t(&Call::s), 1e-8, "ds/dT");
    expect_relative(a.dpdt / 1000, by_v(&Call::s), 1e-8, "ds/dv, a Maxwell relation");
    expect_relative(a.dpdt, 1e5 * by_t(&Call::p), 1e-8, "dp/dT");
    expect_relative(a.dpdv, 1e5 * by_v(&Call::p), 1e-7, "dp/dv");
    expect_relative(a.d2pdt2, by_t(&Call::dpdt), 1e-6, "d2p/dT2");
    expect_relative(a.d2pdtdv, by_t(&Call::dpdv), 1e-7, "d2p/dTdv");
    expect_relative(a.d2pdtdv, by_v(&Call::dpdt), 1e-7, "d2p/dvdT");
    expect_relative(a.d2pdv2, by_v(&Call::dpdv), 1e-7, "d2p/dv2");
    expect_relative(a.dcvdt, 1000 * by_t(&Call::cv), 1e-6, "dcv/dT");
    // d cv/dv = T d2p/dT2 joins the caloric and the mechanical part.
    expect_relative(t * a.d2pdt2, 1000 * by_v(&Call::cv), 1e-6, "dcv/dv");
  });
}

TEST(SecondOrder, MolarValuesAreThoseOfThePropertyCall) {
  host::at_states(1, [](const char*, const Call& a, const host::Case& fluid, double mass) {
    const auto n = static_cast<std::int32_t>(fluid.z.size());
    const double t = a.t + 273.15, rho = 6.022045e-7 / (a.v * mass);
    Call m;
    tessarel_calc_sectmdprop(&n, fluid.z.data(), &t, &rho, &m.cv, &m.dpdt, &m.dpdv, &m.d2pdt2, &m.d2pdv2, &m.d2pdtdv,
                             &m.dcvdt);
    expect_relative(m.cv / mass / 1000, a.cv, 1e-11, "cv");
    expect_relative(m.dpdt, a.dpdt, 1e-11, "dp/dT");
    expect_relative(m.dpdv * mass, a.dpdv, 1e-11, "dp/dv");
    expect_relative(m.d2pdt2, a.d2pdt2, 1e-10, "d2p/dT2");
    expect_relative(m.d2pdv2 * mass * mass, a.d2pdv2, 1e-11, "d2p/dv2");
    expect_relative(m.d2pdtdv * mass, a.d2pdtdv, 1e-11, "d2p/dTdv");
    expect_relative(m.dcvdt / mass, a.dcvdt, 1e-10, "dcv/dT");
  });
}

// At low density the model is the ideal gas of the reference state: enthalpy of formation, entropy -R ln(p / 1 bar).
TEST(CaloricReference, IdealGasLimit) {
  constexpr double gas_constant = 8.31441;
  for (const std::vector<double>& z : {std::vector{1.0}, {0.7, 0.3}}) {
    ASSERT_EQ(
        host::select(
            z.size() == 1 ? std::vector<std::string>{"propane"} : std::vector<std::string>{"methane", "ethane"}, z),
        "No errors");
    const double mass = host::molar_mass(z) * 1000;
    const Call state = host::at_tp("TP Vph", 298.15, 1.0);
    double entropy = std::log(1e5);
    for (const double x : z) entropy -= x * std::log(x);
    EXPECT_NEAR(state.s * mass, gas_constant * entropy, 1e-3);
    if (z.size() == 1) {
      EXPECT_NEAR(state.h * mass, -104390, 0.1);
    }
  }
}

}  // namespace
