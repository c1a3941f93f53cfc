// Thermodynamic identities of the reported properties, and the second-order set against the state functions.
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

TEST(SecondOrder, EnergiesAndHeatCapacities) {
  host::at_states(1, [](const char* spec, const Call& a, const host::Case&, double) {
    const double t = a.t + 273.15;
    EXPECT_NEAR(a.h, a.u + a.p * 100 * a.v, 1e-9 * std::max(100.0, std::abs(a.h)));  // bar m3/kg = 100 kJ/kg
    const double cp = slope([&](double x) { return host::at_tp(spec, x, a.p * 1e5).h; }, t);
    EXPECT_NEAR(cp, a.cv + t * a.dpdt * a.dpdt / -a.dpdv / 1000, 1e-8 * std::abs(cp));
  });
}

// The seven values are the state functions, by volume instead of density, molar and in the units of the call.
TEST(SecondOrder, ValuesAreThoseOfTheStateFunctions) {
  host::at_states(1, [](const char*, const Call& a, const host::Case& fluid, double mass) {
    const auto n = static_cast<std::int32_t>(fluid.z.size());
    const double t = a.t + 273.15, v = a.v * mass, rho = 6.022045e-7 / v, slope_by_v = -rho / v;
    const auto at = [&](auto routine) {
      double value = 0;
      routine(&n, fluid.z.data(), &t, &rho, &value);
      return value;
    };
    Call m;
    tessarel_calc_sectmdprop(&n, fluid.z.data(), &t, &rho, &m.cv, &m.dpdt, &m.dpdv, &m.d2pdt2, &m.d2pdv2, &m.d2pdtdv,
                             &m.dcvdt);
    const double p_rho = at(tessarel_calc_dp_drho);
    const double rows[][3] = {
        {at(tessarel_calc_cv), m.cv, a.cv * mass * 1000},
        {at(tessarel_calc_dp_dt), m.dpdt, a.dpdt},
        {p_rho * slope_by_v, m.dpdv, a.dpdv / mass},
        {at(tessarel_calc_d2p_dt2), m.d2pdt2, a.d2pdt2},
        {(at(tessarel_calc_d2p_drho2) * rho + 2 * p_rho) * rho / (v * v), m.d2pdv2, a.d2pdv2 / (mass * mass)},
        {at(tessarel_calc_d2p_dtdrho) * slope_by_v, m.d2pdtdv, a.d2pdtdv / mass},
        {at(tessarel_calc_dcv_dt), m.dcvdt, a.dcvdt * mass}};
    for (const auto& [expected, molar, reported] : rows)
      for (const double value : {molar, reported}) EXPECT_NEAR(value, expected, 1e-10 * std::abs(expected));
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
