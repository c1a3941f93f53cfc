// Reported energies and the second-order set against the state functions.
#include <gtest/gtest.h>

#include "interface/host.hpp"
#include "tessarel/routines.h"

namespace {

using host::Call;

// The values are the state functions, by volume instead of density, molar and in the units of the call.
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
    const double p_rho = at(tessarel_calc_dp_drho), p = at(tessarel_calc_p_rho);
    tessarel_calc_hsu(&t, &p, &v, &m.h, &m.s, &m.u, nullptr, 0);
    for (double Call::*f : {&Call::h, &Call::s, &Call::u})
      EXPECT_NEAR(a.*f * mass * 1000, m.*f, 1e-10 * std::max(1000.0, std::abs(m.*f)));
    EXPECT_NEAR(a.p * 1e5, p, 1e-10 * p);
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

}  // namespace
